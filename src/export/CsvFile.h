#pragma once

#include <string>

namespace trovarium {

struct Album;

// Adds the record of one information file (N + ".info") to the CSV file, which gets its two heading lines when it
// is new. On any failure there is no record and nothing is told.
void WriteCsvRecord(Album& album, const std::string& infoName, const std::string& csvPath);

} // namespace trovarium
