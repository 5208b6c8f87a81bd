// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/files/Descriptor.h"
#include "platform/files/Paths.h"

#include <cerrno>
#include <fcntl.h>
#include <string_view>
#include <sys/file.h>

namespace trovarium {

// Keeps a folder for this process until the object ends. The lock is on the folder itself: it leaves no file behind,
// and a killed process leaves no lock.
class FolderLock {
public:
    // False when another process has the folder. True on a file system without such locks.
    bool take(std::string_view folder)
    {
        m_folder = Descriptor(open(nativeAsWritten(folder).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
        return !m_folder.isOpen() || flock(m_folder.handle(), LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
    }

private:
    Descriptor m_folder;
};

} // namespace trovarium
