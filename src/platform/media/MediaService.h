// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <memory>
#include <string_view>

namespace trovarium {

class FilmSurface;

// One film. Times are seconds of the film. An operation that can't be done fails; none but WaitForCompletion
// waits for longer than opening and seeking take.
class FilgraphManager {
public:
    virtual ~FilgraphManager() = default; // the owner's surface is cleared

    // IMediaControl. "File not found", "Invalid picture" for a file that is no film; all else needs a film.
    virtual void RenderFile(std::string_view path) = 0;
    virtual void Run() = 0;
    virtual void Pause() = 0;
    virtual void Stop() = 0;

    // IMediaPosition. At the end the position is the duration.
    virtual double get_Duration() const = 0;
    virtual double get_CurrentPosition() const = 0;
    virtual void put_CurrentPosition(double seconds) = 0;
    virtual double get_Rate() const = 0;
    virtual void put_Rate(double rate) = 0;

    // IMediaEvent. Waits until the film is over; 0 when it still isn't. No events run, but frames are painted as
    // they come.
    virtual int WaitForCompletion(int milliseconds) = 0;

    // IVideoWindow. The place is kept without an owner and counts in the next one's pixels. Frames show in the
    // owner and nowhere else; one that the window leaves (null for none) is cleared.
    virtual void put_WindowStyle(int style) = 0; // no effect: a surface has no frame and is clipped
    virtual void put_Left(int pixels) = 0;
    virtual void put_Top(int pixels) = 0;
    virtual void put_Width(int pixels) = 0;
    virtual void put_Height(int pixels) = 0;
    virtual void put_Owner(std::shared_ptr<FilmSurface> owner) = 0;
};

// Waits for the condition as Desktop::waitUntil does.
using Wait = std::function<bool(const std::function<bool()>& condition, int milliseconds)>;

// Films and sound. Sound is never in the way: its calls return at once and never fail, whatever is missing.
class MediaService {
public:
    virtual ~MediaService() = default;

    // A film may be opened soon: loads the library on another thread.
    virtual void expectFilm() = 0;
    // For a film that is still to be opened. "Device unavailable" where none can be.
    virtual std::unique_ptr<FilgraphManager> newFilgraphManager() = 0;

    // Cuts off the wave clip that sounds, and plays this one; a name without a file, such as "0", only cuts off.
    virtual void sndPlaySound(std::string_view name) = 0;

    // The music sequencer: `open "PATH" type sequencer alias NAME`, `play NAME`, `close NAME`. A command that
    // can't be carried out, `close` without a name included, has no effect.
    virtual void mciSendString(std::string_view command) = 0;
};

} // namespace trovarium
