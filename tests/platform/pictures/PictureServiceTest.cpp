#include "platform/pictures/TestPictures.h"
#include "platform/qt/pictures/DecodeAhead.h"
#include "platform/qt/pictures/PictureData.h"
#include "platform/qt/pictures/PictureFile.h"
#include "support/FailureOf.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <string>
#include <vector>

#include <sys/stat.h>

namespace trovarium {

namespace {

class ExpectedFiles : public PictureFolder, public testing::Test {
protected:
    std::string putPlain(std::string_view name, QRgb colour)
    {
        QImage image(64, 64, QImage::Format_RGB32);
        image.fill(colour);
        return put(name, jpegBytes(image));
    }
    QRgb colourOf(const Picture& picture) { return picture.data()->pixels.pixel(0, 0); }
    Picture take(DecodeAhead& ahead, std::string_view name, int longerSide = 0)
    {
        return ahead.take({native(name), longerSide}, PictureFile(native(name)).stamp());
    }
};

constexpr QRgb Blue = 0xff0000fe; // as a JPEG keeps it

} // namespace

TEST(PictureService, OnlyRegularFilesAreOpened)
{
    PictureFolder folder;
    std::filesystem::create_directory(folder.native("folder"));
    ASSERT_EQ(mkfifo(folder.native("pipe").c_str(), 0600), 0);
    std::filesystem::create_symlink(folder.native("gone"), folder.native("broken"));
    std::filesystem::create_symlink("/dev/zero", folder.native("device"));
    for (const char* name : {"absent.jpg", "folder", "pipe", "broken", "device"})
        EXPECT_EQ(failureOf([&] { folder.pictures.load(folder.path(name)); }), "File not found") << name;
    EXPECT_EQ(failureOf([&] { folder.pictures.load(""); }), "File not found");
    EXPECT_EQ(failureOf([&] { folder.pictures.loadReduced("", 100); }), "File not found");

    folder.put("real.jpg", jpegBytes(quarters(20, 10)));
    std::filesystem::create_symlink(folder.native("real.jpg"), folder.native("link"));
    EXPECT_EQ(folder.pictures.load(folder.path("link")).width(), 20);
}

TEST(PictureService, AFailingDiskFailsTheLoadAndTheSave)
{
    PictureFolder folder;
    const std::string path = folder.put("p.jpg", jpegBytes(quarters(20, 10)));
    std::vector<std::string> announced;
    folder.files.setFaultHook([&](FileOperation operation, std::string_view at) {
        announced.emplace_back(at);
        if (operation == FileOperation::Picture)
            throw Failure(FailureKind::DeviceIo);
        if (operation == FileOperation::Print)
            throw Failure(FailureKind::DiskFull);
    });
    EXPECT_EQ(failureOf([&] { folder.pictures.load(path); }), "Device I/O error");
    const std::string target = folder.put("old.bmp", "old");
    EXPECT_EQ(failureOf([&] { folder.pictures.saveBitmap(pictureFromImage(quarters(4, 4)), target); }), "Disk full");
    EXPECT_EQ(announced, (std::vector<std::string>{path, target, target}));
    EXPECT_EQ(folder.bytes("old.bmp"), "old");
    folder.files.setFaultHook({});
    EXPECT_EQ(folder.pictures.load(path).width(), 20);
}

TEST(PictureService, ASavedBitmapComesBackPixelByPixel)
{
    PictureFolder folder;
    for (const QSize size : {QSize(1, 1), QSize(2, 3), QSize(5, 4), QSize(100, 75)}) {
        const QImage scene = testScene(size.width(), size.height());
        const std::string path = folder.put("photograph.jpg", "what was there before, and longer than a small picture");
        folder.pictures.saveBitmap(pictureFromImage(scene), path);
        const std::string file = folder.bytes("photograph.jpg");
        EXPECT_EQ(file.substr(0, 2), "BM");
        EXPECT_EQ(file.size(), static_cast<std::size_t>(54 + (size.width() * 3 + 3) / 4 * 4 * size.height()));
        EXPECT_EQ(renderedImage(folder.pictures.load(path)), scene);
    }
    QImage dense = testScene(200, 150);
    dense.setDevicePixelRatio(2);
    folder.pictures.saveBitmap(pictureFromImage(dense), folder.path("dense.bmp"));
    EXPECT_EQ(folder.pictures.load(folder.path("dense.bmp")).height(), 75) << "its natural size";
    EXPECT_EQ(failureOf([&] { folder.pictures.saveBitmap(Picture(), folder.path("x.bmp")); }), "Invalid picture");
    EXPECT_FALSE(std::filesystem::exists(folder.native("x.bmp")));
}

TEST_F(ExpectedFiles, AreDecodedOnceAndHandedOver)
{
    putPlain("a.jpg", Blue);
    DecodeAhead ahead;
    // It blocks once the work is under way: asked again until it was.
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    Picture early;
    while (early.empty() && std::chrono::steady_clock::now() < deadline) {
        ahead.expect({{native("a.jpg"), 0}});
        early = take(ahead, "a.jpg");
    }
    EXPECT_FALSE(early.empty());
    EXPECT_TRUE(take(ahead, "a.jpg").empty()) << "what was taken is no longer kept";
    EXPECT_TRUE(take(ahead, "a.jpg", 100).empty());
}

TEST_F(ExpectedFiles, AreNotShownWhenTheFileHasChangedMeanwhile)
{
    const std::string path = putPlain("a.jpg", Blue);
    DecodeAhead ahead;
    ahead.expect({{native("a.jpg"), 0}});
    const FileStamp before = PictureFile(native("a.jpg")).stamp();
    putPlain("b.jpg", 0xffffffff);
    std::filesystem::rename(native("b.jpg"), native("a.jpg"));
    EXPECT_NE(PictureFile(native("a.jpg")).stamp(), before);

    pictures.expect({path});
    putPlain("c.jpg", 0xff000000);
    std::filesystem::rename(native("c.jpg"), native("a.jpg"));
    EXPECT_EQ(colourOf(pictures.load(path)), 0xff000000);
    const Picture early = take(ahead, "a.jpg");
    EXPECT_TRUE(early.empty() || colourOf(early) == 0xff000000);
}

TEST_F(ExpectedFiles, ShowWhatAPlainLoadShowsAlsoWhenOthersAreExpectedOrTheServiceEnds)
{
    std::vector<std::string> paths;
    for (int i = 0; i < 24; ++i)
        paths.push_back(put(std::to_string(i) + ".jpg", jpegBytes(testScene(120 + i, 90))));
    for (const int longerSide : {0, 20})
        for (std::size_t i = 0; i < paths.size(); ++i) {
            pictures.expect({paths.begin() + static_cast<std::ptrdiff_t>(i), paths.end()}, longerSide);
            const auto load = [&](PictureService& service) {
                return longerSide > 0 ? service.loadReduced(paths[i], longerSide) : service.load(paths[i]);
            };
            PictureService plain(files);
            const Picture expected = load(plain);
            EXPECT_EQ(expected.width(), 120 + static_cast<int>(i));
            EXPECT_EQ(load(pictures).data()->pixels, expected.data()->pixels) << i;
            plain.expect(paths);
        }
}

} // namespace trovarium
