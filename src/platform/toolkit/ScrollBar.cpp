#include "platform/toolkit/ScrollBar.h"

#include "runtime/Failure.h"

#include <algorithm>
#include <cstdint>
#include <limits>

namespace trovarium {

ScrollBar::ScrollBar(Container* parent, const Plan& plan, trovarium::Orientation orientation)
    : Control(parent, plan)
    , m_orientation(orientation)
{
}

void ScrollBar::setValue(int value)
{
    if (value < Min() || value > upperEnd())
        throw Failure(FailureKind::InvalidPropertyValue);
    if (value != m_value)
        settle(value);
}

void ScrollBar::page(int steps)
{
    if (!takesInput() || !isShown())
        return;
    const std::int64_t target = m_value + std::int64_t{steps} * LargeChange();
    released(static_cast<int>(
        std::clamp<std::int64_t>(target, std::numeric_limits<int>::min(), std::numeric_limits<int>::max())));
}

void ScrollBar::dragged(int value)
{
    value = std::clamp(value, Min(), upperEnd());
    if (value == m_value)
        return;
    m_value = value;
    changed(trovarium::Change::Content);
    Scroll.raise();
}

void ScrollBar::released(int value)
{
    value = std::clamp(value, Min(), upperEnd());
    const bool moved = value != m_value; // not at the end of a drag
    m_value = value;
    if (value != m_settledValue)
        settle(value);
    if (moved)
        Scroll.raise();
}

// Where an end has moved past it, Value moves along.
void ScrollBar::changed(trovarium::Change change)
{
    Control::changed(change);
    const int value = std::clamp(m_value, Min(), upperEnd());
    if (change == trovarium::Change::Appearance && value != m_value)
        settle(value);
}

int ScrollBar::upperEnd() const
{
    return std::max(Min(), Max());
}

void ScrollBar::settle(int value)
{
    m_value = value;
    m_settledValue = value;
    changed(trovarium::Change::Content);
    Change.raise();
}

} // namespace trovarium
