// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/toolkit/ControlArray.h"
#include "platform/toolkit/Form.h"
#include "platform/toolkit/Label.h"
#include "platform/toolkit/PictureBox.h"
#include "platform/toolkit/Shape.h"
#include "store/GroupOnShow.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace trovarium {

struct Album;
class FileService;
class VideoPlayer;

// Sets the modification time of a file, and no other of its times, from the text form of a date. False when
// there is no such file, the text is no date, or the time can't be set.
bool SetFileDateTime(FileService& files, std::string_view FilePath, std::string_view DateText);

// Writes one thumbnail for each photograph of a list and shows the work as it goes. Load it, give it the
// list, show it modal: it starts when it is activated and unloads itself at the end. The close box stops
// it after the current file.
class frmThumbnail : public Form {
public:
    frmThumbnail(Desktop& desktop, Album& album, VideoPlayer& video);

    // Names of photographs from index 1 on.
    void SetMissingList(const CheckedArray<std::string>& List);
    // Failures are stepped over: a picture or clip that can't be read gets an empty thumbnail.
    void CreateThumbnails(const CheckedArray<std::string>& List);
    void UpdateThumbnailProgress(float Value, std::int16_t Maximum);

    void Form_Activate();
    void Form_Unload();

    // ---- layout: name, left, top, width, height (twips), caption ----

    // The canvas: what is painted here is saved.
    PictureBox imgSize{this, {"imgSize", 300, 300, 1515, 1515}, ScaleMode::Pixels};
    Label Label1{this, {"Label1", 2130, 330, 3870, 240, "Filename"}};
    Label lbFilename{this, {"lbFilename", 2130, 615, 3870, 285}};
    ControlArray<Label> lbPhotoSize{this, "lbPhotoSize",
        {{0, {.Left = 2130, .Top = 1080, .Width = 3870, .Height = 240}},
            {1, {.Left = 2130, .Top = 1365, .Width = 3870, .Height = 240}}}};
    Shape shpProgress{this, {"shpProgress", 300, 2130, 5700, 240}};
    PictureBox pctProgress{this, {"pctProgress", 300, 2145, 0, 210}};
    // Invisible beyond the right edge. Takes the size of the current picture.
    PictureBox pctSize{this, {"pctSize", 6900, 300, 1500, 1500}};

private:
    bool isDecoded(const std::string& photograph);
    void createThumbnail(const std::string& listed, const std::string& photograph);
    void showFrame(const std::string& clip);
    void paintThumbnail(const std::string& listed, const std::string& photograph);

    Album& m_album;
    VideoPlayer& m_video;
    CheckedArray<std::string> MissingList;
    bool IsBuilding = false;
    bool StopThumbnails = false;
    float m_ratio = 1; // width to height of the current picture, or of the last one that could be read
};

} // namespace trovarium
