#include "platform/files/FolderReader.h"

#include "platform/files/NativeErrors.h"

#include <cerrno>
#include <fcntl.h>

namespace trovarium {

FolderReader::FolderReader(const std::string& folder)
    : m_stream(opendir(folder.c_str()))
{
}

struct stat FolderReader::status() const
{
    struct stat status = {};
    if (fstat(dirfd(m_stream.get()), &status) != 0)
        failNow(Attempted::Access);
    return status;
}

std::optional<FolderReader::Entry> FolderReader::next()
{
    for (;;) {
        errno = 0;
        const dirent* entry = readdir(m_stream.get());
        if (entry == nullptr) {
            if (errno != 0)
                failNow(Attempted::Access);
            return std::nullopt;
        }
        const std::string_view name(entry->d_name);
        if (name != "." && name != "..")
            return Entry{name, entry->d_type};
    }
}

std::optional<FolderEntry::Kind> FolderReader::kindOf(const Entry& entry) const
{
    using Kind = FolderEntry::Kind;
    if (entry.type == DT_REG)
        return Kind::File;
    if (entry.type == DT_DIR)
        return Kind::Folder;
    if (entry.type != DT_LNK && entry.type != DT_UNKNOWN)
        return std::nullopt;

    // The stream holds the name with its NUL behind it.
    const char* name = entry.name.data();
    const int folder = dirfd(m_stream.get());
    struct stat status = {};
    if (fstatat(folder, name, &status, AT_SYMLINK_NOFOLLOW) != 0)
        return errno == ENOENT ? std::nullopt : std::optional(Kind::Unknown);
    if (S_ISDIR(status.st_mode))
        return Kind::Folder;
    if (S_ISLNK(status.st_mode) && fstatat(folder, name, &status, 0) != 0)
        return std::nullopt;
    return S_ISREG(status.st_mode) ? std::optional(Kind::File) : std::nullopt;
}

} // namespace trovarium
