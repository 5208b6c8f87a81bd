#include "search/frmSearch.h"

#include "browser/GroupListPane.h"
#include "browser/MainWindow.h"
#include "platform/toolkit/Desktop.h"
#include "platform/toolkit/Keys.h"
#include "runtime/Failure.h"

#include <algorithm>

namespace trovarium {

using enum FileOperation;

class SearchTest : public MainWindow {
protected:
    SearchTest()
    {
        putGroup("  All Photos  ", {});
        open();
        main().dialogs().showSearch = [this] { search.showModal(); };
    }
    ~SearchTest() override { search.unload(); }

    void put(const std::string& name, const std::vector<std::string>& lines)
    {
        test.put(test.paths().InfoPath + name + ".info", joinedLines(lines));
    }
    void failAt(FileOperation operation, const std::string& place)
    {
        desktop.files().setFaultHook([operation, place](FileOperation now, std::string_view path) {
            if (now == operation && path.find(place) != std::string_view::npos)
                throw Failure(FailureKind::DeviceIo);
        });
    }
    std::vector<std::string> append(const std::string& group)
    {
        search.cmbGroupName.Text = group;
        search.cmdSave_Click();
        return linesOf(group);
    }
    TextBox& fieldNamed(const std::string& name)
    {
        const auto found = std::ranges::find_if(search.controls(), [&](Control* one) { return one->Name() == name; });
        return dynamic_cast<TextBox&>(**found);
    }
    // What the last search found, by way of a group.
    std::string found()
    {
        putGroup("found", {});
        std::string names;
        for (const std::string& line : append("found"))
            names += line + " ";
        return names;
    }

    struct Fault {
        std::string year, place, told, kept;
        FileOperation operation = Picture;
    };

    frmSearch search{desktop, test.album(), main()};
};

TEST_F(SearchTest, AFieldAsksOnlyTheLinesThatAreThere)
{
    put("a", {"PhotoPath=paris", "TITLE=Paris in May", "YEAR=2001.9", "PLACE=N\xEEmes", "PEOPLE=Lee"});
    put("b", {"PhotoPath=paris", "title=Joanne", "PLACE=Rome", "EVENT=Fair", "KEYWORDS=sea", "PHOTOGRAPHER=Kim"});
    put("c", {"Year=1998", "EVENT=", "title = Paris", "ImageWidth=77"});
    put("d", {"YEAR=2001", "TITLE=*", "TITLE=last"});
    const std::string all = "a b c d ";
    const std::string rows[][3] = {{"txtTitle", "paris", "a c "}, {"txtTitle", "Ann", "b c "}, {"txtTitle", "*", all},
        {"txtTitle", "title=", all}, {"txtTitle", "P*s", "c "}, {"txtTitle", "last", "c "}, {"txtYear", "year", all},
        {"txtPlace", "N\u00CEMES", "a c d "}, {"txtPeople", "x", "b c d "}, {"txtPhotographer", "x", "a c d "},
        {"txtEvent", "x", "a d "}, {"txtkeywords", "x", "a c d "}, {"txtFilename", ".INFO", all},
        {"txtFilename", "B.I", "b "}, {"txtFilename", "*", all}, {"txtTitle", "", all}};
    for (const auto& [name, text, expected] : rows) {
        TextBox& field = fieldNamed(name);
        field.Text = text;
        search.cmdSearch_Click();
        EXPECT_EQ(found(), expected) << name << " " << text;
        field.Text = "";
    }
    search.SortResultsByYear();
    EXPECT_EQ(found(), "a b c d ") << "years are only known when they were asked for";
    search.txtYear.Text = "*";
    search.cmdSearch_Click();
    search.SortResultsByYear();
    EXPECT_EQ(found(), "c a b d ") << "2001.9 counts as 2001, and b takes the year of the file before";
    search.txtYear.Text = "1998";
    search.txtTitle.Text = "paris";
    search.cmdSearch_Click();
    EXPECT_EQ(found(), "c ") << "all fields have to match";
}

TEST_F(SearchTest, AUserSearchesAndAppends)
{
    for (int i = 1; i <= 300; ++i)
        put("p" + std::to_string(i) + ".jpg", {});
    test.put(test.paths().SlideGroupPath + "Trip.LST", "old.jpg\r\n");
    main().groupList().LoadGroupNames();
    bool imported = false;
    main().dialogs().showImport = [&] { imported = group().CurrentGroupName.empty(); };
    robot.whenShown("frmSearch", [&] {
        EXPECT_EQ(search.cmbGroupName.List(1), "Trip");
        robot.type(search, "jpg");
        EXPECT_EQ(search.txtFilename.Text(), "jpg") << "the focus is there";
        // The second press cancels, the third comes too early for a new search.
        robot.when([&] { return search.cmdSearch.Caption() == "Cancel"; },
            [&] {
                robot.click(search.cmdSearch);
                robot.click(search.cmdSearch);
            });
        robot.key(search, EnterKey);
        EXPECT_EQ(search.cmdSearch.Caption(), "Search");
        const std::size_t count = append("found").size();
        EXPECT_TRUE(count > 0 && count < 300) << count;
        EXPECT_TRUE(search.lbProgress.Caption().starts_with("Searched " + std::to_string(count) + " ("));

        search.txtFilename.Text = "p7.";
        robot.click(search.cmdSearch);
        EXPECT_EQ(search.lbProgress.Caption(), "Searched 300 (100%) -> Found 1");
        EXPECT_EQ(search.shpProgress.Width(), search.pctProgress.ScaleWidth());
        prompts.expectNotice("Please create group name OR select from list to append to existing group.");
        append("");
        prompts.expectNotice(
            "Your 'GroupName' contained illegal characters. These were replace with the underscore character. Press "
            "'Append' again to accept the changes and save the search results to new group name.");
        append("My.Trip");
        EXPECT_EQ(search.cmbGroupName.Text(), "My_Trip");
        robot.click(search.cmdSave);
        EXPECT_EQ(append("My_Trip"), (std::vector<std::string>{"p7.jpg", "p7.jpg"}));
        append("Trip");
        EXPECT_EQ(test.bytes(test.paths().SlideGroupPath + "Trip.LST"), "old.jpg\r\np7.jpg\r\n");
        search.cmdImport_Click();
        EXPECT_TRUE(imported);
        robot.key(search, EscapeKey);
    });
    robot.choose(main().mnuEditSearchAppend);
    EXPECT_EQ(rows(), (std::vector<std::string>{"  All Photos  ", "found", "My_Trip", "Trip"}));
}

TEST_F(SearchTest, AFailureEndsASearchAndASaveWithoutAWord)
{
    put("a", {"YEAR=1997"});
    put("c", {"YEAR=1999"});
    search.txtYear.Text = "*";
    for (const auto& [year, place, told, kept, operation] : {Fault{"1998-99", "", "1 (33%) -> Found 1", "a b "},
             {"40000", "", "1 (33%) -> Found 1", "a b "}, {"1998", "c.info", "2 (67%) -> Found 2", "a b ", Open},
             {"1998", "c.info", "2 (67%) -> Found 2", "a b ", LineInput},
             {"1998", "Photo_Info", "0 (0%) -> Found 0", "", List}, {"1998", "", "3 (100%) -> Found 3", "a b c "}}) {
        put("b", {"YEAR=" + year});
        failAt(operation, place);
        search.cmdSearch_Click();
        desktop.files().setFaultHook({});
        EXPECT_EQ(search.lbProgress.Caption(), "Searched " + told) << year << place;
        EXPECT_EQ(search.cmdSearch.Caption(), "Search");
        EXPECT_EQ(desktop.files().freeFile(), 1);
        EXPECT_EQ(found(), kept) << year << place;
    }
    for (const FileOperation operation : {Open, Print, Close}) {
        putGroup("Alps", {"old.jpg"});
        failAt(operation, "Alps.lst");
        EXPECT_EQ(append("Alps").front(), "old.jpg");
        EXPECT_EQ(desktop.files().freeFile(), 1);
        EXPECT_EQ(search.MousePointer(), DefaultPointer);
        EXPECT_EQ(main().lstSlideGroups.List(1), "Alps") << "the groups are read again all the same";
    }
    EXPECT_EQ(logLines(), std::vector<std::string>{});
}

} // namespace trovarium
