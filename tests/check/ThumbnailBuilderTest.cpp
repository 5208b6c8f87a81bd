#include "LibraryCheck.h"

#include "check/FileDateTime.h"
#include "support/PlainBitmap.h"
#include "support/Robot.h"

#include <algorithm>

namespace trovarium {

using ThumbnailBuilderTest = LibraryCheck;

TEST_F(ThumbnailBuilderTest, TheLongerSideIsAHundredPixelsAndTheDateThePhotographs)
{
    const struct {
        std::string name;
        BitmapSize photo;
        BitmapSize thumbnail;
    } cases[] = {
        {"wide.bmp", {200, 100}, {100, 50}},
        {"square.bmp", {300, 300}, {100, 100}},
        {"small.bmp", {4, 2}, {100, 50}},
        {"panorama.bmp", {900, 3}, {100, 1}},
        {"pillar.bmp", {3, 900}, {1, 100}},
    };
    std::vector<std::string> names;
    for (const auto& tried : cases) {
        addPhoto(tried.name, tried.photo.width, tried.photo.height);
        addInfoFile(tried.name);
        names.push_back(tried.name);
    }
    build(names);
    for (const auto& tried : cases) {
        const std::string bytes = test.bytes(thumbnail(tried.name));
        const BitmapSize made = sizeOfBitmap(bytes);
        EXPECT_NE(bytes.find_first_not_of(bytes[54], 54), std::string::npos) << tried.name << " is blank";
        EXPECT_EQ(made, tried.thumbnail) << tried.name << ": " << made.width << " by " << made.height;
        EXPECT_EQ(dateOf(thumbnail(tried.name)), dateOf(photo(tried.name))) << tried.name;
    }
    EXPECT_FALSE(builder.isLoaded());
}

TEST_F(ThumbnailBuilderTest, ShowsNameSizeAndProgressOfThePictureInWork)
{
    addPhotosWithInfo({"first.bmp", "second.bmp"});
    std::vector<std::string> shown;
    float share = 0;
    desktop.files().setFaultHook([&](FileOperation operation, std::string_view path) {
        if (operation != FileOperation::SetDate || !path.ends_with("second.bmp"))
            return;
        frmThumbnail& form = builder();
        shown = {
            form.Caption(), form.lbFilename.Caption(), form.lbPhotoSize(0).Caption(), form.lbPhotoSize(1).Caption()};
        share = form.pctProgress.Width() / form.shpProgress.Width();
        EXPECT_EQ(form.MousePointer(), ArrowHourglassPointer);
        EXPECT_GE(form.pctSize.Left(), form.ScaleWidth());
    });
    build({"first.bmp", "second.bmp"});
    EXPECT_EQ(shown, (std::vector<std::string>{"Create Thumbnails", "second.bmp", "(width=8)", "(height=6)"}));
    EXPECT_FLOAT_EQ(share, 0.5F);
}

TEST_F(ThumbnailBuilderTest, APictureThatCannotBeReadGetsAnEmptyThumbnailOnce)
{
    const std::vector<std::string> bad{"bad.jpg", "gone.bmp", "torn.bmp"};
    addPhotosWithInfo({"good.bmp", "bad.jpg", "torn.bmp"});
    addInfoFile("gone.bmp");
    const Instant date = dateOf(photo("bad.jpg"));
    test.put(photo("bad.jpg"), "no picture at all");
    test.put(photo("torn.bmp"), plainBitmap(80, 80).substr(0, 60));
    for (const char* name : {"bad.jpg", "torn.bmp"})
        desktop.files().setModified(photo(name), date);

    // Behind a good one, so that a canvas that was not cleared shows.
    build({"good.bmp", "bad.jpg", "torn.bmp", "gone.bmp"});
    for (const std::string& name : bad) {
        const std::string bytes = test.bytes(thumbnail(name));
        ASSERT_GT(bytes.size(), 54U) << name;
        EXPECT_EQ(std::count(bytes.begin() + 54, bytes.end(), bytes[54]), static_cast<long>(bytes.size()) - 54) << name;
    }
    EXPECT_EQ(dateOf(thumbnail("bad.jpg")), date);
    EXPECT_EQ(dateOf(thumbnail("torn.bmp")), date);

    const auto before = test.allFiles();
    start();
    EXPECT_EQ(test.bytes(thumbnail("bad.jpg")), before.at("Library/Photo_Thumbnails/bad.jpg"));
    EXPECT_EQ(dateOf(thumbnail("torn.bmp")), date);
}

TEST_F(ThumbnailBuilderTest, AClipGetsTheFrameAtWhichItWasPausedAndADamagedOneNothingOfTheFileBefore)
{
    const std::vector<std::string> clips{"a.mpg", "b.MOV", "damaged.Avi"};
    addPhotosWithInfo({"0.bmp", "a.mpg", "b.MOV", "damaged.Avi"});
    start(); // one that was left without a thumbnail is found
    EXPECT_EQ(player.told, "a.mpg play pauseb.MOV play pausedamaged.Avi play pause");
    for (const std::string& name : clips) {
        const std::string bytes = test.bytes(thumbnail(name));
        ASSERT_EQ(sizeOfBitmap(bytes), (BitmapSize{100, 75})) << name;
        EXPECT_EQ(bytes[54] == '\xff', name != "damaged.Avi") << name;
        EXPECT_EQ(bytes.find_first_not_of(bytes[54], 54), std::string::npos) << name;
        EXPECT_EQ(dateOf(thumbnail(name)), dateOf(photo(name))) << name;
    }
}

TEST_F(ThumbnailBuilderTest, ClosingTheWindowStopsAfterTheFileInWorkAndTheStartGoesOn)
{
    addPhotosWithInfo({"a.bmp", "b.bmp", "c.bmp"});
    addPhoto("new.bmp");
    desktop.files().setFaultHook([this](FileOperation operation, std::string_view path) {
        if (operation == FileOperation::Picture && path.ends_with("b.bmp"))
            Robot(desktop).close(builder());
    });
    start();
    desktop.files().setFaultHook({});
    EXPECT_EQ(sizeOfBitmap(test.bytes(thumbnail("b.bmp"))), (BitmapSize{100, 75}));
    EXPECT_EQ(dateOf(thumbnail("b.bmp")), dateOf(photo("b.bmp")));
    EXPECT_FALSE(test.isThere(thumbnail("c.bmp")));
    EXPECT_TRUE(test.isThere(infoFile("new.bmp")));

    start();
    EXPECT_TRUE(test.isThere(thumbnail("c.bmp")));
}

TEST_F(ThumbnailBuilderTest, AFullDiskOrALostDateLeavesTheOthersTheirThumbnails)
{
    addPhotosWithInfo({"a.bmp", "b.bmp", "c.bmp"});
    failAt(FileOperation::Print, "Photo_Thumbnails\\a.bmp", FailureKind::DiskFull);
    build({"a.bmp", "b.bmp"});
    EXPECT_FALSE(test.isThere(thumbnail("a.bmp")));
    EXPECT_TRUE(test.isThere(thumbnail("b.bmp")));

    // Without its date it reads as out of date, and the next start builds it again.
    failAt(FileOperation::SetDate, "Photo_Thumbnails\\c.bmp", FailureKind::PermissionDenied);
    build({"c.bmp"});
    EXPECT_NE(dateOf(thumbnail("c.bmp")), dateOf(photo("c.bmp")));
    EXPECT_FALSE(SetFileDateTime(desktop.files(), thumbnail("c.bmp"), "no date"));
    desktop.files().setFaultHook({});
    start();
    EXPECT_EQ(dateOf(thumbnail("c.bmp")), dateOf(photo("c.bmp")));
}

TEST_F(ThumbnailBuilderTest, AThumbnailBearsTheListedNameAndShowsTheLinkedFile)
{
    addPhoto("elsewhere.bmp", 50, 100);
    const std::string outside = test.folder().inside("linked.bmp");
    desktop.files().copy(photo("elsewhere.bmp"), outside);
    test.put(infoFile("name.bmp"), "PhotoPath=" + outside + "\r\n");
    build({});
    EXPECT_FALSE(builder.isLoaded());
    build({"C:\\ignored\\name.bmp"});
    EXPECT_EQ(sizeOfBitmap(test.bytes(thumbnail("name.bmp"))), (BitmapSize{50, 100}));
    EXPECT_EQ(dateOf(thumbnail("name.bmp")), dateOf(outside));
}

} // namespace trovarium
