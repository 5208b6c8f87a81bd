// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/media/FilmSurface.h"

#include <utility>

namespace trovarium {

void FilmSurface::put(QImage frame)
{
    const std::lock_guard lock(m_mutex);
    if (!m_open)
        return;
    m_shown.frame.swap(frame); // the old one is freed behind the lock
    changed();
}

void FilmSurface::open()
{
    const std::lock_guard lock(m_mutex);
    m_open = true;
}

void FilmSurface::shut()
{
    const std::lock_guard lock(m_mutex);
    m_open = false;
    if (!std::exchange(m_shown.frame, QImage()).isNull())
        changed();
}

void FilmSurface::moveTo(const FilmPlace& place)
{
    const std::lock_guard lock(m_mutex);
    if (place == m_shown.place)
        return;
    m_shown.place = place;
    changed();
}

FilmSurface::Shown FilmSurface::shown() const
{
    const std::lock_guard lock(m_mutex);
    return m_shown;
}

void FilmSurface::tell(std::function<void()> changed)
{
    const std::lock_guard lock(m_mutex);
    m_tell = std::move(changed);
}

void FilmSurface::changed() const
{
    if (m_tell)
        m_tell();
}

} // namespace trovarium
