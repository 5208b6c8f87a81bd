#include "platform/pictures/TestPictures.h"
#include "platform/qt/pictures/PictureData.h"
#include "support/FailureOf.h"

#include <QColorSpace>

#include <array>
#include <malloc.h>

using namespace std::string_literals;

namespace trovarium {

namespace {

// Little-endian, `length` bytes.
std::string little(std::int64_t value, int length)
{
    std::string bytes;
    for (int i = 0; i < length; ++i)
        bytes += static_cast<char>(value >> (8 * i) & 0xff);
    return bytes;
}

// The same file with an orientation behind another tag in its EXIF data.
std::string withOrientation(const std::string& jpeg, char orientation, bool bigEndian)
{
    const std::string exif = bigEndian
        ? "MM\0\x2A\0\0\0\x08\0\2\1\0\0\4\0\0\0\1\0\0\0\7\1\x12\0\3\0\0\0\1\0"s + orientation + std::string(6, '\0')
        : "II\x2A\0\x08\0\0\0\2\0\0\1\4\0\1\0\0\0\7\0\0\0\x12\1\3\0\1\0\0\0"s + orientation + std::string(7, '\0');
    return jpeg.substr(0, 2) + "\xFF\xE1\0\x2E"s + "Exif\0\0"s + exif + jpeg.substr(2);
}

// Eight by eight pixels of the four values 240, 16, 128 and 240; `adobe` is that program's marker or empty.
std::string inkJpeg(const std::string& adobe)
{
    return "\xFF\xD8"s + adobe + "\xFF\xDB\0\x43\0"s + std::string(64, '\x80')
        + "\xFF\xC0\0\x14\x08\0\x08\0\x08\4\1\x11\0\2\x11\0\3\x11\0\4\x11\0"s
        + "\xFF\xC4\0\x15\0\0\2\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\3"s
        + "\xFF\xC4\0\x14\x10\1\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0"s
        + "\xFF\xDA\0\x0E\4\1\0\2\0\3\0\4\0\0\x3F\0\x79\0\xF7\xFF\xD9"s;
}

// `quarters` of two by two pixels at a place on a screen.
std::string gifBytes(int width, int height, int left = 0, int top = 0, char transparent = 4)
{
    return "GIF89a" + little(width, 2) + little(height, 2)
        + "\x81\0\0\xFF\0\0\0\xFF\0\0\0\xFF\xFF\xFF\xFF!\xF9\4\1\0\0"s + transparent + "\0,"s + little(left, 2)
        + little(top, 2) + "\2\0\2\0\0\2\3\x44\x34\5\0;"s;
}

// `head` are its masks or palette, `lines` as they stand in the file; a height below 0 goes from the top down.
std::string bitmapFile(int width, int height, int bits, const std::string& lines, const std::string& head = {},
    int compression = 0, std::size_t headerLength = 40)
{
    const int length = headerLength == 12 ? 2 : 4;
    std::string header = little(static_cast<int>(headerLength), 4) + little(width, length) + little(height, length)
        + little(1, 2) + little(bits, 2);
    if (headerLength > 12)
        header += little(compression, 4) + std::string(12, '\0') + little(bits <= 8 ? 4 : 0, 8);
    header += head;
    header.resize(std::max(header.size(), headerLength));
    return "BM" + std::string(8, '\0') + little(static_cast<int>(14 + header.size()), 4) + header + lines;
}

using WmfWords = std::vector<int>;

std::string wmfRecord(int function, const WmfWords& words = {})
{
    std::string record = little(static_cast<int>(words.size() + 3), 4) + little(function, 2);
    for (const int word : words)
        record += little(word, 2);
    return record;
}

// Placeable with a box: left, top, right, bottom and units per inch.
std::string wmfFile(const std::string& records, const WmfWords& box = {})
{
    const std::string start =
        box.empty() ? "" : little(0x9AC6CDD7, 4) + little(0, 2) + wmfRecord(0, box).substr(6) + std::string(6, '\0');
    return start + "\1\0\x09\0\0\3"s + std::string(12, '\0') + records + wmfRecord(0);
}

// On 120 by 80 tens of units: a red square with a hole, a blue one cut off by a clip, a bitmap of two lines.
std::string wmfScene()
{
    const auto brush = [](int red, int blue) { return wmfRecord(0x02FC, {0, red, blue, 0}) + wmfRecord(0x012D, {0}); };
    // From the operation on where it goes, then its header and lines.
    const WmfWords blit = {0x0020, 0x00CC, 0, 2, 1, 0, 0, 400, 200, 450, 850, 40, 0, 1, 0, 2, 0, 1, 24, 0, 0, 0, 0, 0,
        0, 0, 0, 0, 0, 0, 0, 0xFF, 0, 0xFF00, 0};
    const WmfWords hole = {2, 4, 4, 0, 150, 400, 150, 400, 550, 0, 550, 200, 300, 300, 300, 300, 450, 200, 450};
    return wmfRecord(0x020B, {50, -100}) + wmfRecord(0x020C, {800, 1200}) + brush(0xFF, 0)
        + wmfRecord(0x02FA, {5, 0, 0, 0, 0}) + wmfRecord(0x012D, {1})       // no pen
        + wmfRecord(0x0538, hole) + wmfRecord(0x01F0, {0}) + brush(0, 0xFF) // in the other's place
        + wmfRecord(0x001E) + wmfRecord(0x0416, {450, 1100, 50, 0}) + wmfRecord(0x041B, {850, 700, 50, 500})
        + wmfRecord(0x0127, {-1}) + wmfRecord(0x0F43, blit);
}

// Highest first, `length` bytes.
std::string big(std::uint32_t value, int length)
{
    const std::string bytes = little(value, length);
    return {bytes.rbegin(), bytes.rend()};
}

// An ICC profile of one tag.
std::string profileOf(
    const std::string& space, const std::string& connection, const std::string& tag, const std::string& data)
{
    const std::string head =
        std::string(4, '\0') + big(0x02400000, 4) + "prtr" + space + connection + std::string(12, '\0') + "acsp";
    const std::string rest =
        std::string(88, '\0') + big(1, 4) + tag + big(144, 4) + big(static_cast<std::uint32_t>(data.size()), 4) + data;
    return big(static_cast<std::uint32_t>(4 + head.size() + rest.size()), 4) + head + rest;
}

// Lights to the power of 1.8.
std::string greyProfile()
{
    return profileOf(
        "GRAY", "XYZ ", "kTRC", "curv" + std::string(4, '\0') + big(1, 4) + big(0x01CD, 2) + std::string(2, '\0'));
}

// White paper; cyan makes it darker and greener, magenta redder, yellow yellower, black black.
std::string inkProfile()
{
    std::string data = "mft1" + std::string(4, '\0') + "\4\3\2\0"s;
    for (int i = 0; i < 9; ++i)
        data += big(i % 4 == 0 ? 0x10000 : 0, 4);
    std::string line;
    for (int i = 0; i < 256; ++i)
        line += static_cast<char>(i);
    data += line + line + line + line;
    for (int inks = 0; inks < 16; ++inks) {
        const bool cyan = (inks & 8) != 0, magenta = (inks & 4) != 0, yellow = (inks & 2) != 0, black = (inks & 1) != 0;
        data += static_cast<char>(black ? 10 : 255 - 60 * cyan - 60 * magenta - 10 * yellow);
        data += static_cast<char>(black ? 128 : 128 - 40 * cyan + 60 * magenta);
        data += static_cast<char>(black ? 128 : 128 + 70 * yellow);
    }
    return profileOf("CMYK", "Lab ", "A2B0", data + line + line + line);
}

std::string withProfile(const std::string& jpeg, const std::string& profile)
{
    return jpeg.substr(0, 2) + "\xFF\xE2" + big(static_cast<std::uint32_t>(profile.size() + 16), 2)
        + "ICC_PROFILE\0\1\1"s + profile + jpeg.substr(2);
}

std::string written(QImage image, const char* format, const QColorSpace& space = {})
{
    image.setColorSpace(space);
    QBuffer buffer;
    QImageWriter writer(&buffer, format);
    writer.setQuality(100);
    EXPECT_TRUE(writer.write(image)) << format;
    return buffer.data().toStdString();
}

struct PictureReader : PictureFolder {
    QImage loaded(std::string_view bytes) { return renderedImage(pictures.load(put("picture", bytes))); }
    std::string loadFailure(std::string_view bytes)
    {
        return failureOf([&] { loaded(bytes); });
    }
};

} // namespace

TEST_F(PictureReader, APhotographStandsUprightByItsOrientationAndEveryKindOfJpegKeepsItsColours)
{
    constexpr std::array Degrees = {0, 0, 0, 180, 180, 270, 90, 90, 270, 0};
    // Neither side is a multiple of the rows that are turned at once.
    const std::string stored = jpegBytes(testScene(150, 74));
    const QImage upright = loaded(stored);
    for (const bool bigEndian : {false, true})
        for (char orientation = 0; orientation <= 9; ++orientation) {
            const bool mirrored = orientation == 2 || orientation == 4 || orientation == 5 || orientation == 7;
            const QTransform turn = QTransform().rotate(Degrees.at(static_cast<std::size_t>(orientation)));
            const QImage expected = upright.mirrored(mirrored, false).transformed(turn);
            EXPECT_EQ(loaded(withOrientation(stored, orientation, bigEndian)), expected) << int{orientation};
            EXPECT_LT(meanDifference(renderedImage(pictures.loadReduced(inside("picture"), 15)), expected), 20);
        }

    const QImage scene = testScene(40, 30).scaled(160, 120, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    const QImage grey = scene.convertToFormat(QImage::Format_Grayscale8);
    for (const bool progressive : {false, true})
        EXPECT_LT(meanDifference(loaded(jpegBytes(scene, progressive)), scene), 3);
    EXPECT_LT(meanDifference(loaded(jpegBytes(grey)), grey.convertToFormat(QImage::Format_RGB32)), 3);
    const std::string adobe = "\xFF\xEE\0\x0E"s + "Adobe\0\x64\0\0\0\0"s;
    const std::pair<std::string, QRgb> inks[] = {
        {"", qRgb(1, 14, 7)}, {adobe + '\0', qRgb(226, 15, 120)}, {adobe + '\2', qRgb(14, 0, 200)}};
    for (const auto& [marker, colour] : inks)
        EXPECT_EQ(loaded(inkJpeg(marker)).pixel(7, 7), colour);
}

// The expected colours are those that transicc tells of the same profiles.
TEST_F(PictureReader, ColoursAreThoseOfTheProfileAndADamagedOneCountsAsNone)
{
    QImage flat(16, 16, QImage::Format_RGB32);
    flat.fill(qRgb(200, 120, 40));
    QImage grey(16, 16, QImage::Format_Grayscale8);
    grey.fill(132);
    const auto expectNear = [](QRgb pixel, const QColor& expected) {
        EXPECT_NEAR(qRed(pixel), expected.red(), 2);
        EXPECT_NEAR(qGreen(pixel), expected.green(), 2);
        EXPECT_NEAR(qBlue(pixel), expected.blue(), 2);
    };
    for (const char* format : {"jpg", "png", "webp", "tiff"}) {
        SCOPED_TRACE(format);
        const std::string wide = written(flat, format, QColorSpace::DisplayP3);
        expectNear(loaded(wide).pixel(7, 7), QColor(213, 115, 0));
        expectNear(loaded(written(flat, format, QColorSpace::AdobeRgb)).pixel(7, 7), QColor(224, 121, 25));
        expectNear(loaded(written(flat, format, QColorSpace::SRgb)).pixel(7, 7), QColor(200, 120, 40));
        const std::size_t signature = wide.find("acsp");
        if (signature != std::string::npos)
            expectNear(loaded(std::string(wide).replace(signature, 4, "void")).pixel(7, 7), QColor(200, 120, 40));
        else
            EXPECT_STREQ(format, "png") << "which packs it";
    }
    expectNear(loaded(withProfile(jpegBytes(grey), greyProfile())).pixel(7, 7), QColor(150, 150, 150));
    expectNear(loaded(withProfile(jpegBytes(flat), greyProfile())).pixel(7, 7), QColor(200, 120, 40));
    const std::string inks = inkJpeg("\xFF\xEE\0\x0E"s + "Adobe\0\x64\0\0\0\0\0"s);
    expectNear(loaded(withProfile(inks, inkProfile())).pixel(7, 7), QColor(255, 131, 119));
    QImage clear(16, 16, QImage::Format_ARGB32);
    clear.fill(qRgba(200, 120, 40, 0));
    EXPECT_EQ(loaded(written(clear, "png", QColorSpace::DisplayP3)).pixelColor(7, 7), Qt::white);
}

TEST_F(PictureReader, AReducedPictureLooksLikeTheWholeOneBroughtDown)
{
    const QImage scene = testScene(1600, 1200);
    pictures.saveBitmap(pictureFromImage(scene), inside("bitmap"));
    for (const std::string& file : {jpegBytes(scene), jpegBytes(scene, true), read("bitmap")}) {
        const QImage whole = loaded(file);
        for (const int longerSide : {50, 100, 130, 200}) {
            const Picture picture = pictures.loadReduced(inside("picture"), longerSide);
            const int kept = picture.data()->pixels.width();
            EXPECT_TRUE(kept >= 4 * longerSide && kept < 1600) << kept << " for " << longerSide;
            EXPECT_EQ(QSize(picture.width(), picture.height()), scene.size());
            const QSize size(longerSide, longerSide * 3 / 4);
            const QImage expected = whole.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
            EXPECT_LT(meanDifference(drawnImage(*picture.data(), size), expected), 1.0);
        }
    }
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
    const std::string colours = "\0\0\xFF\0\0\xFF\0\0\xFF\0\0\0\xFF\xFF\xFF\0"s;
    const std::string oldColours = "\0\0\xFF\0\xFF\0\xFF\0\0\xFF\xFF\xFF"s;
    const std::string masks565 = little(0xf800, 4) + little(0x07e0, 4) + little(0x001f, 4);
    const std::string alpha = little(0xff0000, 4) + little(0xff00, 4) + little(0xff, 4) + little(0xff000000, 4);
    const std::string empty = "\xFF\0\0\0\xFF\xFF\xFF\0\0\0\xFF\0\0\xFF\0\0"s;
    // Runs, pixels one by one, and a step over what is there by default.
    const std::string runs8 = "\2\2\2\3\0\0\0\3\2\2\3\0\1\3\0\0\0\2\2\0\2\1\0\0\2\0\2\1\0\1"s;
    const std::string runs4 = "\2\x22\2\x33\0\0\0\3\x22\x30\1\x33\0\0\0\2\2\0\2\x11\0\0\2\0\2\x11\0\1"s;
    const std::pair<int, std::string> rows[] = {
        {2, bitmapFile(2, -2, 24, "\0\0\xFF\0\xFF\0\0\0\xFF\0\0\xFF\xFF\xFF\0\0"s)},
        {2, bitmapFile(2, 2, 8, "\2\3\0\0\0\1\0\0"s, oldColours, 0, 12)},
        {4, bitmapFile(4, 4, 8, runs8, colours, 1)},
        {4, bitmapFile(4, 4, 4, runs4, colours, 2)},
        {2, bitmapFile(2, 2, 16, "\x1F\0\xFF\x7F\0\x7C\xE0\3"s)},
        {2, bitmapFile(2, 2, 16, "\x1F\0\xFF\xFF\0\xF8\xE0\7"s, masks565, 3)},
        {2, bitmapFile(2, 2, 32, empty)},
        {2, bitmapFile(2, 2, 32, empty, alpha, 3, 124)},
    };
    for (const auto& [side, file] : rows) {
        SCOPED_TRACE(testing::PrintToString(file));
        EXPECT_EQ(loaded(file), quarters(side, side));
        EXPECT_EQ(loadFailure(file.substr(0, file.size() - 1)), side == 4 ? "" : "Invalid picture") << "runs may end";
    }
    const QImage two = loaded(bitmapFile(8, 1, 1, "\x0F\0\0\0"s, little(0xffffff00000000, 8)));
    EXPECT_TRUE(two.pixelColor(3, 0) == Qt::black && two.pixelColor(4, 0) == Qt::white);
    const QImage blended = loaded(bitmapFile(2, 1, 32, little(0x80ff0000, 8), alpha, 3, 56));
    EXPECT_EQ(blended.pixel(0, 0), qRgb(255, 127, 127)) << "on white";
    EXPECT_EQ(blended.pixelColor(1, 0), Qt::white);

    EXPECT_EQ(loaded(gifBytes(2, 2)), quarters(2, 2));
    EXPECT_EQ(loaded(gifBytes(2, 2, 0, 0, 2)).pixelColor(0, 1), Qt::white) << "transparent";
    const QImage small = loaded(gifBytes(40, 30, 10, 20));
    EXPECT_EQ(small.size(), QSize(40, 30));
    EXPECT_EQ(small.copy(10, 20, 2, 2), quarters(2, 2));
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
    WmfWords zigzag = {4000};
    for (int i = 0; i < 4000; ++i)
        zigzag.insert(zigzag.end(), {i / 4, i % 2 * 800});
    const std::string manyRecords = QByteArray("\3\0\0\0\x26\6", 6).repeated(1'000'000).toStdString();
    const std::array bombs = {bitmapFile(100000, 100000, 24, lines), bitmapFile(20000, 20000, 8, lines, {}, 1), tiff,
        bitmapFile(0, 10, 24, lines), bitmapFile(-4, 4, 24, lines), gifBytes(20000, 20000),
        gifBytes(4, 4, 65000, 65000), jpegOf("\x4E\x20\x4E\x20"), jpegOf(std::string(4, '\0')),
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

TEST_F(PictureReader, AMetafileIsPaintedInItsOwnSize)
{
    const std::string scene = wmfScene();
    const std::string inches = wmfRecord(0x0103, {5}) + wmfRecord(0x020C, {1000, 1500}) + wmfRecord(0x0103, {8});
    const std::string thereAndBack = wmfRecord(0x020D, {7, 9}) + wmfRecord(0x0211, {-7, -9})
        + wmfRecord(0x0412, {2, 1, 3, 1}) + wmfRecord(0x0412, {1, 2, 1, 3});
    const std::array<std::pair<std::string, QSize>, 4> rows = {{
        {wmfFile(scene, {-100, 50, 1100, 850, 960}), {120, 80}},
        {wmfFile(wmfRecord(0x020C, {4000, 6000}) + scene), {1024, 683}},
        {wmfFile(wmfRecord(0x020E, {20, 30}) + thereAndBack + scene).replace(0, 1, "\2"), {30, 20}},
        {wmfFile(inches + scene), {144, 96}},
    }};
    for (const auto& [file, size] : rows) {
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

// What a damaged file shows may be odd, but never depends on what lay in memory before.
TEST_F(PictureReader, DamagedFilesFailOrShowSomethingSteady)
{
    constexpr int Rounds = 300;
    const QImage scene = testScene(64, 48);
    const std::string ones(64 * 3 * 48, '\1');
    const std::string seeds[] = {jpegBytes(scene), jpegBytes(scene, true), gifBytes(64, 48, 10, 20, 1),
        bitmapFile(64, 48, 24, ones), bitmapFile(64, 48, 8, ones, std::string(1024, '\x55'), 1),
        wmfFile(wmfScene(), {0, 0, 1200, 800, 960}), written(scene, "png", QColorSpace::DisplayP3),
        written(scene, "webp", QColorSpace::DisplayP3), written(scene, "tiff", QColorSpace::DisplayP3)};
    std::minstd_rand random(7);
    const auto below = [&](std::size_t limit) { return random() % limit; };
    int shown = 0;
    for (const std::string& seed : seeds)
        for (int round = 0; round < Rounds; ++round) {
            SCOPED_TRACE(testing::Message() << "seed " << seed.substr(0, 6) << " " << round);
            std::string damaged = seed;
            for (std::size_t changes = 1 + below(5); changes > 0; --changes)
                damaged[below(std::min<std::size_t>(damaged.size(), changes % 2 == 0 ? damaged.size() : 64))] =
                    static_cast<char>(below(256));
            damaged.resize(below(3) == 0 ? below(damaged.size()) : damaged.size());
            const std::string path = put("damaged", damaged);
            std::array<QImage, 2> images;
            for (QImage& image : images) {
                mallopt(M_PERTURB, &image == &images[0] ? 0x11 : 0xEE);
                const bool fails = attempt([&] { image = pictures.load(path).data()->pixels; }).has_value();
                EXPECT_EQ(fails, image.isNull());
            }
            mallopt(M_PERTURB, 0);
            EXPECT_EQ(images[0], images[1]);
            shown += images[0].isNull() ? 0 : 1;
        }
    EXPECT_GT(shown, Rounds) << "damage must leave something to decode";
}

} // namespace trovarium
