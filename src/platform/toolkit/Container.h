#pragma once

#include "platform/toolkit/Units.h"

#include <memory>
#include <vector>

namespace trovarium {

class Control;
class Form;
class SurfaceView;

// What controls lie on: a form, a picture box or a frame. Its children's places and sizes are in its
// scale.
class Container {
public:
    explicit Container(ScaleMode scale);
    virtual ~Container();
    Container(const Container&) = delete;
    Container& operator=(const Container&) = delete;

    virtual Form& form() = 0;
    float fromTwips(float twips) const { return m_scale == ScaleMode::Pixels ? twips / TwipsPerPixel : twips; }
    float toPixels(float value) const { return m_scale == ScaleMode::Pixels ? value : value / TwipsPerPixel; }
    // Pixels of a border on each side, from inside which its children count.
    virtual float edge() const { return 0; }

    // In z-order, the lowest first.
    const std::vector<Control*>& controls() const { return m_controls; }
    void adopt(Control* control);
    void abandon(Control* control);
    void raiseToTop(Control* control);

    // What shows it in a window; null while there is none.
    SurfaceView* surface() const { return m_surface; }
    void setSurface(SurfaceView* surface) { m_surface = surface; }

private:
    ScaleMode m_scale;
    std::vector<Control*> m_controls;
    SurfaceView* m_surface = nullptr;
};

} // namespace trovarium
