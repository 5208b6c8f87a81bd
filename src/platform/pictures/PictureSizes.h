// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QSize>

#include <deque>
#include <mutex>
#include <utility>
#include <vector>

namespace trovarium {

// In which sizes pictures were first painted, so that the next one of the same natural size can be scaled ahead of
// time. Safe on any thread.
class PictureSizes {
public:
    void add(QSize natural, QSize painted); // both in pixels
    // The latest two: one each for the main window and the full screen.
    std::vector<QSize> of(QSize natural) const;

private:
    mutable std::mutex m_mutex;
    std::deque<std::pair<QSize, QSize>> m_latest; // natural and painted, latest first
};

} // namespace trovarium
