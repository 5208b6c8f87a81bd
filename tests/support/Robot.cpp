#include "support/Robot.h"

#include "platform/qt/toolkit/DesktopState.h"
#include "platform/qt/toolkit/FormView.h"
#include "platform/qt/toolkit/ItemView.h"
#include "platform/qt/toolkit/SurfaceView.h"
#include "platform/toolkit/Form.h"
#include "platform/toolkit/Menu.h"

#include <QApplication>
#include <QImage>
#include <QMenu>
#include <QMenuBar>
#include <QMouseEvent>
#include <QPainter>
#include <QPointer>
#include <QTimer>
#include <QWheelEvent>

#include <gtest/gtest.h>

#include <algorithm>

namespace trovarium {

namespace {

Qt::MouseButton qtButton(int button)
{
    return button == RightButton ? Qt::RightButton : button == MiddleButton ? Qt::MiddleButton : Qt::LeftButton;
}

Qt::KeyboardModifiers qtModifiers(int shift)
{
    Qt::KeyboardModifiers modifiers;
    modifiers.setFlag(Qt::ShiftModifier, (shift & ShiftKey) != 0);
    modifiers.setFlag(Qt::ControlModifier, (shift & CtrlKey) != 0);
    modifiers.setFlag(Qt::AltModifier, (shift & AltKey) != 0);
    return modifiers;
}

int qtKey(int keyCode)
{
    static const std::vector<std::pair<int, int>> keys{{8, Qt::Key_Backspace}, {9, Qt::Key_Tab}, {13, Qt::Key_Return},
        {27, Qt::Key_Escape}, {32, Qt::Key_Space}, {33, Qt::Key_PageUp}, {34, Qt::Key_PageDown}, {35, Qt::Key_End},
        {36, Qt::Key_Home}, {37, Qt::Key_Left}, {38, Qt::Key_Up}, {39, Qt::Key_Right}, {40, Qt::Key_Down},
        {46, Qt::Key_Delete}, {93, Qt::Key_Menu}, {107, Qt::Key_Plus}, {109, Qt::Key_Minus}};
    const auto found = std::find_if(keys.begin(), keys.end(), [&](const auto& key) { return key.first == keyCode; });
    if (found != keys.end())
        return found->second;
    return keyCode >= 112 && keyCode <= 127 ? Qt::Key_F1 + keyCode - 112 : keyCode;
}

QString qtText(int keyCode, int shift)
{
    if (keyCode == 13)
        return QStringLiteral("\r");
    if (keyCode == 27 || keyCode == 8)
        return QString(QChar(keyCode));
    const bool letter = keyCode >= 65 && keyCode <= 90;
    if ((shift & (CtrlKey | AltKey)) != 0 || !(letter || keyCode == 32 || (keyCode >= 48 && keyCode <= 57)))
        return {};
    return QString(QChar(letter && (shift & ShiftKey) == 0 ? keyCode + 32 : keyCode));
}

// In pixels of the form's window.
QPointF onWindow(const Control& control, const std::optional<At>& at)
{
    if (control.view() == nullptr) {
        ADD_FAILURE() << control.Name() << " is not in a window";
        return {};
    }
    const QRectF place = placeInPixels(control);
    const QPointF within = at ? QPointF(at->x, at->y) : QPointF(place.width() / 2, place.height() / 2);
    const SurfaceView& surface = *control.parent().surface();
    return surface.mapTo(surface.window(), place.topLeft() + within);
}

QPointF onWindow(Form& form, At at)
{
    const SurfaceView& client = form.view()->client();
    return client.mapTo(client.window(), QPointF(at.x, at.y));
}

void paintSurface(QPainter& painter, SurfaceView& surface, QPoint origin, const QRegion& visible, qreal scale)
{
    painter.save();
    painter.translate(origin);
    surface.paintTo(painter, visible.translated(-origin), scale);
    painter.restore();
    for (QObject* child : surface.children()) {
        auto* widget = qobject_cast<QWidget*>(child);
        if (widget == nullptr || widget->isHidden() || widget->isWindow())
            continue;
        const QPoint corner = origin + widget->pos();
        const QRegion seen = visible & QRect(corner, widget->size());
        if (seen.isEmpty())
            continue;
        if (auto* inner = dynamic_cast<SurfaceView*>(widget)) {
            paintSurface(painter, *inner, corner, seen, scale);
        } else {
            painter.setClipRegion(seen);
            widget->render(&painter, corner, {}, QWidget::DrawChildren); // on what lies below it
        }
    }
}

void sendMouse(QWidget& receiver, QEvent::Type type, QPointF onItsWindow, int button, int buttons, int shift)
{
    const QPointF local = receiver.mapFrom(receiver.window(), onItsWindow);
    QMouseEvent event(type, local, onItsWindow, receiver.window()->mapToGlobal(onItsWindow),
        button == 0 ? Qt::NoButton : qtButton(button), Qt::MouseButtons(buttons), qtModifiers(shift));
    QApplication::sendEvent(&receiver, &event);
}

// Where a key press goes: the desktop gives the keyboard to the window that the user works in.
QWidget* keyReceiver(Form& form)
{
    QWidget& window = form.view()->window();
    if (QApplication::activeWindow() != &window)
        QApplication::setActiveWindow(&window);
    return window.focusWidget() != nullptr ? window.focusWidget() : &window;
}

} // namespace

struct Robot::State {
    explicit State(Desktop& owner)
        : desktop(owner)
    {
    }

    Desktop& desktop;
    QPointer<QWidget> receiver; // of the press in hand
    int button = 0;
    QPointF last;
    QObject pending; // timers of what was told beforehand

    DesktopState& desktopState() const { return desktop.state(); }
};

int Shot::count(Color color) const
{
    return static_cast<int>(std::count(m_pixels.begin(), m_pixels.end(), color));
}

void Shot::savePng(const std::string& path) const
{
    QImage image(m_width, m_height, QImage::Format_RGB32);
    for (int y = 0; y < m_height; ++y) {
        for (int x = 0; x < m_width; ++x) {
            const Color color = at(x, y);
            image.setPixel(x, y, qRgb(color.red, color.green, color.blue));
        }
    }
    image.save(QString::fromStdString(path));
}

Robot::Robot(Desktop& desktop)
    : m_state(std::make_unique<State>(desktop))
{
}

Robot::~Robot()
{
    for (const QObject* waiting : m_state->pending.children())
        ADD_FAILURE() << "never happened: " << waiting->objectName().toStdString();
}

void Robot::pressAt(Form& form, float x, float y, int button, int shift, bool doubled)
{
    const QPointF place(x, y);
    QWidget& window = form.view()->window();
    QWidget* under = window.childAt(place.toPoint());
    m_state->receiver = under != nullptr ? under : &window;
    m_state->button = button;
    m_state->last = place;
    sendMouse(*m_state->receiver, doubled ? QEvent::MouseButtonDblClick : QEvent::MouseButtonPress, place, button,
        button, shift);
}

void Robot::press(Control& control, int button, int shift, std::optional<At> at)
{
    const QPointF place = onWindow(control, at);
    if (control.view() != nullptr)
        pressAt(control.form(), static_cast<float>(place.x()), static_cast<float>(place.y()), button, shift, false);
}

void Robot::press(Form& form, At at, int button, int shift)
{
    const QPointF place = onWindow(form, at);
    pressAt(form, static_cast<float>(place.x()), static_cast<float>(place.y()), button, shift, false);
}

void Robot::moveAt(Form& form, float x, float y, int shift)
{
    const QPointF place(x, y);
    QWidget* receiver = m_state->receiver;
    if (m_state->button == 0) {
        QWidget& window = form.view()->window();
        receiver = window.childAt(place.toPoint());
        receiver = receiver != nullptr ? receiver : &window;
    }
    m_state->last = place;
    if (receiver != nullptr)
        sendMouse(*receiver, QEvent::MouseMove, place, 0, m_state->button, shift);
}

void Robot::moveTo(Control& control, std::optional<At> at, int shift)
{
    const QPointF place = onWindow(control, at);
    if (control.view() != nullptr)
        moveAt(control.form(), static_cast<float>(place.x()), static_cast<float>(place.y()), shift);
}

void Robot::moveTo(Form& form, At at, int shift)
{
    const QPointF place = onWindow(form, at);
    moveAt(form, static_cast<float>(place.x()), static_cast<float>(place.y()), shift);
}

void Robot::release(int shift)
{
    const int button = std::exchange(m_state->button, 0);
    const QPointer<QWidget> receiver = std::exchange(m_state->receiver, nullptr);
    if (receiver)
        sendMouse(*receiver, QEvent::MouseButtonRelease, m_state->last, button, 0, shift);
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
    if (control.view() == nullptr)
        return;
    Form& form = control.form();
    click(control, LeftButton, shift, at);
    if (form.view() == nullptr)
        return;
    pressAt(form, static_cast<float>(place.x()), static_cast<float>(place.y()), LeftButton, shift, true);
    release(shift);
}

void Robot::wheel(Control& control, int notchesDown)
{
    const QPointF place = onWindow(control, {});
    QWidget& window = control.form().view()->window();
    QWidget* receiver = window.childAt(place.toPoint());
    if (receiver == nullptr)
        return;
    QWheelEvent event(receiver->mapFrom(&window, place), window.mapToGlobal(place), {},
        QPoint(0, -notchesDown * QWheelEvent::DefaultDeltasPerStep), Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase,
        false);
    QApplication::sendEvent(receiver, &event);
}

void Robot::key(Form& form, int keyCode, int shift)
{
    const QPointer<QWidget> receiver(keyReceiver(form));
    const QString text = qtText(keyCode, shift);
    QKeyEvent press(QEvent::KeyPress, qtKey(keyCode), qtModifiers(shift), text);
    QApplication::sendEvent(receiver, &press);
    if (!receiver)
        return;
    QKeyEvent release(QEvent::KeyRelease, qtKey(keyCode), qtModifiers(shift), text);
    QApplication::sendEvent(receiver, &release);
}

void Robot::type(Form& form, std::string_view text)
{
    for (const QChar character : toQString(text)) {
        const int key = character.isLetterOrNumber() && character.unicode() < 128 ? character.toUpper().unicode()
                                                                                  : character.unicode();
        QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier, QString(character));
        QApplication::sendEvent(keyReceiver(form), &press);
        if (form.view() == nullptr)
            return;
    }
}

void Robot::tab(Form& form, bool back)
{
    QKeyEvent press(QEvent::KeyPress, back ? Qt::Key_Backtab : Qt::Key_Tab, back ? Qt::ShiftModifier : Qt::NoModifier);
    QApplication::sendEvent(keyReceiver(form), &press);
}

namespace {

QAction* actionOf(QWidget& widget, const Menu& menu)
{
    for (QAction* action : widget.actions()) {
        if (action->objectName() == toQString(menu.Name()))
            return action;
    }
    return nullptr;
}

void clickIn(QWidget& widget, QRect place)
{
    const QPointF middle = widget.mapTo(widget.window(), QPointF(place.center()));
    sendMouse(widget, QEvent::MouseMove, middle, 0, 0, NoKeys);
    const QPointer<QWidget> alive(&widget);
    sendMouse(widget, QEvent::MouseButtonPress, middle, LeftButton, LeftButton, NoKeys);
    if (alive)
        sendMouse(widget, QEvent::MouseButtonRelease, middle, LeftButton, 0, NoKeys);
}

} // namespace

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
        clickIn(*bar, bar->actionGeometry(top));
        open = top->menu();
    }
    for (std::size_t i = 1; i < way.size() && open != nullptr; ++i) {
        QAction* action = actionOf(*open, *way[i]);
        if (action == nullptr)
            continue; // a pop-up menu may start in the middle of the way
        if (i + 1 < way.size()) {
            open->setActiveAction(action);
            QKeyEvent right(QEvent::KeyPress, Qt::Key_Right, Qt::NoModifier);
            QApplication::sendEvent(open, &right);
            open = action->menu();
        } else {
            clickIn(*open, open->actionGeometry(action));
        }
    }
    while (QWidget* left = QApplication::activePopupWidget()) { // a disabled entry closes nothing
        if (!left->close())
            break;
    }
}

void Robot::dismissMenu()
{
    QWidget* open = QApplication::activePopupWidget();
    if (open == nullptr)
        ADD_FAILURE() << "no menu is open";
    else
        open->close();
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

void Robot::when(std::function<bool()> condition, std::function<void()> action)
{
    auto* timer = new QTimer(&m_state->pending);
    timer->setObjectName(QStringLiteral("a condition that was waited for"));
    timer->setInterval(0);
    QObject::connect(timer, &QTimer::timeout, timer,
        [&state = m_state->desktopState(), timer, condition = std::move(condition), action = std::move(action)] {
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
    timer->start();
}

void Robot::atNextTurn(std::function<void()> action)
{
    when([] { return true; }, std::move(action));
}

void Robot::whenShown(std::string_view formName, std::function<void()> action)
{
    when(
        [&state = m_state->desktopState(), name = std::string(formName)] {
            return std::any_of(state.shown.begin(), state.shown.end(),
                [&](const Form* form) { return form->Name() == name && state.isOpenToInput(*form); });
        },
        std::move(action));
    m_state->pending.children().constLast()->setObjectName("the showing of " + toQString(formName));
}

void Robot::whenMenuOpens(std::function<void()> action)
{
    when([] { return QApplication::activePopupWidget() != nullptr; }, std::move(action));
    m_state->pending.children().constLast()->setObjectName(QStringLiteral("the opening of a menu"));
}

bool Robot::until(const std::function<bool()>& condition, std::chrono::milliseconds deadline)
{
    const auto end = std::chrono::steady_clock::now() + deadline;
    QTimer wake;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end)
            return false;
        m_state->desktop.DoEvents();
        if (condition())
            break;
        wake.start(1);
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        wake.stop();
    }
    return true;
}

Shot Robot::shot(Form& form, int scale)
{
    SurfaceView& client = form.view()->client();
    QImage image(client.size() * scale, QImage::Format_RGB32);
    image.setDevicePixelRatio(scale);
    QPainter painter(&image);
    paintSurface(painter, client, {}, QRegion(client.rect()), scale);
    painter.end();
    std::vector<Color> pixels;
    pixels.reserve(static_cast<std::size_t>(image.width()) * image.height());
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QRgb pixel = image.pixel(x, y);
            pixels.push_back({static_cast<unsigned char>(qRed(pixel)), static_cast<unsigned char>(qGreen(pixel)),
                static_cast<unsigned char>(qBlue(pixel))});
        }
    }
    return {image.width(), image.height(), std::move(pixels)};
}

} // namespace trovarium
