#pragma once

#include "runtime/Dates.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace trovarium {

enum class OpenMode { Input, Output, Append };

enum class FileOperation {
    Open,
    Print,
    LineInput,
    Close,
    Length,
    Date,
    SetDate,
    List,
    Copy,
    Delete,
    Rename,
    MakeFolder,
    Picture,
    Exists
};

// Called before every operation with the path as the program knows it (of a copy the target, of a rename the
// old name). What it throws is what the operation fails with: full disks, missing rights and torn files for
// tests.
using FaultHook = std::function<void(FileOperation operation, std::string_view path)>;

// The file system as the program sees it. A path inside the program is "/home\ann\Photos\a.jpg": a
// slash at the start and backslashes between; both separators are taken. All failures are `Failure`.
//
// What creates, appends, deletes, renames, is copied to or asked to exist means exactly the name as
// written. What is only read falls back to the one entry that differs in case alone, and so do the
// folders on the way.
class FileService {
public:
    FileService();
    ~FileService();
    FileService(const FileService&) = delete;
    FileService& operator=(const FileService&) = delete;

    void setFaultHook(FaultHook hook);

    // Numbered text files, 1 to 255.
    int freeFile() const;
    void open(std::string_view path, OpenMode mode, int number);
    void print(int number, std::string_view line); // adds CR LF
    bool endOfFile(int number) const;
    std::string lineInput(int number); // ends at CR LF, CR or LF
    // Frees the number in any case. A number that isn't open is no failure.
    void close(int number);
    // Closes every number. It serves where a failure is already being handled, so its own are dropped.
    void closeAll();

    // Writes or replaces a whole file, beside its name first, so that no half file is seen under the name.
    // The hook is told of a print.
    void writeWhole(std::string_view path, std::string_view bytes);

    std::int64_t length(std::string_view path) const; // in bytes; regular files only
    bool exists(std::string_view path) const;         // a regular file of exactly this name
    bool folderExists(std::string_view path) const;
    void requireFolder(std::string_view path) const; // "Path not found", or why it can't be listed
    Instant modified(std::string_view path) const;
    void setModified(std::string_view path, Instant instant);

    void copy(std::string_view source, std::string_view target);
    void remove(std::string_view path);
    void rename(std::string_view from, std::string_view to);
    void makeFolder(std::string_view path);

    // Names of the plain files that match folder + pattern ("*", "?", several joined by ";"), sorted as
    // lists are; a snapshot. An absent folder gives none.
    std::vector<std::string> list(std::string_view folderAndPattern) const;
    // The same for a folder that must be there: "Path not found" where it can't be listed.
    std::vector<std::string> listExisting(std::string_view folderAndPattern) const;
    // Names of the folders in `folder`, without "." and "..", sorted as lists are.
    std::vector<std::string> listFolders(std::string_view folder) const;

    // The path that the system knows for a file that is only to be read (with the fall-back in case), or
    // the exact one to be written. "File not found" where there is nothing to read, "Path not found" where the
    // folder to write to is missing. For the platform's own use.
    std::string nativeForReading(std::string_view path) const;
    std::string nativeForWriting(std::string_view path) const;

    // Runs the fault hook for an operation that the picture service makes on its own.
    void announce(FileOperation operation, std::string_view path) const;

private:
    struct State;
    std::unique_ptr<State> m_state;
};

// "/home/ann/x" to "/home\ann\x"; a name that is no UTF-8 comes as the program knows it.
std::string fromNativePath(std::string_view native);
// The other way, separators only, for texts that a person reads.
std::string toNativePath(std::string_view path);

} // namespace trovarium
