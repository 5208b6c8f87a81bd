// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/pictures/wmf/WmfText.h"

#include "runtime/Text.h"

#include <QFontMetricsF>
#include <QString>
#include <QTransform>

#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>

namespace trovarium {

namespace {

// Outlines of any size are scaled from this one, in which nothing is fitted to pixels.
constexpr int ReferenceEm = 64;

QFont::StyleHint styleHint(unsigned family)
{
    constexpr std::array Hints = {
        QFont::SansSerif, QFont::Serif, QFont::SansSerif, QFont::Monospace, QFont::Cursive, QFont::Fantasy};
    return family < Hints.size() ? Hints.at(family) : QFont::SansSerif;
}

} // namespace

WmfFont::WmfFont(std::string_view name)
    : face(QString::fromStdString(fromWindows1252(name)))
{
    face.setStyleHint(QFont::SansSerif, QFont::PreferOutline);
    face.setHintingPreference(QFont::PreferNoHinting);
    face.setPixelSize(ReferenceEm);
}

// The face's name is cut off in some files.
WmfFont wmfFont(const WmfRecord& record)
{
    constexpr std::size_t LongestName = 32;
    constexpr int Regular = 400;
    constexpr int Boldest = 1000;
    const int weight = record.number(4);
    const unsigned family = record.word(8) >> 12U;
    const WmfBytes rest = record.bytesFrom(9);
    const std::string_view name(reinterpret_cast<const char*>(rest.data()), std::min(rest.size(), LongestName));
    WmfFont font(name.substr(0, name.find('\0')));
    font.height = record.number(0);
    font.averageWidth = record.number(1);
    font.escapement = record.number(2);
    font.face.setStyleHint(styleHint(family), QFont::PreferOutline);
    font.face.setWeight(QFont::Weight(weight <= 0 ? Regular : std::min(weight, Boldest)));
    font.face.setItalic((record.word(5) & 0xffU) != 0);
    font.face.setUnderline(record.word(5) >> 8U != 0);
    font.face.setStrikeOut((record.word(6) & 0xffU) != 0);
    return font;
}

WmfLine wmfLine(const WmfFont& font, std::string_view text, const std::vector<int>& advances)
{
    const QFontMetricsF metrics(font.face);
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
        outline.addText(0, 0, font.face, characters);
        line.width = ownWidth;
    } else {
        for (qsizetype i = 0; i < characters.size() && i < static_cast<qsizetype>(advances.size()); ++i) {
            outline.addText(line.width / scaleX, 0, font.face, characters.sliced(i, 1));
            line.width += advances[static_cast<std::size_t>(i)];
        }
    }
    line.outline = QTransform::fromScale(scaleX, scaleY).map(outline);
    line.outline.setFillRule(Qt::WindingFill);
    return line;
}

} // namespace trovarium
