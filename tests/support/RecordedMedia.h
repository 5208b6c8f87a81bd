// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/media/FilmSurface.h"
#include "platform/media/MediaService.h"
#include "platform/toolkit/Desktop.h"
#include "runtime/Failure.h"
#include "runtime/Numbers.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace trovarium {

// What a test says of the films that are opened, and what they were told.
struct FilmScript {
    double position = 0;
    int code = 0; // 1: over
    std::string told;
};

// A film that is red all over from its Run on.
class RecordedFilm : public FilgraphManager {
public:
    ~RecordedFilm() override { script->told += "gone "; }

    void RenderFile(std::string_view path) override
    {
        tell(std::string(path.substr(path.rfind('\\') + 1)));
        m_isFilm = true;
    }
    void Run() override
    {
        tell("Run");
        QImage red(1, 1, QImage::Format_RGB32);
        red.fill(Qt::red);
        if (m_owner)
            m_owner->put(red);
    }
    void Pause() override { tell("Pause"); }
    void Stop() override { tell("Stop"); }
    double get_Duration() const override { return 12.34; }
    double get_CurrentPosition() const override
    {
        if (!m_isFilm)
            throw Failure(FailureKind::InvalidProcedureCall);
        return script->position;
    }
    void put_CurrentPosition(double seconds) override { tell("At" + numberText(script->position = seconds)); }
    double get_Rate() const override { return 1; }
    void put_Rate(double rate) override { tell("Rate" + numberText(rate)); }
    int WaitForCompletion(int milliseconds) override { return tell("Wait" + numberText(milliseconds)), script->code; }
    void put_WindowStyle(int style) override { tell("Style" + numberText(style)); }
    void put_Left(int pixels) override { tell("Left" + numberText(m_place.left = pixels)); }
    void put_Top(int pixels) override { tell("Top" + numberText(m_place.top = pixels)); }
    void put_Width(int pixels) override { tell("Width" + numberText(m_place.width = pixels)); }
    void put_Height(int pixels) override { tell("Height" + numberText(m_place.height = pixels)); }
    void put_Owner(std::shared_ptr<FilmSurface> owner) override
    {
        tell(owner ? "Owner" : "Owner0");
        if (m_owner)
            m_owner->shut();
        m_owner = std::move(owner);
        if (m_owner) {
            m_owner->open();
            m_owner->moveTo(m_place);
        }
    }

    std::shared_ptr<FilmScript> script;

private:
    void tell(const std::string& what) { script->told += what + " "; }

    std::shared_ptr<FilmSurface> m_owner;
    FilmPlace m_place;
    bool m_isFilm = false;
};

// Silence that notes what it was told, while it lives, and films by a script.
class RecordedMedia : public MediaService {
public:
    explicit RecordedMedia(Desktop& desktop)
        : m_desktop(desktop)
    {
        desktop.setMedia(this);
    }
    ~RecordedMedia() override { m_desktop.setMedia(nullptr); }
    RecordedMedia(const RecordedMedia&) = delete;
    RecordedMedia& operator=(const RecordedMedia&) = delete;

    void expectFilm() override { }
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
