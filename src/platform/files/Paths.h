// SPDX-License-Identifier: GPL-3.0-or-later
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

// The native form of a path of the program, doubled separators as one. "Path not found" for a relative path (nothing is
// ever looked up in the working folder) and for one with a NUL in it.
std::string nativeAsWritten(std::string_view path);

// Splits at the last slash. The leaf is empty behind a slash at the end.
NativePath splitNative(std::string_view native);
std::string_view withoutEndSlashes(std::string_view native);

// A name on disk as the program knows it, always valid UTF-8.
std::string nameInside(std::string_view nativeName);

// False for a name with a backslash or the end of a line in it, which no list or information file can hold.
bool canBeNamed(std::string_view nativeName);

// "/home/ann/x" to "/home\ann\x"; names that aren't UTF-8 are read as Windows-1252.
std::string fromNativePath(std::string_view native);
// The other way, separators only, for texts that a person reads.
std::string toNativePath(std::string_view path);
// For people: the native form of an absolute path, any other text unchanged.
std::string readablePath(std::string_view text);

} // namespace trovarium
