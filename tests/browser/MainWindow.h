#pragma once

#include "browser/GroupListPane.h"
#include "browser/Selection.h"
#include "browser/ThumbnailDrag.h"
#include "browser/ThumbnailPages.h"
#include "browser/frmGroups.h"
#include "browser/frmMain.h"
#include "platform/toolkit/Form.h"
#include "platform/toolkit/Units.h"
#include "support/Robot.h"
#include "support/ScriptedPrompts.h"
#include "support/TestAlbum.h"
#include "viewer/VideoControls.h"

#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace trovarium {

using Names = std::vector<std::string>;
using Positions = std::vector<int>;

// The main window on a temporary library, with all that it opens.
class MainWindow : public testing::Test {
public:
    MainWindow();
    ~MainWindow() override;

protected:
    // Photographs "p1.jpg", "p2.jpg", ... in a group's list, or another stem.
    static Names names(int count, const std::string& stem = "p");
    void putGroup(const std::string& group, const Names& lines) { test.putGroup(group + ".lst", lines); }
    // Information file and thumbnail of each name.
    void putPhotos(const Names& lines);
    Names linesOf(const std::string& group) { return test.groupLines(group + ".lst"); }
    std::string numbersOf(const std::string& group); // of the photographs of one digit
    // The window with the group "Alps" of so many photographs on show, "Rome" of one, and more, empty: "h1", "h2".
    void openGroup(int photos, int more = 0);

    void open();
    frmMain& main() { return m_main(); }
    frmGroups& groups() { return m_groups(); }
    bool isOpen() const { return m_main.isLoaded(); }

    GroupOnShow& group() { return test.album().group; }
    ViewState& view() { return test.album().view; }

    void pressRow(int row, int button = LeftButton) { robot.click(main().pctAlbumList(row), button); }
    void pressRowNamed(const std::string& group);
    Names rows(); // captions of the rows on show
    Positions brightRows();
    Names cells(); // file names of the cells on show
    Positions selectedPositions();
    Names logLines(); // without their time
    void select(const Positions& positions);
    std::string askRemoval()
    {
        return "Are you sure you want to remove selected photograph(s) from the program? The removed photograph(s) "
               "will be place in the following folder -> "
            + toNativePath(test.paths().PhotoPath + "Removed");
    }
    std::string setting(std::string_view section, std::string_view key)
    {
        return test.album().Settings().GetOWSetting("Trovarium", section, key, "none");
    }
    std::string page() { return main().lbStatusPage.Caption(); }

    Desktop& desktop;
    TestAlbum test;
    ScriptedPrompts prompts;
    Robot robot;
    VideoControls video;
    std::string opened; // the names of the dialogs that are no forms here

private:
    FormHolder<frmMain> m_main;
    FormHolder<frmGroups> m_groups;
};

} // namespace trovarium
