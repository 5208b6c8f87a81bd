// SPDX-License-Identifier: GPL-3.0-or-later

#include "viewer/InfoBox.h"

#include "browser/frmMain.h"
#include "platform/files/FileService.h"
#include "platform/toolkit/Colors.h"
#include "platform/toolkit/Desktop.h"
#include "runtime/Numbers.h"
#include "store/Album.h"
#include "store/InfoFile.h"
#include "store/Log.h"
#include "store/PhotographFiles.h"
#include "viewer/SlideShow.h"
#include "viewer/VideoControls.h"

#include <optional>

namespace trovarium {

namespace {

// A field that can be edited. All but the last have a label with the same index in lbInfo.
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

// A file without a link leaves the last photograph's in place. An edit writes the link into the file, so it begins with
// this one instead.
std::string defaultLink(const std::string& name)
{
    return "\\Photos\\" + name;
}

} // namespace

InfoBox::InfoBox(frmMain& form, Album& album)
    : WindowPart(form, album)
{
    form.optInfoPosition(Normal).preset();
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

bool InfoBox::LoadImageInfo(std::int32_t Index)
try {
    const std::string name = m_album.group.GroupList(Index);
    // Stepping during an edit saves the previous photograph without asking.
    if (m_album.view.InfoEditing) {
        takeTexts();
        save();
        m_album.info.PhotoLink = defaultLink(name);
    }
    m_album.view.IsVideo = isVideoFile(GetPhotoLink(m_album, name + ".info"));
    m_form.video().EnableVideo(m_album.view.IsVideo);
    const bool isRead = read(name, OddSize::Ends);
    if (m_album.view.InfoEditing)
        fillTexts();
    return isRead;
} catch (const Failure&) {
    return false; // not logged
}

// If the file can't be read completely, m_held stays empty, so that no save overwrites or creates it. Texts that could
// not be written yet are newer than the file.
bool InfoBox::read(const std::string& name, OddSize oddSize)
{
    m_held.clear();
    if (!readInfoFile(m_album, name + ".info", m_album.info, oddSize))
        return false;
    m_held = name;
    if (const auto unsaved = m_unsaved.find(name); unsaved != m_unsaved.end())
        m_album.info = unsaved->second;
    return true;
}

void InfoBox::save()
{
    if (!m_held.empty())
        m_unsaved[m_held] = m_album.info;
    saveUnsaved();
}

// Doesn't recreate a missing file: its photograph was removed from the program.
void InfoBox::saveUnsaved()
{
    std::erase_if(m_unsaved, [this](const auto& unsaved) {
        const std::string& name = unsaved.first;
        const auto unseen = attempt([&] { m_album.files.length(infoFilePath(m_album.paths, name)); });
        return unseen ? unseen->kind() == FailureKind::FileNotFound
                      : SaveImageInfo(m_album, name + ".info", unsaved.second);
    });
}

bool InfoBox::isEdited() const
{
    return m_album.view.InfoEditing || m_form.txtYear.Visible();
}

bool InfoBox::isTitleGiven() const
{
    return !isFirstTitle(m_album.info.Title, m_held + ".info");
}

std::string InfoBox::shownTitle() const
{
    return isTitleGiven() ? m_album.info.Title : readablePath(m_album.info.Title);
}

void InfoBox::showFields()
{
    const bool isGiven = isTitleGiven();
    m_form.lbTitle.Caption = shownTitle();
    m_form.lbTitle.ForeColor = isGiven ? std::nullopt : std::optional(FaintInk);
    m_form.lbTitle.Elision = isGiven ? Elision::End : Elision::Start; // the end of a path is the file's name
    for (int i = 0; i < LabelledFields; ++i)
        m_form.lbInfo(i).Caption = m_album.info.*Fields[i].text;
    m_form.lbInfo(6).Caption = m_held;
}

void InfoBox::LoadInfoBox()
try {
    showFields();
    const std::string name = m_album.group.GroupList(m_album.view.CurrentIndex);
    bool hasClip = false; // also if the test fails: the buttons must not keep the state of the previous photograph
    const auto unseen =
        attempt([&] { hasClip = isPhotographName(name) && m_album.files.exists(clipPath(m_album.paths, name)); });
    m_form.cmdPlayAudioClip.forEach([&](int, Button& button) {
        if (!hasClip && button.hasFocus())
            m_form.pctWindow.SetFocus(); // or the focus would move to an arbitrary control
        button.Enabled = hasClip;
    });
    if (unseen)
        throw Failure(*unseen);
} catch (const Failure& failure) {
    logFailure(m_album, "LoadInfoBox", failure);
}

// After a failure InfoBoxMoving stays set, and the box no longer moves until the program ends.
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

// One pixel per event-loop iteration, which sets the speed.
void InfoBox::slideTo(std::int16_t target)
{
    const int step = static_cast<float>(target) < m_form.framInfo.Top() ? -1 : 1;
    for (int top = toInt16(m_form.framInfo.Top()); (target - top) * step >= 0; top += step) {
        m_form.framInfo.Top = static_cast<float>(top);
        m_form.desktop().DoEvents();
    }
}

// Reads the information of the photograph that is current now, after the slide and its events: what the box showed may
// belong to another one or be outdated.
void InfoBox::enterEditState()
{
    std::string name;
    attempt([&] { name = m_album.group.GroupList(m_album.view.CurrentIndex); });
    m_album.info.PhotoLink = defaultLink(name);
    read(name, OddSize::IsPassedOver);
    fillTexts();
    showTexts(true);
    m_form.txtTitle.SetFocus();
}

void InfoBox::leaveEditState()
{
    takeTexts();
    LoadInfoBox();
    for (const Field& field : Fields) {
        if ((m_form.*field.box).hasFocus()) // or the focus would move to an arbitrary control
            m_form.cmdEditPhotoInfo.SetFocus();
    }
    showTexts(false);
    save();
    m_form.tmrInfoBox.Enabled = true;
}

// Keeps a field as it was read unless the user changed it: a box may hold less than the field.
void InfoBox::takeTexts()
{
    for (std::size_t i = 0; i < m_filled.size(); ++i) {
        const std::string& text = (m_form.*Fields[i].box).Text();
        if (text != m_filled[i])
            m_album.info.*Fields[i].text = text;
    }
}

// Updates the labels too, one of which shows the file's name. Boxes without a file to save to are disabled.
void InfoBox::fillTexts()
{
    showFields();
    for (std::size_t i = 0; i < m_filled.size(); ++i) {
        TextBox& box = m_form.*Fields[i].box;
        box.Text = Fields[i].text == &PhotoInfo::Title ? shownTitle() : m_album.info.*Fields[i].text;
        box.Enabled = !m_held.empty();
        m_filled[i] = box.Text();
    }
}

void InfoBox::showTexts(bool visible)
{
    for (const Field& field : Fields)
        (m_form.*field.box).Visible = visible;
}

void InfoBox::cmdEditPhotoInfo_Click()
try {
    if (InfoBoxMoving) // or the edit would begin without its text boxes
        return;
    const bool begins = !m_form.txtYear.Visible();
    // A show must not step during an edit. Outside a show a clip plays on.
    if (begins && (m_album.view.SlideShowRunning || m_form.tmrSlideShow.Enabled()))
        m_form.slideShow().StopSlideShow();
    ShowInfoBox(Up::Yes, begins ? Edit::Yes : Edit::No);
    setEditing(begins);
} catch (const Failure& failure) {
    logFailure(m_album, "cmdEditPhotoInfo_Click", failure);
}

void InfoBox::endEdit()
{
    if (m_form.txtYear.Visible())
        leaveEditState();
    else
        saveUnsaved();
    if (m_album.view.InfoEditing)
        setEditing(false);
}

void InfoBox::setEditing(bool editing)
{
    enableRest(!editing);
    m_form.MousePointer = editing ? NoDropPointer : DefaultPointer;
    m_form.framInfo.MousePointer = editing ? TextPointer : DefaultPointer;
    m_form.txtTitle.MousePointer = editing ? TextPointer : DefaultPointer;
    m_form.cmdEditPhotoInfo.MousePointer = editing ? ArrowPointer : DefaultPointer;
    m_album.view.InfoEditing = editing;
}

void InfoBox::enableRest(bool enabled)
{
    for (PictureButton* button : {&m_form.cmdFullScreen, &m_form.cmdSlideshow, &m_form.cmdZoomIn, &m_form.cmdZoomOut})
        button->Enabled = enabled;
    for (int row = 0; row < GroupRows; ++row)
        m_form.pctAlbumList(row).Enabled = enabled;
    m_form.optInfoPosition.forEach([&](int, OptionButton& button) { button.Enabled = enabled; });
    m_form.TakesFiles = enabled;
    for (Menu* menu : {&m_form.mnuFile, &m_form.mnuEdit, &m_form.mnuView, &m_form.mnuSet, &m_form.mnuHelp})
        menu->Enabled = enabled;
}

void InfoBox::framInfo_MouseMove(int /*Button*/, int /*Shift*/, float /*X*/, float /*Y*/)
try {
    if (!m_form.txtYear.Visible() && !m_form.optInfoPosition(AlwaysDown).Value()) {
        ShowInfoBox(Up::Yes, Edit::No);
        m_form.tmrInfoBox.Enabled = true;
    }
} catch (const Failure& failure) {
    logFailure(m_album, "framInfo_MouseMove", failure);
}

void InfoBox::tmrInfoBox_Timer()
try {
    if (!m_form.txtYear.Visible() && !m_form.optInfoPosition(AlwaysUp).Value()) {
        m_form.tmrInfoBox.Enabled = false;
        ShowInfoBox(Up::No, Edit::No);
    }
} catch (const Failure& failure) {
    logFailure(m_album, "tmrInfoBox_Timer", failure);
}

void InfoBox::optInfoPosition_Click(int Index)
{
    m_form.optInfoPosition.forEach(
        [Index](int index, OptionButton& button) { button.BackColor = index == Index ? MarkRed : PanelGray; });
    if (Index != Normal)
        ShowInfoBox(Index == AlwaysUp ? Up::Yes : Up::No, Edit::No);
    choosePosition(Index);
}

// Setting the option button raises its click, which comes back here.
void InfoBox::choosePosition(int index)
{
    m_form.optInfoPosition(index).Value = true;
    m_form.mnuSetInfoDown.Checked = index == AlwaysDown;
    m_form.mnuSetInfoNormal.Checked = index == Normal;
    m_form.mnuSetInfoUp.Checked = index == AlwaysUp;
}

} // namespace trovarium
