#include "platform/pictures/TestPictures.h"
#include "platform/qt/pictures/PictureData.h"
#include "support/FailureOf.h"

#include <gtest/gtest.h>

#include <array>
#include <malloc.h>

using namespace std::string_literals;

namespace trovarium {

namespace {

constexpr QRgb Black = 0xff000000;
constexpr QRgb Red = 0xffff0000;
constexpr QRgb Green = 0xff00ff00;
constexpr QRgb Blue = 0xff0000ff;
constexpr QRgb White = 0xffffffff;

// The corners' colours as letters: top left, top right, bottom left, bottom right.
std::string corners(const QImage& image)
{
    std::string letters;
    for (const int y : {2, image.height() - 3})
        for (const int x : {2, image.width() - 3}) {
            const QRgb pixel = image.pixel(x, y);
            const bool red = qRed(pixel) > 128;
            const bool green = qGreen(pixel) > 128;
            letters += red && green ? 'W' : red ? 'R' : green ? 'G' : 'B';
        }
    return letters;
}

QImage loaded(PictureFolder& folder, std::string_view bytes)
{
    return renderedImage(folder.pictures.load(folder.put("picture", bytes)));
}

std::string loadFailure(PictureFolder& folder, std::string_view bytes)
{
    const std::string path = folder.put("picture", bytes);
    return failureOf([&] { folder.pictures.load(path); });
}

// On 120 by 80 tens of units: a red square with a hole, a blue one cut off by a clip, a bitmap of two lines.
std::string wmfScene()
{
    const auto brush = [](int red, int blue) { return wmfRecord(0x02FC, {0, red, blue, 0}) + wmfRecord(0x012D, {0}); };
    const std::string bitmap = bitmapFile(1, 2, {.lines = "\xFF\0\0\0\0\xFF\0\0"s}).substr(14);
    WmfWords blit = {0x0020, 0x00CC, 0, 2, 1, 0, 0, 400, 200, 450, 850};
    for (std::size_t i = 0; i < bitmap.size(); i += 2)
        blit.push_back(static_cast<unsigned char>(bitmap[i]) | static_cast<unsigned char>(bitmap[i + 1]) << 8);
    const WmfWords hole = {2, 4, 4, 0, 150, 400, 150, 400, 550, 0, 550, 200, 300, 300, 300, 300, 450, 200, 450};
    return wmfRecord(0x020B, {50, -100}) + wmfRecord(0x020C, {800, 1200}) + brush(0xFF, 0)
        + wmfRecord(0x02FA, {5, 0, 0, 0, 0}) + wmfRecord(0x012D, {1})       // no pen
        + wmfRecord(0x0538, hole) + wmfRecord(0x01F0, {0}) + brush(0, 0xFF) // in the other's place
        + wmfRecord(0x001E) + wmfRecord(0x0416, {450, 1100, 50, 0}) + wmfRecord(0x041B, {850, 700, 50, 500})
        + wmfRecord(0x0127, {-1}) + wmfRecord(0x0F43, blit);
}

} // namespace

TEST(PictureReader, APhotographStandsUprightByItsOrientation)
{
    constexpr std::array Degrees = {0, 0, 0, 180, 180, 270, 90, 90, 270, 0};
    PictureFolder folder;
    // Neither side is a multiple of the rows that are turned at once.
    const std::string stored = jpegBytes(testScene(150, 74));
    const QImage upright = loaded(folder, stored);
    for (const bool bigEndian : {false, true})
        for (int orientation = 0; orientation <= 9; ++orientation) {
            SCOPED_TRACE(orientation);
            const bool mirrored = orientation == 2 || orientation == 4 || orientation == 5 || orientation == 7;
            const QImage expected =
                upright.mirrored(mirrored, false)
                    .transformed(QTransform().rotate(Degrees.at(static_cast<std::size_t>(orientation))));
            const std::string path = folder.put("p.jpg", withOrientation(stored, orientation, bigEndian));
            EXPECT_EQ(renderedImage(folder.pictures.load(path)), expected);
            const Picture reduced = folder.pictures.loadReduced(path, 15);
            EXPECT_LT(reduced.data()->pixels.width(), expected.width());
            EXPECT_LT(meanDifference(renderedImage(reduced), expected), 20);
        }
}

TEST(PictureReader, EveryKindOfJpegKeepsItsColours)
{
    const QImage scene = testScene(120, 80);
    PictureFolder folder;
    for (const JpegOptions& options : {JpegOptions{}, JpegOptions{.progressive = true},
             JpegOptions{.inks = JpegInks::Adobe}, JpegOptions{.inks = JpegInks::AdobeYcck}})
        EXPECT_LT(meanDifference(loaded(folder, jpegBytes(scene, options)), scene), 3);
    QImage grey = scene;
    for (int y = 0; y < grey.height(); ++y)
        for (int x = 0; x < grey.width(); ++x) {
            const int level = qGray(grey.pixel(x, y));
            grey.setPixel(x, y, qRgb(level, level, level));
        }
    EXPECT_LT(meanDifference(loaded(folder, jpegBytes(scene, {.grey = true})), grey), 3);
}

TEST(PictureReader, AReducedJpegLooksLikeTheWholeOneBroughtDown)
{
    const QImage scene = testScene(1600, 1200);
    PictureFolder folder;
    for (const bool fullColour : {true, false})
        for (const bool progressive : {true, false}) {
            const std::string path =
                folder.put("p.jpg", jpegBytes(scene, {.progressive = progressive, .fullColour = fullColour}));
            const QImage whole = folder.pictures.load(path).data()->pixels;
            for (const int longerSide : {50, 100, 130, 200}) {
                SCOPED_TRACE(longerSide);
                const Picture picture = folder.pictures.loadReduced(path, longerSide);
                EXPECT_EQ(picture.width(), 1600);
                EXPECT_EQ(picture.height(), 1200);
                EXPECT_LT(picture.data()->pixels.width(), 1600);
                EXPECT_GE(picture.data()->pixels.width(), 4 * longerSide);
                const QSize size(longerSide, longerSide * 3 / 4);
                EXPECT_LT(meanDifference(drawnImage(*picture.data(), size),
                              whole.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)),
                    1.0);
            }
        }
}

TEST(PictureReader, AReducedBitmapKeepsItsNaturalSizeAndACutOffOneIsNone)
{
    PictureFolder folder;
    const std::string path = folder.path("picture");
    folder.pictures.saveBitmap(pictureFromImage(testScene(900, 600)), path);
    const Picture picture = folder.pictures.loadReduced(path, 100);
    EXPECT_EQ(QSize(picture.width(), picture.height()), QSize(900, 600));
    EXPECT_EQ(picture.data()->pixels.size(), QSize(450, 300));
    const std::string whole = folder.bytes("picture");
    for (const std::size_t missing : {std::size_t{1}, std::size_t{100}, whole.size() - 54, whole.size() - 20})
        EXPECT_EQ(loadFailure(folder, whole.substr(0, whole.size() - missing)), "Invalid picture") << missing;
}

TEST(PictureReader, ATornJpegShowsWhatThereIsAndOneWithoutImageDataIsNone)
{
    const QImage scene = testScene(320, 240);
    PictureFolder folder;
    for (const bool progressive : {true, false}) {
        const std::string whole = jpegBytes(scene, {.progressive = progressive});
        const QImage torn = loaded(folder, whole.substr(0, whole.size() / 2));
        EXPECT_EQ(torn.size(), scene.size());
        EXPECT_LT(meanDifference(torn.copy(0, 0, 320, 60), scene.copy(0, 0, 320, 60)), 16);
        EXPECT_TRUE(progressive || torn.pixel(160, 239) == qRgb(128, 128, 128));
    }
    const std::string whole = jpegBytes(scene);
    const std::size_t scan = whole.find("\xFF\xDA");
    for (const std::size_t length : {std::size_t{3}, std::size_t{20}, scan, scan + 14, scan + 40})
        EXPECT_EQ(loadFailure(folder, whole.substr(0, length)), "Invalid picture") << length;
    EXPECT_EQ(loadFailure(folder, whole.substr(0, scan + 14) + "\xFF\xD9"), "Invalid picture");
}

TEST(PictureReader, EveryKindOfBitmapIsRead)
{
    const auto repeated = [](const std::string& line, int times) {
        std::string lines;
        while (times-- > 0)
            lines += line;
        return lines;
    };
    const auto half = [&](std::uint32_t left, std::uint32_t right, int bytes) {
        return repeated(repeated(little(left, bytes), 4) + repeated(little(right, bytes), 4), 4);
    };
    const std::string fourColours("\x00\x00\xFF\x00\x00\xFF\x00\x00\xFF\x00\x00\x00\xFF\xFF\xFF\x00", 16);
    const std::string oldColours("\x00\x00\xFF\x00\xFF\x00\xFF\x00\x00\xFF\xFF\xFF", 12);
    const std::string low8 = half(2, 3, 1); // blue, white: the lower line comes first
    const std::string high8 = half(0, 1, 1);
    const std::string empty32 = half(0xff, 0xffffff, 4) + half(0xff0000, 0xff00, 4);
    const std::string masks565 = little(0xf800, 4) + little(0x07e0, 4) + little(0x001f, 4);
    const std::string alpha32 = little(0xff0000, 4) + little(0xff00, 4) + little(0xff, 4) + little(0xff000000, 4);
    // Runs, pixels one by one, and in the last lines a step over what is there by default.
    const std::string runs8 = repeated("\4\2\4\3\0\0"s, 3) + "\0\3\2\2\2\0\1\2\0\4\3\3\3\3\0\0"s
        + repeated("\4\0\4\1\0\0"s, 2) + repeated("\0\2\4\0\4\1\0\0"s, 2) + "\0\1"s;
    const std::string runs4 = repeated("\4\x22\4\x33\0\0"s, 3) + "\0\5\x22\x22\x30\0\3\x33\0\0"s
        + repeated("\4\0\4\x11\0\0"s, 3) + "\0\2\4\0\4\x11\0\1"s;
    const std::array cases = {
        BitmapOptions{
            .bits = 4, .palette = fourColours, .lines = repeated("\x22\x22\x33\x33", 4) + repeated("\0\0\x11\x11"s, 4)},
        BitmapOptions{.bits = 8, .topDown = true, .palette = fourColours, .lines = high8 + low8},
        BitmapOptions{.bits = 8,
            .headerLength = 12,
            .palette = oldColours + std::string(std::size_t{252} * 3, '\0'),
            .lines = low8 + high8},
        BitmapOptions{.bits = 8, .compression = 1, .palette = fourColours, .lines = runs8},
        BitmapOptions{.bits = 4, .compression = 2, .palette = fourColours, .lines = runs4},
        BitmapOptions{.bits = 16, .lines = half(0x001f, 0x7fff, 2) + half(0x7c00, 0x03e0, 2)},
        BitmapOptions{.bits = 16,
            .compression = 3,
            .masks = masks565,
            .lines = half(0x001f, 0xffff, 2) + half(0xf800, 0x07e0, 2)},
        BitmapOptions{.topDown = true, .lines = half(Red, Green, 3) + half(Blue, White, 3)},
        BitmapOptions{.bits = 32, .lines = empty32},
        BitmapOptions{.bits = 32,
            .compression = 3,
            .headerLength = 56,
            .masks = alpha32,
            .lines = half(Blue, White, 4) + half(Red, Green, 4)},
        BitmapOptions{.bits = 32, .compression = 3, .headerLength = 124, .masks = alpha32, .lines = empty32},
    };
    PictureFolder folder;
    for (std::size_t i = 0; i < cases.size(); ++i) {
        QImage image;
        EXPECT_EQ(failureOf([&] { image = loaded(folder, bitmapFile(8, 8, cases.at(i))); }), "") << i;
        EXPECT_EQ(meanDifference(image, quarters(8, 8)), 0) << i;
    }
    const std::string two("\x00\x00\x00\x00\xFF\xFF\xFF\x00", 8);
    const QImage blackAndWhite = loaded(folder, bitmapFile(8, 1, {.bits = 1, .palette = two, .lines = "\x0F\0\0\0"s}));
    EXPECT_EQ(blackAndWhite.pixel(3, 0), Black);
    EXPECT_EQ(blackAndWhite.pixel(4, 0), White);
    const QImage blended = loaded(folder,
        bitmapFile(2, 1,
            {.bits = 32,
                .compression = 3,
                .headerLength = 108,
                .masks = alpha32,
                .lines = little(0x80ff0000, 4) + little(0, 4)}));
    EXPECT_NEAR(qGreen(blended.pixel(0, 0)), 127, 1) << "on white";
    EXPECT_EQ(qRed(blended.pixel(0, 0)), 255);
    EXPECT_EQ(blended.pixel(1, 0), White);
}

TEST(PictureReader, AGifShowsItsFirstImage)
{
    PictureFolder folder;
    EXPECT_EQ(corners(loaded(folder, gifBytes(12, 12))), "RGBW");
    EXPECT_EQ(corners(loaded(folder, gifBytes(12, 12, {.transparent = 2}))), "RGWW");
    const QImage small = loaded(folder, gifBytes(40, 30, {.left = 10, .top = 10}));
    EXPECT_EQ(small.size(), QSize(40, 30));
    EXPECT_EQ(small.pixel(12, 12), Red);
    EXPECT_EQ(small.pixel(20, 12), Green);
}

TEST(PictureReader, AFileThatPromisesTooMuchIsRefusedByItsHeader)
{
    PictureFolder folder;
    const std::string lines(64, '\x7F');
    std::string jpeg = jpegBytes(quarters(64, 64));
    const std::size_t frame = jpeg.find("\xFF\xC0");
    ASSERT_NE(frame, std::string::npos);
    const auto jpegOf = [&](const std::string& size) {
        std::string file = jpeg;
        return file.replace(frame + 5, 4, size);
    };
    WmfWords zigzag = {4000};
    for (int i = 0; i < 4000; ++i)
        zigzag.insert(zigzag.end(), {i / 4, i % 2 * 800});
    std::string manyRecords;
    for (int i = 0; i < 1'000'000; ++i)
        manyRecords += "\3\0\0\0\x26\6"s;
    const std::array bombs = {
        bitmapFile(100000, 100000, {.lines = lines}),
        bitmapFile(30000, 30000, {.bits = 8, .compression = 1, .palette = std::string(1024, '\0'), .lines = lines}),
        bitmapFile(20000, 20000, {.bits = 8, .compression = 1, .palette = std::string(1024, '\0'), .lines = lines}),
        bitmapFile(20000, 20000, {.bits = 1, .palette = std::string(8, '\0'), .lines = lines}),
        bitmapFile(0, 10, {.lines = lines}),
        bitmapFile(-4, 4, {.lines = lines}),
        gifBytes(65535, 65535),
        gifBytes(20000, 20000),
        gifBytes(4, 4, {.left = 65000, .top = 65000}),
        jpegOf("\xFF\xDC\xFF\xDC"),
        jpegOf("\x4E\x20\x4E\x20"),
        jpegOf(std::string(4, '\0')),
        wmfFile(wmfScene(), {0, 0, 30000, 30000, 96}),
        wmfFile(wmfScene(), {0, 0, 100, 100, 0}),
        wmfFile(std::string(6, '\0') + wmfScene()),
        wmfFile(wmfScene()).substr(0, 200),
        wmfFile(wmfScene() + wmfRecord(0x0325, {-1, 0, 0})),
        wmfFile(wmfScene() + wmfRecord(0x0324, zigzag)),
        wmfFile(wmfScene() + manyRecords),
    };
    for (std::size_t i = 0; i < bombs.size(); ++i)
        EXPECT_EQ(loadFailure(folder, bombs.at(i)), "Invalid picture") << i;
}

TEST(PictureReader, OnlyFourFormatsAreEverTried)
{
    PictureFolder folder;
    for (const char* format : {"PNG", "PPM", "XPM"}) {
        ASSERT_TRUE(quarters(8, 8).save(QString::fromStdString(folder.native("p.jpg")), format)) << format;
        EXPECT_EQ(failureOf([&] { folder.pictures.load(folder.path("p.jpg")); }), "Invalid picture");
    }
    for (const char* text : {"", "B", "GIF88a", "<svg xmlns='http://www.w3.org/2000/svg' width='4' height='4'/>"})
        EXPECT_EQ(loadFailure(folder, text), "Invalid picture") << text;
    // The content counts, not the name.
    ASSERT_TRUE(quarters(8, 8).save(QString::fromStdString(folder.native("p.gif")), "BMP"));
    EXPECT_EQ(folder.pictures.load(folder.path("p.gif")).width(), 8);
}

TEST(PictureReader, AMetafileIsPaintedInItsOwnSize)
{
    const std::string scene = wmfScene();
    const std::string inches = wmfRecord(0x0103, {5}) + wmfRecord(0x020C, {1000, 1500}) + wmfRecord(0x0103, {8});
    const std::array<std::pair<std::string, QSize>, 4> cases = {{
        {wmfFile(scene, {-100, 50, 1100, 850, 960}), {120, 80}},
        {wmfFile(wmfRecord(0x020C, {4000, 6000}) + scene), {1024, 683}},
        {wmfFile(wmfRecord(0x020E, {20, 30}) + scene), {30, 20}},
        {wmfFile(inches + scene), {144, 96}},
    }};
    PictureFolder folder;
    for (const auto& [file, size] : cases) {
        SCOPED_TRACE(size.width());
        const QImage image = loaded(folder, file);
        ASSERT_EQ(image.size(), size);
        const auto at = [&](int x, int y) { return image.pixel(x * image.width() / 120, y * image.height() / 80); };
        const std::array pixels = {at(2, 2), at(15, 15), at(35, 35), at(70, 10), at(70, 70), at(105, 43), at(105, 77)};
        EXPECT_EQ(pixels, (std::array{White, Red, White, Blue, White, Green, Blue}));
        const Picture reduced = folder.pictures.loadReduced(folder.path("picture"), 8);
        EXPECT_EQ(reduced.width(), size.width());
        EXPECT_EQ(reduced.data()->pixels.width(), 32);
    }
}

// What a damaged file shows may be odd, but never depends on what lay in memory before.
TEST(PictureReader, DamagedFilesFailOrShowSomethingSteady)
{
    constexpr int Rounds = 300;
    PictureFolder folder;
    const QImage scene = testScene(64, 48);
    std::string lines;
    for (int y = 0; y < 48; ++y)
        lines += "\x40\1\0\0"s;
    folder.pictures.saveBitmap(pictureFromImage(scene), folder.path("p.bmp"));
    const std::array<std::string, 6> seeds = {
        jpegBytes(scene, {.fullColour = false}),
        jpegBytes(scene, {.progressive = true}),
        gifBytes(64, 48, {.width = 64, .height = 48, .transparent = 1}),
        folder.bytes("p.bmp"),
        bitmapFile(
            64, 48, {.bits = 8, .compression = 1, .palette = std::string(1024, '\x55'), .lines = lines + "\0\1"s}),
        wmfFile(wmfScene(), {0, 0, 1200, 800, 960}),
    };
    std::uint32_t random = 7;
    const auto below = [&](std::size_t limit) {
        random = random * 1664525U + 1013904223U;
        return static_cast<std::size_t>(random >> 8U) % limit;
    };
    int shown = 0;
    for (const std::string& seed : seeds)
        for (int round = 0; round < Rounds; ++round) {
            SCOPED_TRACE(round);
            std::string damaged = seed;
            for (std::size_t i = 0; i <= below(6); ++i)
                damaged[below(below(2) == 0 ? damaged.size() : std::min<std::size_t>(damaged.size(), 64))] =
                    static_cast<char>(below(256));
            if (below(3) == 0)
                damaged.resize(below(damaged.size()));
            const std::string path = folder.put("damaged", damaged);
            std::array<Picture, 2> pictures;
            for (Picture& picture : pictures) {
                mallopt(M_PERTURB, &picture == &pictures[0] ? 0x11 : 0xEE);
                const auto failure = attempt([&] { picture = folder.pictures.load(path); });
                EXPECT_NE(failure.has_value(), picture.width() > 0);
            }
            mallopt(M_PERTURB, 0);
            if (pictures[0].empty() || pictures[1].empty())
                continue;
            EXPECT_EQ(pictures[0].data()->pixels, pictures[1].data()->pixels) << "seed " << seed.substr(0, 6);
            ++shown;
        }
    EXPECT_GT(shown, Rounds) << "damage must leave something to decode";
}

} // namespace trovarium
