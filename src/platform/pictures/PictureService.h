// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/pictures/Picture.h"

#include <chrono>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace trovarium {

class DecodeAhead;
class FileService;
class PictureLibraries;
class ThumbnailSharpener;

// Called while somebody waits for a picture, with the time waited so far. Returns whether to wait on.
using Patience = std::function<bool(std::chrono::milliseconds waited)>;

// Reads bmp, jpg, gif, png, webp, tiff, heic, avif, jxl and wmf by content, upright by their orientation, on other
// cores and ahead. The background threads only read, and the program behaves the same without them. Large pictures are
// decoded one at a time.
class PictureService {
public:
    // `libraries` null: the real ones.
    explicit PictureService(
        FileService& files, Patience patience = [](auto) { return true; },
        std::shared_ptr<PictureLibraries> libraries = nullptr);
    ~PictureService();
    PictureService(const PictureService&) = delete;
    PictureService& operator=(const PictureService&) = delete;

    // Decodes in full. A picture that is so large that it is only shown fitted to the screen gets as many pixels as
    // that needs. "File not found" for an empty or absent path, "Invalid picture" for a file that isn't one, "Device
    // I/O error" when the patience ended.
    Picture load(std::string_view path);

    // As `load`, but the caller never paints it larger than `longerSide` pixels, so that a JPEG may be
    // decoded at 1/2, 1/4 or 1/8. The natural size stays that of the file.
    Picture loadReduced(std::string_view path, int longerSide);

    // Decodes a thumbnail's photograph in exactly so many pixels, on another core when nothing else is to be done
    // there. `receive` gets it by `later`, or at once if it is among those kept; not if it can't be decoded, nor once
    // the owner has asked for another file or dropped this one. "File not found" for an empty or absent path.
    void sharpen(
        const void* owner, std::string_view path, int width, int height, std::function<void(const Picture&)> receive);
    void dropSharper(const void* owner);

    // Runs an action on the main thread, soon. Called on worker threads. Set it before the first `sharpen`.
    using Later = std::function<void(std::function<void()> action)>;
    Later later;

    // Whether `load` knows the file's format and has its library; nothing is decoded. Failures as there, but "Invalid
    // picture".
    bool isPicture(std::string_view path) const;

    // The files that will be asked for next, nearest first; replaces what was expected before.
    // `longerSide` 0 means in full. Checked against size and time of the file when asked.
    void expect(std::vector<std::string> paths, int longerSide = 0);

    // Whether it isn't being decoded ahead any more; waits for that up to so long.
    bool isDecoded(std::string_view path, int longerSide, int milliseconds);

    // An uncompressed 24-bit bitmap, whatever the name says.
    void saveBitmap(const Picture& picture, std::string_view path);

    // Raised while a picture is asked for that needs a library which is not installed, once for each package of Debian.
    std::function<void(std::string_view package)> PackageMissing;

    // One of the program's own drawings by its name in assets/, sharp at every scale.
    Picture artwork(std::string_view name);

private:
    std::string nativeOf(std::string_view path) const;
    Picture loadFor(std::string_view path, int longerSide);
    void tellMissing() const;

    FileService& m_files;
    const Patience m_patience;
    const std::shared_ptr<PictureLibraries> m_libraries;
    std::unique_ptr<DecodeAhead> m_ahead;
    std::unique_ptr<ThumbnailSharpener> m_sharpener; // from its first use
    std::map<std::string, Picture, std::less<>> m_drawings;
};

} // namespace trovarium
