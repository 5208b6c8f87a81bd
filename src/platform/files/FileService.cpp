#include "platform/files/FileService.h"

#include "platform/files/FileServiceState.h"
#include "platform/files/FolderReader.h"
#include "platform/files/NamePattern.h"
#include "runtime/Text.h"

#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <unistd.h>

namespace trovarium {

namespace {

constexpr int MaxFileNumber = 255;

// Whether `kind` tells of a folder that gives no names rather than of a disk that fails.
bool givesNoNames(FailureKind kind)
{
    return kind == FailureKind::FileNotFound || kind == FailureKind::PathNotFound || kind == FailureKind::PathFileAccess
        || kind == FailureKind::BadFileNameOrNumber;
}

} // namespace

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
    const Target target = writable(path);
    Descriptor descriptor;
    made(target.place, [&] {
        if (target.isLink && unlink(target.native.c_str()) != 0)
            failNow(Attempted::Access);
        const int flags = O_RDWR | O_CREAT | O_NOFOLLOW | O_CLOEXEC | O_NONBLOCK
            | (mode == OpenMode::Append ? O_APPEND : 0) | (target.isLink ? O_EXCL : 0);
        descriptor = Descriptor(::open(target.native.c_str(), flags, NewFileMode));
        // A file that may be written and not read: the end of its last line stays unknown.
        if (!descriptor.isOpen() && errno == EACCES)
            descriptor = Descriptor(::open(target.native.c_str(), (flags & ~O_RDWR) | O_WRONLY, NewFileMode));
        if (!descriptor.isOpen() && errno == ENOENT)
            throw Failure(FailureKind::PathNotFound);
        if (!descriptor.isOpen())
            failNow(Attempted::Access);
    });
    return descriptor;
}

std::vector<FolderEntry> FileService::State::walk(std::string_view folderAndPattern, Absent absent)
{
    checkFault(FileOperation::List, folderAndPattern);
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
    m_state->checkFault(FileOperation::Open, path);
    if (number < 1 || number > MaxFileNumber)
        throw Failure(FailureKind::BadFileNameOrNumber);
    if (m_state->numbers.count(number) != 0)
        throw Failure(FailureKind::FileAlreadyOpen);

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
    m_state->checkFault(FileOperation::Print, file.path());
    file.print(line);
}

bool FileService::endOfFile(int number) const
{
    return m_state->numbered(number).endOfFile();
}

std::string FileService::lineInput(int number)
{
    OpenFile& file = m_state->numbered(number);
    m_state->checkFault(FileOperation::LineInput, file.path());
    return file.lineInput();
}

FileStamp FileService::stamp(int number) const
{
    return m_state->numbered(number).stamp();
}

void FileService::close(int number)
{
    auto taken = m_state->numbers.extract(number);
    if (taken.empty())
        return;
    m_state->checkFault(FileOperation::Close, taken.mapped().path());
    taken.mapped().close();
}

void FileService::closeAll()
{
    while (!m_state->numbers.empty())
        attempt([&] { close(m_state->numbers.begin()->first); });
}

std::int64_t FileService::length(std::string_view path) const
{
    m_state->checkFault(FileOperation::Length, path);
    return m_state->readableStatus(path).st_size;
}

bool FileService::exists(std::string_view path) const
{
    m_state->checkFault(FileOperation::Exists, path);
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
    m_state->checkFault(FileOperation::Exists, path);
    return !attempt([&] { m_state->resolver.folder(nativeAsWritten(path)); });
}

void FileService::requireFolder(std::string_view path) const
{
    m_state->checkFault(FileOperation::List, path);
    const FolderReader reader(m_state->resolver.folder(nativeAsWritten(path)));
    if (!reader.isOpen())
        failNow(Attempted::Access);
}

std::string FileService::resolveExistingName(std::string_view path) const
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
    m_state->checkFault(FileOperation::Date, path);
    return Instant(std::chrono::seconds(m_state->readableStatus(path).st_mtim.tv_sec));
}

FileStamp FileService::stamp(std::string_view path) const
{
    m_state->checkFault(FileOperation::Date, path);
    return stampOf(m_state->readableStatus(path));
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
    m_state->checkFault(FileOperation::Attributes, path);
    if (known != FolderEntry::Kind::Unknown)
        return known == FolderEntry::Kind::Folder ? DirectoryAttribute : 0;
    struct stat status = {};
    m_state->onReadable(
        path, Attempted::Access, [&](const std::string& native) { return stat(native.c_str(), &status); });
    return S_ISDIR(status.st_mode) ? DirectoryAttribute : 0;
}

namespace {

// Without a link on the way; empty for what leads nowhere.
std::string withoutLinks(const std::string& native)
{
    const std::unique_ptr<char, decltype(&std::free)> path(realpath(native.c_str(), nullptr), &std::free);
    return path ? path.get() : "";
}

bool isLink(const std::string& native)
{
    struct stat status = {};
    return lstat(native.c_str(), &status) == 0 && S_ISLNK(status.st_mode);
}

bool isBelow(const std::string& native, const std::string& folder)
{
    return native == folder || native.starts_with(joinNative(folder, ""));
}

} // namespace

std::vector<FolderLink> FileService::linksOut(
    std::string_view folder, const std::vector<std::string_view>& names, std::string_view home) const
{
    m_state->checkFault(FileOperation::List, folder);
    std::string native;
    if (attempt([&] { native = m_state->resolver.folder(nativeAsWritten(folder)); }))
        return {};
    // As they are written they are found in a folder, too, that can't be listed.
    std::set<std::string> leaves(names.begin(), names.end());
    FolderReader reader(native);
    attempt([&] {
        while (const auto entry = reader.isOpen() ? reader.next() : std::nullopt) {
            if (std::any_of(names.begin(), names.end(), [&](auto name) { return equalInCapitals(name, entry->name); }))
                leaves.emplace(entry->name);
        }
    });
    const std::string homeFolder = withoutLinks(nativeAsWritten(home));
    std::vector<FolderLink> links;
    for (const std::string& leaf : leaves) {
        const std::string path = joinNative(native, leaf);
        std::string target = withoutLinks(path);
        if (!isLink(path) || (!target.empty() && !homeFolder.empty() && isBelow(target, homeFolder)))
            continue;
        if (target.empty() && attempt([&] { target = linkEnd(path).whole(); }))
            continue; // links in a circle, which will never lead anywhere
        links.push_back({fromNativePath(path), fromNativePath(target)});
    }
    return links;
}

bool FileService::isSameFile(std::string_view path, std::string_view other) const
try {
    m_state->checkFault(FileOperation::Attributes, path);
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

void FileService::checkFault(FileOperation operation, std::string_view path) const
{
    m_state->checkFault(operation, path);
}

} // namespace trovarium
