// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/files/Descriptor.h"
#include "platform/files/FileTypes.h"
#include "platform/files/NativeErrors.h"
#include "platform/files/OpenFile.h"
#include "platform/files/PathResolver.h"
#include "platform/files/Paths.h"
#include "runtime/Dates.h"

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <sys/stat.h>
#include <vector>

namespace trovarium {

// The file system as the program sees it. A path inside the program is "/home\ann\Photos\a.jpg": a
// slash at the start and backslashes between; both separators are accepted. All failures are `Failure`.
//
// A file that is created, appended to, deleted, renamed, copied to or tested with `exists` is the one with exactly the
// name as written. A file that is only read may also be the one entry that differs in case alone. So may the folders of
// every path.
//
// No write follows a symbolic link: a link that is opened for output or append, or written atomically, is replaced by a
// file. Only a list (.lst) and an information file (.info) are written where their link leads, when that is a file of
// the same kind; otherwise the write fails with "Path/File access error".
//
// FileService.cpp looks and reads, FileChanges.cpp changes the disk.
class FileService {
public:
    FileService() = default;
    ~FileService();
    FileService(const FileService&) = delete;
    FileService& operator=(const FileService&) = delete;

    void setFaultHook(FaultHook hook);
    // Runs the hook, for an operation that another part of the platform makes on its own.
    void checkFault(FileOperation operation, std::string_view path) const;

    // Numbered text files, 1 to 255.
    int freeFile() const;
    void open(std::string_view path, OpenMode mode, int number);
    void openForInput(std::string_view path, int number, std::optional<std::string> readAhead);
    void print(int number, std::string_view line); // adds CR LF
    bool endOfFile(int number);
    std::string lineInput(int number); // ends at CR LF, CR or LF
    FileStamp stamp(int number);       // as the file was when it was opened
    // Frees the number even after a failure. A number that isn't open is no failure.
    void close(int number);
    // Closes every number. Failures are dropped: it is called while another failure is handled.
    void closeAll();

    // Writes or replaces a whole file: whatever happens, the name stands for the old file (or none) or for the new one.
    // Rights and owner stay; a new file gets `rights`, less the user's mask. The fault hook is called for an open, a
    // print and, before the new file takes the name, a close.
    void writeFileAtomically(
        std::string_view path, std::string_view bytes, Sync sync = Sync::No, unsigned rights = NewFileRights);
    // The same for lines, as `print` writes them.
    void writeLines(std::string_view path, const std::vector<std::string>& lines, Sync sync);
    // Writes the content of `source` to `path` in the same way, synced. Calls the fault hook for a copy first.
    void replaceContent(std::string_view path, std::string_view source);
    // What stands there, for putting it back: see `FileContent`. Nothing if there is no file; more than `most` bytes
    // are "Out of memory".
    std::optional<FileContent> contentToReplace(std::string_view path, std::int64_t most) const;
    void makeLink(std::string_view path, const std::string& target); // symbolic; replaces nothing

    // In bytes; regular files only. A length that is known from a listing saves asking the disk.
    std::int64_t length(std::string_view path, std::int64_t known = UnknownLength) const;
    // A regular file of exactly this name. A disk that doesn't answer is a failure: taking the file for absent, callers
    // would overwrite it.
    bool exists(std::string_view path) const;
    bool folderExists(std::string_view path) const;
    void requireFolder(std::string_view path) const; // "Path not found", or why it can't be listed
    // The path of the file that is read for this one: as written, or with the one name that differs in case alone.
    std::string resolveExistingName(std::string_view path) const;
    Instant modified(std::string_view path) const;
    void setModified(std::string_view path, Instant instant);
    FileStamp stamp(std::string_view path) const; // of the file that is read for this path, as it is now
    std::optional<FileStamp> exactStamp(std::string_view path) const; // of the file with exactly this name, if any

    void copy(std::string_view source, std::string_view target, ReadOnlyTarget readOnly = ReadOnlyTarget::Stays);
    void remove(std::string_view path);
    void removeLink(std::string_view path); // a symbolic link, wherever it leads; nothing else
    void rename(std::string_view from, std::string_view to);
    void makeFolder(std::string_view path);
    // Removes the hidden files of unfinished writes that killed runs left in a folder. Removes those that listings of
    // the folder have found: the folder isn't read again.
    void removeLeftOvers(std::string_view folder);

    // Names of the plain files that match folder + pattern ("*", "?", several joined by ";"), sorted as
    // lists are; a snapshot. An absent folder gives none.
    std::vector<std::string> list(std::string_view folderAndPattern) const;
    // Names of the folders in `folder`, without "." and "..", sorted as lists are.
    std::vector<std::string> listFolders(std::string_view folder) const;
    // Files and folders that match folder + pattern, with "." and "..": `Dir` with the directory attribute. Files that
    // match the pattern `measured` come with their lengths.
    std::vector<FolderEntry> listAll(std::string_view folderAndPattern, std::string_view measured = {}) const;
    // DirectoryAttribute for a folder, 0 for anything else that is there. A kind that is known from a listing saves
    // asking the disk.
    int attributes(std::string_view path, FolderEntry::Kind known = FolderEntry::Kind::Unknown) const;
    // The folders with these names in `folder`, in upper or lower case, that are symbolic links and lead out of `home`
    // or nowhere.
    std::vector<FolderLink> linksOut(
        std::string_view folder, const std::vector<std::string_view>& names, std::string_view home) const;
    // Whether both paths lead to one file, by whatever names; false when one of them is absent.
    bool isSameFile(std::string_view path, std::string_view other) const;

    // For the platform's own use: the native path of a file that is only to be read, "File not found" for none.
    std::string nativeForReading(std::string_view path) const;

private:
    // Where an exact name leads, and the status of the file there, if any.
    struct Target {
        NativePath place;
        std::string native;
        std::optional<struct stat> status;
        bool isLink = false; // a symbolic link, which a write replaces by a file
    };
    using SystemCall = std::function<int(const std::string& native)>; // -1 with errno

    void requireFree(int number) const;
    OpenFile& numbered(int number);
    bool isInUse(const struct stat& status) const;
    std::string callOnReadable(std::string_view path, Attempted attempted, const SystemCall& call) const;
    std::string findReadable(std::string_view path, struct stat& status) const;
    struct stat readableStatus(std::string_view path) const;
    std::optional<struct stat> exactStatus(std::string_view path) const;
    Descriptor openForReading(std::string_view path, Attempted attempted = Attempted::Access) const;
    Descriptor openForWriting(std::string_view path, OpenMode mode);

    Target target(std::string_view path) const;
    Target writableTarget(std::string_view path) const;
    void refuseReplacing(const Target& target, const struct stat& source, ReadOnlyTarget readOnly) const;
    static bool isSameInOtherCase(const Target& from, const Target& to);
    void moveAcross(const Target& from, const Target& to);
    void addEntry(const NativePath& place, const std::function<void()>& change);
    void removeEntry(const NativePath& place);

    FaultHook m_hook;
    std::map<int, OpenFile> m_numbers;
    mutable std::set<std::string> m_leftOvers; // native paths
    mutable PathResolver m_resolver;
};

} // namespace trovarium
