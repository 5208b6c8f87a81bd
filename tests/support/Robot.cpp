#include "support/Robot.h"

#include "platform/qt/toolkit/DesktopState.h"
#include "platform/qt/toolkit/FormView.h"
#include "platform/qt/toolkit/SurfaceView.h"
#include "platform/qt/toolkit/View.h"
#include "platform/toolkit/Form.h"
#include "platform/toolkit/Menu.h"

#include <QApplication>
#include <QImage>
#include <QMenu>
#include <QMenuBar>
#include <QPainter>
#include <QTest>
#include <QTimer>
#include <QWheelEvent>
#include <QWindow>

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
    static const std::map<int, Qt::Key> keys{{8, Qt::Key_Backspace}, {13, Qt::Key_Return}, {27, Qt::Key_Escape},
        {33, Qt::Key_PageUp}, {34, Qt::Key_PageDown}, {35, Qt::Key_End}, {36, Qt::Key_Home}, {37, Qt::Key_Left},
        {38, Qt::Key_Up}, {39, Qt::Key_Right}, {40, Qt::Key_Down}, {46, Qt::Key_Delete}, {93, Qt::Key_Menu},
        {107, Qt::Key_Plus}, {109, Qt::Key_Minus}};
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

Spot spotOf(const Control& control, const std::optional<At>& at)
{
    if (control.view() == nullptr) {
        ADD_FAILURE() << control.Name() << " is not in a window";
        return {};
    }
    const QRectF place = placeInPixels(control);
    const QPointF onSurface = at ? place.topLeft() + QPointF(at->x, at->y) : place.center();
    const SurfaceView& surface = *control.parent().surface();
    return {surface.window(), surface.mapTo(surface.window(), onSurface)};
}

Spot spotOf(Form& form, At at)
{
    QWidget& window = form.view()->window();
    return {&window, form.view()->client().mapTo(&window, QPointF(at.x, at.y))};
}

QAction* actionOf(const QWidget& widget, const Menu& menu)
{
    for (QAction* action : widget.actions())
        if (action->objectName() == toQString(menu.Name()))
            return action;
    return nullptr;
}

// Where a key press goes: the desktop gives the keyboard to the window that the user works in.
QWidget* keyboard(Form& form)
{
    QWidget& window = form.view()->window();
    QApplication::setActiveWindow(&window);
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
    QPointer<QWidget> receiver{}; // of the press in hand
    Qt::MouseButton button = Qt::NoButton;
    QPointF last{};
    QObject pending{}; // timers of what was told beforehand

    static void send(
        QWidget& to, QEvent::Type type, QPointF onItsWindow, Qt::MouseButton changed, Qt::MouseButtons held, int shift)
    {
        const QWidget* window = to.window();
        QMouseEvent event(type, to.mapFrom(window, onItsWindow), onItsWindow, window->mapToGlobal(onItsWindow), changed,
            held, modifiersOf(shift));
        QApplication::sendEvent(&to, &event);
    }

    int press(const Spot& spot, QEvent::Type type, int pressed, int shift)
    {
        if (spot.window) {
            receiver = spot.receiver();
            button = Qt::MouseButton(pressed);
            last = spot.at;
            send(*receiver, type, last, button, button, shift);
        }
        return shift;
    }

    void move(const Spot& spot, int shift)
    {
        if (!spot.window)
            return;
        last = spot.at;
        if (QWidget* to = button != Qt::NoButton ? receiver.data() : spot.receiver())
            send(*to, QEvent::MouseMove, last, Qt::NoButton, button, shift);
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
    const Qt::MouseButton button = std::exchange(m_state->button, Qt::NoButton);
    if (QWidget* receiver = std::exchange(m_state->receiver, nullptr))
        State::send(*receiver, QEvent::MouseButtonRelease, m_state->last, button, Qt::NoButton, shift);
}

void Robot::doubleClick(Control& control, int shift, std::optional<At> at)
{
    const Spot spot = spotOf(control, at);
    release(m_state->press(spot, QEvent::MouseButtonPress, LeftButton, shift));
    if (spot.window && spot.window->isVisible())
        release(m_state->press(spot, QEvent::MouseButtonDblClick, LeftButton, shift));
}

void Robot::wheel(Control& control, int notchesDown)
{
    const Spot spot = spotOf(control, {});
    const QPoint turn(0, -notchesDown * QWheelEvent::DefaultDeltasPerStep);
    QWidget& to = *spot.receiver();
    QWheelEvent event(to.mapFrom(spot.window, spot.at), spot.window->mapToGlobal(spot.at), {}, turn, Qt::NoButton,
        Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(&to, &event);
}

void Robot::key(Form& form, int keyCode, int shift)
{
    const QPointer<QWidget> receiver(keyboard(form));
    QTest::keyPress(receiver, keyOf(keyCode), modifiersOf(shift));
    if (receiver)
        QTest::keyRelease(receiver, keyOf(keyCode), modifiersOf(shift));
}

void Robot::type(Form& form, std::string_view text)
{
    for (const QChar character : toQString(text)) {
        if (form.view() == nullptr)
            return;
        QTest::sendKeyEvent(
            QTest::Press, keyboard(form), Qt::Key(character.toUpper().unicode()), QString(character), {});
    }
}

void Robot::tab(Form& form, bool back)
{
    QTest::keyPress(keyboard(form), back ? Qt::Key_Backtab : Qt::Key_Tab, back ? Qt::ShiftModifier : Qt::NoModifier);
}

void Robot::choose(Menu& entry)
{
    std::vector<Menu*> way;
    for (Menu* menu = &entry; menu != nullptr; menu = menu->parent())
        way.insert(way.begin(), menu);

    auto* open = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    if (open == nullptr) {
        auto* bar = entry.form().view()->window().findChild<QMenuBar*>();
        QAction* top = bar != nullptr ? actionOf(*bar, *way.front()) : nullptr;
        if (top == nullptr || !top->isEnabled() || !top->isVisible()) {
            ADD_FAILURE() << way.front()->Name() << " can't be opened";
            return;
        }
        QTest::mouseClick(bar, Qt::LeftButton, {}, bar->actionGeometry(top).center());
        open = top->menu();
    }
    for (const Menu* menu : way) {
        QAction* action = open != nullptr ? actionOf(*open, *menu) : nullptr;
        if (action == nullptr)
            continue; // the bar's own, or a pop-up menu that starts in the middle of the way
        open->setActiveAction(action);
        if (menu == &entry)
            QTest::mouseClick(open, Qt::LeftButton, {}, open->actionGeometry(action).center());
        else
            QTest::keyPress(open, Qt::Key_Right);
        open = action->menu();
    }
    closeMenus(); // a disabled entry closes nothing
}

void Robot::dismissMenu()
{
    if (QApplication::activePopupWidget() == nullptr)
        ADD_FAILURE() << "no menu is open";
    closeMenus();
}

void Robot::close(Form& form)
{
    if (form.view() == nullptr)
        ADD_FAILURE() << form.Name() << " has no window to close";
    else
        form.view()->window().close();
}

void Robot::when(std::function<bool()> condition, std::function<void()> action, std::string_view name)
{
    auto* timer = new QTimer(&m_state->pending);
    timer->setObjectName(toQString(name));
    timer->callOnTimeout(
        [&state = m_state->desktop.state(), timer, condition = std::move(condition), action = std::move(action)] {
            if (!condition())
                return;
            timer->stop();
            timer->setParent(nullptr);
            timer->deleteLater();
            const DesktopState::Frame frame(state);
            try {
                action();
            } catch (const ProgramEnd& end) {
                state.noteEnd(end);
            }
        });
    timer->start(0);
}

void Robot::atNextTurn(std::function<void()> action)
{
    when([] { return true; }, std::move(action), "the next turn");
}

void Robot::whenShown(std::string_view formName, std::function<void()> action)
{
    const auto isShown = [&state = m_state->desktop.state(), name = std::string(formName)] {
        return std::any_of(state.shown.begin(), state.shown.end(),
            [&](const Form* form) { return form->Name() == name && state.isOpenToInput(*form); });
    };
    when(isShown, std::move(action), formName);
}

void Robot::whenMenuOpens(std::function<void()> action)
{
    when([] { return QApplication::activePopupWidget() != nullptr; }, std::move(action), "a menu");
}

bool Robot::until(const std::function<bool()>& condition, std::chrono::milliseconds deadline)
{
    return QTest::qWaitFor(
        [&] {
            m_state->desktop.DoEvents();
            return condition();
        },
        static_cast<int>(deadline.count()));
}

Shot Robot::shot(Form& form, int scale)
{
    SurfaceView& client = form.view()->client();
    QImage image(client.size() * scale, QImage::Format_RGB32);
    image.setDevicePixelRatio(scale);
    client.render(&image);
    std::vector<Color> pixels;
    image.convertTo(QImage::Format_RGB888); // bytes that lie as those of a Color
    for (int y = 0; y < image.height(); ++y) {
        const auto* line = reinterpret_cast<const Color*>(image.constScanLine(y));
        pixels.insert(pixels.end(), line, line + image.width());
    }
    return {image.width(), image.height(), std::move(pixels)};
}

} // namespace trovarium
