#pragma once

#include "platform/toolkit/Property.h"
#include "platform/toolkit/Units.h"

namespace trovarium {

// The screen where the program's active form stands. Its pointer beats those of forms and controls.
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
