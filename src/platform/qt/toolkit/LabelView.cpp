#include "platform/toolkit/Label.h"

#include "platform/qt/toolkit/ItemView.h"
#include "platform/toolkit/PictureButton.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QStringList>
#include <QStyleOptionButton>

#include <algorithm>
#include <cmath>

namespace trovarium {

namespace {

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

int alignmentOf(const Label& label)
{
    switch (label.Alignment()) {
    case Alignment::Right:
        return Qt::AlignRight;
    case Alignment::Center:
        return Qt::AlignHCenter;
    case Alignment::Left:
        break;
    }
    return Qt::AlignLeft;
}

Qt::TextElideMode elisionOf(const Label& label)
{
    switch (label.Elision()) {
    case Elision::Start:
        return Qt::ElideLeft;
    case Elision::Middle:
        return Qt::ElideMiddle;
    case Elision::End:
        break;
    }
    return Qt::ElideRight;
}

class LabelView : public ItemView {
public:
    explicit LabelView(Label& label)
        : ItemView(label)
        , m_label(label)
    {
    }

    void paint(QPainter& painter, const QRectF& place) override
    {
        if (const std::optional<Color> back = m_label.BackColor())
            painter.fillRect(place, toQColor(*back));
        QString text = shownText(m_label);
        if (m_label.Raised()) {
            paintButton(painter, place, text);
            return;
        }
        if (text.isEmpty())
            return;
        const QFont font = fontOf(m_label);
        painter.setFont(m_label.NarrowToFit() ? narrowedFont(font, 0, text, place.width()) : font);
        const QFontMetricsF metrics(painter.font());
        int flags = alignmentOf(m_label);
        if (m_label.WordWrap()) {
            flags |= Qt::TextWordWrap | Qt::AlignTop;
        } else {
            QStringList lines = text.split(QLatin1Char('\n'));
            for (QString& line : lines)
                line = metrics.elidedText(line, elisionOf(m_label), std::ceil(place.width()));
            text = lines.join(QLatin1Char('\n'));
            // A single line in a place made for one stands in its middle and is never cut at the foot.
            const bool oneLine = lines.size() == 1 && place.height() < metrics.height() * 1.6;
            flags |= Qt::TextDontClip | (oneLine ? Qt::AlignVCenter : Qt::AlignTop);
        }
        if (m_label.Shadow()) {
            painter.setPen(QColor(0, 0, 0, 150));
            for (const QPointF offset : {QPointF(-1, 0), QPointF(1, 0), QPointF(0, -1), QPointF(0, 1), QPointF(1, 1)})
                painter.drawText(place.translated(offset), flags, text);
        }
        const std::optional<Color> color = m_label.ForeColor();
        const PictureButton* button = buttonBeneath();
        const bool enabled = m_label.takesInput() && (button == nullptr || button->takesInput());
        const auto group = enabled ? QPalette::Active : QPalette::Disabled;
        painter.setPen(color && enabled ? toQColor(*color) : surface().palette().color(group, QPalette::WindowText));
        painter.drawText(place, flags, text);
    }

    // The halo, and a line that is higher than its place.
    QRectF paintedPlace(qreal ratio) const override
    {
        const qreal rim = std::max<qreal>(2, m_label.FontSize() / 2);
        return devicePlace(ratio).adjusted(-2, -rim, 2, rim);
    }

    // A label that nobody listens to lets the mouse through to what it lies on.
    bool takesMouse() const override
    {
        return m_label.MouseDown.isWired() || m_label.MouseMove.isWired() || m_label.Click.isWired()
            || !m_label.ToolTipText().empty();
    }

    // A label on a picture button stands for that button, which takes the focus itself.
    bool takesFocus() const override { return m_label.Click.isWired() && buttonBeneath() == nullptr; }
    QAccessible::Role accessibleRole() const override
    {
        return takesFocus() ? QAccessible::Button : QAccessible::StaticText;
    }
    QString accessibleText() const override
    {
        return m_label.AccessibleName().empty() ? shownText(m_label) : ItemView::accessibleText();
    }

    void mouseDown(int button, int shift, QPointF pixels) override
    {
        setDown(button == LeftButton);
        raiseAt(m_label.MouseDown, button, shift, fromCorner(pixels));
    }
    void mouseMove(int button, int shift, QPointF pixels) override
    {
        raiseAt(m_label.MouseMove, button, shift, fromCorner(pixels));
    }
    void mouseUp(int, int, QPointF) override { setDown(false); }
    void click() override { m_label.Click.raise(); }

private:
    const PictureButton* buttonBeneath() const
    {
        const QPointF middle = place().center();
        for (const Control* control : m_label.parent().controls()) {
            const auto* button = dynamic_cast<const PictureButton*>(control);
            if (button != nullptr && placeInPixels(*button).contains(middle))
                return button;
        }
        return nullptr;
    }

    void setDown(bool down)
    {
        if (down == m_isDown)
            return;
        m_isDown = down;
        if (m_label.Raised())
            apply(Change::Appearance);
    }

    // As the desktop's style draws the real ones beside it.
    void paintButton(QPainter& painter, const QRectF& place, const QString& text)
    {
        QStyleOptionButton option;
        option.initFrom(&surface());
        option.rect = place.toAlignedRect();
        option.state = m_isDown ? QStyle::State_Sunken : QStyle::State_Raised;
        option.state.setFlag(QStyle::State_Enabled, m_label.takesInput());
        option.text = text;
        painter.setFont(fontOf(m_label));
        option.fontMetrics = QFontMetrics(painter.font());
        surface().style()->drawControl(QStyle::CE_PushButton, &option, &painter, &surface());
    }

    Label& m_label;
    bool m_isDown = false; // the mouse holds it
};

} // namespace

// Text also stands for whatever else the size of the text comes from.
void Label::changed(Change change)
{
    Control::changed(change);
    if (change == Change::Text)
        fit();
}

// A wrapping label keeps its width and takes the height that it needs.
void Label::fit()
{
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

std::unique_ptr<View> Label::makeView()
{
    return std::make_unique<LabelView>(*this);
}

} // namespace trovarium
