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

#include <algorithm>
#include <map>

namespace trovarium {

namespace {

Qt::KeyboardModifiers modifiersOf(int shift)
{
    Qt::KeyboardModifiers modifiers;
    modifiers.setFlag(Qt::ShiftModifier, (shift & ShiftKey) != 0);
    modifiers.setFlag(Qt::ControlModifier, (shift & CtrlKey) != 0);
    modifiers.setFlag(Qt::AltModifier, (shift & AltKey) != 0);
    return modifiers;
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

QPointF onWindow(const Control& control, const std::optional<At>& at)
{
    if (control.view() == nullptr) {
        ADD_FAILURE() << control.Name() << " is not in a window";
        return {};
    }
    const QRectF place = placeInPixels(control);
    const SurfaceView& surface = *control.parent().surface();
    return surface.mapTo(surface.window(), at ? place.topLeft() + QPointF(at->x, at->y) : place.center());
}

QPointF onWindow(Form& form, At at)
{
    return form.view()->client().mapTo(&form.view()->window(), QPointF(at.x, at.y));
}

QWidget& under(QWidget& window, QPointF at)
{
    QWidget* child = window.childAt(at.toPoint());
    return child != nullptr ? *child : window;
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

    void press(QWidget& window, QPointF at, QEvent::Type type, Qt::MouseButton pressed, int shift)
    {
        receiver = &under(window, at);
        button = pressed;
        last = at;
        send(*receiver, type, at, button, button, shift);
    }

    void move(QWidget& window, QPointF at, int shift)
    {
        QWidget* to = button != Qt::NoButton ? receiver.data() : &under(window, at);
        last = at;
        if (to != nullptr)
            send(*to, QEvent::MouseMove, at, Qt::NoButton, button, shift);
    }
};

int Shot::count(Color color) const
{
    return static_cast<int>(std::count(m_pixels.begin(), m_pixels.end(), color));
}

Robot::Robot(Desktop& desktop)
    : m_state(new State{desktop})
{
}

Robot::~Robot()
{
    for (const QObject* waiting : m_state->pending.children())
        ADD_FAILURE() << "never happened: " << waiting->objectName().toStdString();
}

void Robot::press(Control& control, int button, int shift, std::optional<At> at)
{
    const QPointF place = onWindow(control, at);
    if (control.view() != nullptr)
        m_state->press(
            control.form().view()->window(), place, QEvent::MouseButtonPress, Qt::MouseButton(button), shift);
}

void Robot::press(Form& form, At at, int button, int shift)
{
    m_state->press(form.view()->window(), onWindow(form, at), QEvent::MouseButtonPress, Qt::MouseButton(button), shift);
}

void Robot::moveTo(Control& control, std::optional<At> at, int shift)
{
    const QPointF place = onWindow(control, at);
    if (control.view() != nullptr)
        m_state->move(control.form().view()->window(), place, shift);
}

void Robot::moveTo(Form& form, At at, int shift)
{
    m_state->move(form.view()->window(), onWindow(form, at), shift);
}

void Robot::release(int shift)
{
    const Qt::MouseButton button = std::exchange(m_state->button, Qt::NoButton);
    if (QWidget* receiver = std::exchange(m_state->receiver, nullptr))
        State::send(*receiver, QEvent::MouseButtonRelease, m_state->last, button, Qt::NoButton, shift);
}

void Robot::click(Control& control, int button, int shift, std::optional<At> at)
{
    press(control, button, shift, at);
    release(shift);
}

void Robot::click(Form& form, At at, int button, int shift)
{
    press(form, at, button, shift);
    release(shift);
}

void Robot::doubleClick(Control& control, int shift, std::optional<At> at)
{
    const QPointF place = onWindow(control, at);
    const QPointer<QWidget> window(control.view() != nullptr ? &control.form().view()->window() : nullptr);
    click(control, LeftButton, shift, at);
    if (!window || !window->isVisible())
        return;
    m_state->press(*window, place, QEvent::MouseButtonDblClick, Qt::LeftButton, shift);
    release(shift);
}

void Robot::wheel(Control& control, int notchesDown)
{
    QWidget& window = control.form().view()->window();
    const QPointF place = onWindow(control, {});
    QWidget& receiver = under(window, place);
    QWheelEvent event(receiver.mapFrom(&window, place), window.mapToGlobal(place), {},
        QPoint(0, -notchesDown * QWheelEvent::DefaultDeltasPerStep), Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase,
        false);
    QApplication::sendEvent(&receiver, &event);
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

std::optional<std::vector<std::string>> Robot::openMenu() const
{
    const auto* open = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    if (open == nullptr)
        return {};
    std::vector<std::string> names;
    for (const QAction* action : open->actions())
        names.push_back(action->objectName().toStdString());
    return names;
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
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x) {
            const QRgb pixel = image.pixel(x, y);
            pixels.push_back({static_cast<unsigned char>(qRed(pixel)), static_cast<unsigned char>(qGreen(pixel)),
                static_cast<unsigned char>(qBlue(pixel))});
        }
    return {image.width(), image.height(), std::move(pixels)};
}

} // namespace trovarium
