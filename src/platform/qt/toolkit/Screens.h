#pragma once

class QScreen;
class QWidget;

namespace trovarium {

struct DesktopState;

// Where the centre of a window lies, or where it will come up.
QScreen& screenOf(const QWidget& window);

// Where the active form stands, and the first one while there is none: what comes up next comes up there.
QScreen& screenInUse(const DesktopState& state);

} // namespace trovarium
