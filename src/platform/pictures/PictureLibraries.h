// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/pictures/HeifLibrary.h"
#include "platform/pictures/JpegXlLibrary.h"

#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace trovarium {

// What all who decode share: the libraries of newer formats, each loaded when the first such picture is met, and the
// turn of large pictures. Safe on any thread.
class PictureLibraries {
public:
    explicit PictureLibraries(const char* heif = HeifLibrary::Name, const char* jpegXl = JpegXlLibrary::Name)
        : m_heifName(heif)
        , m_jpegXlName(jpegXl)
    {
    }

    const HeifLibrary& heif();     // "Invalid picture" without it
    const JpegXlLibrary& jpegXl(); // "Invalid picture" without it

    // Held while a large picture is decoded.
    std::timed_mutex& largeOnes() { return m_largeOnes; }

    // The packages whose libraries were missed since the last call, each only once.
    std::vector<std::string> newlyMissing();

private:
    template <class Library>
    const Library& loaded(std::optional<Library>& library, const char* name);

    const char* const m_heifName;
    const char* const m_jpegXlName;
    std::timed_mutex m_largeOnes;
    std::mutex m_mutex; // guards what follows
    std::optional<HeifLibrary> m_heif;
    std::optional<JpegXlLibrary> m_jpegXl;
    std::set<std::string> m_missing; // all so far
    std::vector<std::string> m_untold;
};

} // namespace trovarium
