#include "LibraryCheck.h"

#include "check/FileDateTime.h"
#include "runtime/Dates.h"

namespace trovarium {

class ThumbnailBuilderTest : public LibraryCheck {
protected:
    // Whether all pixels are alike.
    bool isBlank(const std::string& name)
    {
        const std::string bytes = test.bytes(thumbnail(name));
        return bytes.find_first_not_of(bytes.at(54), 54) == std::string::npos;
    }
};

TEST_F(ThumbnailBuilderTest, TheLongerSideIsAHundredPixelsAndTheDateThePhotographs)
{
    build(Names(32768, "a.bmp")); // more than a walk counts
    build({});
    EXPECT_FALSE(builder.isLoaded() || test.isThere(thumbnail("a.bmp")));
    using Size = std::pair<int, int>;
    for (const auto& [photo, made] : {std::pair{Size{200, 100}, Size{100, 50}}, {Size{300, 300}, Size{100, 100}},
             {Size{4, 2}, Size{100, 50}}, {Size{900, 3}, Size{100, 1}}, {Size{3, 900}, Size{1, 100}}}) {
        addPhotosWithInfo({"a.bmp"}, photo.first, photo.second);
        build({"C:\\ignored\\a.bmp"});
        EXPECT_EQ(sizeOfBitmap(test.bytes(thumbnail("a.bmp"))), made);
        EXPECT_TRUE(isUpToDate("a.bmp") && !isBlank("a.bmp"));
    }
    const std::string outside = test.folder().inside("linked.bmp");
    desktop.files().copy(photo("a.bmp"), outside);
    test.put(infoFile("name.bmp"), "PhotoPath=" + outside + "\r\n");
    build({"name.bmp"});
    EXPECT_EQ(sizeOfBitmap(test.bytes(thumbnail("name.bmp"))), Size(1, 100));
    EXPECT_EQ(dateOf(thumbnail("name.bmp")), dateOf(outside));
}

TEST_F(ThumbnailBuilderTest, ShowsNameSizeAndProgressOfThePictureInWork)
{
    addPhotosWithInfo({"first.bmp", "second.bmp"});
    std::string shown;
    desktop.files().setFaultHook([&](FileOperation operation, std::string_view path) {
        if (operation != FileOperation::SetDate)
            return;
        frmThumbnail& form = builder();
        form.Form_Activate(); // while it builds already
        shown += form.lbFilename.Caption() + form.lbPhotoSize(0).Caption() + form.lbPhotoSize(1).Caption();
        EXPECT_FLOAT_EQ(form.pctProgress.Width() / form.shpProgress.Width(), path.ends_with("second.bmp") ? 0.5F : 0);
        EXPECT_GE(form.pctSize.Left(), form.ScaleWidth());
    });
    build({"first.bmp", "second.bmp"});
    EXPECT_EQ(shown, "first.bmp(width=8)(height=6)second.bmp(width=8)(height=6)");
}

TEST_F(ThumbnailBuilderTest, APictureThatCannotBeReadGetsAnEmptyThumbnailOnceAndTheDiskMayBeFull)
{
    addPhotosWithInfo({"bad.jpg", "good.bmp", "late.bmp", "torn.bmp"});
    addInfoFile("gone.bmp");
    test.put(photo("bad.jpg"), "no picture at all");
    test.put(photo("torn.bmp"), plainBitmap(80, 80).substr(0, 60));
    // Behind a good one, so that a canvas that was not cleared shows.
    build({"good.bmp", "bad.jpg", "torn.bmp", "gone.bmp"});
    for (const char* name : {"bad.jpg", "gone.bmp", "torn.bmp"})
        EXPECT_TRUE(isBlank(name)) << name;
    test.put(thumbnail("bad.jpg"), "made");
    desktop.files().setModified(thumbnail("bad.jpg"), dateOf(photo("bad.jpg")));

    remove({infoFile("gone.bmp"), thumbnail("good.bmp")});
    test.failAt(FileOperation::Print, "Photo_Thumbnails\\good.bmp");
    start();
    EXPECT_FALSE(test.isThere(thumbnail("good.bmp")));
    EXPECT_TRUE(isUpToDate("late.bmp"));
    // Without its date it reads as out of date, and the next start builds it again.
    test.failAt(FileOperation::SetDate, "Photo_Thumbnails\\good.bmp");
    start();
    EXPECT_FALSE(isUpToDate("good.bmp"));
    desktop.files().setFaultHook({});
    start();
    EXPECT_TRUE(isUpToDate("good.bmp"));
    EXPECT_EQ(test.bytes(thumbnail("bad.jpg")), "made") << "built again at each start";
    EXPECT_FALSE(SetFileDateTime(desktop.files(), photo("good.bmp"), "no date"));
    EXPECT_FALSE(SetFileDateTime(desktop.files(), photo("none.bmp"), dateText(now())));
    EXPECT_TRUE(SetFileDateTime(desktop.files(), photo("good.bmp"), dateText(now())));
}

TEST_F(ThumbnailBuilderTest, AClipGetsTheFrameAtWhichItWasPausedAndADamagedOneNothingOfTheFileBefore)
{
    addPhotosWithInfo({"0.bmp"}, 50, 50);
    addPhotosWithInfo({"a.mpg", "b.MOV", "damaged.Avi"});
    start(); // one that was left without a thumbnail is found
    EXPECT_EQ(player.told, "a.mpg play pauseb.MOV play pausedamaged.Avi play pause");
    for (const std::string name : {"a.mpg", "b.MOV", "damaged.Avi"}) {
        const std::string bytes = test.bytes(thumbnail(name));
        ASSERT_EQ(sizeOfBitmap(bytes), std::pair(100, 75)) << name;
        EXPECT_EQ(bytes[54] == '\xff', name != "damaged.Avi") << name;
        EXPECT_TRUE(isBlank(name) && isUpToDate(name)) << name;
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
    EXPECT_TRUE(isUpToDate("b.bmp") && !isBlank("b.bmp"));
    EXPECT_FALSE(test.isThere(thumbnail("c.bmp")));
    EXPECT_TRUE(test.isThere(infoFile("new.bmp")));
    start();
    EXPECT_TRUE(isUpToDate("c.bmp"));
}

} // namespace trovarium
