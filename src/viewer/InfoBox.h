#pragma once

#include "browser/WindowPart.h"
#include "store/PhotoInfo.h"

#include <array>
#include <cstdint>
#include <map>
#include <string>

namespace trovarium {

enum class OddSize;

enum class Up { No, Yes };
enum class Edit { No, Yes };

// The panel at the bottom of the frame: shows what is known of the photograph and turns into a small form.
class InfoBox : public WindowPart {
public:
    InfoBox(frmMain& form, Album& album);

    // Reads the information file of GroupList(Index), 1-based, into PhotoInfo. In edit state the photograph
    // left behind is saved first. False when there is no such file or a size in it is beyond 16 bits.
    void LoadImageInfo(std::int32_t Index, bool& Result);

    void LoadInfoBox();
    // By its flag or by its boxes: either may come, and go, before the other.
    bool isEdited() const;
    // Slides the panel up or down while events run; a call during a slide is dropped.
    void ShowInfoBox(Up up, Edit edit);
    // Ends an edit as its button does, but without the slide and its events, and so in the middle of one too. What
    // couldn't be saved before is tried once more.
    void endEdit();

    // Whether the panel stays down or up, or comes and goes with the mouse: the index of an option button.
    enum : int { AlwaysDown = 0, Normal = 1, AlwaysUp = 2 };
    void choosePosition(int index);

    void cmdEditPhotoInfo_Click();
    void framInfo_MouseMove(int Button, int Shift, float X, float Y);
    void tmrInfoBox_Timer();
    void optInfoPosition_Click(int Index);

private:
    bool read(const std::string& name, OddSize oddSize);
    void save();
    void saveUnsaved();
    bool isTitleGiven() const; // by a person
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

    bool InfoBoxMoving = false;
    // The photograph whose information PhotoInfo is, empty for none: the box shows its name and saves to its file. It
    // is not always that of CurrentIndex: behind a photograph that can't be opened the box goes on to show the one
    // before.
    std::string m_held;
    std::array<std::string, 7> m_filled;        // what the text boxes held before somebody typed
    std::map<std::string, PhotoInfo> m_unsaved; // by name, what couldn't be written so far
};

} // namespace trovarium
