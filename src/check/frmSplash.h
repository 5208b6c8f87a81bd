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

    // ---- the plan of the window, in twips ----

    Image imgIcon{this, {.Name = "imgIcon", .Left = 450, .Top = 480, .Width = 1200, .Height = 1200}};
    // The shadow of the name, a little below and to the right of it.
    Label Label1{
        this, {.Name = "Label1", .Left = 1980, .Top = 420, .Width = 4650, .Height = 840, .Caption = "Trovarium"}};
    Label lblProductName{this,
        {.Name = "lblProductName", .Left = 1950, .Top = 390, .Width = 4650, .Height = 840, .Caption = "Trovarium"}};
    Label lblCompanyProduct{
        this, {.Name = "lblCompanyProduct", .Left = 1980, .Top = 1260, .Width = 4650, .Height = 300, .Caption = Maker}};
    Label lblVersion{this, {.Name = "lblVersion", .Left = 1980, .Top = 1620, .Width = 4650, .Height = 270}};
    Label lblPlatform{this,
        {.Name = "lblPlatform",
            .Left = 1980,
            .Top = 1890,
            .Width = 4650,
            .Height = 270,
            .Caption = "Platforms: Win95, 98, 2000"}};
    Shape shpProgress{this, {.Name = "shpProgress", .Left = 450, .Top = 2580, .Width = 6000, .Height = 240}};
    PictureBox pctProgress{this, {.Name = "pctProgress", .Left = 450, .Top = 2595, .Width = 0, .Height = 210}};
    Button cmdByPassAutoCheck{this,
        {.Name = "cmdByPassAutoCheck",
            .Left = 2475,
            .Top = 3120,
            .Width = 1950,
            .Height = 390,
            .Caption = "&Skip AutoCheck"}};
    FileList File1{this, {.Name = "File1", .Width = 1200, .Height = 900, .Visible = false}};
    // Never enabled: the form stays as long as the check takes.
    Timer tmrSplash{this, {.Name = "tmrSplash", .Interval = 5000}};

private:
    Album& m_album;
};

} // namespace trovarium
