// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/pictures/ThumbnailSharpener.h"

#include "platform/pictures/PictureData.h"

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <iterator>
#include <thread>
#include <utility>

namespace trovarium {

namespace {

constexpr std::int64_t MostKeptBytes = 32 << 20; // a dozen pages at scale 2

// Each may hold a picture in full. One core is left to the main thread.
std::size_t workerCount()
{
    constexpr unsigned Most = 2;
    return std::clamp(std::thread::hardware_concurrency(), 2U, Most + 1) - 1;
}

FileStamp stampOf(const std::string& nativePath)
{
    const std::atomic<bool> neverCancelled{false};
    return PictureFile(nativePath, neverCancelled).stamp();
}

} // namespace

ThumbnailSharpener::ThumbnailSharpener(std::shared_ptr<PictureLibraries> libraries, const PictureService::Later& later)
    : m_decoder(std::move(libraries),
        {.count = workerCount(), .isUrgent = false, .done = [this, later] { later([this] { handOut(); }); }})
{
}

void ThumbnailSharpener::ask(const void* owner, const std::string& nativePath, QSize size, const Receive& receive)
{
    const DecodeRequest request{nativePath, std::max(size.width(), size.height()), size};
    forget(owner);
    const auto kept = std::ranges::find(m_kept, request, &DecodedFile::request);
    const bool isKept = kept != m_kept.end() && kept->stamp == stampOf(nativePath);
    if (!isKept)
        m_wanted.push_back({owner, request, receive});
    resume();
    if (!isKept)
        return;
    m_kept.splice(m_kept.begin(), m_kept, kept);
    receive(kept->picture);
}

void ThumbnailSharpener::drop(const void* owner)
{
    forget(owner);
    resume();
}

// Replaces the decoder's jobs by what is still wanted.
void ThumbnailSharpener::resume()
{
    std::vector<DecodeRequest> requests;
    for (const Wanted& wanted : m_wanted)
        if (std::ranges::find(requests, wanted.request) == requests.end())
            requests.push_back(wanted.request);
    m_decoder.expect(requests);
}

void ThumbnailSharpener::forget(const void* owner)
{
    std::erase_if(m_wanted, [&](const Wanted& wanted) { return wanted.owner == owner; });
}

void ThumbnailSharpener::handOut()
{
    for (DecodedFile& file : m_decoder.takeDone()) {
        std::erase_if(m_wanted, [&](const Wanted& wanted) {
            const bool isIts = wanted.request == file.request;
            if (isIts && !file.picture.empty())
                wanted.receive(file.picture);
            return isIts;
        });
        if (!file.picture.empty())
            keep(std::move(file));
    }
}

void ThumbnailSharpener::keep(DecodedFile file)
{
    m_kept.remove_if([&](const DecodedFile& kept) { return kept.request == file.request; });
    m_kept.push_front(std::move(file));
    std::int64_t bytes = 0;
    m_kept.erase(std::find_if(m_kept.begin(), m_kept.end(),
                     [&](const DecodedFile& kept) {
                         bytes += kept.picture.data()->pixels.sizeInBytes();
                         return bytes > MostKeptBytes;
                     }),
        m_kept.end());
}

} // namespace trovarium
