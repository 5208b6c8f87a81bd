#include "platform/qt/toolkit/View.h"

#include "platform/qt/toolkit/DesktopState.h"
#include "platform/qt/toolkit/Pointers.h"
#include "platform/qt/toolkit/SurfaceView.h"
#include "platform/toolkit/Form.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QFont>
#include <QFontMetricsF>
#include <QKeyEvent>
#include <QLineEdit>
#include <QTextDocument>

#include <cmath>
#include <utility>

namespace trovarium {

namespace {

constexpr int NarrowestFont = 70; // per cent
constexpr int NarrowStep = 10;    // few, since each is another font to the desktop

// With the list and the field that a box of choices consists of.
void nameWidget(QWidget& widget, const QString& name)
{
    widget.setAccessibleName(name);
    if (const auto* box = qobject_cast<QComboBox*>(&widget)) {
        box->view()->setAccessibleName(name);
        if (QLineEdit* field = box->lineEdit())
            field->setAccessibleName(name);
    }
}

} // namespace

WidgetView::WidgetView(Control& control, QWidget* widget)
    : View(control)
    , m_widget(widget)
    , m_ownCursor(widget->cursor())
    , m_hasOwnCursor(widget->testAttribute(Qt::WA_SetCursor))
{
    widget->setObjectName(toQString(control.Name()));
    // A disabled control's events are lost; they don't go to what it lies on.
    widget->setAttribute(Qt::WA_NoMousePropagation);
    WidgetView::apply(Change::Hint);
    placeWidget();
    widget->setEnabled(control.Enabled());
    widget->setVisible(control.Visible());
}

WidgetView::~WidgetView()
{
    if (!m_widget)
        return;
    m_widget->blockSignals(true); // and not cut: the desktop's own register waits to hear of its end
    m_widget->hide();
    control().desktop().state().discard(m_widget);
}

void WidgetView::apply(Change change)
{
    switch (change) {
    case Change::Geometry:
        placeWidget();
        break;
    case Change::Visible:
        m_widget->setVisible(control().Visible());
        break;
    case Change::Enabled:
        m_widget->setEnabled(control().Enabled());
        break;
    case Change::Hint:
        m_widget->setToolTip(toolTipText(control().ToolTipText()));
        if (!control().AccessibleName().empty())
            nameWidget(*m_widget, toQString(control().AccessibleName()));
        pointerChanged();
        break;
    case Change::Order:
        m_widget->raise();
        break;
    case Change::Text:
    case Change::Appearance:
    case Change::Content:
        break;
    }
}

void WidgetView::pointerChanged()
{
    const int pointer = effectivePointer(control());
    if (pointer != DefaultPointer)
        m_widget->setCursor(cursorOf(pointer, m_widget->devicePixelRatioF()));
    else if (m_hasOwnCursor)
        m_widget->setCursor(m_ownCursor);
    else
        m_widget->unsetCursor();
}

void WidgetView::placeWidget()
{
    const QRectF place = placeInPixels(control());
    const QPoint corner(static_cast<int>(std::lround(place.left())), static_cast<int>(std::lround(place.top())));
    const QPoint end(static_cast<int>(std::lround(place.right())), static_cast<int>(std::lround(place.bottom())));
    const QRect rounded(corner, QSize(end.x() - corner.x(), end.y() - corner.y()));
    if (rounded == m_widget->geometry())
        return;
    if (corner != m_widget->pos() && m_widget->isVisible())
        control().desktop().state().moved = true;
    m_widget->setGeometry(rounded);
}

QWidget* surfaceWidget(const Control& control)
{
    return control.parent().surface();
}

QString toQString(std::string_view text)
{
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

std::string toText(const QString& text)
{
    const QByteArray bytes = text.toUtf8();
    return {bytes.constData(), static_cast<std::size_t>(bytes.size())};
}

QString toolTipText(std::string_view text)
{
    QString plain = toQString(text);
    return Qt::mightBeRichText(plain) ? "<qt>" + plain.toHtmlEscaped() + "</qt>" : plain;
}

QFont planFont(float pixels, bool bold)
{
    QFont font;
    font.setPixelSize(std::max(1, static_cast<int>(std::lround(pixels))));
    font.setBold(bold);
    return font;
}

QFont narrowedFont(QFont font, int flags, const QString& text, qreal width)
{
    for (int stretch = 100; stretch > NarrowestFont && QFontMetricsF(font).size(flags, text).width() > width;) {
        stretch -= NarrowStep;
        font.setStretch(stretch);
    }
    return font;
}

QColor toQColor(Color color)
{
    return {color.red, color.green, color.blue};
}

QRectF placeInPixels(const Control& control)
{
    const Container& parent = control.parent();
    return {parent.edge() + parent.toPixels(control.Left()), parent.edge() + parent.toPixels(control.Top()),
        parent.toPixels(control.Width()), parent.toPixels(control.Height())};
}

void raiseAt(Event<int, int, float, float>& event, int button, int shift, QPointF pixels)
{
    const QPointF at = pixels * TwipsPerPixel;
    event.raise(button, shift, static_cast<float>(at.x()), static_cast<float>(at.y()));
}

void raiseAt(Event<int, int, float, float>& event, int button, int shift, QPointF pixels, const Container& scale)
{
    const QPointF at = pixels * TwipsPerPixel;
    event.raise(
        button, shift, scale.fromTwips(static_cast<float>(at.x())), scale.fromTwips(static_cast<float>(at.y())));
}

int shiftKeys(Qt::KeyboardModifiers modifiers)
{
    return (modifiers.testFlag(Qt::ShiftModifier) ? ShiftKey : 0)
        | (modifiers.testFlag(Qt::ControlModifier) ? CtrlKey : 0) | (modifiers.testFlag(Qt::AltModifier) ? AltKey : 0);
}

int mouseButton(Qt::MouseButton button)
{
    return mouseButtons(button);
}

int mouseButtons(Qt::MouseButtons buttons)
{
    return (buttons.testFlag(Qt::LeftButton) ? LeftButton : 0) | (buttons.testFlag(Qt::RightButton) ? RightButton : 0)
        | (buttons.testFlag(Qt::MiddleButton) ? MiddleButton : 0);
}

namespace {

// What a US keyboard has on the key, 0 for a key that has no letter or digit there. X and Wayland count the keys
// by their places.
int usKey(quint32 scanCode)
{
    constexpr std::pair<quint32, std::string_view> rows[] = {
        {10, "1234567890"}, {24, "QWERTYUIOP"}, {38, "ASDFGHJKL"}, {52, "ZXCVBNM"}};
    for (const auto& [first, keys] : rows) {
        if (scanCode >= first && scanCode - first < keys.size())
            return keys[scanCode - first];
    }
    return 0;
}

// A key whose symbol has no number of its own. A Cyrillic or Greek letter counts as the Latin one in its place, a
// sign or an accented letter on the row of digits as the digit; but a comma in the place of M is no M.
int numberByPlace(const QKeyEvent& event)
{
    const int key = usKey(event.nativeScanCode());
    if (key >= '0' && key <= '9')
        return key;
    const QChar::Script script = QChar::script(static_cast<char32_t>(event.key()));
    return script > QChar::Script_Latin ? key : 0;
}

} // namespace

int keyCode(const QKeyEvent& event)
{
    const int key = event.key();
    if (event.modifiers().testFlag(Qt::KeypadModifier)) {
        if (key >= Qt::Key_0 && key <= Qt::Key_9)
            return 96 + key - Qt::Key_0;
    }
    if ((key >= Qt::Key_A && key <= Qt::Key_Z) || (key >= Qt::Key_0 && key <= Qt::Key_9))
        return key;
    if (key >= Qt::Key_F1 && key <= Qt::Key_F16)
        return 112 + key - Qt::Key_F1;
    switch (key) {
    case Qt::Key_Backspace:
        return 8;
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
        return 9;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return 13;
    case Qt::Key_Shift:
        return 16;
    case Qt::Key_Control:
        return 17;
    case Qt::Key_Alt:
        return 18;
    case Qt::Key_Escape:
        return 27;
    case Qt::Key_Space:
        return 32;
    case Qt::Key_PageUp:
        return 33;
    case Qt::Key_PageDown:
        return 34;
    case Qt::Key_End:
        return 35;
    case Qt::Key_Home:
        return 36;
    case Qt::Key_Left:
        return 37;
    case Qt::Key_Up:
        return 38;
    case Qt::Key_Right:
        return 39;
    case Qt::Key_Down:
        return 40;
    case Qt::Key_Insert:
        return 45;
    case Qt::Key_Delete:
        return 46;
    case Qt::Key_Menu:
        return 93;
    case Qt::Key_Plus:
        return 107;
    case Qt::Key_Minus:
        return 109;
    default:
        return numberByPlace(event);
    }
}

int keyAscii(const QKeyEvent& event)
{
    switch (event.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return 13;
    case Qt::Key_Escape:
        return 27;
    case Qt::Key_Backspace:
        return 8;
    default:
        break;
    }
    const QString text = event.text();
    return text.size() == 1 && text.front().isPrint() ? text.front().unicode() : 0;
}

} // namespace trovarium
