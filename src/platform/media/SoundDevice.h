#pragma once

namespace trovarium {

// Whether there is anything that a sound could be played on, told by what can be seen without asking a driver: a
// sound server, a device, or a driver that the user names.
bool soundCanBeHeard();

} // namespace trovarium
