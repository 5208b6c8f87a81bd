// SPDX-License-Identifier: GPL-3.0-or-later

#include "import/ImportWindow.h"

#include <algorithm>

namespace trovarium {

struct ImportRunTest : ImportWindow {
    // Puts these on the list, and nothing else, and imports them; the boxes are those to check.
    void import(const std::vector<std::string>& files, const std::vector<int>& boxes, const std::string& folder)
    {
        form().List1.Clear();
        form().List2.Clear();
        for (const std::string& name : files) {
            form().List1.AddItem(name);
            form().List2.AddItem(folder);
        }
        form().chkOptions.forEach([&](int i, CheckBox& box) { box.Value = std::count(boxes.begin(), boxes.end(), i); });
        robot.click(form().cmdImport);
    }
    std::string info(const std::string& name) { return test.bytes(test.paths().InfoPath + name + ".info"); }
    std::string photo(const std::string& name) { return test.bytes(test.paths().PhotoPath + name); }
    // Of each an "i" for an information file, "p" for a photograph, "g" for each place in the two groups.
    std::string taken(const std::vector<std::string>& files)
    {
        std::string marks;
        for (const std::string& name : files) {
            marks.append(info(name).empty() ? "" : "i").append(photo(name).empty() ? "" : "p");
            for (const std::vector<std::string>& group : {linesOf("Alps"), linesOf("  All Photos  ")})
                marks.append(std::count(group.begin(), group.end(), name), 'g');
            marks += " ";
        }
        return marks;
    }
    void expectErrors(const std::string& name, const std::string& error = "File already exists")
    {
        prompts.expectNotice("Error(s) occurred with the following files during import process.\r\r" + name
            + "    Error=" + error + "\r");
    }
};

enum { Overwrite = 0, OverwriteInfo = 1, AutoName = 2, Links = 3 };

TEST_F(ImportRunTest, PhotographsGetInformationThumbnailsAndTheirPlace)
{
    putSources({"a.jpg", "e.jpg"}, plainBitmap(8, 6));
    inDialog([&] {
        putGroup("Aix", {});
        import({"a.jpg"}, {AutoName}, sources());
        EXPECT_TRUE(info("Image0100.jpg").starts_with("PhotoPath=" + test.paths().PhotoPath + "Image0100.jpg\r\n"));
        EXPECT_TRUE(test.isThere(test.paths().ThumbnailPath + "Image0100.jpg"));
        EXPECT_EQ(cells(), (Names{"p1.jpg", "Image0100.jpg"})) << "the group on show is read again";
        EXPECT_EQ(brightRows(), Positions{2}) << "behind one that came meanwhile";
        EXPECT_EQ(taken({"Image0100.jpg"}), "ipgg ");
        EXPECT_TRUE(search.isLoaded() && !search().isShown() && search().cmbGroupName.Text().empty());
        group().CurrentGroupName = "  all photos  ";
        expectErrors("a.jpg");
        import({"a.jpg", "a.jpg", "b.jpg"}, {Links}, "/none");
        EXPECT_TRUE(info("a.jpg").starts_with("PhotoPath=/none\\a.jpg\r\n"));
        EXPECT_EQ(linesOf("  All Photos  ").size(), 4U) << "once, though it is the group on show too";
        group().CurrentGroupName = "Alps";
        test.files().remove(test.paths().SlideGroupPath + "Alps.lst");
        import({"e.jpg"}, {Links}, sources());
        EXPECT_EQ(taken({"e.jpg"}), "ig ") << "no import brings a group back";
    });
}

TEST_F(ImportRunTest, NothingIsLostByOverwriting)
{
    putSources({"p1.jpg", "d.jpg"});
    putSources({"c.jpg"}, "new");
    inDialog([&] {
        expectErrors("p1.jpg");
        import({"p1.jpg"}, {Overwrite}, sources());
        EXPECT_EQ(photo("p1.jpg"), plainBitmap(40, 30) + "p1.jpg") << "known, so it stays";
        test.put(test.paths().PhotoPath + "d.jpg", "dropped");
        test.failAt(FileOperation::Rename); // so that the box makes no room
        for (const int box : {-1, int(Links), int(Overwrite)}) {
            expectErrors("d.jpg");
            import({"d.jpg"}, {box}, sources());
        }
        desktop.files().setFaultHook({});
        test.put(test.paths().PhotoPath + "Removed\\d.jpg", "before");
        expectErrors("d.jpg"); // it would have to make room where the source lies
        import({"d.jpg"}, {Overwrite}, test.paths().PhotoPath + "Removed");
        import({"d.jpg"}, {Overwrite, Links}, test.paths().PhotoPath);
        EXPECT_EQ(photo("d.jpg") + taken({"d.jpg"}) + photo("Removed\\d.jpg"), "droppedipgg before");
        for (const std::string& path : {test.paths().PhotoPath + "c.jpg", test.paths().InfoPath + "c.jpg"})
            test.put(path, "old");
        import({"c.jpg"}, {Overwrite, OverwriteInfo, Links}, sources());
        EXPECT_EQ(photo("c.jpg") + test.bytes(test.paths().InfoPath + "c.jpg") + photo("Removed\\c.jpg"), "old");
    });
}

TEST_F(ImportRunTest, AutomaticNumbersKeepTheWidthOfTheFirst)
{
    const struct {
        std::string start, third, next;
    } cases[] = {{.start = "0098", .third = "0100.x.jpg", .next = "0101"}, {"9", "11.x.jpg", "12"},
        {"A1", "02.x.jpg", "03"}, {"-10", "-008.x.jpg", "-007"}, {"", "2.x.jpg", "3"}};
    inDialog([&] {
        for (const auto& [start, third, next] : cases) {
            form().txtAutoName(0).Text = "N" + start + "_";
            form().txtAutoName(1).Text = start;
            // The one without a point keeps the name of the one before.
            expectErrors("N" + start + "_" + start + ".jpg");
            import({"a.jpg", "nameless", "b.x.jpg"}, {AutoName, Links}, sources());
            EXPECT_EQ(info("N" + start + "_" + third).empty() ? "" : setting("Import", "Autonumber"), next) << start;
        }
    });
}

TEST_F(ImportRunTest, AFailureIsSteppedOverUnlessAnOverwriteBoxIsCheckedAndAPressStopsOrGoesOn)
{
    enum Fault { SourceGone, DiskFull, InfoFile, Press, TwoPresses };
    const std::string marks[][2] = {// by fault, without and with such a box
        {"ipgg igg ipgg ", "ip   "}, {"ipgg igg ipgg ", "ip   "}, {"ipgg pgg ipgg ", "ipgg pgg ipgg "},
        {"ip ip  ", "ip ip  "}, {"ipgg ipgg ipgg ", "ipgg ipgg ipgg "}};
    inDialog([&] {
        for (int run = 0; run < 15; ++run) {
            const int fault = run / 3;
            const std::vector<std::string> files = names(3, std::to_string(run) + "_");
            putSources({files[0], files[fault == SourceGone ? 0 : 1], files[2]});
            if (run % 3 == 1)
                test.put(test.paths().PhotoPath + files[1], "old");
            desktop.files().setFaultHook([&](FileOperation operation, std::string_view path) {
                const bool copies = operation == FileOperation::Copy && path.ends_with(files[1]);
                const bool informs = operation == FileOperation::Print && path.ends_with(files[1] + ".info");
                if ((copies && fault == DiskFull) || (informs && fault == InfoFile))
                    throw Failure(FailureKind::DiskFull);
                for (int time = Press; copies && time <= fault; ++time) {
                    EXPECT_EQ(form().lbProgress.Caption() + form().cmdImport.Caption(),
                        time == Press ? "ImportingCancel" : "ImportingImport");
                    robot.close(form()); // does nothing, and so does the button beside
                    robot.click(form().cmdImport);
                }
            });
            if (run % 3 == 0 || fault > DiskFull)
                expectErrors("p1.jpg");
            import({"p1.jpg", files[0], files[1], files[2]}, {run % 3 - 1}, sources()); // -1: none
            EXPECT_EQ(taken(files), marks[fault][run % 3 != 0]) << "run " << run;
            EXPECT_EQ(photo("Removed\\" + files[1]), run % 3 == 1 ? "old" : "");
            EXPECT_EQ(form().cmdImport.Caption() + form().lbProgress.Caption(), "ImportDone");
        }
    });
}

TEST_F(ImportRunTest, AnEntryThatIsTornIsRefused)
{
    inDialog([&] {
        desktop.files().setFaultHook([&](FileOperation operation, std::string_view path) {
            if (operation == FileOperation::Exists && path.ends_with("unseen.jpg.info"))
                throw Failure(FailureKind::DeviceIo);
            if (operation == FileOperation::Exists && path.ends_with("\\p1.jpg.info"))
                form().List2.Clear(); // as behind a cancelled scan
        });
        const std::string torn = "    Error=Bad file name or number\r";
        expectErrors(
            "unseen.jpg    Error=Device I/O error\rp1.jpg    Error=File already exists\rtorn.jpg" + torn + "/a/m0.jpg",
            "Bad file name or number");
        import({"unseen.jpg", "m0.jpg", "p1.jpg", "torn.jpg", "/a\\m0.jpg"}, {Links}, sources());
        EXPECT_EQ(taken({"unseen.jpg", "m0.jpg", "torn.jpg"}), " igg  ");
        EXPECT_TRUE(info("m0.jpg").starts_with("PhotoPath=" + sources())) << "no other's information is overwritten";
        form().txtAutoName(1).Text = "\\..\\1";
        expectErrors("Image\\..\\1.jpg" + torn + "Image00001.jpg", "Bad file name or number");
        import({"a.jpg", "/a\\m0.jpg"}, {AutoName, Links}, sources());
    });
}

TEST_F(ImportRunTest, ARunEndsAtItsLimitAndWithTheDialog)
{
    inDialog([&] {
        std::string errors;
        for (int i = 0; i < 32767; ++i)
            errors += "p1.jpg    Error=File already exists\r";
        expectErrors(errors + "2 more", "No more than 32767 files at a time");
        import(Names(32769, "p1.jpg"), {Links}, sources());
        robot.key(form(), EscapeKey);
        EXPECT_TRUE(form().isShown()) << "the rest is to be imported";
        robot.atNextTurn([&] { form().unload(); });
        import(names(1000, "m"), {Links}, sources());
        EXPECT_EQ(taken({"m1.jpg", "m1000.jpg"}), "i  ") << "the end of the program is that of the run";
    });
}

} // namespace trovarium
