#include "ImportWindow.h"

#include "browser/GroupListPane.h"

#include <algorithm>

namespace trovarium {

class ImportRunTest : public ImportWindow {
protected:
    // From the folder of sources, or from another.
    void list(const std::vector<std::string>& names, const std::string& folder)
    {
        for (const std::string& name : names) {
            form().List1.AddItem(name);
            form().List2.AddItem(folder);
        }
    }
    void import() { robot.click(form().cmdImport); }
    std::string info(const std::string& name) { return test.bytes(test.paths().InfoPath + name + ".info"); }
    std::string photo(const std::string& name) { return test.bytes(test.paths().PhotoPath + name); }
    // Whether a, b and c have an information file "i", a photograph "p" and their places in both groups "g".
    std::string taken()
    {
        std::string marks;
        for (const std::string name : {"a.bmp", "b.bmp", "c.bmp"}) {
            const auto lines = linesOf("Alps");
            const bool inGroup =
                std::count(lines.begin(), lines.end(), name) == 1 && lines == linesOf("  All Photos  ");
            marks.append(info(name).empty() ? "" : "i").append(photo(name).empty() ? "" : "p");
            marks.append(inGroup ? "g " : " ");
        }
        return marks;
    }
    void expectErrors(const std::string& lines)
    {
        prompts.expectNotice("Error(s) occurred with the following files during import process.\r\r" + lines);
    }
};

TEST_F(ImportRunTest, CopiesAndLinksGetInformationThumbnailsAndTheirPlaceInTheGroups)
{
    putSource("a.jpg", plainBitmap(8, 6));
    putSource("b.b.bmp", plainBitmap(6, 8));
    test.setSetting("Import", "Autonumber", "0099");
    const auto written = [&](const std::string& name, const std::string& link) {
        return joinedLines({"PhotoPath=" + link, "TITLE=" + test.paths().InfoPath + name + ".info",
            "PHOTOGRAPHER=", "YEAR=", "PEOPLE=", "PLACE=", "EVENT=", "KEYWORDS=", "ImageWidth=", "ImageHeight="});
    };
    inDialog([&] {
        list({"a.jpg", "b.b.bmp"}, sources());
        form().chkOptions(2).Value = 1;
        form().chkOptions(3).Value = 0;
        import();
        EXPECT_EQ(photo("Image0099.jpg"), plainBitmap(8, 6));
        EXPECT_EQ(info("Image0099.jpg"), written("Image0099.jpg", test.paths().PhotoPath + "Image0099.jpg"));
        EXPECT_TRUE(test.isThere(test.paths().ThumbnailPath + "Image0100.b.bmp"));
        EXPECT_EQ(test.album().Settings().GetOWSetting("Trovarium", "Import", "Autonumber", ""), "0101");
        const std::vector<std::string> group{"p1.jpg", "Image0099.jpg", "Image0100.b.bmp"};
        EXPECT_EQ(linesOf("Alps"), group);
        EXPECT_EQ(linesOf("  All Photos  "), group);
        EXPECT_EQ(cells(), group) << "the group on show is read again";
        EXPECT_EQ(form().cmdImport.Caption() + form().lbProgress.Caption(), "ImportDone");
        EXPECT_EQ(form().MousePointer() + static_cast<int>(form().shpProgress.Width()), 0);
        EXPECT_EQ(entries(), (std::vector<std::string>{"|a.jpg", "|b.b.bmp"}));
        EXPECT_TRUE(search().isLoaded() && !search().isShown());

        search().cmbGroupName.Text = "typed";
        form().chkOptions(2).Value = 0;
        form().chkOptions(3).Value = 1;
        list({"a.jpg", "c.jpg"}, "");
        main().groupList().pctAlbumList_MouseDown(0, LeftButton, NoKeys, 0, 0);
        expectErrors("a.jpg    Error=File already exists\r");
        import();
        EXPECT_EQ(info("b.b.bmp"), written("b.b.bmp", sources() + "\\b.b.bmp"));
        EXPECT_EQ(info("c.jpg"), written("c.jpg", "\\c.jpg"));
        EXPECT_EQ(photo("b.b.bmp"), "");
        EXPECT_EQ(linesOf("  All Photos  ").size(), 6U) << "once, though it is the group on show too";
        EXPECT_EQ(search().cmbGroupName.Text(), "typed");
    });
}

TEST_F(ImportRunTest, AutomaticNumbersKeepTheWidthOfTheFirst)
{
    const struct {
        std::string start;
        std::string second; // the name that b.x.jpg gets, behind a file without a point in its name
        std::string next;
    } cases[] = {
        {"0098", "00100.x.jpg", "0101"}, {"9", "111.x.jpg", "12"}, {"A1", "202.x.jpg", "03"}, {"", "32.x.jpg", "3"}};
    inDialog([&] {
        form().chkOptions(2).Value = 1;
        for (std::size_t i = 0; i < std::size(cases); ++i) {
            form().List1.Clear();
            form().List2.Clear();
            list({"a.jpg", "none", "b.x.jpg"}, sources());
            const std::string prefix = std::to_string(i);
            form().txtAutoName(0).Text = prefix;
            form().txtAutoName(1).Text = cases[i].start;
            const std::string first = prefix + cases[i].start + ".jpg";
            expectErrors(first + "    Error=File already exists\r"); // the nameless one has the name before
            import();
            EXPECT_NE(info(first), "") << first;
            EXPECT_NE(info(cases[i].second), "") << cases[i].second;
            EXPECT_EQ(form().txtAutoName(1).Text(), cases[i].next);
        }
    });
}

TEST_F(ImportRunTest, AFailureIsSteppedOverUnlessAnOverwriteBoxIsChecked)
{
    enum Fault { SourceGone, DiskFull, InfoFile, Cancelled };
    const struct {
        Fault fault;
        std::string neither;
        std::string overwriting;
    } cases[] = {{SourceGone, "ipg ig ipg ", "ip   "}, {DiskFull, "ipg ig ipg ", "ip   "},
        {InfoFile, "ipg pg ipg ", "ipg pg ipg "}, {Cancelled, "ip ip  ", "ip ip  "}};
    for (const char* name : {"a.bmp", "b.bmp", "c.bmp"})
        putSource(name);
    inDialog([&] {
        list({"p1.jpg", "a.bmp", "b.bmp", "c.bmp"}, sources());
        form().chkOptions(3).Value = 0;
        for (const auto& [fault, neither, overwriting] : cases) {
            for (const int box : {-1, 0, 1}) {
                for (const std::string name : {"a.bmp", "b.bmp", "c.bmp"}) {
                    attempt([&] { desktop.files().remove(test.paths().PhotoPath + name); });
                    attempt([&] { desktop.files().remove(test.paths().InfoPath + name + ".info"); });
                }
                putGroup("Alps", {"p1.jpg"});
                putGroup("  All Photos  ", {"p1.jpg"});
                form().List2.setList(2, fault == SourceGone ? "" : sources());
                form().chkOptions(0).Value = box == 0;
                form().chkOptions(1).Value = box == 1;
                desktop.files().setFaultHook([&, fault = fault](FileOperation operation, std::string_view path) {
                    if (fault == DiskFull && operation == FileOperation::Copy && path.ends_with("b.bmp"))
                        throw Failure(FailureKind::DiskFull);
                    if (!path.ends_with("b.bmp.info"))
                        return;
                    if (fault == InfoFile && operation == FileOperation::Print)
                        throw Failure(FailureKind::PathFileAccess);
                    if (fault == Cancelled && operation == FileOperation::Exists)
                        import();
                });
                if (box < 0 || fault > DiskFull)
                    expectErrors("p1.jpg    Error=File already exists\r");
                import();
                prompts.verify();
                EXPECT_EQ(taken(), box < 0 ? neither : overwriting) << "fault " << fault << ", box " << box;
                EXPECT_EQ(form().cmdImport.Caption() + form().lbProgress.Caption(), "ImportDone");
                EXPECT_FALSE(form().DialogBusy);
            }
        }
    });
}

TEST_F(ImportRunTest, ASecondPressStopsARunAndAThirdTakesThatBack)
{
    inDialog([&] {
        list({"a.bmp", "b.bmp", "c.bmp"}, sources());
        std::string captions = form().cmdImport.Caption();
        int presses = 2;
        desktop.files().setFaultHook([&](FileOperation operation, std::string_view path) {
            if (operation != FileOperation::Print || !path.ends_with(".bmp.info"))
                return;
            for (; presses > 0; --presses) {
                captions += " " + form().cmdImport.Caption();
                import();
            }
            presses = 1;
        });
        import();
        EXPECT_EQ(captions, "&Import Cancel Import Cancel");
        EXPECT_EQ(taken(), "i i  ");
        form().cmdImport.Caption = "Cancel"; // as a refusal leaves it
        import();
        EXPECT_EQ(form().cmdImport.Caption() + taken(), "Importi i  ");

        form().List1.Clear();
        form().List2.Clear();
        desktop.files().setFaultHook({});
        std::vector<std::string> many = names(1000, "m");
        list(many, sources());
        robot.atNextTurn([&] { robot.close(form()); });
        import();
        EXPECT_EQ(info(many.back()), "") << "closing the dialog stops its run";
        EXPECT_NE(info(many.front()), "");
    });
}

TEST_F(ImportRunTest, OverwritingTakesAwayThePhotographButNeverTheOneThatIsImported)
{
    putSource("a.bmp", "new");
    test.put(test.paths().PhotoPath + "a.bmp", "old");
    test.put(test.paths().InfoPath + "a.bmp", "beside");
    inDialog([&] {
        const std::string own = photo("p1.jpg");
        list({"a.bmp"}, sources());
        list({"p1.jpg"}, test.paths().PhotoPath);
        for (const int box : {0, 1, 3})
            form().chkOptions(box).Value = box < 3;
        expectErrors("p1.jpg    Error=File already exists\r");
        import();
        EXPECT_EQ(photo("a.bmp"), "new");
        EXPECT_FALSE(test.isThere(test.paths().InfoPath + "a.bmp"));
        EXPECT_EQ(photo("p1.jpg"), own);
        EXPECT_FALSE(test.isThere(test.paths().ThumbnailPath + "p1.jpg"));
    });
}

} // namespace trovarium
