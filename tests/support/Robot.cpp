// SPDX-License-Identifier: GPL-3.0-or-later

#include "support/Robot.h"

#include "platform/toolkit/DesktopState.h"
#include "platform/toolkit/Form.h"
#include "platform/toolkit/FormWindow.h"
#include "platform/toolkit/Menu.h"
#include "platform/toolkit/QtValues.h"

#include <QApplication>
#include <QImage>
#include <QMenu>
#include <QMenuBar>
#include <QTest>
#include <QTimer>
#include <QWheelEvent>

#include <gtest/gtest.h>

#include <map>

namespace trovarium {

namespace {

Qt::KeyboardModifiers modifiersOf(int shift)
{
    static_assert(Qt::ShiftModifier == ShiftKey << 25 && Qt::ControlModifier == CtrlKey << 25);
    return Qt::KeyboardModifiers::fromInt(shift << 25);
}

Qt::Key keyOf(int code)
{
    static const std::map<int, Qt::Key> keys{{8, Qt::Key_Backspace}, {9, Qt::Key_Tab}, {13, Qt::Key_Return},
        {27, Qt::Key_Escape}, {33, Qt::Key_PageUp}, {34, Qt::Key_PageDown}, {35, Qt::Key_End}, {36, Qt::Key_Home},
        {37, Qt::Key_Left}, {38, Qt::Key_Up}, {39, Qt::Key_Right}, {40, Qt::Key_Down}, {46, Qt::Key_Delete},
        {93, Qt::Key_Menu}, {107, Qt::Key_Plus}, {109, Qt::Key_Minus}};
    const auto found = keys.find(code);
    return found != keys.end() ? found->second : Qt::Key(code < 112 ? code : Qt::Key_F1 + code - 112);
}

// A place of a window. Nothing is done on what is in no window.
struct Spot {
    QPointer<QWidget> window{};
    QPointF at{};

    QWidget* receiver() const
    {
        QWidget* child = window->childAt(at.toPoint());
        return child != nullptr ? child : window.data();
    }
};

Spot spotOf(Control& control, const std::optional<At>& at)
{
    if (!control.form().isLoaded()) {
        ADD_FAILURE() << control.Name() << " is not in a window";
        return {};
    }
    const QRectF place = placeInPixels(control);
    const QPointF onParent = at ? place.topLeft() + QPointF(at->x, at->y) : place.center();
    const QWidget& parent = *control.parent().client();
    return {parent.window(), parent.mapTo(parent.window(), onParent)};
}

Spot spotOf(Form& form, At at)
{
    return {&form.window(), form.client()->mapTo(&form.window(), QPointF(at.x, at.y))};
}

// Where a key press goes: the desktop gives the keyboard to the window that the user works in.
QWidget* keyboard(Form& form)
{
    QWidget& window = form.window();
    window.activateWindow();
    if (!window.isActiveWindow())
        QCoreApplication::processEvents();
    return window.focusWidget() != nullptr ? window.focusWidget() : &window;
}

void closeMenus()
{
    while (QWidget* open = QApplication::activePopupWidget())
        if (!open->close())
            break;
}

} // namespace

struct Robot::State {
    Desktop& desktop;
    QPointer<QWidget> receiver{}; // of the press in hand, or of the last move
    Qt::MouseButton held = Qt::NoButton;
    QPointF last{};
    QObject pending{}; // timers of what was told beforehand

    int send(QEvent::Type type, Qt::MouseButton changed, int shift)
    {
        if (receiver) {
            const QWidget* window = receiver->window();
            QMouseEvent event(type, receiver->mapFrom(window, last), last, window->mapToGlobal(last), changed, held,
                modifiersOf(shift));
            // As from the desktop: a press gives the focus, and the library knows what keys are held.
            QSpontaneKeyEvent::setSpontaneous(&event);
            qApp->notify(receiver, &event);
        }
        return shift;
    }

    int press(const Spot& spot, QEvent::Type type, int button, int shift)
    {
        if (!spot.window)
            return shift;
        receiver = spot.receiver();
        held = Qt::MouseButton(button);
        last = spot.at;
        return send(type, held, shift);
    }

    void move(const Spot& spot, int shift)
    {
        if (!spot.window)
            return;
        if (held == Qt::NoButton)
            receiver = spot.receiver();
        last = spot.at;
        send(QEvent::MouseMove, Qt::NoButton, shift);
    }
};

Robot::Robot(Desktop& desktop)
    : m_state(new State{desktop})
{
}

Robot::~Robot()
{
    for (const QObject* waiting : m_state->pending.children())
        ADD_FAILURE() << "never happened: " << waiting->objectName().toStdString();
}

int Robot::press(Control& control, int button, int shift, std::optional<At> at)
{
    return m_state->press(spotOf(control, at), QEvent::MouseButtonPress, button, shift);
}

int Robot::press(Form& form, At at, int button, int shift)
{
    return m_state->press(spotOf(form, at), QEvent::MouseButtonPress, button, shift);
}

void Robot::moveTo(Control& control, std::optional<At> at, int shift)
{
    m_state->move(spotOf(control, at), shift);
}

void Robot::moveTo(Form& form, At at, int shift)
{
    m_state->move(spotOf(form, at), shift);
}

void Robot::release(int shift)
{
    if (const Qt::MouseButton button = std::exchange(m_state->held, Qt::NoButton))
        m_state->send(QEvent::MouseButtonRelease, button, shift);
}

void Robot::doubleClick(Control& control, int shift, std::optional<At> at)
{
    const Spot spot = spotOf(control, at);
    release(m_state->press(spot, QEvent::MouseButtonPress, LeftButton, shift));
    if (spot.window && spot.window->isVisible())
        release(m_state->press(spot, QEvent::MouseButtonDblClick, LeftButton, shift));
}

void Robot::wheel(Control& control, float notchesDown, std::optional<At> at)
{
    const Spot spot = spotOf(control, at);
    constexpr float Notch = QWheelEvent::DefaultDeltasPerStep;
    const QPoint turn(0, static_cast<int>(-notchesDown * Notch));
    QWidget& to = *spot.receiver();
    QWheelEvent event(to.mapFrom(spot.window, spot.at), spot.window->mapToGlobal(spot.at), {}, turn, Qt::NoButton,
        Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(&to, &event);
}

void Robot::key(Form& form, int keyCode, int shift)
{
    QTest::keyClick(keyboard(form), keyOf(keyCode), modifiersOf(shift));
}

void Robot::hold(Form& form, int keyCode)
{
    QTest::simulateEvent(keyboard(form), true, keyOf(keyCode), {}, {}, true);
}

void Robot::type(Form& form, std::string_view text)
{
    for (const QChar character : toQString(text)) {
        if (!form.isLoaded())
            return;
        QTest::sendKeyEvent(
            QTest::Press, keyboard(form), Qt::Key(character.toUpper().unicode()), QString(character), {});
    }
}

void Robot::choose(Menu& entry)
{
    std::vector<Menu*> way;
    for (Menu* menu = &entry; menu != nullptr; menu = menu->parent())
        way.insert(way.begin(), menu);

    auto* open = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    if (open == nullptr) {
        QMenuBar& bar = entry.form().window().menuBar();
        QAction& top = way.front()->action();
        ASSERT_TRUE(bar.actions().contains(&top) && top.isEnabled() && top.isVisible()) << way.front()->Name();
        QTest::mouseClick(&bar, Qt::LeftButton, {}, bar.actionGeometry(&top).center());
        open = top.menu();
    }
    for (const Menu* menu : way) {
        QAction& action = menu->action();
        if (open == nullptr || !open->actions().contains(&action))
            continue; // the bar's own, or a pop-up menu that starts in the middle of the way
        open->setActiveAction(&action);
        // By keys, since a menu takes no click where no mouse has ever been.
        QTest::keyClick(open, menu == &entry ? Qt::Key_Return : Qt::Key_Right);
        open = action.menu();
    }
    closeMenus(); // a disabled entry closes nothing
}

void Robot::dismissMenu()
{
    EXPECT_NE(QApplication::activePopupWidget(), nullptr) << "no menu is open";
    closeMenus();
}

void Robot::close(Form& form)
{
    ASSERT_TRUE(form.isLoaded()) << form.Name();
    form.window().close();
}

void Robot::when(std::function<bool()> condition, std::function<void()> action, std::string_view name)
{
    auto* timer = new QTimer(&m_state->pending);
    timer->setObjectName(toQString(name));
    timer->callOnTimeout(
        [&desktop = m_state->desktop, timer, condition = std::move(condition), action = std::move(action)] {
            if (!condition())
                return;
            timer->stop();
            timer->setParent(nullptr);
            timer->deleteLater();
            EXPECT_TRUE(desktop.guarded(action) == 0 || desktop.state().ended());
        });
    timer->start(0);
}

void Robot::whenShown(std::string_view formName, std::function<void()> action)
{
    const auto isShown = [&state = m_state->desktop.state(), name = std::string(formName)] {
        return std::ranges::any_of(
            state.shown, [&](const Form* form) { return form->Name() == name && state.isOpenToInput(*form); });
    };
    when(isShown, std::move(action), formName);
}

void Robot::whenMenuOpens(std::function<void()> action)
{
    when([] { return QApplication::activePopupWidget() != nullptr; }, std::move(action), "a menu");
}

bool Robot::until(const std::function<bool()>& condition)
{
    const auto isMet = [&] {
        m_state->desktop.DoEvents();
        return condition();
    };
    return QTest::qWaitFor(isMet, 20000);
}

Shot Robot::shot(Form& form)
{
    QWidget& client = *form.client();
    QImage image(client.size(), QImage::Format_RGB888); // bytes that lie as those of a Color
    client.render(&image);
    std::vector<Color> pixels;
    for (int y = 0; y < image.height(); ++y) {
        const auto* line = reinterpret_cast<const Color*>(image.constScanLine(y));
        pixels.insert(pixels.end(), line, line + image.width());
    }
    return {std::move(pixels)};
}

} // namespace trovarium
