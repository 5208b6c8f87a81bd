#include "platform/toolkit/Component.h"

#include "platform/toolkit/Form.h"

namespace trovarium {

Desktop& Component::desktop()
{
    return form().desktop();
}

} // namespace trovarium
