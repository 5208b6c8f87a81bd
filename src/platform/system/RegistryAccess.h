// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace trovarium {

// The one root that the store has.
inline constexpr std::uint32_t HkeyLocalMachine = 0x80000002;

// The settings store: a text file in the user's configuration folder, a section for each key
// path, a line for each value. Each write replaces the file as a
// whole, so a kill or a full disk leaves the old one. A damaged line is kept and counts as absent; a store that can't
// be opened or read is a `Failure`.
class RegistryAccess {
public:
    RegistryAccess();                            // below $XDG_CONFIG_HOME, else ~/.config
    explicit RegistryAccess(std::string folder); // native path

    bool WriteValue(std::string_view keyPath, std::string_view name, std::string_view value);
    bool ReadValue(std::string_view keyPath, std::string_view name, std::string& value) const;

private:
    std::string m_folder;
};

} // namespace trovarium
