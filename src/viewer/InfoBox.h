// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "browser/WindowPart.h"
#include "store/Album.h"

#include <array>
#include <cstdint>
#include <map>
#include <string>

namespace trovarium {

enum class OddSize;

enum class Up { No, Yes };
enum class Edit { No, Yes };

// The panel at the bottom of the frame: shows the information about the photograph, and lets the user edit it.
class InfoBox : public WindowPart {
public:
    InfoBox(frmMain& form, Album& album);

    // Reads the information file of GroupList(Index), 1-based, into PhotoInfo. During an edit the previous photograph
    // is saved first. False if there is no such file or a size in it exceeds 16 bits.
    bool LoadImageInfo(std::int32_t Index);

    void LoadInfoBox();
    // True if the flag is set or the text boxes are visible: they change one after the other.
    bool isEdited() const;
    // Slides the panel up or down while events run; a call during a slide is ignored.
    void ShowInfoBox(Up up, Edit edit);
    // Ends an edit as its button does, but without the slide and its events, so that it also works during a slide.
    // Saves what could not be saved before.
    void endEdit();

    // Whether the panel stays down, stays up, or pops up under the mouse; indexes of the option buttons.
    enum : int { AlwaysDown = 0, Normal = 1, AlwaysUp = 2 };

    void cmdEditPhotoInfo_Click();
    void mnuEditInfo_Click() { cmdEditPhotoInfo_Click(); }
    void framInfo_MouseMove(int Button, int Shift, float X, float Y);
    void lbPhotoInfo_MouseMove(int Button, int Shift, float X, float Y) { framInfo_MouseMove(Button, Shift, X, Y); }
    void tmrInfoBox_Timer();
    void optInfoPosition_Click(int Index);
    void mnuSetInfoUp_Click() { choosePosition(AlwaysUp); }
    void mnuSetInfoNormal_Click() { choosePosition(Normal); }
    void mnuSetInfoDown_Click() { choosePosition(AlwaysDown); }

private:
    bool read(const std::string& name, OddSize oddSize);
    void save();
    void saveUnsaved();
    bool isTitleGiven() const; // by the user, not by the import
    std::string shownTitle() const;
    void showFields();
    void slideTo(std::int16_t target);
    void enterEditState();
    void leaveEditState();
    void takeTexts();
    void fillTexts();
    void showTexts(bool visible);
    void setEditing(bool editing);
    void enableRest(bool enabled);
    void choosePosition(int index);

    bool InfoBoxMoving = false;
    // The photograph whose information is in PhotoInfo, or empty: the box shows its name and saves to its file. It
    // isn't always the one at CurrentIndex: if a photograph can't be opened, the box still shows the previous one.
    std::string m_held;
    std::array<std::string, 7> m_filled;        // the texts of the boxes before the user typed
    std::map<std::string, PhotoInfo> m_unsaved; // by name; could not be written so far
};

} // namespace trovarium
