// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/toolkit/Prompts.h"
#include "store/GroupOnShow.h"

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace trovarium {

struct Album;
class Desktop;
class frmSplash;
class frmThumbnail;
template <class FormType>
class FormHolder;

// Before the main window opens, these passes repair a library whose photographs, thumbnails, information files and
// lists don't match. They list files with the splash form's File1 and advance its bar, a quarter each.
class RepairPasses {
public:
    RepairPasses(Album& album, frmSplash& splash, FormHolder<frmThumbnail>& thumbnailBuilder);

    // The four passes in their order, each only while the check is not skipped.
    void CheckFolderContents();

    // Moves information files whose photograph is missing to "Removed". With AutoFix it asks only if so many are
    // missing that a disk may be absent.
    void PhotoFilesExist(bool AutoFix);
    // Builds thumbnails that are missing, or whose date differs from their photograph's.
    void ThumbnailFilesExist(bool AutoFix);
    // Creates missing information files, whatever AutoFix is.
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

// What runs every some thousand lines of a long list.
enum class Meanwhile { Repaint, RunEvents };

// Drops the lines of all group lists (.lst) that name no information file. A list stays as it is when it can't be
// read or rewritten whole; all do when the folder of the information files can't be listed. Ends the program when the
// path of the group lists is blank. Stops as soon as the check is skipped, even in the middle of a list.
void RemoveMissingPhotosFromGroup(Album& album, Desktop& desktop, Meanwhile meanwhile = Meanwhile::Repaint);

} // namespace trovarium
