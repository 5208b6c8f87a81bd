#pragma once

#include "platform/files/Descriptor.h"

#include <string_view>

namespace trovarium {

// Keeps a folder for this process until the object ends. The lock is on the folder itself: it leaves no file behind,
// and a killed process leaves no lock.
class FolderLock {
public:
    // False when somebody else has the folder. A file system that knows no such lock is no hindrance.
    bool take(std::string_view folder);

private:
    Descriptor m_folder;
};

} // namespace trovarium
