#include "platform/toolkit/FileList.h"

#include "platform/files/FileService.h"
#include "platform/toolkit/Desktop.h"
#include "platform/toolkit/FolderPath.h"
#include "runtime/Failure.h"

#include <utility>

namespace trovarium {

FileList::FileList(Container* parent, const Plan& plan)
    : Control(parent, plan)
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

const std::string& FileList::List(int index) const
{
    return m_names[checked(index)];
}

bool FileList::Selected(int index) const
{
    return m_selected[checked(index)];
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
    m_isRead = false;
    changed(Change::Content);
}

void FileList::chosen(const std::vector<bool>& selected)
{
    if (!m_isRead || selected.size() != m_names.size() || selected == m_selected)
        return;
    m_selected = selected;
    Click.raise();
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

std::size_t FileList::checked(int index) const
{
    if (index < 0 || index >= ListCount())
        throw Failure(FailureKind::InvalidPropertyArrayIndex);
    return static_cast<std::size_t>(index);
}

} // namespace trovarium
