#pragma once

#include "platform/files/FileService.h"
#include "platform/pictures/PictureService.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <QBuffer>
#include <QImageWriter>

#include <cmath>
#include <cstdlib>
#include <random>

namespace trovarium {

// A folder of pictures with the services that read them.
struct PictureFolder : testing::Test, TemporaryFolder {
    // The path inside the program of a file that is written anew.
    std::string put(std::string_view name, std::string_view bytes) const
    {
        std::filesystem::remove(native(name)); // a file that is emptied in place is flushed to the disk at its close
        write(name, bytes);
        return inside(name);
    }

    FileService files;
    PictureService pictures{files};
};

inline std::string jpegBytes(const QImage& image, bool progressive = false)
{
    QBuffer buffer;
    QImageWriter writer(&buffer, "jpg");
    writer.setQuality(95);
    writer.setProgressiveScanWrite(progressive);
    EXPECT_TRUE(writer.write(image));
    return buffer.data().toStdString();
}

// Coloured quarters: red and green above blue and white.
inline QImage quarters(int width, int height)
{
    static constexpr QRgb Colours[] = {0xffff0000, 0xff00ff00, 0xff0000ff, 0xffffffff};
    return QImage(reinterpret_cast<const uchar*>(Colours), 2, 2, QImage::Format_RGB32).scaled(width, height);
}

// A still life of gradients, edges and fine texture, the same at every call.
inline QImage testScene(int width, int height)
{
    QImage image(width, height, QImage::Format_RGB32);
    std::minstd_rand random;
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            const int grain = static_cast<int>(random() >> 16U) % 32;
            const bool leaf = std::hypot(x - width / 3.0, y - height / 2.0) < height / 4.0;
            const int red = leaf ? 180 : 50;
            const int green = leaf ? 60 : x * 200 / width;
            image.setPixel(x, y, qRgb(red + grain, green + grain, y * 200 / height + grain));
        }
    return image;
}

// Mean difference of all channels of opaque pixels, 0 to 255; 255 when the sizes differ.
inline double meanDifference(const QImage& a, const QImage& b)
{
    if (a.size() != b.size() || a.isNull())
        return 255;
    double sum = 0;
    for (int y = 0; y < a.height(); ++y)
        for (int i = 0; i < 4 * a.width(); ++i)
            sum += std::abs(a.constScanLine(y)[i] - b.constScanLine(y)[i]);
    return sum / (3.0 * a.width() * a.height());
}

} // namespace trovarium
