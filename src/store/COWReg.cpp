// SPDX-License-Identifier: GPL-3.0-or-later

#include "store/COWReg.h"

#include "runtime/Failure.h"

#include <utility>

namespace trovarium {

namespace {

std::string keyPath(std::string_view product, std::string_view section)
{
    std::string path = R"(SOFTWARE\OmbrelaneWorks\)";
    path.append(product).append("\\").append(section);
    return path;
}

} // namespace

COWReg::COWReg(RegistryAccess store)
    : m_store(std::move(store))
{
}

std::string COWReg::GetOWSetting(
    std::string_view product, std::string_view section, std::string_view key, std::string_view fallback) const
{
    return GetRegSetting(keyPath(product, section), key, fallback);
}

bool COWReg::SetOWSetting(
    std::string_view product, std::string_view section, std::string_view key, std::string_view value)
{
    return SetRegSetting(keyPath(product, section), key, value);
}

// Startup detects a broken settings store by this empty string.
std::string COWReg::GetRegSetting(std::string_view path, std::string_view key, std::string_view fallback) const
try {
    std::string value;
    if (!m_store.ReadValue(path, key, value))
        return std::string(fallback);
    return value;
} catch (const Failure&) {
    return {};
}

bool COWReg::SetRegSetting(std::string_view path, std::string_view key, std::string_view value)
try {
    return m_store.WriteValue(path, key, value);
} catch (const Failure&) {
    return false;
}

} // namespace trovarium
