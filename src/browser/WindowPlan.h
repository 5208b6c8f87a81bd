#pragma once

namespace trovarium {

// What several parts of the main window know of its plan.

inline constexpr int Columns = 4; // of the page of thumbnails
inline constexpr int Rows = 4;
inline constexpr int DragFrame = Columns * Rows; // in shpThumbnailSelect, behind those of the cells: in a drag

inline constexpr int GroupRows = 8; // in pctAlbumList; behind them, out of sight, lie the looks of a row
inline constexpr int BrightBar = 10;
inline constexpr int DarkBar = 11;

inline constexpr float StripHeight = 15; // pixels of the information box that show while it is down

} // namespace trovarium
