// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/pictures/PictureData.h"
#include "platform/pictures/PictureHeader.h"
#include "platform/pictures/TestPictures.h"
#include "support/FailureOf.h"

#include <array>

namespace trovarium {

struct PictureReader : PictureFolder {
    QImage loaded(std::string_view bytes) { return renderedImage(pictures.load(put("picture", bytes))); }
    static void expectNear(QRgb pixel, const QColor& expected)
    {
        EXPECT_NEAR(qRed(pixel), expected.red(), 2);
        EXPECT_NEAR(qGreen(pixel), expected.green(), 2);
        EXPECT_NEAR(qBlue(pixel), expected.blue(), 2);
    }
    std::string loadFailure(std::string_view bytes)
    {
        return failureOf([&] { loaded(bytes); });
    }
};

TEST_F(PictureReader, APhotographStandsUprightByItsOrientation)
{
    constexpr std::array Degrees = {0, 0, 0, 180, 180, 270, 90, 90, 270, 0};
    const std::string stored = jpegBytes(testScene(150, 74));
    const QImage upright = loaded(stored);
    for (char orientation = 0; orientation <= 9; ++orientation) {
        const bool mirrored = orientation == 2 || orientation == 4 || orientation == 5 || orientation == 7;
        const QTransform turn = QTransform().rotate(Degrees.at(static_cast<std::size_t>(orientation)));
        const QImage expected = upright.mirrored(mirrored, false).transformed(turn);
        EXPECT_EQ(loaded(withOrientation(stored, orientation)), expected) << int{orientation};
        EXPECT_LT(meanDifference(renderedImage(pictures.loadReduced(inside("picture"), 15)), expected), 20);
    }
}

// The expected colors are those that transicc tells of the same profiles.
TEST_F(PictureReader, ColorsAreThoseOfTheProfileAndADamagedOneCountsAsNone)
{
    QImage flat(16, 16, QImage::Format_RGB32);
    flat.fill(qRgb(200, 120, 40));
    QImage gray(16, 16, QImage::Format_Grayscale8);
    gray.fill(132);
    for (const char* format : {"jpg", "png", "webp", "tiff"}) {
        SCOPED_TRACE(format);
        expectNear(loaded(written(flat, format, QColorSpace::DisplayP3)).pixel(7, 7), QColor(213, 115, 0));
        expectNear(loaded(written(flat, format, QColorSpace::SRgb)).pixel(7, 7), QColor(200, 120, 40));
    }
    std::string damaged = written(flat, "jpg", QColorSpace::DisplayP3);
    expectNear(loaded(damaged.replace(damaged.find("acsp"), 4, "void")).pixel(7, 7), QColor(200, 120, 40));
    expectNear(loaded(withProfile(jpegBytes(gray), grayProfile())).pixel(7, 7), QColor(150, 150, 150));
    expectNear(loaded(withProfile(jpegBytes(flat), grayProfile())).pixel(7, 7), QColor(200, 120, 40));
    const std::string adobe = "\xFF\xEE\0\x0E"s + "Adobe\0\x64\0\0\0\0"s;
    for (const auto& [inks, expected] : {std::pair{inkJpeg(""), QColor(1, 14, 7)},
             {inkJpeg(adobe + '\0'), QColor(226, 15, 120)}, {inkJpeg(adobe + '\2'), QColor(14, 0, 200)},
             {withProfile(inkJpeg(adobe + '\0'), inkProfile()), QColor(255, 131, 119)}})
        expectNear(loaded(inks).pixel(7, 7), expected);
    QImage clear(16, 16, QImage::Format_ARGB32);
    clear.fill(qRgba(200, 120, 40, 0));
    EXPECT_EQ(loaded(written(clear, "png", QColorSpace::DisplayP3)).pixelColor(7, 7), Qt::white);
}

// Quarters of skin, green, blue and white; the skin is (200, 120, 40), mostly in Display P3.
TEST_F(PictureReader, PicturesOfNewerFormatsStandUprightInTheirColorsAndADamagedOneIsNone)
{
    struct Case {
        const char* name;
        QSize size;
        QColor left, right; // in the upper half
    };
    const QColor skin(213, 115, 0), page(225, 225, 225);
    const Case cases[] = {
        {.name = "turned.heic", .size = {16, 32}, .left = Qt::blue, .right = skin}, // numbers for its colors
        {"deep.avif", {16, 8}, skin, Qt::white},            // the same, ten bits, alpha over green
        {"gray.avif", {16, 8}, {150, 150, 150}, Qt::white}, // a gray profile
        {"grid.avif", {128, 64}, {200, 120, 40}, Qt::green},
        {"turned.jxl", {16, 32}, Qt::blue, {200, 120, 40}}, // a packed JPEG
        {"p3.jxl", {16, 8}, skin, Qt::white},               // a profile, sixteen bits, alpha over green
        {"pq.jxl", {64, 64}, page, page},                   // a white page, lossless
        {"graypq.jxl", {64, 64}, page, page},               // the same, one channel without primaries
        {"hlg.jxl", {64, 64}, page, page},
    };
    for (const auto& [name, size, left, right] : cases) {
        SCOPED_TRACE(name);
        const std::string file = sample(name);
        const QImage image = loaded(file);
        ASSERT_EQ(image.size(), size);
        expectNear(image.pixel(size.width() / 4, size.height() / 4), left);
        expectNear(image.pixel(size.width() * 3 / 4, size.height() / 4), right);
        const Picture reduced = pictures.loadReduced(inside("picture"), 2);
        EXPECT_EQ(reduced.data()->pixels.width(), size.width() * 8 / std::max(size.width(), size.height()));
        EXPECT_LT(meanDifference(renderedImage(reduced), image), 20);
        EXPECT_EQ(loadFailure(file.substr(0, file.size() * 3 / 4)), "Invalid picture");
    }
    EXPECT_EQ(loaded(sample("wide.avif")).size(), QSize(11'000, 64));
}

TEST_F(PictureReader, ATornJpegShowsWhatThereIsAndOneWithoutImageDataIsNone)
{
    const QImage scene = testScene(320, 240);
    const std::string whole = jpegBytes(scene);
    for (const std::string& file : {jpegBytes(scene, true), whole}) {
        const QImage torn = loaded(file.substr(0, file.size() / 2));
        EXPECT_LT(meanDifference(torn.copy(0, 0, 320, 60), scene.copy(0, 0, 320, 60)), 16);
        EXPECT_TRUE(file != whole || torn.pixel(160, 239) == qRgb(128, 128, 128));
    }
    const std::size_t scan = whole.find("\xFF\xDA");
    for (const std::size_t length : {std::size_t{3}, std::size_t{20}, scan, scan + 14, scan + 40})
        EXPECT_EQ(loadFailure(whole.substr(0, length)), "Invalid picture") << length;
    EXPECT_EQ(loadFailure(whole.substr(0, scan + 14) + "\xFF\xD9"), "Invalid picture");
}

TEST_F(PictureReader, EveryKindOfBitmapIsReadWhenItIsWholeAndAGifShowsItsFirstImage)
{
    const std::string colors = "\0\0\xFF\0\0\xFF\0\0\xFF\0\0\0\xFF\xFF\xFF\0"s;
    const std::string oldColors = "\0\0\xFF\0\xFF\0\xFF\0\0\xFF\xFF\xFF"s;
    const std::string masks565 = little(0xf800, 4) + little(0x07e0, 4) + little(0x001f, 4);
    const std::string alpha = little(0xff0000, 4) + little(0xff00, 4) + little(0xff, 4) + little(0xff000000, 4);
    const std::string empty = "\xFF\0\0\0\xFF\xFF\xFF\0\0\0\xFF\0\0\xFF\0\0"s;
    // Runs, pixels one by one, and a step over what is there by default.
    const std::string runs8 = "\2\2\2\3\0\0\0\3\2\2\3\0\1\3\0\0\0\2\2\0\2\1\0\0\2\0\2\1\0\1"s;
    const std::string runs4 = "\2\x22\2\x33\0\0\0\3\x22\x30\1\x33\0\0\0\2\2\0\2\x11\0\0\2\0\2\x11\0\1"s;
    struct Case {
        int side;
        std::string file;
    };
    const Case cases[] = {
        {.side = 2, .file = bitmapFile(2, -2, 24, "\0\0\xFF\0\xFF\0\0\0\xFF\0\0\xFF\xFF\xFF\0\0"s)},
        {.side = 2, .file = bitmapFile(2, 2, 8, "\2\3\0\0\0\1\0\0"s, oldColors, 0, 12)},
        {.side = 4, .file = bitmapFile(4, 4, 8, runs8, colors, 1)},
        {.side = 4, .file = bitmapFile(4, 4, 4, runs4, colors, 2)},
        {.side = 2, .file = bitmapFile(2, 2, 16, "\x1F\0\xFF\x7F\0\x7C\xE0\3"s)},
        {.side = 2, .file = bitmapFile(2, 2, 16, "\x1F\0\xFF\xFF\0\xF8\xE0\7"s, masks565, 3)},
        {.side = 2, .file = bitmapFile(2, 2, 32, empty)},
        {.side = 2, .file = bitmapFile(2, 2, 32, empty, alpha, 3, 124)},
    };
    for (const auto& [side, file] : cases) {
        SCOPED_TRACE(testing::PrintToString(file));
        EXPECT_EQ(loaded(file), quarters(side, side));
        EXPECT_EQ(loadFailure(file.substr(0, file.size() - 1)), side == 4 ? "" : "Invalid picture") << "runs may end";
    }
    const QImage two = loaded(bitmapFile(8, 1, 1, "\x0F\0\0\0"s, little(0xffffff00000000, 8)));
    EXPECT_TRUE(two.pixelColor(3, 0) == Qt::black && two.pixelColor(4, 0) == Qt::white);
    const QImage blended = loaded(bitmapFile(2, 1, 32, little(0x80ff0000, 8), alpha, 3, 56));
    EXPECT_EQ(blended.pixel(0, 0), qRgb(255, 127, 127)) << "on white";
    EXPECT_EQ(blended.pixelColor(1, 0), Qt::white);

    EXPECT_EQ(loaded(gifBytes(2, 2, 0, 0, 2)).pixelColor(0, 1), Qt::white) << "transparent";
    EXPECT_EQ(loaded(gifBytes(40, 30, 10, 20)).copy(10, 20, 2, 2), quarters(2, 2));
}

TEST_F(PictureReader, NoOtherFormatIsTriedAndAFileThatPromisesTooMuchIsRefused)
{
    const std::string lines(64, '\x7F');
    std::string tiff = written(quarters(64, 64), "tiff");
    for (const char* side : {"\0\1\4\0\1\0\0\0\x40", "\1\1\4\0\1\0\0\0\x40"})
        tiff.replace(tiff.find(std::string(side, 9)) + 8, 2, little(40000, 2));
    std::string jpeg = jpegBytes(quarters(64, 64));
    const std::size_t frame = jpeg.find("\xFF\xC0");
    const auto jpegOf = [&](const std::string& size) { return jpeg.replace(frame + 5, 4, size); };
    const QByteArray progressive = QByteArray::fromStdString(jpegBytes(quarters(64, 64), true));
    const QByteArray lastScan = progressive.sliced(progressive.lastIndexOf("\xFF\xDA")).chopped(2);
    const std::string manyScans = (progressive.chopped(2) + lastScan.repeated(200)).toStdString();
    WmfWords zigzag = {4000};
    for (int i = 0; i < 4000; ++i)
        zigzag.insert(zigzag.end(), {i / 4, i % 2 * 800});
    const std::string manyRecords = QByteArray("\3\0\0\0\x26\6", 6).repeated(1'000'000).toStdString();
    std::string liar = sample("deep.avif");
    liar[liar.find("ispe") + 11] = 1;
    const std::array bombs = {sample("flat.jxl"), sample("inks.jxl"), liar, bitmapFile(100000, 100000, 24, lines),
        bitmapFile(20000, 20000, 8, lines, {}, 1), tiff, bitmapFile(0, 10, 24, lines), bitmapFile(-4, 4, 24, lines),
        gifBytes(20000, 20000), gifBytes(12000, 12000) + std::string(100'000, '\0'), gifBytes(4, 4, 65000, 65000),
        jpegOf("\x4E\x20\x4E\x20"), jpegOf(std::string(4, '\0')), manyScans,
        wmfFile(wmfScene(), {0, 0, 30000, 30000, 96}), wmfFile(wmfScene(), {0, 0, 100, 100, 0}),
        wmfFile(std::string(6, '\0') + wmfScene()), wmfFile(wmfScene()).substr(0, 200),
        wmfFile(wmfScene() + wmfRecord(0x0325, {-1, 0, 0})), wmfFile(wmfScene() + wmfRecord(0x0324, zigzag)),
        wmfFile(wmfScene() + manyRecords)};
    for (std::size_t i = 0; i < bombs.size(); ++i)
        EXPECT_EQ(loadFailure(bombs.at(i)), "Invalid picture") << i;
    for (const char* text : {"", "B", "GIF88a", "P3 1 1 9 1 2 3", "<svg xmlns='http://www.w3.org/2000/svg' width='4'/>",
             R"(/* XPM */ char* x[] = {"1 1 1 1", "a c #123456", "a"};)"})
        EXPECT_EQ(loadFailure(text), "Invalid picture") << text;
}

TEST_F(PictureReader, EachPixelOfAReducedPictureIsAnAverage)
{
    const QImage scene = testScene(152, 76);
    std::string lines;
    for (int i = 0; i < 152 * 76; ++i)
        lines += little(scene.pixel(i % 152, 75 - i / 152), 3);
    const auto reduced = [&](const std::string& file) {
        return pictures.loadReduced(put("picture", file), 18).data()->pixels;
    };
    for (const std::string& file : {written(scene, "png"), bitmapFile(152, 76, 24, lines)})
        EXPECT_LT(meanDifference(reduced(file), scene.scaled(76, 38, {}, Qt::SmoothTransformation)), 1);
    const QImage odd = reduced(written(scene.copy(0, 0, 151, 75), "png"));
    EXPECT_EQ(odd.pixel(75, 37), scene.pixel(150, 74));
    QImage clear(scene.size(), QImage::Format_ARGB32);
    clear.fill(qRgba(255, 0, 0, 128));
    EXPECT_EQ(reduced(written(clear, "png")).pixel(75, 37), qRgb(255, 127, 127)) << "on white";
}

TEST_F(PictureReader, ALargePictureOfFewBytesStaysSmallInMemory)
{
    constexpr int Side = 12000;
    QImage sheet(Side, Side, QImage::Format_Mono);
    sheet.fill(0);
    for (const std::string& file :
        {written(sheet, "png"), bitmapFile(Side, Side, 8, std::string(1'200'000, '\1'), {}, 1)}) {
        const Picture picture = pictures.load(put("picture", file));
        EXPECT_EQ(std::pair(picture.width(), picture.height()), std::pair(Side, Side));
        EXPECT_LT(picture.data()->pixels.sizeInBytes(), 70'000'000);
    }
}

TEST_F(PictureReader, AMetafileIsPaintedInItsOwnSize)
{
    const std::string scene = wmfScene();
    const std::string inches = wmfRecord(0x0103, {5}) + wmfRecord(0x020C, {1000, 1500}) + wmfRecord(0x0103, {8});
    const std::string thereAndBack = wmfRecord(0x020D, {7, 9}) + wmfRecord(0x0211, {-7, -9})
        + wmfRecord(0x0412, {2, 1, 3, 1}) + wmfRecord(0x0412, {1, 2, 1, 3});
    struct Case {
        std::string file;
        QSize size;
    };
    const Case cases[] = {
        {.file = wmfFile(scene, {-100, 50, 1100, 850, 960}), .size = {120, 80}},
        {.file = wmfFile(wmfRecord(0x020C, {4000, 6000}) + scene), .size = {1024, 683}},
        {.file = wmfFile(wmfRecord(0x020E, {20, 30}) + thereAndBack + scene).replace(0, 1, "\2"), .size = {30, 20}},
        {.file = wmfFile(inches + scene), .size = {144, 96}},
    };
    for (const auto& [file, size] : cases) {
        const QImage image = loaded(file);
        ASSERT_EQ(image.size(), size);
        const auto at = [&](int x, int y) { return image.pixelColor(x * size.width() / 120, y * size.height() / 80); };
        const std::array pixels = {at(2, 2), at(15, 15), at(35, 35), at(70, 10), at(70, 70), at(105, 43), at(105, 77)};
        EXPECT_EQ(
            pixels, (std::array<QColor, 7>{Qt::white, Qt::red, Qt::white, Qt::blue, Qt::white, Qt::green, Qt::blue}));
        const Picture reduced = pictures.loadReduced(inside("picture"), 8);
        EXPECT_EQ(reduced.width(), size.width());
        EXPECT_EQ(reduced.data()->pixels.width(), 32);
    }
}

} // namespace trovarium
