// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "browser/WindowPart.h"

#include <string>
#include <string_view>

namespace trovarium {

// Wave clips and background music. A missing file is silence.
class AudioControls : public WindowPart {
public:
    AudioControls(frmMain& form, Album& album);

    void PlayWav(std::string_view Path);      // stops the clip that is playing
    void playClipOf(const std::string& name); // the clip of a photograph; nothing for an invalid name
    void StopWav();
    void PlayMidi(std::string_view Path); // stops the music that is playing; plays once
    void StopMidi();
    void cmdPlayAudioClip_Click(int Index); // 0 plays the photograph's clip, 1 stops it

private:
    std::string MidiAlias; // of the music that was opened last; empty for none
};

} // namespace trovarium
