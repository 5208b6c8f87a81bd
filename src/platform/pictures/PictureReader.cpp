// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/pictures/PictureReader.h"

#include "platform/pictures/BitmapReader.h"
#include "platform/pictures/ColorConversion.h"
#include "platform/pictures/HeifDecoder.h"
#include "platform/pictures/JpegDecoder.h"
#include "platform/pictures/JpegXlDecoder.h"
#include "platform/pictures/PictureData.h"
#include "platform/pictures/PictureHeader.h"
#include "platform/pictures/PictureLibraries.h"
#include "platform/pictures/Reduction.h"
#include "platform/pictures/wmf/WmfFile.h"
#include "platform/pictures/wmf/WmfReader.h"
#include "runtime/Failure.h"

#include <QColorSpace>
#include <QFile>
#include <QImageReader>
#include <QPainter>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <exception>
#include <functional>
#include <limits>
#include <mutex>
#include <new>
#include <span>
#include <string_view>
#include <utility>

namespace trovarium {

namespace {

// A block of 64 pixels takes at least a bit of the entropy-coded data.
constexpr std::int64_t MostJpegPixelsInAByte = 512;

// No picture that is small enough to be decoded has more.
constexpr std::int64_t MostBytesHeld = std::int64_t{1} << 30;

// Of HEIF and JPEG XL: flat areas are packed denser, but no photograph is.
constexpr std::int64_t MostNewerPixelsInAByte = 4096;

enum class PictureFormat { Jpeg, Gif, Bitmap, Metafile, Png, WebP, Tiff, Heif, JpegXl };

// Whether the first box names one of the brands of still images. Sources: ISO/IEC 14496-12, 4.3; 23008-12, 10; AVIF, 6.
bool startsHeif(std::string_view start)
{
    constexpr std::string_view Brands[] = {
        "avif", "avis", "heic", "heim", "heis", "heix", "hevc", "hevm", "hevs", "hevx", "mif1", "msf1"};
    constexpr std::size_t Length = 4, MinorVersion = 12;
    if (start.size() < MinorVersion || start.substr(Length, Length) != "ftyp")
        return false;
    start = start.substr(0, static_cast<unsigned char>(start[3]));
    for (std::size_t at = 2 * Length; at < start.size(); at += Length)
        if (at != MinorVersion && std::ranges::find(Brands, start.substr(at, Length)) != std::end(Brands))
            return true;
    return false;
}

// The format of a file by its first bytes; "Invalid picture" for any other.
PictureFormat formatOf(const PictureFile& file)
{
    using namespace std::string_view_literals;
    constexpr std::pair<std::string_view, PictureFormat> Starts[] = {{"\xFF\xD8\xFF", PictureFormat::Jpeg},
        {"GIF87a", PictureFormat::Gif}, {"GIF89a", PictureFormat::Gif}, {"BM", PictureFormat::Bitmap},
        {"\x89PNG\r\n\x1A\n", PictureFormat::Png}, {"II*\0"sv, PictureFormat::Tiff}, {"MM\0*"sv, PictureFormat::Tiff},
        {"\xFF\x0A", PictureFormat::JpegXl}, {"\0\0\0\x0CJXL \r\n\x87\n"sv, PictureFormat::JpegXl}};
    const std::vector<unsigned char> head = file.bytes(0, 64);
    const std::string_view text(reinterpret_cast<const char*>(head.data()), head.size());
    for (const auto& [start, format] : Starts)
        if (text.starts_with(start))
            return format;
    if (text.starts_with("RIFF") && text.substr(0, 12).ends_with("WEBP"))
        return PictureFormat::WebP;
    if (startsHeif(text))
        return PictureFormat::Heif;
    if (WmfFile::startsWith(head))
        return PictureFormat::Metafile;
    refusePicture();
}

class CancellableFile : public QFile {
public:
    explicit CancellableFile(const std::atomic<bool>& cancelled)
        : m_cancelled(cancelled)
    {
    }

protected:
    qint64 readData(char* data, qint64 length) override { return m_cancelled ? -1 : QFile::readData(data, length); }

private:
    const std::atomic<bool>& m_cancelled;
};

// Whether to go on. Called with a number of pixels before they are decoded, or of bytes before they are read.
using MayDecode = std::function<bool(std::int64_t count)>;

std::vector<unsigned char> wholeFile(const PictureFile& file)
{
    return file.bytes(0, static_cast<std::size_t>(std::min(file.length(), MostBytesHeld)));
}

PictureData readJpeg(const PictureFile& file, int longerSide, const MayDecode& mayDecode)
{
    const auto bytes = wholeFile(file);
    const JpegDecoder decoder(bytes);
    const QSize size = decoder.size();
    checkSize(size.width(), size.height(), file.length(), MostJpegPixelsInAByte);
    if (!mayDecode(pixelCount(size)))
        return {};
    int denominator = 8;
    while (denominator > reductionFor(size, longerSide))
        denominator /= 2;
    QImage image = decoder.decode(denominator, file.cancelled());
    if (file.cancelled())
        refusePicture();
    return {std::move(image), size};
}

PictureData readMetafile(const PictureFile& file, int longerSide)
{
    constexpr std::int64_t MostBytes = 40'000'000;
    constexpr int LongestSide = 1 << 24; // so that it can be multiplied by `Reserve`
    if (file.length() > MostBytes)
        refusePicture();
    const auto bytes = file.bytes(0, static_cast<std::size_t>(file.length()));
    const auto readInMemory = [](std::vector<unsigned char> bitmap, const std::atomic<bool>& cancelled) {
        return readBitmap(PictureFile(std::move(bitmap), cancelled), [](QSize) { return 1; });
    };
    return readWmf(bytes, Reserve * std::min(longerSide, LongestSide), readInMemory, file.cancelled());
}

std::size_t colorTableLength(unsigned packed)
{
    return (packed & 0x80U) != 0 ? std::size_t{3} << ((packed & 7U) + 1) : 0;
}

// The size of a gif by its headers alone; "Invalid picture" if the file is too short for it. Source: GIF89a, sections
// 17 to 25.
QSize checkGif(const PictureFile& file)
{
    constexpr unsigned Extension = '!';
    constexpr unsigned ImageStart = ',';
    constexpr std::int64_t SignatureLength = 6;
    // LZW has 4096 codes, so that none stands for more pixels; the longest takes 12 bits.
    constexpr std::int64_t MostPixelsInAByte = 4096 * 8 / 12 + 1;

    ByteStream stream(file, SignatureLength);
    unsigned width = stream.number(2);
    unsigned height = stream.number(2);
    const unsigned packed = stream.number(1);
    stream.skip(2 + colorTableLength(packed));
    unsigned kind = stream.number(1);
    for (; kind == Extension; kind = stream.number(1)) {
        stream.skip(1);
        while (const unsigned length = stream.number(1))
            stream.skip(length);
    }
    if (kind != ImageStart)
        refusePicture();
    const unsigned left = stream.number(2);
    const unsigned top = stream.number(2);
    width = std::max(width, left + stream.number(2));
    height = std::max(height, top + stream.number(2));
    checkSize(width, height, file.length(), MostPixelsInAByte);
    return {static_cast<int>(width), static_cast<int>(height)};
}

// The size that a png, webp or tiff declares, checked against the length of the file. The other formats are checked
// while their own headers are read.
QSize checkDeclaredSize(const QImageReader& reader, std::int64_t length)
{
    constexpr std::int64_t BitsOnScreen = 32;
    // Deflate packs at most 1032 bytes into one, and a palette's index may grow from two bits to a byte.
    constexpr std::int64_t MostPacked = std::int64_t{1032} * 4 * 8 / BitsOnScreen;
    const int bits = QImage::toPixelFormat(reader.imageFormat()).bitsPerPixel();
    const QSize size = reader.size();
    checkSize(size.width(), size.height(), length, std::numeric_limits<std::int64_t>::max());
    checkSize(
        std::max(std::int64_t{size.width()} * bits / BitsOnScreen, std::int64_t{1}), size.height(), length, MostPacked);
    return size;
}

void convertToSrgb(QImage& image, std::span<const unsigned char> profile, const std::atomic<bool>& cancelled)
{
    // Gray pixels with alpha come as RGB, so what counts is the color space of the profile.
    constexpr std::size_t SpacePosition = 16;
    const std::string_view text(reinterpret_cast<const char*>(profile.data()), profile.size());
    const bool isGray = text.size() > SpacePosition && text.substr(SpacePosition, 4) == "GRAY" && image.isGrayscale();
    const ColorConversion conversion(profile, isGray ? ColorKind::Gray : ColorKind::Rgb);
    if (conversion.empty())
        return;
    image.convertTo(image.hasAlphaChannel() ? QImage::Format_ARGB32 : QImage::Format_RGB32);
    conversion.convert(image, cancelled);
}

// Reads the first image. Qt may try no other format than this one.
PictureData readByLibrary(const PictureFile& file, PictureFormat format, int longerSide, const MayDecode& mayDecode)
{
    const bool isGif = format == PictureFormat::Gif;
    const QSize gifSize = isGif ? checkGif(file) : QSize();
    CancellableFile device(file.cancelled());
    if (!device.open(file.descriptor(), QIODevice::ReadOnly))
        throw Failure(FailureKind::DeviceIo);
    constexpr std::pair<PictureFormat, const char*> Names[] = {{PictureFormat::Gif, "gif"}, {PictureFormat::Png, "png"},
        {PictureFormat::WebP, "webp"}, {PictureFormat::Tiff, "tiff"}};
    QImageReader reader(
        &device, std::ranges::find(Names, format, &std::pair<PictureFormat, const char*>::first)->second);
    reader.setAutoDetectImageFormat(false);
    const QSize declared = isGif ? gifSize : checkDeclaredSize(reader, file.length());
    if ((isGif || format == PictureFormat::WebP) && pixelCount(declared) > MostHeldTwice)
        refusePicture();
    mayDecode(pixelCount(declared));
    const int factor = reductionFor(declared, longerSide);
    // A picture of few bits a pixel takes less memory unscaled.
    const bool comesReduced = format == PictureFormat::Png && factor > 1 && pixelCount(declared) > HarmlessPixels
        && (reader.imageFormat() == QImage::Format_RGB32 || reader.imageFormat() == QImage::Format_ARGB32);
    if (comesReduced)
        reader.setScaledSize((declared / factor).expandedTo(QSize(1, 1)));
    const QImageIOHandler::Transformations how = reader.transformation();
    QImage image = reader.read();
    if (image.isNull() || file.cancelled())
        refusePicture();
    const QSize size = comesReduced ? declared : image.size();
    // Only a profile has a description. What Qt makes of a png's gamma is approximate, and most are meant as sRGB.
    const QColorSpace space = image.colorSpace();
    const QByteArray profile = space.description().isEmpty() ? QByteArray() : space.iccProfile();
    image = upright(reduced(std::move(image), comesReduced ? 1 : factor, file.cancelled()), how);
    convertToSrgb(image,
        {reinterpret_cast<const unsigned char*>(profile.data()), static_cast<std::size_t>(profile.size())},
        file.cancelled());
    return {std::move(image), how.testFlag(QImageIOHandler::TransformationRotate90) ? size.transposed() : size};
}

template <class Decoder, class Library>
PictureData readNewer(const Library& library, const PictureFile& file, int longerSide, const MayDecode& mayDecode)
{
    const auto bytes = wholeFile(file);
    Decoder decoder(library, bytes, file.cancelled());
    const QSize declared = decoder.size();
    checkSize(declared.width(), declared.height(), file.length(), MostNewerPixelsInAByte);
    if (pixelCount(declared) > MostHeldTwice)
        refusePicture();
    mayDecode(pixelCount(declared) * 2); // since the libraries may take 20 bytes for each
    auto [image, profile] = decoder.decode();
    const QSize size = image.size();
    image = reduced(std::move(image), reductionFor(size, longerSide), file.cancelled());
    convertToSrgb(image, profile, file.cancelled());
    if (file.cancelled())
        refusePicture();
    return {std::move(image), size};
}

PictureData readBitmapFile(const PictureFile& file, int longerSide, const MayDecode& mayDecode)
{
    PictureData data;
    data.pixels = readBitmap(file, [&](QSize size) {
        if (!mayDecode(pixelCount(size)))
            return 0;
        data.naturalSize = size;
        return reductionFor(size, longerSide);
    });
    return data;
}

PictureData decode(const PictureFile& file, PictureFormat format, int longerSide, const MayDecode& mayDecode,
    PictureLibraries& libraries)
{
    switch (format) {
    case PictureFormat::Jpeg:
        return readJpeg(file, longerSide, mayDecode);
    case PictureFormat::Metafile:
        return readMetafile(file, longerSide);
    case PictureFormat::Bitmap:
        return readBitmapFile(file, longerSide, mayDecode);
    case PictureFormat::Heif:
        return readNewer<HeifDecoder>(libraries.heif(), file, longerSide, mayDecode);
    case PictureFormat::JpegXl:
        return readNewer<JpegXlDecoder>(libraries.jpegXl(), file, longerSide, mayDecode);
    default:
        return readByLibrary(file, format, longerSide, mayDecode);
    }
}

QImage flattenOnWhite(QImage image)
{
    if (image.hasAlphaChannel()) {
        image.convertTo(QImage::Format_ARGB32_Premultiplied);
        QPainter painter(&image);
        painter.setCompositionMode(QPainter::CompositionMode_DestinationOver);
        painter.fillRect(image.rect(), Qt::white);
        painter.end();
        image.reinterpretAsFormat(QImage::Format_RGB32);
    }
    if (image.isNull())
        throw Failure(FailureKind::OutOfMemory);
    return image;
}

// Empty where nothing was to be decoded.
Picture finished(const std::function<PictureData()>& decode)
try {
    PictureData data = decode();
    if (data.naturalSize.isEmpty())
        return {};
    data.pixels = flattenOnWhite(std::move(data.pixels));
    return Picture(std::make_shared<PictureData>(std::move(data)));
} catch (const std::bad_alloc&) {
    throw Failure(FailureKind::OutOfMemory);
} catch (const std::exception&) {
    throw Failure(FailureKind::InvalidPicture);
}

} // namespace

Picture readPicture(const PictureFile& file, int longerSide, PictureLibraries& libraries)
{
    const PictureFormat format = formatOf(file);
    // Large pictures are decoded one at a time: each may take a gigabyte meanwhile.
    std::unique_lock turn(libraries.largeOnes(), std::defer_lock);
    const auto await = [&](std::int64_t count) {
        while (count > HarmlessPixels && !turn.owns_lock() && !turn.try_lock_for(std::chrono::milliseconds(20)))
            if (file.cancelled())
                refusePicture();
        return true;
    };
    await(file.length());
    return finished([&] { return decode(file, format, longerSide, await, libraries); });
}

Picture readThumbnail(const PictureFile& file, int longerSide)
{
    constexpr std::int64_t MostBytes = 1 << 16;
    constexpr std::int64_t MostPixels = 1 << 20;
    if (file.length() > MostBytes)
        return {};
    const PictureFormat format = formatOf(file);
    if (format != PictureFormat::Bitmap && format != PictureFormat::Jpeg)
        return {};
    const auto read = format == PictureFormat::Bitmap ? &readBitmapFile : &readJpeg;
    return finished([&] { return read(file, longerSide, [](std::int64_t pixels) { return pixels <= MostPixels; }); });
}

bool isPicture(const PictureFile& file, PictureLibraries& libraries)
{
    return !attempt([&] {
        const PictureFormat format = formatOf(file);
        if (format == PictureFormat::Heif)
            libraries.heif();
        else if (format == PictureFormat::JpegXl)
            libraries.jpegXl();
    });
}

} // namespace trovarium
