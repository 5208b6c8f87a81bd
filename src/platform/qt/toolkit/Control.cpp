#include "platform/toolkit/Control.h"

#include "platform/qt/toolkit/DesktopState.h"
#include "platform/qt/toolkit/ItemView.h"
#include "platform/qt/toolkit/View.h"
#include "platform/toolkit/Form.h"

#include <QLineEdit>

namespace trovarium {

Control::Control(Container* parent, const Plan& plan)
    : Component(plan.Name)
    , Left(this, Change::Geometry, parent->fromTwips(plan.Left))
    , Top(this, Change::Geometry, parent->fromTwips(plan.Top))
    , Width(this, Change::Geometry, parent->fromTwips(plan.Width))
    , Height(this, Change::Geometry, parent->fromTwips(plan.Height))
    , Visible(this, Change::Visible, plan.Visible)
    , Enabled(this, Change::Enabled, plan.Enabled)
    , ToolTipText(this, Change::Hint, plan.ToolTipText)
    , m_parent(parent)
{
    parent->adopt(this);
}

Control::~Control()
{
    m_view.reset();
    m_parent->abandon(this);
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
    if (auto* line = qobject_cast<QLineEdit*>(widget))
        line->selectAll();
    if (item != nullptr && item->takesFocus())
        item->surface().giveFocus(*item);
}

void Control::TabBehind(const Control& before)
{
    if (m_view && before.m_view)
        QWidget::setTabOrder(before.m_view->widget(), m_view->widget());
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
    if (!Visible())
        return false;
    const auto* above = dynamic_cast<const Control*>(m_parent);
    return above == nullptr || above->isShown();
}

bool Control::takesInput() const
{
    if (!Visible() || !Enabled())
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
