#pragma once

#include "platform/files/Descriptor.h"
#include "platform/files/NativeErrors.h"
#include "platform/files/Paths.h"

#include <string>
#include <string_view>
#include <sys/stat.h>

namespace trovarium {

inline constexpr mode_t NewFileMode = 0666; // less what the user's mask takes away

// A new file that takes its target's name when it is whole and vanishes otherwise, so that nobody ever sees half
// a file under the name. It has no name until then; where the file system can't do that, and for the moment in
// which it replaces another, a short hidden one beside its target.
class AtomicFile {
public:
    AtomicFile(const std::string& folder, mode_t mode, Attempted attempted);
    AtomicFile(const AtomicFile&) = delete;
    AtomicFile& operator=(const AtomicFile&) = delete;
    ~AtomicFile();

    void write(std::string_view bytes);
    void copyContent(const Descriptor& source); // by the kernel where it can: shared blocks, else a copy within it
    void setModified(const timespec& time);
    // Takes over owner, group and rights; false when the system doesn't allow it.
    bool belongsAs(const std::string& other, const struct stat& status);
    void sync(); // waits until the disk has the bytes

    enum class Existing { Replace, Keep };
    // "File already exists" when the target is to be kept.
    void commit(const std::string& target, Existing existing);

private:
    bool takesListOf(const std::string& other);
    std::string hiddenName(int number) const;
    void takeHiddenName();
    int linkTo(const std::string& name) const;
    void check(bool done) const;

    std::string m_folder;
    Attempted m_attempted;
    std::string m_name; // the hidden one, if any
    Descriptor m_descriptor;
};

// A hidden name of a new file whose process runs no more here. On a folder that machines share it may run elsewhere.
bool isLeftOver(std::string_view name);

// Renames without ever replacing a target; -1 with EEXIST when it is there.
int renameToFreeName(const std::string& from, const std::string& to);

} // namespace trovarium
