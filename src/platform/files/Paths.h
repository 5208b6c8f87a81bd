#pragma once

#include <string>
#include <string_view>

namespace trovarium {

// Where a file lies for the system: "folder/leaf", the folder without a slash at its end but for the root.
struct NativePath {
    std::string folder;
    std::string leaf;

    std::string whole() const;
    bool operator==(const NativePath&) const = default;
};

std::string joinNative(std::string_view folder, std::string_view leaf);

// The system's spelling of a path of the program, doubled separators as one. "Path not found" for one that isn't
// absolute: nothing is ever looked up from the working folder. A NUL can't be in a name, so such a path is absent too.
std::string nativeAsWritten(std::string_view path);

// Splits at the last slash: nothing but a folder has a slash at its end, and so no leaf.
NativePath splitNative(std::string_view native);
std::string_view withoutEndSlashes(std::string_view native);

// A name on disk as the program knows it, always valid text.
std::string nameInside(std::string_view nativeName);

// The library's formats can't name a file with a separator or the end of a line in it.
bool canBeNamed(std::string_view nativeName);

} // namespace trovarium
