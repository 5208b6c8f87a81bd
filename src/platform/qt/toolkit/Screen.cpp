#include "platform/toolkit/Screen.h"

#include "platform/qt/toolkit/DesktopState.h"
#include "platform/qt/toolkit/FormView.h"
#include "platform/qt/toolkit/Pointers.h"
#include "platform/qt/toolkit/Screens.h"
#include "platform/toolkit/Form.h"

#include <QGuiApplication>
#include <QScreen>

namespace trovarium {

QScreen& screenOf(const QWidget& window)
{
    QScreen* screen = QGuiApplication::screenAt(window.frameGeometry().center());
    return screen != nullptr ? *screen : *window.screen(); // out of sight
}

QScreen& screenInUse(const DesktopState& state)
{
    const Form* active = state.activeForm();
    return active != nullptr && active->view() != nullptr ? active->view()->screen()
                                                          : *QGuiApplication::primaryScreen();
}

float Screen::Width() const
{
    return static_cast<float>(screenInUse(m_state).size().width()) * TwipsPerPixel;
}

float Screen::Height() const
{
    return static_cast<float>(screenInUse(m_state).size().height()) * TwipsPerPixel;
}

void Screen::setMousePointer(int value)
{
    if (value == m_mousePointer)
        return;
    if (m_mousePointer != DefaultPointer)
        QGuiApplication::restoreOverrideCursor();
    m_mousePointer = value;
    if (m_mousePointer != DefaultPointer)
        QGuiApplication::setOverrideCursor(cursorOf(m_mousePointer, qGuiApp->devicePixelRatio()));
}

} // namespace trovarium
