// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/pictures/PictureLibraries.h"

#include "platform/pictures/PictureHeader.h"
#include "runtime/Failure.h"

#include <utility>

namespace trovarium {

// What is missing is looked for again with each picture: it may have been installed meanwhile.
template <class Library>
const Library& PictureLibraries::loaded(std::optional<Library>& library, const char* name)
{
    const std::lock_guard lock(m_mutex);
    if (!library && attempt([&] { library.emplace(name); })) {
        if (m_missing.insert(Library::Package).second)
            m_untold.emplace_back(Library::Package);
        refusePicture();
    }
    return *library;
}

const HeifLibrary& PictureLibraries::heif()
{
    return loaded(m_heif, m_heifName);
}

const JpegXlLibrary& PictureLibraries::jpegXl()
{
    return loaded(m_jpegXl, m_jpegXlName);
}

std::vector<std::string> PictureLibraries::newlyMissing()
{
    const std::lock_guard lock(m_mutex);
    return std::exchange(m_untold, {});
}

} // namespace trovarium
