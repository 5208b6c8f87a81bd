#include "platform/toolkit/FormSlot.h"

#include "platform/qt/toolkit/DesktopState.h"

namespace trovarium {

// What its forms work on may go with the slot.
FormSlotBase::~FormSlotBase()
{
    DesktopState& state = m_desktop.state();
    if (state.frames == 0)
        std::erase_if(state.graveyard, [this](const DesktopState::Grave& grave) { return grave.slot == this; });
}

void FormSlotBase::release()
{
    m_form->setSlot(nullptr);
    m_desktop.state().graveyard.push_back({std::move(m_form), this});
}

void FormSlotBase::hold(std::unique_ptr<Form> form)
{
    form->setSlot(this);
    m_form = std::move(form);
}

} // namespace trovarium
