// SPDX-License-Identifier: GPL-3.0-or-later
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

    // ---- layout: name, left, top, width, height (twips), caption ----

    Frame framParameters{this, {"framParameters", 240, 240, 4800, 2610, "Slide Show Parameters"}};
    Label lbDelay{&framParameters, {"lbDelay", 180, 525, 1980, 240, "Delay between slides"}};
    TextBox txtSlideShowInterval{&framParameters, {"txtSlideShowInterval", 2220, 480, 660, 330, "5"}};
    Label lbSeconds{&framParameters, {"lbSeconds", 2985, 525, 1200, 240, "seconds"}};
    ControlArray<CheckBox> chkSlideshow;
    Button cmdOkay{this, {"cmdOkay", 1680, 3030, 1620, 420, "O&K"}};
    Button cmdCancel{this, {"cmdCancel", 3420, 3030, 1620, 420, "&Cancel"}};

private:
    Album& m_album;
    frmMain& m_main;
};

} // namespace trovarium
