#pragma once

#include "platform/toolkit/Control.h"

#include <string>
#include <vector>

namespace trovarium {

class FileService;

// The plain files of a folder, sorted as lists are; at first of the one where FolderList begins. It is read
// when it is asked for or seen the first time since another path, another pattern or Refresh: a list that isn't
// asked and isn't seen reads nothing. A folder that is gone by then has no files.
class FileList : public Control {
public:
    FileList(Container* parent, const Plan& plan);

private:
    const std::string& path() const { return m_path; }
    void setPath(std::string value); // "Path not found", or why it can't be listed
    const std::string& pattern() const { return m_pattern; }
    void setPattern(std::string value);

public:
    Property<&FileList::path, &FileList::setPath> Path{this};
    Property<&FileList::pattern, &FileList::setPattern> Pattern{this}; // "*.jpg;*.bmp"
    Stored<bool> MultiSelect{this, Change::Appearance, true};          // by the user

    int ListCount() const { return static_cast<int>(names().size()); }
    const std::string& List(int index) const; // 0-based, "Invalid property array index" beyond the ends
    bool Selected(int index) const;
    void setSelected(int index, bool value);

    void Refresh();

    Event<> Click{this};
    Event<> DblClick{this};

    std::unique_ptr<View> makeView() override;

    void chosen(const std::vector<bool>& selected);

private:
    const std::vector<std::string>& names() const;
    std::size_t checked(int index) const;

    FileService& m_files;
    std::string m_path;
    std::string m_pattern = "*.*";
    mutable bool m_isRead = false;
    mutable std::vector<std::string> m_names;
    mutable std::vector<bool> m_selected;
};

} // namespace trovarium
