// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/files/FileService.h"

#include "platform/files/AtomicFile.h"
#include "platform/files/FolderReader.h"
#include "runtime/Failure.h"
#include "runtime/Text.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <unistd.h>

namespace trovarium {

namespace {

constexpr int MaxFileNumber = 255;

// A folder that is absent or closed to the user, and not a disk that fails.
bool isMissingFolder(FailureKind kind)
{
    return kind == FailureKind::FileNotFound || kind == FailureKind::PathNotFound || kind == FailureKind::PathFileAccess
        || kind == FailureKind::BadFileNameOrNumber;
}

bool isBelow(const std::string& native, const std::string& folder)
{
    return native == folder || native.starts_with(joinNative(folder, ""));
}

} // namespace

FileStamp stampOf(const struct stat& status)
{
    return {status.st_dev, status.st_ino, status.st_size, status.st_mtim.tv_sec, status.st_mtim.tv_nsec};
}

FileService::~FileService()
{
    // Nobody is left to handle a failure of the files that are still open.
    for (auto& entry : m_numbers) {
        OpenFile& file = entry.second;
        if (const std::optional<Failure> failure = attempt([&] { file.close(); }))
            std::fprintf(stderr, "%s: %s\n", file.path().c_str(), std::string(failure->description()).c_str());
    }
}

void FileService::setFaultHook(FaultHook hook)
{
    m_hook = std::move(hook);
}

void FileService::checkFault(FileOperation operation, std::string_view path) const
{
    if (m_hook)
        m_hook(operation, path);
}

int FileService::freeFile() const
{
    int number = 1;
    while (m_numbers.count(number) != 0)
        ++number;
    if (number > MaxFileNumber)
        throw Failure(FailureKind::TooManyFiles);
    return number;
}

void FileService::open(std::string_view path, OpenMode mode, int number)
{
    checkFault(FileOperation::Open, path);
    requireFree(number);
    Descriptor descriptor = mode == OpenMode::Input ? openForReading(path) : openForWriting(path, mode);
    struct stat status = {};
    if (fstat(descriptor.handle(), &status) != 0)
        failNow(Attempted::Access);
    if (!isRegular(status))
        throw Failure(FailureKind::PathFileAccess);
    if (mode != OpenMode::Input && isInUse(status))
        throw Failure(FailureKind::FileAlreadyOpen);
    // Not before it is known that nobody has the file open.
    if (mode == OpenMode::Output && status.st_size > 0 && ftruncate(descriptor.handle(), 0) != 0)
        failNow(Attempted::Access);
    m_numbers.try_emplace(number, std::string(path), mode, std::move(descriptor), status);
}

void FileService::openForInput(std::string_view path, int number, std::optional<std::string> readAhead)
{
    if (!readAhead) {
        open(path, OpenMode::Input, number);
        return;
    }
    checkFault(FileOperation::Open, path);
    requireFree(number);
    m_numbers.try_emplace(number, std::string(path), std::move(*readAhead));
}

void FileService::print(int number, std::string_view line)
{
    OpenFile& file = numbered(number);
    checkFault(FileOperation::Print, file.path());
    file.print(line);
}

bool FileService::endOfFile(int number)
{
    return numbered(number).endOfFile();
}

std::string FileService::lineInput(int number)
{
    OpenFile& file = numbered(number);
    checkFault(FileOperation::LineInput, file.path());
    return file.lineInput();
}

FileStamp FileService::stamp(int number)
{
    return numbered(number).stamp();
}

void FileService::close(int number)
{
    auto taken = m_numbers.extract(number);
    if (taken.empty())
        return;
    checkFault(FileOperation::Close, taken.mapped().path());
    taken.mapped().close();
}

void FileService::closeAll()
{
    while (!m_numbers.empty())
        attempt([&] { close(m_numbers.begin()->first); });
}

std::int64_t FileService::length(std::string_view path, std::int64_t known) const
{
    checkFault(FileOperation::Length, path);
    return known == UnknownLength ? readableStatus(path).st_size : known;
}

bool FileService::exists(std::string_view path) const
{
    checkFault(FileOperation::Exists, path);
    return exactStatus(path).has_value();
}

bool FileService::folderExists(std::string_view path) const
{
    checkFault(FileOperation::Exists, path);
    return !attempt([&] { m_resolver.folder(nativeAsWritten(path)); });
}

void FileService::requireFolder(std::string_view path) const
{
    checkFault(FileOperation::List, path);
    if (!FolderReader(m_resolver.folder(nativeAsWritten(path))).isOpen())
        failNow(Attempted::Access);
}

std::string FileService::resolveExistingName(std::string_view path) const
try {
    const NativePath place = splitNative(nativeAsWritten(path));
    struct stat status = {};
    if (place.leaf.empty() || lstat(place.whole().c_str(), &status) == 0)
        return std::string(path);
    const std::string folder = m_resolver.folder(place.folder);
    const std::optional<std::string> name = m_resolver.readableName(folder, place.leaf);
    if (!name || isFolder(joinNative(folder, *name)))
        return std::string(path);
    return std::string(path.substr(0, path.size() - place.leaf.size())) + nameInside(*name);
} catch (const Failure& failure) {
    if (failure.kind() != FailureKind::PathNotFound)
        throw;
    return std::string(path); // using it reports the missing folder
}

Instant FileService::modified(std::string_view path) const
{
    checkFault(FileOperation::Date, path);
    return Instant(std::chrono::seconds(readableStatus(path).st_mtim.tv_sec));
}

FileStamp FileService::stamp(std::string_view path) const
{
    checkFault(FileOperation::Date, path);
    return stampOf(readableStatus(path));
}

std::optional<FileStamp> FileService::exactStamp(std::string_view path) const
{
    checkFault(FileOperation::Date, path);
    const std::optional<struct stat> status = exactStatus(path);
    return status ? std::optional(stampOf(*status)) : std::nullopt;
}

std::vector<std::string> FileService::list(std::string_view folderAndPattern) const
{
    return namesOf(listAll(folderAndPattern), FolderEntry::Kind::File);
}

std::vector<std::string> FileService::listFolders(std::string_view folder) const
{
    std::vector<FolderEntry> entries = listAll(std::string(folder) + "\\");
    std::erase_if(entries, [](const FolderEntry& entry) { return entry.name == "." || entry.name == ".."; });
    return namesOf(std::move(entries), FolderEntry::Kind::Folder);
}

std::vector<FolderEntry> FileService::listAll(std::string_view folderAndPattern, std::string_view measured) const
{
    checkFault(FileOperation::List, folderAndPattern);
    try {
        const NativePath parts = splitNative(nativeAsWritten(folderAndPattern));
        return entriesOf(m_resolver.folder(parts.folder), parts.leaf, measured, m_leftOvers);
    } catch (const Failure& failure) {
        if (!isMissingFolder(failure.kind()))
            throw;
        return {};
    }
}

int FileService::attributes(std::string_view path, FolderEntry::Kind known) const
{
    checkFault(FileOperation::Attributes, path);
    if (known != FolderEntry::Kind::Unknown)
        return known == FolderEntry::Kind::Folder ? DirectoryAttribute : 0;
    struct stat status = {};
    callOnReadable(path, Attempted::Access, [&](const std::string& native) { return stat(native.c_str(), &status); });
    return S_ISDIR(status.st_mode) ? DirectoryAttribute : 0;
}

std::vector<FolderLink> FileService::linksOut(
    std::string_view folder, const std::vector<std::string_view>& names, std::string_view home) const
{
    checkFault(FileOperation::List, folder);
    std::string native;
    if (attempt([&] { native = m_resolver.folder(nativeAsWritten(folder)); }))
        return {};
    // The names as written are looked up even in a folder that can't be listed.
    std::set<std::string> leaves(names.begin(), names.end());
    FolderReader reader(native);
    attempt([&] {
        while (const auto entry = reader.isOpen() ? reader.next() : std::nullopt) {
            if (std::any_of(names.begin(), names.end(), [&](auto name) { return equalInCapitals(name, entry->name); }))
                leaves.emplace(entry->name);
        }
    });
    std::error_code none;
    const std::string homeFolder = std::filesystem::canonical(nativeAsWritten(home), none);
    std::vector<FolderLink> links;
    for (const std::string& leaf : leaves) {
        const std::string path = joinNative(native, leaf);
        std::string target = std::filesystem::canonical(path, none); // empty if it leads nowhere
        if (!std::filesystem::is_symlink(path, none)
            || (!target.empty() && !homeFolder.empty() && isBelow(target, homeFolder)))
            continue;
        if (target.empty() && attempt([&] { target = followLinks(path).whole(); }))
            continue; // a circle of links, which will never lead anywhere
        links.push_back({fromNativePath(path), fromNativePath(target)});
    }
    return links;
}

bool FileService::isSameFile(std::string_view path, std::string_view other) const
try {
    checkFault(FileOperation::Attributes, path);
    return isOneFile(readableStatus(path), readableStatus(other));
} catch (const Failure& failure) {
    // After another failure the two may still be one file, which the caller must not copy over itself.
    if (!failure.isAbsence())
        throw;
    return false;
}

std::string FileService::nativeForReading(std::string_view path) const
{
    struct stat status = {};
    return findReadable(path, status);
}

void FileService::requireFree(int number) const
{
    if (number < 1 || number > MaxFileNumber)
        throw Failure(FailureKind::BadFileNameOrNumber);
    if (m_numbers.count(number) != 0)
        throw Failure(FailureKind::FileAlreadyOpen);
}

OpenFile& FileService::numbered(int number)
{
    const auto found = m_numbers.find(number);
    if (found == m_numbers.end())
        throw Failure(FailureKind::BadFileNameOrNumber);
    return found->second;
}

bool FileService::isInUse(const struct stat& status) const
{
    return std::any_of(
        m_numbers.begin(), m_numbers.end(), [&](const auto& entry) { return entry.second.isSameFile(status); });
}

// Tries the path as written first: a lookup without regard to case lists the folder.
std::string FileService::callOnReadable(std::string_view path, Attempted attempted, const SystemCall& call) const
{
    std::string native = nativeAsWritten(path);
    int result = call(native);
    if (result < 0 && isAbsent(errno)) {
        native = m_resolver.readable(native);
        result = call(native);
    }
    if (result < 0)
        failNow(attempted);
    return native;
}

std::string FileService::findReadable(std::string_view path, struct stat& status) const
{
    if (path.empty()) // the path of a picture that has none
        throw Failure(FailureKind::FileNotFound);
    return callOnReadable(
        path, Attempted::Access, [&](const std::string& native) { return stat(native.c_str(), &status); });
}

struct stat FileService::readableStatus(std::string_view path) const
{
    struct stat status = {};
    findReadable(path, status);
    if (!isRegular(status))
        throw Failure(FailureKind::FileNotFound);
    return status;
}

// Of the plain file with exactly this name; nothing if there is none.
std::optional<struct stat> FileService::exactStatus(std::string_view path) const
{
    struct stat status = {};
    const auto isSeen = [&](const std::string& native) { return isThere(stat(native.c_str(), &status)); };
    bool found = false;
    const auto failure = attempt([&] {
        const std::string native = nativeAsWritten(path);
        found = isSeen(native);
        if (!found) {
            const NativePath place = m_resolver.exact(native);
            found = place != splitNative(native) && isSeen(place.whole());
        }
    });
    // In a folder that is closed to the user the program can't write a file either.
    if (failure && !isMissingFolder(failure->kind()))
        throw Failure(*failure);
    return found && isRegular(status) ? std::optional(status) : std::nullopt;
}

Descriptor FileService::openForReading(std::string_view path, Attempted attempted) const
{
    Descriptor descriptor;
    // O_NONBLOCK: opening a pipe must not wait for its writer.
    callOnReadable(path, attempted, [&](const std::string& native) {
        descriptor = Descriptor(::open(native.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
        return descriptor.handle();
    });
    return descriptor;
}

Descriptor FileService::openForWriting(std::string_view path, OpenMode mode)
{
    const Target target = writableTarget(path);
    Descriptor descriptor;
    addEntry(target.place, [&] {
        if (target.isLink && unlink(target.native.c_str()) != 0)
            failNow(Attempted::Access);
        const int flags = O_RDWR | O_CREAT | O_NOFOLLOW | O_CLOEXEC | O_NONBLOCK
            | (mode == OpenMode::Append ? O_APPEND : 0) | (target.isLink ? O_EXCL : 0);
        descriptor = Descriptor(::open(target.native.c_str(), flags, NewFileRights));
        // Without the right to read, an append can't see whether the last line has its end.
        if (!descriptor.isOpen() && errno == EACCES)
            descriptor = Descriptor(::open(target.native.c_str(), (flags & ~O_RDWR) | O_WRONLY, NewFileRights));
        if (!descriptor.isOpen() && errno == ENOENT)
            throw Failure(FailureKind::PathNotFound);
        if (!descriptor.isOpen())
            failNow(Attempted::Access);
    });
    return descriptor;
}

} // namespace trovarium
