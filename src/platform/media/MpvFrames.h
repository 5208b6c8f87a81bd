// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/media/FilmSurface.h"
#include "platform/media/MpvLibrary.h"

#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

namespace trovarium {

// Renders the frames of one film as they fall due, on a thread of its own, and puts them into the surface that owns
// the film.
class MpvFrames {
public:
    using Clock = std::chrono::steady_clock;

    MpvFrames(const MpvLibrary& library, mpv_handle* core); // "Device unavailable"
    ~MpvFrames();                                           // quick when the film has been stopped before
    MpvFrames(const MpvFrames&) = delete;
    MpvFrames& operator=(const MpvFrames&) = delete;

    // Pixels of the film's natural size as it is stored, and how it is to be turned, clockwise; frames wait for it.
    void setNaturalSize(int width, int height, int quarterTurns);
    bool hasSize() const;

    void setOwner(std::shared_ptr<FilmSurface> owner); // shows the latest frame; the owner before is cleared
    void setPlace(const FilmPlace& place);             // in the owner, and in those to come
    const FilmPlace& place() const { return m_place; }

    // How many frames have come; and whether one more than `count` did in time.
    long count() const;
    bool waitForMoreThan(long count, Clock::time_point end) const;

private:
    struct Size {
        int width = 0; // before the turn; 0: not known yet
        int height = 0;
        int quarterTurns = 0;
    };

    void run();
    QImage render(const Size& size);

    const MpvLibrary& m_library;
    std::unique_ptr<mpv_render_context, decltype(&mpv_render_context_free)> m_context;
    FilmPlace m_place;                   // the program's thread only
    std::vector<std::uint32_t> m_canvas; // the render thread only

    mutable std::mutex m_mutex; // for all below; held while a surface is told, never the other way round
    mutable std::condition_variable m_changed;
    std::shared_ptr<FilmSurface> m_owner;
    Size m_size;
    bool m_mayHaveFrame = false; // the film may have a frame
    bool m_missed = false;       // one came before its size was known
    bool m_redraw = false;       // the latest is wanted once more
    bool m_ending = false;
    long m_count = 0; // of frames that were rendered
    std::thread m_thread;
};

} // namespace trovarium
