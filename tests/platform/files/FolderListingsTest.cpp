#include "platform/files/FolderListings.h"
#include "runtime/Failure.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace trovarium {

namespace {

// More entries than a listing that may be read again at once.
constexpr int ManyFiles = 2000;

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
    }
    EXPECT_LE(listings.foldersRead(), std::size_t{ManyFiles} / 4);
}

TEST(FolderListings, AFailedChangeOfOurOwnLeavesTheListingTrue)
{
    const TemporaryFolder folder;
    folder.write("Here.jpg", "");
    FolderListings listings;
    ASSERT_EQ(listings.readableName(folder.path(), "HERE.JPG"), "Here.jpg");
    const NativePath place{folder.path(), "Here.jpg"};
    const auto failing = [] { throw Failure(FailureKind::PermissionDenied); };
    EXPECT_THROW(listings.carry({{FolderListings::Edit::What::Gone, place}}, failing), Failure);
    EXPECT_EQ(listings.readableName(folder.path(), "HERE.JPG"), "Here.jpg");
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
