// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/toolkit/Style.h"

#include "platform/pictures/PictureData.h"
#include "platform/pictures/PicturePainter.h"
#include "platform/toolkit/Colors.h"
#include "platform/toolkit/QtValues.h"

#include <QAbstractItemView>
#include <QCheckBox>
#include <QIcon>
#include <QPainter>
#include <QProxyStyle>
#include <QRadioButton>
#include <QStyleOption>

#include <algorithm>
#include <map>
#include <string>
#include <string_view>

namespace trovarium {

namespace {

constexpr qreal RingWidth = 2; // pixels, as all below
constexpr int FocusEdge = 3;   // from a box's ring to its caption
constexpr int CaptionEdge = 4; // from a box to its caption
constexpr qreal RoundButton = 5;
constexpr qreal RoundField = 3;
constexpr qreal RoundMark = 2.5;
constexpr int ListEdge = 2; // has room for the ring
constexpr int SymbolSize = 16;
constexpr int IconSize = 96; // dense enough for every screen; scaled down from it
constexpr int SeparatorEdge = 6;
constexpr int SmallSymbol = 12; // in scroll bars, whose arrows are small
constexpr qreal MarkEdge = 1;
constexpr int ThumbEdge = 3; // on either side of a scroll bar's thumb
constexpr qreal Dimmed = 0.45;
constexpr int MiddleGray = 128;

// Roles that the library's own drawing leaves alone here.
constexpr QPalette::ColorRole Outline = QPalette::Mid;
constexpr QPalette::ColorRole Ring = QPalette::BrightText;

struct RoleColor {
    QPalette::ColorRole role;
    Color active;
    Color disabled;
};

QPalette paletteOf(std::initializer_list<RoleColor> colors)
{
    QPalette palette;
    for (const auto& [role, active, disabled] : colors) {
        palette.setColor(QPalette::Active, role, toQColor(active));
        palette.setColor(QPalette::Inactive, role, toQColor(active));
        palette.setColor(QPalette::Disabled, role, toQColor(disabled));
    }
    return palette;
}

QPalette darkPalette()
{
    return paletteOf({{QPalette::Window, WindowBlue, WindowBlue}, {QPalette::WindowText, Ink, FaintInk},
        {QPalette::Base, FieldBlue, FieldBlue}, {QPalette::Text, Ink, FaintInk},
        {QPalette::Button, ButtonBlue, DisabledButton}, {QPalette::ButtonText, White, FaintInk},
        {QPalette::Highlight, ChosenBlue, SeparatorBlue}, {QPalette::HighlightedText, White, Ink},
        {QPalette::ToolTipBase, PanelBlue, PanelBlue}, {QPalette::ToolTipText, Ink, Ink},
        {QPalette::Light, ButtonEdge, SeparatorBlue}, {QPalette::Midlight, SeparatorBlue, SeparatorBlue},
        {QPalette::Dark, FieldBlue, FieldBlue}, {QPalette::Shadow, Black, Black}, {Outline, OutlineBlue, SeparatorBlue},
        {Ring, FocusLight, FocusLight}});
}

// Has no button colors: buttons keep those of the dark palette.
QPalette lightPalette(Color ground)
{
    return paletteOf({{QPalette::Window, ground, ground}, {QPalette::WindowText, Black, DarkFaintInk},
        {QPalette::Base, White, ground}, {QPalette::Text, Black, DarkFaintInk}, {QPalette::Midlight, BarGray, BarGray},
        {Outline, OutlineGray, OutlineGray}, {Ring, FocusDark, FocusDark}});
}

QRectF inner(const QRectF& place, qreal edge)
{
    return place.adjusted(edge, edge, -edge, -edge);
}

// Inset by half the width of the outline, which a pen draws to both sides.
void paintBox(QPainter& painter, const QRectF& place, const QBrush& fill, const QColor& line, qreal width, qreal round)
{
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(fill);
    painter.setPen(QPen(line, width));
    painter.drawRoundedRect(inner(place, width / 2), round, round);
}

bool has(const QStyleOption& option, QStyle::StateFlag flag)
{
    return option.state.testFlag(flag);
}

bool isList(const QWidget* widget)
{
    return qobject_cast<const QAbstractItemView*>(widget) != nullptr;
}

// A user who works with the mouse has just clicked the focused control and needs no ring.
bool hasShownFocus(const QStyleOption& option)
{
    return has(option, QStyle::State_HasFocus) && has(option, QStyle::State_KeyboardFocusChange);
}

void paintField(QPainter& painter, const QStyleOption& option, const QBrush& fill)
{
    const bool focus = has(option, QStyle::State_HasFocus) && has(option, QStyle::State_Enabled);
    paintBox(
        painter, option.rect, fill, option.palette.color(focus ? Ring : Outline), focus ? RingWidth : 1, RoundField);
}

void paintFace(QPainter& painter, const QStyleOption& option)
{
    const auto* button = qstyleoption_cast<const QStyleOptionButton*>(&option);
    const bool isDefault = button != nullptr && button->features.testFlag(QStyleOptionButton::DefaultButton);
    const bool enabled = has(option, QStyle::State_Enabled);
    const QPalette& palette = option.palette;
    QColor face = palette.color(enabled && isDefault ? QPalette::Highlight : QPalette::Button);
    const bool over = enabled && has(option, QStyle::State_MouseOver);
    if (has(option, QStyle::State_Sunken))
        face = face.darker(135);
    QLinearGradient fill(option.rect.topLeft(), option.rect.bottomLeft());
    fill.setColorAt(0, face);
    fill.setColorAt(1, face.darker(115));
    const QColor line = palette.color(over ? Ring : QPalette::Light);
    paintBox(painter, option.rect, fill, line, 1, std::min(RoundButton, option.rect.height() / 4.0));
}

// The look of all controls beside the program's own artwork. Every menu bar creates an extension button, which none
// needs here; the library's icon for it would load all image plugins at the start.
class ProgramStyle : public QProxyStyle {
public:
    ProgramStyle()
        : QProxyStyle(QStringLiteral("Fusion"))
    {
    }

    QPalette standardPalette() const override { return darkPalette(); }

    QIcon standardIcon(StandardPixmap kind, const QStyleOption* option, const QWidget* widget) const override
    {
        switch (kind) {
        case SP_ToolBarHorizontalExtensionButton:
            return {};
        case SP_MessageBoxQuestion:
            return symbolIcon("question");
        case SP_MessageBoxInformation:
            return symbolIcon("info");
        case SP_MessageBoxWarning:
            return symbolIcon("warning");
        case SP_MessageBoxCritical:
            return symbolIcon("error");
        case SP_DirOpenIcon:
            return symbolIcon("folder-open");
        case SP_DirClosedIcon:
            return symbolIcon("folder");
        default:
            return QProxyStyle::standardIcon(kind, option, widget);
        }
    }

    int styleHint(
        StyleHint hint, const QStyleOption* option, const QWidget* widget, QStyleHintReturn* data) const override
    {
        if (hint == SH_DialogButtonBox_ButtonsHaveIcons)
            return 0;
        return QProxyStyle::styleHint(hint, option, widget, data);
    }

    QPixmap generatedIconPixmap(QIcon::Mode mode, const QPixmap& icon, const QStyleOption* option) const override
    {
        if (mode == QIcon::Selected)
            return icon;
        if (mode != QIcon::Disabled)
            return QProxyStyle::generatedIconPixmap(mode, icon, option);
        QPixmap dim(icon.size());
        dim.setDevicePixelRatio(icon.devicePixelRatio());
        dim.fill(Qt::transparent);
        QPainter painter(&dim);
        painter.setOpacity(Dimmed);
        painter.drawPixmap(0, 0, icon);
        return dim;
    }

    int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override
    {
        if (metric == PM_DefaultFrameWidth && isList(widget))
            return ListEdge;
        if (metric == PM_CheckBoxLabelSpacing)
            return CaptionEdge;
        return QProxyStyle::pixelMetric(metric, option, widget);
    }

    void drawPrimitive(
        PrimitiveElement element, const QStyleOption* option, QPainter* painter, const QWidget* widget) const override
    {
        painter->save();
        switch (element) {
        case PE_PanelButtonCommand:
            paintFace(*painter, *option);
            break;
        case PE_FrameLineEdit:
        case PE_Frame:
            paintField(*painter, *option, isList(widget) ? option->palette.brush(QPalette::Base) : Qt::NoBrush);
            break;
        case PE_FrameMenu:
        case PE_PanelMenu:
            painter->fillRect(option->rect, option->palette.color(Outline));
            painter->fillRect(inner(option->rect, 1), option->palette.color(QPalette::ToolTipBase));
            break;
        case PE_IndicatorCheckBox:
        case PE_IndicatorRadioButton:
            paintMark(*painter, *option, element == PE_IndicatorCheckBox);
            break;
        case PE_FrameFocusRect:
            paintFocus(*painter, *option, widget);
            break;
        default:
            QProxyStyle::drawPrimitive(element, option, painter, widget);
        }
        painter->restore();
    }

    void drawControl(
        ControlElement element, const QStyleOption* option, QPainter* painter, const QWidget* widget) const override
    {
        const auto* item = qstyleoption_cast<const QStyleOptionMenuItem*>(option);
        if (element == CE_MenuItem && item != nullptr && item->menuItemType == QStyleOptionMenuItem::Separator) {
            QRect line = option->rect.adjusted(SeparatorEdge, 0, -SeparatorEdge, 0);
            line.setTop(option->rect.center().y());
            line.setHeight(1);
            painter->fillRect(line, toQColor(OutlineBlue));
            return;
        }
        QProxyStyle::drawControl(element, option, painter, widget);
        if (element == CE_PushButton && hasShownFocus(*option))
            paintFocusRing(*painter, option->palette, option->rect);
    }

    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
        const QWidget* widget) const override
    {
        painter->save();
        const auto* slider = qstyleoption_cast<const QStyleOptionSlider*>(option);
        if (control == CC_ScrollBar && slider != nullptr)
            paintScrollBar(*painter, *slider, widget);
        else if (control == CC_ComboBox)
            paintComboBox(*painter, *option, widget);
        else
            QProxyStyle::drawComplexControl(control, option, painter, widget);
        painter->restore();
    }

private:
    const Picture& symbol(std::string_view name) const
    {
        Picture& picture = m_symbols[std::string(name)];
        if (picture.empty())
            picture = loadArtwork(name);
        return picture;
    }

    QIcon symbolIcon(std::string_view name) const
    {
        QIcon& icon = m_icons[std::string(name)];
        if (icon.isNull())
            icon = QIcon(QPixmap::fromImage(drawnImage(*symbol(name).data(), QSize(IconSize, IconSize))));
        return icon;
    }

    void paintSymbol(QPainter& painter, std::string_view name, const QRectF& place, int size, bool enabled) const
    {
        QRectF square(0, 0, size, size);
        square.moveCenter(place.center());
        painter.setOpacity(enabled ? 1 : Dimmed);
        m_painter.paint(painter, symbol(name), square);
        painter.setOpacity(1);
    }

    void paintMark(QPainter& painter, const QStyleOption& option, bool isBox) const
    {
        const QPalette& palette = option.palette;
        const QRectF place = inner(option.rect, MarkEdge);
        const bool isOn = has(option, State_On);
        const bool enabled = has(option, State_Enabled);
        QBrush fill = palette.brush(isBox && isOn ? QPalette::Highlight : QPalette::Base);
        paintBox(painter, place, fill, palette.color(Outline), 1, isBox ? RoundMark : place.height() / 2);
        if (isOn && isBox) {
            paintSymbol(painter, "check", place, SymbolSize, enabled);
        } else if (isOn) {
            painter.setPen(Qt::NoPen);
            painter.setBrush(palette.color(QPalette::Text));
            painter.drawEllipse(inner(place, place.height() * 0.28));
        }
    }

    // Round the caption of a box, or round one that has none; a thin line round a row.
    static void paintFocus(QPainter& painter, const QStyleOption& option, const QWidget* widget)
    {
        const auto* box = qobject_cast<const QAbstractButton*>(widget);
        const bool isBox =
            qobject_cast<const QCheckBox*>(widget) != nullptr || qobject_cast<const QRadioButton*>(widget) != nullptr;
        const int edge = isBox && !box->text().isEmpty() ? option.rect.left() - FocusEdge : 0;
        if (isBox && hasShownFocus(option))
            paintFocusRing(painter, option.palette, widget->rect().adjusted(edge, 0, 0, 0));
        else if (isList(widget))
            paintBox(painter, option.rect, Qt::NoBrush, option.palette.color(Ring), 1, 0);
    }

    void paintScrollBar(QPainter& painter, const QStyleOptionSlider& option, const QWidget* widget) const
    {
        const bool enabled = has(option, State_Enabled) && option.maximum > option.minimum;
        const bool upright = option.orientation == Qt::Vertical;
        painter.fillRect(option.rect, toQColor(FieldBlue));
        const auto part = [&](SubControl control) { return subControlRect(CC_ScrollBar, &option, control, widget); };
        paintSymbol(painter, upright ? "up" : "left", part(SC_ScrollBarSubLine), SmallSymbol, enabled);
        paintSymbol(painter, upright ? "down" : "right", part(SC_ScrollBarAddLine), SmallSymbol, enabled);
        if (enabled) {
            QRectF thumb = part(SC_ScrollBarSlider);
            thumb.adjust(
                upright ? ThumbEdge : 1, upright ? 1 : ThumbEdge, upright ? -ThumbEdge : -1, upright ? -1 : -ThumbEdge);
            const bool held = option.activeSubControls.testFlag(SC_ScrollBarSlider);
            const qreal round = std::min(thumb.width(), thumb.height()) / 2;
            painter.setRenderHint(QPainter::Antialiasing);
            painter.setPen(Qt::NoPen);
            painter.setBrush(toQColor(held ? OutlineBlue : ThumbBlue));
            painter.drawRoundedRect(thumb, round, round);
        }
        if (hasShownFocus(option))
            paintFocusRing(painter, option.palette, option.rect);
    }

    void paintComboBox(QPainter& painter, const QStyleOptionComplex& option, const QWidget* widget) const
    {
        paintField(painter, option, option.palette.brush(QPalette::Base));
        const QRectF arrow = subControlRect(CC_ComboBox, &option, SC_ComboBoxArrow, widget);
        paintSymbol(painter, "down", arrow, SymbolSize, has(option, State_Enabled));
    }

    mutable std::map<std::string, Picture> m_symbols;
    mutable std::map<std::string, QIcon> m_icons;
    mutable PicturePainter m_painter;
};

} // namespace

std::unique_ptr<QStyle> makeStyle()
{
    return std::make_unique<ProgramStyle>();
}

QPalette paletteOn(Color ground)
{
    return isDark(toQColor(ground)) ? QPalette() : lightPalette(ground);
}

bool isDark(const QColor& ground)
{
    return qGray(ground.rgb()) < MiddleGray;
}

void paintFocusRing(QPainter& painter, const QPalette& palette, const QRectF& place)
{
    painter.save();
    const QColor ring = palette.color(Ring);
    QColor halo = ring.lightness() < MiddleGray ? Qt::white : Qt::black;
    halo.setAlpha(150);
    paintBox(painter, place, Qt::NoBrush, halo, RingWidth + 1, RoundField);
    paintBox(painter, place, Qt::NoBrush, ring, RingWidth, RoundField);
    painter.restore();
}

} // namespace trovarium
