#pragma once

#include <string_view>

namespace trovarium {

struct Album;
class frmMain;

// Wave clips and background music.
class AudioControls {
public:
    AudioControls(frmMain& form, Album& album);

    void PlayWav(std::string_view path);
    void StopWav();
    void StopMidi();
    void cmdPlayAudioClip_Click(int Index); // 0 plays the photograph's clip, 1 stops it

private:
    frmMain& m_form;
    Album& m_album;
};

} // namespace trovarium
