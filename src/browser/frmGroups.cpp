// SPDX-License-Identifier: GPL-3.0-or-later

#include "browser/frmGroups.h"

#include "browser/GroupCommands.h"
#include "browser/frmMain.h"
#include "platform/pictures/PictureService.h"
#include "platform/toolkit/Desktop.h"
#include "platform/toolkit/Units.h"
#include "runtime/Numbers.h"
#include "store/Album.h"
#include "store/GroupFile.h"

namespace trovarium {

namespace {

constexpr int EnterCharacter = 13;

} // namespace

frmGroups::frmGroups(Desktop& desktop, Album& album, frmMain& main)
    : Form(desktop, {.Name = "frmGroups", .Caption = "Move photo(s) to ...", .Width = 4200, .Height = 3615})
    , m_album(album)
    , m_main(main)
{
    Icon = desktop.pictures().artwork("icon");
    lstGroups.Sorted = true;
    lstGroups.AccessibleName = "Groups";
    on(Load, this, &frmGroups::Form_Load);
    on(Activate, this, &frmGroups::Form_Activate);
    on(KeyDown, this, &frmGroups::Form_KeyDown);
    on(lstGroups.MouseUp, this, &frmGroups::lstGroups_MouseUp);
    on(lstGroups.KeyPress, this, &frmGroups::lstGroups_KeyPress);
    on(cmdNewGroup.Click, this, &frmGroups::cmdNewGroup_Click);
}

void frmGroups::showFor(std::int32_t Mode)
{
    load();
    Caption = Mode == CreateByMoving ? "Move photo(s) to ..." : "Copy photo(s) to ...";
    SetMode(Mode);
    showModal();
}

void frmGroups::SetMode(std::int32_t Mode)
{
    GroupDialogMode = toInt16(Mode);
}

void frmGroups::Form_Load()
{
    GroupDialogMode = CreateWithCopies;
}

void frmGroups::Form_Activate()
{
    GroupDialogBusy = true;
    lstGroups.Clear();
    const ListBox& names = m_main.lstSlideGroups;
    for (int i = 0; i < names.ListCount(); ++i) {
        const std::string& name = names.List(i);
        if (name != m_album.group.CurrentGroupName && name != AllPhotosGroupName)
            lstGroups.AddItem(name);
    }
    if (lstGroups.ListCount() > 0)
        lstGroups.ListIndex = 0;
    lstGroups.SetFocus(); // and not the button, if that was pressed the last time
    GroupDialogBusy = false;
}

void frmGroups::Form_KeyDown(int KeyCode, int /*Shift*/)
{
    if (KeyCode == EscapeKey)
        hide();
}

void frmGroups::lstGroups_MouseUp(int Button, int /*Shift*/, float X, float Y)
{
    const int entry = lstGroups.entryAt(X, Y);
    if (Button == LeftButton && entry >= 0 && entry == lstGroups.ListIndex())
        choose();
}

void frmGroups::lstGroups_KeyPress(int KeyAscii)
{
    if (KeyAscii == EnterCharacter)
        choose();
}

void frmGroups::choose()
{
    if (GroupDialogBusy || lstGroups.ListIndex() < 0)
        return;
    if (Caption().starts_with("Move"))
        m_main.groupCommands().MoveToGroup(lstGroups.Text() + ".lst");
    else if (Caption().starts_with("Copy"))
        m_main.groupCommands().AddToGroup(lstGroups.Text() + ".lst");
    hide();
}

void frmGroups::cmdNewGroup_Click()
{
    hide();
    m_main.groupCommands().CreateAlbumGroup(GroupDialogMode);
}

} // namespace trovarium
