#pragma once

namespace trovarium {

struct Album;
class Desktop;

// Drops the lines of all group lists that name no information file. A list is left as it stands when it
// can't be read or rewritten whole, and all are when the folder of the information files can't be listed.
// Ends the program when the path of the group lists is blank. Nothing is done once the check was skipped.
void RemoveMissingPhotosFromGroup(Album& album, Desktop& desktop);

} // namespace trovarium
