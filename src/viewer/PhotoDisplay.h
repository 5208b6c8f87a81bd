#pragma once

#include "browser/WindowPart.h"

#include <cstdint>
#include <string>

namespace trovarium {

class PictureButton;

// Shows one item of the group in the viewing frame: loads it into pctBox(0) at natural size, fits it by a
// whole-number reduction, and steps to the next and the previous one. Positions are 1-based.
class PhotoDisplay : public WindowPart {
public:
    PhotoDisplay(frmMain& form, Album& album);

    // PreviousIndex takes CurrentIndex, CurrentIndex takes `Index`.
    void SetImageIndex(std::int32_t Index);

    // Result is true once the whole operation ran. A file that is no picture is told in a message box; no
    // failure is logged. The index has moved by then.
    void DisplayPhoto(std::int32_t Index, bool Show, bool& Result);

    // Result is true when another item came up, false at the end of the list or on a failed load.
    void NextPhoto(bool& Result);
    void PrevPhoto(bool& Result);

    // Opens the current photograph from its page of thumbnails: the first step of all that starts there.
    void openFromThumbnails();

    void pctNext_Click();
    void pctPrev_Click();

private:
    using Step = void (PhotoDisplay::*)(bool& Result);

    void press(PictureButton& button, Step step);
    void load(std::int32_t Index, bool& videoOnShow);
    void loadVideo(const std::string& path);
    void loadPicture(const std::string& path);
    void fitPicture(float width, float height);
    void show(bool videoOnShow, bool& Result);
    void playClipOfSlide();
    void expectNeighbours(std::int32_t Index);

    bool m_isStepping = false;
};

// The first i from 1 to 20 at which a picture of `width` by `height` lies strictly inside the frame at 1/i;
// 0 if none does.
std::int16_t reductionThatFits(float width, float height, float frameWidth, float frameHeight);

} // namespace trovarium
