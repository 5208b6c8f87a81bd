#include "platform/files/AtomicFile.h"

#include <array>
#include <cerrno>
#include <charconv>
#include <csignal>
#include <cstdio>
#include <fcntl.h>
#include <linux/fs.h>
#include <string>
#include <sys/ioctl.h>
#include <sys/xattr.h>
#include <vector>

namespace trovarium {

namespace {

constexpr std::size_t ChunkBytes = 1 << 17;
constexpr std::size_t KernelBytes = 1 << 26;

constexpr std::string_view HiddenHead = ".new-"; // then the process, "-", a number
constexpr const char* OpenFiles = "/proc/self/fd/";
constexpr const char* AccessList = "system.posix_acl_access";
constexpr mode_t AllRights = 07777;

} // namespace

AtomicFile::AtomicFile(const std::string& folder, mode_t mode, Attempted attempted)
    : m_folder(folder)
    , m_attempted(attempted)
{
    if (access(OpenFiles, X_OK) == 0)
        m_descriptor = Descriptor(open(folder.c_str(), O_WRONLY | O_TMPFILE | O_CLOEXEC, mode));
    for (int number = 0; !m_descriptor.isOpen(); ++number) {
        m_name = hiddenName(number);
        m_descriptor = Descriptor(open(m_name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode));
        check(m_descriptor.isOpen() || errno == EEXIST);
    }
}

AtomicFile::~AtomicFile()
{
    if (!m_name.empty())
        unlink(m_name.c_str());
}

void AtomicFile::write(std::string_view bytes)
{
    while (!bytes.empty()) {
        const ssize_t count = ::write(m_descriptor.handle(), bytes.data(), bytes.size());
        check(count >= 0 || errno == EINTR);
        if (count > 0)
            bytes.remove_prefix(static_cast<std::size_t>(count));
    }
}

void AtomicFile::copyContent(const Descriptor& source)
{
    if (ioctl(m_descriptor.handle(), FICLONE, source.handle()) == 0)
        return;
    ssize_t count = 0;
    do {
        count = copy_file_range(source.handle(), nullptr, m_descriptor.handle(), nullptr, KernelBytes, 0);
    } while (count > 0 || (count < 0 && errno == EINTR));
    check(count == 0 || (errno != ENOSPC && errno != EDQUOT && errno != EIO && errno != EFBIG));

    // Where the kernel can't copy between the two, or stopped short of the end, by hand from there on.
    std::vector<char> chunk;
    for (;;) {
        chunk.resize(ChunkBytes);
        count = read(source.handle(), chunk.data(), chunk.size());
        check(count >= 0 || errno == EINTR);
        if (count == 0)
            return;
        if (count > 0)
            write(std::string_view(chunk.data(), static_cast<std::size_t>(count)));
    }
}

void AtomicFile::setModified(const timespec& time)
{
    timespec times[2] = {};
    times[0].tv_nsec = UTIME_OMIT;
    times[1] = time;
    check(futimens(m_descriptor.handle(), times) == 0);
}

bool AtomicFile::belongsAs(const std::string& other, const struct stat& status)
{
    struct stat own = {};
    check(fstat(m_descriptor.handle(), &own) == 0);
    const bool isOwned = own.st_uid == status.st_uid && own.st_gid == status.st_gid;
    if (!isOwned && fchown(m_descriptor.handle(), status.st_uid, status.st_gid) != 0)
        return false;
    // The list first: it says who the rights of the group in the mode are for.
    return takesListOf(other) && fchmod(m_descriptor.handle(), status.st_mode & AllRights) == 0;
}

// The rights of further users and groups. Where the other has none, those that the folder gives to what is new in it
// go: they would open the file to more than could read it before.
bool AtomicFile::takesListOf(const std::string& other)
{
    std::array<char, 4096> list{};
    const ssize_t size = getxattr(other.c_str(), AccessList, list.data(), list.size());
    if (size >= 0)
        return fsetxattr(m_descriptor.handle(), AccessList, list.data(), static_cast<std::size_t>(size), 0) == 0;
    const auto hasNone = [] { return errno == ENODATA || errno == ENOTSUP; };
    return hasNone() && (fremovexattr(m_descriptor.handle(), AccessList) == 0 || hasNone());
}

void AtomicFile::sync()
{
    check(fdatasync(m_descriptor.handle()) == 0);
}

void AtomicFile::commit(const std::string& target, Existing existing)
{
    // Some file systems tell of a full disk only at a close, and without a name it must stay open until it has one.
    check(Descriptor(dup(m_descriptor.handle())).close() == 0);
    if (m_name.empty()) {
        if (linkTo(target) == 0)
            return;
        check(errno == EEXIST && existing == Existing::Replace);
        takeHiddenName();
    }
    check(
        (existing == Existing::Replace ? std::rename(m_name.c_str(), target.c_str()) : renameToFreeName(m_name, target))
        == 0);
    m_name.clear();
}

void AtomicFile::takeHiddenName()
{
    std::string name;
    for (int number = 0;; ++number) {
        name = hiddenName(number);
        if (linkTo(name) == 0)
            break;
        check(errno == EEXIST);
    }
    m_name = name;
}

std::string AtomicFile::hiddenName(int number) const
{
    return joinNative(m_folder, std::string(HiddenHead) + std::to_string(getpid()) + "-" + std::to_string(number));
}

int AtomicFile::linkTo(const std::string& name) const
{
    // The short way isn't open to every user on every system.
    const int result = linkat(m_descriptor.handle(), "", AT_FDCWD, name.c_str(), AT_EMPTY_PATH);
    if (result == 0 || errno == EEXIST)
        return result;
    const std::string file = OpenFiles + std::to_string(m_descriptor.handle());
    return linkat(AT_FDCWD, file.c_str(), AT_FDCWD, name.c_str(), AT_SYMLINK_FOLLOW);
}

void AtomicFile::check(bool done) const
{
    if (!done)
        failNow(m_attempted);
}

bool isLeftOver(std::string_view name)
{
    if (!name.starts_with(HiddenHead))
        return false;
    const char* const end = name.data() + name.size();
    pid_t process = 0;
    int number = 0;
    const auto first = std::from_chars(name.data() + HiddenHead.size(), end, process);
    if (first.ec != std::errc() || process <= 0 || first.ptr == end || *first.ptr != '-')
        return false;
    const auto second = std::from_chars(first.ptr + 1, end, number);
    return second.ec == std::errc() && second.ptr == end && kill(process, 0) != 0 && errno == ESRCH;
}

int renameToFreeName(const std::string& from, const std::string& to)
{
    const int result = renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE);
    if (result == 0 || (errno != EINVAL && errno != ENOSYS))
        return result;
    // A file system that knows no such rename.
    struct stat status = {};
    if (lstat(to.c_str(), &status) == 0) {
        errno = EEXIST;
        return -1;
    }
    return std::rename(from.c_str(), to.c_str());
}

} // namespace trovarium
