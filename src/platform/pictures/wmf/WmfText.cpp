#include "platform/pictures/wmf/WmfText.h"

#include "runtime/Text.h"

#include <QFont>
#include <QFontMetricsF>
#include <QString>
#include <QTransform>

#include <algorithm>
#include <cmath>
#include <numeric>

namespace trovarium {

namespace {

// Outlines of any size are scaled from this one, in which nothing is fitted to pixels.
constexpr int ReferenceEm = 64;

QFont::StyleHint styleHint(unsigned family)
{
    switch (family >> 4U) {
    case 1:
        return QFont::Serif;
    case 3:
        return QFont::Monospace;
    case 4:
        return QFont::Cursive;
    case 5:
        return QFont::Fantasy;
    default:
        return QFont::SansSerif;
    }
}

QFont referenceFont(const WmfFont& font)
{
    constexpr int Regular = 400;
    QFont reference(QString::fromStdString(fromWindows1252(font.face)));
    reference.setStyleHint(styleHint(font.family), QFont::PreferOutline);
    reference.setHintingPreference(QFont::PreferNoHinting);
    reference.setPixelSize(ReferenceEm);
    reference.setWeight(QFont::Weight(font.weight <= 0 ? Regular : std::min(font.weight, 1000)));
    reference.setItalic(font.italic);
    reference.setUnderline(font.underline);
    reference.setStrikeOut(font.strikeOut);
    return reference;
}

} // namespace

WmfLine WmfTypesetter::line(const WmfFont& font, std::string_view text, const std::vector<int>& advances)
{
    const QFont reference = referenceFont(font);
    const QFontMetricsF metrics(reference);
    const double cell = metrics.ascent() + metrics.descent();
    const double scaleY = font.height > 0 ? font.height / cell : std::abs(font.height) / double{ReferenceEm};
    double scaleX = font.averageWidth == 0 || metrics.averageCharWidth() <= 0
        ? scaleY
        : std::abs(font.averageWidth) / metrics.averageCharWidth();
    const QString characters = QString::fromStdString(fromWindows1252(text));
    // The font at hand may be wider than the one that was meant: its characters are narrowed to their places.
    const double ownWidth = metrics.horizontalAdvance(characters) * scaleX;
    if (const double width = std::accumulate(advances.begin(), advances.end(), 0.0); width > 0 && width < ownWidth)
        scaleX *= width / ownWidth;
    WmfLine line;
    line.ascent = metrics.ascent() * scaleY;
    line.descent = metrics.descent() * scaleY;
    QPainterPath outline;
    if (advances.empty() || scaleX <= 0) {
        outline.addText(0, 0, reference, characters);
        line.width = ownWidth;
    } else {
        for (qsizetype i = 0; i < characters.size() && i < static_cast<qsizetype>(advances.size()); ++i) {
            outline.addText(line.width / scaleX, 0, reference, characters.sliced(i, 1));
            line.width += advances[static_cast<std::size_t>(i)];
        }
    }
    line.outline = QTransform::fromScale(scaleX, scaleY).map(outline);
    line.outline.setFillRule(Qt::WindingFill);
    return line;
}

double WmfTypesetter::work(const WmfFont& font, std::string_view text)
{
    constexpr double FontWork = 1e7;
    constexpr double CharacterWork = 2e4;
    const std::string key =
        font.face + '\0' + std::to_string(font.weight) + ' ' + std::to_string(font.family) + (font.italic ? "i" : "");
    const bool isNew = m_known.insert(key).second;
    return (isNew ? FontWork : CharacterWork) + static_cast<double>(text.size()) * CharacterWork;
}

} // namespace trovarium
