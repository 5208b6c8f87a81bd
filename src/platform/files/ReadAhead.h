#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <sys/stat.h>
#include <vector>

namespace trovarium {

// Files that a run is going to read one after the other, read on threads of its own a little ahead of it. It is no
// more than a head start: what isn't there yet, can't be read, is large or has been changed meanwhile is read in the
// usual way, with the usual failures. Everything here is for one thread; paths are native.
class ReadAhead {
public:
    struct File {
        struct stat status = {};
        std::string bytes; // all of it
    };

    ReadAhead();
    ~ReadAhead();

    // In this order; `looks`, when there are any, are as many files that will be asked for with them. What was
    // expected before is given up; few files aren't worth a thread.
    void expect(std::vector<std::string> paths, std::vector<std::string> looks = {});
    // The same for files of any size that will be copied one after the other: a few of them are brought into the
    // system's memory, while the one before is written.
    void expectCopies(std::vector<std::string> paths);
    // The next file, or one a little behind it, as it was a moment ago; those before it are given up.
    const struct stat* status(std::string_view path);
    std::optional<File> take(std::string_view path);
    // The program itself has changed the file.
    void changed(std::string_view path);

private:
    struct Slot;
    struct Run;

    Slot* find(std::string_view path);

    std::unique_ptr<Run> m_run; // null when nothing is expected
};

} // namespace trovarium
