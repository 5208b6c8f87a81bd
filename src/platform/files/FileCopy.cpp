#include "platform/files/FileCopy.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <linux/fs.h>
#include <string>
#include <sys/ioctl.h>
#include <vector>

namespace trovarium {

namespace {

constexpr std::size_t ChunkBytes = 1 << 17;
constexpr std::size_t KernelBytes = 1 << 26;

} // namespace

NewFile::NewFile(const std::string& folder, mode_t mode, Attempted attempted)
    : m_attempted(attempted)
{
    for (int number = 0; !m_descriptor.isOpen(); ++number) {
        m_name = joinNative(folder, ".new-" + std::to_string(getpid()) + "-" + std::to_string(number));
        m_descriptor = Descriptor(open(m_name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode));
        check(m_descriptor.isOpen() || errno == EEXIST);
    }
}

NewFile::~NewFile()
{
    if (!m_name.empty())
        unlink(m_name.c_str());
}

void NewFile::write(std::string_view bytes)
{
    while (!bytes.empty()) {
        const ssize_t count = ::write(m_descriptor.handle(), bytes.data(), bytes.size());
        check(count >= 0 || errno == EINTR);
        if (count > 0)
            bytes.remove_prefix(static_cast<std::size_t>(count));
    }
}

void NewFile::copyContent(const Descriptor& source)
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

void NewFile::setModified(const timespec& time)
{
    timespec times[2] = {};
    times[0].tv_nsec = UTIME_OMIT;
    times[1] = time;
    check(futimens(m_descriptor.handle(), times) == 0);
}

void NewFile::becomes(const std::string& target, Existing existing)
{
    check(m_descriptor.close() == 0);
    const int result =
        existing == Existing::Replace ? std::rename(m_name.c_str(), target.c_str()) : renameToFreeName(m_name, target);
    if (result != 0 && errno == EEXIST)
        throw Failure(FailureKind::FileAlreadyExists);
    check(result == 0);
    m_name.clear();
}

void NewFile::check(bool done) const
{
    if (!done)
        failNow(m_attempted);
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
