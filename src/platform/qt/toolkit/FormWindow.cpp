#include "platform/qt/toolkit/FormWindow.h"

#include "platform/qt/toolkit/DesktopState.h"
#include "platform/qt/toolkit/FormView.h"
#include "platform/qt/toolkit/View.h"
#include "platform/toolkit/Form.h"
#include "platform/toolkit/ScrollBar.h"

#include <QCloseEvent>
#include <QKeyEvent>
#include <QPointer>

namespace trovarium {

namespace {

VScroll* scrollIn(const Container& container)
{
    for (Control* control : container.controls()) {
        if (auto* scroll = dynamic_cast<VScroll*>(control); scroll != nullptr && scroll->takesInput())
            return scroll;
        if (const auto* inner = dynamic_cast<const Container*>(control)) {
            if (VScroll* scroll = scrollIn(*inner))
                return scroll;
        }
    }
    return nullptr;
}

void raiseKey(Form& form, const QKeyEvent& event)
{
    const int code = keyCode(event);
    const int ascii = keyAscii(event);
    const int shift = shiftKeys(event.modifiers());
    fromDesktop(form, [&] {
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

// A ring shows what the keys go to while the user works by keys, Shift and its like aside.
void noteHand(QWidget& window, const QEvent& event)
{
    // An access key of the menu bar or of a button comes as no press, but every key is offered first.
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

FormWindow::FormWindow(Form& form, Qt::WindowFlags flags)
    : QWidget(nullptr, flags)
    , m_form(&form)
{
    setObjectName(toQString(form.Name()));
}

void FormWindow::closeEvent(QCloseEvent* event)
{
    event->ignore();
    if (m_form == nullptr || !m_form->plan().CloseBox)
        return;
    DesktopState& state = m_form->desktop().state();
    if (state.closedToEvents) {
        state.closeAsked = true;
        state.postponed.emplace_back([&state, window = QPointer<FormWindow>(this)] {
            state.closeAsked = false;
            if (window)
                window->close();
        });
    } else if (state.isOpenToInput(*m_form)) {
        fromDesktop(*m_form, [this] { m_form->Close.isWired() ? m_form->Close.raise() : m_form->unload(); });
    }
}

void FormWindow::keyPressEvent(QKeyEvent* event)
{
    event->ignore();
    if (m_form == nullptr)
        return;
    // They come here only where no window manager takes them, and there a window has no frame to close it by.
    if (event->key() == Qt::Key_F4 && event->modifiers() == Qt::AltModifier && m_form->plan().CloseBox) {
        close();
        return;
    }
    const bool up = event->key() == Qt::Key_PageUp;
    // A form with keys of its own has these as well.
    const bool pages = (up || event->key() == Qt::Key_PageDown) && !m_form->KeyDown.isWired();
    VScroll* scroll = pages ? scrollIn(*m_form) : nullptr;
    if (scroll != nullptr)
        fromDesktop(*scroll, [&] { scroll->page(up ? -1 : 1); });
    else
        raiseKey(*m_form, *event);
}

void FormWindow::moveEvent(QMoveEvent*)
{
    if (m_form != nullptr && isVisible())
        m_form->view()->windowMoved();
}

void FormWindow::screenChanged()
{
    if (m_form != nullptr && isVisible())
        m_form->view()->screenChanged();
}

bool InputGate::eventFilter(QObject* receiver, QEvent* event)
{
    if (!isInput(event->type()) || !receiver->isWidgetType())
        return false;
    auto* window = dynamic_cast<FormWindow*>(static_cast<QWidget*>(receiver)->window());
    if (window == nullptr)
        return false;
    Form* form = window->form();
    if (form == nullptr)
        return true;
    DesktopState& state = form->desktop().state();
    if (state.keepsInput(*receiver, *event) || !state.isOpenToInput(*form))
        return true;
    noteHand(*window, *event);
    if (event->type() != QEvent::KeyPress || !form->plan().KeyPreview)
        return false;
    if (!form->KeyDown.isWired() && !form->KeyPress.isWired())
        return false;
    raiseKey(*form, static_cast<QKeyEvent&>(*event));
    return true;
}

} // namespace trovarium
