#pragma once

#include "platform/toolkit/Buttons.h"
#include "platform/toolkit/ControlArray.h"
#include "platform/toolkit/Form.h"
#include "platform/toolkit/Frame.h"
#include "platform/toolkit/Label.h"
#include "platform/toolkit/TextBox.h"

namespace trovarium {

struct Album;
class frmMain;

// Asks for the options of a slide show and starts it. The options aren't kept for the next time.
class frmSSP : public Form {
public:
    frmSSP(Desktop& desktop, Album& album, frmMain& main);

    void cmdOkay_Click();
    void cmdCancel_Click();

    // ---- layout, in twips ----

    Frame framParameters{this,
        {.Name = "framParameters",
            .Left = 240,
            .Top = 240,
            .Width = 4800,
            .Height = 2610,
            .Caption = "Slide Show Parameters"}};
    Label lbDelay{&framParameters,
        {.Name = "lbDelay", .Left = 180, .Top = 525, .Width = 1980, .Height = 240, .Caption = "Delay between slides"}};
    TextBox txtSlideShowInterval{&framParameters,
        {.Name = "txtSlideShowInterval", .Left = 2220, .Top = 480, .Width = 660, .Height = 330, .Caption = "5"}};
    Label lbSeconds{&framParameters,
        {.Name = "lbSeconds", .Left = 2985, .Top = 525, .Width = 1200, .Height = 240, .Caption = "seconds"}};
    ControlArray<CheckBox> chkSlideshow;
    Button cmdOkay{
        this, {.Name = "cmdOkay", .Left = 1680, .Top = 3030, .Width = 1620, .Height = 420, .Caption = "O&K"}};
    Button cmdCancel{
        this, {.Name = "cmdCancel", .Left = 3420, .Top = 3030, .Width = 1620, .Height = 420, .Caption = "&Cancel"}};

private:
    Album& m_album;
    frmMain& m_main;
};

} // namespace trovarium
