// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/toolkit/FileControls.h"
#include "platform/toolkit/ListBox.h"

#include "platform/FormFixture.h"
#include "platform/toolkit/Buttons.h"
#include "support/Surroundings.h"
#include "support/TemporaryFolder.h"

#include <QAccessible>
#include <QListView>
#include <QWidget>

namespace trovarium {

using namespace std::string_literals;

struct ListsTest : FormFixture {
    ListsTest()
    {
        note(list.Click, "Click");
        note(list.DblClick, "Open");
        note(list.MouseUp, "Up");
        note(list.KeyDown, "Down");
        note(list.KeyPress, "Press");
        note(files.DblClick, "OpenFile");
        note(folders.Change, "Folder", [this] { return folders.Path(); });
        note(ok.Click, "OK");
        ok.Default = true; // but not for Enter among rows
    }

    void fill(std::initializer_list<const char*> items)
    {
        for (const char* item : items)
            list.AddItem(item);
    }
    // The folders first, then the files in them.
    void make(std::initializer_list<const char*> names, std::initializer_list<const char*> fileNames) const
    {
        for (const char* name : names)
            std::filesystem::create_directories(folder.native(name));
        for (const char* name : fileNames)
            folder.write(name, "x");
    }
    // The items of a list, the selected ones in brackets.
    static std::string itemsOf(const auto& list)
    {
        std::string text;
        for (int i = 0; i < list.ListCount(); ++i)
            text += (list.Selected(i) ? "[" + list.List(i) + "]" : list.List(i)) + " ";
        return text;
    }
    // The rows of the folder list behind the way to the folder.
    std::string subfolders() const
    {
        std::string names;
        for (int row = folders.depth(); row < folders.ListCount(); ++row)
            names += folders.rowPath(row).substr(folders.Path().size() + 1) + " ";
        return names;
    }
    void click(Control& rows, int row, int shift = NoKeys) { robot.click(rows, LeftButton, shift, at(row)); }
    static At at(int row) { return {40, 8.0F + 16.0F * static_cast<float>(row)}; }

    TemporaryFolder folder;
    const ScopedEnv home{"HOME", folder.path()};
    ListBox list{&form, {.Name = "list", .Width = 2000, .Height = 3000}};
    Button ok{&form, {.Name = "ok", .Left = 2200, .Top = 400, .Width = 1500, .Height = 300}};
    FolderList folders{&form, {.Name = "folders", .Top = 3100, .Width = 4200, .Height = 2000}};
    FileList files{&form, {.Name = "files", .Top = 5200, .Width = 4200, .Height = 1500}};
    const std::string badIndex = "Invalid property array index";
};

TEST_F(ListsTest, PressesAndKeysChooseRowsThatAHandlerMayRemoveAndUnloadTheForm)
{
    fill({"a", "b", "c"});
    show();
    list.ListIndex = 0;
    click(list, 1, CtrlKey);
    click(list, 1);
    EXPECT_EQ(taken(), "Click Click Up:1:2:600:360 Up:1:0:600:360 ") << "the choice is the same";
    list.SetFocus();
    keys({40, 13});
    robot.hold(form, 13); // which would answer the next question too
    click(list, 9);
    EXPECT_EQ(taken(), "Down:40:0 Click Down:13:0 Press:13 Up:1:0:600:2280 ") << "keys are told before they act";
    desktop.DoEvents();
    keys({38});
    EXPECT_EQ(list.Text(), "b") << "a press below the last row keeps the choice, and the keyboard goes on from it";
    list.Enabled = false;
    click(list, 0);
    EXPECT_EQ(itemsOf(list), "a [b] c ");
    list.Enabled = true;
    taken();
    QAccessibleInterface* row = QAccessible::queryAccessibleInterface(list.widget())->child(2);
    EXPECT_TRUE(robot.until([&] { // a choice is dropped until the rows are shown as they are
        row->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
        desktop.DoEvents();
        return list.Selected(2);
    })) << "without mouse and keys";
    EXPECT_EQ(itemsOf(list) + taken(), "a b [c] Click ");
    list.MultiSelect = true;
    list.Clear();
    fill({"a", "b", "x", "c", "d"}); // not painted yet
    when["Down"] = [&] {
        list.Enabled = false;
        for (int i = list.ListCount() - 1; i >= 0; --i)
            if (list.Selected(i))
                list.RemoveItem(i);
        list.Enabled = true;
    };
    click(list, 1);
    click(list, 3, ShiftKey);
    click(list, 2, CtrlKey);
    EXPECT_EQ(itemsOf(list), "a [b] x [c] d ");
    keys({46});
    click(list, 1);
    keys({46});
    EXPECT_EQ(itemsOf(list), "a d ") << "the list has kept the focus";
    when["Open"] = [&] { form.unload(); };
    robot.doubleClick(list, NoKeys, at(1));
    EXPECT_FALSE(form.isLoaded());
    EXPECT_EQ(itemsOf(list), "a [d] ");
}

TEST_F(ListsTest, FilesAreReadAgainForRefreshButNotWhereTheyCannot)
{
    make({"d.jpg", "locked"}, {"b.JPG", "a.jpg", "c.txt", ".hidden.jpg"});
    desktop.files().setFaultHook([](FileOperation operation, std::string_view path) {
        if (operation == FileOperation::List && path.ends_with("locked"))
            throw Failure(FailureKind::PathFileAccess);
    });
    show();
    folders.Path = folder.inside() + "\\";
    files.Path = folder.inside() + "\\";
    EXPECT_EQ(folders.Path() + files.Path(), folder.inside() + folder.inside()) << "no separator at the end";
    EXPECT_EQ(subfolders() + itemsOf(files) + taken(), "d.jpg locked a.jpg b.JPG c.txt ") << "it is there already";
    files.Pattern = "*.abcde;*.jpg";
    EXPECT_EQ(itemsOf(files), "a.jpg b.JPG ");
    make({"e"}, {"e.jpg", "e/f.jpg"});
    files.Path = folder.inside();
    EXPECT_EQ(subfolders() + itemsOf(files), "d.jpg locked a.jpg b.JPG ") << "the same path";
    files.Refresh();
    files.setSelected(0, true);
    for (const std::string& path :
        {folder.inside("gone"), folder.inside("a.jpg"), folder.inside("locked"), ""s, "e"s}) {
        const std::string expected = path.ends_with("locked") ? "Path/File access error" : "Path not found";
        EXPECT_EQ(failureOf([&] { files.Path = path; }), expected) << path;
        EXPECT_EQ(failureOf([&] { folders.Path = path; }), expected) << path;
    }
    EXPECT_EQ(folders.Path() + files.Path(), folder.inside() + folder.inside());
    EXPECT_EQ(subfolders() + itemsOf(files) + taken(), "d.jpg locked [a.jpg] b.JPG e.jpg ") << "all as it was";
    files.Path = folder.inside("e");
    std::filesystem::remove_all(folder.native("e"));
    files.Refresh();
    EXPECT_EQ(itemsOf(files), "") << "a folder that is gone has no files";
    EXPECT_EQ(failureOf([&] { (void)files.List(0); }), badIndex);
    EXPECT_EQ(failureOf([&] { (void)folders.rowPath(folders.ListCount()); }), badIndex);
}

TEST_F(ListsTest, TheUserChoosesFilesAndGoesThroughTheFolders)
{
    make({"b/inner", "A", ".hidden"}, {"a", "b.jpg", "c"});
    show();
    click(files, 0);
    click(files, 2, CtrlKey);
    EXPECT_EQ(itemsOf(files) + taken(), "[a] b.jpg [c] ");
    const auto& view = static_cast<const QListView&>(*files.widget());
    EXPECT_EQ(view.viewport()->height() % view.visualRect(view.model()->index(0, 0)).height(), 0) << "no row is cut";
    robot.doubleClick(files, NoKeys, at(1));
    files.SetFocus();
    keys({13});
    EXPECT_EQ(itemsOf(files) + taken(), "a [b.jpg] c OpenFile ");
    const int b = folders.depth() + 1;
    click(folders, b); // only chooses
    EXPECT_EQ(subfolders() + taken(), "A b ");
    robot.doubleClick(folders, NoKeys, at(b));
    EXPECT_EQ(folders.rowPath(0) + folders.rowPath(folders.depth() - 2), "/" + folder.inside());
    EXPECT_EQ(folders.rowPath(folders.depth() - 1) + subfolders(), folder.inside("b") + "inner ");
    folders.SetFocus();
    keys({40, 13, 38, 13});
    const std::string toB = "Folder:" + folder.inside("b") + " ";
    EXPECT_EQ(taken(), toB + "Folder:" + folder.inside("b\\inner") + " " + toB);
    folders.Path = "/";
    EXPECT_EQ(folders.depth(), 1);
    EXPECT_EQ(folders.rowPath(1).find_last_of("/\\"), 0U);
}

} // namespace trovarium
