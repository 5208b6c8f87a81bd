#pragma once

#include <QCursor>

namespace trovarium {

class Container;
class Control;

QCursor cursorOf(int pointer, qreal ratio);

// The pointer over a control by its own number, else by that of what it lies on, else by the form's.
int effectivePointer(const Control& control);
int effectivePointer(Container& container);

// Tells all views on a container that its pointer changed.
void pointerChangedOn(const Container& container);

} // namespace trovarium
