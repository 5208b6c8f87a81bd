#pragma once

#include "platform/qt/toolkit/SurfaceView.h"
#include "platform/qt/toolkit/View.h"

class QPainter;

namespace trovarium {

// A drawn control: an item of its container's surface.
class ItemView : public View, public MouseTarget {
public:
    explicit ItemView(Control& control);
    ~ItemView() override;

    void apply(Change change) override;

    // Paints into `place`, in the surface's pixels, its edges on pixels of the device.
    virtual void paint(QPainter& painter, const QRectF& place) = 0;
    // What painting may touch; by default the place itself.
    virtual QRectF paintedPlace() const { return devicePlace(); }
    virtual bool takesMouse() const { return true; }
    virtual bool takesFocus() const { return false; }
    virtual QString accessibleText() const;

    SurfaceView& surface() const { return m_surface; }
    // The place with its edges rounded to pixels of the device.
    QRectF devicePlace() const;

    Component& component() override { return control(); }
    bool takesInput() const override;
    QRectF place() const override;
    int pointer() const override;
    std::string toolTip() const override;

private:
    SurfaceView& m_surface;
    QRectF m_painted; // where it was last; empty while hidden
};

} // namespace trovarium
