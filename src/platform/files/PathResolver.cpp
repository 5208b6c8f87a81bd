// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/files/PathResolver.h"

#include "platform/files/FolderReader.h"
#include "runtime/Failure.h"
#include "runtime/Text.h"

#include <algorithm>

namespace trovarium {

namespace {

using namespace std::chrono_literals;

constexpr std::size_t MaxListings = 32;

// Two changes within one tick of the system's clock, of 10 milliseconds at most, have the same stamp. File systems
// without fractions of a second have ticks of one or two seconds.
constexpr std::chrono::nanoseconds Tick = 20ms;
constexpr std::chrono::nanoseconds CoarseTick = 2s;

// A listing in doubt is read again at once when it is short. A long one is kept for 50 times as long as reading it
// took: otherwise creating many files would list the folder for each.
constexpr std::size_t ShortListing = 256;
constexpr int CostFactor = 50;

std::optional<FileStamp> folderStamp(const std::string& folder)
{
    struct stat status = {};
    if (stat(folder.c_str(), &status) != 0 || !S_ISDIR(status.st_mode))
        return std::nullopt;
    return stampOf(status);
}

// Whether the folder may change again without another stamp.
bool isFresh(const FileStamp& stamp)
{
    const auto age = std::chrono::system_clock::now().time_since_epoch() - std::chrono::seconds(stamp.changedSeconds)
        - std::chrono::nanoseconds(stamp.changedNanoseconds);
    return age < (stamp.changedNanoseconds == 0 ? CoarseTick : Tick);
}

} // namespace

bool isFolder(const std::string& native)
{
    struct stat status = {};
    return stat(native.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

std::string PathResolver::folder(const std::string& native)
{
    if (isFolder(native))
        return native;
    const NativePath parts = splitNative(withoutEndSlashes(native));
    if (parts.leaf.empty())
        throw Failure(FailureKind::PathNotFound);
    const std::string parent = folder(parts.folder);
    const bool dots = parts.leaf == "." || parts.leaf == "..";
    const std::optional<std::string> name = dots ? parts.leaf : readableName(parent, parts.leaf);
    std::string found = name ? joinNative(parent, *name) : std::string();
    if (!name || !isFolder(found))
        throw Failure(FailureKind::PathNotFound);
    return found;
}

NativePath PathResolver::exact(const std::string& native)
{
    NativePath place = splitNative(native);
    struct stat status = {};
    const bool ascii = isAscii(place.leaf);
    if (!ascii && lstat(native.c_str(), &status) == 0)
        return place;
    place.folder = folder(place.folder);
    if (!ascii)
        place.leaf = sameName(place.folder, place.leaf).value_or(place.leaf);
    return place;
}

std::string PathResolver::readable(const std::string& native)
{
    const NativePath place = splitNative(native);
    if (place.leaf.empty())
        throw Failure(FailureKind::FileNotFound);
    const std::string found = folder(place.folder);
    const std::optional<std::string> name = readableName(found, place.leaf);
    if (!name)
        throw Failure(FailureKind::FileNotFound);
    return joinNative(found, *name);
}

std::optional<std::string> PathResolver::readableName(const std::string& folder, std::string_view name)
{
    if (std::optional<std::string> same = sameName(folder, name))
        return same;
    const auto kept = m_listings.find(folder);
    if (kept == m_listings.end())
        return std::nullopt;

    std::optional<std::string> found;
    const auto [first, last] = kept->second.entries.equal_range(upper(name));
    for (auto entry = first; entry != last; ++entry) {
        // If the program knows two entries by the same name, only the UTF-8 one counts.
        if (found && nameInside(*found) == nameInside(entry->second)) {
            if (isUtf8(entry->second))
                found = entry->second;
            continue;
        }
        if (found)
            return std::nullopt;
        found = entry->second;
    }
    return found;
}

void PathResolver::applyChange(std::initializer_list<Edit> edits, const std::function<void()>& change)
{
    for (const Edit& edit : edits)
        unchanged(edit.place.folder);
    change();
    for (const Edit& edit : edits) {
        const auto kept = m_listings.find(edit.place.folder);
        if (kept == m_listings.end())
            continue;
        Listing& listing = kept->second;
        if (edit.what == Edit::What::Added)
            listing.add(edit.place.leaf);
        else
            listing.drop(edit.place.leaf);
        const std::optional<FileStamp> stamp = folderStamp(edit.place.folder);
        if (stamp && *stamp != listing.stamp) {
            listing.stamp = *stamp;
            listing.inDoubt = true;
        }
    }
}

void PathResolver::Listing::add(const std::string& leaf)
{
    drop(leaf);
    entries.emplace(upper(nameInside(leaf)), leaf);
}

void PathResolver::Listing::drop(const std::string& leaf)
{
    const auto [first, last] = entries.equal_range(upper(nameInside(leaf)));
    const auto found = std::find_if(first, last, [&](const auto& entry) { return entry.second == leaf; });
    if (found != last)
        entries.erase(found);
}

std::optional<std::string> PathResolver::sameName(const std::string& folder, std::string_view name)
{
    const Listing* listing = current(folder);
    if (listing == nullptr)
        return std::nullopt;
    const auto [first, last] = listing->entries.equal_range(upper(name));
    std::optional<std::string> found;
    for (auto entry = first; entry != last; ++entry) {
        if (entry->second == name)
            return entry->second;
        if (nameInside(entry->second) == name)
            found = entry->second;
    }
    return found;
}

PathResolver::Listing* PathResolver::unchanged(const std::string& folder)
{
    const auto kept = m_listings.find(folder);
    if (kept == m_listings.end())
        return nullptr;
    if (kept->second.stamp == folderStamp(folder))
        return &kept->second;
    m_listings.erase(kept);
    return nullptr;
}

PathResolver::Listing* PathResolver::current(const std::string& folder)
{
    Listing* listing = unchanged(folder);
    if (listing != nullptr && listing->inDoubt) {
        const bool due =
            listing->entries.size() <= ShortListing || Clock::now() - listing->readAt >= listing->cost * CostFactor;
        if (due)
            listing = nullptr;
    }
    if (listing == nullptr)
        listing = read(folder);
    if (listing != nullptr)
        listing->lastUse = ++m_uses;
    return listing;
}

PathResolver::Listing* PathResolver::read(const std::string& folder)
{
    m_listings.erase(folder);
    Listing listing;
    listing.readAt = Clock::now();
    FolderReader reader(folder);
    if (!reader.isOpen())
        return nullptr;
    listing.stamp = stampOf(reader.status());
    listing.inDoubt = isFresh(listing.stamp);
    while (const std::optional<FolderReader::Entry> entry = reader.next()) {
        if (canBeNamed(entry->name))
            listing.entries.emplace(upper(nameInside(entry->name)), entry->name);
    }
    listing.cost = Clock::now() - listing.readAt;

    if (m_listings.size() >= MaxListings) {
        m_listings.erase(std::min_element(m_listings.begin(), m_listings.end(),
            [](const auto& one, const auto& other) { return one.second.lastUse < other.second.lastUse; }));
    }
    return &m_listings.emplace(folder, std::move(listing)).first->second;
}

} // namespace trovarium
