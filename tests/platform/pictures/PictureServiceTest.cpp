// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/pictures/DecodeAhead.h"
#include "platform/pictures/PictureData.h"
#include "platform/pictures/PictureFile.h"
#include "platform/pictures/PictureLibraries.h"
#include "platform/pictures/TestPictures.h"
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

} // namespace trovarium
