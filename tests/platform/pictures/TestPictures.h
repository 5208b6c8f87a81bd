#pragma once

#include "platform/files/FileService.h"
#include "platform/pictures/PictureService.h"
#include "support/TemporaryFolder.h"

#include <QImage>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace trovarium {

// Files of pictures, byte by byte.
enum class JpegInks { None, Adobe, AdobeYcck };

struct JpegOptions {
    bool progressive = false;
    bool grey = false;
    bool fullColour = true; // no coarser chroma
    JpegInks inks = JpegInks::None;
};

std::string jpegBytes(const QImage& image, const JpegOptions& options = {});

// The same file with an orientation in its EXIF data, in either byte order.
std::string withOrientation(const std::string& jpeg, int orientation, bool bigEndian = false);

// One image of coloured quarters, as `quarters` has them.
struct GifFrame {
    int left = 0;
    int top = 0;
    int width = 12;
    int height = 12;
    int transparent = -1; // of the four
};

std::string gifBytes(int width, int height, const GifFrame& frame = {});

struct BitmapOptions {
    int bits = 24;
    bool topDown = false;
    std::uint32_t compression = 0;
    int headerLength = 40;
    std::string masks{};   // behind the header
    std::string palette{}; // four bytes a colour, three in the old header
    std::string lines{};   // as they stand in the file
};

std::string bitmapFile(int width, int height, const BitmapOptions& options);

// A metafile of the records, each a number and its words; placeable with a box (left, top, right, bottom and
// units per inch).
using WmfWords = std::vector<int>;
std::string wmfRecord(int function, const WmfWords& words = {});
std::string wmfFile(const std::string& records, const WmfWords& box = {});

// Little-endian, `length` bytes.
std::string little(std::uint32_t value, int length);

// Coloured quarters: red and green above blue and white.
QImage quarters(int width, int height);

// A still life of gradients, edges and fine texture, the same at every call.
QImage testScene(int width, int height);

// Mean difference of all channels, 0 to 255; 255 when the sizes differ.
double meanDifference(const QImage& a, const QImage& b);

// A folder of pictures with the services that read them.
class PictureFolder {
public:
    std::string put(std::string_view name, std::string_view bytes); // the path inside the program
    std::string path(std::string_view name) const { return m_folder.inside(name); }
    std::string native(std::string_view name) const { return m_folder.native(name); }
    std::string bytes(std::string_view name) const { return m_folder.read(name); }

    FileService files;
    PictureService pictures{files};

private:
    TemporaryFolder m_folder;
};

} // namespace trovarium
