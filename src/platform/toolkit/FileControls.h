// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/toolkit/ListBox.h"

#include <string>
#include <string_view>
#include <vector>

class QComboBox;

namespace trovarium {

class FileService;

// The places where a search for files may start: the root, the user's folder, mounted media. Drive is the
// one that holds the folder it was set to.
class DriveList : public Control {
public:
    DriveList(Container* parent, const Plan& plan);

private:
    const std::string& drive() const { return m_drive; }
    void setDrive(std::string value); // "Device unavailable" for a folder on a place that isn't there

public:
    Property<&DriveList::drive, &DriveList::setDrive> Drive{this};
    const std::vector<std::string>& places() const { return m_places; }
    std::string nameOf(const std::string& place) const; // as a person knows it

    Event<> Change{this};

    // Called when the user chooses a place, which is kept even if it can't be read any more. Change is also raised for
    // the current place: it may be readable by now, or the user may have left its folders meanwhile.
    void chosen(std::size_t place);

private:
    void refreshPlaces(); // looks again for what is mounted
    void showPlaces();

    QComboBox& m_box;
    std::vector<std::string> m_places;
    std::string m_drive;
};

// The folders above and in one folder; a double click or Enter moves to one. What the folder holds is read
// when it is asked for or seen.
class FolderList : public RowsControl {
public:
    FolderList(Container* parent, const Plan& plan);

private:
    const std::string& path() const { return m_path; }
    void setPath(std::string value); // "Path not found", or why it can't be listed

public:
    Property<&FolderList::path, &FolderList::setPath> Path{this}; // no backslash at the end, but for the root

    // The rows: the way to the folder, then what it holds. `rowPath` is a row's full path.
    int ListCount() const override { return static_cast<int>(rowPaths().size()); }
    const std::string& rowPath(int row) const { return m_rows[checked(row)]; }
    int depth() const; // rows that belong to the way

    Event<> Change{this};

private:
    std::string rowText(int row) const override;
    bool isRowSelected(int row) const override { return row == m_current; }
    int currentRow() const override { return m_current; }
    int rowLevel(int row) const override;
    bool isOpenFolder(int row) const override { return row < depth(); }
    void rowsChosen(int current, const std::vector<bool>&) override { m_current = current; }
    void rowDoubleClicked(int row) override { rowEntered(row); }
    bool rowEntered(int row) override;

    const std::vector<std::string>& rowPaths() const;

    FileService& m_files;
    std::string m_path;
    mutable std::vector<std::string> m_rows; // empty until it is read
    int m_current;
};

// The plain files of a folder, sorted as lists are; at first of the one where FolderList begins. It is read
// when it is asked for or seen the first time since another path, another pattern or Refresh: a list that isn't
// asked and isn't seen reads nothing. A folder that is gone by then has no files.
class FileList : public RowsControl {
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

    int ListCount() const override { return static_cast<int>(names().size()); }
    const std::string& List(int index) const { return m_names[checked(index)]; } // 0-based
    bool Selected(int index) const { return m_selected[checked(index)]; }
    void setSelected(int index, bool value);
    void Refresh();

    Event<> DblClick{this};

private:
    std::string rowText(int row) const override { return List(row); }
    bool isRowSelected(int row) const override { return Selected(row); }
    void rowsChosen(int current, const std::vector<bool>& selected) override;
    void rowDoubleClicked(int) override { DblClick.raise(); }

    const std::vector<std::string>& names() const;

    FileService& m_files;
    std::string m_path;
    std::string m_pattern = "*.*";
    mutable bool m_isRead = false;
    mutable std::vector<std::string> m_names;
    mutable std::vector<bool> m_selected;
};

} // namespace trovarium
