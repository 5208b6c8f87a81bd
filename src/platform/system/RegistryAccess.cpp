#include "platform/system/RegistryAccess.h"

#include "platform/files/AtomicFile.h"
#include "platform/files/WholeFile.h"
#include "platform/system/SettingsText.h"
#include "platform/system/UserFolders.h"
#include "runtime/Failure.h"

#include <algorithm>
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

// Nothing when there is no file yet. Anything but a regular file is a failing store; opening a pipe
// must not wait for its other end.
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

// A change inside one line that keeps its length, such as a counter's, is written over the old bytes without waiting
// for the disk: a loss of power may tear that line, and nothing else of the file. False where that can't be promised;
// a file with a second name is left alone too, since that may be a copy that somebody keeps.
bool changeInPlace(const std::string& path, std::string_view before, std::string_view after)
{
    if (before.size() != after.size())
        return false;
    const auto head = std::mismatch(before.begin(), before.end(), after.begin()).first - before.begin();
    const auto tail = std::mismatch(before.rbegin(), before.rend(), after.rbegin()).first - before.rbegin();
    const auto first = static_cast<std::size_t>(head);
    const std::size_t size = before.size() - first - static_cast<std::size_t>(tail);
    const std::string_view changed = after.substr(first, size);
    if (changed.find('\n') != changed.npos)
        return false;
    const Descriptor file(::open(path.c_str(), O_RDWR | O_CLOEXEC | O_NONBLOCK));
    struct stat status { };
    return file.isOpen() && ::fstat(file.handle(), &status) == 0 && status.st_nlink == 1 && readWhole(file) == before
        && ::pwrite(file.handle(), changed.data(), size, head) == static_cast<ssize_t>(size);
}

// Beside the file and renamed when the disk has it whole, so that a crash, a full disk or a loss of power leaves the
// old one. A link in its place stays, and leads to the new one.
void replaceFile(const std::string& path, std::string_view text)
{
    for (std::size_t end = path.find('/', 1); end != std::string::npos; end = path.find('/', end + 1))
        ::mkdir(path.substr(0, end).c_str(), 0700); // what is missing yet tells at the open
    const NativePath place = linkEnd(path);
    struct stat old { };
    const bool exists = ::stat(place.whole().c_str(), &old) == 0;
    if (exists && ::access(place.whole().c_str(), W_OK) != 0)
        failNow(Attempted::Access);
    AtomicFile file(place.folder, exists ? old.st_mode & 0777 : 0666, Attempted::Access);
    if (exists)
        file.belongsAs(place.whole(), old); // where the system lets its owner be another
    file.write(text);
    file.sync();
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
    const std::string after = settings.text();
    if (!changeInPlace(path, before, after))
        replaceFile(path, after);
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
