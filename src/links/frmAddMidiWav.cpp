// SPDX-License-Identifier: GPL-3.0-or-later

#include "links/frmAddMidiWav.h"

#include "browser/frmMain.h"
#include "links/LinkRun.h"
#include "platform/files/FileService.h"
#include "platform/pictures/PictureService.h"
#include "platform/toolkit/Desktop.h"
#include "platform/toolkit/Prompts.h"
#include "platform/toolkit/Units.h"
#include "store/Album.h"
#include "store/Log.h"
#include "store/PhotographFiles.h"
#include "viewer/AudioControls.h"

#include <string_view>
#include <utility>

namespace trovarium {

namespace {

constexpr std::string_view Product = "Trovarium";

// The marker before an owner's name. Both have the same length, so that one can replace the other.
constexpr std::string_view MidiLinked = "[midi]";
constexpr std::string_view MidiEmpty = "[    ]";
constexpr std::string_view WavLinked = "[wav]";
constexpr std::string_view WavEmpty = "[   ]";
constexpr std::string_view Divider = " : ";

enum { PlaySource = 0, StopSource = 1, PlayLinked = 2, StopLinked = 3 };

} // namespace

frmAddMidiWav::frmAddMidiWav(Desktop& desktop, Album& album, frmMain& main, std::function<Form&()> importForm)
    : Form(desktop, {.Name = "frmAddMidiWav", .Width = 11160, .Height = 7500})
    , m_album(album)
    , m_main(main)
    , m_run(std::make_unique<LinkRun>(*this, album, main, std::move(importForm)))
{
    File1.MultiSelect = false;
    List2.MultiSelect = true;
    cmdImport.Default = true;
    paint();
    nameControls();

    on(Load, this, &frmAddMidiWav::Form_Load);
    on(KeyDown, this, &frmAddMidiWav::Form_KeyDown);
    on(Close, this, &frmAddMidiWav::lbExit_Click);
    on(Dir1.Change, this, &frmAddMidiWav::Dir1_Change);
    on(Drive1.Change, this, &frmAddMidiWav::Drive1_Change);
    on(cmdAddFile.Click, this, &frmAddMidiWav::cmdAddFile_Click);
    on(File1.DblClick, this, &frmAddMidiWav::File1_DblClick);
    on(List1.DblClick, this, &frmAddMidiWav::List1_DblClick);
    on(cmdClear.Click, this, &frmAddMidiWav::cmdClear_Click);
    on(cmdPlayStop, &Button::Click, this, &frmAddMidiWav::cmdPlayStop_Click);
    on(lbExit.Click, this, &frmAddMidiWav::lbExit_Click);
}

frmAddMidiWav::~frmAddMidiWav() = default;

ControlArray<Button> frmAddMidiWav::playButtons()
{
    ControlArray<Button> buttons("cmdPlayStop");
    for (const int index : {PlaySource, StopSource, PlayLinked, StopLinked}) {
        const bool plays = index == PlaySource || index == PlayLinked;
        const bool isSource = index == PlaySource || index == StopSource;
        buttons.add(isSource ? &framSource : &framDestination, index,
            {.Left = plays ? 180.0F : 1500.0F,
                .Top = isSource ? 5730.0F : 5130.0F,
                .Width = 1200,
                .Height = 390,
                .Caption = plays ? "&Play" : "&Stop"});
        buttons(index).Picture = desktop().pictures().artwork(plays ? "play" : "stop");
    }
    return buttons;
}

void frmAddMidiWav::paint()
{
    Picture = desktop().pictures().artwork("background");
    Icon = desktop().pictures().artwork("icon");
    lbListContents.Bold = true;
    lbExit.Raised = true;
    pctProgress.BackColor = FieldBlue;
    pctProgress.Border = true;
    shpProgress.BorderColor = BarBlue;
    shpProgress.FillColor = BarBlue;
}

// A tool tip, and names for screen readers where a control has no caption or shares it with another.
void frmAddMidiWav::nameControls()
{
    Drive1.AccessibleName = "Drives";
    Dir1.AccessibleName = "Folders";
    File1.AccessibleName = "Files";
    cmdAddFile.AccessibleName = "Add";
    cmdPlayStop(PlaySource).AccessibleName = "Play source";
    cmdPlayStop(StopSource).AccessibleName = "Stop source";
    cmdPlayStop(PlayLinked).AccessibleName = "Play linked";
    cmdPlayStop(StopLinked).AccessibleName = "Stop linked";
    pctProgress.AccessibleName = "Progress";
    pctProgress.AccessibleValue = 0;
    cmdAddFile.ToolTipText = "Link the chosen file to the chosen entry.";
}

void frmAddMidiWav::LinkMidi2Group()
{
    load();
    Set4Midi();
    File1.Pattern = "*.mid";
    File1.Refresh();
    showModal();
}

void frmAddMidiWav::LinkWav2Photos()
{
    load();
    Set4Wav();
    File1.Pattern = "*.wav";
    File1.Refresh();
    showModal();
}

// The markers look for songs in the lists' folder, but a run copies them to the music folder: a song that was just
// linked shows as missing the next time.
void frmAddMidiWav::Set4Midi()
{
    setUp(true);
    const ListBox& groups = m_main.lstSlideGroups;
    for (int i = 0; i < groups.ListCount(); ++i)
        addRow(groups.List(i), m_album.paths.SlideGroupPath + groups.List(i) + ".mid");
}

void frmAddMidiWav::Set4Wav()
{
    setUp(false);
    const GroupOnShow& group = m_album.group;
    for (int i = 1; i <= group.GroupList.upperBound(); ++i) {
        if (group.isWhole && group.GroupSelect(i) == 1 && isPhotographName(group.GroupList(i)))
            addRow(group.GroupList(i), clipPath(m_album.paths, group.GroupList(i)));
    }
}

void frmAddMidiWav::setUp(bool isMidi)
{
    LinkIsMidi = isMidi;
    m_open.clear();
    List1.Clear();
    List2.Clear();
    List1.Mark = std::string(isMidi ? MidiLinked : WavLinked);
    Caption = isMidi ? "Import-Link Midi Song to Group" : "Import-Link Wav Clip to Photo";
    lbListContents.Caption = isMidi ? "Current Album Groups" : "Selected Photos";
    framDestination.AccessibleName = lbListContents.Caption();
    List1.AccessibleName = lbListContents.Caption();
}

void frmAddMidiWav::addRow(const std::string& owner, const std::string& file)
{
    const bool isLinked = m_album.files.exists(file);
    const std::string_view marker =
        LinkIsMidi ? (isLinked ? MidiLinked : MidiEmpty) : (isLinked ? WavLinked : WavEmpty);
    List1.AddItem(std::string(marker).append(Divider).append(owner));
    List2.AddItem(file);
}

void frmAddMidiWav::Form_Load()
try {
    Dir1.SetFocus();
    const std::string path = m_album.Settings().GetOWSetting(Product, "Sound", "LastPath", m_album.paths.ProgramFolder);
    Drive1.Drive = path;
    Dir1.Path = path;
} catch (const Failure& failure) {
    logFailure(m_album, "Form_Load", failure);
}

// Escape only closes the window if no change is lost.
void frmAddMidiWav::Form_KeyDown(int KeyCode, int /*Shift*/)
{
    if (KeyCode == EscapeKey && m_open.empty())
        lbExit_Click();
}

void frmAddMidiWav::settle(int row)
{
    m_open.erase(row);
}

void frmAddMidiWav::Dir1_Change()
{
    File1.Path = Dir1.Path();
    if (isShown()) // not the initial folder
        m_album.Settings().SetOWSetting(Product, "Sound", "LastPath", Dir1.Path());
}

void frmAddMidiWav::Drive1_Change()
try {
    Dir1.Path = Drive1.Drive();
} catch (const Failure& failure) {
    desktop().prompts().messageBox("Error: " + std::string(failure.description()), Message::Error, "");
}

void frmAddMidiWav::cmdAddFile_Click()
{
    AddSelectedFiles();
}

void frmAddMidiWav::AddSelectedFiles()
try {
    const std::string source = selectedSource();
    if (source.empty()) {
        desktop().prompts().messageBox("Must select a source file.", Message::Notice, "");
        return;
    }
    const int row = selectedRow();
    if (row < 0) {
        desktop().prompts().messageBox("Must select the destination.", Message::Notice, "");
        return;
    }
    change(row, source, LinkIsMidi ? MidiLinked : WavLinked);
} catch (const Failure& failure) {
    logFailure(m_album, "AddSelectedFiles", failure);
}

std::string frmAddMidiWav::selectedSource() const
{
    for (int i = 0; i < File1.ListCount(); ++i) {
        if (File1.Selected(i))
            return File1.Path() + "\\" + File1.List(i);
    }
    return {};
}

int frmAddMidiWav::selectedRow() const
{
    for (int i = 0; i < List1.ListCount(); ++i) {
        if (List1.Selected(i))
            return i;
    }
    return -1;
}

void frmAddMidiWav::change(int row, const std::string& source, std::string_view marker)
{
    List2.setList(row, source);
    List2.setSelected(row, true);
    m_open.insert(row);
    List1.setList(row, std::string(marker) + List1.List(row).substr(marker.size()));
}

void frmAddMidiWav::cmdClear_Click()
{
    const int row = selectedRow();
    if (row >= 0)
        change(row, "", LinkIsMidi ? MidiEmpty : WavEmpty);
}

void frmAddMidiWav::File1_DblClick()
{
    cmdPlayStop_Click(PlaySource);
}

void frmAddMidiWav::List1_DblClick()
{
    cmdPlayStop_Click(PlayLinked);
}

// The sound keeps playing after the form is closed.
void frmAddMidiWav::cmdPlayStop_Click(int Index)
{
    AudioControls& audio = m_main.audio();
    const bool plays = Index == PlaySource || Index == PlayLinked;
    const int row = selectedRow();
    const std::string file = Index == PlaySource ? selectedSource() : row >= 0 ? List2.List(row) : std::string();
    if (plays && LinkIsMidi)
        audio.PlayMidi(file);
    else if (plays)
        audio.PlayWav(file);
    else if (LinkIsMidi)
        audio.StopMidi();
    else
        audio.StopWav();
    MousePointer = DefaultPointer;
}

// Not during a run, which has its own cancel button.
void frmAddMidiWav::lbExit_Click()
try {
    if (!DialogBusy)
        unload();
} catch (const Failure& failure) {
    logFailure(m_album, "lbExit_Click", failure);
}

} // namespace trovarium
