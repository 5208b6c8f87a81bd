#include "platform/pictures/PictureReader.h"

#include "platform/pictures/BitmapReader.h"
#include "platform/pictures/ColourConversion.h"
#include "platform/pictures/EmbeddedProfile.h"
#include "platform/pictures/JpegDecoder.h"
#include "platform/pictures/PictureData.h"
#include "platform/pictures/PictureHeader.h"
#include "platform/pictures/Reduction.h"
#include "platform/pictures/wmf/WmfReader.h"
#include "runtime/Failure.h"

#include <QFile>
#include <QImageReader>
#include <QPainter>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <exception>
#include <limits>
#include <new>
#include <string_view>
#include <utility>
#include <vector>

namespace trovarium {

namespace {

// A block of 64 pixels takes at least a bit of the entropy-coded data.
constexpr std::int64_t MostJpegPixelsInAByte = 512;

// What follows beyond can't belong to a picture that is small enough to be decoded.
constexpr std::int64_t MostJpegBytes = std::int64_t{1} << 30;

[[noreturn]] void refuse()
{
    throw Failure(FailureKind::InvalidPicture);
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

// Large pictures are decoded one at a time: each may take a gigabyte meanwhile.
class Turn {
public:
    Turn(std::timed_mutex& largeOnes, const std::atomic<bool>& cancelled)
        : m_lock(largeOnes, std::defer_lock)
        , m_cancelled(cancelled)
    {
    }

    // Before so many pixels are decoded, or bytes read; the turn lasts as long as this lives.
    void await(std::int64_t count)
    {
        if (count <= HarmlessPixels || m_lock.owns_lock())
            return;
        while (!m_lock.try_lock_for(std::chrono::milliseconds(20)))
            if (m_cancelled)
                refuse();
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

Picture readJpeg(const PictureFile& file, int longerSide, Turn& turn)
{
    const auto bytes = file.bytes(0, static_cast<std::size_t>(std::min(file.length(), MostJpegBytes)));
    JpegDecoder decoder(bytes, file.cancelled());
    const QSize size(decoder.width(), decoder.height());
    checkSize(size.width(), size.height(), file.length(), MostJpegPixelsInAByte);
    turn.await(pixelCount(size));
    int denominator = 8;
    while (denominator > reductionFor(size, longerSide))
        denominator /= 2;
    QImage image(decoder.width(denominator), decoder.height(denominator), QImage::Format_RGB32);
    if (image.isNull())
        throw Failure(FailureKind::OutOfMemory);
    if (!decoder.decode(denominator, reinterpret_cast<std::uint32_t*>(image.bits()),
            image.bytesPerLine() / qsizetype{sizeof(std::uint32_t)}))
        refuse();
    return pictureOf(std::move(image), size);
}

const char* nameOf(PictureFormat format)
{
    switch (format) {
    case PictureFormat::Png:
        return "png";
    case PictureFormat::WebP:
        return "webp";
    case PictureFormat::Tiff:
        return "tiff";
    default:
        return "gif";
    }
}

Picture readMetafile(const PictureFile& file, int longerSide)
{
    constexpr int LongestSide = 1 << 24; // so that the reserve can't overflow
    WmfPicture picture = readWmf(file, Reserve * std::min(longerSide, LongestSide), file.cancelled());
    if (picture.pixels.isNull())
        refuse();
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

QImage turned(QImage image, QImageIOHandler::Transformations how)
{
    if (how == QImageIOHandler::TransformationNone)
        return image;
    image = std::move(image).mirrored(
        how.testFlag(QImageIOHandler::TransformationMirror), how.testFlag(QImageIOHandler::TransformationFlip));
    return how.testFlag(QImageIOHandler::TransformationRotate90) ? image.transformed(QTransform().rotate(90)) : image;
}

struct Decoded {
    QImage pixels; // in 32 bits
    QSize naturalSize;
};

// The first image. The library tries nothing but this one format.
Decoded readByLibrary(const PictureFile& file, PictureFormat format, int longerSide, Turn& turn)
{
    const bool isGif = format == PictureFormat::Gif;
    const QSize gifSize = isGif ? checkGif(file) : QSize();
    CancellableFile device(file.cancelled());
    if (!device.open(file.descriptor(), QIODevice::ReadOnly))
        throw Failure(FailureKind::DeviceIo);
    QImageReader reader(&device, nameOf(format));
    reader.setAutoDetectImageFormat(false);
    const QSize promised = isGif ? gifSize : checkPromise(reader, file.length());
    // Of these the library holds all pixels, and once more while it unpacks them; no camera or scanner writes them.
    constexpr std::int64_t MostHeldTwice = 120'000'000;
    if ((isGif || format == PictureFormat::WebP) && pixelCount(promised) > MostHeldTwice)
        refuse();
    turn.await(pixelCount(promised));
    const int factor = reductionFor(promised, longerSide);
    // One of few bits is smaller as it is.
    const bool comesReduced = format == PictureFormat::Png && factor > 1 && pixelCount(promised) > HarmlessPixels
        && (reader.imageFormat() == QImage::Format_RGB32 || reader.imageFormat() == QImage::Format_ARGB32);
    if (comesReduced)
        reader.setScaledSize((promised / factor).expandedTo(QSize(1, 1)));
    const QImageIOHandler::Transformations how = reader.transformation();
    QImage image = reader.read();
    if (image.isNull() || file.cancelled())
        refuse();
    const QSize size = comesReduced ? promised : image.size();
    image = turned(reduced(std::move(image), comesReduced ? 1 : factor, file.cancelled()), how);
    return {std::move(image), how.testFlag(QImageIOHandler::TransformationRotate90) ? size.transposed() : size};
}

Decoded readBitmapFile(const PictureFile& file, int longerSide, Turn& turn)
{
    const QSize size = bitmapSize(file);
    turn.await(pixelCount(size));
    return {readBitmap(file, reductionFor(size, longerSide)), size};
}

// To sRGB by the profile that the file carries.
QImage inStandardColours(QImage image, const PictureFile& file, PictureFormat format)
{
    const std::vector<unsigned char> profile = embeddedProfile(file, format);
    if (profile.empty())
        return image;
    // The library gives grey pixels with alpha in the form of coloured ones, so the profile is asked first.
    constexpr std::string_view GreySpace = "GRAY";
    constexpr std::size_t SpacePosition = 16;
    const bool grey = profile.size() > SpacePosition + GreySpace.size()
        && std::equal(GreySpace.begin(), GreySpace.end(), profile.begin() + SpacePosition) && image.isGrayscale();
    const ColourConversion conversion(profile, grey ? ColourKind::Grey : ColourKind::Rgb);
    if (conversion.empty())
        return image;
    image.convertTo(image.hasAlphaChannel() ? QImage::Format_ARGB32 : QImage::Format_RGB32);
    if (!image.isNull())
        conversion.convert(reinterpret_cast<std::uint32_t*>(image.bits()), image.width(), image.height(),
            image.bytesPerLine() / qsizetype{sizeof(std::uint32_t)}, file.cancelled());
    return image;
}

QImage onWhite(QImage image)
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

} // namespace

Picture readPicture(const PictureFile& file, int longerSide, std::timed_mutex& largeOnes)
try {
    const PictureFormat format = formatOf(file);
    Turn turn(largeOnes, file.cancelled());
    turn.await(file.length());
    if (format == PictureFormat::Jpeg)
        return readJpeg(file, longerSide, turn);
    if (format == PictureFormat::Metafile)
        return readMetafile(file, longerSide);
    Decoded decoded = format == PictureFormat::Bitmap ? readBitmapFile(file, longerSide, turn)
                                                      : readByLibrary(file, format, longerSide, turn);
    return pictureOf(onWhite(inStandardColours(std::move(decoded.pixels), file, format)), decoded.naturalSize);
} catch (const std::bad_alloc&) {
    throw Failure(FailureKind::OutOfMemory);
} catch (const std::exception&) {
    throw Failure(FailureKind::InvalidPicture);
}

bool isThumbnail(const PictureFile& file)
{
    constexpr std::int64_t MostBytes = 1 << 16;
    constexpr std::int64_t MostPixels = 1 << 20;
    bool isSmall = false;
    attempt([&] {
        if (file.length() > MostBytes)
            return;
        const PictureFormat format = formatOf(file);
        if (format == PictureFormat::Bitmap) {
            isSmall = pixelCount(bitmapSize(file)) <= MostPixels;
        } else if (format == PictureFormat::Jpeg) {
            const auto bytes = file.bytes(0, static_cast<std::size_t>(file.length()));
            const JpegDecoder decoder(bytes, file.cancelled());
            isSmall = std::int64_t{decoder.width()} * decoder.height() <= MostPixels;
        }
    });
    return isSmall;
}

} // namespace trovarium
