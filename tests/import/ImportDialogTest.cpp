// SPDX-License-Identifier: GPL-3.0-or-later

#include "import/ImportWindow.h"

namespace trovarium {

struct ImportDialogTest : ImportWindow {
    void add(std::initializer_list<int> rows)
    {
        for (const int row : rows)
            form().File1.setSelected(row, true);
        robot.click(form().cmdAddFile);
    }
};

TEST_F(ImportDialogTest, TheTypesOfTheCheckedBoxesAreListedAndThePrefixIsMended)
{
    putSources({"a.bmp", "b.GIF", "c.jpg", "d.wmf", "e.mpg", "f.mov", "g.avi", "h.abcdef", "i.png"});
    test.setSetting("Import", "Autoname", "Trip");
    test.setSetting("Import", "Autonumber", "0207");
    inDialog([&] {
        EXPECT_TRUE(form().Dir1.hasFocus() && form().chkOptions(3).Value() == 1);
        EXPECT_EQ(form().txtAutoName(0).Text() + form().txtAutoName(1).Text(), "Trip0207");
        EXPECT_EQ(form().File1.Pattern(), "*.abcde;*.bmp;*.gif;*.jpg;*.wmf;*.mpg;*.mov;*.avi");
        EXPECT_EQ(form().File1.ListCount(), 7);
        form().chkFilter.forEach([&](int, CheckBox& type) { type.Value = 0; });
        EXPECT_EQ(form().File1.Pattern() + std::to_string(form().File1.ListCount()), "*.abcde0");
        robot.click(form().chkFilter(2), LeftButton, NoKeys, At{7, 10});
        EXPECT_EQ(form().File1.Pattern() + form().File1.List(0), "*.abcde;*.jpgc.jpg");
        form().txtAutoName(1).Text = "A1";
        form().txtAutoName(0).Text = "My.Trip:1";
        EXPECT_EQ(form().txtAutoName(0).Text() + setting("Import", "Autoname"), "My_Trip_1My_Trip_1");
        EXPECT_EQ(setting("Import", "Autonumber"), "0207") << "only the import saves it";
        add({0});
        robot.click(form().cmdImport);
        robot.key(form(), EscapeKey);
        EXPECT_FALSE(form().isLoaded()) << "all on the list is imported";
    });
}

TEST_F(ImportDialogTest, FilesComeOnTheListOnceByTheirNameAndGoByDelete)
{
    putSources({"A.JPG", "b.jpg", "c.jpg", "Sub/a.jpg", "Sub/d.jpg"});
    inDialog([&] {
        add({0, 2});
        form().Dir1.Path = sources() + "\\Sub";
        EXPECT_EQ(setting("Import", "LastPath"), sources() + "\\Sub");
        add({0, 1});
        EXPECT_EQ(entries(), "|A.JPG |c.jpg \\Sub|d.jpg ");
        form().List1.SetFocus();
        form().List1.setSelected(0, true);
        form().List1.setSelected(2, true);
        robot.key(form(), DeleteKey);
        EXPECT_EQ(entries(), "|c.jpg ");
        EXPECT_EQ(form().lbCount.Caption(), "1");
        robot.key(form(), EscapeKey);
        EXPECT_TRUE(form().isLoaded() && form().List1.Enabled()) << "Escape must not lose the list";
        robot.click(form().lbExit);
        EXPECT_FALSE(form().isLoaded());
    });
    EXPECT_EQ(logLines(), Names());
}

} // namespace trovarium
