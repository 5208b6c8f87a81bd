// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/pictures/DecodeAhead.h"

#include <functional>
#include <list>
#include <memory>
#include <string>
#include <vector>

namespace trovarium {

// Decodes the photographs of thumbnails in the size that these take on a dense screen: on other cores, below all other
// work, and the latest are kept. To be called on the main thread alone.
class ThumbnailSharpener {
public:
    using Receive = std::function<void(const Picture&)>;

    // `later` is called on other threads and runs an action on the main thread.
    ThumbnailSharpener(std::shared_ptr<PictureLibraries> libraries, const PictureService::Later& later);

    // Asks for the file in exactly this size, in place of what the owner has asked for before. A kept picture is
    // received at once, if its file hasn't changed since. A kept one whose file is gone fails as `PictureFile` does; a
    // failure on the other cores is never told.
    void ask(const void* owner, const std::string& nativePath, QSize size, const Receive& receive);
    void drop(const void* owner);

    // In between nothing is decoded. What was under way begins again.
    void pause() { m_decoder.expect({}); }
    void resume();

private:
    struct Wanted {
        const void* owner;
        DecodeRequest request;
        Receive receive;
    };

    void forget(const void* owner);
    void handOut();
    void keep(DecodedFile file);

    std::vector<Wanted> m_wanted;
    std::list<DecodedFile> m_kept; // latest first
    DecodeAhead m_decoder;
};

} // namespace trovarium
