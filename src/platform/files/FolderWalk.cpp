#include "platform/files/FolderWalk.h"

#include "platform/files/AtomicFile.h"
#include "platform/files/FolderReader.h"
#include "platform/files/NativeErrors.h"
#include "platform/files/Paths.h"
#include "runtime/Dates.h"
#include "runtime/Text.h"

#include <algorithm>
#include <chrono>
#include <optional>
#include <string_view>
#include <sys/stat.h>
#include <utility>

namespace trovarium {

namespace {

struct Listed {
    std::string capitals;
    FolderEntry entry;
    bool isUtf8;

    // Of two that bear one name the UTF-8 one comes first.
    bool operator<(const Listed& other) const
    {
        if (capitals != other.capitals)
            return capitals < other.capitals;
        return entry.name != other.entry.name ? entry.name < other.entry.name : isUtf8 && !other.isUtf8;
    }
};

// No folder and no link that someone gave such a name, and nothing that another machine may still be writing.
bool isLeftOverFile(const std::string& folder, std::string_view name)
{
    constexpr std::chrono::hours LongestWrite(24);
    struct stat status = {};
    return isLeftOver(name) && lstat(joinNative(folder, name).c_str(), &status) == 0 && S_ISREG(status.st_mode)
        && now() - Instant(std::chrono::seconds(status.st_mtim.tv_sec)) > LongestWrite;
}

} // namespace

std::vector<FolderEntry> entriesOf(
    const std::string& folder, const NamePattern& pattern, std::set<std::string>& leftOvers)
{
    FolderReader reader(folder);
    if (!reader.isOpen())
        failNow(Attempted::Access);
    std::vector<Listed> found;
    for (const char* name : {".", ".."}) {
        if (pattern.matches(name))
            found.push_back({name, {name, FolderEntry::Kind::Folder}, true});
    }
    while (const std::optional<FolderReader::Entry> entry = reader.next()) {
        if (isLeftOverFile(folder, entry->name))
            leftOvers.insert(joinNative(folder, entry->name));
        if (entry->name.front() == '.' || !canBeNamed(entry->name))
            continue;
        std::string name = nameInside(entry->name);
        std::string capitals = upper(name);
        if (!pattern.matches(capitals))
            continue;
        if (const std::optional<FolderEntry::Kind> kind = reader.kindOf(*entry)) {
            const bool isUtf8 = name == entry->name;
            found.push_back({std::move(capitals), {std::move(name), *kind}, isUtf8});
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
