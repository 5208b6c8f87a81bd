#include "viewer/AudioControls.h"

#include "browser/frmMain.h"
#include "platform/media/MediaService.h"
#include "platform/toolkit/Desktop.h"
#include "store/Album.h"

namespace trovarium {

AudioControls::AudioControls(frmMain& form, Album& album)
    : m_form(form)
    , m_album(album)
{
    on(form.cmdPlayAudioClip, &Button::Click, this, &AudioControls::cmdPlayAudioClip_Click);
}

void AudioControls::PlayWav(std::string_view path)
{
    m_form.desktop().media().sndPlaySound(path);
}

void AudioControls::StopWav()
{
    m_form.desktop().media().sndPlaySound("0");
}

// Nothing opens a piece yet, so no name stands behind the blank.
void AudioControls::StopMidi()
{
    m_form.desktop().media().mciSendString("close ");
}

void AudioControls::cmdPlayAudioClip_Click(int Index)
{
    if (Index == 0)
        PlayWav(m_album.paths.AudioPath + m_album.group.GroupList(m_album.view.CurrentIndex) + ".wav");
    else if (Index == 1)
        StopWav();
}

} // namespace trovarium
