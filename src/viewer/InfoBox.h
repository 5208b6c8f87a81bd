#pragma once

#include <cstdint>
#include <string>

namespace trovarium {

struct Album;
class frmMain;

enum class Up { No, Yes };
enum class Edit { No, Yes };

// The panel at the bottom of the frame: shows what is known of the photograph and turns into a small form.
class InfoBox {
public:
    InfoBox(frmMain& form, Album& album);

    // Reads the information file of GroupList(Index), 1-based, into PhotoInfo. In edit state the photograph
    // left behind is saved first. False when there is no such file or a size in it is beyond 16 bits.
    void LoadImageInfo(std::int32_t Index, bool& Result);

    void LoadInfoBox();
    // Slides the panel up or down while events run; a call during a slide is dropped.
    void ShowInfoBox(Up up, Edit edit);

    void cmdEditPhotoInfo_Click();
    void mnuEditInfo_Click();
    void framInfo_MouseMove(int Button, int Shift, float X, float Y);
    void lbPhotoInfo_MouseMove(int Button, int Shift, float X, float Y);
    void tmrInfoBox_Timer();
    void optInfoPosition_Click(int Index);
    void mnuSetInfoUp_Click();
    void mnuSetInfoNormal_Click();
    void mnuSetInfoDown_Click();

private:
    bool isWhollyRead(const std::string& infoFileName) const;
    void slideTo(std::int16_t target);
    void enterEditState();
    void leaveEditState();
    void takeTexts();
    void fillTexts();
    void showTexts(bool visible);
    void enableRest(bool enabled);
    void choosePosition(int index);

    frmMain& m_form;
    Album& m_album;
    bool InfoBoxMoving = false;
    // The information file that PhotoInfo was read from, empty for none. It is not always that of CurrentIndex: behind
    // a photograph that can't be opened the box goes on to show the one before.
    std::string m_held;
};

} // namespace trovarium
