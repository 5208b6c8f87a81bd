// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <utility>

namespace trovarium {

struct PictureData;

// A decoded picture or a drawing of the program's own: shared, immutable, cheap to copy, empty when
// default. Nothing fails later while it is painted.
class Picture {
public:
    Picture() = default;
    explicit Picture(std::shared_ptr<const PictureData> data)
        : m_data(std::move(data))
    {
    }

    bool empty() const { return m_data == nullptr; }
    int width() const; // natural size in pixels, upright; 0 when empty
    int height() const;

    const std::shared_ptr<const PictureData>& data() const { return m_data; }
    bool operator==(const Picture& other) const { return m_data == other.m_data; }

private:
    std::shared_ptr<const PictureData> m_data;
};

} // namespace trovarium
