// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/toolkit/ProgressBar.h"

#include "platform/toolkit/Desktop.h"
#include "platform/toolkit/PictureBox.h"
#include "platform/toolkit/Shape.h"
#include "runtime/Numbers.h"

#include <algorithm>

namespace trovarium {

void growBar(Desktop& desktop, PictureBox& bar, const Shape& outline, float value, std::int16_t maximum)
{
    if (value < 0 || value > static_cast<float>(maximum))
        return;
    const float part = divideSingle(value, maximum);
    bar.Width = outline.Width() * part;
    bar.AccessibleValue = static_cast<int>(part * 100);
    desktop.DoEvents();
}

void fillBar(PictureBox& box, Shape& bar, float width)
{
    bar.Width = width;
    const float whole = box.ScaleWidth();
    box.AccessibleValue = width < whole ? static_cast<int>(width / whole * 100) : 100;
}

} // namespace trovarium
