// SPDX-License-Identifier: GPL-3.0-or-later

#include "viewer/AudioControls.h"

#include "browser/frmMain.h"
#include "platform/media/MediaService.h"
#include "platform/toolkit/Desktop.h"
#include "runtime/Dates.h"
#include "store/Album.h"
#include "store/Log.h"
#include "store/PhotographFiles.h"

namespace trovarium {

AudioControls::AudioControls(frmMain& form, Album& album)
    : WindowPart(form, album)
{
    on(form.cmdPlayAudioClip, &Button::Click, this, &AudioControls::cmdPlayAudioClip_Click);
}

void AudioControls::PlayWav(std::string_view Path)
try {
    m_form.desktop().media().sndPlaySound(Path);
} catch (const Failure& failure) {
    logFailure(m_album, "PlayWav", failure);
}

void AudioControls::playClipOf(const std::string& name)
{
    attempt([&] { PlayWav(clipPath(m_album.paths, name)); });
}

// No clip has this name, so this only stops the one that is playing.
void AudioControls::StopWav()
try {
    m_form.desktop().media().sndPlaySound("0");
} catch (const Failure& failure) {
    logFailure(m_album, "StopWav", failure);
}

void AudioControls::PlayMidi(std::string_view Path)
try {
    if (!MidiAlias.empty())
        StopMidi();
    MidiAlias = timeOfDayStamp(now()) + "Midi";
    MediaService& media = m_form.desktop().media();
    media.mciSendString("open \"" + std::string(Path) + "\" type sequencer alias " + MidiAlias);
    media.mciSendString("play " + MidiAlias);
} catch (const Failure& failure) {
    logFailure(m_album, "PlayMidi", failure);
}

// The command is sent even if nothing is open, and has no effect then.
void AudioControls::StopMidi()
try {
    m_form.desktop().media().mciSendString("close " + MidiAlias);
    MidiAlias.clear();
} catch (const Failure& failure) {
    logFailure(m_album, "StopMidi", failure);
}

void AudioControls::cmdPlayAudioClip_Click(int Index)
{
    if (Index == 0)
        playClipOf(m_album.group.GroupList(m_album.view.CurrentIndex));
    else if (Index == 1)
        StopWav();
}

} // namespace trovarium
