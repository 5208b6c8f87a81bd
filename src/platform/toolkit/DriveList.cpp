#include "platform/toolkit/DriveList.h"

#include "platform/files/FileService.h"
#include "platform/system/UserFolders.h"
#include "platform/toolkit/Desktop.h"
#include "platform/toolkit/FolderPath.h"
#include "runtime/Failure.h"

#include <algorithm>
#include <utility>

namespace trovarium {

namespace {

// Where media have their folders. One that isn't there belongs to a medium that is gone.
constexpr std::string_view MountRoots[] = {"/media", "/run\\media", "/mnt"};

} // namespace

DriveList::DriveList(Container* parent, const Plan& plan)
    : Control(parent, plan)
{
    refreshPlaces();
    m_drive = m_places.size() > 1 ? m_places[1] : m_places[0];
}

void DriveList::setDrive(std::string value)
{
    value = folderPath(value);
    refreshPlaces();
    if (value.substr(0, 1) != "/")
        throw Failure(FailureKind::DeviceUnavailable);
    const auto& holder = *std::max_element(m_places.begin(), m_places.end(), [&](const auto& left, const auto& right) {
        return (liesIn(value, left) ? left.size() : 0) < (liesIn(value, right) ? right.size() : 0);
    });
    const FileService& files = desktop().files();
    const bool onMedium = std::any_of(std::begin(MountRoots), std::end(MountRoots),
        [&](std::string_view root) { return value != root && liesIn(value, root); });
    if (!files.folderExists(holder) || (onMedium && holder == "/" && !files.folderExists(value)))
        throw Failure(FailureKind::DeviceUnavailable);
    if (holder == m_drive)
        return;
    m_drive = holder;
    changed(trovarium::Change::Content);
    Change.raise();
}

std::string DriveList::nameOf(const std::string& place) const
{
    if (place == "/")
        return "File System";
    if (place == startFolder())
        return "Home";
    std::string name(folderName(place));
    const bool unique = std::all_of(m_places.begin(), m_places.end(),
        [&](const std::string& other) { return other == place || folderName(other) != name; });
    return unique ? name : name + " (" + toNativePath(folderAbove(place)) + ")";
}

void DriveList::chosen(std::size_t place)
{
    if (place >= m_places.size())
        return;
    m_drive = m_places[place];
    changed(trovarium::Change::Content);
    Change.raise();
}

void DriveList::refreshPlaces()
{
    FileService& files = desktop().files();
    std::vector<std::string> places{"/"};
    const std::string home = startFolder();
    if (home != "/" && files.folderExists(home))
        places.push_back(home);
    for (const std::string& medium : mountedMedia()) {
        std::string folder = fromNativePath(medium);
        if (files.folderExists(folder))
            places.push_back(std::move(folder));
    }
    if (places == m_places)
        return;
    m_places = std::move(places);
    changed(trovarium::Change::Content);
}

} // namespace trovarium
