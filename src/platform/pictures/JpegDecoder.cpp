// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/pictures/JpegDecoder.h"

#include "platform/pictures/ColorConversion.h"
#include "platform/pictures/PictureHeader.h"
#include "platform/pictures/Reduction.h"
#include "runtime/Failure.h"

#include <QBuffer>
#include <QImageReader>

#include <algorithm>
#include <array>
#include <bit>
#include <map>
#include <memory>
#include <string_view>

#include <turbojpeg.h>

namespace trovarium {

namespace {

using Bytes = std::span<const unsigned char>;

// A file of a few kilobytes could otherwise keep a core busy for hours with empty scans.
constexpr int MostScans = 200;
// Of coefficients, which have two bytes each.
constexpr unsigned long MostHeldBytes = 768UL << 20U;
constexpr int NativePixels = std::endian::native == std::endian::little ? TJPF_BGRA : TJPF_ARGB;
constexpr QRgb Gray = 0xff808080U;

bool startsWith(Bytes bytes, std::string_view text)
{
    return std::string_view(reinterpret_cast<const char*>(bytes.data()), bytes.size()).starts_with(text);
}

// Calls `take` with the marker and the content of each segment that has one.
template <class Take>
void forEachSegment(Bytes file, Take take)
{
    constexpr int First = 0xC0, Restart = 0xD0, EndOfImage = 0xD9, Fill = 0xFF;
    const std::string_view text(reinterpret_cast<const char*>(file.data()), file.size());
    for (auto at = file.begin() + 2; file.end() - at >= 4;) {
        const int marker = at[0] == Fill ? at[1] : 0;
        if (marker == EndOfImage)
            break;
        if (marker < First || (marker >= Restart && marker < EndOfImage) || marker == Fill) {
            // Within a scan's data, or behind damage.
            const std::size_t found =
                text.find(static_cast<char>(Fill), static_cast<std::size_t>(at - file.begin()) + 1);
            at = file.begin() + static_cast<std::ptrdiff_t>(std::min(found, text.size()));
            continue;
        }
        const auto length = std::clamp<std::ptrdiff_t>(at[2] * 256 + at[3] - 2, 0, file.end() - at - 4);
        take(marker, Bytes(at + 4, at + 4 + length));
        at += 4 + length;
    }
}

using Decompressor = std::unique_ptr<void, int (*)(tjhandle)>;

Decompressor newDecompressor()
{
    Decompressor decompressor(tjInitDecompress(), &tjDestroy);
    if (!decompressor)
        throw Failure(FailureKind::OutOfMemory);
    return decompressor;
}

// CMYK to RGB without a profile.
void convertInks(QImage& image, bool inverted)
{
    const unsigned flip = inverted ? 0U : 255U;
    for (int y = 0; y < image.height(); ++y) {
        auto* const line = reinterpret_cast<QRgb*>(image.scanLine(y));
        std::transform(line, line + image.width(), line, [flip](QRgb pixel) {
            const auto inks = std::bit_cast<std::array<std::uint8_t, 4>>(pixel);
            const unsigned key = inks[3] ^ flip;
            const auto light = [&](unsigned ink) { return static_cast<int>(((ink ^ flip) * key + 127U) / 255U); };
            return qRgb(light(inks[0]), light(inks[1]), light(inks[2]));
        });
    }
}

// Whether all pixels from a line on are of one color.
bool isPlain(const QImage& image, int top, QRgb color)
{
    for (int y = top; y < image.height(); ++y) {
        const auto* const line = reinterpret_cast<const QRgb*>(image.constScanLine(y));
        if (!std::all_of(line, line + image.width(), [color](QRgb pixel) { return pixel == color; }))
            return false;
    }
    return true;
}

} // namespace

JpegDecoder::JpegDecoder(Bytes file)
    : m_file(file)
{
    readSegments();
    int width = 0;
    int height = 0;
    // Fails for rare ways of subsampling, which can be decoded all the same.
    tjDecompressHeader3(
        newDecompressor().get(), file.data(), file.size(), &width, &height, &m_subsampling, &m_colorSpace);
    m_storedSize = QSize(width, height);
    if (m_storedSize.isEmpty())
        refusePicture();
    if (m_hasExif) {
        QByteArray bytes =
            QByteArray::fromRawData(reinterpret_cast<const char*>(file.data()), static_cast<qsizetype>(file.size()));
        QBuffer buffer(&bytes);
        buffer.open(QIODevice::ReadOnly);
        m_orientation = QImageReader(&buffer, "jpeg").transformation();
    }
}

QSize JpegDecoder::size() const
{
    return m_orientation.testFlag(QImageIOHandler::TransformationRotate90) ? m_storedSize.transposed() : m_storedSize;
}

// Sources: ITU-T T.81, annex B; ICC.1, annex B.4.
void JpegDecoder::readSegments()
{
    constexpr int AppExif = 0xE1, AppProfile = 0xE2, AppAdobe = 0xEE, StartOfScan = 0xDA;
    constexpr int Frames[] = {0xC0, 0xC1, 0xC2, 0xC9, 0xCA}; // those that the library decodes
    constexpr std::string_view ProfileName("ICC_PROFILE\0", 12);
    std::map<int, Bytes> parts; // of the profile, by their number, counted from 1
    int partCount = 0;
    int components = 0;
    int scans = 0;
    forEachSegment(m_file, [&](int marker, Bytes content) {
        const auto byte = [&](std::size_t index) { return index < content.size() ? content[index] : 0; };
        if (marker == AppExif) {
            m_hasExif = m_hasExif || startsWith(content, "Exif");
        } else if (marker == AppProfile && startsWith(content, ProfileName)) {
            partCount = byte(ProfileName.size() + 1);
            parts.try_emplace(
                byte(ProfileName.size()), content.subspan(std::min(content.size(), ProfileName.size() + 2)));
        } else if (marker == AppAdobe) {
            m_isAdobe = m_isAdobe || startsWith(content, "Adobe");
        } else if (marker == StartOfScan) {
            m_isHeld = m_isHeld || byte(0) < components;
            if (++scans > MostScans)
                refusePicture();
        } else if (std::ranges::find(Frames, marker) != std::end(Frames)) {
            m_isHeld = m_isHeld || marker == 0xC2 || marker == 0xCA; // progressive
            components = byte(5);
        }
    });
    if (std::ssize(parts) == partCount && partCount > 0 && parts.rbegin()->first == partCount)
        for (const auto& [number, part] : parts)
            m_profile.insert(m_profile.end(), part.begin(), part.end());
}

QImage JpegDecoder::decode(int denominator, const std::atomic<bool>& cancelled) const
{
    const tjscalingfactor factor{1, denominator};
    QImage image = newImage(
        QSize(TJSCALED(m_storedSize.width(), factor), TJSCALED(m_storedSize.height(), factor)), QImage::Format_RGB32);
    decompress(image);
    const bool hasInks = m_colorSpace == TJCS_CMYK || m_colorSpace == TJCS_YCCK;
    const ColorKind inks = m_isAdobe ? ColorKind::InvertedInks : ColorKind::Inks;
    const ColorKind lights = m_colorSpace == TJCS_GRAY ? ColorKind::Gray : ColorKind::Rgb;
    const ColorConversion conversion(m_profile, hasInks ? inks : lights);
    if (hasInks && conversion.empty())
        convertInks(image, m_isAdobe);
    conversion.convert(image, cancelled);
    return upright(std::move(image), m_orientation);
}

// Into RGB, or into CMYK as it is stored.
void JpegDecoder::decompress(QImage& image) const
{
    const int subsampling = m_subsampling < 0 ? int{TJSAMP_444} : m_subsampling;
    const bool hasInks = m_colorSpace == TJCS_CMYK || m_colorSpace == TJCS_YCCK;
    const unsigned long coefficients = tjBufSizeYUV2(m_storedSize.width(), 1, m_storedSize.height(), subsampling);
    if (m_isHeld && coefficients * 2 > MostHeldBytes)
        refusePicture();
    const Decompressor decompressor = newDecompressor();
    const auto run = [&] {
        return tjDecompress2(decompressor.get(), m_file.data(), m_file.size(), image.bits(), image.width(),
                   static_cast<int>(image.bytesPerLine()), image.height(), hasInks ? TJPF_CMYK : NativePixels,
                   TJFLAG_ACCURATEDCT)
            == 0;
    };
    if (run())
        return;
    if (std::string_view(tjGetErrorStr2(decompressor.get())).starts_with("Insufficient memory"))
        throw Failure(FailureKind::OutOfMemory);
    // Once more over gray: the library doesn't tell how many lines it has written.
    image.fill(Gray);
    run();
    // What is missing is gray. Where that is all below the first row of blocks, the file ends before the image.
    const int rowOfBlocks = tjMCUHeight[subsampling] * image.height() / m_storedSize.height() + 1;
    const QRgb missing = hasInks ? reinterpret_cast<const QRgb*>(image.constScanLine(image.height() - 1))[0] : Gray;
    if (isPlain(image, image.height() > rowOfBlocks ? rowOfBlocks : 0, missing))
        refusePicture();
}

} // namespace trovarium
