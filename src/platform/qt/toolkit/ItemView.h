#pragma once

#include "platform/qt/toolkit/SurfaceView.h"
#include "platform/qt/toolkit/View.h"

#include <QAccessible>

class QPainter;

namespace trovarium {

// A drawn control: an item of its container's surface.
class ItemView : public View, public MouseTarget {
public:
    explicit ItemView(Control& control);
    ~ItemView() override;

    void apply(Change change) override;
    void pointerChanged() override;

    // Paints into `place`, in the surface's pixels, its edges on pixels of the device.
    virtual void paint(QPainter& painter, const QRectF& place) = 0;
    // What painting may touch; by default the place itself.
    virtual QRectF paintedPlace(qreal ratio) const { return devicePlace(ratio); }
    virtual bool takesMouse() const { return true; }
    // For screen readers: the given name, else what the item shows, else its tool tip.
    virtual QString accessibleText() const;
    virtual QAccessible::Role accessibleRole() const { return QAccessible::Graphic; }
    QAccessible::Id accessibleId();

    SurfaceView& surface() const { return m_surface; }
    // The place with its edges rounded to pixels of a device of that ratio.
    QRectF devicePlace(qreal ratio) const;
    // The surface painted it there.
    void painted(const QRectF& place) { m_painted = place; }

    Component& component() override { return control(); }
    bool takesInput() const override;
    QRectF place() const override;
    int pointer() const override;
    std::string toolTip() const override;

protected:
    // Of the item as it lies now, so that a handler that moves it sees the start point again.
    QPointF fromCorner(QPointF pixels) const { return pixels - place().topLeft(); }

private:
    void follow(bool always);

    SurfaceView& m_surface;
    QRectF m_painted; // where it was last; empty while hidden
    QAccessible::Id m_accessibleId = 0;
};

} // namespace trovarium
