#pragma once

#include "platform/files/AtomicFile.h"
#include "platform/files/Descriptor.h"
#include "platform/files/FileService.h"
#include "platform/files/FolderWalk.h"
#include "platform/files/NativeErrors.h"
#include "platform/files/OpenFile.h"
#include "platform/files/PathResolver.h"
#include "platform/files/WholeFile.h"

#include <algorithm>
#include <cerrno>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <sys/stat.h>
#include <vector>

namespace trovarium {

inline bool isRegular(const struct stat& status)
{
    return S_ISREG(status.st_mode);
}

inline bool isOneFile(const struct stat& one, const struct stat& other)
{
    return one.st_dev == other.st_dev && one.st_ino == other.st_ino;
}

// "" is the path of a picture that has none.
inline void refuseEmpty(std::string_view path)
{
    if (path.empty())
        throw Failure(FailureKind::FileNotFound);
}

// What stands behind FileService: FileService.cpp looks and reads, FileChanges.cpp changes the disk.
struct FileService::State {
    FaultHook hook;
    std::map<int, OpenFile> numbers;
    std::set<std::string> leftOvers; // native paths
    PathResolver resolver;

    void checkFault(FileOperation operation, std::string_view path) const
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
        resolver.listings().carry({{FolderListings::Edit::What::Made, place}}, change);
    }

    void gone(const NativePath& place, const std::function<void()>& change)
    {
        resolver.listings().carry({{FolderListings::Edit::What::Gone, place}}, change);
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
        bool isLink = false;
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

    // The same for what is about to be written, with a link in its place followed where it may be: then the target is
    // the file that it leads to, else there is none and the link is to be replaced.
    Target writable(std::string_view path);

    Descriptor openForReading(std::string_view path);
    Descriptor openForWriting(std::string_view path, OpenMode mode);
    void copy(
        const Descriptor& source, const struct stat& status, const NativePath& place, AtomicFile::Existing existing);
    void refuseReplacing(const Target& target, const struct stat& source, ReadOnlyTarget readOnly) const;
    bool isSameInOtherCase(const Target& from, const Target& to) const;
    void moveAcross(const Target& from, const Target& to);
    void writeFileAtomically(std::string_view path, std::string_view bytes, Sync sync);

    enum class Absent { GivesNone, Fails };
    std::vector<FolderEntry> walk(std::string_view folderAndPattern, Absent absent);
};

} // namespace trovarium
