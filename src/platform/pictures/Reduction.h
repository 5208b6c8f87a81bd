// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <QImageIOHandler>
#include <QSize>

#include <array>
#include <atomic>
#include <cstdint>
#include <utility>
#include <vector>

namespace trovarium {

// This many pixels are decoded along a side for each one that is asked for. Painting averages them, which hides the
// artifacts that a JPEG's scaled decoding leaves at sharp edges.
constexpr int Reserve = 4;

std::int64_t pixelCount(QSize size);

// An image that is still to be filled. "Out of memory".
QImage newImage(QSize size, QImage::Format format);

// The factor by which the sides of a picture are divided while it is decoded. For `longerSide` above 0 at least
// `Reserve` times as many pixels are left. In full (0) it is 1, except for a picture that is too large for any view but
// the one that fits it to the screen.
int reductionFor(QSize size, int longerSide);

// Scales a picture down: each pixel is the average of `factor` by `factor` pixels. Lines are added from the top, so
// that the whole picture needn't be in memory at 32 bits a pixel.
class ReducedImage {
public:
    ReducedImage(QSize size, int factor, bool hasAlpha); // "Out of memory"

    void add(const QImage& lines); // of any depth

    // RGB32, or premultiplied ARGB32 with alpha.
    QImage take() { return std::move(m_image); }

private:
    void addLine(const QRgb* pixels);
    void endRow();

    QSize m_size;
    int m_factor;
    QImage m_image;
    std::vector<std::array<std::uint64_t, 4>> m_sums; // of a row's pixels, channel by channel
    int m_linesInRow = 0;
    int m_row = 0;
};

// How many lines of such a width are converted at once: a few hundred thousand pixels.
int linesAtOnce(int width);

// The image as a `ReducedImage` gives it, but with its alpha apart for the factor 1. "Invalid picture" when `cancelled`
// was set meanwhile.
QImage reduced(QImage image, int factor, const std::atomic<bool>& cancelled);

// The image turned and mirrored so that it stands upright.
QImage upright(QImage image, QImageIOHandler::Transformations orientation);

} // namespace trovarium
