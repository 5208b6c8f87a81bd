#include "check/ProgressBar.h"

#include "platform/toolkit/Desktop.h"
#include "platform/toolkit/PictureBox.h"
#include "platform/toolkit/Shape.h"
#include "runtime/Numbers.h"

namespace trovarium {

void growBar(Desktop& desktop, PictureBox& bar, const Shape& outline, float value, std::int16_t maximum)
{
    if (value < 0 || value > static_cast<float>(maximum))
        return;
    bar.Width = outline.Width() * divideSingle(value, maximum);
    desktop.DoEvents();
}

} // namespace trovarium
