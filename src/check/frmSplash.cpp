// SPDX-License-Identifier: GPL-3.0-or-later

#include "check/frmSplash.h"

#include "platform/pictures/PictureService.h"
#include "platform/toolkit/Desktop.h"
#include "platform/toolkit/ProgressBar.h"
#include "runtime/Numbers.h"
#include "store/Album.h"
#include "store/Log.h"

namespace trovarium {

frmSplash::frmSplash(Desktop& desktop, Album& album)
    : Form(desktop,
        {.Name = "frmSplash",
            .Caption = "Trovarium",
            .Width = 6900,
            .Height = 3750,
            .Border = BorderKind::None,
            .CloseBox = false})
    , m_album(album)
{
    Picture = desktop.pictures().artwork("background");
    Icon = desktop.pictures().artwork("icon");
    imgIcon.Stretch = true;
    imgIcon.Picture = desktop.pictures().artwork("icon");
    Label1.ForeColor = NameShadow;
    for (Label* name : {&Label1, &lblProductName}) {
        name->FontSize = 46;
        name->Bold = true;
    }
    lblCompanyProduct.FontSize = 16;
    pctProgress.AccessibleName = "Progress";
    pctProgress.AccessibleValue = 0;
    shpProgress.BorderColor = SoftWhite;
    pctProgress.BackColor = BarBlue;

    on(Load, this, &frmSplash::Form_Load);
    on(Unload, this, &frmSplash::Form_Unload);
    on(Click, this, &frmSplash::Form_Click);
    on(KeyPress, this, &frmSplash::Form_KeyPress);
    on(cmdByPassAutoCheck.Click, this, &frmSplash::cmdByPassAutoCheck_Click);
    on(tmrSplash.Tick, this, &frmSplash::tmrSplash_Timer);
}

void frmSplash::UpdateSplashProgress(float Value, std::int16_t Maximum)
{
    growBar(desktop(), pctProgress, shpProgress, Value, Maximum);
}

std::int16_t frmSplash::listAnew(const std::string& folder)
{
    File1.Path = folder;
    File1.Refresh();
    return toInt16(File1.ListCount());
}

void frmSplash::Form_Load()
try {
    lblVersion.Caption = "Version " TROVARIUM_VERSION;
} catch (const Failure& failure) {
    logFailure(m_album, "Form_Load", failure);
}

void frmSplash::Form_Unload()
{
    tmrSplash.Enabled = false;
}

// A click or a key doesn't close the form, which stays as long as the check takes.
void frmSplash::Form_Click()
try {
} catch (const Failure& failure) {
    logFailure(m_album, "Form_Click", failure);
}

void frmSplash::Form_KeyPress(int /*KeyAscii*/)
try {
} catch (const Failure& failure) {
    logFailure(m_album, "Form_KeyPress", failure);
}

void frmSplash::cmdByPassAutoCheck_Click()
{
    m_album.AutoCheckBypass = true;
}

void frmSplash::tmrSplash_Timer()
try {
    tmrSplash.Enabled = false;
    unload();
} catch (const Failure& failure) {
    logFailure(m_album, "tmrSplash_Timer", failure);
}

} // namespace trovarium
