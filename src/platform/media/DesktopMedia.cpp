// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/media/DesktopMedia.h"

#include "platform/media/MpvGraph.h"
#include "platform/media/MpvLibrary.h"
#include "runtime/Failure.h"

#include <system_error>
#include <utility>

namespace trovarium {

DesktopMedia::DesktopMedia(const FileService& files, Wait wait)
    : m_files(files)
    , m_wait(std::move(wait))
    , m_sound(files)
{
}

// Loading takes 60 ms, and five times that when it comes from the disk.
void DesktopMedia::expectFilm()
{
    if (m_filmLibrary.valid())
        return;
    try {
        m_filmLibrary = std::async(std::launch::async, [] { return std::make_shared<const MpvLibrary>(); });
    } catch (const std::system_error&) {
        // There is no thread to be had: opening a film will fail.
    }
}

std::unique_ptr<FilgraphManager> DesktopMedia::newFilgraphManager()
{
    expectFilm();
    if (!m_filmLibrary.valid())
        throw Failure(FailureKind::DeviceUnavailable);
    return std::make_unique<MpvGraph>(*m_filmLibrary.get(), m_files, m_wait);
}

} // namespace trovarium
