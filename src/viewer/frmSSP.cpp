// SPDX-License-Identifier: GPL-3.0-or-later

#include "viewer/frmSSP.h"

#include "browser/frmMain.h"
#include "platform/pictures/PictureService.h"
#include "platform/toolkit/Desktop.h"
#include "platform/toolkit/Prompts.h"
#include "runtime/Numbers.h"
#include "store/Album.h"
#include "viewer/AudioControls.h"
#include "viewer/InfoBox.h"
#include "viewer/PhotoDisplay.h"
#include "viewer/SlideShow.h"

namespace trovarium {

namespace {

enum { SwitchToFullScreen = 0, SelectedOnly = 1, StartWithCurrent = 2, PlayMusic = 3, PlayClips = 4 };

constexpr std::string_view OptionCaptions[] = {"Switch to Fullscreen after starting", "Show only selected photograhs",
    "Start with current photograph", "Play album background music", "Play audio clips for each photo"};

// A show of the selected photographs alone is not offered: its box stays disabled.
Plan optionPlan(int option)
{
    return {.Left = 180,
        .Top = 960 + 300 * static_cast<float>(option),
        .Width = 4440,
        .Height = 300,
        .Caption = OptionCaptions[option],
        .Enabled = option != SelectedOnly};
}

constexpr double LongestDelay = 61; // seconds; must be less
constexpr double Millisecond = 1000;

} // namespace

frmSSP::frmSSP(Desktop& desktop, Album& album, frmMain& main)
    : Form(desktop, {.Name = "frmSSP", .Caption = "Start Slideshow", .Width = 5280, .Height = 3690})
    , chkSlideshow(&framParameters, "chkSlideshow", SwitchToFullScreen, PlayClips, optionPlan)
    , m_album(album)
    , m_main(main)
{
    Picture = desktop.pictures().artwork("background");
    Icon = desktop.pictures().artwork("icon");
    for (const int box : {SwitchToFullScreen, StartWithCurrent, PlayMusic, PlayClips})
        chkSlideshow(box).preset();
    txtSlideShowInterval.AccessibleName = "Delay between slides";
    cmdOkay.Default = true;
    cmdCancel.Cancel = true;
    on(cmdOkay.Click, this, &frmSSP::cmdOkay_Click);
    on(cmdCancel.Click, this, &frmSSP::cmdCancel_Click);
}

// The first step only changes the main window: until the first tick the full screen is one photograph behind.
void frmSSP::cmdOkay_Click()
{
    const double seconds = leadingNumber(txtSlideShowInterval.Text());
    if (!(seconds > 0 && seconds < LongestDelay)) {
        desktop().prompts().messageBox("Invalid entry. Use a value between 1 and 60 seconds.", Message::Notice, "");
        return;
    }
    m_main.infoBox().endEdit(); // the label over the button opens this form even during an edit
    hide();
    desktop().DoEvents();
    m_album.view.SlideShowRunning = true;
    m_main.tmrSlideShow.Interval = toInt32(seconds * Millisecond);
    if (chkSlideshow(SwitchToFullScreen).Value() == 1)
        m_main.cmdFullScreen_Click();
    if (!m_main.isLoaded()) // closed in the events above
        return;
    m_main.slideShow().ShowSelectedOnly = chkSlideshow(SelectedOnly).Value() == 1;
    if (chkSlideshow(StartWithCurrent).Value() != 1)
        m_main.photoDisplay().SetImageIndex(0);
    if (chkSlideshow(PlayMusic).Value() == 1)
        m_main.audio().PlayMidi(m_album.paths.MidiPath + m_album.group.CurrentGroupName + ".mid");
    m_album.view.SlideAudioClips = chkSlideshow(PlayClips).Value() == 1;
    m_main.photoDisplay().NextPhoto();
    m_main.slideShow().goOn(true);
    unload();
}

void frmSSP::cmdCancel_Click()
{
    unload();
}

} // namespace trovarium
