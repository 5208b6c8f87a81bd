#include "platform/toolkit/FormSlot.h"

#include "platform/qt/toolkit/DesktopState.h"

namespace trovarium {

FormSlotBase::~FormSlotBase() = default;

void FormSlotBase::release()
{
    m_form->setSlot(nullptr);
    m_desktop.state().graveyard.push_back(std::move(m_form));
}

void FormSlotBase::hold(std::unique_ptr<Form> form)
{
    form->setSlot(this);
    m_form = std::move(form);
}

} // namespace trovarium
