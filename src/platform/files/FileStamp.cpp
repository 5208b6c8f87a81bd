#include "platform/files/FileStamp.h"

#include <sys/stat.h>

namespace trovarium {

FileStamp stampOf(const struct stat& status)
{
    return {status.st_dev, status.st_ino, status.st_size, status.st_mtim.tv_sec, status.st_mtim.tv_nsec};
}

} // namespace trovarium
