#pragma once

#include "platform/toolkit/Property.h"
#include "platform/toolkit/Units.h"

namespace trovarium {

// The screen where the program's active form stands, the first one while there is none. A form counts its place
// from this screen's corner, so that what is worked out from Width and Height holds on every screen. The pointer
// is that of all screens and beats those of forms and controls.
class Screen {
public:
    explicit Screen(struct DesktopState& state)
        : m_state(state)
    {
    }

    float Width() const;  // twips
    float Height() const; // twips

private:
    int mousePointer() const { return m_mousePointer; }
    void setMousePointer(int value);

public:
    Property<&Screen::mousePointer, &Screen::setMousePointer> MousePointer{this};

private:
    struct DesktopState& m_state;
    int m_mousePointer = DefaultPointer;
};

} // namespace trovarium
