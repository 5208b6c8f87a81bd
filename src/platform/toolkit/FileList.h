#pragma once

#include "platform/toolkit/Control.h"

#include <string>
#include <vector>

namespace trovarium {

// The plain files of a folder, sorted as lists are; no folder at first. Setting another path or pattern
// reads the folder; setting the same one does not, Refresh does. A folder that is gone by then has no
// files. The user may choose several. Works without a window.
class FileList : public Control {
public:
    FileList(Container* parent, const Plan& plan);

private:
    const std::string& path() const { return m_path; }
    void setPath(std::string value); // "Path not found" for a folder that can't be listed
    const std::string& pattern() const { return m_pattern; }
    void setPattern(std::string value);

public:
    Property<&FileList::path, &FileList::setPath> Path{this};
    Property<&FileList::pattern, &FileList::setPattern> Pattern{this}; // "*.jpg;*.bmp"

    int ListCount() const { return static_cast<int>(m_names.size()); }
    const std::string& List(int index) const; // 0-based, "Invalid property array index" beyond the ends
    bool Selected(int index) const;
    void setSelected(int index, bool value);

    void Refresh();

    Event<> Click{this};
    Event<> DblClick{this};

    std::unique_ptr<View> makeView() override;

    void chosen(const std::vector<bool>& selected);

private:
    void show(std::vector<std::string> names);
    std::string search(const std::string& path) const;

    std::string m_path;
    std::string m_pattern = "*.*";
    std::vector<std::string> m_names;
    std::vector<bool> m_selected;
};

} // namespace trovarium
