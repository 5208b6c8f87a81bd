#pragma once

#include "browser/frmGroups.h"
#include "browser/frmMain.h"
#include "platform/toolkit/FormSlot.h"
#include "support/PlainBitmap.h"
#include "support/Robot.h"
#include "support/ScriptedPrompts.h"
#include "support/TestAlbum.h"
#include "viewer/VideoControls.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace trovarium {

// The main window on a temporary library, with all that it opens.
class MainWindow : public testing::Test {
public:
    MainWindow();
    ~MainWindow() override;

protected:
    // Photographs "p1.jpg", "p2.jpg", ... in a group's list, or another stem.
    static std::vector<std::string> names(int count, const std::string& stem = "p");
    void putGroup(const std::string& group, const std::vector<std::string>& lines);
    // Information file and thumbnail of each name.
    void putPhotos(const std::vector<std::string>& lines);
    std::vector<std::string> linesOf(const std::string& group);
    // The window with the group "Alps" of so many photographs on show, "Rome" of one, and more, empty: "h1", "h2".
    void openGroup(int photos, int more = 0);

    void open();
    frmMain& main() { return m_main(); }
    frmGroups& groups() { return m_groups(); }
    bool isOpen() const { return m_main.isLoaded(); }

    GroupOnShow& group() { return test.album().group; }
    ViewState& view() { return test.album().view; }

    void pressRow(int row, int button = LeftButton);
    void pressRowNamed(const std::string& group);
    std::vector<std::string> rows();  // captions of the rows on show
    int brightRow();                  // -1 for none
    std::vector<std::string> cells(); // file names of the cells on show
    std::vector<int> framedCells();   // with a selection frame
    std::vector<int> selectedPositions();
    std::vector<std::string> logLines(); // without their time
    void select(const std::vector<int>& positions);

    Desktop& desktop;
    TestAlbum test;
    ScriptedPrompts prompts;
    Robot robot;
    VideoControls video;
    int firstTimeShown = 0;
    int fullScreenShown = 0;
    int formsUnloaded = 0;

private:
    Dialogs dialogs();

    FormSlot<frmMain> m_main;
    FormSlot<frmGroups> m_groups;
};

} // namespace trovarium
