#include "platform/files/FolderListings.h"

#include "platform/files/FolderReader.h"
#include "runtime/Failure.h"
#include "runtime/Text.h"

#include <algorithm>

namespace trovarium {

namespace {

using namespace std::chrono_literals;

constexpr std::size_t MaxListings = 32;

// The system stamps changes by its tick, of 10 milliseconds at most, so that two changes can share a stamp.
// File systems without fractions of a second stamp by one or two seconds.
constexpr std::chrono::nanoseconds Tick = 20ms;
constexpr std::chrono::nanoseconds CoarseTick = 2s;

// A listing in doubt is read again at once when it is short; a long one not before 50 times the time that
// reading it took, so that our own making of many files isn't slowed down.
constexpr std::size_t ShortListing = 256;
constexpr int CostFactor = 50;

} // namespace

void FolderListings::Listing::add(const std::string& leaf)
{
    drop(leaf);
    entries.emplace(upper(nameInside(leaf)), leaf);
}

void FolderListings::Listing::drop(const std::string& leaf)
{
    const auto [first, last] = entries.equal_range(upper(nameInside(leaf)));
    const auto found = std::find_if(first, last, [&](const auto& entry) { return entry.second == leaf; });
    if (found != last)
        entries.erase(found);
}

FolderListings::Stamp FolderListings::stampOf(const struct stat& status)
{
    const auto changed = std::chrono::seconds(status.st_mtim.tv_sec) + std::chrono::nanoseconds(status.st_mtim.tv_nsec);
    return {status.st_dev, status.st_ino, WallTime(changed)};
}

std::optional<FolderListings::Stamp> FolderListings::stampOf(const std::string& folder)
{
    struct stat status = {};
    if (stat(folder.c_str(), &status) != 0 || !S_ISDIR(status.st_mode))
        return std::nullopt;
    return stampOf(status);
}

bool FolderListings::isFresh(const Stamp& stamp)
{
    const bool coarse = stamp.changed == std::chrono::floor<std::chrono::seconds>(stamp.changed);
    return WallTime(std::chrono::system_clock::now()) - stamp.changed < (coarse ? CoarseTick : Tick);
}

std::optional<std::string> FolderListings::sameName(const std::string& folder, std::string_view name)
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

std::optional<std::string> FolderListings::readableName(const std::string& folder, std::string_view name)
{
    if (std::optional<std::string> same = sameName(folder, name))
        return same;
    const auto kept = m_listings.find(folder);
    if (kept == m_listings.end())
        return std::nullopt;

    std::optional<std::string> found;
    const auto [first, last] = kept->second.entries.equal_range(upper(name));
    for (auto entry = first; entry != last; ++entry) {
        // Of two entries that bear one name inside, only the UTF-8 one counts.
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

void FolderListings::carry(std::initializer_list<Edit> edits, const std::function<void()>& change)
{
    for (const Edit& edit : edits)
        unchanged(edit.place.folder);
    change();
    for (const Edit& edit : edits) {
        const auto kept = m_listings.find(edit.place.folder);
        if (kept == m_listings.end())
            continue;
        Listing& listing = kept->second;
        if (edit.what == Edit::What::Made)
            listing.add(edit.place.leaf);
        else
            listing.drop(edit.place.leaf);
        const std::optional<Stamp> stamp = stampOf(edit.place.folder);
        if (stamp && *stamp != listing.stamp) {
            listing.stamp = *stamp;
            listing.inDoubt = true;
        }
    }
}

void FolderListings::clear()
{
    m_listings.clear();
}

FolderListings::Listing* FolderListings::unchanged(const std::string& folder)
{
    const auto kept = m_listings.find(folder);
    if (kept == m_listings.end())
        return nullptr;
    if (kept->second.stamp == stampOf(folder))
        return &kept->second;
    m_listings.erase(kept);
    return nullptr;
}

FolderListings::Listing* FolderListings::current(const std::string& folder)
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

FolderListings::Listing* FolderListings::read(const std::string& folder)
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
    ++m_foldersRead;

    if (m_listings.size() >= MaxListings) {
        m_listings.erase(std::min_element(m_listings.begin(), m_listings.end(),
            [](const auto& one, const auto& other) { return one.second.lastUse < other.second.lastUse; }));
    }
    return &m_listings.emplace(folder, std::move(listing)).first->second;
}

} // namespace trovarium
