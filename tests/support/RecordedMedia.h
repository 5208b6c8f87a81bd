#pragma once

#include "platform/media/SilentMedia.h"
#include "platform/toolkit/Desktop.h"
#include "support/RecordedFilm.h"

#include <string>
#include <vector>

namespace trovarium {

// Silence that notes what it was told, while it lives, and films by a script.
class RecordedMedia : public SilentMedia {
public:
    explicit RecordedMedia(Desktop& desktop)
        : m_desktop(desktop)
    {
        desktop.setMedia(this);
    }
    ~RecordedMedia() override { m_desktop.setMedia(nullptr); }
    RecordedMedia(const RecordedMedia&) = delete;
    RecordedMedia& operator=(const RecordedMedia&) = delete;

    std::unique_ptr<FilgraphManager> newFilgraphManager() override
    {
        auto opened = std::make_unique<RecordedFilm>();
        opened->script = film;
        return opened;
    }
    void sndPlaySound(std::string_view name) override { told.push_back("sound " + std::string(name)); }
    void mciSendString(std::string_view command) override { told.push_back("music " + std::string(command)); }

    std::vector<std::string> told;
    std::shared_ptr<FilmScript> film = std::make_shared<FilmScript>();

private:
    Desktop& m_desktop;
};

} // namespace trovarium
