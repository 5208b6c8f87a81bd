// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/toolkit/FormWindow.h"

#include "platform/toolkit/Buttons.h"
#include "platform/toolkit/DesktopState.h"
#include "platform/toolkit/DrawnWidget.h"
#include "platform/toolkit/Form.h"
#include "platform/toolkit/MimeFiles.h"
#include "platform/toolkit/QtValues.h"
#include "platform/toolkit/ScrollBar.h"

#include <QApplication>
#include <QCloseEvent>
#include <QGuiApplication>
#include <QLineEdit>
#include <QMenuBar>
#include <QMimeData>
#include <QPointer>
#include <QScreen>
#include <QTimer>
#include <QWindow>

#include <chrono>
#include <cmath>
#include <utility>
#include <vector>

namespace trovarium {

namespace {

using namespace std::chrono_literals;

// How long a window manager may take to place a window and to report where.
constexpr auto SettlingTime = 100ms;

Qt::WindowFlags flagsOf(const FormPlan& plan)
{
    if (plan.Border == BorderKind::None)
        return Qt::Window | Qt::FramelessWindowHint;
    Qt::WindowFlags flags = Qt::Window | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowSystemMenuHint;
    flags.setFlag(Qt::WindowCloseButtonHint, plan.CloseBox);
    return flags;
}

int toPixels(float twips)
{
    return static_cast<int>(std::lround(twips / TwipsPerPixel));
}

float toTwips(int pixels)
{
    return static_cast<float>(pixels) * TwipsPerPixel;
}

// Tab leads to a container, then to what is drawn on it, then to its widgets, each followed by the widgets inside.
void collectTabStops(const Container& container, std::vector<QWidget*>& stops)
{
    const auto isItem = [](Control* control) { return control->drawn() != nullptr && control->container() == nullptr; };
    for (Control* control : container.controls()) {
        if (isItem(control) && control->drawn()->takesFocus())
            stops.push_back(control->widget());
    }
    for (Control* control : container.controls()) {
        if (!isItem(control))
            stops.push_back(control->widget());
        if (const Container* inner = control->container())
            collectTabStops(*inner, stops);
    }
}

void followHandlers(const Container& container)
{
    for (Control* control : container.controls()) {
        control->followInput();
        if (const Container* inner = control->container())
            followHandlers(*inner);
    }
}

void raiseKey(Form& form, const QKeyEvent& event)
{
    const int code = keyCode(event);
    const int ascii = keyAscii(event);
    const int shift = shiftKeys(event.modifiers());
    deliverEvent(form, [&] {
        form.KeyDown.raise(code, shift);
        if (ascii != 0 && form.isLoaded())
            form.KeyPress.raise(ascii);
    });
}

bool isModifier(const QKeyEvent& event)
{
    const int key = event.key();
    return key == Qt::Key_Shift || key == Qt::Key_Control || key == Qt::Key_Alt || key == Qt::Key_AltGr
        || key == Qt::Key_Meta;
}

bool isInput(QEvent::Type type)
{
    switch (type) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
    case QEvent::Wheel:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::ShortcutOverride:
    case QEvent::Shortcut:
    case QEvent::ContextMenu:
    case QEvent::ToolTip:
        return true;
    default:
        return false;
    }
}

bool holdsFiles(const QDropEvent& event)
{
    return event.mimeData()->hasUrls();
}

// The focus ring is shown while the user works with the keyboard. Modifier keys don't count.
void showOrHideFocusRing(QWidget& window, const QEvent& event)
{
    // An access key comes without a KeyPress, but there is a ShortcutOverride for every key.
    const bool byKey = event.type() == QEvent::KeyPress || event.type() == QEvent::ShortcutOverride;
    if (!byKey && event.type() != QEvent::MouseButtonPress)
        return;
    if (byKey && (window.isFullScreen() || isModifier(static_cast<const QKeyEvent&>(event))))
        return; // nobody wants a ring round a picture that fills the screen
    if (byKey == window.testAttribute(Qt::WA_KeyboardFocusChange))
        return;
    window.setAttribute(Qt::WA_KeyboardFocusChange, byKey);
    if (QWidget* focus = window.focusWidget())
        focus->update();
}

} // namespace

FormWindow::FormWindow(Form& form)
    : QWidget(nullptr, flagsOf(form.plan()))
    , m_form(form)
    , m_client(new DrawnWidget(form, form.desktop().state(), this))
{
    setObjectName(toQString(form.Name()));
    m_client->setAttribute(Qt::WA_OpaquePaintEvent);
    fitSize();
}

QWidget& FormWindow::client() const
{
    return *m_client;
}

QMenuBar& FormWindow::menuBar()
{
    if (m_menuBar == nullptr) {
        m_menuBar = new QMenuBar(this);
        m_menuBar->setNativeMenuBar(false);
        m_menuBar->lower(); // screen readers come to it before the client area
    }
    return *m_menuBar;
}

void FormWindow::prepare()
{
    fitSize();
    followHandlers(m_form);
    std::vector<QWidget*> stops{this};
    collectTabStops(m_form, stops);
    // Qt leaves a widget out of the tab order if it takes no focus now, though it may be enabled later.
    std::vector<Qt::FocusPolicy> policies;
    for (QWidget* stop : stops) {
        policies.push_back(stop->focusPolicy());
        stop->setFocusPolicy(Qt::TabFocus);
    }
    for (std::size_t next = 1; next < stops.size(); ++next)
        setTabOrder(stops[next - 1], stops[next]);
    for (std::size_t stop = 0; stop < stops.size(); ++stop)
        stops[stop]->setFocusPolicy(policies[stop]);
}

void FormWindow::place()
{
    move(corner());
}

void FormWindow::fitSize()
{
    const int bar = m_menuBar != nullptr ? m_menuBar->sizeHint().height() : 0;
    const QSize area(toPixels(m_form.clientWidth()), toPixels(m_form.clientHeight()));
    if (m_menuBar != nullptr)
        m_menuBar->setGeometry(0, 0, area.width(), bar);
    m_client->setGeometry(QRect(QPoint(0, bar), area));
    setFixedSize(area.width(), area.height() + bar);
}

QSize FormWindow::extraSize() const
{
    const int bar = m_menuBar != nullptr ? m_menuBar->height() : 0;
    return frameGeometry().size() - size() + QSize(0, bar);
}

bool FormWindow::isBare() const
{
    return m_form.plan().Border == BorderKind::None;
}

QScreen& FormWindow::standsOn() const
{
    QScreen* shownOn = isBare() ? QGuiApplication::screenAt(m_origin) : nullptr;
    return shownOn != nullptr ? *shownOn : screenOf(*this);
}

// On a screen with another scale factor a window keeps its size in native pixels, which is wrong there. Besides, a
// window may seem to be at the corner of the first screen while a window manager maps it. That is corrected later for
// windows with a frame only. Those without are placed again here, but only once: the window manager may refuse the
// place.
void FormWindow::screenChanged()
{
    if (!isVisible())
        return;
    if (isBare() && std::exchange(m_keepsPlace, false)) {
        setScreen(&standsOn()); // `place` uses the scale of this screen
        place();
    }
    if (size() != maximumSize())
        resize(maximumSize());
}

// The native window is needed before the show: to set its transient parent, and to follow its screen.
void FormWindow::makeNative()
{
    if (windowHandle() != nullptr)
        return;
    winId();
    connect(windowHandle(), &QWindow::screenChanged, this,
        [this] { QTimer::singleShot(SettlingTime, this, [this] { screenChanged(); }); });
}

void FormWindow::present(bool modal)
{
    if (isVisible()) {
        raise();
        activateWindow();
        return;
    }
    QScreen& screen = screenInUse(m_form.desktop().state());
    setScreen(&screen);
    setWindowModality(modal ? Qt::ApplicationModal : Qt::NonModal);
    makeNative();
    const Form* owner = m_form.desktop().activeForm();
    const bool owned = modal && owner != nullptr && owner != &m_form;
    windowHandle()->setTransientParent(owned ? owner->window().windowHandle() : nullptr);
    m_origin = screen.geometry().topLeft();
    m_keepsPlace = true;
    centerOn(screen);
    place();
    if (isBare() && width() >= screen.size().width() && height() >= screen.size().height())
        setWindowState(Qt::WindowFullScreen); // over panels too
    show();                                   // resets the attribute below: a dialog opened by a key shows its ring
    setAttribute(
        Qt::WA_KeyboardFocusChange, owned && !isBare() && owner->window().testAttribute(Qt::WA_KeyboardFocusChange));
    activateWindow();
}

void FormWindow::moveEvent(QMoveEvent*)
{
    const QPoint now = frameGeometry().topLeft();
    if (!isVisible() || now == corner() || isBare())
        return;
    m_origin = screenOf(*this).geometry().topLeft();
    m_form.movedTo(toTwips(now.x() - m_origin.x()), toTwips(now.y() - m_origin.y()));
}

// Centers the window, unless code has set its place.
void FormWindow::centerOn(const QScreen& screen)
{
    if (m_form.isPlaced())
        return;
    const QRect free = screen.availableGeometry();
    const QPoint place = free.topLeft() - m_origin;
    m_form.movedTo(
        toTwips(place.x() + (free.width() - width()) / 2), toTwips(place.y() + (free.height() - height()) / 2));
}

// In coordinates of the virtual desktop, which spans all screens.
QPoint FormWindow::corner() const
{
    return m_origin + QPoint(toPixels(m_form.Left()), toPixels(m_form.Top()));
}

void FormWindow::closeEvent(QCloseEvent* event)
{
    event->ignore();
    DesktopState& state = m_form.desktop().state();
    if (!m_form.isLoaded() || !m_form.plan().CloseBox)
        return;
    if (state.eventsSuspended) {
        state.closeAsked = true;
        state.postponed.emplace_back([&state, window = QPointer<FormWindow>(this)] {
            state.closeAsked = false;
            if (window)
                window->close();
        });
    } else if (state.isOpenToInput(m_form)) {
        deliverEvent(m_form, [this] { m_form.Close.isWired() ? m_form.Close.raise() : m_form.unload(); });
    }
}

bool FormWindow::takesFiles() const
{
    const QWidget* modal = QApplication::activeModalWidget();
    return m_form.TakesFiles() && m_form.desktop().state().isInUse(m_form) && (modal == nullptr || modal == this)
        && QApplication::activePopupWidget() == nullptr;
}

void FormWindow::dragEnterEvent(QDragEnterEvent* event)
{
    dragMoveEvent(event);
}

// Always as a copy: after a move the other program would delete its files.
void FormWindow::dragMoveEvent(QDragMoveEvent* event)
{
    event->setDropAction(Qt::CopyAction);
    event->setAccepted(takesFiles() && holdsFiles(*event) && event->possibleActions().testFlag(Qt::CopyAction));
}

// The other program waits until this returns, so the handler runs later, if the form still takes files then.
void FormWindow::dropEvent(QDropEvent* event)
{
    event->setDropAction(Qt::CopyAction);
    event->accept();
    const QPointF place = m_form.handlerPlace(m_client->mapFrom(this, event->position()));
    m_form.desktop().state().invokeLater(
        [window = QPointer<FormWindow>(this), files = filesIn(*event->mimeData()), place] {
            if (!window || !window->takesFiles())
                return;
            Form& form = window->m_form;
            deliverEvent(form,
                [&] { form.FilesDropped.raise(files, static_cast<float>(place.x()), static_cast<float>(place.y())); });
        });
}

void FormWindow::keyPressEvent(QKeyEvent* event)
{
    event->ignore();
    const int code = keyCode(*event);
    if (Button* button = m_form.buttonOf(code)) {
        event->accept();
        deliverEvent(*button, [&] { button->Click.raise(); });
        return;
    }
    // Alt+F4 comes here only if there is no window manager. Then the window has no frame with a close box.
    if (event->key() == Qt::Key_F4 && event->modifiers() == Qt::AltModifier && m_form.plan().CloseBox) {
        close();
        return;
    }
    // A form with a KeyDown handler gets the Page keys too.
    const bool pages = (code == PageUpKey || code == PageDownKey) && !m_form.KeyDown.isWired();
    VScroll* scroll = pages ? m_form.scrollFor() : nullptr;
    if (scroll != nullptr)
        deliverEvent(*scroll, [&] { scroll->page(code == PageUpKey ? -1 : 1); });
    else
        raiseKey(m_form, *event);
}

// A key that is held answers one question and closes one window, not the next ones as well. In full screen, where
// nothing is asked, it goes on.
bool EventFilter::isHeldAnswer(const QWidget& receiver, const QKeyEvent& press)
{
    if (press.key() != Qt::Key_Escape && press.key() != Qt::Key_Return && press.key() != Qt::Key_Enter)
        return false;
    if (!press.isAutoRepeat())
        m_answers = receiver.window();
    return press.isAutoRepeat() && (!receiver.window()->isFullScreen() || m_answers != receiver.window());
}

// An open list closes at the ShortcutOverride; the key press that follows would go to the form.
bool EventFilter::hasClosedPopUp(const QEvent& event)
{
    const bool isOpen = QApplication::activePopupWidget() != nullptr;
    if (event.type() == QEvent::ShortcutOverride && isOpen)
        m_popUpKey = static_cast<const QKeyEvent&>(event).timestamp();
    if (event.type() != QEvent::KeyPress)
        return false;
    return std::exchange(m_popUpKey, {}) == static_cast<const QKeyEvent&>(event).timestamp() && !isOpen;
}

bool EventFilter::eventFilter(QObject* receiver, QEvent* event)
{
    if (!receiver->isWidgetType())
        return false;
    if (event->type() == QEvent::UpdateRequest)
        return m_state.keepsRepaint(*receiver);
    // A text box would take the files as text, and as a move, after which the other program deletes them.
    if (event->type() == QEvent::DragEnter && qobject_cast<QLineEdit*>(receiver) != nullptr
        && holdsFiles(static_cast<QDropEvent&>(*event))) {
        event->ignore();
        return true;
    }
    if (!isInput(event->type()))
        return false;
    if (hasClosedPopUp(*event))
        return true;
    const auto* widget = static_cast<QWidget*>(receiver);
    if (event->type() == QEvent::KeyPress && isHeldAnswer(*widget, static_cast<QKeyEvent&>(*event)))
        return true;
    Form* form = m_state.formOf(*widget);
    if (form == nullptr)
        return false;
    if (m_state.keepsInput(*receiver, *event) || !m_state.isOpenToInput(*form))
        return true;
    showOrHideFocusRing(form->window(), *event);
    if (event->type() != QEvent::KeyPress || !form->plan().KeyPreview)
        return false;
    if (!form->KeyDown.isWired() && !form->KeyPress.isWired())
        return false;
    raiseKey(*form, static_cast<QKeyEvent&>(*event));
    return true;
}

} // namespace trovarium
