#pragma once

#include "browser/WindowPart.h"

#include <string>
#include <string_view>

namespace trovarium {

// Wave clips and background music. Whether there is such a file isn't looked at: without one nothing sounds.
class AudioControls : public WindowPart {
public:
    AudioControls(frmMain& form, Album& album);

    void PlayWav(std::string_view Path);      // cuts off the clip that sounds
    void playClipOf(const std::string& name); // a photograph's; of any other name none
    void StopWav();
    void PlayMidi(std::string_view Path); // ends the piece that plays; plays once
    void StopMidi();
    void cmdPlayAudioClip_Click(int Index); // 0 plays the photograph's clip, 1 stops it

private:
    std::string MidiAlias; // of the piece that was opened last; empty for none
};

} // namespace trovarium
