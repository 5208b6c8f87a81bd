#include "platform/toolkit/FolderList.h"

#include "platform/files/FileService.h"
#include "platform/system/UserFolders.h"
#include "platform/toolkit/Desktop.h"
#include "platform/toolkit/FolderPath.h"
#include "runtime/Failure.h"

#include <algorithm>
#include <utility>

namespace trovarium {

FolderList::FolderList(Container* parent, const Plan& plan)
    : Control(parent, plan)
{
    attempt([&] { read(folderPath(homeFolder())); });
}

void FolderList::setPath(std::string value)
{
    value = folderPath(value);
    if (value == m_path)
        return;
    read(value);
    Change.raise();
}

const std::string& FolderList::rowPath(int row) const
{
    if (row < 0 || row >= ListCount())
        throw Failure(FailureKind::InvalidPropertyArrayIndex);
    return m_rows[static_cast<std::size_t>(row)];
}

// A folder that is gone leaves the rows as they are.
void FolderList::Refresh()
{
    attempt([&] { read(m_path); });
}

void FolderList::read(const std::string& path)
{
    FileService& files = desktop().files();
    if (!files.folderExists(path))
        throw Failure(FailureKind::PathNotFound);
    std::vector<std::string> names = files.listFolders(path);

    std::vector<std::string> rows{path};
    while (rows.back() != "/")
        rows.push_back(folderAbove(rows.back()));
    std::reverse(rows.begin(), rows.end());
    m_depth = static_cast<int>(rows.size());
    const std::string prefix = path == "/" ? path : path + "\\";
    for (std::string& name : names)
        rows.push_back(prefix + std::move(name));
    m_rows = std::move(rows);
    m_path = path;
    changed(trovarium::Change::Content);
}

} // namespace trovarium
