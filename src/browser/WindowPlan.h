#pragma once

#include <string_view>

namespace trovarium {

// What several parts of the main window know of its plan.

inline constexpr int Columns = 4; // of the page of thumbnails
inline constexpr int Rows = 4;
inline constexpr int DragFrame = Columns * Rows; // in shpThumbnailSelect, behind those of the cells: in a drag

// Of a cell. What the mouse is told besides names the photograph that the cell held then.
inline constexpr std::string_view ThumbnailTip = "Double-click to view.";

inline constexpr int GroupRows = 8; // in pctAlbumList; behind them, out of sight, lie the looks of a row
inline constexpr int BrightBar = 10;
inline constexpr int DarkBar = 11;

inline constexpr float StripHeight = 15; // pixels of the information box that show while it is down

} // namespace trovarium
