#include "platform/files/FolderListings.h"
#include "platform/files/FileTest.h"

namespace trovarium {

using Listings = FileTest;

TEST_F(Listings, OwnChangesDontCauseAListingEachAndThoseOfOthersAreSeenInTheTickOfOurOwn)
{
    constexpr int ManyFiles = 600; // more than a listing has that may be read again at once
    using What = FolderListings::Edit::What;
    FolderListings listings;
    const auto found = [&](const std::string& name) {
        return listings.readableName(folder.path(), name).value_or("none");
    };
    const auto carry = [&](What what, const std::string& leaf, const std::function<void()>& change) {
        listings.carry({{what, NativePath{folder.path(), leaf}}}, change);
    };
    const timespec ahead{4'000'000'000, 0}; // fresh for the whole test, and borne by every change
    for (const std::string end : {"1", "2", "3"}) {
        EXPECT_EQ(found("OTHER" + end), "none");
        carry(What::Made, "own" + end, [&] { folder.write("own" + end, ""); });
        folder.write("other" + end, "");
        stamp(".", ahead);
        EXPECT_EQ(found("OTHER" + end), "other" + end);
    }
    for (int number = 0; number < ManyFiles; ++number)
        folder.write("old" + std::to_string(number), "");
    ASSERT_EQ(found("OLD0"), "old0");
    const std::size_t before = listings.foldersRead();
    for (int number = 0; number < ManyFiles; ++number) {
        const std::string end = std::to_string(number);
        EXPECT_EQ(found("NEW" + end), "none");
        carry(What::Made, "new" + end, [&] { folder.write("new" + end, ""); });
        EXPECT_EQ(found("NEW" + end), "new" + end);
        carry(What::Gone, "old" + end, [&] { std::filesystem::remove(folder.native("old" + end)); });
        EXPECT_EQ(found("OLD" + end), "none");
    }
    EXPECT_THROW(carry(What::Gone, "new0", [] { throw Failure(FailureKind::PermissionDenied); }), Failure);
    EXPECT_EQ(found("NEW0"), "new0");
    EXPECT_LE(listings.foldersRead() - before, std::size_t{ManyFiles} / 4);
}

} // namespace trovarium
