// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPointF>
#include <QSizeF>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace trovarium {

using WmfBytes = std::span<const unsigned char>;

// One record: the number of its function, and its parameters in words of 16 bits, counted from 0. "Invalid picture" for
// a word that isn't there.
class WmfRecord {
public:
    WmfRecord(unsigned function, WmfBytes parameters)
        : m_function(function)
        , m_parameters(parameters)
    {
    }

    unsigned function() const { return m_function; }
    std::size_t wordCount() const { return m_parameters.size() / 2; }
    unsigned word(std::size_t index) const;
    int number(std::size_t index) const; // the word with a sign
    std::uint32_t doubleWord(std::size_t index) const;
    QPointF point(std::size_t index) const { return QPointF(number(index + 1), number(index)); } // y, x
    QSizeF size(std::size_t index) const { return QSizeF(number(index + 1), number(index)); }    // height, width
    WmfBytes bytes(std::size_t index, std::size_t length) const;                                 // from that word on
    WmfBytes bytesFrom(std::size_t index) const; // all from that word on

private:
    unsigned m_function;
    WmfBytes m_parameters;
};

// The records of a Windows metafile, up to the one that ends it. The bytes must outlive it.
// Source: [MS-WMF], Windows Metafile Format.
struct WmfFile {
    // Whether a file that starts with these six bytes is one, placeable or plain.
    static bool startsWith(WmfBytes start);

    // "Invalid picture" for a file with damaged headers, torn or without its last record, or with more than
    // a million records.
    explicit WmfFile(WmfBytes bytes);

    // Of a placeable file: its bounding box in logical units (left, top, right, bottom), and how many of them make an
    // inch.
    std::optional<WmfRecord> box;
    std::vector<WmfRecord> records;
};

} // namespace trovarium
