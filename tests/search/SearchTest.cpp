// SPDX-License-Identifier: GPL-3.0-or-later

#include "search/frmSearch.h"

#include "browser/MainWindow.h"

namespace trovarium {

using enum FileOperation;

struct SearchTest : MainWindow {
    SearchTest()
    {
        putGroup("  All Photos  ", {});
        test.put(test.paths().SlideGroupPath + "Trip.LST", "old.jpg\r\n");
        open();
        main().dialogs().showSearch = [this] { search.showModal(); };
    }
    ~SearchTest() override { search.unload(); }

    void put(const std::string& name, const Names& lines)
    {
        test.put(test.paths().InfoPath + name + ".info", joinedLines(lines));
    }
    // Gives the whole group; "found" begins empty each time, and so tells what the last search found.
    std::string append(const std::string& group = "found")
    {
        if (group == "found")
            putGroup(group, {});
        search.cmbGroupName.Text = group;
        search.cmdSave_Click();
        std::string names;
        for (const std::string& line : linesOf(group))
            names += line + " ";
        return names;
    }

    frmSearch search{desktop, test.album(), main()};
};

TEST_F(SearchTest, AFieldAsksOnlyTheLinesThatAreThere)
{
    put("a", {"PhotoPath=paris", "TITLE=Paris in May", "YEAR=2001.9", "PLACE=N\xEEmes", "PEOPLE=Lee"});
    put("b", {"PhotoPath=paris", "title=Joanne", "PLACE=Rome", "EVENT=Fair", "KEYWORDS=sea", "PHOTOGRAPHER=Kim"});
    put("c", {"Year=1998", "EVENT=", "title = Paris", "ImageWidth=77"});
    put("d", {"YEAR=1990", "TITLE=*", "TITLE=last"});
    test.put(test.paths().InfoPath + "e.txt", "TITLE=Paris");
    TextBox &title = search.txtTitle, &name = search.txtFilename;
    const struct {
        TextBox& field;
        std::string text, expected;
    } rows[] = {{.field = title, .text = "paris", .expected = "a c "}, {title, "Ann", "b c "},
        {title, "title=", "a b c d "}, {title, "P*s", "c "}, {title, "last", "c "},
        {search.txtPlace, "N\u00CEMES", "a c d "}, {search.txtPeople, "x", "b c d "},
        {search.txtPhotographer, "x", "a c d "}, {search.txtEvent, "x", "a d "}, {search.txtkeywords, "x", "a c d "},
        {name, ".INFO", "a b c d "}, {name, "B.I", "b "}, {name, "*", "a b c d "},
        {search.txtYear, "year", "a b c d "}};
    for (const auto& [field, text, expected] : rows) {
        field.Text = text;
        search.cmdSearch_Click();
        field.Text = "";
        EXPECT_EQ(append(), expected) << field.Name() << " " << text;
    }
    search.SortResultsByYear();
    EXPECT_EQ(append(), "d c a b ") << "2001.9 counts as 2001, and b takes the year of the file before";
}

TEST_F(SearchTest, AUserSearchesAndAppends)
{
    for (int i = 1; i <= 300; ++i)
        put("p" + std::to_string(i) + ".jpg",
            {"PLACE=" + std::string(i == 17 ? 5000 : 0, 'x'), std::string("TITLE=") + (i == 7 ? "Snow" : "Rain")});
    main().dialogs().showImport = [&] {
        EXPECT_EQ(group().CurrentGroupName, "");
        search.SetNewList({}); // as a run does
        test.put(test.paths().SlideGroupPath + "Trip.LST", joinedLines(names(3)));
    };
    pressRowNamed("Trip");
    robot.whenShown("frmSearch", [&] {
        robot.type(search, "jpg"); // the focus is in the first field
        robot.when(
            [&] { return search.cmdSearch.Caption() == "Cancel"; }, [&] { robot.doubleClick(search.cmdSearch); });
        robot.key(search, EnterKey); // the second press cancels, the third comes too early
        EXPECT_TRUE(!append().empty() && !search.lbProgress.Caption().starts_with("Searched 300"));

        search.txtFilename.Text = "7.";
        search.txtTitle.Text = "snow"; // a line that is cut off would match, too
        robot.click(search.cmdSearch);
        EXPECT_EQ(search.lbProgress.Caption(), "Searched 300 (100%) -> Found 1");
        for (const char* unusable : {"", "tmpgroup"}) {
            prompts.expectNotice("Please create group name OR select from list to append to existing group.");
            append(unusable);
        }
        prompts.expectNotice(
            "Your 'GroupName' contained illegal characters. These were replace with the underscore character. Press "
            "'Append' again to accept the changes and save the search results to new group name.");
        append("My.Trip");
        EXPECT_EQ(search.cmbGroupName.Text(), "My_Trip");
        search.cmbGroupName.SetFocus();
        robot.atNextTurn([&] { robot.key(search, EnterKey); }); // while the group on show is read again
        robot.key(search, EnterKey);
        robot.hold(search, EnterKey);
        EXPECT_EQ(search.lbAppended.Caption(), "Appended 1 photograph to \"My_Trip\"");
        EXPECT_EQ(append("My_Trip"), "p7.jpg p7.jpg ");
        append("Trip");
        EXPECT_EQ(cells(), (Names{"old.jpg", "p7.jpg"})) << "the group on show is read again";
        EXPECT_EQ(brightRows(), Positions{3}) << "on the row where it stands now";
        select({1});
        main().thumbnailDrag().moveSelected(2);
        EXPECT_EQ(test.bytes(test.paths().SlideGroupPath + "Trip.LST"), "p7.jpg\r\nold.jpg\r\n");
        robot.click(search.cmdImport);
        EXPECT_EQ(main().lbCount.Caption(), "Group [Trip] Viewing 1 of 3");
        EXPECT_EQ(append("Trip"), "p1.jpg p2.jpg p3.jpg p7.jpg ") << "what was found before the import";
        robot.key(search, EscapeKey);
    });
    main().mnuGroupSearchAppend.Click.raise();
    EXPECT_EQ(rows(), (Names{"  All Photos  ", "found", "My_Trip", "Trip"}));
    robot.key(main(), ZKey, CtrlKey);
    EXPECT_EQ(cells(), names(3)) << "the last append is taken back";
    robot.key(main(), ZKey, CtrlKey | ShiftKey);
    EXPECT_EQ(cells().size() + selectedPositions().at(0), 8U) << "the fourth of four is selected";
}

TEST_F(SearchTest, AFailureEndsASearchAndASaveWithoutAWord)
{
    CheckedArray<std::string> names;
    names.append("x.jpg.info");
    names.append("y.info");
    search.SetNewList(names);
    search.SortResultsByYear(); // there are no years
    EXPECT_EQ(append(), "x.jpg y ");
    put("a", {"YEAR=1997"});
    put("c", {"YEAR=1999"});
    search.txtYear.Text = "*";
    const struct {
        std::string year; // of b
        FileOperation operation;
        std::string place, told;
    } faults[] = {{.year = "1998-99", .operation = Picture, .place = "", .told = "1 (33%) -> Found 1"},
        {"1998", Open, "c.info", "2 (67%) -> Found 2"}, {"", LineInput, "c.info", "2 (67%) -> Found 2"},
        {"", List, "*.info", "0 (0%) -> Found 0"}};
    for (const auto& [year, operation, place, told] : faults) {
        put("b", {"YEAR=" + year});
        test.failAt(operation, place);
        search.cmdSearch_Click();
        desktop.files().setFaultHook({});
        EXPECT_EQ(search.cmdSearch.Caption() + search.lbProgress.Caption(), "SearchSearched " + told) << year << place;
        EXPECT_EQ(desktop.files().freeFile(), 1);
        EXPECT_EQ(append(), "a b ") << year << place;
    }
    for (const FileOperation operation : {Open, Print, Close}) {
        putGroup("Alps", {"old.jpg"});
        test.failAt(operation, "Alps.lst");
        EXPECT_TRUE(append("Alps").starts_with("old.jpg "));
        EXPECT_EQ(search.lbAppended.Caption(), "Appending to \"Alps\" failed");
        desktop.files().setFaultHook({});
        EXPECT_EQ(desktop.files().freeFile(), 1) << "none stays open";
    }
}

} // namespace trovarium
