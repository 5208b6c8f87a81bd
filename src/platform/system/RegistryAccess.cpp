#include "platform/system/RegistryAccess.h"

#include "platform/files/AtomicFile.h"
#include "platform/system/SettingsText.h"
#include "platform/system/UserFolders.h"
#include "runtime/Failure.h"

#include <array>
#include <cerrno>
#include <charconv>
#include <cstdio>
#include <fcntl.h>
#include <optional>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace trovarium {

namespace {

std::string storeFile(const std::string& folder, std::uint32_t root)
{
    if (folder.empty())
        throw Failure(FailureKind::PathNotFound);
    if (root == HkeyLocalMachine)
        return folder + "/settings.txt";
    std::array<char, 16> number{};
    std::snprintf(number.data(), number.size(), "%08X", static_cast<unsigned int>(root));
    return folder + "/settings-" + number.data() + ".txt";
}

// None when there is no file yet. Anything but a regular file is a failing store. O_NONBLOCK: opening a pipe must not
// wait for its other end.
std::optional<std::string> readFile(const std::string& path)
{
    const Descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    if (!file.isOpen() && errno == ENOENT)
        return std::nullopt;
    struct stat status { };
    if (!file.isOpen() || ::fstat(file.handle(), &status) != 0 || !S_ISREG(status.st_mode))
        throw Failure(FailureKind::PathFileAccess);
    return readWhole(file);
}

// A symbolic link in its place stays and leads to the new file. The data isn't synced: a counter is written for each
// file of an import.
void replaceFile(const std::string& path, std::string_view text)
{
    for (std::size_t end = path.find('/', 1); end != std::string::npos; end = path.find('/', end + 1))
        ::mkdir(path.substr(0, end).c_str(), 0700); // a folder that can't be made shows when the file is opened
    const NativePath place = followLinks(path);
    struct stat old { };
    const bool exists = ::stat(place.whole().c_str(), &old) == 0;
    if (exists && ::access(place.whole().c_str(), W_OK) != 0)
        failNow(Attempted::Access);
    AtomicFile file(place.folder, exists ? old.st_mode & 0777 : NewFileMode, Attempted::Access);
    if (exists)
        file.copyOwnership(place.whole(), old); // as far as the system allows
    file.write(text);
    file.commit(place.whole(), AtomicFile::Existing::Replace);
}

std::optional<std::uint32_t> numberIn(std::string_view text)
{
    constexpr std::string_view Mark = "dword:";
    constexpr std::size_t Digits = 8;
    if (!text.starts_with(Mark) || text.size() != Mark.size() + Digits)
        return std::nullopt;
    std::uint32_t number = 0;
    const auto [end, error] = std::from_chars(text.data() + Mark.size(), text.data() + text.size(), number, 16);
    return error == std::errc() && end == text.data() + text.size() ? std::optional(number) : std::nullopt;
}

} // namespace

RegistryAccess::RegistryAccess()
    : m_folder(userFolder("XDG_CONFIG_HOME", ".config"))
{
    if (!m_folder.empty())
        m_folder += "/OmbrelaneWorks";
}

RegistryAccess::RegistryAccess(std::string folder)
    : m_folder(std::move(folder))
{
}

bool RegistryAccess::WriteValue(
    std::uint32_t root, std::string_view keyPath, std::string_view name, std::string_view value)
{
    const std::string path = storeFile(m_folder, root);
    const std::string before = readFile(path).value_or("");
    SettingsText settings(before);
    if (settings.value(keyPath, name) == value)
        return true;
    settings.setValue(keyPath, name, value);
    replaceFile(path, settings.text());
    return true;
}

bool RegistryAccess::ReadValue(
    std::uint32_t root, std::string_view keyPath, std::string_view name, std::string& value) const
{
    const std::optional<std::string> text = readFile(storeFile(m_folder, root));
    if (!text)
        return false;
    std::optional<std::string> found = SettingsText(*text).value(keyPath, name);
    if (!found)
        return false;
    value = std::move(*found);
    return true;
}

std::optional<RegistryValue> RegistryAccess::QueryValue(
    std::uint32_t root, std::string_view keyPath, std::string_view name, std::size_t limit) const
{
    std::string text;
    if (!ReadValue(root, keyPath, name, text))
        return std::nullopt;
    RegistryValue value{RegistryValue::String, text + '\0'};
    if (const auto number = numberIn(text)) {
        value = {RegistryValue::DoubleWord, {}};
        for (int shift = 0; shift < 32; shift += 8)
            value.bytes += static_cast<char>(*number >> shift);
    }
    return value.bytes.size() <= limit ? std::optional(std::move(value)) : std::nullopt;
}

} // namespace trovarium
