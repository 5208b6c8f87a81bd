#pragma once

#include "browser/MainWindow.h"
#include "viewer/frmFullScreen.h"

#include <cmath>
#include <string>
#include <vector>

namespace trovarium {

// On a button of the bar, where its label doesn't lie over it.
inline constexpr At BesideLabel{3, 3};

// The main window with photographs of known sizes in its group "Alps", and the full screen that it opens.
class ViewerWindow : public MainWindow {
protected:
    ViewerWindow()
    {
        main().dialogs().showFullScreen = [this] {
            EXPECT_EQ(main().cmdFullScreen.Picture(), main().pctAlbumList(10).Picture()) << "pressed";
            fullScreen().show();
        };
    }
    ~ViewerWindow() override
    {
        if (isFullScreen())
            fullScreen().unload();
    }

    // A photograph of the library of that size in pixels.
    void putPhoto(const std::string& name, int width, int height, const Names& lines = {})
    {
        test.put(test.paths().PhotoPath + name, plainBitmap(width, height));
        putInfo(name, lines);
    }
    // The information alone, with `lines` behind the link.
    void putInfo(const std::string& name, const Names& lines)
    {
        test.put(test.paths().InfoPath + name + ".info", "PhotoPath=\\Photos\\" + name + "\r\n" + joinedLines(lines));
    }
    void openAlbum(const Names& names)
    {
        putGroup("  All Photos  ", names);
        putGroup("Alps", names);
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
        const Image& picture = main().imgbox;
        return picture.Visible() && place(picture) == place((545 - width) / 2, (469 - height) / 2, width, height);
    }
    static std::string logged(const std::string& procedure, const std::string& description)
    {
        return "An error has occurred in '" + procedure + "'. Error = " + description;
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

private:
    FormSlot<frmFullScreen> m_fullScreen{
        desktop, [this] { return std::make_unique<frmFullScreen>(desktop, test.album(), main()); }};
};

} // namespace trovarium
