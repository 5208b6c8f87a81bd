#include "platform/toolkit/Control.h"

#include "platform/qt/toolkit/DesktopState.h"
#include "platform/qt/toolkit/ItemView.h"
#include "platform/qt/toolkit/View.h"
#include "platform/toolkit/Form.h"
#include "runtime/Failure.h"

#include <utility>

namespace trovarium {

Control::Control(Container* parent, const Plan& plan)
    : Component(plan.Name)
    , m_parent(parent)
    , m_left(parent->fromTwips(plan.Left))
    , m_top(parent->fromTwips(plan.Top))
    , m_width(parent->fromTwips(plan.Width))
    , m_height(parent->fromTwips(plan.Height))
    , m_visible(plan.Visible)
    , m_enabled(plan.Enabled)
    , m_toolTipText(plan.ToolTipText)
{
    parent->adopt(this);
}

Control::~Control()
{
    m_view.reset();
    m_parent->abandon(this);
}

void Control::setLeft(float value)
{
    if (value == m_left)
        return;
    m_left = value;
    changed(Change::Geometry);
}

void Control::setTop(float value)
{
    if (value == m_top)
        return;
    m_top = value;
    changed(Change::Geometry);
}

void Control::setWidth(float value)
{
    if (value < 0)
        throw Failure(FailureKind::InvalidPropertyValue);
    if (value == m_width)
        return;
    m_width = value;
    changed(Change::Geometry);
}

void Control::setHeight(float value)
{
    if (value < 0)
        throw Failure(FailureKind::InvalidPropertyValue);
    if (value == m_height)
        return;
    m_height = value;
    changed(Change::Geometry);
}

void Control::setVisible(bool value)
{
    if (value == m_visible)
        return;
    m_visible = value;
    changed(Change::Visible);
}

void Control::setEnabled(bool value)
{
    if (value == m_enabled)
        return;
    m_enabled = value;
    changed(Change::Enabled);
}

void Control::setToolTipText(std::string value)
{
    if (value == m_toolTipText)
        return;
    m_toolTipText = std::move(value);
    changed(Change::Hint);
}

void Control::setMousePointer(int value)
{
    if (value == m_mousePointer)
        return;
    m_mousePointer = value;
    changed(Change::Hint);
}

void Control::setAccessibleName(std::string value)
{
    m_accessibleName = std::move(value);
    changed(Change::Hint);
}

void Control::ZOrder()
{
    m_parent->raiseToTop(this);
    changed(Change::Order);
}

void Control::Refresh()
{
    if (m_view)
        desktop().state().paintNow();
}

void Control::SetFocus()
{
    if (!m_view || !takesInput())
        return;
    QWidget* widget = m_view->widget();
    auto* item = dynamic_cast<ItemView*>(m_view.get());
    if (widget != nullptr)
        widget->setFocus(Qt::OtherFocusReason);
    else if (item != nullptr && item->takesFocus())
        item->surface().setFocusItem(item);
    else
        return;
    // Code moves the focus at the user's key, so it is shown as one that Tab moved.
    (widget != nullptr ? widget : &item->surface())->window()->setAttribute(Qt::WA_KeyboardFocusChange);
}

bool Control::hasFocus() const
{
    if (!m_view)
        return false;
    if (const QWidget* widget = m_view->widget()) {
        const auto* surface = dynamic_cast<const SurfaceView*>(widget);
        return widget->hasFocus() && (surface == nullptr || surface->focusItem() == nullptr);
    }
    const auto* item = dynamic_cast<const ItemView*>(m_view.get());
    return item != nullptr && item->surface().hasFocus() && item->surface().focusItem() == item;
}

void Control::attachView()
{
    m_view = makeView();
    if (const auto* container = dynamic_cast<Container*>(this))
        for (Control* child : container->controls())
            child->attachView();
}

void Control::detachView()
{
    if (const auto* container = dynamic_cast<Container*>(this))
        for (Control* child : container->controls())
            child->detachView();
    m_view.reset();
}

bool Control::isShown() const
{
    if (!m_visible)
        return false;
    const auto* above = dynamic_cast<const Control*>(m_parent);
    return above == nullptr || above->isShown();
}

bool Control::takesInput() const
{
    if (!m_visible || !m_enabled)
        return false;
    const auto* above = dynamic_cast<const Control*>(m_parent);
    return above != nullptr ? above->takesInput() : m_parent->form().Enabled();
}

void Control::changed(Change change)
{
    if (m_view)
        m_view->apply(change);
}

} // namespace trovarium
