#include "platform/toolkit/Frame.h"

#include "platform/qt/toolkit/ContainerView.h"
#include "platform/qt/toolkit/DesktopState.h"
#include "platform/qt/toolkit/Look.h"
#include "platform/qt/toolkit/Pointers.h"
#include "platform/qt/toolkit/SurfaceView.h"
#include "platform/qt/toolkit/View.h"
#include "platform/toolkit/Form.h"

#include <QPainter>

namespace trovarium {

namespace {

// Pixels.
constexpr int CaptionEdge = 12;
constexpr int CaptionTop = 8;

class FrameSurface : public SurfaceView, public MouseTarget {
public:
    explicit FrameSurface(Frame& frame)
        : SurfaceView(frame.desktop().state(), frame, surfaceWidget(frame))
        , m_frame(frame)
    {
    }

    Component& component() override { return m_frame; }
    bool takesInput() const override { return m_frame.takesInput(); }
    QRectF place() const override { return rect(); }
    int pointer() const override { return effectivePointer(static_cast<const Control&>(m_frame)); }
    std::string toolTip() const override { return m_frame.ToolTipText(); }

    void mouseMove(int button, int shift, QPointF pixels) override
    {
        raiseAt(m_frame.MouseMove, button, shift, pixels);
    }

protected:
    MouseTarget& ownTarget() override { return *this; }

    void paintBack(QPainter& painter) override
    {
        const QColor back = toQColor(m_frame.BackColor());
        painter.fillRect(rect(), palette().color(QPalette::Midlight));
        painter.fillRect(rect().adjusted(1, 1, -1, -1), back);
        painter.setFont(planFont(PlanFont, true));
        painter.setPen(palette().color(QPalette::WindowText));
        painter.drawText(
            rect().adjusted(CaptionEdge, CaptionTop, -CaptionEdge, 0), Qt::AlignLeft, toQString(m_frame.Caption()));
    }

private:
    Frame& m_frame;
};

class FrameView : public ContainerView {
public:
    FrameView(Frame& frame, FrameSurface* surface)
        : ContainerView(frame, surface)
        , m_frame(frame)
    {
        nameByCaption();
        surface->setPalette(paletteOn(m_frame.BackColor()));
    }

    void apply(Change change) override
    {
        ContainerView::apply(change);
        if (change == Change::Appearance)
            surface()->setPalette(paletteOn(m_frame.BackColor()));
        if (change != Change::Text)
            return;
        nameByCaption();
        surface()->addDirty(surface()->rect());
    }

private:
    void nameByCaption()
    {
        if (m_frame.AccessibleName().empty())
            surface()->setAccessibleName(toQString(m_frame.Caption()));
    }

    Frame& m_frame;
};

} // namespace

Frame::Frame(Container* parent, const Plan& plan)
    : Control(parent, plan)
    , Container(ScaleMode::Twips)
    , Caption(this, Change::Text, plan.Caption)
{
}

Frame::~Frame()
{
    detachView();
}

std::unique_ptr<View> Frame::makeView()
{
    auto* surface = new FrameSurface(*this); // its parent widget owns it
    return std::make_unique<FrameView>(*this, surface);
}

} // namespace trovarium
