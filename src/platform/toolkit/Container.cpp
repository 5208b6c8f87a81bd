#include "platform/toolkit/Container.h"

#include <algorithm>

namespace trovarium {

Container::Container(ScaleMode scale)
    : m_scale(scale)
{
}

Container::~Container() = default;

void Container::adopt(Control* control)
{
    m_controls.push_back(control);
}

void Container::abandon(Control* control)
{
    std::erase(m_controls, control);
}

void Container::raiseToTop(Control* control)
{
    const auto found = std::find(m_controls.begin(), m_controls.end(), control);
    if (found != m_controls.end())
        std::rotate(found, found + 1, m_controls.end());
}

} // namespace trovarium
