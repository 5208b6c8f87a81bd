// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/pictures/PictureService.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <QBuffer>
#include <QColorSpace>
#include <QImageWriter>

#include <cmath>
#include <cstdlib>
#include <random>

namespace trovarium {

using namespace std::string_literals;

// A folder of pictures with the services that read them.
struct PictureFolder : testing::Test, TemporaryFolder {
    // The path inside the program of a file that is written anew.
    std::string put(std::string_view name, std::string_view bytes) const
    {
        std::filesystem::remove(native(name)); // a file that is emptied in place is flushed to the disk at its close
        write(name, bytes);
        return inside(name);
    }

    FileService files;
    PictureService pictures{files};
};

// A file of a format that Qt doesn't write.
inline std::string sample(const std::string& name)
{
    std::ifstream stream(SAMPLES "/" + name, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

inline std::string written(QImage image, const char* format, const QColorSpace& space = {}, bool progressive = false)
{
    image.setColorSpace(space);
    QBuffer buffer;
    QImageWriter writer(&buffer, format);
    writer.setQuality(100);
    writer.setProgressiveScanWrite(progressive);
    EXPECT_TRUE(writer.write(image)) << format;
    return buffer.data().toStdString();
}

inline std::string jpegBytes(const QImage& image, bool progressive = false)
{
    return written(image, "jpg", {}, progressive);
}

// Colored quarters: red and green above blue and white.
inline QImage quarters(int width, int height)
{
    static constexpr QRgb Colors[] = {0xffff0000, 0xff00ff00, 0xff0000ff, 0xffffffff};
    return QImage(reinterpret_cast<const uchar*>(Colors), 2, 2, QImage::Format_RGB32).scaled(width, height);
}

// A still life of gradients, edges and fine texture, the same at every call.
inline QImage testScene(int width, int height)
{
    QImage image(width, height, QImage::Format_RGB32);
    std::minstd_rand random;
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            const int grain = static_cast<int>(random() >> 16U) % 32;
            const bool leaf = std::hypot(x - width / 3.0, y - height / 2.0) < height / 4.0;
            const int red = leaf ? 180 : 50;
            const int green = leaf ? 60 : x * 200 / width;
            image.setPixel(x, y, qRgb(red + grain, green + grain, y * 200 / height + grain));
        }
    return image;
}

// Mean difference of all channels of opaque pixels, 0 to 255; 255 when the sizes differ.
inline double meanDifference(const QImage& a, const QImage& b)
{
    if (a.size() != b.size() || a.isNull())
        return 255;
    double sum = 0;
    for (int y = 0; y < a.height(); ++y)
        for (int i = 0; i < 4 * a.width(); ++i)
            sum += std::abs(a.constScanLine(y)[i] - b.constScanLine(y)[i]);
    return sum / (3.0 * a.width() * a.height());
}

// Little-endian, `length` bytes.
inline std::string little(std::int64_t value, int length)
{
    std::string bytes;
    for (int i = 0; i < length; ++i)
        bytes += static_cast<char>(value >> (8 * i) & 0xff);
    return bytes;
}

// The same file with an orientation behind another tag in its EXIF data.
inline std::string withOrientation(const std::string& jpeg, char orientation)
{
    const std::string exif =
        "MM\0\x2A\0\0\0\x08\0\2\1\0\0\4\0\0\0\1\0\0\0\7\1\x12\0\3\0\0\0\1\0"s + orientation + std::string(6, '\0');
    return jpeg.substr(0, 2) + "\xFF\xE1\0\x2E"s + "Exif\0\0"s + exif + jpeg.substr(2);
}

// Eight by eight pixels of the four values 240, 16, 128 and 240; `adobe` is that program's marker or empty.
inline std::string inkJpeg(const std::string& adobe)
{
    return "\xFF\xD8"s + adobe + "\xFF\xDB\0\x43\0"s + std::string(64, '\x80')
        + "\xFF\xC0\0\x14\x08\0\x08\0\x08\4\1\x11\0\2\x11\0\3\x11\0\4\x11\0"s
        + "\xFF\xC4\0\x15\0\0\2\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\3"s
        + "\xFF\xC4\0\x14\x10\1\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0"s
        + "\xFF\xDA\0\x0E\4\1\0\2\0\3\0\4\0\0\x3F\0\x79\0\xF7\xFF\xD9"s;
}

// `quarters` of two by two pixels at a place on a screen.
inline std::string gifBytes(int width, int height, int left = 0, int top = 0, char transparent = 4)
{
    return "GIF89a" + little(width, 2) + little(height, 2)
        + "\x81\0\0\xFF\0\0\0\xFF\0\0\0\xFF\xFF\xFF\xFF!\xF9\4\1\0\0"s + transparent + "\0,"s + little(left, 2)
        + little(top, 2) + "\2\0\2\0\0\2\3\x44\x34\5\0;"s;
}

// `head` are its masks or palette, `lines` as they stand in the file; a height below 0 goes from the top down.
inline std::string bitmapFile(int width, int height, int bits, const std::string& lines, const std::string& head = {},
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

inline std::string wmfRecord(int function, const WmfWords& words = {})
{
    std::string record = little(static_cast<int>(words.size() + 3), 4) + little(function, 2);
    for (const int word : words)
        record += little(word, 2);
    return record;
}

// Placeable with a box: left, top, right, bottom and units per inch.
inline std::string wmfFile(const std::string& records, const WmfWords& box = {})
{
    const std::string start =
        box.empty() ? "" : little(0x9AC6CDD7, 4) + little(0, 2) + wmfRecord(0, box).substr(6) + std::string(6, '\0');
    return start + "\1\0\x09\0\0\3"s + std::string(12, '\0') + records + wmfRecord(0);
}

// On 120 by 80 tens of units: a red square with a hole, a blue one cut off by a clip, a bitmap of two lines.
inline std::string wmfScene()
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
inline std::string big(std::uint32_t value, int length)
{
    const std::string bytes = little(value, length);
    return {bytes.rbegin(), bytes.rend()};
}

// An ICC profile of one tag.
inline std::string profileOf(
    const std::string& space, const std::string& connection, const std::string& tag, const std::string& data)
{
    const std::string head =
        std::string(4, '\0') + big(0x02400000, 4) + "prtr" + space + connection + std::string(12, '\0') + "acsp";
    const std::string rest =
        std::string(88, '\0') + big(1, 4) + tag + big(144, 4) + big(static_cast<std::uint32_t>(data.size()), 4) + data;
    return big(static_cast<std::uint32_t>(4 + head.size() + rest.size()), 4) + head + rest;
}

// Lights to the power of 1.8.
inline std::string grayProfile()
{
    return profileOf(
        "GRAY", "XYZ ", "kTRC", "curv" + std::string(4, '\0') + big(1, 4) + big(0x01CD, 2) + std::string(2, '\0'));
}

// White paper; cyan makes it darker and greener, magenta redder, yellow yellower, black black.
inline std::string inkProfile()
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

// In two segments, the second one first.
inline std::string withProfile(const std::string& jpeg, const std::string& profile)
{
    const auto segment = [](const std::string& number, const std::string& part) {
        return "\xFF\xE2" + big(static_cast<std::uint32_t>(part.size() + 16), 2) + "ICC_PROFILE\0"s + number + part;
    };
    return jpeg.substr(0, 2) + segment("\2\2", profile.substr(99)) + segment("\1\2", profile.substr(0, 99))
        + jpeg.substr(2);
}

} // namespace trovarium
