// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "browser/GroupCommands.h"
#include "platform/toolkit/Buttons.h"
#include "platform/toolkit/Form.h"
#include "platform/toolkit/ListBox.h"

#include <cstdint>

namespace trovarium {

struct Album;
class frmMain;

// Asks for the group that the selected photographs are copied or moved to. A single click on an entry chooses it; the
// close box and Escape cancel.
class frmGroups : public Form {
public:
    frmGroups(Desktop& desktop, Album& album, frmMain& main);

    ListBox lstGroups{this, {"lstGroups", 0, 0, 4200, 3180}};
    Button cmdNewGroup{this, {"cmdNewGroup", 60, 3240, 4080, 315, "&Create New Group"}};

    // Shows it modal for CreateWithCopies or CreateByMoving.
    void showFor(std::int32_t Mode);

    void SetMode(std::int32_t Mode);

    void Form_Load();
    void Form_Activate();
    void Form_KeyDown(int KeyCode, int Shift);
    void lstGroups_MouseUp(int Button, int Shift, float X, float Y);
    void lstGroups_KeyPress(int KeyAscii);
    void cmdNewGroup_Click();

private:
    void choose();

    Album& m_album;
    frmMain& m_main;
    std::int16_t GroupDialogMode = CreateWithCopies; // for a new group; for a chosen one the caption decides
    bool GroupDialogBusy = false;
};

} // namespace trovarium
