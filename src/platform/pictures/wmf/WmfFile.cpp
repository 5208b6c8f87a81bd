#include "platform/pictures/wmf/WmfFile.h"

#include "platform/pictures/PictureHeader.h"
#include "runtime/Failure.h"

namespace trovarium {

namespace {

constexpr std::size_t BoxLength = 22;
constexpr std::size_t HeaderLength = 18;
constexpr std::size_t RecordHeaderLength = 6;
constexpr std::size_t MostRecords = 1'000'000;

bool startsPlaceable(WmfBytes bytes)
{
    constexpr std::uint32_t Key = 0x9AC6CDD7U;
    return bytes.size() >= 4 && littleEndian(bytes, 0, 4) == Key;
}

bool startsPlain(WmfBytes bytes)
{
    if (bytes.size() < 6)
        return false;
    const std::uint32_t type = littleEndian(bytes, 0, 2); // in memory or on disk: both occur in files
    const std::uint32_t version = littleEndian(bytes, 4, 2);
    return (type == 1 || type == 2) && littleEndian(bytes, 2, 2) == HeaderLength / 2
        && (version == 0x0100 || version == 0x0300);
}

int signedWord(WmfBytes bytes, std::size_t position)
{
    return static_cast<std::int16_t>(littleEndian(bytes, position, 2));
}

} // namespace

unsigned WmfRecord::word(std::size_t index) const
{
    return littleEndian(bytes(index, 2), 0, 2);
}

int WmfRecord::number(std::size_t index) const
{
    return signedWord(bytes(index, 2), 0);
}

std::uint32_t WmfRecord::doubleWord(std::size_t index) const
{
    return littleEndian(bytes(index, 4), 0, 4);
}

WmfBytes WmfRecord::bytes(std::size_t index, std::size_t length) const
{
    const WmfBytes rest = bytesFrom(index);
    if (rest.size() < length)
        refusePicture();
    return rest.first(length);
}

WmfBytes WmfRecord::bytesFrom(std::size_t index) const
{
    if (index > wordCount())
        refusePicture();
    return m_parameters.subspan(index * 2);
}

bool WmfFile::startsWith(WmfBytes start)
{
    return startsPlaceable(start) || startsPlain(start);
}

WmfFile::WmfFile(WmfBytes bytes)
{
    readRecords(bytes.subspan(readHeaders(bytes)));
}

// The headers' length. The box's checksum and the lengths that the second header tells are wrong in many
// files that are sound otherwise.
std::size_t WmfFile::readHeaders(WmfBytes bytes)
{
    std::size_t length = 0;
    if (startsPlaceable(bytes)) {
        if (bytes.size() < BoxLength)
            refusePicture();
        m_box = WmfBox{signedWord(bytes, 6), signedWord(bytes, 8), signedWord(bytes, 10), signedWord(bytes, 12),
            static_cast<int>(littleEndian(bytes, 14, 2))};
        length = BoxLength;
    }
    if (bytes.size() < length + HeaderLength || !startsPlain(bytes.subspan(length)))
        refusePicture();
    return length + HeaderLength;
}

void WmfFile::readRecords(WmfBytes bytes)
{
    for (;;) {
        if (bytes.size() < RecordHeaderLength || m_records.size() == MostRecords)
            refusePicture();
        const std::size_t length = std::size_t{littleEndian(bytes, 0, 4)} * 2;
        const WmfFunction function{littleEndian(bytes, 4, 2)};
        if (length < RecordHeaderLength || length > bytes.size())
            refusePicture();
        if (function == WmfFunction::EndOfFile)
            return;
        m_records.emplace_back(function, bytes.subspan(RecordHeaderLength, length - RecordHeaderLength));
        bytes = bytes.subspan(length);
    }
}

} // namespace trovarium
