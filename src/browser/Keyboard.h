// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "browser/WindowPart.h"

#include <cstdint>
#include <string>
#include <vector>

namespace trovarium {

// The keys of the main window that the focused control doesn't handle itself. Each calls what the menu entry or the
// mouse calls, and only where the entry is enabled. While a text is edited, only Page Up and Page Down act: they step.
class Keyboard : public WindowPart {
public:
    Keyboard(frmMain& form, Album& album);

    void Form_KeyDown(int KeyCode, int Shift);

private:
    void commandKey(int KeyCode);
    void moveKey(int KeyCode);
    void pressThumbnail(int button, int Shift);
    void press(int cell, int button, int Shift);
    void openThumbnail();
    void selectAll();
    void copyFiles();
    void search();
    void stepWhileEditing(int KeyCode);
    void stepThroughHistory(int Shift);
    void backToThumbnails();
    void removeFromGroup();
    void renameGroup();

    bool isPhotographOnShow() const;
    int focusedRow() const;  // -1 for none
    int focusedCell() const; // -1 for none
    int actingCell() const;  // the focused one, or else that of the current photograph
    void stepPhotograph(int step);
    void moveToRow(int row);
    void moveBy(int step);
    void moveTo(std::int32_t position);
    void moveSelected(int step);
    std::int32_t placeFrom(std::int32_t here, int step) const;
    bool standsAt(std::int32_t position, const std::vector<std::string>& names) const;

    bool m_isInHistory = false; // a step is being carried out
};

} // namespace trovarium
