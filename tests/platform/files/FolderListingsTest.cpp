#include "platform/files/FolderListings.h"
#include "runtime/Failure.h"
#include "runtime/Text.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace trovarium {

namespace {

// More entries than a listing that may be read again at once.
constexpr int ManyFiles = 600;

std::string fileName(int number)
{
    return "File" + std::to_string(number) + ".jpg";
}

} // namespace

TEST(FolderListings, OwnChangesDontCauseAListingEach)
{
    const TemporaryFolder folder;
    for (int number = 0; number < ManyFiles; ++number)
        folder.write(fileName(number), "");
    FolderListings listings;
    ASSERT_EQ(listings.readableName(folder.path(), "FILE0.JPG"), "File0.jpg");
    for (int number = 0; number < ManyFiles; ++number) {
        const NativePath place{folder.path(), "New" + fileName(number)};
        EXPECT_EQ(listings.readableName(folder.path(), "NEW" + fileName(number)), std::nullopt);
        listings.carry({{FolderListings::Edit::What::Made, place}}, [&] { folder.write(place.leaf, ""); });
        EXPECT_EQ(listings.readableName(folder.path(), "NEW" + fileName(number)), place.leaf);
        const NativePath old{folder.path(), fileName(number)};
        listings.carry(
            {{FolderListings::Edit::What::Gone, old}}, [&] { std::filesystem::remove(folder.native(old.leaf)); });
        EXPECT_EQ(listings.readableName(folder.path(), "FILE" + std::to_string(number) + ".JPG"), std::nullopt);
    }
    const NativePath failed{folder.path(), "New" + fileName(0)};
    EXPECT_THROW(listings.carry({{FolderListings::Edit::What::Gone, failed}},
                     [] { throw Failure(FailureKind::PermissionDenied); }),
        Failure);
    EXPECT_EQ(listings.readableName(folder.path(), "NEWFILE0.JPG"), failed.leaf);
    EXPECT_LE(listings.foldersRead(), std::size_t{ManyFiles} / 4);
}

TEST(FolderListings, AChangeWithinOneTickOfTheClockIsSeen)
{
    const TemporaryFolder folder;
    // A stamp that lies ahead stays fresh for the whole test, and two changes bear it.
    const auto stamp = std::filesystem::last_write_time(folder.path()) + std::chrono::hours(1);
    FolderListings listings;
    for (const std::string name : {"one", "two", "three"}) {
        EXPECT_EQ(listings.readableName(folder.path(), upper(name)), std::nullopt);
        folder.write(name, "");
        std::filesystem::last_write_time(folder.path(), stamp);
        EXPECT_EQ(listings.readableName(folder.path(), upper(name)), name);
    }
}

TEST(FolderListings, AChangeByOthersInTheTickOfOurOwnIsSeen)
{
    const TemporaryFolder folder;
    const auto made = std::filesystem::last_write_time(folder.path());
    std::filesystem::last_write_time(folder.path(), made - std::chrono::hours(1));
    FolderListings listings;
    ASSERT_EQ(listings.readableName(folder.path(), "OWN"), std::nullopt);
    const NativePath own{folder.path(), "own"};
    listings.carry({{FolderListings::Edit::What::Made, own}}, [&] {
        folder.write("own", "");
        std::filesystem::last_write_time(folder.path(), made + std::chrono::hours(1));
    });
    folder.write("other", "");
    std::filesystem::last_write_time(folder.path(), made + std::chrono::hours(1));
    EXPECT_EQ(listings.readableName(folder.path(), "OTHER"), "other");
}

TEST(FolderListings, AFolderThatIsGoneOrReplacedIsNotRemembered)
{
    const TemporaryFolder folder;
    const std::string sub = folder.native("sub");
    std::filesystem::create_directory(sub);
    folder.write("sub/Old.jpg", "");
    FolderListings listings;
    ASSERT_EQ(listings.readableName(sub, "OLD.JPG"), "Old.jpg");
    std::filesystem::rename(sub, folder.native("away"));
    EXPECT_EQ(listings.readableName(sub, "OLD.JPG"), std::nullopt);
    std::filesystem::create_directory(sub);
    folder.write("sub/New.jpg", "");
    EXPECT_EQ(listings.readableName(sub, "OLD.JPG"), std::nullopt);
    EXPECT_EQ(listings.readableName(sub, "NEW.JPG"), "New.jpg");
}

} // namespace trovarium
