#include "platform/toolkit/Form.h"

#include "platform/qt/toolkit/DesktopState.h"
#include "platform/qt/toolkit/FormView.h"
#include "platform/qt/toolkit/Menus.h"
#include "platform/toolkit/FormSlot.h"
#include "platform/toolkit/Timer.h"

#include <QEventLoop>

#include <algorithm>
#include <cmath>
#include <utility>

namespace trovarium {

Form::Form(Desktop& desktop, const FormPlan& plan)
    : Component(plan.Name)
    , Container(plan.Scale)
    , Caption(this, Change::Text, plan.Caption)
    , m_desktop(desktop)
    , m_plan(plan)
    , m_clientWidth(plan.Width)
    , m_clientHeight(plan.Height)
{
}

Form::~Form()
{
    m_view.reset();
    m_desktop.state().formUnloaded(*this);
}

void Form::setLeft(float value)
{
    m_left = value;
    m_placed = true;
    if (m_view)
        m_view->place();
}

void Form::setTop(float value)
{
    m_top = value;
    m_placed = true;
    if (m_view)
        m_view->place();
}

float Form::width() const
{
    return m_clientWidth + (m_view ? static_cast<float>(m_view->extraWidth()) * TwipsPerPixel : 0);
}

void Form::setWidth(float value)
{
    m_clientWidth = std::max(0.0F, value - (width() - m_clientWidth));
    if (m_view)
        m_view->resize();
}

float Form::height() const
{
    return m_clientHeight + (m_view ? static_cast<float>(m_view->extraHeight()) * TwipsPerPixel : 0);
}

void Form::setHeight(float value)
{
    m_clientHeight = std::max(0.0F, value - (height() - m_clientHeight));
    if (m_view)
        m_view->resize();
}

void Form::changed(Change change)
{
    if (m_view)
        m_view->apply(change);
}

void Form::load()
{
    if (m_loaded)
        return;
    const DesktopState::Frame frame(m_desktop.state());
    m_loaded = true;
    m_view = std::make_unique<FormView>(*this);
    m_desktop.state().formLoaded(*this);
    for (Timer* timer : m_timers)
        timer->formLoaded();
    Load.raise();
}

void Form::show()
{
    load();
    if (m_loaded)
        present(false);
}

void Form::showModal()
{
    DesktopState& state = m_desktop.state();
    NestedLoop nested(m_desktop);
    load();
    if (!m_loaded)
        return;
    present(true);
    QEventLoop loop;
    state.modals.push_back({this, &loop});
    loop.exec();
    std::erase_if(state.modals, [&loop](const DesktopState::ModalShow& modal) { return modal.loop == &loop; });
    nested.finish();
    if (Form* next = state.activeForm())
        state.queueActivate(*next);
}

void Form::present(bool modal)
{
    m_view->show(modal);
    m_shown = true;
    m_desktop.state().formShown(*this);
}

void Form::hide()
{
    if (!m_shown)
        return;
    m_shown = false;
    const bool hadKeys = m_view->hide();
    m_desktop.state().formHidden(*this);
    if (hadKeys)
        m_desktop.state().handKeysOn();
}

void Form::unload()
{
    if (!m_loaded || m_unloading)
        return;
    m_unloading = true;
    Unload.raise();
    hide();
    for (Timer* timer : m_timers)
        timer->formUnloaded();
    dropMenus(*this);
    m_view.reset();
    m_loaded = false;
    m_unloading = false;
    m_desktop.state().formUnloaded(*this);
    if (m_slot != nullptr)
        m_slot->release();
}

void Form::PopupMenu(Menu& menu)
{
    if (m_view && m_shown)
        popUp(*this, menu);
}

void Form::movedTo(float left, float top)
{
    // The window stands on whole pixels; what code asked for keeps its fractions.
    if (std::abs(left - m_left) < TwipsPerPixel && std::abs(top - m_top) < TwipsPerPixel)
        return;
    m_left = left;
    m_top = top;
}

} // namespace trovarium
