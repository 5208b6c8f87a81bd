#include "platform/files/WholeFile.h"

#include "platform/files/AtomicFile.h"
#include "platform/files/NativeErrors.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <fcntl.h>
#include <unistd.h>

namespace trovarium {

namespace {

constexpr int MaxLinks = 40; // as the system has it
constexpr mode_t PlainRights = 0777;

bool holds(const std::string& native, std::string_view bytes)
{
    const Descriptor file(open(native.c_str(), O_RDONLY | O_NOFOLLOW | O_CLOEXEC | O_NONBLOCK));
    return file.isOpen() && readWhole(file) == bytes;
}

void writeAt(const Descriptor& file, std::string_view bytes, std::size_t offset)
{
    while (!bytes.empty()) {
        const ssize_t count = pwrite(file.handle(), bytes.data(), bytes.size(), static_cast<off_t>(offset));
        if (count < 0 && errno != EINTR)
            failNow(Attempted::Access);
        if (count > 0) {
            bytes.remove_prefix(static_cast<std::size_t>(count));
            offset += static_cast<std::size_t>(count);
        }
    }
}

void cutAt(const Descriptor& file, std::size_t size)
{
    if (ftruncate(file.handle(), static_cast<off_t>(size)) != 0)
        failNow(Attempted::Access);
}

// In place, for a file that can't be replaced. What is longer than before goes first, so that a full disk shows
// while the old bytes stand; from there on the file takes no more room.
void overwrite(const std::string& native, std::string_view bytes)
{
    const Descriptor file(open(native.c_str(), O_WRONLY | O_NOFOLLOW | O_CLOEXEC | O_NONBLOCK));
    struct stat status = {};
    if (!file.isOpen() || fstat(file.handle(), &status) != 0)
        failNow(Attempted::Access);
    const auto before = static_cast<std::size_t>(status.st_size);
    const std::size_t common = std::min(before, bytes.size());
    if (const auto failure = attempt([&] { writeAt(file, bytes.substr(common), common); })) {
        cutAt(file, before);
        throw Failure(*failure);
    }
    writeAt(file, bytes.substr(0, common), 0);
    cutAt(file, bytes.size());
    if (fdatasync(file.handle()) != 0)
        failNow(Attempted::Access);
}

// That the folder's entry is on the disk, too. Without it a loss of power leaves the old file, so that a file system
// that can't do this is no failure.
void syncFolder(const std::string& folder)
{
    const Descriptor opened(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (opened.isOpen())
        fsync(opened.handle());
}

void putBeside(AtomicFile& file, const NativePath& place, std::string_view bytes, Sync sync,
    const std::function<void()>& whenWhole)
{
    file.write(bytes);
    if (sync == Sync::Yes)
        file.sync();
    whenWhole();
    file.commit(place.whole(), AtomicFile::Existing::Replace);
    if (sync == Sync::Yes)
        syncFolder(place.folder);
}

// Beside a file that is there. False where no file may be made in the folder, where the owner can't be kept, and
// where the file has a second name, which is to go on naming it.
bool startBeside(std::optional<AtomicFile>& file, const NativePath& place, const struct stat& old)
{
    if (old.st_nlink > 1)
        return false;
    const auto refused = attempt([&] { file.emplace(place.folder, old.st_mode & PlainRights, Attempted::Access); });
    if (refused && refused->kind() != FailureKind::PathFileAccess)
        throw Failure(*refused);
    return file && file->belongsAs(place.whole(), old);
}

} // namespace

NativePath linkEnd(std::string native)
{
    for (int links = 0; links < MaxLinks; ++links) {
        std::array<char, PATH_MAX> target{};
        const ssize_t size = readlink(native.c_str(), target.data(), target.size());
        if (size < 0)
            return splitNative(native);
        const std::string_view leadsTo(target.data(), static_cast<std::size_t>(size));
        native = leadsTo.starts_with('/') ? std::string(leadsTo) : joinNative(splitNative(native).folder, leadsTo);
    }
    throw Failure(FailureKind::FileNotFound);
}

std::string readWhole(const Descriptor& file)
{
    struct stat status = {};
    if (fstat(file.handle(), &status) != 0)
        failNow(Attempted::Access);
    if (!S_ISREG(status.st_mode)) // which would read as empty
        throw Failure(FailureKind::PathFileAccess);
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

void writeFileAtomically(const NativePath& place, const std::optional<struct stat>& old, std::string_view bytes,
    Sync sync, const std::function<void()>& whenWhole)
{
    const std::string native = place.whole();
    std::optional<AtomicFile> file;
    if (!old) {
        file.emplace(place.folder, NewFileMode, Attempted::Access);
        putBeside(*file, place, bytes, sync, whenWhole);
    } else if (static_cast<std::size_t>(old->st_size) == bytes.size() && holds(native, bytes)) {
        // Nothing to lose or to wait for: it is dated as if it had been written.
        whenWhole();
        if (utimensat(AT_FDCWD, native.c_str(), nullptr, AT_SYMLINK_NOFOLLOW) != 0)
            failNow(Attempted::Access);
    } else if (startBeside(file, place, *old)) {
        putBeside(*file, place, bytes, sync, whenWhole);
    } else {
        whenWhole();
        overwrite(native, bytes);
    }
}

} // namespace trovarium
