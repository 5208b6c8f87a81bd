#pragma once

#include "platform/files/FileStamp.h"
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
    Exists,
    Attributes
};

// Called before every operation with the path as the program knows it (of a copy the target, of a rename the
// old name). What it throws is what the operation fails with: full disks, missing rights and torn files for
// tests.
using FaultHook = std::function<void(FileOperation operation, std::string_view path)>;

// Whether a write waits until the disk has it, so that it outlives a loss of power too: for what a person wrote or
// arranged. It takes as long as the disk takes.
enum class Sync { No, Yes };

// Whether a copy replaces a file that may not be written, as one does that deletes it first.
enum class ReadOnlyTarget { Stays, IsReplaced };

// One name of a folder, with what the folder itself tells of it.
struct FolderEntry {
    // Unknown: only a look that may fail can tell, see `attributes`.
    enum class Kind { File, Folder, Unknown };

    std::string name;
    Kind kind;
};

// A folder that is a link, by the paths of both.
struct FolderLink {
    std::string path;
    std::string target;
};

inline constexpr int DirectoryAttribute = 16;

// The file system as the program sees it. A path inside the program is "/home\ann\Photos\a.jpg": a
// slash at the start and backslashes between; both separators are taken. All failures are `Failure`.
//
// What creates, appends, deletes, renames, is copied to or asked to exist means exactly the name as
// written. What is only read falls back to the one entry that differs in case alone, and so do the
// folders on the way.
//
// Nothing is written through a link: one in the place of what is opened for output or append or written whole is
// replaced. Only a list (.lst) and an information file (.info) are written where their link leads, when that is a file
// of the same kind; otherwise the write fails with "Path/File access error".
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
    FileStamp stamp(int number) const; // as the file was when it was opened
    // Frees the number in any case. A number that isn't open is no failure.
    void close(int number);
    // Closes every number. It serves where a failure is already being handled, so its own are dropped.
    void closeAll();

    // Writes or replaces a whole file in one act: whatever happens, there is the old one (or none) or the new one
    // under the name. Rights and owner stay. The hook is told of an open, a print and, before it is put in place, a
    // close.
    void writeFileAtomically(std::string_view path, std::string_view bytes, Sync sync = Sync::No);
    // The same for lines, as `print` writes them.
    void writeLines(std::string_view path, const std::vector<std::string>& lines, Sync sync);
    // Gives `path` the content of `source` as writeFileAtomically does, synced. The hook is told of a copy before.
    void replaceContent(std::string_view path, std::string_view source);

    std::int64_t length(std::string_view path) const; // in bytes; regular files only
    // A regular file of exactly this name. A look that fails (a disk that doesn't answer) is a failure: for a file
    // that isn't seen others would make a new one, in place of what a person wrote.
    bool exists(std::string_view path) const;
    bool folderExists(std::string_view path) const;
    void requireFolder(std::string_view path) const; // "Path not found", or why it can't be listed
    // The path of the file that is read for this one: as written, or with the one name that differs in case alone.
    std::string resolveExistingName(std::string_view path) const;
    Instant modified(std::string_view path) const;
    void setModified(std::string_view path, Instant instant);
    FileStamp stamp(std::string_view path) const; // of the file that is read for this path, as it is now

    void copy(std::string_view source, std::string_view target, ReadOnlyTarget readOnly = ReadOnlyTarget::Stays);
    void remove(std::string_view path);
    // Takes a link away that stands in the place of a file of our own, wherever it leads. Nothing else is touched.
    void removeLink(std::string_view path);
    void rename(std::string_view from, std::string_view to);
    void makeFolder(std::string_view path);
    // Removes the hidden files that a killed run left in a folder while it wrote, as far as a listing of the folder
    // has met them: it is not read for this.
    void removeLeftOvers(std::string_view folder);

    // Names of the plain files that match folder + pattern ("*", "?", several joined by ";"), sorted as
    // lists are; a snapshot. An absent folder gives none.
    std::vector<std::string> list(std::string_view folderAndPattern) const;
    // The same for a folder that must be there: "Path not found" where it can't be listed.
    std::vector<std::string> listExisting(std::string_view folderAndPattern) const;
    // Names of the folders in `folder`, without "." and "..", sorted as lists are.
    std::vector<std::string> listFolders(std::string_view folder) const;
    // Files and folders that match folder + pattern, with "." and "..": `Dir` with the directory attribute.
    std::vector<FolderEntry> listAll(std::string_view folderAndPattern) const;
    // DirectoryAttribute for a folder, 0 for anything else that is there. What a walk knows of the entry (its
    // `kind`) spares the look at the disk.
    int attributes(std::string_view path, FolderEntry::Kind known = FolderEntry::Kind::Unknown) const;
    // Of the folders that `folder` has under these names, in any case of letters, those that are links and lead out of
    // `home`. One that leads nowhere may lead anywhere tomorrow, and is among them.
    std::vector<FolderLink> linksOut(
        std::string_view folder, const std::vector<std::string_view>& names, std::string_view home) const;
    // Whether both paths lead to one file, by whatever names; false when one of them is absent. For what would delete
    // the very file that it is about to copy.
    bool isSameFile(std::string_view path, std::string_view other) const;

    // The path that the system knows for a file that is only to be read (with the fall-back in case), "File not
    // found" where there is none. For the platform's own use.
    std::string nativeForReading(std::string_view path) const;

    // Runs the fault hook for an operation that the picture service makes on its own.
    void checkFault(FileOperation operation, std::string_view path) const;

private:
    struct State;
    std::unique_ptr<State> m_state;
};

// "/home/ann/x" to "/home\ann\x"; a name that is no UTF-8 comes as the program knows it.
std::string fromNativePath(std::string_view native);
// The other way, separators only, for texts that a person reads.
std::string toNativePath(std::string_view path);
// For people: the native form of an absolute path, any other text as it stands.
std::string readablePath(std::string_view text);

} // namespace trovarium
