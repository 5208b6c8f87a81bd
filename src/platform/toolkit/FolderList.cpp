#include "platform/toolkit/FolderList.h"

#include "platform/files/FileService.h"
#include "platform/toolkit/Desktop.h"
#include "platform/toolkit/FolderPath.h"
#include "runtime/Failure.h"

#include <algorithm>
#include <utility>

namespace trovarium {

FolderList::FolderList(Container* parent, const Plan& plan)
    : Control(parent, plan)
    , m_files(desktop().files())
    , m_path(startFolder())
{
}

void FolderList::setPath(std::string value)
{
    value = folderPath(value);
    if (value == m_path)
        return;
    read(std::move(value));
    Change.raise();
}

const std::string& FolderList::rowPath(int row) const
{
    if (row < 0 || row >= ListCount())
        throw Failure(FailureKind::InvalidPropertyArrayIndex);
    return m_rows[static_cast<std::size_t>(row)];
}

int FolderList::depth() const
{
    const auto below = std::count(m_path.begin(), m_path.end(), '\\');
    return m_path == "/" ? 1 : static_cast<int>(below) + 2;
}

void FolderList::Refresh()
{
    attempt([&] { read(m_path); });
}

void FolderList::read(std::string path)
{
    m_files.requireFolder(path);
    m_path = std::move(path);
    m_rows.clear();
    changed(trovarium::Change::Content);
}

const std::vector<std::string>& FolderList::rows() const
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

} // namespace trovarium
