// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/toolkit/Buttons.h"
#include "platform/toolkit/ControlArray.h"
#include "platform/toolkit/Form.h"
#include "platform/toolkit/Frame.h"
#include "platform/toolkit/Image.h"
#include "platform/toolkit/Label.h"
#include "platform/toolkit/ListBox.h"
#include "platform/toolkit/Menu.h"
#include "platform/toolkit/PictureBox.h"
#include "platform/toolkit/ScrollBar.h"
#include "platform/toolkit/Shape.h"
#include "platform/toolkit/TextBox.h"
#include "platform/toolkit/Timer.h"

#include <functional>
#include <memory>

namespace trovarium {

struct Album;
class AudioControls;
class FileTransfer;
class GroupCommands;
class GroupListPane;
class InfoBox;
class Keyboard;
class MainMenus;
class PhotoDisplay;
class Selection;
class SlideShow;
class ThumbnailDrag;
class ThumbnailPages;
class VideoControls;
class ZoomAndPan;

// Opens the other forms. The main window can't include them, as they include it; `Program` fills this in.
struct Dialogs {
    std::function<void()> showFirstTime;      // modal
    std::function<void(int mode)> showGroups; // modal: CreateWithCopies or CreateByMoving
    std::function<void()> showExport;         // modal
    std::function<void()> showFullScreen;     // not modal
    std::function<void()> showSlideShow;      // modal
    std::function<void()> showSearch;         // modal
    std::function<void()> showImport;         // modal
    std::function<void()> showMidiLink;       // modal: songs for groups
    std::function<void()> showWavLink;        // modal: clips for the selected photographs
    std::function<void()> showAbout;          // modal
    std::function<void()> unloadAllForms;     // all but the main window
    // The import dialog, modal, its list filled with these.
    std::function<void(const OfferedFiles&)> importOffered;
};

// The main window: its controls and their layout. The handlers are in the window's parts (WindowPart), which wire them
// themselves; parts and other forms reach a part through the accessors.
class frmMain : public Form {
public:
    // `video` outlives it.
    frmMain(Desktop& desktop, Album& album, VideoControls& video, Dialogs dialogs);
    ~frmMain() override;

    GroupListPane& groupList() { return *m_groupList; }
    ThumbnailPages& pages() { return *m_pages; }
    Selection& selection() { return *m_selection; }
    ThumbnailDrag& thumbnailDrag() { return *m_thumbnailDrag; }
    GroupCommands& groupCommands() { return *m_groupCommands; }
    MainMenus& menus() { return *m_menus; }
    FileTransfer& fileTransfer() { return *m_fileTransfer; }
    PhotoDisplay& photoDisplay() { return *m_photoDisplay; }
    ZoomAndPan& zoomAndPan() { return *m_zoomAndPan; }
    InfoBox& infoBox() { return *m_infoBox; }
    SlideShow& slideShow() { return *m_slideShow; }
    VideoControls& video() { return m_video; }
    AudioControls& audio() { return *m_audio; }
    Dialogs& dialogs() { return m_dialogs; }

    // Moves the film's box beyond the frame, out of sight.
    void parkVideo();

    void Form_Load();
    void Form_Activate();
    void Form_Unload();
    void Form_EndOfSession();
    void Form_MouseDown(int Button, int Shift, float X, float Y);
    void Form_MouseMove(int Button, int Shift, float X, float Y);
    void lbButtonText_Click(int Index);

    void mnuEditSearchAppend_Click() { cmdCreateAlbumGroup_Click(); }
    void mnuGroupSearchAppend_Click() { cmdCreateAlbumGroup_Click(); }
    void cmdFullScreen_Click();
    void mnuViewFullscreen_Click() { cmdFullScreen_Click(); }
    // Without a control of their names: opens the search, closes the window.
    void cmdCreateAlbumGroup_Click();
    void cmdExit_Click();
    void imgExit_Click();

    // ---- layout: name, left, top, width, height (twips), caption ----

    Label Label2{this, {"Label2", 660, 300, 1350, 240, "Album Groups"}};
    Label lbCount{this, {"lbCount", 4620, 300, 5070, 240, "Group ABC - 45th of 1000"}};
    Label lbTitle{this, {"lbTitle", 7020, 7680, 390, 240, "title"}};

    // The group list: rows 0 to 7; 10 and 11 are hidden and hold the pictures of a row.
    ListBox lstSlideGroups{
        this, {.Name = "lstSlideGroups", .Left = 240, .Top = 1200, .Width = 2085, .Height = 3735, .Visible = false}};
    ControlArray<PictureBox> pctAlbumList;
    ControlArray<Label> lbAlbumList;
    // Up, up pressed, down, down pressed.
    ControlArray<PictureButton> pctArrows{this, "pctArrows",
        {{0, {.Left = 960, .Top = 780, .Width = 630, .Height = 315, .Visible = false}},
            {1, {.Left = 960, .Top = 780, .Width = 630, .Height = 315, .Visible = false}},
            {2, {.Left = 960, .Top = 5100, .Width = 630, .Height = 315, .Visible = false}},
            {3, {.Left = 960, .Top = 5100, .Width = 630, .Height = 315, .Visible = false}}}};

    PictureButton cmdSlideshow{this, {"cmdSlideshow", 240, 5940, 2085, 465}};
    PictureButton cmdFullScreen{this, {"cmdFullScreen", 240, 6480, 2085, 465}};
    PictureButton cmdZoomOut{this, {"cmdZoomOut", 240, 7020, 1035, 465}};
    PictureButton cmdZoomIn{this, {"cmdZoomIn", 1290, 7020, 1035, 465}};
    PictureButton pctPrev{this, {"pctPrev", 240, 7560, 1035, 465}};
    PictureButton pctNext{this, {"pctNext", 1290, 7560, 1035, 465}};
    // Labels over the picture buttons; there is no 2, 3 or 4.
    ControlArray<Label> lbButtonText{this, "lbButtonText",
        {{0, {.Left = 1350, .Top = 7665, .Width = 915, .Height = 240, .Caption = ">>"}},
            {1, {.Left = 300, .Top = 7665, .Width = 915, .Height = 240, .Caption = "<<"}},
            {5, {.Left = 300, .Top = 7125, .Width = 915, .Height = 240, .Caption = "Reduce"}},
            {6, {.Left = 1350, .Top = 7125, .Width = 915, .Height = 240, .Caption = "Enlarge"}},
            {7, {.Left = 300, .Top = 6045, .Width = 1965, .Height = 240, .Caption = "Slide Show"}},
            {8, {.Left = 300, .Top = 6585, .Width = 1965, .Height = 240, .Caption = "Full Screen"}}}};
    // Hold the pictures of the small buttons: pressed, and not.
    Image pctBrightSmall{this, {.Name = "pctBrightSmall", .Width = 1035, .Height = 465, .Visible = false}};
    Image pctDarkSmall{this, {.Name = "pctDarkSmall", .Width = 1035, .Height = 465, .Visible = false}};

    // The viewing frame. Cells 0 to 15; shpThumbnailSelect(16) follows the pointer in a drag.
    PictureBox pctWindow{this, {"pctWindow", 3060, 600, 8175, 7035}, ScaleMode::Pixels};
    ControlArray<Image> imgThumbnail;
    ControlArray<Label> lbThumbnailFile;
    ControlArray<Shape> shpThumbnailSelect;
    Shape shpDropPosition{&pctWindow, {.Name = "shpDropPosition", .Width = 15, .Height = 1635, .Visible = false}};
    Image imgbox{&pctWindow, {.Name = "imgbox", .Visible = false}};
    PictureBox picVideoWindow{&pctWindow, {.Name = "picVideoWindow", .Width = 7455, .Height = 5595, .Visible = false}};
    VScroll VScroll1{&pctWindow, {"VScroll1", 7920, 180, 255, 5655}};
    // Element 0 holds the current picture at its original size, from which frame, zoom and full screen take it.
    ControlArray<PictureBox> pctBox{this, "pctBox", {{0, {.Visible = false}}}};

    // The information box.
    Frame framInfo{&pctWindow, {"framInfo", 300, 6810, 7455, 2235}};
    Label lbPhotoInfo{&framInfo, {"lbPhotoInfo", 420, 0, 5940, 225, "Media Content Information"}};
    Button cmdEditPhotoInfo{&framInfo, {"cmdEditPhotoInfo", 60, 0, 300, 225}};
    ControlArray<OptionButton> optInfoPosition{&framInfo, "optInfoPosition",
        {{0, {.Left = 6510, .Top = 0, .Width = 255, .Height = 225, .ToolTipText = "Info Box - Always Down"}},
            {1, {.Left = 6810, .Top = 0, .Width = 255, .Height = 225, .ToolTipText = "Info Box - Normal"}},
            {2, {.Left = 7110, .Top = 0, .Width = 255, .Height = 225, .ToolTipText = "Info Box - Always Up"}}}};
    // The captions in front of the fields.
    ControlArray<Label> lbInfoCaption{&framInfo, "lbInfoCaption",
        {{0, {.Left = 120, .Top = 405, .Width = 690, .Height = 225, .Caption = "Year:"}},
            {1, {.Left = 1740, .Top = 405, .Width = 630, .Height = 225, .Caption = "Place:"}},
            {2, {.Left = 120, .Top = 765, .Width = 690, .Height = 225, .Caption = "Event:"}},
            {3, {.Left = 120, .Top = 1125, .Width = 810, .Height = 225, .Caption = "People:"}},
            {4, {.Left = 120, .Top = 1485, .Width = 1530, .Height = 225, .Caption = "Photographer:"}},
            {5, {.Left = 120, .Top = 1845, .Width = 750, .Height = 225, .Caption = "Notes:"}},
            {6, {.Left = 4020, .Top = 1485, .Width = 930, .Height = 225, .Caption = "Filename:"}}}};
    ControlArray<Label> lbInfo{&framInfo, "lbInfo",
        {{0, {.Left = 840, .Top = 405, .Width = 615, .Height = 225}},
            {1, {.Left = 2400, .Top = 405, .Width = 4875, .Height = 225}},
            {2, {.Left = 840, .Top = 765, .Width = 6435, .Height = 225}},
            {3, {.Left = 960, .Top = 1125, .Width = 6315, .Height = 225}},
            {4, {.Left = 1680, .Top = 1485, .Width = 2235, .Height = 225}},
            {5, {.Left = 900, .Top = 1845, .Width = 6375, .Height = 225}},
            {6, {.Left = 4980, .Top = 1485, .Width = 2295, .Height = 225}}}};
    TextBox txtYear{
        &framInfo, {.Name = "txtYear", .Left = 840, .Top = 360, .Width = 615, .Height = 285, .Visible = false}};
    TextBox txtPlace{
        &framInfo, {.Name = "txtPlace", .Left = 2400, .Top = 360, .Width = 4875, .Height = 285, .Visible = false}};
    TextBox txtEvent{
        &framInfo, {.Name = "txtEvent", .Left = 840, .Top = 720, .Width = 6435, .Height = 285, .Visible = false}};
    TextBox txtPeople{
        &framInfo, {.Name = "txtPeople", .Left = 960, .Top = 1080, .Width = 6315, .Height = 285, .Visible = false}};
    TextBox txtPhotographer{&framInfo,
        {.Name = "txtPhotographer", .Left = 1680, .Top = 1440, .Width = 2235, .Height = 285, .Visible = false}};
    TextBox txtkeywords{
        &framInfo, {.Name = "txtkeywords", .Left = 900, .Top = 1800, .Width = 6375, .Height = 285, .Visible = false}};
    TextBox txtTitle{
        this, {.Name = "txtTitle", .Left = 3360, .Top = 7680, .Width = 7455, .Height = 285, .Visible = false}};

    // The status bar and its panels, whose borders take 30 twips on each side.
    PictureBox Picture3{this, {"Picture3", 0, 8265, 12000, 315}};
    ControlArray<PictureBox> Picture4{&Picture3, "Picture4",
        {{3, {.Left = -30, .Top = -30, .Width = 6045, .Height = 315}},
            {2, {.Left = 6060, .Top = -30, .Width = 1155, .Height = 315}},
            {1, {.Left = 7260, .Top = -30, .Width = 1335, .Height = 315}},
            {4, {.Left = 8640, .Top = -30, .Width = 1515, .Height = 315}},
            {0, {.Left = 10200, .Top = -30, .Width = 1755, .Height = 315}}}};
    Label lbStatusInfo{&Picture4(3), {"lbStatusInfo", 60, 30, 780, 225}};
    Label lbZoom{&Picture4(2), {"lbZoom", 30, 30, 1050, 225}};
    Label lbStatusSelected{&Picture4(1), {"lbStatusSelected", 30, 30, 1230, 225}};
    Label lbStatusPage{&Picture4(4), {"lbStatusPage", 30, 30, 1410, 225}};
    Label lbStatusCount{&Picture4(0), {"lbStatusCount", 30, 30, 1650, 225}};
    ControlArray<Button> cmdVideo{&Picture4(3), "cmdVideo",
        {{0, {.Left = 15, .Top = 15, .Width = 870, .Height = 255, .Caption = "Play &Video", .Enabled = false}},
            {1, {.Left = 900, .Top = 15, .Width = 285, .Height = 255, .Enabled = false}},
            {2, {.Left = 1200, .Top = 15, .Width = 285, .Height = 255, .Enabled = false}}}};
    HScroll hscVideo{
        &Picture4(3), {.Name = "hscVideo", .Left = 1500, .Top = 15, .Width = 1575, .Height = 255, .Enabled = false}};
    Label lbVideo{&Picture4(3), {"lbVideo", 3150, 30, 1350, 225, "Length"}};
    ControlArray<Button> cmdPlayAudioClip{&Picture4(3), "cmdPlayAudioClip",
        {{0, {.Left = 4620, .Top = 15, .Width = 1035, .Height = 255, .Caption = "Play &Audio", .Enabled = false}},
            {1, {.Left = 5670, .Top = 15, .Width = 315, .Height = 255, .Enabled = false}}}};

    Timer tmrInfoBox{this, {.Name = "tmrInfoBox", .Interval = 4000}};
    Timer tmrVideo{this, {.Name = "tmrVideo", .Interval = 250}};
    Timer tmrSlideShow{this, {.Name = "tmrSlideShow"}};

    // ---- the menus ----

    Menu mnuFile{this, {.Name = "mnuFile", .Caption = "&File"}};
    Menu mnuFileCreate{&mnuFile, {.Name = "mnuFileCreate", .Caption = "&Create Group"}};
    Menu mnuFileRemove{&mnuFile, {.Name = "mnuFileRemove", .Caption = "&Remove Group"}};
    Menu mnuFileDash1{&mnuFile, {.Name = "mnuFileDash1", .Caption = "-"}};
    Menu mnuFileRenameGroup{&mnuFile, {.Name = "mnuFileRenameGroup", .Caption = "Re&name Group"}};
    Menu mnuFileDash2{&mnuFile, {.Name = "mnuFileDash2", .Caption = "-"}};
    Menu mnuFileMidi{&mnuFile, {.Name = "mnuFileMidi", .Caption = "&Add MIDI Backgroup Music to Group ..."}};
    Menu mnuFileDash3{&mnuFile, {.Name = "mnuFileDash3", .Caption = "-"}};
    Menu mnuFileImport{&mnuFile, {.Name = "mnuFileImport", .Caption = "&Import / Auto-Scan ..."}};
    Menu mnuFileExport{&mnuFile, {.Name = "mnuFileExport", .Caption = "&Export ..."}};
    Menu mnuFileDash4{&mnuFile, {.Name = "mnuFileDash4", .Caption = "-"}};
    Menu mnuFileExit{&mnuFile, {.Name = "mnuFileExit", .Caption = "E&xit"}};

    Menu mnuEdit{this, {.Name = "mnuEdit", .Caption = "&Edit"}};
    Menu mnuEditInfo{&mnuEdit, {.Name = "mnuEditInfo", .Caption = "Photo &Information"}};
    Menu mnuEditDash1{&mnuEdit, {.Name = "mnuEditDash1", .Caption = "-"}};
    Menu mnuEditAdd{&mnuEdit, {.Name = "mnuEditAdd", .Caption = "&Copy to Group ..."}};
    Menu mnuEditMove{&mnuEdit, {.Name = "mnuEditMove", .Caption = "&Move to Group ..."}};
    Menu mnuEditDash2{&mnuEdit, {.Name = "mnuEditDash2", .Caption = "-"}};
    Menu mnuEditRemoveFromGroup{
        &mnuEdit, {.Name = "mnuEditRemoveFromGroup", .Caption = "Remove Selected Photo(s) from &Group"}};
    Menu mnuEditRemoveFromAlbum{
        &mnuEdit, {.Name = "mnuEditRemoveFromAlbum", .Caption = "Remove Selected Photo(s) from &Program"}};
    Menu mnuEditDash3{&mnuEdit, {.Name = "mnuEditDash3", .Caption = "-"}};
    Menu mnuEditSearchAppend{&mnuEdit, {.Name = "mnuEditSearchAppend", .Caption = "&Find/Search && Append ..."}};
    Menu mnuEditDash4{&mnuEdit, {.Name = "mnuEditDash4", .Caption = "-"}};
    Menu mnuEditSort{&mnuEdit, {.Name = "mnuEditSort", .Caption = "&Sort", .Enabled = false}};
    Menu mnuEditDash5{&mnuEdit, {.Name = "mnuEditDash5", .Caption = "-"}};
    Menu mnuEditWaveLink{&mnuEdit, {.Name = "mnuEditWaveLink", .Caption = "&Add Audio Clip to Photo(s)"}};

    Menu mnuView{this, {.Name = "mnuView", .Caption = "&View"}};
    Menu mnuViewNext{&mnuView, {.Name = "mnuViewNext", .Caption = "&Next Photo"}};
    Menu mnuViewPrevious{&mnuView, {.Name = "mnuViewPrevious", .Caption = "&Previous Photo"}};
    Menu mnuViewDash1{&mnuView, {.Name = "mnuViewDash1", .Caption = "-"}};
    Menu mnuViewReduce{&mnuView, {.Name = "mnuViewReduce", .Caption = "&Reduce - Zoom Out"}};
    Menu mnuViewEnlarge{&mnuView, {.Name = "mnuViewEnlarge", .Caption = "&Enlarge - ZoomIn"}};
    Menu mnuViewDash2{&mnuView, {.Name = "mnuViewDash2", .Caption = "-"}};
    Menu mnuViewSlideshow{&mnuView, {.Name = "mnuViewSlideshow", .Caption = "&Slide Show"}};
    Menu mnuViewFullscreen{&mnuView, {.Name = "mnuViewFullscreen", .Caption = "&Full Screen"}};

    Menu mnuSet{this, {.Name = "mnuSet", .Caption = "&Settings"}};
    Menu mnuSetInfo{&mnuSet, {.Name = "mnuSetInfo", .Caption = "&Information Box"}};
    Menu mnuSetInfoUp{&mnuSetInfo, {.Name = "mnuSetInfoUp", .Caption = "Always &Up"}};
    Menu mnuSetInfoNormal{&mnuSetInfo, {.Name = "mnuSetInfoNormal", .Caption = "&Pop Up/Down", .Checked = true}};
    Menu mnuSetInfoDown{&mnuSetInfo, {.Name = "mnuSetInfoDown", .Caption = "Always &Down"}};

    Menu mnuHelp{this, {.Name = "mnuHelp", .Caption = "&Help"}};
    Menu mnuHelpContents{&mnuHelp, {.Name = "mnuHelpContents", .Caption = "&Contents"}};
    Menu mnuHelpDash1{&mnuHelp, {.Name = "mnuHelpDash1", .Caption = "-"}};
    Menu mnuHelpAbout{&mnuHelp, {.Name = "mnuHelpAbout", .Caption = "&About Trovarium"}};

    Menu mnuGroup{this, {.Name = "mnuGroup", .Caption = "GroupMenu", .Visible = false}};
    Menu mnuGroupSort{&mnuGroup, {.Name = "mnuGroupSort", .Caption = "Sort Group by Field", .Enabled = false}};
    Menu mnuGroupSortYear{&mnuGroupSort, {.Name = "mnuGroupSortYear", .Caption = "Year"}};
    Menu mnuGroupSortPlace{&mnuGroupSort, {.Name = "mnuGroupSortPlace", .Caption = "Place"}};
    Menu mnuGroupSortEvent{&mnuGroupSort, {.Name = "mnuGroupSortEvent", .Caption = "Event"}};
    Menu mnuGroupSortPeople{&mnuGroupSort, {.Name = "mnuGroupSortPeople", .Caption = "People"}};
    Menu mnuGroupSortPhotographer{&mnuGroupSort, {.Name = "mnuGroupSortPhotographer", .Caption = "Photographer"}};
    Menu mnuGroupSortFilename{&mnuGroupSort, {.Name = "mnuGroupSortFilename", .Caption = "Filename"}};
    Menu mnuGroupNewGroup{&mnuGroup, {.Name = "mnuGroupNewGroup", .Caption = "&Create Group"}};
    Menu mnuGroupRemove{&mnuGroup, {.Name = "mnuGroupRemove", .Caption = "&Remove Group"}};
    Menu mnuGroupDash1{&mnuGroup, {.Name = "mnuGroupDash1", .Caption = "-"}};
    Menu mnuGroupRenameGroup{&mnuGroup, {.Name = "mnuGroupRenameGroup", .Caption = "Re&name Group"}};
    Menu mnuGroup1A{&mnuGroup, {.Name = "mnuGroup1A", .Caption = "-"}};
    Menu mnuGroupMidi{&mnuGroup, {.Name = "mnuGroupMidi", .Caption = "&Add MIDI Backgroup Music to Group ..."}};
    Menu mnuGroup1B{&mnuGroup, {.Name = "mnuGroup1B", .Caption = "-"}};
    Menu mnuGroupImport{&mnuGroup, {.Name = "mnuGroupImport", .Caption = "&Import / Auto-Scan Photos ..."}};
    Menu mnuGroupExport{&mnuGroup, {.Name = "mnuGroupExport", .Caption = "&Export Photos ..."}};
    Menu mnuGroupDash2{&mnuGroup, {.Name = "mnuGroupDash2", .Caption = "-"}};
    Menu mnuGroupSearchAppend{&mnuGroup, {.Name = "mnuGroupSearchAppend", .Caption = "&Find/Search && Append ..."}};

    Menu mnuThumb{this, {.Name = "mnuThumb", .Caption = "ThumbnailMenu", .Visible = false}};
    Menu mnuThumbAdd{&mnuThumb, {.Name = "mnuThumbAdd", .Caption = "Copy to Group ..."}};
    Menu mnuThumbMove{&mnuThumb, {.Name = "mnuThumbMove", .Caption = "Move to Group ..."}};
    Menu mnuThumbDash1{&mnuThumb, {.Name = "mnuThumbDash1", .Caption = "-"}};
    Menu mnuThumbMoveNewGroup{&mnuThumb, {.Name = "mnuThumbMoveNewGroup", .Caption = "Create &New Group"}};
    Menu mnuThumbDash2{&mnuThumb, {.Name = "mnuThumbDash2", .Caption = "-"}};
    Menu mnuThumbRemove{&mnuThumb, {.Name = "mnuThumbRemove", .Caption = "Remove from Group"}};

private:
    void paintWindow();
    void paintFrame();
    void nameControls();
    void makeParts();

    Album& m_album;
    VideoControls& m_video;
    Dialogs m_dialogs;
    std::unique_ptr<GroupListPane> m_groupList;
    std::unique_ptr<ThumbnailPages> m_pages;
    std::unique_ptr<Selection> m_selection;
    std::unique_ptr<ThumbnailDrag> m_thumbnailDrag;
    std::unique_ptr<GroupCommands> m_groupCommands;
    std::unique_ptr<MainMenus> m_menus;
    std::unique_ptr<FileTransfer> m_fileTransfer;
    std::unique_ptr<PhotoDisplay> m_photoDisplay;
    std::unique_ptr<ZoomAndPan> m_zoomAndPan;
    std::unique_ptr<InfoBox> m_infoBox;
    std::unique_ptr<SlideShow> m_slideShow;
    std::unique_ptr<AudioControls> m_audio;
    std::unique_ptr<Keyboard> m_keyboard;
};

} // namespace trovarium
