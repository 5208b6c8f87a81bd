#include "platform/files/FileServiceState.h"
#include "runtime/Text.h"

#include <cstdio>
#include <fcntl.h>
#include <unistd.h>

namespace trovarium {

namespace {

// The ending of the files that a person may keep elsewhere and link to; empty for all others.
std::string_view endingOfLinked(std::string_view nativeName)
{
    for (const std::string_view ending : {".lst", ".info"}) {
        if (equalInCapitals(right(nativeName, ending.size()), ending))
            return ending;
    }
    return {};
}

} // namespace

// A library may come from somebody else, with links that lead to any file of the user's. So nothing is written through
// a link but a list or an information file, and only to a file that is one itself.
FileService::State::Target FileService::State::writable(std::string_view path)
{
    Target target;
    target.place = resolver.exact(nativeAsWritten(path));
    target.native = target.place.whole();
    struct stat status = {};
    if (!isThere(lstat(target.native.c_str(), &status)))
        return target;
    if (S_ISLNK(status.st_mode)) {
        const std::string_view ending = endingOfLinked(target.place.leaf);
        target.isLink = ending.empty();
        if (target.isLink)
            return target;
        target.place = linkEnd(target.native);
        target.native = target.place.whole();
        if (endingOfLinked(target.place.leaf) != ending || lstat(target.native.c_str(), &status) != 0)
            throw Failure(FailureKind::PathFileAccess);
    }
    target.status = status;
    return target;
}

void FileService::State::refuseReplacing(const Target& target, const struct stat& source, ReadOnlyTarget readOnly) const
{
    if (!target.status)
        return;
    const bool stays = readOnly == ReadOnlyTarget::Stays && access(target.native.c_str(), W_OK) != 0;
    if (!isRegular(*target.status) || isOneFile(source, *target.status) || isInUse(*target.status) || stays)
        throw Failure(FailureKind::PermissionDenied);
}

void FileService::State::copy(
    const Descriptor& source, const struct stat& status, const NativePath& place, AtomicFile::Existing existing)
{
    made(place, [&] {
        AtomicFile file(place.folder, (status.st_mode & NewFileMode) | S_IWUSR, Attempted::Change);
        file.copyContent(source);
        file.setModified(status.st_mtim);
        file.commit(place.whole(), existing);
    });
}

// On a file system without case both names lead to the one entry.
bool FileService::State::isSameInOtherCase(const Target& from, const Target& to) const
{
    struct stat own = {}; // not that of a file which a link leads to
    return to.status && lstat(from.native.c_str(), &own) == 0 && isOneFile(own, *to.status) && own.st_nlink == 1
        && from.place.folder == to.place.folder && from.place.leaf != to.place.leaf
        && equalInCapitals(nameInside(from.place.leaf), nameInside(to.place.leaf));
}

void FileService::State::moveAcross(const Target& from, const Target& to)
{
    if (!isRegular(*from.status))
        throw Failure(FailureKind::PermissionDenied);
    const Descriptor source(::open(from.native.c_str(), O_RDONLY | O_CLOEXEC));
    if (!source.isOpen())
        failNow(Attempted::Change);
    copy(source, *from.status, to.place, AtomicFile::Existing::Keep);
    gone(from.place, [&] {
        if (unlink(from.native.c_str()) == 0)
            return;
        const int error = errno;
        unlink(to.native.c_str());
        throw Failure(failureKind(error, Attempted::Change));
    });
}

void FileService::State::writeFileAtomically(std::string_view path, std::string_view bytes, Sync sync)
{
    checkFault(FileOperation::Open, path);
    const Target target = writable(path);
    if (target.status && isInUse(*target.status))
        throw Failure(FailureKind::FileAlreadyOpen);
    if (target.status && (!isRegular(*target.status) || access(target.native.c_str(), W_OK) != 0))
        throw Failure(FailureKind::PathFileAccess);
    checkFault(FileOperation::Print, path);
    const auto whenWhole = [&] { checkFault(FileOperation::Close, path); };
    made(target.place, [&] { trovarium::writeFileAtomically(target.place, target.status, bytes, sync, whenWhole); });
}

void FileService::writeFileAtomically(std::string_view path, std::string_view bytes, Sync sync)
{
    m_state->writeFileAtomically(path, bytes, sync);
}

void FileService::writeLines(std::string_view path, const std::vector<std::string>& lines, Sync sync)
{
    std::string bytes;
    for (const std::string& line : lines)
        bytes.append(encodeLine(line)).append("\r\n");
    m_state->writeFileAtomically(path, bytes, sync);
}

void FileService::replaceContent(std::string_view path, std::string_view source)
{
    m_state->checkFault(FileOperation::Copy, path);
    m_state->writeFileAtomically(path, readWhole(m_state->openForReading(source)), Sync::Yes);
}

void FileService::setModified(std::string_view path, Instant instant)
{
    m_state->checkFault(FileOperation::SetDate, path);
    timespec times[2] = {};
    times[0].tv_nsec = UTIME_OMIT;
    times[1].tv_sec = instant.time_since_epoch().count();
    const State::Target target = m_state->target(path);
    if (utimensat(AT_FDCWD, target.native.c_str(), times, AT_SYMLINK_NOFOLLOW) != 0)
        failNow(Attempted::Access);
}

void FileService::copy(std::string_view source, std::string_view target, ReadOnlyTarget readOnly)
{
    m_state->checkFault(FileOperation::Copy, target);
    refuseEmpty(source);
    refuseEmpty(target);
    Descriptor descriptor;
    m_state->onReadable(source, Attempted::Change, [&](const std::string& native) {
        descriptor = Descriptor(::open(native.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
        return descriptor.handle();
    });
    struct stat status = {};
    if (fstat(descriptor.handle(), &status) != 0)
        failNow(Attempted::Change);
    if (!isRegular(status))
        throw Failure(FailureKind::FileNotFound);
    const State::Target place = m_state->target(target);
    if (m_state->isInUse(status))
        throw Failure(FailureKind::PermissionDenied);
    m_state->refuseReplacing(place, status, readOnly);
    m_state->copy(descriptor, status, place.place, AtomicFile::Existing::Replace);
}

void FileService::remove(std::string_view path)
{
    m_state->checkFault(FileOperation::Delete, path);
    const State::Target target = m_state->target(path);
    if (!target.status || !isRegular(*target.status))
        throw Failure(FailureKind::FileNotFound);
    if (m_state->isInUse(*target.status))
        throw Failure(FailureKind::PermissionDenied);
    m_state->gone(target.place, [&] {
        if (unlink(target.native.c_str()) != 0)
            failNow(Attempted::Change);
    });
}

void FileService::removeLink(std::string_view path)
{
    m_state->checkFault(FileOperation::Delete, path);
    const NativePath place = m_state->resolver.exact(nativeAsWritten(path));
    struct stat status = {};
    if (!isThere(lstat(place.whole().c_str(), &status)) || !S_ISLNK(status.st_mode))
        return;
    m_state->gone(place, [&] {
        if (unlink(place.whole().c_str()) != 0)
            failNow(Attempted::Change);
    });
}

void FileService::rename(std::string_view from, std::string_view to)
{
    m_state->checkFault(FileOperation::Rename, from);
    const State::Target source = m_state->target(from);
    if (!source.status)
        throw Failure(FailureKind::FileNotFound);
    if (m_state->isInUse(*source.status))
        throw Failure(FailureKind::PermissionDenied);
    const State::Target target = m_state->target(to);
    bool betweenFileSystems = false;
    const auto move = [&] {
        const int result = m_state->isSameInOtherCase(source, target)
            ? std::rename(source.native.c_str(), target.native.c_str())
            : renameToFreeName(source.native, target.native);
        betweenFileSystems = result != 0 && errno == EXDEV;
        if (result != 0 && !betweenFileSystems)
            failNow(Attempted::Change);
    };
    m_state->resolver.listings().carry(
        {{FolderListings::Edit::What::Gone, source.place}, {FolderListings::Edit::What::Made, target.place}}, move);
    if (betweenFileSystems)
        m_state->moveAcross(source, target);
    if (S_ISDIR(source.status->st_mode))
        m_state->resolver.listings().clear();
}

void FileService::makeFolder(std::string_view path)
{
    m_state->checkFault(FileOperation::MakeFolder, path);
    const std::string native(withoutEndSlashes(nativeAsWritten(path)));
    // A library from a file system without case must not get an empty folder beside its full one.
    if (native.empty() || !attempt([&] { m_state->resolver.folder(native); }))
        throw Failure(FailureKind::PathFileAccess);
    const NativePath place = m_state->resolver.exact(native);
    m_state->made(place, [&] {
        if (mkdir(place.whole().c_str(), 0777) != 0)
            failNow(Attempted::Access);
    });
}

void FileService::removeLeftOvers(std::string_view folder)
{
    m_state->checkFault(FileOperation::Delete, folder);
    const std::string native =
        m_state->resolver.folder(splitNative(nativeAsWritten(std::string(folder) + "\\")).folder);
    std::erase_if(m_state->leftOvers,
        [&](const std::string& file) { return splitNative(file).folder == native && unlink(file.c_str()) == 0; });
}

} // namespace trovarium
