// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "browser/WindowPart.h"
#include "platform/pictures/Picture.h"
#include "platform/toolkit/OfferedFiles.h"

#include <string>
#include <vector>

namespace trovarium {

class Desktop;

// Whether the program can show a file: clips count by their endings, everything else by content, whatever its ending.
bool canShow(const Album& album, Desktop& desktop, const std::string& path);

// Takes files from other programs, by a drop or from the clipboard, into the import dialog, and copies those of
// photographs to the clipboard.
class FileTransfer : public WindowPart {
public:
    FileTransfer(frmMain& form, Album& album);

    // In the pixels of the form. A drop on a group's row opens that group first.
    void Form_FilesDropped(const OfferedFiles& files, float X, float Y);
    void paste();

    void copySelected();
    void copyPhotographOnShow(); // as a picture too

private:
    bool opens(int row);
    void import(const OfferedFiles& files);
    void copy(std::vector<std::string> paths, const Picture& picture);
};

} // namespace trovarium
