#include "platform/qt/toolkit/ItemView.h"

#include "platform/qt/toolkit/Accessibility.h"
#include "platform/qt/toolkit/DesktopState.h"
#include "platform/qt/toolkit/Pointers.h"
#include "platform/toolkit/Form.h"

#include <QPainter>

#include <cmath>

namespace trovarium {

ItemView::ItemView(Control& control)
    : View(control)
    , m_surface(*control.parent().surface())
{
    m_surface.addItem(*this);
}

ItemView::~ItemView()
{
    if (m_accessibleId != 0)
        QAccessible::deleteAccessibleInterface(m_accessibleId);
    m_surface.addDirty(m_painted);
    m_surface.removeItem(*this);
}

void ItemView::apply(Change change)
{
    switch (change) {
    case Change::Geometry:
        follow(false);
        break;
    case Change::Visible:
        follow(false);
        m_surface.updateFocusPolicy();
        break;
    case Change::Order:
        m_surface.raiseItem(*this);
        follow(true);
        break;
    case Change::Enabled:
        follow(true);
        m_surface.updateFocusPolicy();
        break;
    case Change::Text:
    case Change::Appearance:
    case Change::Content:
        follow(true);
        break;
    case Change::Hint:
        m_surface.updatePointer();
        break;
    }
}

void ItemView::pointerChanged()
{
    m_surface.updatePointer();
}

// What no pixel shows dirties nothing: a bar that grows by hundredths of a pixel is painted when it
// reaches the next one.
void ItemView::follow(bool always)
{
    const QRectF now = control().Visible() ? paintedPlace(m_surface.devicePixelRatioF()) : QRectF();
    if (!always && now == m_painted)
        return;
    const bool wasOrIsSeen = !m_painted.isEmpty() || !now.isEmpty();
    if (wasOrIsSeen && m_surface.isVisible()) {
        if (!m_painted.isEmpty() && !now.isEmpty() && now.topLeft() != m_painted.topLeft())
            control().desktop().state().moved = true;
        m_surface.addDirty(m_painted);
        m_surface.addDirty(now);
    }
    m_painted = now;
}

QRectF ItemView::devicePlace(qreal ratio) const
{
    const QRectF exact = place();
    const auto rounded = [ratio](qreal value) { return std::round(value * ratio) / ratio; };
    return {
        QPointF(rounded(exact.left()), rounded(exact.top())), QPointF(rounded(exact.right()), rounded(exact.bottom()))};
}

QString ItemView::accessibleText() const
{
    return toQString(control().AccessibleName().empty() ? control().ToolTipText() : control().AccessibleName());
}

QAccessible::Id ItemView::accessibleId()
{
    if (m_accessibleId == 0)
        m_accessibleId = registerAccessible(*this);
    return m_accessibleId;
}

bool ItemView::takesInput() const
{
    return control().takesInput();
}

QRectF ItemView::place() const
{
    return placeInPixels(control());
}

int ItemView::pointer() const
{
    return effectivePointer(control());
}

std::string ItemView::toolTip() const
{
    return control().ToolTipText();
}

} // namespace trovarium
