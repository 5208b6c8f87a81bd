// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/files/AtomicFile.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <csignal>
#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <linux/fs.h>
#include <sys/ioctl.h>
#include <sys/xattr.h>
#include <unistd.h>
#include <vector>

namespace trovarium {

namespace {

constexpr std::size_t ChunkBytes = 1 << 17;  // read and written at a time
constexpr std::size_t KernelBytes = 1 << 26; // copied by one call

constexpr std::string_view HiddenHead = ".new-"; // then the process, "-", a number
constexpr const char* OpenFiles = "/proc/self/fd/";
constexpr const char* AccessList = "system.posix_acl_access";
constexpr mode_t AllRights = 07777;
constexpr int MaxLinks = 40; // the system's own limit
constexpr mode_t PlainRights = 0777;

} // namespace

void writeAll(const Descriptor& file, std::string_view& bytes, Attempted attempted)
{
    while (!bytes.empty()) {
        const ssize_t count = ::write(file.handle(), bytes.data(), bytes.size());
        if (count < 0 && errno != EINTR)
            failNow(attempted);
        bytes.remove_prefix(static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
    }
}

AtomicFile::AtomicFile(const std::string& folder, mode_t mode, Attempted attempted)
    : m_folder(folder)
    , m_attempted(attempted)
{
    static const bool canGetName = access(OpenFiles, X_OK) == 0;
    if (canGetName)
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
    writeAll(m_descriptor, bytes, m_attempted);
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

    // The kernel can't copy between every two file systems, and may stop short of the end: the rest is read and
    // written.
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

bool AtomicFile::copyOwnership(const std::string& other, const struct stat& status)
{
    struct stat own = {};
    check(fstat(m_descriptor.handle(), &own) == 0);
    const bool isOwned = own.st_uid == status.st_uid && own.st_gid == status.st_gid;
    if (!isOwned && fchown(m_descriptor.handle(), status.st_uid, status.st_gid) != 0)
        return false;
    // The ACL first: with one, the group bits of the mode are its mask.
    return copyAccessList(other) && fchmod(m_descriptor.handle(), status.st_mode & AllRights) == 0;
}

// The rights of further users and groups (POSIX ACL). If the other file has none, the folder's default ones are
// removed: they would let more people read the file than before.
bool AtomicFile::copyAccessList(const std::string& other)
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
    // Some file systems report a full disk only at a close. A duplicate is closed, since a nameless file must stay
    // open.
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
    int number = 0;
    while (linkTo(hiddenName(number)) != 0) {
        check(errno == EEXIST);
        ++number;
    }
    m_name = hiddenName(number);
}

std::string AtomicFile::hiddenName(int number) const
{
    return joinNative(m_folder, std::string(HiddenHead) + std::to_string(getpid()) + "-" + std::to_string(number));
}

int AtomicFile::linkTo(const std::string& name) const
{
    // Some systems allow this call to root alone; the way through /proc serves everybody.
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
    // The file system doesn't support RENAME_NOREPLACE.
    struct stat status = {};
    if (lstat(to.c_str(), &status) == 0) {
        errno = EEXIST;
        return -1;
    }
    return std::rename(from.c_str(), to.c_str());
}

NativePath followLinks(std::string native)
{
    for (int links = 0; links < MaxLinks; ++links) {
        std::error_code error;
        const std::string target = std::filesystem::read_symlink(native, error);
        if (error)
            return splitNative(native);
        native = target.starts_with('/') ? target : joinNative(splitNative(native).folder, target);
    }
    throw Failure(FailureKind::FileNotFound);
}

std::string readWhole(const Descriptor& file, std::int64_t most)
{
    struct stat status = {};
    if (fstat(file.handle(), &status) != 0)
        failNow(Attempted::Access);
    if (!S_ISREG(status.st_mode)) // which would read as empty
        throw Failure(FailureKind::PathFileAccess);
    if (status.st_size > most)
        throw Failure(FailureKind::OutOfMemory);
    std::string bytes(static_cast<std::size_t>(status.st_size), '\0');
    std::size_t done = 0;
    while (done < bytes.size()) {
        const ssize_t count = read(file.handle(), bytes.data() + done, bytes.size() - done);
        if (count < 0 && errno != EINTR)
            failNow(Attempted::Access);
        if (count == 0)
            break;
        done += static_cast<std::size_t>(std::max<ssize_t>(count, 0));
    }
    bytes.resize(done);
    return bytes;
}

namespace {

bool holds(const std::string& native, std::string_view bytes)
{
    const Descriptor file(open(native.c_str(), O_RDONLY | O_NOFOLLOW | O_CLOEXEC | O_NONBLOCK));
    return file.isOpen() && readWhole(file) == bytes;
}

void cutAt(const Descriptor& file, std::size_t size)
{
    if (ftruncate(file.handle(), static_cast<off_t>(size)) != 0)
        failNow(Attempted::Access);
}

// In place, for a file that can't be replaced. The part beyond the old length is written first: if the disk is full,
// the old bytes are still there.
void overwrite(const std::string& native, std::string_view bytes)
{
    const Descriptor file(open(native.c_str(), O_WRONLY | O_NOFOLLOW | O_CLOEXEC | O_NONBLOCK));
    struct stat status = {};
    if (!file.isOpen() || fstat(file.handle(), &status) != 0)
        failNow(Attempted::Access);
    const auto before = static_cast<std::size_t>(status.st_size);
    const std::size_t common = std::min(before, bytes.size());
    const auto writeFrom = [&](std::size_t offset, std::string_view part) {
        if (lseek(file.handle(), static_cast<off_t>(offset), SEEK_SET) < 0)
            failNow(Attempted::Access);
        writeAll(file, part, Attempted::Access);
    };
    if (const auto failure = attempt([&] { writeFrom(common, bytes.substr(common)); })) {
        cutAt(file, before);
        throw Failure(*failure);
    }
    writeFrom(0, bytes.substr(0, common));
    cutAt(file, bytes.size());
    if (fdatasync(file.handle()) != 0)
        failNow(Attempted::Access);
}

// Puts the folder's entry on the disk, too. Errors are ignored: without this a loss of power leaves the old file.
void syncFolder(const std::string& folder)
{
    const Descriptor opened(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (opened.isOpen())
        fsync(opened.handle());
}

void writeAndCommit(AtomicFile& file, const NativePath& place, std::string_view bytes, Sync sync,
    const std::function<void()>& beforeCommit)
{
    file.write(bytes);
    if (sync == Sync::Yes)
        file.sync();
    beforeCommit();
    file.commit(place.whole(), AtomicFile::Existing::Replace);
    if (sync == Sync::Yes)
        syncFolder(place.folder);
}

// Creates the file that replaces `old`. False where the folder takes no new file, the owner can't be kept, or `old` has
// a second name (hard link), which would keep the old content.
bool prepareReplacement(std::optional<AtomicFile>& file, const NativePath& place, const struct stat& old)
{
    if (old.st_nlink > 1)
        return false;
    const auto refused = attempt([&] { file.emplace(place.folder, old.st_mode & PlainRights, Attempted::Access); });
    if (refused && refused->kind() != FailureKind::PathFileAccess)
        throw Failure(*refused);
    return file && file->copyOwnership(place.whole(), old);
}

} // namespace

void writeFileAtomically(const NativePath& place, const std::optional<struct stat>& old, std::string_view bytes,
    unsigned rights, Sync sync, const std::function<void()>& beforeCommit)
{
    const std::string native = place.whole();
    std::optional<AtomicFile> file;
    if (!old) {
        file.emplace(place.folder, rights, Attempted::Access);
        writeAndCommit(*file, place, bytes, sync, beforeCommit);
    } else if (static_cast<std::size_t>(old->st_size) == bytes.size() && holds(native, bytes)) {
        // Same content: only the date is set.
        beforeCommit();
        if (utimensat(AT_FDCWD, native.c_str(), nullptr, AT_SYMLINK_NOFOLLOW) != 0)
            failNow(Attempted::Access);
    } else if (prepareReplacement(file, place, *old)) {
        writeAndCommit(*file, place, bytes, sync, beforeCommit);
    } else {
        beforeCommit();
        overwrite(native, bytes);
    }
}

} // namespace trovarium
