#include "platform/system/RegistryAccess.h"

#include "platform/files/Descriptor.h"
#include "platform/system/SettingsText.h"
#include "platform/system/UserFolders.h"
#include "runtime/Failure.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <memory>
#include <optional>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace trovarium {

namespace {

[[noreturn]] void fail(int error)
{
    switch (error) {
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
        throw Failure(FailureKind::DiskFull);
    case EIO:
        throw Failure(FailureKind::DeviceIo);
    default:
        throw Failure(FailureKind::PathFileAccess);
    }
}

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
    if (!file.isOpen()) {
        if (errno == ENOENT)
            return std::nullopt;
        fail(errno);
    }
    struct stat status { };
    if (::fstat(file.handle(), &status) != 0)
        fail(errno);
    if (!S_ISREG(status.st_mode))
        throw Failure(FailureKind::PathFileAccess);
    std::string text;
    std::array<char, 4096> buffer{};
    for (;;) {
        const ssize_t count = ::read(file.handle(), buffer.data(), buffer.size());
        if (count == 0)
            return text;
        if (count > 0)
            text.append(buffer.data(), static_cast<std::size_t>(count));
        else if (errno != EINTR)
            fail(errno);
    }
}

void makeFolders(const std::string& path)
{
    for (std::size_t end = path.find('/', 1); end != std::string::npos; end = path.find('/', end + 1)) {
        if (::mkdir(path.substr(0, end).c_str(), 0700) != 0 && errno != EEXIST && errno != EROFS && errno != EACCES)
            fail(errno);
    }
}

// The file that a link in its place leads to, so that the link stays.
std::string resolved(const std::string& path)
{
    const std::unique_ptr<char, decltype(&std::free)> target(::realpath(path.c_str(), nullptr), &std::free);
    return target == nullptr ? path : target.get();
}

void writeAll(int file, std::string_view text)
{
    while (!text.empty()) {
        const ssize_t count = ::write(file, text.data(), text.size());
        if (count >= 0)
            text.remove_prefix(static_cast<std::size_t>(count));
        else if (errno != EINTR)
            fail(errno);
    }
}

// Beside the file and renamed when it is whole, so that a crash or a full disk leaves the old one.
void replaceFile(const std::string& path, std::string_view text)
{
    struct stat old { };
    const bool exists = ::stat(path.c_str(), &old) == 0;
    if (exists && ::access(path.c_str(), W_OK) != 0)
        fail(errno);
    const std::string scratch = path + "." + std::to_string(::getpid());
    Descriptor file(::open(scratch.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC | O_NOFOLLOW, 0666));
    if (!file.isOpen())
        fail(errno);
    try {
        if (exists && ::fchmod(file.handle(), old.st_mode & 07777) != 0)
            fail(errno);
        writeAll(file.handle(), text);
        if (::fsync(file.handle()) != 0)
            fail(errno);
        if (file.close() != 0) // some file systems tell a failed write only here
            fail(errno);
        if (::rename(scratch.c_str(), path.c_str()) != 0)
            fail(errno);
    } catch (const Failure&) {
        ::unlink(scratch.c_str());
        throw;
    }
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
    SettingsText settings(readFile(path).value_or(""));
    if (settings.value(keyPath, name) == value)
        return true;
    settings.setValue(keyPath, name, value);
    makeFolders(path);
    replaceFile(resolved(path), settings.text());
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

} // namespace trovarium
