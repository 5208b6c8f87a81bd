// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "browser/GroupListPane.h"
#include "browser/Selection.h"
#include "browser/ThumbnailDrag.h"
#include "browser/ThumbnailPages.h"
#include "browser/frmGroups.h"
#include "browser/frmMain.h"
#include "support/Robot.h"
#include "support/ScriptedPrompts.h"
#include "support/TestAlbum.h"
#include "viewer/VideoControls.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

namespace trovarium {

using Names = std::vector<std::string>;
using Positions = std::vector<int>;

// The main window on a temporary library, with all that it opens.
struct MainWindow : testing::Test {
    MainWindow() { test.setSetting("Options", "FirstTime", "False"); }
    ~MainWindow() override
    {
        desktop.files().setFaultHook({});
        if (m_main.isLoaded())
            main().unload();
    }

    // Photographs "p1.jpg", "p2.jpg", ... in a group's list, or another stem.
    static Names names(int count, const std::string& stem = "p")
    {
        Names lines;
        for (int i = 1; i <= count; ++i)
            lines.push_back(stem + std::to_string(i) + ".jpg");
        return lines;
    }
    void putGroup(const std::string& group, const Names& lines) { test.putGroup(group + ".lst", lines); }
    // Information file and thumbnail of each name.
    void putPhotos(const Names& lines)
    {
        for (const std::string& name : lines) {
            test.put(test.paths().PhotoPath + name, plainBitmap(40, 30) + name); // each with bytes of its own
            test.put(test.paths().ThumbnailPath + name, plainBitmap(20, 15));
            test.put(
                test.paths().InfoPath + name + ".info", joinedLines({"PhotoPath=\\Photos\\" + name, "TITLE=" + name}));
        }
    }
    Names linesOf(const std::string& group) { return test.groupLines(group + ".lst"); }
    // Of the photographs of one digit.
    std::string numbersOf(const std::string& group)
    {
        std::string text;
        for (const std::string& line : linesOf(group))
            text += line.at(1);
        return text;
    }
    // The window with the group "Alps" of so many photographs on show, "Rome" of one, and more, empty: "h1", "h2".
    void openGroup(int photos, int more = 0)
    {
        putPhotos(names(photos));
        putGroup("  All Photos  ", names(photos));
        putGroup("Alps", names(photos));
        putGroup("Rome", {"old.jpg"});
        for (int i = 1; i <= more; ++i)
            putGroup("h" + std::to_string(i), {});
        open();
        pressRowNamed("Alps");
    }

    void open()
    {
        main().show();
        desktop.DoEvents();
    }
    frmMain& main() { return m_main(); }
    frmGroups& groups() { return m_groups(); }
    // A form of the program, made when it is first used.
    template <class AnyForm, class... More>
    FormHolder<AnyForm> held(More&... more)
    {
        return {desktop, [&, this] { return std::make_unique<AnyForm>(desktop, test.album(), more...); }};
    }
    // Opens the dialog by its entry, acts in it, and closes it.
    template <class Dialog>
    void inDialog(Menu& entry, FormHolder<Dialog>& dialog, const std::function<void()>& act)
    {
        robot.whenShown(dialog().Name(), [&] {
            desktop.DoEvents();
            act();
            if (dialog.isLoaded())
                dialog().unload();
        });
        robot.choose(entry);
    }

    GroupOnShow& group() { return test.album().group; }
    ViewState& view() { return test.album().view; }

    void pressRow(int row, int button = LeftButton) { robot.click(main().pctAlbumList(row), button); }
    void pressRowNamed(const std::string& group)
    {
        const Names shown = rows();
        const auto found = std::find(shown.begin(), shown.end(), group);
        ASSERT_NE(found, shown.end()) << group;
        pressRow(static_cast<int>(found - shown.begin()));
    }
    // Captions of the rows on show.
    Names rows()
    {
        Names captions;
        for (const int row : where(8, [this](int i) { return main().pctAlbumList(i).Visible(); }))
            captions.push_back(main().lbAlbumList(row).Caption());
        return captions;
    }
    Positions brightRows()
    {
        const Picture& bright = main().pctAlbumList(10).Picture();
        Positions rows = where(8, [&](int row) { return main().pctAlbumList(row).Picture() == bright; });
        EXPECT_EQ(where(8, [&](int row) { return main().pctAlbumList(row).AccessibleSelected() == true; }), rows);
        return rows;
    }
    // File names of the cells on show.
    Names cells()
    {
        Names shown;
        for (const int cell : where(16, [this](int i) { return main().lbThumbnailFile(i).Visible(); }))
            shown.push_back(main().lbThumbnailFile(cell).Caption());
        for (int cell = 0; cell < 16; ++cell)
            EXPECT_EQ(main().imgThumbnail(cell).AccessibleName(), main().lbThumbnailFile(cell).Caption());
        EXPECT_EQ(shown.size(), where(16, [this](int i) { return main().imgThumbnail(i).Visible(); }).size());
        return shown;
    }
    Positions selectedPositions()
    {
        return where(group().GroupSelect.upperBound() + 1, [this](int i) { return group().GroupSelect(i) == 1; });
    }
    // "procedure: error"
    Names logLines()
    {
        const std::string begin = "An error has occurred in '";
        const std::string middle = "'. Error = ";
        const std::string text = test.log();
        Names lines;
        for (std::size_t at = text.find(begin); at != text.npos; at = text.find(begin, at + 1)) {
            const std::size_t name = at + begin.size();
            lines.push_back(text.substr(name, text.find("\r\n", name) - name));
            lines.back().replace(lines.back().find(middle), middle.size(), ": ");
        }
        return lines;
    }
    void select(const Positions& positions)
    {
        main().selection().SetGroupListSelect(-1, NoKeys);
        for (const int position : positions)
            main().selection().SetGroupListSelect(position, CtrlKey);
    }
    std::string setting(std::string_view section, std::string_view key)
    {
        return test.album().Settings().GetOWSetting("Trovarium", section, key, "none");
    }
    std::string page() { return main().lbStatusPage.Caption(); }

    Desktop& desktop = testDesktop();
    TestAlbum test{desktop.files()};
    ScriptedPrompts prompts{desktop};
    Robot robot{desktop};
    VideoControls video{desktop, test.album()};
    std::string opened; // the names of the dialogs that are no forms here

private:
    // The numbers from 0 below `end` for which it holds.
    template <class Holds>
    static Positions where(int end, const Holds& holds)
    {
        Positions found;
        for (int i = 0; i < end; ++i)
            if (holds(i))
                found.push_back(i);
        return found;
    }
    // A dialog that only leaves its name.
    std::function<void()> tell(const std::string& name)
    {
        return [this, name] { opened += name + " "; };
    }

    FormHolder<frmMain> m_main{
        desktop, [this] {
            return std::make_unique<frmMain>(desktop, test.album(), video,
                Dialogs{tell("welcome"), [this](int mode) { groups().showFor(mode); }, tell("export"), tell("full"),
                    tell("show"), tell("search"), tell("import"), tell("midi"), tell("wav"), tell("about"), [] {}, {}});
        }};
    FormHolder<frmGroups> m_groups{
        desktop, [this] { return std::make_unique<frmGroups>(desktop, test.album(), main()); }};
};

} // namespace trovarium
