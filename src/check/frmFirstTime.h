// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/toolkit/Form.h"
#include "platform/toolkit/Image.h"
#include "platform/toolkit/Label.h"
#include "platform/toolkit/Shape.h"

namespace trovarium {

// The notice of the first start: static, closed with the window's close box or Escape.
class frmFirstTime : public Form {
public:
    explicit frmFirstTime(Desktop& desktop);

    void Form_KeyDown(int KeyCode, int Shift);

    // ---- layout: name, left, top, width, height (twips), caption ----

    Image imgIcon{this, {"imgIcon", 450, 375, 960, 960}};
    // The shadow of the name, a little below and to the right of it.
    Label Label1{this, {"Label1", 1680, 345, 4200, 645, "Trovarium"}};
    Label Label2{this, {"Label2", 1650, 315, 4200, 645, "Trovarium"}};
    Label Label3{this, {"Label3", 1680, 1005, 4200, 285, "FIRST TIME ONLY SCREEN"}};
    Line Line1{this, {"Line1", 450, 1620, 5355, 0}};
    Label Label4{this, {"Label4", 450, 1800, 5355, 330, "Note"}};
    // At this width each run of blanks ends a line, so that the word after it starts the next one.
    Label Label5{this,
        {"Label5", 450, 2250, 5355, 540,
            "1. On startup, Trovarium auto-scans the archive to         check for missing files && "
            "out-of-date thumnails."}};
    Label Label6{this, {"Label6", 450, 2910, 5355, 540}};
    Label Label7{this,
        {"Label7", 450, 3570, 5355, 1080,
            "3. Your photos/images can easily be found and              added to the archive by using the "
            "\"Import /                 Auto-Scan ...\" option located under the                       "
            "\"File\" menu."}};
};

} // namespace trovarium
