// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/pictures/wmf/WmfObjects.h"

#include "platform/pictures/PictureHeader.h"

#include <array>
#include <utility>

namespace trovarium {

void WmfObjects::add(WmfObject object)
{
    constexpr std::size_t Most = 65536;
    if (!m_free.empty()) {
        m_objects[m_free.top()] = std::move(object);
        m_free.pop();
        return;
    }
    if (m_objects.size() == Most)
        refusePicture();
    m_objects.push_back(std::move(object));
}

void WmfObjects::remove(std::size_t index)
{
    if (!at(index))
        return;
    m_objects[index] = std::monostate();
    m_free.push(index);
}

const WmfObject* WmfObjects::at(std::size_t index) const
{
    if (index >= m_objects.size() || std::holds_alternative<std::monostate>(m_objects[index]))
        return nullptr;
    return &m_objects[index];
}

QColor wmfColor(std::uint32_t color)
{
    const auto part = [color](unsigned shift) { return static_cast<int>(color >> shift & 0xffU); };
    return QColor::fromRgb(part(0), part(8), part(16));
}

QPen wmfPen(const WmfRecord& record)
{
    constexpr std::array Styles = {
        Qt::SolidLine, Qt::DashLine, Qt::DotLine, Qt::DashDotLine, Qt::DashDotDotLine, Qt::NoPen};
    constexpr std::array Caps = {Qt::RoundCap, Qt::SquareCap, Qt::FlatCap};
    constexpr std::array Joins = {Qt::RoundJoin, Qt::BevelJoin, Qt::MiterJoin};
    const unsigned style = record.word(0);
    const auto chosen = [](const auto& choices, unsigned index) {
        return index < choices.size() ? choices[index] : choices[0];
    };
    return QPen(wmfColor(record.doubleWord(3)), std::abs(record.number(1)), chosen(Styles, style & 0xfU),
        chosen(Caps, style >> 8U & 0xfU), chosen(Joins, style >> 12U & 0xfU));
}

QBrush wmfBrush(const WmfRecord& record)
{
    constexpr unsigned Solid = 0;
    constexpr unsigned Hatched = 2;
    constexpr std::array Hatches = {
        Qt::HorPattern, Qt::VerPattern, Qt::FDiagPattern, Qt::BDiagPattern, Qt::CrossPattern, Qt::DiagCrossPattern};
    const unsigned style = record.word(0);
    const QColor color = wmfColor(record.doubleWord(1));
    const unsigned hatch = record.word(3);
    if (style == Solid || (style == Hatched && hatch >= Hatches.size()))
        return color;
    return style == Hatched ? QBrush(color, Hatches[hatch]) : QBrush();
}

} // namespace trovarium
