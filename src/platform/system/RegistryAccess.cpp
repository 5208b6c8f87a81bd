// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/system/RegistryAccess.h"

#include "platform/files/AtomicFile.h"
#include "platform/system/SettingsText.h"
#include "platform/system/UserFolders.h"
#include "runtime/Failure.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <iterator>
#include <optional>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace trovarium {

namespace {

std::string storeFile(const std::string& folder)
{
    if (folder.empty())
        throw Failure(FailureKind::PathNotFound);
    return folder + "/settings.txt";
}

// None when there is no file yet. Anything but a regular file is a failing store. O_NONBLOCK: opening a pipe must not
// wait for its other end.
std::optional<std::string> readFile(const std::string& path)
{
    const Descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    if (!file.isOpen() && errno == ENOENT)
        return std::nullopt;
    if (!file.isOpen())
        throw Failure(FailureKind::PathFileAccess);
    return readWhole(file);
}

// Overwrites part of one line, for a value of the same length: an import counts up for each of its files, and syncing a
// new file each time would take longer than the copy. Changes nothing and returns false where that isn't possible.
bool changeInPlace(const std::string& path, std::string_view before, std::string_view after)
{
    if (before.size() != after.size())
        return false;
    const auto start = std::mismatch(before.begin(), before.end(), after.begin()).first - before.begin();
    const auto equalAtEnd = std::mismatch(before.rbegin(), before.rend(), after.rbegin()).first - before.rbegin();
    const auto length = std::ssize(before) - start - equalAtEnd;
    const std::string_view changed = after.substr(static_cast<std::size_t>(start), static_cast<std::size_t>(length));
    if (changed.find('\n') != std::string_view::npos)
        return false;
    const Descriptor file(::open(path.c_str(), O_RDWR | O_CLOEXEC | O_NONBLOCK));
    struct stat status { };
    // Another name of the file (a hard link) is to keep the old settings.
    return file.isOpen() && ::fstat(file.handle(), &status) == 0 && status.st_nlink == 1 && readWhole(file) == before
        && ::pwrite(file.handle(), changed.data(), changed.size(), start) == length;
}

// A symbolic link in its place stays and leads to the new file.
void replaceFile(const std::string& path, std::string_view text)
{
    for (std::size_t end = path.find('/', 1); end != std::string::npos; end = path.find('/', end + 1))
        ::mkdir(path.substr(0, end).c_str(), 0700); // a folder that can't be made shows when the file is opened
    const NativePath place = followLinks(path);
    struct stat old { };
    const bool exists = ::stat(place.whole().c_str(), &old) == 0;
    if (exists && ::access(place.whole().c_str(), W_OK) != 0)
        failNow(Attempted::Access);
    AtomicFile file(place.folder, exists ? old.st_mode & 0777 : NewFileRights, Attempted::Access);
    if (exists)
        file.copyOwnership(place.whole(), old); // as far as the system allows
    file.write(text);
    file.sync();
    file.commit(place.whole(), AtomicFile::Existing::Replace);
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

bool RegistryAccess::WriteValue(std::string_view keyPath, std::string_view name, std::string_view value)
{
    const std::string path = storeFile(m_folder);
    const std::string before = readFile(path).value_or("");
    SettingsText settings(before);
    if (settings.value(keyPath, name) == value)
        return true;
    settings.setValue(keyPath, name, value);
    if (!changeInPlace(path, before, settings.text()))
        replaceFile(path, settings.text());
    return true;
}

bool RegistryAccess::ReadValue(std::string_view keyPath, std::string_view name, std::string& value) const
{
    const std::optional<std::string> text = readFile(storeFile(m_folder));
    if (!text)
        return false;
    std::optional<std::string> found = SettingsText(*text).value(keyPath, name);
    if (!found)
        return false;
    value = std::move(*found);
    return true;
}

} // namespace trovarium
