// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/files/FolderReader.h"

#include "platform/files/AtomicFile.h"
#include "platform/files/NativeErrors.h"
#include "platform/files/Paths.h"
#include "runtime/Dates.h"
#include "runtime/Text.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <fcntl.h>
#include <tuple>
#include <utility>

namespace trovarium {

FolderReader::FolderReader(const std::string& folder)
    : m_stream(opendir(folder.c_str()))
{
}

struct stat FolderReader::status() const
{
    struct stat status = {};
    if (fstat(dirfd(m_stream.get()), &status) != 0)
        failNow(Attempted::Access);
    return status;
}

std::optional<FolderReader::Entry> FolderReader::next()
{
    for (;;) {
        errno = 0;
        const dirent* entry = readdir(m_stream.get());
        if (entry == nullptr) {
            if (errno != 0)
                failNow(Attempted::Access);
            return std::nullopt;
        }
        const std::string_view name(entry->d_name);
        if (name != "." && name != "..")
            return Entry{name, entry->d_type};
    }
}

std::optional<FolderEntry::Kind> FolderReader::kindOf(const Entry& entry) const
{
    using Kind = FolderEntry::Kind;
    if (entry.type == DT_REG)
        return Kind::File;
    if (entry.type == DT_DIR)
        return Kind::Folder;
    if (entry.type != DT_LNK && entry.type != DT_UNKNOWN)
        return std::nullopt;

    // In the buffer of the stream the name ends with a NUL.
    const char* name = entry.name.data();
    const int folder = dirfd(m_stream.get());
    struct stat status = {};
    if (fstatat(folder, name, &status, AT_SYMLINK_NOFOLLOW) != 0)
        return errno == ENOENT ? std::nullopt : std::optional(Kind::Unknown);
    if (S_ISDIR(status.st_mode))
        return Kind::Folder;
    if (S_ISLNK(status.st_mode) && fstatat(folder, name, &status, 0) != 0)
        return std::nullopt;
    return S_ISREG(status.st_mode) ? std::optional(Kind::File) : std::nullopt;
}

std::int64_t FolderReader::lengthOf(const Entry& entry) const
{
    struct stat status = {};
    return fstatat(dirfd(m_stream.get()), entry.name.data(), &status, 0) == 0 ? status.st_size : UnknownLength;
}

namespace {

std::size_t afterCharacter(std::string_view text, std::size_t position)
{
    do {
        ++position;
    } while (position < text.size() && (static_cast<unsigned char>(text[position]) & 0xC0) == 0x80);
    return position;
}

// "*" is any text, "?" one character. Goes back to the last "*" only, so that the work is at most the product of both
// lengths.
bool matchesOne(std::string_view pattern, std::string_view name)
{
    std::size_t inPattern = 0;
    std::size_t inName = 0;
    std::size_t star = std::string_view::npos; // none yet
    std::size_t afterStar = 0;
    while (inName < name.size()) {
        const char wanted = inPattern < pattern.size() ? pattern[inPattern] : '\0';
        if (wanted == '*') {
            star = inPattern++;
            afterStar = inName;
        } else if (wanted == '?' && inPattern < pattern.size()) {
            ++inPattern;
            inName = afterCharacter(name, inName);
        } else if (inPattern < pattern.size() && wanted == name[inName]) {
            ++inPattern;
            ++inName;
        } else if (star != std::string_view::npos) {
            inPattern = star + 1;
            afterStar = afterCharacter(name, afterStar);
            inName = afterStar;
        } else {
            return false;
        }
    }
    return pattern.find_first_not_of('*', inPattern) == std::string_view::npos;
}

// In capitals. "*.*" matches every name.
std::vector<std::string> splitPatterns(std::string_view joined)
{
    std::vector<std::string> patterns;
    while (!joined.empty()) {
        const std::string_view pattern = joined.substr(0, joined.find(';'));
        if (!pattern.empty())
            patterns.push_back(pattern == "*.*" ? "*" : upper(trimmed(pattern)));
        joined.remove_prefix(std::min(pattern.size() + 1, joined.size()));
    }
    return patterns;
}

bool matchesAny(const std::vector<std::string>& patterns, std::string_view capitals)
{
    return std::any_of(
        patterns.begin(), patterns.end(), [&](const auto& pattern) { return matchesOne(pattern, capitals); });
}

struct Listed {
    std::string capitals;
    FolderEntry entry;
    bool isUtf8;

    // Of two with the same name the UTF-8 one comes first.
    bool operator<(const Listed& other) const
    {
        return std::tie(capitals, entry.name, other.isUtf8) < std::tie(other.capitals, other.entry.name, isUtf8);
    }
};

// A regular file, and old enough that no other machine is still writing it.
bool isLeftOverFile(const std::string& folder, std::string_view name)
{
    constexpr std::chrono::hours LongestWrite(24);
    struct stat status = {};
    return isLeftOver(name) && lstat(joinNative(folder, name).c_str(), &status) == 0 && S_ISREG(status.st_mode)
        && now() - Instant(std::chrono::seconds(status.st_mtim.tv_sec)) > LongestWrite;
}

} // namespace

std::vector<FolderEntry> entriesOf(
    const std::string& folder, std::string_view patterns, std::string_view measured, std::set<std::string>& leftOvers)
{
    const std::vector<std::string> listedOnes = splitPatterns(patterns.empty() ? "*" : patterns);
    const std::vector<std::string> measuredOnes = splitPatterns(measured);
    FolderReader reader(folder);
    if (!reader.isOpen())
        failNow(Attempted::Access);
    std::vector<Listed> found;
    for (const char* name : {".", ".."}) {
        if (matchesAny(listedOnes, name))
            found.push_back({name, {name, FolderEntry::Kind::Folder}, true});
    }
    while (const std::optional<FolderReader::Entry> entry = reader.next()) {
        if (isLeftOverFile(folder, entry->name))
            leftOvers.insert(joinNative(folder, entry->name));
        if (entry->name.front() == '.' || !canBeNamed(entry->name))
            continue;
        std::string name = nameInside(entry->name);
        std::string capitals = upper(name);
        if (!matchesAny(listedOnes, capitals))
            continue;
        if (const std::optional<FolderEntry::Kind> kind = reader.kindOf(*entry)) {
            const bool isUtf8 = name == entry->name;
            std::optional<std::int64_t> length;
            if (*kind == FolderEntry::Kind::File && matchesAny(measuredOnes, capitals))
                length = reader.lengthOf(*entry);
            found.push_back({std::move(capitals), {std::move(name), *kind, length}, isUtf8});
        }
    }
    std::sort(found.begin(), found.end());

    std::vector<FolderEntry> entries;
    entries.reserve(found.size());
    for (Listed& listed : found) {
        if (entries.empty() || entries.back().name != listed.entry.name)
            entries.push_back(std::move(listed.entry));
    }
    return entries;
}

std::vector<std::string> namesOf(std::vector<FolderEntry> entries, FolderEntry::Kind kind)
{
    std::vector<std::string> names;
    names.reserve(entries.size());
    for (FolderEntry& entry : entries) {
        if (entry.kind == kind)
            names.push_back(std::move(entry.name));
    }
    return names;
}

} // namespace trovarium
