// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "store/Album.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace trovarium {

class FileService;

// Whether a size beyond 16 bits ends the reading or leaves its field unchanged.
enum class OddSize { Ends, IsPassedOver };

// Reads the ten lines of `infoFileName` (N + ".info") into `info`. Event, Keywords, People, Photographer, Place, Title
// and Year are cleared first; PhotoLink and the two sizes keep their values when the file lacks them. False when the
// file can't be read or a size ends the reading; what was read until then stands.
bool readInfoFile(Album& album, std::string_view infoFileName, PhotoInfo& info, OddSize oddSize = OddSize::Ends);

// Whether the photograph `name` has an information file. An empty one counts as missing. After another failure than an
// absent file the photograph may still be there: the caller decides. Names that can't be a photograph's aren't looked
// up: an album may have millions of empty lines.
bool hasInfoFile(const Album& album, const std::string& name);

// Writes `info` as that information file. False when there is no name or it can't be written.
bool SaveImageInfo(Album& album, std::string_view infoFileName, const PhotoInfo& info);

// A new information file. Its title is its own full path until the user edits it.
bool CreateInfoFile(FileService& files, std::string_view infoFilePath, std::string_view photoLinkValue);

// Whether the title is still the path that CreateInfoFile wrote. Its folder isn't compared, as the album may have been
// moved.
bool isFirstTitle(std::string_view title, std::string_view infoFileName);

// The full path of the photograph behind `infoFileName` (N + ".info"); empty with a log line when the
// information file is absent. A full path that leads to no file means PhotoPath + N where that one is there.
std::string GetPhotoLink(Album& album, std::string_view infoFileName);

// The same for the photograph `name`, but empty without a log line when its information file can't be read.
std::string photographIfKnown(Album& album, const std::string& name);

// The file is there and not empty; a log line when it is absent.
bool CheckPhotoLink(Album& album, std::string_view path);

// A clip by its last four characters, in upper or lower case: avi, mov or mpg.
bool isVideoFile(std::string_view path);

} // namespace trovarium
