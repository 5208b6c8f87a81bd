// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/pictures/wmf/WmfFile.h"

#include "platform/pictures/PictureHeader.h"
#include "runtime/Failure.h"

namespace trovarium {

namespace {

constexpr std::size_t PlaceableHeaderLength = 22;
constexpr std::size_t HeaderLength = 18;
constexpr std::size_t RecordHeaderLength = 6;
constexpr unsigned EndOfFile = 0;
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

} // namespace

unsigned WmfRecord::word(std::size_t index) const
{
    return littleEndian(bytes(index, 2), 0, 2);
}

int WmfRecord::number(std::size_t index) const
{
    return static_cast<std::int16_t>(word(index));
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

// Ignores the checksum of the placeable header and the lengths in the standard header: many sound files have wrong
// ones.
WmfFile::WmfFile(WmfBytes bytes)
{
    if (startsPlaceable(bytes)) {
        if (bytes.size() < PlaceableHeaderLength)
            refusePicture();
        box.emplace(0, bytes.subspan(6, 10));
        bytes = bytes.subspan(PlaceableHeaderLength);
    }
    if (bytes.size() < HeaderLength || !startsPlain(bytes))
        refusePicture();
    bytes = bytes.subspan(HeaderLength);
    for (;;) {
        if (bytes.size() < RecordHeaderLength || records.size() == MostRecords)
            refusePicture();
        const std::size_t length = std::size_t{littleEndian(bytes, 0, 4)} * 2;
        const unsigned function = littleEndian(bytes, 4, 2);
        if (length < RecordHeaderLength || length > bytes.size())
            refusePicture();
        if (function == EndOfFile)
            return;
        records.emplace_back(function, bytes.subspan(RecordHeaderLength, length - RecordHeaderLength));
        bytes = bytes.subspan(length);
    }
}

} // namespace trovarium
