#pragma once

namespace trovarium {

struct Album;
class Desktop;

// What a long list lets happen every some thousand lines.
enum class Meanwhile { Repaint, RunEvents };

// Drops the lines of all group lists (.lst) that name no information file. A list is left as it stands when it can't be
// read or rewritten whole, and all are when the folder of the information files can't be listed. Ends the program when
// the path of the group lists is blank. Nothing more is done once the check was skipped, be it in the middle of a list.
void RemoveMissingPhotosFromGroup(Album& album, Desktop& desktop, Meanwhile meanwhile = Meanwhile::Repaint);

} // namespace trovarium
