#pragma once

#include "platform/pictures/Picture.h"

#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace trovarium {

class FileService;

// What somebody does who waits for a picture, and for how long already; whether to wait on.
using Patience = std::function<bool(std::chrono::milliseconds waited)>;

// Reads bmp, jpg, gif, png, webp, tiff and wmf by content, upright by their orientation, on other cores and ahead.
// The background threads only read, and the program behaves the same without them. Large pictures are decoded one at
// a time.
class PictureService {
public:
    explicit PictureService(
        FileService& files, Patience patience = [](auto) { return true; });
    ~PictureService();
    PictureService(const PictureService&) = delete;
    PictureService& operator=(const PictureService&) = delete;

    // Decodes in full; of a picture that is too large for any view but the one that fits it to the screen, no more
    // pixels than that needs. "File not found" for an empty or absent path, "Invalid picture" for a file that isn't
    // one, "Device I/O error" where the patience has come to its end.
    Picture load(std::string_view path);

    // As `load`, but the caller never paints it larger than `longerSide` pixels, so that a JPEG may be
    // decoded at 1/2, 1/4 or 1/8. The natural size stays that of the file.
    Picture loadReduced(std::string_view path, int longerSide);

    // The files that will be asked for next, nearest first; replaces what was expected before.
    // `longerSide` 0 means in full. Checked against size and time of the file when asked.
    void expect(std::vector<std::string> paths, int longerSide = 0);

    // Whether nobody works ahead on it any more; waits for that up to so long.
    bool isDecoded(std::string_view path, int longerSide, int milliseconds);

    // An uncompressed 24-bit bitmap, whatever the name says.
    void saveBitmap(const Picture& picture, std::string_view path);

    // One of the program's own drawings by its name in assets/, sharp at every scale.
    Picture artwork(std::string_view name);

private:
    struct State;
    std::unique_ptr<State> m_state;
};

} // namespace trovarium
