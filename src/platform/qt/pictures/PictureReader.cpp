#include "platform/qt/pictures/PictureReader.h"

#include "platform/colour/ColourConversion.h"
#include "platform/jpeg/JpegDecoder.h"
#include "platform/qt/pictures/BitmapReader.h"
#include "platform/qt/pictures/EmbeddedProfile.h"
#include "platform/qt/pictures/PictureData.h"
#include "platform/qt/pictures/PictureHeader.h"
#include "platform/qt/pictures/wmf/WmfReader.h"
#include "runtime/Failure.h"

#include <QFile>
#include <QImageReader>
#include <QPainter>

#include <algorithm>
#include <cstdint>
#include <exception>
#include <limits>
#include <new>
#include <string_view>
#include <utility>
#include <vector>

namespace trovarium {

namespace {

// Reduced pixels are still averaged when they are painted, so that what the reduced transform of a JPEG
// does differently at sharp edges doesn't show.
constexpr int Reserve = 4;
// A block of 64 pixels takes at least a bit of the entropy-coded data.
constexpr std::int64_t MostJpegPixelsInAByte = 512;

// What follows beyond can't belong to a picture that is small enough to be decoded.
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

QImage newImage(QSize size)
{
    QImage image(size, QImage::Format_RGB32);
    if (image.isNull())
        throw Failure(FailureKind::OutOfMemory);
    return image;
}

Picture pictureOf(QImage pixels, QSize naturalSize)
{
    auto data = std::make_shared<PictureData>();
    data->pixels = std::move(pixels);
    data->naturalSize = naturalSize;
    return Picture(std::move(data));
}

Picture readJpeg(const PictureFile& file, int longerSide, const std::atomic<bool>& cancelled)
{
    const auto bytes = file.bytes(0, static_cast<std::size_t>(std::min(file.length(), MostJpegBytes)));
    JpegDecoder decoder(bytes, cancelled);
    checkSize(decoder.width(), decoder.height(), file.length(), MostJpegPixelsInAByte);
    int denominator = longerSide > 0 ? 8 : 1;
    while (denominator > 1
        && std::max(decoder.width(denominator), decoder.height(denominator)) < Reserve * std::int64_t{longerSide})
        denominator /= 2;
    QImage image = newImage(QSize(decoder.width(denominator), decoder.height(denominator)));
    if (!decoder.decode(denominator, reinterpret_cast<std::uint32_t*>(image.bits()),
            image.bytesPerLine() / qsizetype{sizeof(std::uint32_t)}))
        return {};
    return pictureOf(std::move(image), QSize(decoder.width(), decoder.height()));
}

QImage onWhite(const QImage& image)
{
    QImage white = newImage(image.size());
    white.fill(Qt::white);
    QPainter(&white).drawImage(0, 0, image);
    return white;
}

// Some programs fill the fourth byte of a bitmap's pixels with 0 and mean nothing by it: then its
// pixels become opaque.
void mendEmptyAlpha(QImage& image)
{
    constexpr QRgb Opaque = 0xff000000U;
    if (image.format() != QImage::Format_ARGB32)
        return;
    for (int y = 0; y < image.height(); ++y) {
        const auto* line = reinterpret_cast<const QRgb*>(image.constScanLine(y));
        if (std::any_of(line, line + image.width(), [](QRgb pixel) { return (pixel & Opaque) != 0; }))
            return;
    }
    for (int y = 0; y < image.height(); ++y) {
        auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
        std::for_each(line, line + image.width(), [](QRgb& pixel) { pixel |= Opaque; });
    }
}

// Brought down by a whole factor, so that pictures waiting to be painted small don't fill the memory.
QImage reduced(const QImage& image, int longerSide)
{
    const int factor = std::max(image.width(), image.height()) / (Reserve * longerSide);
    if (factor < 2)
        return image;
    const QSize size((image.width() + factor - 1) / factor, (image.height() + factor - 1) / factor);
    return image.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
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

Picture readMetafile(const PictureFile& file, int longerSide, const std::atomic<bool>& cancelled)
{
    constexpr int LongestSide = 1 << 24; // so that the reserve can't overflow
    WmfPicture picture = readWmf(file, Reserve * std::min(longerSide, LongestSide), cancelled);
    return picture.pixels.isNull() ? Picture() : pictureOf(std::move(picture.pixels), picture.naturalSize);
}

// What a png, webp or tiff promises; those of the others are checked by their own headers.
void checkPromise(const QImageReader& reader, std::int64_t length)
{
    constexpr std::int64_t BitsOnScreen = 32;
    constexpr std::int64_t MostPacked =
        std::int64_t{1032} * 8; // times, of a deflated byte; pages of white pack better and are small
    const int bits = QImage::toPixelFormat(reader.imageFormat()).bitsPerPixel();
    const QSize size = reader.size();
    checkSize(size.width(), size.height(), length, std::numeric_limits<std::int64_t>::max());
    checkSize(
        std::max(std::int64_t{size.width()} * bits / BitsOnScreen, std::int64_t{1}), size.height(), length, MostPacked);
}

// The first image. The library tries nothing but this one format.
QImage readByLibrary(const PictureFile& file, PictureFormat format, const std::atomic<bool>& cancelled)
{
    if (format == PictureFormat::Gif)
        checkGif(file);
    CancellableFile device(cancelled);
    if (!device.open(file.descriptor(), QIODevice::ReadOnly))
        throw Failure(FailureKind::DeviceIo);
    QImageReader reader(&device, nameOf(format));
    reader.setAutoDetectImageFormat(false);
    reader.setAutoTransform(true);
    if (format != PictureFormat::Gif)
        checkPromise(reader, file.length());
    QImage image = reader.read();
    if (image.isNull() && !cancelled)
        throw Failure(FailureKind::InvalidPicture);
    return image;
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
    image = std::move(image).convertToFormat(image.hasAlphaChannel() ? QImage::Format_ARGB32 : QImage::Format_RGB32);
    if (!image.isNull())
        conversion.convert(reinterpret_cast<std::uint32_t*>(image.bits()), image.width(), image.height(),
            image.bytesPerLine() / qsizetype{sizeof(std::uint32_t)});
    return image;
}

Picture opaquePicture(QImage image, int longerSide)
{
    const QSize size = image.size();
    image = image.hasAlphaChannel() ? onWhite(image) : std::move(image).convertToFormat(QImage::Format_RGB32);
    if (longerSide > 0 && !image.isNull())
        image = reduced(image, longerSide);
    if (image.isNull())
        throw Failure(FailureKind::OutOfMemory);
    return pictureOf(std::move(image), size);
}

} // namespace

Picture readPicture(const PictureFile& file, int longerSide, const std::atomic<bool>& cancelled)
try {
    const PictureFormat format = formatOf(file);
    if (format == PictureFormat::Jpeg)
        return readJpeg(file, longerSide, cancelled);
    if (format == PictureFormat::Metafile)
        return readMetafile(file, longerSide, cancelled);
    QImage image =
        format == PictureFormat::Bitmap ? readBitmap(file, cancelled) : readByLibrary(file, format, cancelled);
    if (cancelled)
        return {};
    if (format == PictureFormat::Bitmap)
        mendEmptyAlpha(image);
    return opaquePicture(inStandardColours(std::move(image), file, format), longerSide);
} catch (const std::bad_alloc&) {
    throw Failure(FailureKind::OutOfMemory);
} catch (const std::exception&) {
    throw Failure(FailureKind::InvalidPicture);
}

} // namespace trovarium
