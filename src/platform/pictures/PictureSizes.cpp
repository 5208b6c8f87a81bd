// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/pictures/PictureSizes.h"

#include <algorithm>

namespace trovarium {

void PictureSizes::add(QSize natural, QSize painted)
{
    constexpr std::size_t MostKept = 8; // photographs stand or lie, and come from more than one camera
    const std::lock_guard lock(m_mutex);
    std::erase(m_latest, std::pair(natural, painted));
    m_latest.emplace_front(natural, painted);
    m_latest.resize(std::min(m_latest.size(), MostKept));
}

std::vector<QSize> PictureSizes::of(QSize natural) const
{
    constexpr std::size_t MostScaled = 2;
    std::vector<QSize> sizes;
    const std::lock_guard lock(m_mutex);
    for (const auto& [known, painted] : m_latest)
        if (known == natural && sizes.size() < MostScaled)
            sizes.push_back(painted);
    return sizes;
}

} // namespace trovarium
