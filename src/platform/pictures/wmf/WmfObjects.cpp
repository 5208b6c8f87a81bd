#include "platform/pictures/wmf/WmfObjects.h"

#include "runtime/Failure.h"

#include <algorithm>
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
        throw Failure(FailureKind::InvalidPicture);
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
    return {
        static_cast<int>(color & 0xffU), static_cast<int>(color >> 8U & 0xffU), static_cast<int>(color >> 16U & 0xffU)};
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

// The face's name is cut off in some files.
WmfFont wmfFont(const WmfRecord& record)
{
    constexpr std::size_t LongestFace = 32;
    WmfFont font;
    font.height = record.number(0);
    font.averageWidth = record.number(1);
    font.escapement = record.number(2);
    font.weight = record.number(4);
    font.italic = (record.word(5) & 0xffU) != 0;
    font.underline = record.word(5) >> 8U != 0;
    font.strikeOut = (record.word(6) & 0xffU) != 0;
    font.family = record.word(8) >> 8U;
    WmfBytes face = record.bytesFrom(9);
    face = face.first(std::min(face.size(), LongestFace));
    font.face.assign(face.begin(), std::find(face.begin(), face.end(), 0));
    return font;
}

} // namespace trovarium
