#pragma once

#include "platform/toolkit/Prompts.h"
#include "store/GroupOnShow.h"

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace trovarium {

struct Album;
class frmSplash;
class frmThumbnail;
template <class FormType>
class FormHolder;

// The passes that bring the library's parts back into agreement before the main window opens. They walk
// File1 of the splash form and move its bar, a quarter each.
class RepairPasses {
public:
    RepairPasses(Album& album, frmSplash& splash, FormHolder<frmThumbnail>& thumbnailBuilder);

    // The four passes in their order, each only while the check is not skipped.
    void CheckFolderContents();

    // Information files whose photograph is gone move to "Removed". With AutoFix no question is asked, unless so many
    // are gone that a disk may be away.
    void PhotoFilesExist(bool AutoFix);
    // Thumbnails that are missing, or whose date differs from their photograph's, are built.
    void ThumbnailFilesExist(bool AutoFix);
    // Photographs without an information file get one. AutoFix is not looked at.
    void InfoFilesExist(bool AutoFix);
    // Writes the names of all information files as a group list.
    void Create_AllPhotos_Group(std::string_view GroupFileName);

private:
    using NamesInCapitals = std::multimap<std::string, std::string>;

    NamesInCapitals infoFilesInCapitals() const;
    bool hasOneOfOtherCase(const std::string& name, const NamesInCapitals& infoFiles) const;
    std::vector<std::string> listed(const std::string& folder, std::string_view ending = {}) const;
    void updateProgress(int index, int count, float base);
    bool isAgreed(bool AutoFix, Message kind, std::string_view text, std::string_view title);

    Album& m_album;
    frmSplash& m_splash;
    FormHolder<frmThumbnail>& m_thumbnailBuilder;
};

} // namespace trovarium
