// SPDX-License-Identifier: GPL-3.0-or-later

#include "browser/frmMain.h"

#include "browser/FileTransfer.h"
#include "browser/GroupCommands.h"
#include "browser/GroupListPane.h"
#include "browser/Keyboard.h"
#include "browser/MainMenus.h"
#include "browser/Selection.h"
#include "browser/ThumbnailDrag.h"
#include "browser/ThumbnailPages.h"
#include "platform/pictures/PictureService.h"
#include "platform/toolkit/Desktop.h"
#include "platform/toolkit/Prompts.h"
#include "runtime/Numbers.h"
#include "store/Album.h"
#include "store/Log.h"
#include "viewer/AudioControls.h"
#include "viewer/InfoBox.h"
#include "viewer/PhotoDisplay.h"
#include "viewer/SlideShow.h"
#include "viewer/VideoControls.h"
#include "viewer/ZoomAndPan.h"

#include <initializer_list>
#include <utility>

namespace trovarium {

namespace {

constexpr float VideoParking = 20; // pixels beyond the frame's right edge
constexpr float TitleWidth = 7200; // twips; no wider than the text box that replaces it in an edit

// ---- layout of the control arrays, in twips ----

// The two that only hold pictures are hidden.
Plan barPlan(int index)
{
    const auto offset = static_cast<float>(index);
    if (index < GroupRows)
        return {.Left = 240, .Top = 1200 + 480 * offset, .Width = 2085, .Height = 465};
    return {.Left = -1860, .Top = 6180 + 480 * (offset - BrightBar), .Width = 2085, .Height = 465, .Visible = false};
}

float cellLeft(int cell)
{
    return 360 + 1920 * static_cast<float>(cell % Columns);
}

float cellTop(int cell)
{
    const int row = cell / Columns;
    return 240 + 1680 * static_cast<float>(row);
}

Plan thumbnailPlan(int cell)
{
    return {.Left = cellLeft(cell), .Top = cellTop(cell), .Width = 1500, .Height = 1500, .Visible = false};
}

Plan fileNamePlan(int cell)
{
    return {.Left = cellLeft(cell), .Top = cellTop(cell) + 1260, .Width = 1515, .Height = 195, .Visible = false};
}

// The last one follows the mouse during a drag.
Plan selectPlan(int cell)
{
    if (cell == DragFrame)
        return {.Left = 1320, .Top = -720, .Width = 1635, .Height = 1635, .Visible = false};
    return {.Left = cellLeft(cell) - 60, .Top = cellTop(cell) - 60, .Width = 1635, .Height = 1635, .Visible = false};
}

// The color of the background behind a row; it shows at the round corners of the row's picture.
Color groundBehindRow(int row)
{
    return {static_cast<unsigned char>(46 - 3 * row / 2), static_cast<unsigned char>(68 - 2 * row),
        static_cast<unsigned char>(100 - 3 * row)};
}

} // namespace

frmMain::frmMain(Desktop& desktop, Album& album, VideoControls& video, Dialogs dialogs)
    : Form(desktop,
        {.Name = "frmMain", .Caption = "Trovarium", .Width = 12000, .Height = 8580, .Scale = ScaleMode::Pixels})
    , pctAlbumList(this, "pctAlbumList", 0, 7, barPlan)
    , lbAlbumList("lbAlbumList")
    , imgThumbnail(&pctWindow, "imgThumbnail", 0, 15, thumbnailPlan)
    , lbThumbnailFile(&pctWindow, "lbThumbnailFile", 0, 15, fileNamePlan)
    , shpThumbnailSelect(&pctWindow, "shpThumbnailSelect", 0, DragFrame, selectPlan)
    , m_album(album)
    , m_video(video)
    , m_dialogs(std::move(dialogs))
{
    pctAlbumList.add(this, BrightBar, barPlan(BrightBar));
    pctAlbumList.add(this, DarkBar, barPlan(DarkBar));
    for (int row = 0; row < GroupRows; ++row)
        lbAlbumList.add(
            &pctAlbumList(row), row, {.Left = 240, .Top = 120, .Width = 1635, .Height = 195, .Caption = "Label3"});
    lstSlideGroups.Sorted = true;
    paintWindow();
    paintFrame();
    nameControls();
    makeParts();

    on(Load, this, &frmMain::Form_Load);
    on(Activate, this, &frmMain::Form_Activate);
    on(Unload, this, &frmMain::Form_Unload);
    on(EndOfSession, this, &frmMain::Form_EndOfSession);
    on(MouseDown, this, &frmMain::Form_MouseDown);
    on(MouseMove, this, &frmMain::Form_MouseMove);
    on(cmdFullScreen.Click, this, &frmMain::cmdFullScreen_Click);
    on(mnuViewFullscreen.Click, this, &frmMain::mnuViewFullscreen_Click);
    on(lbButtonText, &Label::Click, this, &frmMain::lbButtonText_Click);
    on(mnuEditSearchAppend.Click, this, &frmMain::mnuEditSearchAppend_Click);
    on(mnuGroupSearchAppend.Click, this, &frmMain::mnuGroupSearchAppend_Click);
}

frmMain::~frmMain()
{
    m_video.detach(*this);
}

void frmMain::paintWindow()
{
    PictureService& art = desktop().pictures();
    Icon = art.artwork("icon");
    Picture = art.artwork("background");
    pctAlbumList(BrightBar).Picture = art.artwork("bar-bright");
    pctAlbumList(DarkBar).Picture = art.artwork("bar-dark");
    pctBrightSmall.Picture = art.artwork("small-bright");
    pctDarkSmall.Picture = art.artwork("small-dark");
    for (int row = 0; row < GroupRows; ++row) {
        pctAlbumList(row).BackColor = groundBehindRow(row);
        pctAlbumList(row).Picture = pctAlbumList(DarkBar).Picture();
        lbAlbumList(row).ForeColor = White;
    }
    pctArrows(0).Picture = art.artwork("arrow-up");
    pctArrows(1).Picture = art.artwork("arrow-up-pressed");
    pctArrows(2).Picture = art.artwork("arrow-down");
    pctArrows(3).Picture = art.artwork("arrow-down-pressed");
    for (PictureButton* button : {&cmdSlideshow, &cmdFullScreen})
        button->Picture = pctAlbumList(DarkBar).Picture();
    for (PictureButton* button : {&cmdZoomOut, &cmdZoomIn, &pctPrev, &pctNext})
        button->Picture = pctDarkSmall.Picture();
    lbButtonText.forEach([](int, Label& label) {
        label.ForeColor = White;
        label.Alignment = Alignment::Center;
    });
    lbCount.Alignment = Alignment::Center;
    lbCount.NarrowToFit = true;
    lbCount.Elision = Elision::Middle; // shortens a long group name, not the numbers after it
    lbTitle.Alignment = Alignment::Center;
    lbTitle.AutoSize = true;
    lbTitle.MostWidth = fromTwips(TitleWidth);
    lbTitle.NarrowToFit = true;
    for (Label* placeholder : {&lbTitle, &lbVideo})
        placeholder->ForeColor = FaintInk;
    // Flat panels: between them the bar shows.
    Picture3.BackColor = PanelBlue;
    Picture4.forEach([](int, PictureBox& panel) {
        panel.Border = true;
        panel.BackColor = FieldBlue;
        panel.BorderColor = FieldBlue;
    });
    for (Label* label : {&lbStatusInfo, &lbVideo, &lbZoom, &lbStatusSelected, &lbStatusPage, &lbStatusCount})
        label->NarrowToFit = true;
    cmdVideo(1).Picture = art.artwork("pause");
    cmdVideo(2).Picture = art.artwork("stop");
    cmdPlayAudioClip(1).Picture = art.artwork("stop");
    cmdEditPhotoInfo.Picture = art.artwork("edit");
    framInfo.BackColor = PanelGray;
}

void frmMain::paintFrame()
{
    pctWindow.Picture = desktop().pictures().artwork("frame");
    lbThumbnailFile.forEach([](int, Label& label) {
        label.ForeColor = White;
        label.Shadow = true;
        label.Alignment = Alignment::Center;
        label.NarrowToFit = true;
    });
    shpThumbnailSelect.forEach([](int index, Shape& shape) {
        shape.BorderColor = index == DragFrame ? Yellow : White;
        shape.BorderWidth = 2;
    });
    shpDropPosition.BorderColor = Yellow;
    shpDropPosition.BorderWidth = 2;
    imgbox.Stretch = true;
    picVideoWindow.BackColor = Black;
    pctBox(0).AutoSize = true;
}

// Tool tips, and names for screen readers where a control has no caption.
void frmMain::nameControls()
{
    lstSlideGroups.AccessibleName = "All groups";
    pctArrows(0).AccessibleName = "Scroll groups up";
    pctArrows(1).AccessibleName = "Scroll groups up";
    pctArrows(2).AccessibleName = "Scroll groups down";
    pctArrows(3).AccessibleName = "Scroll groups down";
    cmdSlideshow.AccessibleName = "Slide Show";
    cmdFullScreen.AccessibleName = "Full Screen";
    cmdZoomOut.AccessibleName = "Reduce";
    cmdZoomIn.AccessibleName = "Enlarge";
    pctPrev.AccessibleName = "Previous photo";
    pctNext.AccessibleName = "Next photo";
    pctWindow.AccessibleName = "Viewing frame";
    imgbox.AccessibleName = "Photograph";
    picVideoWindow.AccessibleName = "Video";
    VScroll1.AccessibleName = "Page of thumbnails";
    framInfo.AccessibleName = "Media Content Information";
    cmdEditPhotoInfo.AccessibleName = "Edit information";
    optInfoPosition(0).AccessibleName = "Information box always down";
    optInfoPosition(1).AccessibleName = "Information box normal";
    optInfoPosition(2).AccessibleName = "Information box always up";
    txtYear.AccessibleName = "Year";
    txtPlace.AccessibleName = "Place";
    txtEvent.AccessibleName = "Event";
    txtPeople.AccessibleName = "People";
    txtPhotographer.AccessibleName = "Photographer";
    txtkeywords.AccessibleName = "Notes";
    txtTitle.AccessibleName = "Title";
    shpThumbnailSelect.forEach(
        [](int index, Shape& shape) { shape.AccessibleName = index == DragFrame ? "Dragged" : "Selected"; });
    shpDropPosition.AccessibleName = "Place of the drop";
    Picture3.AccessibleName = "Status bar";
    Picture4(3).AccessibleName = "Video and audio";
    Picture4(2).AccessibleName = "Zoom";
    Picture4(1).AccessibleName = "Selection";
    Picture4(4).AccessibleName = "Page";
    Picture4(0).AccessibleName = "Position";
    cmdVideo(1).AccessibleName = "Pause video";
    cmdVideo(2).AccessibleName = "Stop video";
    hscVideo.AccessibleName = "Position in the video";
    cmdPlayAudioClip(1).AccessibleName = "Stop audio";
    for (Label* heading : {&Label2, &lbCount})
        heading->ToolTipText = "Ctrl+Z takes the last change to groups back, Ctrl+Shift+Z makes it again.";
    cmdFullScreen.ToolTipText = "Full screen view of pictures. Use arrow keys to see next/prev.";
    cmdZoomOut.ToolTipText = "Zoom Out - Decrease image size";
    cmdZoomIn.ToolTipText = "Zoom In - Increase image size";
    pctPrev.ToolTipText = "Show previous image.";
    pctNext.ToolTipText = "Show next image.";
    imgbox.ToolTipText = "Click-n-drag to move image";
    cmdEditPhotoInfo.ToolTipText = "Info Box - Click to start/stop editing";
    lbZoom.ToolTipText = "Current zoom level (e.g., 1/2 = viewing at one half size)";
}

void frmMain::makeParts()
{
    m_groupList = std::make_unique<GroupListPane>(*this, m_album);
    m_pages = std::make_unique<ThumbnailPages>(*this, m_album);
    m_selection = std::make_unique<Selection>(*this, m_album);
    m_thumbnailDrag = std::make_unique<ThumbnailDrag>(*this, m_album);
    m_groupCommands = std::make_unique<GroupCommands>(*this, m_album);
    m_menus = std::make_unique<MainMenus>(*this, m_album);
    m_fileTransfer = std::make_unique<FileTransfer>(*this, m_album);
    m_photoDisplay = std::make_unique<PhotoDisplay>(*this, m_album);
    m_zoomAndPan = std::make_unique<ZoomAndPan>(*this, m_album);
    m_infoBox = std::make_unique<InfoBox>(*this, m_album);
    m_slideShow = std::make_unique<SlideShow>(*this, m_album);
    m_video.attach(*this);
    m_audio = std::make_unique<AudioControls>(*this, m_album);
    m_keyboard = std::make_unique<Keyboard>(*this, m_album);
}

void frmMain::Form_Load()
try {
    if (!m_groupList->LoadGroupNames()) {
        // Multiplying these texts always fails, so that the message never appears: the log gets a type mismatch.
        const double quotes = strictNumber("\"") * strictNumber("*");
        desktop().prompts().messageBox(
            "No album groups have been defined. Use next screen to search for photos (Ex. use a \"" + numberText(quotes)
                + " in the year field to find all photos.",
            Message::Notice, "");
        cmdCreateAlbumGroup_Click();
    } else if (lstSlideGroups.ListCount() > 0) {
        m_pages->LoadSlideGroup(lbAlbumList(0).Caption() + ".lst");
        m_groupList->pctAlbumList_MouseDown(0, LeftButton, NoKeys, 0, 0);
    }
    framInfo.Top = pctWindow.ScaleHeight() - StripHeight;
    Left = (desktop().Screen().Width() - Width()) * 0.5F;
    Top = (desktop().Screen().Height() - Height()) * 0.5F;
    parkVideo();
    pctAlbumList(m_groupList->CurrentGroupRow).SetFocus();
    txtTitle.TabBehind(optInfoPosition(2)); // first of the text fields
} catch (const Failure& failure) {
    logFailure(m_album, "Form_Load", failure);
}

void frmMain::parkVideo()
{
    picVideoWindow.Left = pctWindow.ScaleWidth() + VideoParking;
}

// The welcome appears once per installation.
void frmMain::Form_Activate()
{
    COWReg& settings = m_album.Settings();
    if (toBoolean(settings.GetOWSetting("Trovarium", "Options", "FirstTime", "True"))) {
        settings.SetOWSetting("Trovarium", "Options", "FirstTime", "False");
        m_dialogs.showFirstTime();
    }
}

void frmMain::Form_Unload()
try {
    m_infoBox->endEdit();
    tmrInfoBox.Enabled = false;
    m_audio->StopWav();
    m_audio->StopMidi();
    m_dialogs.unloadAllForms();
} catch (const Failure& failure) {
    logFailure(m_album, "Form_Unload", failure);
}

void frmMain::Form_EndOfSession()
{
    m_infoBox->endEdit();
}

void frmMain::Form_MouseDown(int Button, int /*Shift*/, float /*X*/, float /*Y*/)
{
    if (Button == RightButton)
        PopupMenu(mnuHelp);
}

void frmMain::Form_MouseMove(int /*Button*/, int /*Shift*/, float /*X*/, float /*Y*/)
try {
} catch (const Failure& failure) {
    logFailure(m_album, "Form_MouseMove", failure);
}

// A label acts for the button beneath it, even if that is disabled. There are no labels 2 to 4.
void frmMain::lbButtonText_Click(int Index)
try {
    switch (Index) {
    case 0:
        return m_photoDisplay->pctNext_Click();
    case 1:
        return m_photoDisplay->pctPrev_Click();
    case 2:
        return cmdCreateAlbumGroup_Click();
    case 4:
        return m_infoBox->cmdEditPhotoInfo_Click();
    case 5:
        return m_zoomAndPan->cmdZoomOut_Click();
    case 6:
        return m_zoomAndPan->cmdZoomIn_Click();
    case 7:
        return m_slideShow->cmdSlideshow_Click();
    case 8:
        return cmdFullScreen_Click();
    default:
        return;
    }
} catch (const Failure& failure) {
    // Logged under this name on purpose.
    logFailure(m_album, "lstSlideGroups_Click", failure);
}

void frmMain::cmdFullScreen_Click()
try {
    if (m_album.view.ViewMode == ViewThumbnails) {
        m_photoDisplay->openFromThumbnails();
        m_album.view.ViewMode = ViewPhoto;
    }
    cmdFullScreen.Picture = pctAlbumList(BrightBar).Picture();
    m_dialogs.showFullScreen();
    cmdFullScreen.Picture = pctAlbumList(DarkBar).Picture();
    m_album.view.ViewMode = ViewFullScreen;
} catch (const Failure& failure) {
    logFailure(m_album, "cmdFullScreen_Click", failure);
}

void frmMain::cmdCreateAlbumGroup_Click()
try {
    m_dialogs.showSearch();
} catch (const Failure& failure) {
    logFailure(m_album, "cmdCreateAlbumGroup_Click", failure);
}

void frmMain::cmdExit_Click()
try {
    unload();
} catch (const Failure& failure) {
    logFailure(m_album, "cmdExit_Click", failure);
}

void frmMain::imgExit_Click()
try {
    unload();
} catch (const Failure& failure) {
    logFailure(m_album, "imgExit_Click", failure);
}

} // namespace trovarium
