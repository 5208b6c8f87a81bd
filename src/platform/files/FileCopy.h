#pragma once

#include "platform/files/Descriptor.h"
#include "platform/files/NativeErrors.h"
#include "platform/files/Paths.h"

#include <string>
#include <string_view>
#include <sys/stat.h>

namespace trovarium {

// A new file under a short hidden name beside its target, which takes the target's name when it is whole and
// vanishes otherwise. So nobody ever sees half a file under the name.
class NewFile {
public:
    NewFile(const std::string& folder, mode_t mode, Attempted attempted);
    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;
    ~NewFile();

    void write(std::string_view bytes);
    void copyContent(const Descriptor& source); // by the kernel where it can: shared blocks, else a copy within it
    void setModified(const timespec& time);

    enum class Existing { Replace, Keep };
    // "File already exists" when the target is to be kept.
    void becomes(const std::string& target, Existing existing);

private:
    void check(bool done) const;

    Attempted m_attempted;
    std::string m_name;
    Descriptor m_descriptor;
};

// Renames without ever replacing a target; -1 with EEXIST when it is there.
int renameToFreeName(const std::string& from, const std::string& to);

} // namespace trovarium
