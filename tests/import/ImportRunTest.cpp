#include "ImportWindow.h"

#include "browser/GroupListPane.h"

#include <algorithm>

namespace trovarium {

// Three pictures of the folder of sources, and where they are when a run is over.
class ImportRunTest : public ImportWindow {
protected:
    void listSources(const std::vector<std::string>& names)
    {
        for (const std::string& name : names) {
            form().List1.AddItem(name);
            form().List2.AddItem(sources());
        }
    }
    void import() { robot.click(form().cmdImport); }

    std::string infoFile(const std::string& name) { return test.bytes(test.paths().InfoPath + name + ".info"); }
    std::string photo(const std::string& name) { return test.bytes(test.paths().PhotoPath + name); }
    std::string setting(const std::string& key)
    {
        return test.album().Settings().GetOWSetting("Trovarium", "Import", key, "none");
    }
    // Of the three pictures: "i" information file, "p" photograph, "t" thumbnail, "g" in both groups.
    std::string taken()
    {
        std::string marks;
        for (const std::string name : {"a.bmp", "b.bmp", "c.bmp"}) {
            const auto isIn = [&](const std::string& group) {
                const std::vector<std::string> lines = linesOf(group);
                return std::find(lines.begin(), lines.end(), name) != lines.end();
            };
            marks += marks.empty() ? "" : " ";
            marks += infoFile(name).empty() ? "" : "i";
            marks += photo(name).empty() ? "" : "p";
            marks += test.isThere(test.paths().ThumbnailPath + name) ? "t" : "";
            marks += isIn("Alps") && isIn("  All Photos  ") ? "g" : "";
        }
        return marks;
    }
    static std::string errors(const std::string& lines)
    {
        return "Error(s) occurred with the following files during import process.\r\r" + lines;
    }
};

TEST_F(ImportRunTest, CopiesAndLinksGetInformationThumbnailsAndTheirPlaceInTheGroups)
{
    putSource("a.jpg", plainBitmap(8, 6));
    putSource("b.b.bmp", plainBitmap(6, 8));
    const std::string copied = test.paths().PhotoPath + "Image0099.jpg";
    const auto written = [&](const std::string& name, const std::string& link) {
        return joinedLines({"PhotoPath=" + link, "TITLE=" + test.paths().InfoPath + name + ".info",
            "PHOTOGRAPHER=", "YEAR=", "PEOPLE=", "PLACE=", "EVENT=", "KEYWORDS=", "ImageWidth=", "ImageHeight="});
    };
    test.setSetting("Import", "Autonumber", "0099");
    inDialog([&] {
        listSources({"a.jpg", "b.b.bmp"});
        form().chkOptions(2).Value = 1;
        form().chkOptions(3).Value = 0;
        import();
        EXPECT_EQ(photo("Image0099.jpg"), plainBitmap(8, 6));
        EXPECT_EQ(infoFile("Image0099.jpg"), written("Image0099.jpg", copied));
        EXPECT_TRUE(test.isThere(test.paths().ThumbnailPath + "Image0100.b.bmp"));
        EXPECT_EQ(form().txtAutoName(1).Text() + setting("Autonumber"), "01010101");
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
        form().List1.AddItem("a.jpg");
        form().List2.AddItem("");
        main().groupList().pctAlbumList_MouseDown(0, LeftButton, NoKeys, 0, 0);
        prompts.expectNotice(errors("a.jpg    Error=File already exists\r"));
        import();
        EXPECT_EQ(infoFile("b.b.bmp"), written("b.b.bmp", sources() + "\\b.b.bmp"));
        EXPECT_EQ(photo("b.b.bmp"), "") << "a link";
        EXPECT_EQ(search().cmbGroupName.Text(), "typed");
        EXPECT_EQ(linesOf("  All Photos  ").size(), 5U) << "once, though it is the group on show too";
    });
}

TEST_F(ImportRunTest, AutomaticNamesKeepTheWidthOfTheFirstAndAllExtensions)
{
    const struct {
        std::string start;
        std::vector<std::string> sources;
        std::vector<std::string> names;
        std::string next;
    } cases[] = {
        {"9", {"a.jpg", "b.jpg"}, {"09.jpg", "010.jpg"}, "11"},
        {"A1", {"a.jpg", "b.x.jpg"}, {"1A1.jpg", "101.x.jpg"}, "02"},
        {"", {"a.jpg"}, {"2.jpg"}, "1"},
        {"50", {"a.jpg", "none", "b.jpg"}, {"350.jpg", "352.jpg"}, "53"},
    };
    inDialog([&] {
        form().chkOptions(2).Value = 1;
        for (std::size_t i = 0; i < std::size(cases); ++i) {
            form().List1.Clear();
            form().List2.Clear();
            listSources(cases[i].sources);
            form().txtAutoName(0).Text = std::to_string(i);
            form().txtAutoName(1).Text = cases[i].start;
            // A name without a point leaves the one before in place.
            if (cases[i].sources.size() > 2)
                prompts.expectNotice(errors("350.jpg    Error=File already exists\r"));
            import();
            for (const std::string& name : cases[i].names)
                EXPECT_FALSE(infoFile(name).empty()) << name;
            EXPECT_EQ(form().txtAutoName(1).Text(), cases[i].next) << cases[i].start;
        }
    });
}

} // namespace trovarium
