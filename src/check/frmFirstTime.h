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

    // ---- the plan of the window, in twips ----

    Image imgIcon{this, {.Name = "imgIcon", .Left = 450, .Top = 375, .Width = 960, .Height = 960}};
    // The shadow of the name, a little below and to the right of it.
    Label Label1{
        this, {.Name = "Label1", .Left = 1680, .Top = 345, .Width = 4200, .Height = 645, .Caption = "Trovarium"}};
    Label Label2{
        this, {.Name = "Label2", .Left = 1650, .Top = 315, .Width = 4200, .Height = 645, .Caption = "Trovarium"}};
    Label Label3{this,
        {.Name = "Label3",
            .Left = 1680,
            .Top = 1005,
            .Width = 4200,
            .Height = 285,
            .Caption = "FIRST TIME ONLY SCREEN"}};
    Line Line1{this, {.Name = "Line1", .Left = 450, .Top = 1620, .Width = 5355, .Height = 0}};
    Label Label4{this, {.Name = "Label4", .Left = 450, .Top = 1800, .Width = 5355, .Height = 330, .Caption = "Note"}};
    // At this width each run of blanks ends a line, so that the word after it starts the next one.
    Label Label5{this,
        {.Name = "Label5",
            .Left = 450,
            .Top = 2250,
            .Width = 5355,
            .Height = 540,
            .Caption = "1. On startup, Trovarium auto-scans the archive to         check for missing files && "
                       "out-of-date thumnails."}};
    Label Label6{this, {.Name = "Label6", .Left = 450, .Top = 2910, .Width = 5355, .Height = 540}};
    Label Label7{this,
        {.Name = "Label7",
            .Left = 450,
            .Top = 3570,
            .Width = 5355,
            .Height = 1080,
            .Caption = "3. Your photos/images can easily be found and              added to the archive by using the "
                       "\"Import /                 Auto-Scan ...\" option located under the                       "
                       "\"File\" menu."}};
};

} // namespace trovarium
