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

    // ---- the plan of the window, in twips ----

    // The canvas: what is painted here is saved.
    PictureBox imgSize{
        this, {.Name = "imgSize", .Left = 300, .Top = 300, .Width = 1515, .Height = 1515}, ScaleMode::Pixels};
    Label Label1{
        this, {.Name = "Label1", .Left = 2130, .Top = 330, .Width = 3870, .Height = 240, .Caption = "Filename"}};
    Label lbFilename{this, {.Name = "lbFilename", .Left = 2130, .Top = 615, .Width = 3870, .Height = 285}};
    ControlArray<Label> lbPhotoSize{this, "lbPhotoSize",
        {{0, {.Left = 2130, .Top = 1080, .Width = 3870, .Height = 240}},
            {1, {.Left = 2130, .Top = 1365, .Width = 3870, .Height = 240}}}};
    Shape shpProgress{this, {.Name = "shpProgress", .Left = 300, .Top = 2130, .Width = 5700, .Height = 240}};
    PictureBox pctProgress{this, {.Name = "pctProgress", .Left = 300, .Top = 2145, .Width = 0, .Height = 210}};
    // Beyond the right edge: takes the size of the picture in work.
    PictureBox pctSize{this, {.Name = "pctSize", .Left = 6900, .Top = 300, .Width = 1500, .Height = 1500}};

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
    float m_ratio = 1; // width to height of the picture in work
};

} // namespace trovarium
