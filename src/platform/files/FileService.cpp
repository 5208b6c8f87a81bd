#include "platform/files/FileService.h"

#include "platform/files/Descriptor.h"
#include "platform/files/FileCopy.h"
#include "platform/files/FolderReader.h"
#include "platform/files/FolderWalk.h"
#include "platform/files/NamePattern.h"
#include "platform/files/NativeErrors.h"
#include "platform/files/OpenFile.h"
#include "platform/files/PathResolver.h"
#include "platform/files/ReadAhead.h"
#include "platform/files/WholeFile.h"
#include "runtime/Text.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <map>
#include <optional>
#include <set>
#include <sys/stat.h>
#include <unistd.h>

namespace trovarium {

namespace {

using Edit = FolderListings::Edit;

constexpr int MaxFileNumber = 255;

bool isRegular(const struct stat& status)
{
    return S_ISREG(status.st_mode);
}

bool isOneFile(const struct stat& one, const struct stat& other)
{
    return one.st_dev == other.st_dev && one.st_ino == other.st_ino;
}

// "" is the path of a picture that has none.
void refuseEmpty(std::string_view path)
{
    if (path.empty())
        throw Failure(FailureKind::FileNotFound);
}

// Whether `kind` tells of a folder that gives no names rather than of a disk that fails.
bool givesNoNames(FailureKind kind)
{
    return kind == FailureKind::FileNotFound || kind == FailureKind::PathNotFound || kind == FailureKind::PathFileAccess
        || kind == FailureKind::BadFileNameOrNumber;
}

} // namespace

struct FileService::State {
    FaultHook hook;
    std::map<int, OpenFile> numbers;
    std::set<std::string> leftOvers; // native paths
    PathResolver resolver;
    ReadAhead ahead;

    void announce(FileOperation operation, std::string_view path) const
    {
        if (hook)
            hook(operation, path);
    }

    OpenFile& numbered(int number)
    {
        const auto found = numbers.find(number);
        if (found == numbers.end())
            throw Failure(FailureKind::BadFileNameOrNumber);
        return found->second;
    }

    bool isInUse(const struct stat& status) const
    {
        return std::any_of(
            numbers.begin(), numbers.end(), [&](const auto& entry) { return entry.second.isSameFile(status); });
    }

    void made(const NativePath& place, const std::function<void()>& change)
    {
        ahead.changed(place.whole());
        resolver.listings().carry({{Edit::What::Made, place}}, change);
    }

    void gone(const NativePath& place, const std::function<void()>& change)
    {
        ahead.changed(place.whole());
        resolver.listings().carry({{Edit::What::Gone, place}}, change);
    }

    // `call` gets a native path and answers as the system does, -1 with errno.
    template <class Call>
    std::string onReadable(std::string_view path, Attempted attempted, Call call)
    {
        std::string native = nativeAsWritten(path);
        int result = call(native);
        if (result < 0 && isAbsent(errno)) {
            native = resolver.readable(native);
            result = call(native);
        }
        if (result < 0)
            failNow(attempted);
        return native;
    }

    struct stat readableStatus(std::string_view path)
    {
        struct stat status = {};
        refuseEmpty(path);
        if (const struct stat* found = ahead.status(nativeAsWritten(path)))
            return *found;
        onReadable(path, Attempted::Access, [&](const std::string& native) { return stat(native.c_str(), &status); });
        if (!isRegular(status))
            throw Failure(FailureKind::FileNotFound);
        return status;
    }

    // The place that the exact name means, and what stands there, if anything.
    struct Target {
        NativePath place;
        std::string native;
        std::optional<struct stat> status;
    };

    Target target(std::string_view path)
    {
        Target target;
        target.place = resolver.exact(nativeAsWritten(path));
        target.native = target.place.whole();
        struct stat status = {};
        if (stat(target.native.c_str(), &status) == 0)
            target.status = status;
        return target;
    }

    // The same, where links in its place lead.
    Target followed(std::string_view path)
    {
        Target target;
        target.place = resolver.exact(nativeAsWritten(path));
        target.native = target.place.whole();
        struct stat status = {};
        if (!isThere(lstat(target.native.c_str(), &status)))
            return target;
        if (S_ISLNK(status.st_mode)) {
            target.place = linkEnd(std::move(target.native));
            target.native = target.place.whole();
            if (!isThere(stat(target.native.c_str(), &status)))
                return target;
        }
        target.status = status;
        return target;
    }

    Descriptor openForReading(std::string_view path);
    Descriptor openForWriting(std::string_view path, OpenMode mode);
    void copy(const Descriptor& source, const struct stat& status, const NativePath& place, NewFile::Existing existing);
    void refuseReplacing(const Target& target, const struct stat* source) const;
    bool isSameInOtherCase(const Target& from, const Target& to) const;
    void moveAcross(const Target& from, const Target& to);
    void putWhole(std::string_view path, std::string_view bytes, Sync sync);

    enum class Absent { GivesNone, Fails };
    std::vector<FolderEntry> walk(std::string_view folderAndPattern, Absent absent);
};

Descriptor FileService::State::openForReading(std::string_view path)
{
    Descriptor descriptor;
    // Without blocking: a pipe must not hold the program.
    onReadable(path, Attempted::Access, [&](const std::string& native) {
        descriptor = Descriptor(::open(native.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
        return descriptor.handle();
    });
    return descriptor;
}

Descriptor FileService::State::openForWriting(std::string_view path, OpenMode mode)
{
    const NativePath place = resolver.exact(nativeAsWritten(path));
    const std::string native = place.whole();
    Descriptor descriptor;
    made(place, [&] {
        const int flags = O_RDWR | O_CREAT | O_CLOEXEC | O_NONBLOCK | (mode == OpenMode::Append ? O_APPEND : 0);
        descriptor = Descriptor(::open(native.c_str(), flags, NewFileMode));
        // A file that may be written and not read: the end of its last line stays unknown.
        if (!descriptor.isOpen() && errno == EACCES)
            descriptor = Descriptor(::open(native.c_str(), (flags & ~O_RDWR) | O_WRONLY, NewFileMode));
        if (!descriptor.isOpen() && errno == ENOENT)
            throw Failure(FailureKind::PathNotFound);
        if (!descriptor.isOpen())
            failNow(Attempted::Access);
    });
    return descriptor;
}

// `source` is null where the content comes from elsewhere.
void FileService::State::refuseReplacing(const Target& target, const struct stat* source) const
{
    if (!target.status)
        return;
    if (!isRegular(*target.status) || (source != nullptr && isOneFile(*source, *target.status))
        || isInUse(*target.status) || access(target.native.c_str(), W_OK) != 0)
        throw Failure(FailureKind::PermissionDenied);
}

void FileService::State::copy(
    const Descriptor& source, const struct stat& status, const NativePath& place, NewFile::Existing existing)
{
    made(place, [&] {
        NewFile file(place.folder, (status.st_mode & NewFileMode) | S_IWUSR, Attempted::Change);
        file.copyContent(source);
        file.setModified(status.st_mtim);
        file.becomes(place.whole(), existing);
    });
}

// On a file system without case both names lead to the one entry.
bool FileService::State::isSameInOtherCase(const Target& from, const Target& to) const
{
    return from.status && to.status && isOneFile(*from.status, *to.status) && from.status->st_nlink == 1
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
    copy(source, *from.status, to.place, NewFile::Existing::Keep);
    gone(from.place, [&] {
        if (unlink(from.native.c_str()) == 0)
            return;
        const int error = errno;
        unlink(to.native.c_str());
        throw Failure(failureKind(error, Attempted::Change));
    });
}

void FileService::State::putWhole(std::string_view path, std::string_view bytes, Sync sync)
{
    announce(FileOperation::Open, path);
    const Target target = followed(path);
    if (target.status && isInUse(*target.status))
        throw Failure(FailureKind::FileAlreadyOpen);
    if (target.status && (!isRegular(*target.status) || access(target.native.c_str(), W_OK) != 0))
        throw Failure(FailureKind::PathFileAccess);
    announce(FileOperation::Print, path);
    const auto whenWhole = [&] { announce(FileOperation::Close, path); };
    made(target.place, [&] { trovarium::putWhole(target.place, target.status, bytes, sync, whenWhole); });
}

std::vector<FolderEntry> FileService::State::walk(std::string_view folderAndPattern, Absent absent)
{
    announce(FileOperation::List, folderAndPattern);
    try {
        const NativePath parts = splitNative(nativeAsWritten(folderAndPattern));
        return entriesOf(resolver.folder(parts.folder), NamePattern(parts.leaf), leftOvers);
    } catch (const Failure& failure) {
        if (!givesNoNames(failure.kind()))
            throw;
        if (absent == Absent::Fails)
            throw Failure(FailureKind::PathNotFound);
        return {};
    }
}

FileService::FileService()
    : m_state(std::make_unique<State>())
{
}

FileService::~FileService()
{
    // Files that were left open end here, where nobody can be told in another way.
    for (auto& entry : m_state->numbers) {
        OpenFile& file = entry.second;
        if (const std::optional<Failure> failure = attempt([&] { file.close(); }))
            std::fprintf(stderr, "%s: %s\n", file.path().c_str(), std::string(failure->description()).c_str());
    }
}

void FileService::setFaultHook(FaultHook hook)
{
    m_state->hook = std::move(hook);
}

void FileService::expect(const std::vector<std::string>& paths, const std::vector<std::string>& looks)
{
    const auto natives = [](const std::vector<std::string>& given) {
        std::vector<std::string> written;
        for (const std::string& path : given)
            written.push_back(nativeAsWritten(path));
        return written;
    };
    m_state->ahead.expect(natives(paths), natives(looks));
}

int FileService::freeFile() const
{
    int number = 1;
    for (const auto& entry : m_state->numbers) {
        if (entry.first != number)
            break;
        ++number;
    }
    if (number > MaxFileNumber)
        throw Failure(FailureKind::TooManyFiles);
    return number;
}

void FileService::open(std::string_view path, OpenMode mode, int number)
{
    m_state->announce(FileOperation::Open, path);
    if (number < 1 || number > MaxFileNumber)
        throw Failure(FailureKind::BadFileNameOrNumber);
    if (m_state->numbers.count(number) != 0)
        throw Failure(FailureKind::FileAlreadyOpen);

    if (mode == OpenMode::Input) {
        if (auto file = m_state->ahead.take(nativeAsWritten(path))) {
            m_state->numbers.try_emplace(number, std::string(path), std::move(*file));
            return;
        }
    }
    Descriptor descriptor =
        mode == OpenMode::Input ? m_state->openForReading(path) : m_state->openForWriting(path, mode);
    struct stat status = {};
    if (fstat(descriptor.handle(), &status) != 0)
        failNow(Attempted::Access);
    if (!isRegular(status))
        throw Failure(FailureKind::PathFileAccess);
    if (mode != OpenMode::Input && m_state->isInUse(status))
        throw Failure(FailureKind::FileAlreadyOpen);
    // Not before it is known that nobody has the file open.
    if (mode == OpenMode::Output && status.st_size > 0 && ftruncate(descriptor.handle(), 0) != 0)
        failNow(Attempted::Access);
    m_state->numbers.try_emplace(number, std::string(path), mode, std::move(descriptor), status);
}

void FileService::print(int number, std::string_view line)
{
    OpenFile& file = m_state->numbered(number);
    m_state->announce(FileOperation::Print, file.path());
    file.print(line);
}

bool FileService::endOfFile(int number) const
{
    return m_state->numbered(number).endOfFile();
}

std::string FileService::lineInput(int number)
{
    OpenFile& file = m_state->numbered(number);
    m_state->announce(FileOperation::LineInput, file.path());
    return file.lineInput();
}

void FileService::close(int number)
{
    auto taken = m_state->numbers.extract(number);
    if (taken.empty())
        return;
    m_state->announce(FileOperation::Close, taken.mapped().path());
    taken.mapped().close();
}

void FileService::closeAll()
{
    while (!m_state->numbers.empty())
        attempt([&] { close(m_state->numbers.begin()->first); });
}

void FileService::writeWhole(std::string_view path, std::string_view bytes, Sync sync)
{
    m_state->putWhole(path, bytes, sync);
}

void FileService::writeLines(std::string_view path, const std::vector<std::string>& lines, Sync sync)
{
    std::string bytes;
    for (const std::string& line : lines)
        bytes.append(encodeLine(line)).append("\r\n");
    m_state->putWhole(path, bytes, sync);
}

void FileService::replaceContent(std::string_view path, std::string_view source)
{
    m_state->announce(FileOperation::Copy, path);
    m_state->putWhole(path, readWhole(m_state->openForReading(source)), Sync::Yes);
}

std::int64_t FileService::length(std::string_view path) const
{
    m_state->announce(FileOperation::Length, path);
    return m_state->readableStatus(path).st_size;
}

bool FileService::exists(std::string_view path) const
{
    m_state->announce(FileOperation::Exists, path);
    struct stat status = {};
    const auto isSeen = [&](const std::string& native) { return isThere(stat(native.c_str(), &status)); };
    bool found = false;
    const auto failure = attempt([&] {
        const std::string native = nativeAsWritten(path);
        found = isSeen(native);
        if (!found) {
            const NativePath place = m_state->resolver.exact(native);
            found = place != splitNative(native) && isSeen(place.whole());
        }
    });
    // What no right or no link leads to isn't there for the program: it can put nothing in its place either.
    if (failure && !givesNoNames(failure->kind()))
        throw Failure(*failure);
    return found && isRegular(status);
}

bool FileService::folderExists(std::string_view path) const
{
    m_state->announce(FileOperation::Exists, path);
    return !attempt([&] { m_state->resolver.folder(nativeAsWritten(path)); });
}

void FileService::requireFolder(std::string_view path) const
{
    m_state->announce(FileOperation::List, path);
    const FolderReader reader(m_state->resolver.folder(nativeAsWritten(path)));
    if (!reader.isOpen())
        failNow(Attempted::Access);
}

std::string FileService::asItStands(std::string_view path) const
try {
    const NativePath place = splitNative(nativeAsWritten(path));
    struct stat status = {};
    if (place.leaf.empty() || lstat(place.whole().c_str(), &status) == 0)
        return std::string(path);
    const std::string folder = m_state->resolver.folder(place.folder);
    const std::optional<std::string> name = m_state->resolver.listings().readableName(folder, place.leaf);
    if (!name || isFolder(joinNative(folder, *name)))
        return std::string(path);
    return std::string(path.substr(0, path.size() - place.leaf.size())) + nameInside(*name);
} catch (const Failure& failure) {
    if (failure.kind() != FailureKind::PathNotFound)
        throw;
    return std::string(path); // what is done with it tells of the folder
}

Instant FileService::modified(std::string_view path) const
{
    m_state->announce(FileOperation::Date, path);
    return Instant(std::chrono::seconds(m_state->readableStatus(path).st_mtim.tv_sec));
}

void FileService::setModified(std::string_view path, Instant instant)
{
    m_state->announce(FileOperation::SetDate, path);
    timespec times[2] = {};
    times[0].tv_nsec = UTIME_OMIT;
    times[1].tv_sec = instant.time_since_epoch().count();
    const State::Target target = m_state->target(path);
    m_state->ahead.changed(target.native);
    if (utimensat(AT_FDCWD, target.native.c_str(), times, 0) != 0)
        failNow(Attempted::Access);
}

void FileService::copy(std::string_view source, std::string_view target)
{
    m_state->announce(FileOperation::Copy, target);
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
    m_state->refuseReplacing(place, &status);
    m_state->copy(descriptor, status, place.place, NewFile::Existing::Replace);
}

void FileService::remove(std::string_view path)
{
    m_state->announce(FileOperation::Delete, path);
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

void FileService::rename(std::string_view from, std::string_view to)
{
    m_state->announce(FileOperation::Rename, from);
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
    m_state->resolver.listings().carry({{Edit::What::Gone, source.place}, {Edit::What::Made, target.place}}, move);
    if (betweenFileSystems)
        m_state->moveAcross(source, target);
    if (S_ISDIR(source.status->st_mode))
        m_state->resolver.listings().clear();
}

void FileService::makeFolder(std::string_view path)
{
    m_state->announce(FileOperation::MakeFolder, path);
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
    m_state->announce(FileOperation::Delete, folder);
    const std::string native =
        m_state->resolver.folder(splitNative(nativeAsWritten(std::string(folder) + "\\")).folder);
    std::erase_if(m_state->leftOvers,
        [&](const std::string& file) { return splitNative(file).folder == native && unlink(file.c_str()) == 0; });
}

std::vector<std::string> FileService::list(std::string_view folderAndPattern) const
{
    return namesOf(m_state->walk(folderAndPattern, State::Absent::GivesNone), FolderEntry::Kind::File);
}

std::vector<std::string> FileService::listExisting(std::string_view folderAndPattern) const
{
    return namesOf(m_state->walk(folderAndPattern, State::Absent::Fails), FolderEntry::Kind::File);
}

std::vector<std::string> FileService::listFolders(std::string_view folder) const
{
    std::vector<FolderEntry> entries = m_state->walk(std::string(folder) + "\\", State::Absent::GivesNone);
    std::erase_if(entries, [](const FolderEntry& entry) { return entry.name == "." || entry.name == ".."; });
    return namesOf(std::move(entries), FolderEntry::Kind::Folder);
}

std::vector<FolderEntry> FileService::listAll(std::string_view folderAndPattern) const
{
    return m_state->walk(folderAndPattern, State::Absent::GivesNone);
}

int FileService::attributes(std::string_view path, FolderEntry::Kind known) const
{
    m_state->announce(FileOperation::Attributes, path);
    if (known != FolderEntry::Kind::Unknown)
        return known == FolderEntry::Kind::Folder ? DirectoryAttribute : 0;
    struct stat status = {};
    m_state->onReadable(
        path, Attempted::Access, [&](const std::string& native) { return stat(native.c_str(), &status); });
    return S_ISDIR(status.st_mode) ? DirectoryAttribute : 0;
}

bool FileService::isSameFile(std::string_view path, std::string_view other) const
try {
    m_state->announce(FileOperation::Attributes, path);
    return isOneFile(m_state->readableStatus(path), m_state->readableStatus(other));
} catch (const Failure& failure) {
    // Any other failure tells nothing of the two: their caller must not take them for two files.
    if (failure.kind() != FailureKind::FileNotFound && failure.kind() != FailureKind::PathNotFound)
        throw;
    return false;
}

std::string FileService::nativeForReading(std::string_view path) const
{
    refuseEmpty(path);
    struct stat status = {};
    return m_state->onReadable(
        path, Attempted::Access, [&](const std::string& native) { return stat(native.c_str(), &status); });
}

void FileService::announce(FileOperation operation, std::string_view path) const
{
    m_state->announce(operation, path);
}

} // namespace trovarium
