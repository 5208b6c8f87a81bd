#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace trovarium {

using WmfBytes = std::span<const unsigned char>;

// The records' numbers that are known here. The high byte is the least count of words that a record takes.
enum class WmfFunction : unsigned {
    EndOfFile = 0x0000,
    SaveDc = 0x001E,
    CreatePalette = 0x00F7,
    CreateBrush = 0x00F8,
    SetBackgroundMode = 0x0102,
    SetMapMode = 0x0103,
    SetRasterOperation = 0x0104,
    SetPolygonFillMode = 0x0106,
    RestoreDc = 0x0127,
    SelectClipRegion = 0x012C,
    SelectObject = 0x012D,
    SetTextAlign = 0x012E,
    CreateDibPatternBrush = 0x0142,
    DeleteObject = 0x01F0,
    CreatePatternBrush = 0x01F9,
    SetBackgroundColor = 0x0201,
    SetTextColor = 0x0209,
    SetWindowOrigin = 0x020B,
    SetWindowExtent = 0x020C,
    SetViewportOrigin = 0x020D,
    SetViewportExtent = 0x020E,
    OffsetWindowOrigin = 0x020F,
    OffsetViewportOrigin = 0x0211,
    LineTo = 0x0213,
    MoveTo = 0x0214,
    OffsetClipRegion = 0x0220,
    CreatePen = 0x02FA,
    CreateFont = 0x02FB,
    CreateBrushIndirect = 0x02FC,
    CreateBitmapIndirect = 0x02FD,
    Polygon = 0x0324,
    Polyline = 0x0325,
    ScaleWindowExtent = 0x0410,
    ScaleViewportExtent = 0x0412,
    ExcludeClipRectangle = 0x0415,
    IntersectClipRectangle = 0x0416,
    Ellipse = 0x0418,
    Rectangle = 0x041B,
    SetPixel = 0x041F,
    TextOut = 0x0521,
    PolyPolygon = 0x0538,
    RoundRectangle = 0x061C,
    PatternBlit = 0x061D,
    CreateBitmap = 0x06FE,
    CreateRegion = 0x06FF,
    Arc = 0x0817,
    Pie = 0x081A,
    Chord = 0x0830,
    DibBitBlit = 0x0940,
    ExtendedTextOut = 0x0A32,
    DibStretchBlit = 0x0B41,
    SetDibToDevice = 0x0D33,
    StretchDib = 0x0F43,
};

// One record: what to do, and the words that it takes, counted from 0. "Invalid picture" for a word that
// isn't there.
class WmfRecord {
public:
    WmfRecord(WmfFunction function, WmfBytes parameters)
        : m_function(function)
        , m_parameters(parameters)
    {
    }

    WmfFunction function() const { return m_function; }
    std::size_t wordCount() const { return m_parameters.size() / 2; }
    unsigned word(std::size_t index) const;
    int number(std::size_t index) const; // the same with a sign
    std::uint32_t doubleWord(std::size_t index) const;
    WmfBytes bytes(std::size_t index, std::size_t length) const; // from a word on
    WmfBytes bytesFrom(std::size_t index) const;                 // all from a word on

private:
    WmfFunction m_function;
    WmfBytes m_parameters;
};

// Where a placeable file's picture lies in its own units.
struct WmfBox {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;
    int unitsPerInch = 0;
};

// A Windows metafile as its records, up to the one that ends it. The bytes must outlive it.
// Source: [MS-WMF], Windows Metafile Format.
class WmfFile {
public:
    // Whether a file that starts with these six bytes is one, placeable or plain.
    static bool startsWith(WmfBytes start);

    // "Invalid picture" for a file with damaged headers, torn or without its last record, or with more than
    // a million records.
    explicit WmfFile(WmfBytes bytes);

    const std::optional<WmfBox>& box() const { return m_box; }
    const std::vector<WmfRecord>& records() const { return m_records; }

private:
    std::size_t readHeaders(WmfBytes bytes);
    void readRecords(WmfBytes bytes);

    std::optional<WmfBox> m_box;
    std::vector<WmfRecord> m_records;
};

} // namespace trovarium
