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

void ScrollBar::setMinimum(int value)
{
    m_min = value;
    clamp();
}

void ScrollBar::setMaximum(int value)
{
    m_max = value;
    clamp();
}

void ScrollBar::setValue(int value)
{
    if (value < m_min || value > upperEnd())
        throw Failure(FailureKind::InvalidPropertyValue);
    if (value != m_value)
        settle(value);
}

void ScrollBar::setSmallChange(int value)
{
    if (value < 1)
        throw Failure(FailureKind::InvalidPropertyValue);
    m_smallChange = value;
    changed(trovarium::Change::Appearance);
}

void ScrollBar::setLargeChange(int value)
{
    if (value < 1)
        throw Failure(FailureKind::InvalidPropertyValue);
    m_largeChange = value;
    changed(trovarium::Change::Appearance);
}

void ScrollBar::page(int steps)
{
    if (!takesInput() || !isShown())
        return;
    const std::int64_t target = m_value + std::int64_t{steps} * m_largeChange;
    released(static_cast<int>(
        std::clamp<std::int64_t>(target, std::numeric_limits<int>::min(), std::numeric_limits<int>::max())));
}

void ScrollBar::dragged(int value)
{
    value = std::clamp(value, m_min, upperEnd());
    if (value == m_value)
        return;
    m_value = value;
    changed(trovarium::Change::Content);
    Scroll.raise();
}

void ScrollBar::released(int value)
{
    value = std::clamp(value, m_min, upperEnd());
    m_value = value;
    if (value != m_settledValue)
        settle(value);
}

int ScrollBar::upperEnd() const
{
    return std::max(m_min, m_max);
}

void ScrollBar::clamp()
{
    changed(trovarium::Change::Appearance);
    const int value = std::clamp(m_value, m_min, upperEnd());
    if (value != m_value)
        settle(value);
}

void ScrollBar::settle(int value)
{
    m_value = value;
    m_settledValue = value;
    changed(trovarium::Change::Content);
    Change.raise();
}

} // namespace trovarium
