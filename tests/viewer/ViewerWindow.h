// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "browser/MainWindow.h"
#include "viewer/frmFullScreen.h"

#include <cmath>

namespace trovarium {

// On a button of the bar, where its label doesn't lie over it.
inline constexpr At BesideLabel{3, 3};

// The main window with photographs of known sizes in its group "Alps", and the full screen that it opens.
struct ViewerWindow : MainWindow {
    ViewerWindow()
    {
        main().dialogs().showFullScreen = [this] { fullScreen().show(); };
    }
    ~ViewerWindow() override
    {
        if (isFullScreen())
            fullScreen().unload();
    }

    struct Photo {
        std::string name;
        int width = 100; // pixels
        int height = 60;
        Names lines = {}; // of its information, behind the link
    };
    void openAlbum(const std::vector<Photo>& photos)
    {
        Names all;
        for (const Photo& photo : photos) {
            all.push_back(photo.name);
            test.put(test.paths().PhotoPath + photo.name, plainBitmap(photo.width, photo.height));
            test.put(test.paths().InfoPath + photo.name + ".info",
                "PhotoPath=\\Photos\\" + photo.name + "\r\n" + joinedLines(photo.lines));
        }
        putGroup("  All Photos  ", all);
        putGroup("Alps", all);
        open();
        pressRowNamed("Alps");
    }

    void display(int position) { robot.doubleClick(main().imgThumbnail(position - 1)); }
    // Left, top, width and height in tenths.
    static std::vector<long> place(float left, float top, float width, float height)
    {
        return {std::lround(left * 10), std::lround(top * 10), std::lround(width * 10), std::lround(height * 10)};
    }
    static std::vector<long> place(const Control& control)
    {
        return place(control.Left(), control.Top(), control.Width(), control.Height());
    }
    // In the middle of the frame.
    bool frameShows(float width, float height)
    {
        return main().imgbox.Visible()
            && place(main().imgbox) == place((545 - width) / 2, (469 - height) / 2, width, height);
    }
    // The show's timer, on or off, without a tick in the test's time.
    void setShowTimer(bool enabled)
    {
        view().SlideShowRunning = enabled;
        main().tmrSlideShow.Interval = 600'000;
        main().tmrSlideShow.Enabled = enabled;
    }

    frmFullScreen& fullScreen() { return m_fullScreen(); }
    bool isFullScreen() const { return m_fullScreen.isLoaded(); }

    FormHolder<frmFullScreen> m_fullScreen = held<frmFullScreen>(main());
};

} // namespace trovarium
