#include "platform/files/FolderListings.h"
#include "runtime/Failure.h"
#include "runtime/Text.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace trovarium {

namespace {

using What = FolderListings::Edit::What;

// More entries than a listing that may be read again at once.
constexpr int ManyFiles = 600;

class Listings : public testing::Test {
protected:
    std::string found(const std::string& name, const std::string& sub = "")
    {
        return listings.readableName(folder.path() + sub, name).value_or("none");
    }
    void carry(What what, const std::string& leaf, const std::function<void()>& change)
    {
        const NativePath place{folder.path(), leaf};
        listings.carry({{what, place}}, change);
    }
    // The folder's time of its last change, in hours from when it was made.
    void stamp(int hours) const { std::filesystem::last_write_time(folder.path(), made + std::chrono::hours(hours)); }

    const TemporaryFolder folder;
    const std::filesystem::file_time_type made = std::filesystem::last_write_time(folder.path());
    FolderListings listings;
};

} // namespace

TEST_F(Listings, OwnChangesDontCauseAListingEach)
{
    for (int number = 0; number < ManyFiles; ++number)
        folder.write("old" + std::to_string(number), "");
    ASSERT_EQ(found("OLD0"), "old0");
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
    EXPECT_LE(listings.foldersRead(), std::size_t{ManyFiles} / 4);
}

TEST_F(Listings, AChangeWithinOneTickOfTheClockIsSeen)
{
    for (const std::string name : {"one", "two", "three"}) {
        EXPECT_EQ(found(upper(name)), "none");
        folder.write(name, "");
        stamp(1); // which lies ahead, stays fresh for the whole test, and is borne by every change
        EXPECT_EQ(found(upper(name)), name);
    }
}

} // namespace trovarium
