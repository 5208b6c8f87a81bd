#pragma once

#include "browser/MainWindow.h"
#include "viewer/frmFullScreen.h"

#include <string>
#include <vector>

namespace trovarium {

// The main window with photographs of known sizes in its group "Alps", and the full screen that it opens.
class ViewerWindow : public MainWindow {
protected:
    ViewerWindow()
    {
        main().dialogs().showFullScreen = [this] { fullScreen().show(); };
    }
    ~ViewerWindow() override
    {
        if (isFullScreen())
            fullScreen().unload();
    }

    // A photograph of the library of that size in pixels.
    void putPhoto(const std::string& name, int width, int height, const std::vector<std::string>& lines = {})
    {
        test.put(test.paths().PhotoPath + name, plainBitmap(width, height));
        putInfo(name, "\\Photos\\" + name, lines);
    }
    // An information file with `lines` behind the link.
    void putInfo(const std::string& name, const std::string& link, const std::vector<std::string>& lines = {})
    {
        test.put(test.paths().InfoPath + name + ".info", "PhotoPath=" + link + "\r\n" + joinedLines(lines));
    }
    void openAlbum(const std::vector<std::string>& names)
    {
        putGroup("  All Photos  ", names);
        putGroup("Alps", names);
        open();
        pressRowNamed("Alps");
    }

    void display(int position) { robot.doubleClick(main().imgThumbnail(position - 1)); }
    bool frameShows(float width, float height)
    {
        return main().imgbox.Visible() && main().imgbox.Width() == width && main().imgbox.Height() == height;
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
