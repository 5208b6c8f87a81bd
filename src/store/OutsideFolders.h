#pragma once

namespace trovarium {

struct Album;
class Desktop;

// Whether the program may work on a library with folders that are links and lead out of it, where it would change files
// that belong to no album. The user is asked once for each link and target; without such a link nothing is asked.
bool mayWorkOutside(Album& album, Desktop& desktop);

} // namespace trovarium
