// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/pictures/wmf/WmfText.h"

#include <QBrush>
#include <QPen>

#include <cstddef>
#include <functional>
#include <queue>
#include <variant>
#include <vector>

namespace trovarium {

// An object that only takes its place in the table: a palette, a region, a device-dependent bitmap.
struct WmfOther { };

// A pen's width is in logical units. A free place holds nothing.
using WmfObject = std::variant<std::monostate, WmfOther, QPen, QBrush, WmfFont>;

// The table of objects. A new one takes the lowest free place; the file doesn't state its number.
class WmfObjects {
public:
    void add(WmfObject object); // "Invalid picture" if there are more than a word can number
    void remove(std::size_t index);
    const WmfObject* at(std::size_t index) const; // null for a place that is free or doesn't exist

private:
    std::vector<WmfObject> m_objects;
    std::priority_queue<std::size_t, std::vector<std::size_t>, std::greater<>> m_free;
};

QColor wmfColor(std::uint32_t color);
QPen wmfPen(const WmfRecord& record);
QBrush wmfBrush(const WmfRecord& record);

} // namespace trovarium
