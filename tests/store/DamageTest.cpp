#include "runtime/Failure.h"
#include "store/GroupFile.h"
#include "store/InfoFile.h"
#include "store/Log.h"
#include "support/TestAlbum.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <random>

namespace trovarium {

namespace {

// Bytes turned, runs cut out or doubled, the end torn off; the same ones at each run.
std::string damaged(std::string bytes, std::mt19937& random)
{
    const auto below = [&random](std::size_t limit) { return limit == 0 ? 0 : random() % limit; };
    for (std::size_t hits = 1 + below(6); hits > 0 && !bytes.empty(); --hits) {
        const std::size_t at = below(bytes.size());
        switch (below(5)) {
        case 0:
            bytes[at] = static_cast<char>(below(256));
            break;
        case 1:
            bytes.insert(at, 1 + below(3), "\0\r\n\xFF="[below(5)]);
            break;
        case 2:
            bytes.erase(at, 1 + below(40));
            break;
        case 3:
            bytes.insert(at, bytes.substr(at / 2, below(200)));
            break;
        default:
            bytes.resize(at);
        }
    }
    return bytes;
}

// Runs `use` on a hundred damaged versions of the file at `path`; every other file must keep its bytes.
void useDamaged(TestAlbum& test, const std::string& path, const std::string& good, const std::function<void()>& use)
{
    std::mt19937 random(7);
    test.put(test.paths().InfoPath + "bystander.jpg.info", "PhotoPath=\\Photos\\a.jpg\r\n");
    test.putGroup("Bystander.lst", {"a.jpg"});
    test.put(path, good);
    const std::string damagedFile = toNativePath(path).substr(toNativePath(test.folder().inside()).size() + 1);
    auto before = test.allFiles();
    before.erase(damagedFile);
    for (int i = 0; i < 100; ++i) {
        test.put(path, damaged(good, random));
        use();
        auto after = test.allFiles();
        after.erase(damagedFile);
        ASSERT_EQ(after, before) << "damaged file " << i;
        ASSERT_EQ(test.files().freeFile(), 1) << "damaged file " << i;
    }
}

std::vector<std::string> groupLines(TestAlbum& test)
{
    std::vector<std::string> lines;
    EXPECT_TRUE(readGroupList(test.album(), "G.lst"));
    for (int i = 1; i <= test.album().group.GroupList.upperBound(); ++i)
        lines.push_back(test.album().group.GroupList(i));
    return lines;
}

} // namespace

TEST(Damage, OfInformationFilesStaysInTheirFields)
{
    TestAlbum test;
    useDamaged(test, test.paths().InfoPath + "a.jpg.info",
        joinedLines({"PhotoPath=\\Photos\\a.jpg", "TITLE=Z\xFCrich", "PHOTOGRAPHER=\xC5\x81ukasz", "YEAR=1999",
            "EVENT=", "KEYWORDS=a=b", "ImageWidth=640", "ImageHeight=480"}),
        [&] {
            PhotoInfo info;
            readInfoFile(test.album(), "a.jpg.info", info);
            for (const std::string& text :
                {info.PhotoLink, info.Title, info.Keywords, GetPhotoLink(test.album(), "a.jpg.info")})
                ASSERT_EQ(text.find_first_of("\r\n"), std::string::npos);
        });
}

TEST(Damage, OfGroupListsLosesNoLineWhateverIsMovedWhere)
{
    TestAlbum test;
    std::mt19937 random(1);
    useDamaged(test, test.paths().SlideGroupPath + "G.lst",
        joinedLines({"a.jpg", "Z\xFCrich.jpg", "\xC5\x81.jpg", "", "a b.jpg", "c.jpg", "a.jpg"}), [&] {
            const std::vector<std::string> lines = groupLines(test);
            for (std::size_t i = 1; i <= lines.size(); ++i)
                test.album().group.GroupSelect(static_cast<int>(i)) = random() % 3 == 0 ? 1 : 0;
            ASSERT_TRUE(ReorderGroupFile(test.album(), "G.lst", static_cast<int>(random() % 30) - 15));
            const std::vector<std::string> moved = groupLines(test);
            ASSERT_TRUE(std::is_permutation(lines.begin(), lines.end(), moved.begin(), moved.end()));
            // Once rewritten, the list is well formed and reads and writes alike.
            ASSERT_TRUE(RemoveFromGroupFile(test.album(), "G.lst"));
            ASSERT_EQ(groupLines(test), moved);
        });
}

TEST(Damage, OfSettingsLeavesThemReadableAndWritable)
{
    TestAlbum test;
    test.setSetting("Options", "AutoFix", "True");
    test.setSetting("Import", "LastPath", "/home\\ann=\\Zürich");
    const std::string path = fromNativePath(test.settingsFolder() + "/settings.txt");
    const std::string good = test.bytes(path);
    ASSERT_FALSE(good.empty());
    useDamaged(test, path, good, [&] {
        COWReg& settings = test.album().Settings();
        settings.GetOWSetting("Trovarium", "Options", "AutoFix", "True");
        ASSERT_TRUE(settings.SetOWSetting("Trovarium", "Import", "LastPath", "/new"));
        ASSERT_EQ(settings.GetOWSetting("Trovarium", "Import", "LastPath", ""), "/new");
    });
}

TEST(Damage, OfTheLogIsNoReasonToLoseTheNextLine)
{
    TestAlbum test;
    std::string good = "Created 01/02/99 03:04\r\n";
    while (good.size() < 81'000)
        good += "01/02/99  03:04:05AM: An error has occurred in 'Main'. Error = File not found\r\n";
    const std::string path = test.library() + "\\Trovarium.Log";
    useDamaged(test, path, good, [&] {
        logFailure(test.album(), "Main", Failure(FailureKind::DiskFull));
        const std::string text = test.bytes(path);
        ASSERT_TRUE(text.ends_with("'Main'. Error = Disk full\r\n"));
        ASSERT_LT(text.size(), 82'000U);
    });
}

} // namespace trovarium
