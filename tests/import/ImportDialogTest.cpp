#include "import/ImportWindow.h"

#include "platform/toolkit/Keys.h"
#include "runtime/Failure.h"
#include "store/Album.h"

namespace trovarium {

class ImportDialogTest : public ImportWindow {
protected:
    std::string setting(std::string_view key)
    {
        return test.album().Settings().GetOWSetting("Trovarium", "Import", key, "none");
    }
    void select(std::initializer_list<int> rows)
    {
        for (const int row : rows)
            form().File1.setSelected(row, true);
    }
};

TEST_F(ImportDialogTest, TheTypesOfTheCheckedBoxesAreListed)
{
    for (const char* name : {"a.bmp", "b.GIF", "c.jpg", "d.wmf", "e.mpg", "f.mov", "g.avi", "h.abcdef", "i.png"})
        putSource(name);
    inDialog([&] {
        EXPECT_EQ(form().File1.Pattern(), "*.abcde;*.bmp;*.gif;*.jpg;*.wmf;*.mpg;*.mov;*.avi");
        EXPECT_EQ(form().File1.ListCount(), 7);
        EXPECT_TRUE(form().Dir1.hasFocus());
        form().chkFilter.forEach([&](int, CheckBox& type) { robot.click(type, LeftButton, NoKeys, At{7, 10}); });
        EXPECT_EQ(form().File1.Pattern(), "*.abcde");
        EXPECT_EQ(form().File1.ListCount(), 0);
        robot.click(form().chkFilter(2), LeftButton, NoKeys, At{7, 10});
        EXPECT_EQ(form().File1.Pattern(), "*.abcde;*.jpg");
        EXPECT_EQ(form().File1.List(0), "c.jpg");
    });
}

TEST_F(ImportDialogTest, FilesComeOnTheListOnceByTheirNameAndGoByDelete)
{
    for (const char* name : {"A.JPG", "b.jpg", "c.jpg", "Sub/a.jpg", "Sub/d.jpg"})
        putSource(name);
    inDialog([&] {
        select({0, 2});
        robot.click(form().cmdAddFile);
        form().Dir1.Path = sources() + "\\Sub";
        EXPECT_EQ(setting("LastPath"), sources() + "\\Sub");
        select({0, 1});
        robot.click(form().cmdAddFile);
        EXPECT_EQ(entries(), (std::vector<std::string>{"|A.JPG", "|c.jpg", "\\Sub|d.jpg"}));
        EXPECT_EQ(form().lbCount.Caption(), "3");

        form().lbCount.Caption = "?";
        form().List1.SetFocus();
        robot.key(form(), DeleteKey);
        EXPECT_EQ(form().lbCount.Caption(), "3") << "nothing was chosen";
        form().List1.setSelected(0, true);
        form().List1.setSelected(2, true);
        form().lbCount.Caption = "?";
        robot.key(form(), F2Key);
        EXPECT_EQ(form().lbCount.Caption(), "3") << "any key writes the count";
        robot.click(form().cmdRemoveFile);
        EXPECT_EQ(entries(), std::vector<std::string>{"|c.jpg"});
        EXPECT_EQ(form().lbCount.Caption(), "1");

        robot.key(form(), EscapeKey);
        EXPECT_TRUE(form().isLoaded()) << "Escape must not lose the list";
        robot.click(form().lbExit);
        EXPECT_FALSE(form().isLoaded());
    });
}

TEST_F(ImportDialogTest, ThePrefixIsMendedAndSavedAndTheNumberIsNot)
{
    test.setSetting("Import", "Autonumber", "0207");
    inDialog([&] {
        EXPECT_EQ(form().txtAutoName(1).Text(), "0207");
        form().txtAutoName(0).Text = "My.Trip:1";
        form().txtAutoName(1).Text = "A1";
        EXPECT_EQ(form().txtAutoName(0).Text(), "My_Trip_1");
        EXPECT_EQ(setting("Autoname"), "My_Trip_1");
        EXPECT_EQ(setting("Autonumber"), "0207");
        robot.key(form(), EscapeKey);
        EXPECT_FALSE(form().isLoaded());
    });
}

TEST_F(ImportDialogTest, FailuresAreLoggedAndLeaveWhatStood)
{
    putSource("a.jpg");
    test.setSetting("Import", "LastPath", "/media\\nobody\\gone");
    test.setSetting("Import", "Autoname", "Never read");
    inDialog([&] {
        EXPECT_EQ(form().File1.Pattern(), "*.bmp;*.jpg;*.gif;*.wmf");
        EXPECT_EQ(form().txtAutoName(0).Text(), "Image");

        form().List1.AddItem("/full\\path.jpg"); // as a cancelled scan leaves it
        form().List1.setSelected(0, true);
        robot.click(form().cmdRemoveFile);
        EXPECT_FALSE(form().List1.Enabled());

        desktop.files().setFaultHook([&](FileOperation operation, std::string_view path) {
            if (operation == FileOperation::List && path.starts_with(sources()))
                throw Failure(FailureKind::DeviceIo);
        });
        form().File1.Refresh();
        form().File1.Pattern = "*.jpg";
        EXPECT_FALSE(form().AddSelectedFiles());
        EXPECT_EQ(form().MousePointer(), DefaultPointer);
        form().Drive1.Drive = "/";
        form().Dir1.Path = "/";
        prompts.expectNotice("Error: Device I/O error");
        form().Drive1.Drive = sources();
        EXPECT_EQ(form().Dir1.Path(), "/");
        desktop.files().setFaultHook({});
        form().Drive1.chosen(1);
        EXPECT_EQ(form().Dir1.Path(), sources()) << "a second try";
    });
    EXPECT_EQ(logLines(),
        (std::vector<std::string>{"An error has occurred in 'Form_Load'. Error = Device unavailable",
            "An error has occurred in 'List1_KeyDown'. Error = Invalid property array index",
            "An error has occurred in 'AddSelectedFiles'. Error = Device I/O error"}));
}

} // namespace trovarium
