#include "store/Album.h"

#include "runtime/Failure.h"

namespace trovarium {

COWReg& Album::Settings() const
{
    if (settingsStore == nullptr)
        throw Failure(FailureKind::ObjectNotSet);
    return *settingsStore;
}

} // namespace trovarium
