// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace trovarium {

struct Album;
class frmMain;

// What the parts of the main window share: the sizes of its plan, and their base class.

inline constexpr int Columns = 4; // of the page of thumbnails
inline constexpr int Rows = 4;
inline constexpr int DragFrame = Columns * Rows; // index in shpThumbnailSelect of the frame that follows a drag

inline constexpr int GroupRows = 8; // in pctAlbumList; two hidden ones behind them hold the pictures of a row
inline constexpr int BrightBar = 10;
inline constexpr int DarkBar = 11;

inline constexpr float StripHeight = 15; // pixels of the information box that stay visible when it is down

// The handlers of some of the window's controls, and what they do.
class WindowPart {
protected:
    WindowPart(frmMain& form, Album& album)
        : m_form(form)
        , m_album(album)
    {
    }

    frmMain& m_form;
    Album& m_album;
};

} // namespace trovarium
