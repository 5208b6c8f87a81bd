#include "viewer/InfoBox.h"

#include "browser/WindowPlan.h"
#include "browser/frmMain.h"
#include "platform/files/FileService.h"
#include "platform/toolkit/Desktop.h"
#include "runtime/Numbers.h"
#include "store/Album.h"
#include "store/InfoFile.h"
#include "store/Log.h"
#include "store/QuietFile.h"
#include "viewer/VideoControls.h"

namespace trovarium {

namespace {

// What can be edited. All but the last have a label of the same number in lbInfo.
struct Field {
    TextBox frmMain::*box;
    std::string PhotoInfo::*text;
};
constexpr Field Fields[] = {
    {&frmMain::txtYear, &PhotoInfo::Year},
    {&frmMain::txtPlace, &PhotoInfo::Place},
    {&frmMain::txtEvent, &PhotoInfo::Event},
    {&frmMain::txtPeople, &PhotoInfo::People},
    {&frmMain::txtPhotographer, &PhotoInfo::Photographer},
    {&frmMain::txtkeywords, &PhotoInfo::Keywords},
    {&frmMain::txtTitle, &PhotoInfo::Title},
};
constexpr int LabelledFields = 6;

} // namespace

InfoBox::InfoBox(frmMain& form, Album& album)
    : m_form(form)
    , m_album(album)
{
    form.optInfoPosition(1).preset();
    form.txtYear.MaxLength = 4;
    on(form.cmdEditPhotoInfo.Click, this, &InfoBox::cmdEditPhotoInfo_Click);
    on(form.mnuEditInfo.Click, this, &InfoBox::mnuEditInfo_Click);
    on(form.framInfo.MouseMove, this, &InfoBox::framInfo_MouseMove);
    on(form.lbPhotoInfo.MouseMove, this, &InfoBox::lbPhotoInfo_MouseMove);
    on(form.tmrInfoBox.Tick, this, &InfoBox::tmrInfoBox_Timer);
    on(form.optInfoPosition, &OptionButton::Click, this, &InfoBox::optInfoPosition_Click);
    on(form.mnuSetInfoUp.Click, this, &InfoBox::mnuSetInfoUp_Click);
    on(form.mnuSetInfoNormal.Click, this, &InfoBox::mnuSetInfoNormal_Click);
    on(form.mnuSetInfoDown.Click, this, &InfoBox::mnuSetInfoDown_Click);
}

void InfoBox::LoadImageInfo(std::int32_t Index, bool& Result)
try {
    Result = false;
    const std::string infoFileName = m_album.group.GroupList(Index) + ".info";
    // Moving on in edit state saves the photograph left behind, with no question asked.
    if (m_album.view.InfoEditing) {
        takeTexts();
        SaveImageInfo(m_album, m_held);
    }
    m_held = infoFileName;
    m_album.view.IsVideo = isVideoFile(GetPhotoLink(m_album, infoFileName));
    bool unused = false;
    m_form.video().EnableVideo(m_album.view.IsVideo, unused);
    if (!readInfoFile(m_album, infoFileName, m_album.info)) {
        if (!isWhollyRead(infoFileName))
            m_held.clear(); // words that couldn't be read are not written over
        return;
    }
    if (m_album.view.InfoEditing)
        fillTexts();
    Result = true;
} catch (const Failure&) {
    // Quiet: the result tells.
}

// Also where there is nothing to read. A size that is no number of 16 bits hides no words.
bool InfoBox::isWhollyRead(const std::string& infoFileName) const
{
    FileService& files = m_album.files;
    const std::string path = m_album.paths.InfoPath + infoFileName;
    bool isThere = true;
    attempt([&] { isThere = files.exists(path); });
    return !isThere || withFileQuietly(files, path, OpenMode::Input, [&](int number) {
        while (!files.endOfFile(number))
            files.lineInput(number);
    });
}

void InfoBox::LoadInfoBox()
try {
    m_form.lbTitle.Caption = m_album.info.Title;
    for (int i = 0; i < LabelledFields; ++i)
        m_form.lbInfo(i).Caption = m_album.info.*Fields[i].text;
    const std::string name = m_album.group.GroupList(m_album.view.CurrentIndex);
    m_form.lbInfo(6).Caption = name;
    bool hasClip = false; // also where that can't be seen: the buttons must not stay those of the photograph before
    const auto unseen = attempt([&] { hasClip = m_album.files.exists(m_album.paths.AudioPath + name + ".wav"); });
    m_form.cmdPlayAudioClip(0).Enabled = hasClip;
    m_form.cmdPlayAudioClip(1).Enabled = hasClip;
    if (unseen)
        throw Failure(*unseen);
} catch (const Failure& failure) {
    logFailure(m_album, "LoadInfoBox", failure);
}

// A failure on the way leaves InfoBoxMoving set: the box then stays where it is until the program ends.
void InfoBox::ShowInfoBox(Up up, Edit edit)
try {
    if (InfoBoxMoving)
        return;
    InfoBoxMoving = true;
    const float frameHeight = m_form.pctWindow.ScaleHeight();
    const float panelHeight = up == Up::Yes ? m_form.framInfo.Height() : 0;
    slideTo(toInt16(frameHeight - panelHeight - StripHeight));
    if (edit == Edit::Yes)
        enterEditState();
    else if (m_form.txtYear.Visible())
        leaveEditState();
    InfoBoxMoving = false;
} catch (const Failure& failure) {
    logFailure(m_album, "ShowInfoBox", failure);
}

// One pixel a turn of the event loop, which sets the pace.
void InfoBox::slideTo(std::int16_t target)
{
    const int step = static_cast<float>(target) < m_form.framInfo.Top() ? -1 : 1;
    for (int top = toInt16(m_form.framInfo.Top()); (target - top) * step >= 0; top += step) {
        m_form.framInfo.Top = static_cast<float>(top);
        m_form.desktop().DoEvents();
    }
}

void InfoBox::enterEditState()
{
    fillTexts();
    showTexts(true);
}

void InfoBox::leaveEditState()
{
    takeTexts();
    LoadInfoBox();
    showTexts(false);
    SaveImageInfo(m_album, m_held);
    m_form.tmrInfoBox.Enabled = true;
}

void InfoBox::takeTexts()
{
    for (const Field& field : Fields)
        m_album.info.*field.text = (m_form.*field.box).Text();
}

void InfoBox::fillTexts()
{
    for (const Field& field : Fields)
        (m_form.*field.box).Text = m_album.info.*field.text;
}

void InfoBox::showTexts(bool visible)
{
    for (const Field& field : Fields)
        (m_form.*field.box).Visible = visible;
}

void InfoBox::cmdEditPhotoInfo_Click()
try {
    if (!m_form.txtYear.Visible()) {
        ShowInfoBox(Up::Yes, Edit::Yes);
        enableRest(false);
        m_form.MousePointer = NoDropPointer;
        m_form.framInfo.MousePointer = TextPointer;
        m_form.txtTitle.MousePointer = TextPointer;
        m_form.cmdEditPhotoInfo.MousePointer = ArrowPointer;
        m_album.view.InfoEditing = true;
        return;
    }
    ShowInfoBox(Up::Yes, Edit::No);
    enableRest(true);
    m_form.cmdEditPhotoInfo.MousePointer = DefaultPointer;
    m_form.framInfo.MousePointer = DefaultPointer;
    m_form.txtTitle.MousePointer = DefaultPointer;
    m_form.MousePointer = DefaultPointer;
    m_album.view.InfoEditing = false;
} catch (const Failure& failure) {
    logFailure(m_album, "cmdEditPhotoInfo_Click", failure);
}

void InfoBox::enableRest(bool enabled)
{
    m_form.cmdFullScreen.Enabled = enabled;
    m_form.cmdSlideshow.Enabled = enabled;
    m_form.cmdZoomIn.Enabled = enabled;
    m_form.cmdZoomOut.Enabled = enabled;
    for (int i = 0; i < GroupRows; ++i) {
        m_form.pctAlbumList(i).Enabled = enabled;
        if (i < 3)
            m_form.optInfoPosition(i).Enabled = enabled;
    }
    m_form.mnuFile.Enabled = enabled;
    m_form.mnuEdit.Enabled = enabled;
    m_form.mnuView.Enabled = enabled;
    m_form.mnuSet.Enabled = enabled;
    m_form.mnuHelp.Enabled = enabled;
}

void InfoBox::mnuEditInfo_Click()
{
    cmdEditPhotoInfo_Click();
}

void InfoBox::framInfo_MouseMove(int /*Button*/, int /*Shift*/, float /*X*/, float /*Y*/)
try {
    if (!m_form.txtYear.Visible() && !m_form.optInfoPosition(0).Value()) {
        ShowInfoBox(Up::Yes, Edit::No);
        m_form.tmrInfoBox.Enabled = true;
    }
} catch (const Failure& failure) {
    logFailure(m_album, "framInfo_MouseMove", failure);
}

void InfoBox::lbPhotoInfo_MouseMove(int Button, int Shift, float X, float Y)
{
    framInfo_MouseMove(Button, Shift, X, Y);
}

void InfoBox::tmrInfoBox_Timer()
try {
    if (!m_form.txtYear.Visible() && !m_form.optInfoPosition(2).Value()) {
        m_form.tmrInfoBox.Enabled = false;
        ShowInfoBox(Up::No, Edit::No);
    }
} catch (const Failure& failure) {
    logFailure(m_album, "tmrInfoBox_Timer", failure);
}

void InfoBox::optInfoPosition_Click(int Index)
{
    for (int i = 0; i <= 2; ++i)
        m_form.optInfoPosition(i).BackColor = PanelGrey;
    m_form.optInfoPosition(Index).BackColor = MarkRed;
    switch (Index) {
    case 0:
        ShowInfoBox(Up::No, Edit::No);
        mnuSetInfoDown_Click();
        break;
    case 1:
        mnuSetInfoNormal_Click();
        break;
    case 2:
        ShowInfoBox(Up::Yes, Edit::No);
        mnuSetInfoUp_Click();
        break;
    default:
        break;
    }
}

void InfoBox::mnuSetInfoUp_Click()
{
    choosePosition(2);
}

void InfoBox::mnuSetInfoNormal_Click()
{
    choosePosition(1);
}

void InfoBox::mnuSetInfoDown_Click()
{
    choosePosition(0);
}

// The option button raises its click in turn when this sets it.
void InfoBox::choosePosition(int index)
{
    m_form.optInfoPosition(index).Value = true;
    m_form.mnuSetInfoDown.Checked = index == 0;
    m_form.mnuSetInfoNormal.Checked = index == 1;
    m_form.mnuSetInfoUp.Checked = index == 2;
}

} // namespace trovarium
