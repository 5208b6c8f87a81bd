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

// Where media are mounted: in folders of these, below one named as the user for the first two.
constexpr std::string_view MountRoots[] = {"/media", "/run\\media", "/mnt"};

bool isUserLevel(std::string_view root)
{
    return root != "/mnt";
}

std::vector<std::string> foldersIn(FileService& files, const std::string& folder)
{
    std::vector<std::string> names;
    attempt([&] { names = files.listFolders(folder); });
    for (std::string& name : names)
        name.insert(0, folder + "\\");
    return names;
}

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
    // A folder below a mount root belongs to a medium of its own, never to the root's file system.
    const bool onMedium = std::any_of(std::begin(MountRoots), std::end(MountRoots),
        [&](std::string_view root) { return value != root && liesIn(value, root); });
    if ((onMedium && holder == "/") || !desktop().files().folderExists(holder))
        throw Failure(FailureKind::DeviceUnavailable);
    if (holder == m_drive)
        return;
    m_drive = holder;
    changed(trovarium::Change::Content);
    Change.raise();
}

void DriveList::chosen(std::size_t place)
{
    if (place >= m_places.size() || m_places[place] == m_drive)
        return;
    m_drive = m_places[place];
    changed(trovarium::Change::Content);
    Change.raise();
}

void DriveList::refreshPlaces()
{
    FileService& files = desktop().files();
    std::vector<std::string> places{"/"};
    const std::string home = folderPath(homeFolder());
    if (home.size() > 1 && files.folderExists(home))
        places.push_back(home);
    for (const std::string_view root : MountRoots) {
        for (std::string& folder : foldersIn(files, std::string(root))) {
            if (!isUserLevel(root)) {
                places.push_back(std::move(folder));
                continue;
            }
            std::vector<std::string> inner = foldersIn(files, folder);
            places.insert(places.end(), inner.begin(), inner.end());
        }
    }
    if (places == m_places)
        return;
    m_places = std::move(places);
    changed(trovarium::Change::Content);
}

} // namespace trovarium
