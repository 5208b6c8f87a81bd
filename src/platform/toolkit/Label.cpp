// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/toolkit/Label.h"

#include "platform/toolkit/QtValues.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QStringList>
#include <QStyleOptionButton>
#include <QWidget>

#include <algorithm>
#include <array>
#include <cmath>

namespace trovarium {

namespace {

// In the order of Alignment and of Elision.
constexpr std::array Alignments{Qt::AlignLeft, Qt::AlignRight, Qt::AlignHCenter};
constexpr std::array Elisions{Qt::ElideRight, Qt::ElideLeft, Qt::ElideMiddle};

// Without the marks of access keys.
QString shownText(const Label& label)
{
    QString text = toQString(label.Caption());
    text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    if (!label.UseMnemonic())
        return text;
    QString shown;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i] == QLatin1Char('&') && ++i == text.size())
            break;
        shown += text[i];
    }
    return shown;
}

QFont fontOf(const Label& label)
{
    return planFont(label.FontSize(), label.Bold());
}

} // namespace

Label::Label(Container* parent, const Plan& plan)
    : DrawnControl(parent, plan)
    , Caption(this, plan.Caption)
{
}

// One that takes the mouse for its tool tip alone passes presses on to its container.
void Label::followInput()
{
    DrawnControl::followInput();
    widget()->setAttribute(Qt::WA_NoMousePropagation, listens());
}

void Label::pressed(bool down)
{
    m_isDown = down;
    if (Raised())
        repaint();
}

std::string Label::accessibleName() const
{
    return AccessibleName().empty() ? toText(shownText(*this)) : AccessibleName();
}

// Room for the halo, and for a line that is higher than the label. A label that takes the mouse gets no halo unless it
// has a shadow, so that clicks beside it go elsewhere.
QMargins Label::margins() const
{
    const qreal beyond = QFontMetricsF(fontOf(*this)).height() - placeInPixels(*this).height();
    const int halo = takesMouse() && !Shadow() ? 0 : 2;
    const int rim = takesMouse() ? std::max(0, static_cast<int>(std::ceil(beyond / 2))) + halo
                                 : std::max(halo, static_cast<int>(FontSize() / 2));
    return {halo, rim, halo, rim};
}

const Control* Label::buttonBeneath() const
{
    const QPointF middle = placeInPixels(*this).center();
    for (const Control* control : parent().controls()) {
        const Drawn* button = control->drawn();
        if (button != nullptr && button->isPictureButton() && placeInPixels(*control).contains(middle))
            return control;
    }
    return nullptr;
}

void Label::draw(QPainter& painter, const QRectF& place)
{
    if (const std::optional<Color> back = BackColor())
        painter.fillRect(place, toQColor(*back));
    if (Raised())
        paintButton(painter, place);
    else
        paintText(painter, place);
}

// As the desktop's style draws the real ones beside it.
void Label::paintButton(QPainter& painter, const QRectF& place)
{
    QStyleOptionButton option;
    option.initFrom(widget());
    option.rect = place.toAlignedRect();
    option.state = m_isDown ? QStyle::State_Sunken : QStyle::State_Raised;
    option.state.setFlag(QStyle::State_Enabled, takesInput());
    option.text = shownText(*this);
    painter.setFont(fontOf(*this));
    option.fontMetrics = QFontMetrics(painter.font());
    widget()->style()->drawControl(QStyle::CE_PushButton, &option, &painter, widget());
}

void Label::paintText(QPainter& painter, const QRectF& place)
{
    QString text = shownText(*this);
    if (text.isEmpty())
        return;
    const QFont font = fontOf(*this);
    painter.setFont(NarrowToFit() ? narrowedFont(font, 0, text, place.width()) : font);
    const QFontMetricsF metrics(painter.font());
    int flags = Alignments.at(static_cast<std::size_t>(Alignment()));
    if (WordWrap()) {
        flags |= Qt::TextWordWrap | Qt::AlignTop;
    } else {
        QStringList lines = text.split(QLatin1Char('\n'));
        for (QString& line : lines)
            line = metrics.elidedText(line, Elisions.at(static_cast<std::size_t>(Elision())), std::ceil(place.width()));
        text = lines.join(QLatin1Char('\n'));
        // A single line in a place made for one stands in its middle and is never cut at the foot.
        const bool oneLine = lines.size() == 1 && place.height() < metrics.height() * 1.6;
        flags |= Qt::TextDontClip | (oneLine ? Qt::AlignVCenter : Qt::AlignTop);
    }
    if (Shadow()) {
        painter.setPen(QColor(0, 0, 0, 150));
        for (const QPointF offset : {QPointF(-1, 0), QPointF(1, 0), QPointF(0, -1), QPointF(0, 1), QPointF(1, 1)})
            painter.drawText(place.translated(offset), flags, text);
    }
    const std::optional<Color> color = ForeColor();
    const Control* button = buttonBeneath();
    const bool enabled = takesInput() && (button == nullptr || button->takesInput());
    const auto group = enabled ? QPalette::Active : QPalette::Disabled;
    painter.setPen(color && enabled ? toQColor(*color) : widget()->palette().color(group, QPalette::WindowText));
    painter.drawText(place, flags, text);
}

void Label::restyle()
{
    place();
    fit();
}

// A wrapping label keeps its width and takes the height that it needs.
void Label::fit()
{
    repaint();
    if (!AutoSize())
        return;
    const QFontMetricsF metrics(fontOf(*this));
    const QString text = shownText(*this);
    const QRectF wanted = WordWrap()
        ? metrics.boundingRect(QRectF(0, 0, parent().toPixels(Width()), 1e6), Qt::TextWordWrap, text)
        : metrics.boundingRect(QRectF(0, 0, 1e6, 1e6), 0, text);
    const auto inScale = [this](qreal pixels) {
        return parent().fromTwips(static_cast<float>(std::ceil(pixels)) * TwipsPerPixel);
    };
    Height = inScale(std::max(wanted.height(), metrics.height()));
    if (WordWrap())
        return;
    const float most = MostWidth() > 0 ? MostWidth() : inScale(wanted.width());
    const float grown = std::min(inScale(wanted.width()), most) - Width();
    if (Alignment() == trovarium::Alignment::Center)
        Left = Left() - grown / 2;
    else if (Alignment() == trovarium::Alignment::Right)
        Left = Left() - grown;
    Width = Width() + grown;
}

} // namespace trovarium
