#include "platform/qt/toolkit/LateUpdate.h"

#include "platform/qt/toolkit/DesktopState.h"

#include <utility>

namespace trovarium {

LateUpdate::LateUpdate(DesktopState& state, std::function<void()> update)
    : m_state(state)
    , m_update(std::move(update))
{
}

LateUpdate::~LateUpdate()
{
    cancel();
}

void LateUpdate::schedule()
{
    if (!std::exchange(m_due, true))
        m_state.addLate(*this);
}

void LateUpdate::flush()
{
    if (!m_due)
        return;
    cancel();
    m_update();
}

void LateUpdate::cancel()
{
    if (std::exchange(m_due, false))
        m_state.forget(*this);
}

} // namespace trovarium
