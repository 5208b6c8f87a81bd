#pragma once

#include "platform/files/FileService.h"
#include "platform/pictures/PictureService.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <QImage>

#include <string>
#include <string_view>

namespace trovarium {

// A folder of pictures with the services that read them.
class PictureFolder : public testing::Test, public TemporaryFolder {
protected:
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

std::string jpegBytes(const QImage& image, bool progressive = false);

// Coloured quarters: red and green above blue and white.
QImage quarters(int width, int height);

// A still life of gradients, edges and fine texture, the same at every call.
QImage testScene(int width, int height);

// Mean difference of all channels of opaque pixels, 0 to 255; 255 when the sizes differ.
double meanDifference(const QImage& a, const QImage& b);

} // namespace trovarium
