#pragma once

#include "platform/toolkit/Control.h"

#include <string>
#include <vector>

namespace trovarium {

// The folders above and in one folder; a double click or Enter moves to one.
class FolderList : public Control {
public:
    FolderList(Container* parent, const Plan& plan);

private:
    const std::string& path() const { return m_path; }
    void setPath(std::string value); // "Path not found"

public:
    Property<&FolderList::path, &FolderList::setPath> Path{this}; // no backslash at the end, but for the root

    // The rows: the way to the folder, then what it holds. `rowPath` is a row's full path.
    int ListCount() const { return static_cast<int>(m_rows.size()); }
    const std::string& rowPath(int row) const;
    int depth() const { return m_depth; } // rows that belong to the way

    void Refresh(); // reads the folder again

    Event<> Change{this};

    std::unique_ptr<View> makeView() override;

private:
    void read(const std::string& path);

    std::string m_path; // at first the user's folder
    std::vector<std::string> m_rows;
    int m_depth = 0;
};

} // namespace trovarium
