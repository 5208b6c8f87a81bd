#pragma once

#include <QAccessible>

namespace trovarium {

class ItemView;

// From then on surfaces show their drawn items to screen readers.
void installAccessibility();

// A new interface for an item, which the desktop's register owns.
QAccessible::Id registerAccessible(ItemView& item);

} // namespace trovarium
