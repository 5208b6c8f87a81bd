// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/pictures/DecodeAhead.h"
#include "platform/pictures/PictureData.h"
#include "platform/pictures/PictureFile.h"
#include "platform/pictures/PictureLibraries.h"
#include "platform/pictures/PicturePainter.h"
#include "platform/pictures/TestPictures.h"
#include "platform/toolkit/Desktop.h"
#include "support/FailureOf.h"
#include "support/Robot.h"

#include <QPainter>

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

TEST_F(PictureServiceTest, WithoutItsLibraryAPictureIsInvalidAndThePackageIsNamedOnce)
{
    std::vector<std::string> missing;
    PictureService poor(
        files, [](auto) { return true; }, std::make_shared<PictureLibraries>("no.so", "no.so"));
    poor.PackageMissing = [&](std::string_view package) { missing.emplace_back(package); };
    const std::string heif = put("heif", sample("deep.avif")), jpegXl = put("jxl", sample("p3.jxl"));
    EXPECT_FALSE(poor.isPicture(jpegXl));
    for (const std::string& path : {heif, jpegXl})
        EXPECT_EQ(failureOf([&] { poor.load(path); }), "Invalid picture");
    EXPECT_FALSE(poor.isPicture(heif));
    EXPECT_EQ(missing, (std::vector<std::string>{JpegXlLibrary::Package, "libheif1"}));
}

TEST_F(PictureServiceTest, AnExpectedFileIsDecodedOnceAndNotShownWhenItHasChangedMeanwhile)
{
    const auto wide = jpegBytes(quarters(1200, 900));
    auto tall = jpegBytes(quarters(900, 1200));
    tall.resize(wide.size());
    put("a.jpg", wide);
    put("b.jpg", wide);
    DecodeAhead ahead(std::make_shared<PictureLibraries>());
    const DecodeRequest request{native("a.jpg"), 0};
    const std::atomic<bool> cancelled{false};
    const auto take = [&](const DecodeRequest& wanted, bool patience = true) {
        return ahead.take(wanted, PictureFile(wanted.nativePath, cancelled), [=](auto) { return patience; }).width();
    };
    const auto decodeAhead = [&] {
        ahead.expect({request});
        EXPECT_TRUE(ahead.isDone(request, 20'000));
    };
    decodeAhead();
    const auto date = std::filesystem::last_write_time(native("a.jpg"));
    write("a.jpg", tall);
    std::filesystem::last_write_time(native("a.jpg"), date);
    EXPECT_EQ(take(request), 1200) << "decoded before nobody could see the change";
    EXPECT_EQ(take(request), 900) << "what was taken is no longer kept";
    decodeAhead();
    std::filesystem::rename(native("b.jpg"), native("a.jpg"));
    EXPECT_EQ(take(request), 1200);

    QImage sheet(20000, 20000, QImage::Format_Mono);
    sheet.fill(1);
    put("sheet.png", written(sheet, "png"));
    EXPECT_EQ(failureOf([&] {
        take({native("sheet.png"), 0}, false);
    }),
        "Device I/O error")
        << "the user has closed it";
    ahead.expect({{native("sheet.png"), 0}}); // and nobody waits for it at the end
}

TEST_F(PictureServiceTest, APictureIsScaledAheadAsTheLastOneOfItsSizeCameUp)
{
    const QImage lying = testScene(600, 400);
    for (const char* name : {"a.jpg", "b.jpg"})
        put(name, jpegBytes(lying));
    put("c.jpg", jpegBytes(testScene(400, 600)));
    DecodeAhead ahead(std::make_shared<PictureLibraries>());
    const std::atomic<bool> cancelled{false};
    const auto taken = [&](const char* name) {
        const DecodeRequest request{native(name), 0};
        ahead.expect({request});
        EXPECT_TRUE(ahead.isDone(request, 20'000));
        return ahead.take(request, PictureFile(request.nativePath, cancelled), [](auto) { return true; });
    };
    QImage surface(300, 200, QImage::Format_RGB32);
    QPainter surfacePainter(&surface);
    PicturePainter painter;
    const Picture first = taken("a.jpg");
    EXPECT_EQ(first.data()->scaled.size(), 0);
    for (const int width : {150, 300}) // it comes up and is zoomed
        painter.paint(surfacePainter, first, QRectF(0, 0, width, 100));
    const Picture next = taken("b.jpg");
    ASSERT_EQ(next.data()->scaled.size(), 1);
    EXPECT_EQ(next.data()->scaled.front(), drawnImage({next.data()->pixels, {600, 400}}, QSize(150, 100)));
    EXPECT_EQ(taken("c.jpg").data()->scaled.size(), 0);
}

TEST_F(PictureServiceTest, ASharperThumbnailIsKeptUntilItsFileChangesOrLaterOnesTakeItsRoom)
{
    PictureService& service = testDesktop().pictures();
    Robot robot(testDesktop());
    std::string received;
    const auto ask = [&](const char* name, int width = 40) {
        service.sharpen(name, inside(name), width, width / 4, [&received, name](const Picture& picture) {
            const QImage& pixels = picture.data()->pixels;
            received += name + std::to_string(pixels.width()) + (pixels.pixelColor(1, 1) == Qt::red ? "r " : "b ");
        });
        return std::exchange(received, {});
    };
    const auto askAndWait = [&](const char* name, int width = 40) {
        EXPECT_EQ(ask(name, width), "") << "decoded anew";
        EXPECT_TRUE(robot.until([&] { return !received.empty(); }));
        return std::exchange(received, {});
    };
    const auto striped = [](Qt::GlobalColor color) {
        QImage image(400, 100, QImage::Format_RGB32);
        image.fill(color);
        return written(image, "png");
    };
    put("a", striped(Qt::red));
    put("b", striped(Qt::red));
    EXPECT_EQ(askAndWait("a"), "a40r ");
    EXPECT_EQ(ask("a"), "a40r ");
    put("a", striped(Qt::blue));
    EXPECT_EQ(askAndWait("a"), "a40b ");
    for (const int width : {4000, 4001}) // 16 MB each
        EXPECT_EQ(askAndWait("b", width), "b" + std::to_string(width) + "r ");
    EXPECT_EQ(ask("b", 4000), "b4000r ");
    EXPECT_EQ(ask("a"), "a40b ");
    askAndWait("b", 4002);
    EXPECT_EQ(ask("a"), "a40b ");
    askAndWait("b", 4001);

    ask("b", 50);
    service.dropSharper("b");
    EXPECT_EQ(askAndWait("a", 60), "a60b ");
}

} // namespace trovarium
