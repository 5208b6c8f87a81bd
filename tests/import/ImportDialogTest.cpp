#include "import/ImportWindow.h"
#include "platform/toolkit/Keys.h"

namespace trovarium {

class ImportDialogTest : public ImportWindow {
protected:
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
    test.setSetting("Import", "Autonumber", "0207");
    inDialog([&] {
        EXPECT_EQ(form().File1.Pattern(), "*.abcde;*.bmp;*.gif;*.jpg;*.wmf;*.mpg;*.mov;*.avi");
        EXPECT_EQ(form().File1.ListCount(), 7);
        form().chkFilter.forEach([&](int, CheckBox& type) { type.Value = 0; });
        EXPECT_EQ(form().File1.Pattern() + std::to_string(form().File1.ListCount()), "*.abcde0");
        robot.click(form().chkFilter(2), LeftButton, NoKeys, At{7, 10});
        EXPECT_EQ(form().File1.Pattern() + form().File1.List(0), "*.abcde;*.jpgc.jpg");

        EXPECT_EQ(form().txtAutoName(1).Text(), "0207");
        form().txtAutoName(0).Text = "My.Trip:1";
        form().txtAutoName(1).Text = "A1";
        EXPECT_EQ(form().txtAutoName(0).Text() + setting("Autoname"), "My_Trip_1My_Trip_1");
        EXPECT_EQ(setting("Autonumber"), "0207") << "only the import saves it";
        robot.key(form(), EscapeKey);
        EXPECT_FALSE(form().isLoaded());
    });
}

TEST_F(ImportDialogTest, FilesComeOnTheListOnceByTheirNameAndGoByDelete)
{
    putSources({"A.JPG", "b.jpg", "c.jpg", "Sub/a.jpg", "Sub/d.jpg"});
    inDialog([&] {
        add({0, 2});
        form().Dir1.Path = sources() + "\\Sub";
        EXPECT_EQ(setting("LastPath"), sources() + "\\Sub");
        add({0, 1});
        EXPECT_EQ(entries(), "|A.JPG |c.jpg \\Sub|d.jpg ");
        EXPECT_EQ(form().lbCount.Caption(), "3");
        form().List1.SetFocus();
        form().List1.setSelected(0, true);
        form().List1.setSelected(2, true);
        robot.key(form(), DeleteKey);
        EXPECT_EQ(entries(), "|c.jpg ");
        EXPECT_EQ(form().lbCount.Caption(), "1");
        robot.key(form(), EscapeKey);
        EXPECT_TRUE(form().isLoaded()) << "Escape must not lose the list";
        robot.click(form().lbExit);
        EXPECT_FALSE(form().isLoaded());
    });
}

TEST_F(ImportDialogTest, FailuresAreLoggedAndLeaveWhatStood)
{
    putSources({"a.jpg"});
    test.setSetting("Import", "LastPath", "/media\\nobody\\gone");
    test.setSetting("Import", "Autoname", "Never read");
    inDialog([&] {
        EXPECT_EQ(form().File1.Pattern() + form().txtAutoName(0).Text(), "*.bmp;*.jpg;*.gif;*.wmfImage");
        form().List1.AddItem("/full\\path.jpg"); // as a cancelled scan leaves it
        form().List1.setSelected(0, true);
        robot.click(form().cmdRemoveFile);
        EXPECT_FALSE(form().List1.Enabled());
        desktop.files().setFaultHook([&](FileOperation operation, std::string_view path) {
            if (operation == FileOperation::List && path.starts_with(sources()))
                throw Failure(FailureKind::DeviceIo);
        });
        form().File1.Refresh();
        EXPECT_FALSE(form().AddSelectedFiles());
        EXPECT_EQ(form().MousePointer(), DefaultPointer);
        form().Drive1.Drive = "/";
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
