// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/toolkit/Buttons.h"

#include "platform/pictures/PictureData.h"
#include "platform/toolkit/DesktopState.h"
#include "platform/toolkit/Form.h"
#include "platform/toolkit/Menu.h"
#include "platform/toolkit/QtValues.h"
#include "platform/toolkit/Style.h"
#include "runtime/Failure.h"

#include <QAction>
#include <QCheckBox>
#include <QFontMetricsF>
#include <QIcon>
#include <QPixmap>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalBlocker>

#include <algorithm>

namespace trovarium {

namespace {

// Pixels.
constexpr int SmallestSize = 8;
constexpr int EdgeWidth = 6;  // that a caption leaves free, both edges of a button together
constexpr int MarkWidth = 20; // in front of the caption
// Dense enough for every screen; a face is scaled down from it.
constexpr int FaceDensity = 3;

QColor between(const QColor& first, const QColor& second)
{
    return {(first.red() + second.red()) / 2, (first.green() + second.green()) / 2, (first.blue() + second.blue()) / 2};
}

QIcon faceIcon(const Picture& picture)
{
    if (picture.empty())
        return {};
    const QSize size(picture.width(), picture.height());
    QPixmap pixels = QPixmap::fromImage(drawnImage(*picture.data(), size * FaceDensity));
    pixels.setDevicePixelRatio(FaceDensity);
    return QIcon(pixels);
}

// Of a menu and a button with the same access key the library activates neither. So the button gives its key up and
// shows no underline.
QString withoutKeyOfMenu(const std::vector<Menu*>& menus, QString text)
{
    const QKeySequence key = QKeySequence::mnemonic(text);
    const auto wantsIt = [&](const Menu* menu) {
        return menu->Visible() && QKeySequence::mnemonic(menu->action().text()) == key;
    };
    if (key.isEmpty() || std::none_of(menus.begin(), menus.end(), wantsIt))
        return text;
    qsizetype mark = text.indexOf('&');
    while (text.mid(mark, 2) == "&&")
        mark = text.indexOf('&', mark + 2);
    return text.remove(mark, 1);
}

} // namespace

CaptionedControl::CaptionedControl(Container* parent, const Plan& plan, QAbstractButton* button, int taken)
    : Control(parent, plan, button)
    , Caption(this, plan.Caption)
    , m_button(*button)
    , m_taken(taken)
{
    showCaption();
    CaptionedControl::nameForReaders();
    Control::enableOrDisable();
}

void CaptionedControl::place()
{
    Control::place();
    showCaption();
}

void CaptionedControl::followInput()
{
    showCaption(); // the form's menus are there now
}

void CaptionedControl::nameForReaders()
{
    Control::nameForReaders();
    if (Caption().empty() && AccessibleName().empty())
        m_button.setAccessibleName(toQString(ToolTipText()));
}

// Slightly narrower letters look less odd beside another button than a smaller font.
void CaptionedControl::showCaption()
{
    const QString text = withoutKeyOfMenu(form().menus(), toQString(Caption()));
    const int room = std::max(0, m_button.width() - m_taken);
    const auto fitting = [&](int size) {
        return narrowedFont(planFont(static_cast<float>(size)), Qt::TextShowMnemonic, text, room);
    };
    int size = static_cast<int>(PlanFont);
    QFont font = fitting(size);
    while (size > SmallestSize && QFontMetricsF(font).size(Qt::TextShowMnemonic, text).width() > room)
        font = fitting(--size);
    m_button.setFont(font);
    m_button.setText(text);
}

// Sets the background color, and a text color that is legible on it.
void CaptionedControl::showGround()
{
    m_button.setAutoFillBackground(BackColor().has_value());
    QPalette palette;
    if (const std::optional<Color> color = BackColor()) {
        const QColor ground = toQColor(*color);
        const QColor text = isDark(ground) ? Qt::white : Qt::black;
        palette.setColor(m_button.foregroundRole(), text);
        palette.setColor(QPalette::Disabled, m_button.foregroundRole(), between(ground, text));
        palette.setColor(m_button.backgroundRole(), ground);
    }
    m_button.setPalette(palette);
}

Button::Button(Container* parent, const Plan& plan)
    : CaptionedControl(parent, plan, new QPushButton(parent->client()), EdgeWidth)
    , m_button(static_cast<QPushButton&>(*widget()))
{
    m_button.setAutoDefault(true); // Enter presses it while it has the focus
    form().addButton(this);
    QObject::connect(
        &m_button, &QPushButton::clicked, &m_button, [this] { deliverEvent(*this, [this] { Click.raise(); }); });
}

void Button::showLook()
{
    m_button.setIcon(faceIcon(Picture()));
    m_button.setIconSize({Picture().width(), Picture().height()});
    m_button.setDefault(Default());
}

CheckBox::CheckBox(Container* parent, const Plan& plan)
    : CaptionedControl(parent, plan, new QCheckBox(parent->client()), MarkWidth)
    , m_box(static_cast<QCheckBox&>(*widget()))
{
    // `clicked` isn't emitted when code changes the box.
    QObject::connect(&m_box, &QCheckBox::clicked, &m_box, [this] { deliverEvent(*this, [this] { Click.raise(); }); });
}

int CheckBox::value() const
{
    return m_box.isChecked() ? 1 : 0;
}

void CheckBox::setValue(int value)
{
    if (value != 0 && value != 1)
        throw Failure(FailureKind::InvalidPropertyValue);
    if (value == Value())
        return;
    m_box.setChecked(value == 1);
    Click.raise();
}

void CheckBox::preset()
{
    m_box.setChecked(true);
}

OptionButton::OptionButton(Container* parent, const Plan& plan)
    : CaptionedControl(parent, plan, new QRadioButton(parent->client()), MarkWidth)
    , m_button(static_cast<QRadioButton&>(*widget()))
{
    QObject::connect(&m_button, &QRadioButton::toggled, &m_button, [this](bool on) {
        if (on)
            deliverEvent(*this, [this] { Click.raise(); });
    });
}

bool OptionButton::value() const
{
    return m_button.isChecked();
}

// The library clears the others first, so that the handler sees the group with one choice.
void OptionButton::setValue(bool value)
{
    if (!value || Value())
        return;
    preset();
    Click.raise();
}

void OptionButton::preset()
{
    const QSignalBlocker quiet(m_button);
    m_button.setChecked(true);
}

} // namespace trovarium
