#include "platform/pictures/PictureReader.h"

#include "platform/pictures/BitmapReader.h"
#include "platform/pictures/ColorConversion.h"
#include "platform/pictures/JpegDecoder.h"
#include "platform/pictures/PictureData.h"
#include "platform/pictures/PictureHeader.h"
#include "platform/pictures/Reduction.h"
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
#include <new>
#include <utility>

namespace trovarium {

namespace {

// A block of 64 pixels takes at least a bit of the entropy-coded data.
constexpr std::int64_t MostJpegPixelsInAByte = 512;

// No picture that is small enough to be decoded has more.
constexpr std::int64_t MostJpegBytes = std::int64_t{1} << 30;

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

// Asked before so many pixels are decoded, or bytes read: whether to go on.
using MayDecode = std::function<bool(std::int64_t count)>;

// Large pictures are decoded one at a time: each may take a gigabyte meanwhile.
class Turn {
public:
    Turn(std::timed_mutex& largeOnes, const std::atomic<bool>& cancelled)
        : m_lock(largeOnes, std::defer_lock)
        , m_cancelled(cancelled)
    {
    }

    // Waits where another large one is being decoded. The turn lasts as long as this lives.
    bool await(std::int64_t count)
    {
        while (count > HarmlessPixels && !m_lock.owns_lock() && !m_lock.try_lock_for(std::chrono::milliseconds(20)))
            if (m_cancelled)
                refusePicture();
        return true;
    }

private:
    std::unique_lock<std::timed_mutex> m_lock;
    const std::atomic<bool>& m_cancelled;
};

Picture pictureOf(QImage pixels, QSize naturalSize)
{
    auto data = std::make_shared<PictureData>();
    data->pixels = std::move(pixels);
    data->naturalSize = naturalSize;
    return Picture(std::move(data));
}

Picture readJpeg(const PictureFile& file, int longerSide, const MayDecode& mayDecode)
{
    const auto bytes = file.bytes(0, static_cast<std::size_t>(std::min(file.length(), MostJpegBytes)));
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
    return pictureOf(std::move(image), size);
}

Picture readMetafile(const PictureFile& file, int longerSide)
{
    constexpr std::int64_t MostBytes = 40'000'000;
    constexpr int LongestSide = 1 << 24; // so that the reserve can't overflow
    if (file.length() > MostBytes)
        refusePicture();
    const auto bytes = file.bytes(0, static_cast<std::size_t>(file.length()));
    WmfPicture picture =
        readWmf(bytes, Reserve * std::min(longerSide, LongestSide), &readBitmapInMemory, file.cancelled());
    return pictureOf(std::move(picture.pixels), picture.naturalSize);
}

// The size that a png, webp or tiff promises; those of the others are checked by their own headers.
QSize checkPromise(const QImageReader& reader, std::int64_t length)
{
    constexpr std::int64_t BitsOnScreen = 32;
    constexpr std::int64_t MostPacked =
        std::int64_t{1032} * 8; // times, of a deflated byte; pages of white pack better and are small
    const int bits = QImage::toPixelFormat(reader.imageFormat()).bitsPerPixel();
    const QSize size = reader.size();
    checkSize(size.width(), size.height(), length, std::numeric_limits<std::int64_t>::max());
    checkSize(
        std::max(std::int64_t{size.width()} * bits / BitsOnScreen, std::int64_t{1}), size.height(), length, MostPacked);
    return size;
}

struct Decoded {
    QImage pixels; // in 32 bits
    QSize naturalSize;
    QByteArray profile{}; // ICC
};

// The first image. The library tries nothing but this one format.
Decoded readByLibrary(const PictureFile& file, PictureFormat format, int longerSide, const MayDecode& mayDecode)
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
    const QSize promised = isGif ? gifSize : checkPromise(reader, file.length());
    // Qt holds the pixels of these formats twice while it unpacks them. No camera or scanner writes such large ones.
    constexpr std::int64_t MostHeldTwice = 120'000'000;
    if ((isGif || format == PictureFormat::WebP) && pixelCount(promised) > MostHeldTwice)
        refusePicture();
    mayDecode(pixelCount(promised));
    const int factor = reductionFor(promised, longerSide);
    // A picture of few bits a pixel takes less memory unscaled.
    const bool comesReduced = format == PictureFormat::Png && factor > 1 && pixelCount(promised) > HarmlessPixels
        && (reader.imageFormat() == QImage::Format_RGB32 || reader.imageFormat() == QImage::Format_ARGB32);
    if (comesReduced)
        reader.setScaledSize((promised / factor).expandedTo(QSize(1, 1)));
    const QImageIOHandler::Transformations how = reader.transformation();
    QImage image = reader.read();
    if (image.isNull() || file.cancelled())
        refusePicture();
    const QSize size = comesReduced ? promised : image.size();
    // Only a profile has a description. What Qt makes of a png's gamma is approximate, and most are meant as sRGB.
    const QColorSpace space = image.colorSpace();
    image = upright(reduced(std::move(image), comesReduced ? 1 : factor, file.cancelled()), how);
    return {std::move(image), how.testFlag(QImageIOHandler::TransformationRotate90) ? size.transposed() : size,
        space.description().isEmpty() ? QByteArray() : space.iccProfile()};
}

Decoded readBitmapFile(const PictureFile& file, int longerSide, const MayDecode& mayDecode)
{
    const QSize size = bitmapSize(file);
    if (!mayDecode(pixelCount(size)))
        return {};
    return {readBitmap(file, reductionFor(size, longerSide)), size};
}

void convertToSrgb(QImage& image, const QByteArray& profile, const std::atomic<bool>& cancelled)
{
    // Qt returns gray pixels with alpha as RGB, so what counts is the color space of the profile.
    constexpr qsizetype SpacePosition = 16;
    const bool isGray = profile.mid(SpacePosition, 4) == "GRAY" && image.isGrayscale();
    const ColorConversion conversion(
        {reinterpret_cast<const unsigned char*>(profile.data()), static_cast<std::size_t>(profile.size())},
        isGray ? ColorKind::Gray : ColorKind::Rgb);
    if (conversion.empty())
        return;
    image.convertTo(image.hasAlphaChannel() ? QImage::Format_ARGB32 : QImage::Format_RGB32);
    conversion.convert(image, cancelled);
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

// Empty where `mayDecode` says no.
Picture readFormat(const PictureFile& file, PictureFormat format, int longerSide, const MayDecode& mayDecode)
try {
    if (format == PictureFormat::Jpeg)
        return readJpeg(file, longerSide, mayDecode);
    if (format == PictureFormat::Metafile)
        return readMetafile(file, longerSide);
    Decoded decoded = format == PictureFormat::Bitmap ? readBitmapFile(file, longerSide, mayDecode)
                                                      : readByLibrary(file, format, longerSide, mayDecode);
    if (decoded.naturalSize.isEmpty())
        return {};
    convertToSrgb(decoded.pixels, decoded.profile, file.cancelled());
    return pictureOf(flattenOnWhite(std::move(decoded.pixels)), decoded.naturalSize);
} catch (const std::bad_alloc&) {
    throw Failure(FailureKind::OutOfMemory);
} catch (const std::exception&) {
    throw Failure(FailureKind::InvalidPicture);
}

} // namespace

Picture readPicture(const PictureFile& file, int longerSide, std::timed_mutex& largeOnes)
{
    const PictureFormat format = formatOf(file);
    Turn turn(largeOnes, file.cancelled());
    turn.await(file.length());
    return readFormat(file, format, longerSide, [&turn](std::int64_t pixels) { return turn.await(pixels); });
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
    return readFormat(file, format, longerSide, [](std::int64_t pixels) { return pixels <= MostPixels; });
}

} // namespace trovarium
