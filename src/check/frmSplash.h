// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/toolkit/Buttons.h"
#include "platform/toolkit/FileControls.h"
#include "platform/toolkit/Form.h"
#include "platform/toolkit/Image.h"
#include "platform/toolkit/Label.h"
#include "platform/toolkit/PictureBox.h"
#include "platform/toolkit/Shape.h"
#include "platform/toolkit/Timer.h"
#include "store/Deployment.h"

#include <cstdint>
#include <string>

namespace trovarium {

struct Album;

// Shown while the library is checked: shows the progress, offers to skip the rest, and has the file list that
// the repair passes use.
class frmSplash : public Form {
public:
    frmSplash(Desktop& desktop, Album& album);

    // Sets the bar and runs pending events, such as a click on the button.
    void UpdateSplashProgress(float Value, std::int16_t Maximum);
    // Lists the folder anew in File1 and returns the number of its files; "Overflow" above 32,767.
    std::int16_t listAnew(const std::string& folder);

    void Form_Load();
    void Form_Unload();
    void Form_Click();
    void Form_KeyPress(int KeyAscii);
    void cmdByPassAutoCheck_Click();
    void tmrSplash_Timer();

    // ---- layout: name, left, top, width, height (twips), caption ----

    Image imgIcon{this, {"imgIcon", 450, 480, 1200, 1200}};
    // The shadow of the name, a little below and to the right of it.
    Label Label1{this, {"Label1", 1980, 420, 4650, 840, "Trovarium"}};
    Label lblProductName{this, {"lblProductName", 1950, 390, 4650, 840, "Trovarium"}};
    Label lblCompanyProduct{this, {"lblCompanyProduct", 1980, 1260, 4650, 300, Maker}};
    Label lblVersion{this, {"lblVersion", 1980, 1620, 4650, 270}};
    Label lblPlatform{this, {"lblPlatform", 1980, 1890, 4650, 270, "Platforms: Win95, 98, 2000"}};
    Shape shpProgress{this, {"shpProgress", 450, 2580, 6000, 240}};
    PictureBox pctProgress{this, {"pctProgress", 450, 2595, 0, 210}};
    Button cmdByPassAutoCheck{this, {"cmdByPassAutoCheck", 2475, 3120, 1950, 390, "&Skip AutoCheck"}};
    FileList File1{this, {.Name = "File1", .Width = 1200, .Height = 900, .Visible = false}};
    // Never enabled: the form stays as long as the check takes.
    Timer tmrSplash{this, {.Name = "tmrSplash", .Interval = 5000}};

private:
    Album& m_album;
};

} // namespace trovarium
