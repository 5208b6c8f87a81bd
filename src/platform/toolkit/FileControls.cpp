// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/toolkit/FileControls.h"

#include "platform/files/FileService.h"
#include "platform/system/UserFolders.h"
#include "platform/toolkit/DesktopState.h"
#include "platform/toolkit/QtValues.h"
#include "runtime/Failure.h"

#include <QComboBox>
#include <QSignalBlocker>
#include <QWheelEvent>

#include <algorithm>
#include <functional>
#include <utility>

namespace trovarium {

namespace {

class DriveBox : public QComboBox {
public:
    DriveBox(QWidget* parent, std::function<void()> refresh)
        : QComboBox(parent)
        , m_refresh(std::move(refresh))
    {
    }

    // A medium may have come since the list was last looked at.
    void showPopup() override
    {
        m_refresh();
        QComboBox::showPopup();
    }

protected:
    void wheelEvent(QWheelEvent* event) override { event->ignore(); }

private:
    std::function<void()> m_refresh;
};

// A folder's path as these controls keep it: in the program's form, with no separator at the end but for the root.
std::string folderPath(std::string_view path)
{
    while (path.size() > 1 && (path.back() == '\\' || path.back() == '/'))
        path.remove_suffix(1);
    return fromNativePath(path);
}

// Where folder list and file list begin: the user's folder, the root where there is none.
std::string startFolder()
{
    const std::string home = homeFolder();
    return home.empty() ? "/" : folderPath(home);
}

// The folder that holds `folder`; the root holds itself.
std::string folderAbove(const std::string& folder)
{
    const std::size_t cut = folder.rfind('\\');
    return cut == std::string::npos ? "/" : folder.substr(0, cut);
}

// Its own name; the root's is "/".
std::string_view folderName(std::string_view folder)
{
    if (folder == "/")
        return folder;
    const std::size_t cut = folder.rfind('\\');
    return folder.substr(cut == std::string_view::npos ? 1 : cut + 1);
}

// Is `folder` the folder `above` or anywhere in it?
bool liesIn(std::string_view folder, std::string_view above)
{
    if (above == "/")
        return folder.substr(0, 1) == "/";
    return folder.substr(0, above.size()) == above && (folder.size() == above.size() || folder[above.size()] == '\\');
}

} // namespace

DriveList::DriveList(Container* parent, const Plan& plan)
    : Control(parent, plan, new DriveBox(parent->client(), [this] { refreshPlaces(); }))
    , m_box(static_cast<QComboBox&>(*widget()))
{
    Control::enableOrDisable();
    refreshPlaces();
    m_drive = m_places.size() > 1 ? m_places[1] : m_places[0];
    showPlaces();
    QObject::connect(&m_box, &QComboBox::activated, &m_box,
        [this](int place) { deliverEvent(*this, [&] { chosen(static_cast<std::size_t>(place)); }); });
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
    // A folder of a medium that isn't mounted, and so is held by the root.
    const bool isGone = holder == "/" && isOnMedium(toNativePath(value)) && !files.folderExists(value);
    if (isGone || !files.folderExists(holder))
        throw Failure(FailureKind::DeviceUnavailable);
    if (holder == m_drive)
        return;
    m_drive = holder;
    showPlaces();
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
    showPlaces();
    Change.raise();
}

void DriveList::showPlaces()
{
    const QSignalBlocker quiet(m_box);
    m_box.clear();
    for (const std::string& place : m_places)
        m_box.addItem(toQString(nameOf(place)));
    const auto chosen = std::find(m_places.begin(), m_places.end(), m_drive);
    // It stays on show though its medium may be gone.
    if (chosen == m_places.end())
        m_box.addItem(toQString(nameOf(m_drive)));
    m_box.setCurrentIndex(static_cast<int>(chosen - m_places.begin()));
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
    if (!m_drive.empty())
        showPlaces();
}

FolderList::FolderList(Container* parent, const Plan& plan)
    : RowsControl(parent, plan)
    , m_files(desktop().files())
    , m_path(startFolder())
    , m_current(depth() - 1)
{
}

void FolderList::setPath(std::string value)
{
    value = folderPath(value);
    if (value == m_path)
        return;
    m_files.requireFolder(value);
    m_path = std::move(value);
    m_rows.clear();
    m_current = depth() - 1;
    rowsChanged();
    Change.raise();
}

int FolderList::depth() const
{
    const auto below = std::count(m_path.begin(), m_path.end(), '\\');
    return m_path == "/" ? 1 : static_cast<int>(below) + 2;
}

const std::vector<std::string>& FolderList::rowPaths() const
{
    if (!m_rows.empty())
        return m_rows;
    std::vector<std::string> names = m_files.listFolders(m_path);
    m_rows.push_back(m_path);
    while (m_rows.back() != "/")
        m_rows.push_back(folderAbove(m_rows.back()));
    std::reverse(m_rows.begin(), m_rows.end());
    const std::string prefix = m_path == "/" ? m_path : m_path + "\\";
    for (const std::string& name : names)
        m_rows.push_back(prefix + name);
    return m_rows;
}

std::string FolderList::rowText(int row) const
{
    return std::string(folderName(rowPath(row)));
}

int FolderList::rowLevel(int row) const
{
    return std::min(row, depth());
}

// A message tells why a folder can't be opened, and the list stays where it is.
bool FolderList::rowEntered(int row)
{
    // A copy, since the assignment replaces the rows that rowPath refers to.
    const auto failure = attempt([&] { Path = std::string(rowPath(row)); });
    if (failure)
        desktop().prompts().messageBox("Error: " + std::string(failure->description()), Message::Error, "");
    return true;
}

FileList::FileList(Container* parent, const Plan& plan)
    : RowsControl(parent, plan, true)
    , m_files(desktop().files())
    , m_path(startFolder())
{
}

void FileList::setPath(std::string value)
{
    value = folderPath(value);
    if (value == m_path)
        return;
    m_files.requireFolder(value);
    m_path = std::move(value);
    Refresh();
}

void FileList::setPattern(std::string value)
{
    if (value == m_pattern)
        return;
    m_pattern = std::move(value);
    Refresh();
}

void FileList::setSelected(int index, bool value)
{
    if (value == Selected(index))
        return;
    m_selected[static_cast<std::size_t>(index)] = value;
    rowsChanged();
}

void FileList::Refresh()
{
    m_isRead = false;
    rowsChanged();
}

void FileList::rowsChosen(int /*current*/, const std::vector<bool>& selected)
{
    if (m_isRead && selected.size() == m_names.size())
        m_selected = selected;
}

const std::vector<std::string>& FileList::names() const
{
    if (!m_isRead) {
        m_names = m_files.list((m_path == "/" ? m_path : m_path + "\\") + m_pattern);
        m_selected.assign(m_names.size(), false);
        m_isRead = true;
    }
    return m_names;
}

} // namespace trovarium
