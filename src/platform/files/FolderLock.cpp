#include "platform/files/FolderLock.h"

#include "platform/files/Paths.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>

namespace trovarium {

bool FolderLock::take(std::string_view folder)
{
    m_folder = Descriptor(open(nativeAsWritten(folder).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    return !m_folder.isOpen() || flock(m_folder.handle(), LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
}

} // namespace trovarium
