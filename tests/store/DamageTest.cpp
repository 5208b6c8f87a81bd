#include "runtime/Failure.h"
#include "store/GroupFile.h"
#include "store/InfoFile.h"
#include "store/Log.h"
#include "support/TestAlbum.h"

#include <gtest/gtest.h>

#include <functional>
#include <random>

namespace trovarium {

namespace {

constexpr int DamagedFiles = 100;

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
    test.put(test.paths().PhotoPath + "a.jpg", "photo");
    test.put(test.paths().InfoPath + "bystander.jpg.info", "PhotoPath=\\Photos\\a.jpg\r\n");
    test.putGroup("Bystander.lst", {"a.jpg"});
    test.put(path, good);
    const std::string damagedFile = toNativePath(path).substr(toNativePath(test.folder().inside()).size() + 1);
    auto before = test.allFiles();
    before.erase(damagedFile);
    for (int i = 0; i < DamagedFiles; ++i) {
        test.put(path, damaged(good, random));
        use();
        auto after = test.allFiles();
        after.erase(damagedFile);
        ASSERT_EQ(after, before) << "damaged file " << i;
        ASSERT_EQ(test.files().freeFile(), 1) << "damaged file " << i;
    }
}

} // namespace

TEST(Damage, OfInformationFilesStaysInTheirFields)
{
    TestAlbum test;
    useDamaged(test, test.paths().InfoPath + "a.jpg.info",
        "PhotoPath=\\Photos\\a.jpg\r\nTITLE=Z\xFCrich\r\nPHOTOGRAPHER=\xC5\x81ukasz\r\nYEAR=1999\r\nPEOPLE=\r\nPLACE="
        "\r\n"
        "EVENT=\r\nKEYWORDS=a=b\r\nImageWidth=640\r\nImageHeight=480\r\n",
        [&] {
            PhotoInfo info;
            readInfoFile(test.album(), "a.jpg.info", info);
            for (const std::string& text : {info.PhotoLink, info.Title, info.Photographer, info.Keywords})
                ASSERT_EQ(text.find_first_of("\r\n"), std::string::npos);
            const std::string link = GetPhotoLink(test.album(), "a.jpg.info");
            ASSERT_EQ(link.find_first_of("\r\n"), std::string::npos);
        });
}

TEST(Damage, OfGroupListsLosesNoLine)
{
    TestAlbum test;
    const std::string path = test.paths().SlideGroupPath + "G.lst";
    useDamaged(test, path, joinedLines({"a.jpg", "Z\xFCrich.jpg", "\xC5\x81.jpg", "", "a b.jpg"}), [&] {
        ASSERT_TRUE(readGroupList(test.album(), "G.lst"));
        const int count = test.album().group.GroupList.upperBound();
        if (count > 1)
            test.album().group.GroupSelect(2) = 1;
        // Once rewritten, the list is well formed and reads and writes alike.
        ASSERT_TRUE(ReorderGroupFile(test.album(), "G.lst", 1));
        const std::string rewritten = test.bytes(path);
        ASSERT_TRUE(readGroupList(test.album(), "G.lst"));
        ASSERT_EQ(test.album().group.GroupList.upperBound(), count);
        ASSERT_TRUE(RemoveFromGroupFile(test.album(), "G.lst"));
        ASSERT_EQ(test.bytes(path), rewritten);
    });
}

TEST(Damage, OfSettingsLeavesThemReadableAndWritable)
{
    TestAlbum test;
    test.setSetting("Options", "FirstTime", "False");
    test.setSetting("Options", "AutoFix", "True");
    test.setSetting("Import", "LastPath", "/home\\ann=\\Zürich");
    const std::string path = fromNativePath(test.settingsFolder() + "/settings.txt");
    const std::string good = test.bytes(path);
    ASSERT_FALSE(good.empty());
    useDamaged(test, path, good, [&] {
        COWReg& settings = test.album().Settings();
        settings.GetOWSetting("Trovarium", "Options", "FirstTime", "True");
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
