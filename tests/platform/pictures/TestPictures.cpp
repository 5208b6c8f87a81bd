#include "platform/pictures/TestPictures.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>

#include <jpeglib.h>

namespace trovarium {

namespace {

using Line = std::vector<unsigned char>;

Line jpegLine(const QImage& image, int y, const JpegOptions& options)
{
    Line line;
    for (int x = 0; x < image.width(); ++x) {
        const QRgb pixel = image.pixel(x, y);
        // Inks are stored inverted, so that without black they equal the light that is left.
        const std::array channels = {qRed(pixel), qGreen(pixel), qBlue(pixel), 255};
        if (options.grey)
            line.push_back(static_cast<unsigned char>(qGray(pixel)));
        else
            line.insert(line.end(), channels.begin(), channels.end() - (options.inks == JpegInks::None ? 1 : 0));
    }
    return line;
}

void setUp(jpeg_compress_struct& info, const JpegOptions& options)
{
    const bool inks = options.inks != JpegInks::None;
    info.input_components = options.grey ? 1 : inks ? 4 : 3;
    info.in_color_space = options.grey ? JCS_GRAYSCALE : inks ? JCS_CMYK : JCS_RGB;
    jpeg_set_defaults(&info);
    if (options.inks == JpegInks::AdobeYcck)
        jpeg_set_colorspace(&info, JCS_YCCK);
    jpeg_set_quality(&info, 95, TRUE);
    if (options.fullColour)
        for (int i = 0; i < info.num_components; ++i)
            info.comp_info[i].h_samp_factor = info.comp_info[i].v_samp_factor = 1;
    if (options.progressive)
        jpeg_simple_progression(&info);
}

} // namespace

std::string jpegBytes(const QImage& image, const JpegOptions& options)
{
    jpeg_error_mgr errors{};
    jpeg_compress_struct info{};
    info.err = jpeg_std_error(&errors);
    jpeg_create_compress(&info);
    unsigned char* buffer = nullptr;
    unsigned long length = 0;
    jpeg_mem_dest(&info, &buffer, &length);
    info.image_width = static_cast<JDIMENSION>(image.width());
    info.image_height = static_cast<JDIMENSION>(image.height());
    setUp(info, options);
    jpeg_start_compress(&info, TRUE);
    for (int y = 0; y < image.height(); ++y) {
        Line line = jpegLine(image, y, options);
        JSAMPROW row = line.data();
        jpeg_write_scanlines(&info, &row, 1);
    }
    jpeg_finish_compress(&info);
    jpeg_destroy_compress(&info);
    const std::unique_ptr<unsigned char, decltype(&std::free)> owner(buffer, &std::free);
    return {reinterpret_cast<const char*>(buffer), length};
}

std::string little(std::uint32_t value, int length)
{
    std::string bytes;
    for (int i = 0; i < length; ++i)
        bytes += static_cast<char>(value >> (8 * i) & 0xffU);
    return bytes;
}

std::string withOrientation(const std::string& jpeg, int orientation, bool bigEndian)
{
    const auto number = [&](std::uint32_t value, int length) {
        std::string bytes = little(value, length);
        if (bigEndian)
            std::reverse(bytes.begin(), bytes.end());
        return bytes;
    };
    const std::string otherTag = number(0x0100, 2) + number(4, 2) + number(1, 4) + number(7, 4);
    const std::string tag = number(0x0112, 2) + number(3, 2) + number(1, 4)
        + number(static_cast<std::uint32_t>(orientation), 2) + number(0, 2);
    const std::string tiff =
        (bigEndian ? "MM" : "II") + number(42, 2) + number(8, 4) + number(2, 2) + otherTag + tag + number(0, 4);
    const std::string segment = std::string("Exif\0\0", 6) + tiff;
    const std::size_t length = segment.size() + 2;
    std::string file = jpeg.substr(0, 2) + "\xFF\xE1";
    file += static_cast<char>(length >> 8U);
    file += static_cast<char>(length & 0xffU);
    return file + segment + jpeg.substr(2);
}

std::string gifBytes(int width, int height, const GifFrame& frame)
{
    const auto two = [](int value) { return little(static_cast<std::uint32_t>(value), 2); };
    std::string file = "GIF89a" + two(width) + two(height) + "\xF6" + std::string(2, '\0');
    file += std::string("\xFF\0\0\0\xFF\0\0\0\xFF\xFF\xFF\xFF", 12) + std::string(std::size_t{124} * 3, '\0');
    if (frame.transparent >= 0)
        file += std::string("!\xF9\x04\x01\0\0", 6) + static_cast<char>(frame.transparent) + std::string(1, '\0');
    file += "," + two(frame.left) + two(frame.top) + two(frame.width) + two(frame.height) + std::string("\0\x07", 2);
    // Codes of 8 bits: the table is cleared before it grows beyond them.
    constexpr char Clear = '\x80';
    constexpr char End = '\x81';
    std::string codes;
    for (int at = 0; at < frame.width * frame.height; ++at) {
        if (codes.size() % 100 == 0)
            codes += Clear;
        const int right = at % frame.width >= frame.width / 2 ? 1 : 0;
        codes += static_cast<char>(at / frame.width >= frame.height / 2 ? 2 + right : right);
    }
    codes += End;
    for (std::size_t at = 0; at < codes.size(); at += 255) {
        const std::string block = codes.substr(at, 255);
        file += static_cast<char>(block.size()) + block;
    }
    return file + std::string(1, '\0') + ";";
}

std::string bitmapFile(int width, int height, const BitmapOptions& options)
{
    const auto number = [](std::int64_t value, int length) {
        return little(static_cast<std::uint32_t>(value), length);
    };
    const bool old = options.headerLength == 12;
    const int size = old ? 2 : 4;
    std::string header = number(options.headerLength, 4) + number(width, size)
        + number(options.topDown ? -height : height, size) + number(1, 2) + number(options.bits, 2);
    if (!old)
        header += number(options.compression, 4) + number(static_cast<std::int64_t>(options.lines.size()), 4)
            + number(2835, 4) + number(2835, 4) + number(static_cast<std::int64_t>(options.palette.size() / 4), 4)
            + number(0, 4);
    header += options.masks;
    if (header.size() < static_cast<std::size_t>(options.headerLength))
        header.resize(static_cast<std::size_t>(options.headerLength));
    const std::string body = header + options.palette + options.lines;
    const auto dataOffset = static_cast<std::int64_t>(14 + header.size() + options.palette.size());
    return "BM" + number(static_cast<std::int64_t>(14 + body.size()), 4) + number(0, 4) + number(dataOffset, 4) + body;
}

std::string wmfRecord(int function, const WmfWords& words)
{
    std::string record = little(static_cast<std::uint32_t>(words.size() + 3), 4);
    record += little(static_cast<std::uint32_t>(function), 2);
    for (const int word : words)
        record += little(static_cast<std::uint32_t>(word), 2);
    return record;
}

std::string wmfFile(const std::string& records, const WmfWords& box)
{
    std::string start;
    if (!box.empty()) // a record's words, behind the key
        start = little(0x9AC6CDD7, 4) + little(0, 2) + wmfRecord(0, box).substr(6) + std::string(6, '\0');
    return start + little(1, 2) + little(9, 2) + little(0x300, 2) + std::string(12, '\0') + records + wmfRecord(0);
}

QImage quarters(int width, int height)
{
    QImage image(2, 2, QImage::Format_RGB32);
    image.setPixel(0, 0, 0xffff0000);
    image.setPixel(1, 0, 0xff00ff00);
    image.setPixel(0, 1, 0xff0000ff);
    image.setPixel(1, 1, 0xffffffff);
    return image.scaled(width, height);
}

QImage testScene(int width, int height)
{
    QImage image(width, height, QImage::Format_RGB32);
    std::uint32_t seed = 1;
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            seed = seed * 1664525U + 1013904223U;
            const int grain = static_cast<int>(seed >> 27U) - 16;
            const bool leaf = std::hypot(x - width / 3.0, y - height / 2.0) < height / 4.0;
            const bool stripe = x > width * 2 / 3 && x / 5 % 2 == 0;
            const auto level = [&](int value) { return std::clamp(value + grain, 0, 255); };
            image.setPixel(x, y,
                leaf         ? qRgb(level(190), level(60), level(40))
                    : stripe ? qRgb(level(235), level(235), level(220))
                             : qRgb(level(60), level(x * 200 / width), level(y * 200 / height)));
        }
    return image;
}

double meanDifference(const QImage& a, const QImage& b)
{
    if (a.size() != b.size() || a.isNull())
        return 255;
    double sum = 0;
    for (int y = 0; y < a.height(); ++y)
        for (int x = 0; x < a.width(); ++x) {
            const QRgb p = a.pixel(x, y);
            const QRgb q = b.pixel(x, y);
            sum += std::abs(qRed(p) - qRed(q)) + std::abs(qGreen(p) - qGreen(q)) + std::abs(qBlue(p) - qBlue(q));
        }
    return sum / (3.0 * a.width() * a.height());
}

std::string PictureFolder::put(std::string_view name, std::string_view bytes)
{
    std::filesystem::remove(native(name)); // a file that is emptied in place is flushed to the disk at its close
    m_folder.write(name, bytes);
    return path(name);
}

} // namespace trovarium
