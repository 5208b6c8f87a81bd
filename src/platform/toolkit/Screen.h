#pragma once

#include "platform/toolkit/Property.h"
#include "platform/toolkit/Units.h"

namespace trovarium {

// The screen where the program's active form stands. Its pointer beats those of forms and controls.
class Screen {
public:
    float Width() const;  // twips
    float Height() const; // twips

private:
    int mousePointer() const { return m_mousePointer; }
    void setMousePointer(int value);

public:
    Property<&Screen::mousePointer, &Screen::setMousePointer> MousePointer{this};

private:
    int m_mousePointer = DefaultPointer;
};

} // namespace trovarium
