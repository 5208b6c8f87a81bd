#pragma once

#include "platform/qt/toolkit/SurfaceView.h"
#include "platform/qt/toolkit/View.h"

#include <QPointer>

namespace trovarium {

// A control that holds others: its widget is the surface that they are drawn on.
class ContainerView : public WidgetView {
public:
    ContainerView(Control& control, SurfaceView* surface);
    ~ContainerView() override;

    void apply(Change change) override;
    void pointerChanged() override;

protected:
    SurfaceView* surface() const { return m_surface; } // null once the desktop has dropped it

private:
    QPointer<SurfaceView> m_surface;
};

} // namespace trovarium
