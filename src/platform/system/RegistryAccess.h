#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace trovarium {

inline constexpr std::uint32_t HkeyLocalMachine = 0x80000002;

// A value as it is stored: a text with a NUL behind it, or the four bytes of a number, the lowest first.
struct RegistryValue {
    enum Kind { String = 1, DoubleWord = 4 };

    Kind type = String;
    std::string bytes;
};

// The settings store: one text file per root in the user's configuration folder, a section for each key
// path, a line for each value ("dword:" and eight hexadecimal digits for a number). Each write replaces the file as a
// whole, so a kill or a full disk leaves the old one. A damaged line is kept and counts as absent; a store that can't
// be opened or read is a `Failure`.
class RegistryAccess {
public:
    RegistryAccess();                            // below $XDG_CONFIG_HOME, else ~/.config
    explicit RegistryAccess(std::string folder); // native path

    bool WriteValue(std::uint32_t root, std::string_view keyPath, std::string_view name, std::string_view value);
    bool ReadValue(std::uint32_t root, std::string_view keyPath, std::string_view name, std::string& value) const;
    // As it is stored; nothing for one that is absent or has more bytes than `limit`.
    std::optional<RegistryValue> QueryValue(
        std::uint32_t root, std::string_view keyPath, std::string_view name, std::size_t limit) const;

private:
    std::string m_folder;
};

} // namespace trovarium
