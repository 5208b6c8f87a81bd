// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/files/Descriptor.h"
#include "platform/files/FileTypes.h"
#include "platform/files/NativeErrors.h"
#include "platform/files/Paths.h"

#include <cstdint>
#include <functional>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <sys/stat.h>

namespace trovarium {

// A new file that takes its target's name when it is whole and vanishes otherwise: nobody sees half a file. Until
// `commit` it has no name, or a hidden one beside its target where the file system has no nameless files.
class AtomicFile {
public:
    AtomicFile(const std::string& folder, mode_t mode, Attempted attempted);
    AtomicFile(const AtomicFile&) = delete;
    AtomicFile& operator=(const AtomicFile&) = delete;
    ~AtomicFile();

    void write(std::string_view bytes);
    void copyContent(const Descriptor& source); // by the kernel where it can: shared blocks, else a copy within it
    void setModified(const timespec& time);
    // Owner, group and rights of another file; false when the system doesn't allow it.
    bool copyOwnership(const std::string& other, const struct stat& status);
    void sync(); // waits until the data is on the disk

    enum class Existing { Replace, Keep };
    // "File already exists" when the target is to be kept.
    void commit(const std::string& target, Existing existing);

private:
    bool copyAccessList(const std::string& other);
    std::string hiddenName(int number) const;
    void takeHiddenName();
    int linkTo(const std::string& name) const;
    void check(bool done) const;

    std::string m_folder;
    Attempted m_attempted;
    std::string m_name; // the hidden one, if any
    Descriptor m_descriptor;
};

// Whether a hidden name is that of an AtomicFile whose process is gone. Another machine that shares the folder may
// have one of this number.
bool isLeftOver(std::string_view name);

// Renames without ever replacing a target; -1 with EEXIST when it is there.
int renameToFreeName(const std::string& from, const std::string& to);

// Where a path leads: itself, or the end of a chain of symbolic links, whether a file is there or not.
NativePath followLinks(std::string native);

// Takes what was written off `bytes`: all of it, or less if the writing fails.
void writeAll(const Descriptor& file, std::string_view& bytes, Attempted attempted);

// "Path/File access error" for what is no regular file, "Out of memory" for more than `most` bytes.
std::string readWhole(const Descriptor& file, std::int64_t most = std::numeric_limits<std::int64_t>::max());

// Replaces `old`, the file at `place`, or creates it with these rights. A kill or a full disk leaves `old`. Owner and
// rights stay. Where a second name or the owner couldn't be kept that way, the file is overwritten instead.
// `beforeCommit` is called when only the last step is left.
void writeFileAtomically(const NativePath& place, const std::optional<struct stat>& old, std::string_view bytes,
    unsigned rights, Sync sync, const std::function<void()>& beforeCommit);

} // namespace trovarium
