// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/media/MediaService.h"
#include "platform/media/MpvFrames.h"
#include "platform/media/MpvLibrary.h"

#include <memory>
#include <optional>
#include <string>
#include <utility>

namespace trovarium {

class FileService;

// A film that libmpv plays.
class MpvGraph : public FilgraphManager {
public:
    MpvGraph(const MpvLibrary& library, const FileService& files, Wait wait); // "Device unavailable"
    ~MpvGraph() override;

    void RenderFile(std::string_view path) override;
    void Run() override;
    void Pause() override;
    void Stop() override { Pause(); } // the position stays: whoever stops sets it too
    double get_Duration() const override;
    double get_CurrentPosition() const override;
    void put_CurrentPosition(double seconds) override;
    double get_Rate() const override;
    void put_Rate(double rate) override;
    int WaitForCompletion(int milliseconds) override;
    void put_WindowStyle(int /*style*/) override { }
    void put_Left(int pixels) override { place(&FilmPlace::left, pixels); }
    void put_Top(int pixels) override { place(&FilmPlace::top, pixels); }
    void put_Width(int pixels) override { place(&FilmPlace::width, pixels); }
    void put_Height(int pixels) override { place(&FilmPlace::height, pixels); }
    void put_Owner(std::shared_ptr<FilmSurface> owner) override { m_frames->setOwner(std::move(owner)); }

private:
    void place(int FilmPlace::*side, int pixels);
    void setOption(const char* name, const char* value);
    void requireFilm() const;
    void command(std::initializer_list<const char*> words);
    mpv_event_id nextEvent(MpvFrames::Clock::time_point end);
    void dropEvents();
    bool waitForFrame(long framesBefore, MpvFrames::Clock::time_point end);
    void updateSize();
    bool atEnd() const;
    void set(const char* property, mpv_format format, void* value);
    template <class Value>
    std::optional<Value> get(const char* property, mpv_format format) const;

    const MpvLibrary& m_library;
    const FileService& m_files;
    Wait m_wait;
    std::unique_ptr<mpv_handle, decltype(&mpv_terminate_destroy)> m_core;
    std::optional<MpvFrames> m_frames;
    bool m_open = false;
    bool m_idle = true;       // no file is open or being opened
    bool m_sentToEnd = false; // by the latest seek
    double m_duration = 0;    // seconds; 0 when the film doesn't tell
};

} // namespace trovarium
