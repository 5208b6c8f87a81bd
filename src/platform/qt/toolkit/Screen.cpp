#include "platform/toolkit/Screen.h"

#include "platform/qt/toolkit/DesktopState.h"
#include "platform/qt/toolkit/FormView.h"
#include "platform/toolkit/Form.h"

#include "platform/qt/toolkit/Pointers.h"

#include <QGuiApplication>
#include <QScreen>

namespace trovarium {

namespace {

QSize screenSize(const DesktopState& state)
{
    const Form* active = state.activeForm();
    const QScreen* screen = active != nullptr && active->view() != nullptr ? active->view()->window().screen()
                                                                           : QGuiApplication::primaryScreen();
    return screen != nullptr ? screen->size() : QSize();
}

} // namespace

float Screen::Width() const
{
    return static_cast<float>(screenSize(m_state).width()) * TwipsPerPixel;
}

float Screen::Height() const
{
    return static_cast<float>(screenSize(m_state).height()) * TwipsPerPixel;
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
