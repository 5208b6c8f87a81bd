#include "platform/toolkit/FileList.h"

#include "platform/files/FileService.h"
#include "platform/toolkit/Desktop.h"
#include "platform/toolkit/FolderPath.h"
#include "runtime/Failure.h"

#include <utility>

namespace trovarium {

FileList::FileList(Container* parent, const Plan& plan)
    : Control(parent, plan)
{
}

void FileList::setPath(std::string value)
{
    value = folderPath(value);
    if (value == m_path)
        return;
    std::vector<std::string> names = desktop().files().listExisting(search(value));
    m_path = std::move(value);
    show(std::move(names));
}

void FileList::setPattern(std::string value)
{
    if (value == m_pattern)
        return;
    m_pattern = std::move(value);
    Refresh();
}

const std::string& FileList::List(int index) const
{
    if (index < 0 || index >= ListCount())
        throw Failure(FailureKind::InvalidPropertyArrayIndex);
    return m_names[static_cast<std::size_t>(index)];
}

bool FileList::Selected(int index) const
{
    if (index < 0 || index >= ListCount())
        throw Failure(FailureKind::InvalidPropertyArrayIndex);
    return m_selected[static_cast<std::size_t>(index)];
}

void FileList::setSelected(int index, bool value)
{
    if (value == Selected(index))
        return;
    m_selected[static_cast<std::size_t>(index)] = value;
    changed(Change::Content);
}

void FileList::Refresh()
{
    if (!m_path.empty())
        show(desktop().files().list(search(m_path)));
}

void FileList::chosen(const std::vector<bool>& selected)
{
    if (selected.size() != m_names.size() || selected == m_selected)
        return;
    m_selected = selected;
    Click.raise();
}

void FileList::show(std::vector<std::string> names)
{
    m_names = std::move(names);
    m_selected.assign(m_names.size(), false);
    changed(Change::Content);
}

std::string FileList::search(const std::string& path) const
{
    return (path == "/" ? path : path + "\\") + m_pattern;
}

} // namespace trovarium
