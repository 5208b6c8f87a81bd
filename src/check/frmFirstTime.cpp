// SPDX-License-Identifier: GPL-3.0-or-later

#include "check/frmFirstTime.h"

#include "platform/pictures/PictureService.h"
#include "platform/toolkit/Desktop.h"
#include "platform/toolkit/Units.h"
#include "store/Deployment.h"

#include <string>

namespace trovarium {

frmFirstTime::frmFirstTime(Desktop& desktop)
    : Form(desktop, {.Name = "frmFirstTime", .Caption = "Trovarium", .Width = 6255, .Height = 4950})
{
    Picture = desktop.pictures().artwork("background");
    Icon = desktop.pictures().artwork("icon");
    imgIcon.Stretch = true;
    imgIcon.Picture = desktop.pictures().artwork("icon");
    imgIcon.AccessibleName = "Trovarium";
    for (Label* name : {&Label1, &Label2}) {
        name->FontSize = 36;
        name->Bold = true;
    }
    Label1.ForeColor = NameShadow;
    Label3.FontSize = 14;
    Label4.FontSize = 16;
    Label4.Bold = true;
    for (Label* note : {&Label5, &Label6, &Label7}) {
        note->FontSize = 14;
        note->WordWrap = true;
    }
    Label6.Caption = "2. The latest version of Trovarium can be found on our web site at " + std::string(WebSite);
    Label5.UseMnemonic = true;
    Line1.BorderColor = SoftWhite;
    on(KeyDown, this, &frmFirstTime::Form_KeyDown);
}

void frmFirstTime::Form_KeyDown(int KeyCode, int /*Shift*/)
{
    if (KeyCode == EscapeKey)
        unload();
}

} // namespace trovarium
