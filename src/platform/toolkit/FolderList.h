#pragma once

#include "platform/toolkit/Control.h"

#include <string>
#include <vector>

namespace trovarium {

class FileService;

// The folders above and in one folder; a double click or Enter moves to one. What the folder holds is read
// when it is asked for or seen.
class FolderList : public Control {
public:
    FolderList(Container* parent, const Plan& plan);

private:
    const std::string& path() const { return m_path; }
    void setPath(std::string value); // "Path not found", or why it can't be listed

public:
    Property<&FolderList::path, &FolderList::setPath> Path{this}; // no backslash at the end, but for the root

    // The rows: the way to the folder, then what it holds. `rowPath` is a row's full path.
    int ListCount() const { return static_cast<int>(rows().size()); }
    const std::string& rowPath(int row) const;
    int depth() const; // rows that belong to the way

    void Refresh(); // reads the folder again; one that is gone leaves the rows as they are

    Event<> Change{this};

    std::unique_ptr<View> makeView() override;

private:
    const std::vector<std::string>& rows() const;
    void read(std::string path);

    FileService& m_files;
    std::string m_path;
    mutable std::vector<std::string> m_rows; // empty until it is read
};

} // namespace trovarium
