// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/system/RegistryAccess.h"

#include <string>
#include <string_view>

namespace trovarium {

// The settings: all that the program keeps between runs outside the library. Every value is a text, booleans included.
// A failing store gives the empty text or false and is not reported; `fallback` is for an absent value only.
class COWReg {
public:
    explicit COWReg(RegistryAccess store = RegistryAccess());

    std::string GetOWSetting(
        std::string_view product, std::string_view section, std::string_view key, std::string_view fallback) const;
    bool SetOWSetting(std::string_view product, std::string_view section, std::string_view key, std::string_view value);
    std::string GetRegSetting(std::string_view path, std::string_view key, std::string_view fallback) const;
    bool SetRegSetting(std::string_view path, std::string_view key, std::string_view value);

private:
    RegistryAccess m_store;
};

} // namespace trovarium
