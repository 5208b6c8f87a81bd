#include "platform/qt/toolkit/ContainerView.h"

#include "platform/qt/toolkit/Pointers.h"

namespace trovarium {

ContainerView::ContainerView(Control& control, SurfaceView* surface)
    : WidgetView(control, surface)
    , m_surface(surface)
{
}

ContainerView::~ContainerView()
{
    if (m_surface)
        m_surface->detach();
}

void ContainerView::apply(Change change)
{
    WidgetView::apply(change);
    if (change == Change::Content || change == Change::Appearance)
        m_surface->addDirty(m_surface->rect());
    if (change == Change::Hint)
        pointerChangedOn(*m_surface->container());
}

void ContainerView::pointerChanged()
{
    m_surface->updatePointer();
}

} // namespace trovarium
