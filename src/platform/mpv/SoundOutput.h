#pragma once

namespace trovarium {

// Which of libmpv's sound outputs films are to use: empty for its own choice, "null" for silence where nothing could
// sound, since looking for a device in vain would hold up the first frame.
const char* filmSoundOutput();

} // namespace trovarium
