// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "browser/WindowPart.h"

#include <cstdint>
#include <string>

namespace trovarium {

class PictureButton;

// Shows a photograph or film of the group in the viewing frame, and steps to the next and previous one. A photograph is
// loaded into pctBox(0) at its original size and reduced by a whole number to fit. Positions are 1-based.
class PhotoDisplay : public WindowPart {
public:
    PhotoDisplay(frmMain& form, Album& album);

    // Makes `Index` the CurrentIndex, and the old one the PreviousIndex.
    void SetImageIndex(std::int32_t Index);

    // True if everything worked. A file that is no picture gives a message; failures aren't logged, and CurrentIndex
    // has already changed.
    bool DisplayPhoto(std::int32_t Index, bool Show);
    // True if another photograph or film was shown, false at the end of the list or after a failure.
    bool NextPhoto();
    bool PrevPhoto();

    // The photograph in pctBox(0), or the film that was opened since: the current one may have failed to load.
    const std::string& loadedFile() const { return m_loadedFile; }

    // Opens the current photograph from the page of thumbnails.
    void openFromThumbnails();

    void pctNext_Click();
    void pctPrev_Click();
    void mnuViewNext_Click() { pctNext_Click(); }
    void mnuViewPrevious_Click() { pctPrev_Click(); }

private:
    using Step = bool (PhotoDisplay::*)();

    void press(PictureButton& button, Step step);
    void load(std::int32_t Index, bool& videoOnShow);
    void loadVideo(const std::string& path);
    void loadPicture(const std::string& path);
    void fitPicture(float width, float height);
    void show(bool videoOnShow);
    void playClipOfSlide();
    void expectNeighbours(std::int32_t Index);

    bool m_isStepping = false;
    std::string m_loadedFile;
};

// The first i from 1 to 20 for which a picture of `width` by `height`, divided by i, is smaller than the frame; 0 if
// there is none.
std::int16_t reductionThatFits(float width, float height, float frameWidth, float frameHeight);

} // namespace trovarium
