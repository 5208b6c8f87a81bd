// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/files/AtomicFile.h"
#include "platform/files/FileService.h"
#include "runtime/Failure.h"
#include "runtime/Text.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <filesystem>
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

void copyTo(const NativePath& place, const Descriptor& source, const struct stat& status, AtomicFile::Existing existing)
{
    AtomicFile file(place.folder, (status.st_mode & NewFileRights) | S_IWUSR, Attempted::Change);
    file.copyContent(source);
    file.setModified(status.st_mtim);
    file.commit(place.whole(), existing);
}

} // namespace

void FileService::writeFileAtomically(std::string_view path, std::string_view bytes, Sync sync, unsigned rights)
{
    checkFault(FileOperation::Open, path);
    const Target target = writableTarget(path);
    if (target.status && isInUse(*target.status))
        throw Failure(FailureKind::FileAlreadyOpen);
    if (target.status && (!isRegular(*target.status) || access(target.native.c_str(), W_OK) != 0))
        throw Failure(FailureKind::PathFileAccess);
    checkFault(FileOperation::Print, path);
    addEntry(target.place, [&] {
        trovarium::writeFileAtomically(
            target.place, target.status, bytes, rights, sync, [&] { checkFault(FileOperation::Close, path); });
    });
}

void FileService::writeLines(std::string_view path, const std::vector<std::string>& lines, Sync sync)
{
    std::string bytes;
    for (const std::string& line : lines)
        bytes.append(encodeLine(line)).append("\r\n");
    writeFileAtomically(path, bytes, sync);
}

void FileService::replaceContent(std::string_view path, std::string_view source)
{
    checkFault(FileOperation::Copy, path);
    writeFileAtomically(path, readWhole(openForReading(source)), Sync::Yes);
}

std::optional<FileContent> FileService::contentToReplace(std::string_view path, std::int64_t most) const
{
    checkFault(FileOperation::Open, path);
    constexpr int Flags = O_RDONLY | O_NOFOLLOW | O_CLOEXEC | O_NONBLOCK;
    FileContent content;
    Descriptor file(::open(nativeAsWritten(path).c_str(), Flags));
    if (!file.isOpen()) { // a link, or in a folder of another case
        std::error_code noLink;
        content.link = std::filesystem::read_symlink(m_resolver.exact(nativeAsWritten(path)).whole(), noLink);
        Target target;
        const auto refused = attempt([&] { target = writableTarget(path); });
        if (!content.link.empty() && (refused || target.isLink))
            return FileContent{content.link, content.link};
        if (refused)
            throw Failure(*refused);
        if (!target.status)
            return {};
        file = Descriptor(::open(target.native.c_str(), Flags));
    }
    struct stat status = {};
    if (!file.isOpen() || fstat(file.handle(), &status) != 0)
        failNow(Attempted::Access);
    content.rights = status.st_mode & NewFileRights;
    content.bytes = readWhole(file, most);
    return content;
}

void FileService::makeLink(std::string_view path, const std::string& target)
{
    checkFault(FileOperation::Open, path);
    const NativePath place = m_resolver.exact(nativeAsWritten(path));
    addEntry(place, [&] {
        if (symlink(target.c_str(), place.whole().c_str()) != 0)
            failNow(Attempted::Access);
    });
}

void FileService::setModified(std::string_view path, Instant instant)
{
    checkFault(FileOperation::SetDate, path);
    timespec times[2] = {};
    times[0].tv_nsec = UTIME_OMIT;
    times[1].tv_sec = instant.time_since_epoch().count();
    if (utimensat(AT_FDCWD, target(path).native.c_str(), times, AT_SYMLINK_NOFOLLOW) != 0)
        failNow(Attempted::Access);
}

void FileService::copy(std::string_view source, std::string_view target, ReadOnlyTarget readOnly)
{
    checkFault(FileOperation::Copy, target);
    if (source.empty() || target.empty())
        throw Failure(FailureKind::FileNotFound);
    const Descriptor descriptor = openForReading(source, Attempted::Change);
    struct stat status = {};
    if (fstat(descriptor.handle(), &status) != 0)
        failNow(Attempted::Change);
    if (!isRegular(status))
        throw Failure(FailureKind::FileNotFound);
    const Target to = this->target(target);
    if (isInUse(status))
        throw Failure(FailureKind::PermissionDenied);
    refuseReplacing(to, status, readOnly);
    addEntry(to.place, [&] { copyTo(to.place, descriptor, status, AtomicFile::Existing::Replace); });
}

void FileService::remove(std::string_view path)
{
    checkFault(FileOperation::Delete, path);
    const Target target = this->target(path);
    if (!target.status || !isRegular(*target.status))
        throw Failure(FailureKind::FileNotFound);
    if (isInUse(*target.status))
        throw Failure(FailureKind::PermissionDenied);
    removeEntry(target.place);
}

void FileService::removeLink(std::string_view path)
{
    checkFault(FileOperation::Delete, path);
    const NativePath place = m_resolver.exact(nativeAsWritten(path));
    struct stat status = {};
    if (isThere(lstat(place.whole().c_str(), &status)) && S_ISLNK(status.st_mode))
        removeEntry(place);
}

void FileService::rename(std::string_view from, std::string_view to)
{
    checkFault(FileOperation::Rename, from);
    const Target source = target(from);
    if (!source.status)
        throw Failure(FailureKind::FileNotFound);
    if (isInUse(*source.status))
        throw Failure(FailureKind::PermissionDenied);
    const Target destination = target(to);
    bool isBetweenFileSystems = false;
    using enum PathResolver::Edit::What;
    m_resolver.applyChange({{Removed, source.place}, {Added, destination.place}}, [&] {
        const int result = isSameInOtherCase(source, destination)
            ? std::rename(source.native.c_str(), destination.native.c_str())
            : renameToFreeName(source.native, destination.native);
        isBetweenFileSystems = result != 0 && errno == EXDEV;
        if (result != 0 && !isBetweenFileSystems)
            failNow(Attempted::Change);
    });
    if (isBetweenFileSystems)
        moveAcross(source, destination);
    if (S_ISDIR(source.status->st_mode))
        m_resolver.forgetListings();
}

void FileService::makeFolder(std::string_view path)
{
    checkFault(FileOperation::MakeFolder, path);
    const std::string native(withoutEndSlashes(nativeAsWritten(path)));
    // One of another case counts too: the program would get an empty folder beside the full one.
    if (native.empty() || !attempt([&] { m_resolver.folder(native); }))
        throw Failure(FailureKind::PathFileAccess);
    const NativePath place = m_resolver.exact(native);
    addEntry(place, [&] {
        if (mkdir(place.whole().c_str(), 0777) != 0)
            failNow(Attempted::Access);
    });
}

void FileService::removeLeftOvers(std::string_view folder)
{
    checkFault(FileOperation::Delete, folder);
    const std::string native = m_resolver.folder(splitNative(nativeAsWritten(std::string(folder) + "\\")).folder);
    std::erase_if(m_leftOvers,
        [&](const std::string& file) { return splitNative(file).folder == native && unlink(file.c_str()) == 0; });
}

FileService::Target FileService::target(std::string_view path) const
{
    Target target;
    target.place = m_resolver.exact(nativeAsWritten(path));
    target.native = target.place.whole();
    struct stat status = {};
    if (stat(target.native.c_str(), &status) == 0)
        target.status = status;
    return target;
}

// An album may come from somebody else, with symbolic links to any file of the user. So only a list or an information
// file is written through a link, and only to a file of the same kind. Any other link is to be replaced.
FileService::Target FileService::writableTarget(std::string_view path) const
{
    Target target;
    target.place = m_resolver.exact(nativeAsWritten(path));
    target.native = target.place.whole();
    struct stat status = {};
    if (!isThere(lstat(target.native.c_str(), &status)))
        return target;
    if (S_ISLNK(status.st_mode)) {
        const std::string_view ending = endingOfLinked(target.place.leaf);
        target.isLink = ending.empty();
        if (target.isLink)
            return target;
        target.place = followLinks(target.native);
        target.native = target.place.whole();
        if (endingOfLinked(target.place.leaf) != ending || lstat(target.native.c_str(), &status) != 0)
            throw Failure(FailureKind::PathFileAccess);
    }
    target.status = status;
    return target;
}

void FileService::refuseReplacing(const Target& target, const struct stat& source, ReadOnlyTarget readOnly) const
{
    if (!target.status)
        return;
    const bool stays = readOnly == ReadOnlyTarget::Stays && access(target.native.c_str(), W_OK) != 0;
    if (!isRegular(*target.status) || isOneFile(source, *target.status) || isInUse(*target.status) || stays)
        throw Failure(FailureKind::PermissionDenied);
}

// On a case-insensitive file system both names lead to the same entry.
bool FileService::isSameInOtherCase(const Target& from, const Target& to)
{
    struct stat own = {}; // of the entry itself, also if it is a link
    return to.status && lstat(from.native.c_str(), &own) == 0 && isOneFile(own, *to.status) && own.st_nlink == 1
        && from.place.folder == to.place.folder && from.place.leaf != to.place.leaf
        && equalInCapitals(nameInside(from.place.leaf), nameInside(to.place.leaf));
}

// To another file system: copies and removes the source.
void FileService::moveAcross(const Target& from, const Target& to)
{
    if (!isRegular(*from.status))
        throw Failure(FailureKind::PermissionDenied);
    const Descriptor source(::open(from.native.c_str(), O_RDONLY | O_CLOEXEC));
    if (!source.isOpen())
        failNow(Attempted::Change);
    addEntry(to.place, [&] { copyTo(to.place, source, *from.status, AtomicFile::Existing::Keep); });
    if (const auto failure = attempt([&] { removeEntry(from.place); })) {
        unlink(to.native.c_str());
        throw Failure(*failure);
    }
}

void FileService::addEntry(const NativePath& place, const std::function<void()>& change)
{
    m_resolver.applyChange({{PathResolver::Edit::What::Added, place}}, change);
}

void FileService::removeEntry(const NativePath& place)
{
    m_resolver.applyChange({{PathResolver::Edit::What::Removed, place}}, [&] {
        if (unlink(place.whole().c_str()) != 0)
            failNow(Attempted::Change);
    });
}

} // namespace trovarium
