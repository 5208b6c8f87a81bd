#include "platform/pictures/TestPictures.h"
#include "platform/qt/pictures/DecodeAhead.h"
#include "platform/qt/pictures/PictureData.h"
#include "platform/qt/pictures/PictureFile.h"
#include "platform/toolkit/Desktop.h"
#include "support/FailureOf.h"
#include "support/Robot.h"

#include <sys/stat.h>

namespace trovarium {

using PictureServiceTest = PictureFolder;

TEST_F(PictureServiceTest, OnlyRegularFilesAreOpenedAndAFailingDiskFailsTheLoadAndTheSave)
{
    std::filesystem::create_directory(native("folder"));
    ASSERT_EQ(mkfifo(native("pipe").c_str(), 0600), 0);
    std::filesystem::create_symlink(native("gone"), native("broken"));
    std::filesystem::create_symlink("/dev/zero", native("device"));
    for (const char* name : {"absent.jpg", "folder", "pipe", "broken", "device"})
        EXPECT_EQ(failureOf([&] { pictures.load(inside(name)); }), "File not found") << name;
    EXPECT_EQ(failureOf([&] { pictures.loadReduced("", 100); }), "File not found");

    put("real.jpg", jpegBytes(quarters(20, 10)));
    std::filesystem::create_symlink(native("real.jpg"), native("link"));
    const std::string path = inside("link");
    const std::string target = put("old.bmp", "old");
    std::string announced;
    files.setFaultHook([&](FileOperation operation, std::string_view at) {
        announced += at;
        if (operation == FileOperation::Picture || operation == FileOperation::Print)
            throw Failure(operation == FileOperation::Picture ? FailureKind::DeviceIo : FailureKind::DiskFull);
    });
    EXPECT_EQ(failureOf([&] { pictures.load(path); }), "Device I/O error");
    EXPECT_EQ(failureOf([&] { pictures.saveBitmap(pictureFromImage(quarters(4, 4)), target); }), "Disk full");
    EXPECT_EQ(announced, path + target + target);
    EXPECT_EQ(read("old.bmp"), "old");
    files.setFaultHook({});
    EXPECT_EQ(pictures.load(path).width(), 20);
}

TEST_F(PictureServiceTest, AnExpectedFileIsDecodedOnceAndNotShownWhenItHasChangedMeanwhile)
{
    const std::string path = put("a.jpg", jpegBytes(quarters(20, 10)));
    std::string other = jpegBytes(quarters(10, 20));
    other.resize(std::filesystem::file_size(native("a.jpg")));
    put("b.jpg", other);
    DecodeAhead ahead;
    const auto widthTaken = [&](int longerSide) {
        return ahead.take({native("a.jpg"), longerSide}, PictureFile(native("a.jpg")).stamp()).width();
    };
    // It blocks once the work is under way: asked again until it was.
    const auto underWay = [&] {
        ahead.expect({{native("a.jpg"), 0}});
        return widthTaken(0) == 20;
    };
    EXPECT_TRUE(testDesktop().waitUntil(underWay, 20'000));
    EXPECT_EQ(widthTaken(0), 0) << "what was taken is no longer kept";

    ahead.expect({{native("a.jpg"), 0}});
    pictures.expect({path});
    EXPECT_EQ(widthTaken(100), 0);
    std::filesystem::rename(native("b.jpg"), native("a.jpg"));
    EXPECT_EQ(pictures.load(path).width(), 10);
    EXPECT_NE(widthTaken(0), 20);
}

} // namespace trovarium
