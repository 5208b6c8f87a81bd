// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>

#include <functional>
#include <mutex>

namespace trovarium {

// In pixels of the box that shows the film, which cuts off what lies beyond it.
struct FilmPlace {
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;

    bool operator==(const FilmPlace&) const = default;
};

// Passes a film's frames from the render thread to the box that shows them. Both share it, and either may be destroyed
// first: without a box the frames show nowhere. Every function may be called on any thread.
class FilmSurface {
public:
    struct Shown {
        QImage frame;    // null for none
        FilmPlace place; // which the frame is stretched to
    };

    void put(QImage frame); // in place of the one before
    void open();            // to frames again
    void shut();            // shows none and takes none: a late frame would hide what the box shows next
    void moveTo(const FilmPlace& place);
    Shown shown() const;

    // `changed` is called at every change, on the thread that made it, and may only post an event. An empty one stops
    // that: no call is running any more when this returns.
    void tell(std::function<void()> changed);

private:
    void changed() const;

    mutable std::mutex m_mutex;
    Shown m_shown;
    bool m_open = true;
    std::function<void()> m_tell;
};

} // namespace trovarium
