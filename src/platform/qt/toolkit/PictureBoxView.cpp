#include "platform/toolkit/PictureBox.h"

#include "platform/media/FilmSurface.h"
#include "platform/pictures/PictureData.h"
#include "platform/pictures/PicturePainter.h"
#include "platform/qt/toolkit/Canvas.h"
#include "platform/qt/toolkit/ContainerView.h"
#include "platform/qt/toolkit/DesktopState.h"
#include "platform/qt/toolkit/FilmPainting.h"
#include "platform/qt/toolkit/Pointers.h"
#include "platform/qt/toolkit/SurfaceView.h"
#include "platform/qt/toolkit/View.h"
#include "platform/toolkit/Form.h"
#include "runtime/Failure.h"

#include <QAccessible>
#include <QPainter>

#include <cmath>
#include <utility>

namespace trovarium {

namespace {

void paintContent(
    QPainter& painter, PicturePainter& picturePainter, const PictureBox& box, Canvas& canvas, const QRectF& place)
{
    painter.fillRect(place, toQColor(box.BackColor()));
    const Picture picture = box.Picture();
    if (!picture.empty())
        picturePainter.paint(painter, picture, place);
    canvas.paint(painter);
    paintFilm(painter, picturePainter, *box.filmSurface());
}

QSize wholePixels(const PictureBox& box)
{
    const float edges = 2 * box.edge();
    return {static_cast<int>(std::lround(box.parent().toPixels(box.Width()) - edges)),
        static_cast<int>(std::lround(box.parent().toPixels(box.Height()) - edges))};
}

class PictureBoxSurface : public SurfaceView, public MouseTarget {
public:
    PictureBoxSurface(PictureBox& box, Canvas& canvas)
        : SurfaceView(box.desktop().state(), box, surfaceWidget(box))
        , m_box(box)
        , m_canvas(canvas)
    {
    }

    Component& component() override { return m_box; }
    bool takesInput() const override { return m_box.takesInput(); }
    QRectF place() const override { return rect(); }
    int pointer() const override { return effectivePointer(static_cast<const Control&>(m_box)); }
    std::string toolTip() const override { return m_box.ToolTipText(); }
    bool takesFocus() const override
    {
        return m_box.MouseDown.isWired() || m_box.Click.isWired() || m_box.KeyDown.isWired();
    }

    void mouseDown(int button, int shift, QPointF pixels) override
    {
        raiseAt(m_box.MouseDown, button, shift, inside(pixels), m_box);
    }
    void mouseMove(int button, int shift, QPointF pixels) override
    {
        raiseAt(m_box.MouseMove, button, shift, inside(pixels), m_box);
    }
    void mouseUp(int button, int shift, QPointF pixels) override
    {
        raiseAt(m_box.MouseUp, button, shift, inside(pixels), m_box);
    }
    void click() override { m_box.Click.raise(); }
    bool keyDown(int code, int shift) override
    {
        m_box.KeyDown.raise(code, shift);
        return m_box.KeyDown.isWired();
    }

protected:
    MouseTarget& ownTarget() override { return *this; }

    void paintBack(QPainter& painter) override
    {
        if (!m_box.Border()) {
            paintContent(painter, m_painter, m_box, m_canvas, rect());
            return;
        }
        const QRectF all = rect();
        painter.fillRect(all, toQColor(m_box.BorderColor()));
        painter.fillRect(all.adjusted(1, 1, -1, -1), toQColor(m_box.BackColor()));
        const qreal edge = m_box.edge();
        const QRectF inside(0, 0, all.width() - 2 * edge, all.height() - 2 * edge);
        painter.save();
        painter.translate(edge, edge);
        painter.setClipRect(inside, Qt::IntersectClip);
        paintContent(painter, m_painter, m_box, m_canvas, inside);
        painter.restore();
    }

private:
    QPointF inside(QPointF pixels) const { return pixels - QPointF(m_box.edge(), m_box.edge()); }

    PictureBox& m_box;
    Canvas& m_canvas;
    PicturePainter m_painter;
};

class PictureBoxView : public ContainerView {
public:
    PictureBoxView(PictureBox& box, PictureBoxSurface* surface)
        : ContainerView(box, surface)
        , m_box(box)
    {
        m_box.filmSurface()->tell([this] {
            QMetaObject::invokeMethod(
                &m_turn, [this] { paintAnew(); }, Qt::QueuedConnection);
        });
    }
    ~PictureBoxView() override { m_box.filmSurface()->tell({}); }

    void apply(Change change) override
    {
        ContainerView::apply(change);
        if (change == Change::Appearance)
            placeChildren(); // the border may have come or gone
        if (change == Change::Text)
            tellValue();
    }

private:
    void placeChildren()
    {
        for (const Control* child : m_box.controls()) {
            if (child->view() != nullptr)
                child->view()->apply(Change::Geometry);
        }
    }

    void tellValue()
    {
        QAccessibleValueChangeEvent event(surface(), m_box.AccessibleValue());
        QAccessible::updateAccessibility(&event);
    }

    void paintAnew()
    {
        if (surface() != nullptr)
            surface()->update();
    }

    PictureBox& m_box;
    QObject m_turn; // what calls from a film's thread hang on
};

} // namespace

PictureBox::PictureBox(Container* parent, const Plan& plan, ScaleMode scale)
    : Control(parent, plan)
    , Container(scale)
    , m_canvas(std::make_unique<Canvas>())
    , m_film(std::make_shared<FilmSurface>())
{
}

PictureBox::~PictureBox()
{
    detachView();
}

void PictureBox::setPicture(trovarium::Picture value)
{
    m_film->shut();
    if (value == m_picture && m_canvas->strokes.empty())
        return;
    m_picture = std::move(value);
    m_canvas->strokes.clear();
    changed(Change::Content);
    takePictureSize();
}

void PictureBox::setAutoSize(bool value)
{
    m_autoSize = value;
    takePictureSize();
}

// A box that takes its picture's size has no other size while it holds one.
void PictureBox::takePictureSize()
{
    if (!m_autoSize || m_picture.empty())
        return;
    Width = parent().fromTwips((static_cast<float>(m_picture.width()) + 2 * edge()) * TwipsPerPixel);
    Height = parent().fromTwips((static_cast<float>(m_picture.height()) + 2 * edge()) * TwipsPerPixel);
}

void PictureBox::PaintPicture(const trovarium::Picture& picture, float x, float y, float width, float height)
{
    if (picture.empty())
        throw Failure(FailureKind::InvalidPicture);
    const QRectF place(toPixels(x), toPixels(y), toPixels(width), toPixels(height));
    m_canvas->add(picture, place, wholePixels(*this));
    changed(Change::Content);
}

void PictureBox::Cls()
{
    m_film->shut();
    if (m_canvas->strokes.empty())
        return;
    m_canvas->strokes.clear();
    changed(Change::Content);
}

Picture PictureBox::Image() const
{
    QImage image(wholePixels(*this), QImage::Format_RGB32);
    if (image.isNull())
        return {};
    QPainter painter(&image);
    PicturePainter picturePainter;
    paintContent(painter, picturePainter, *this, *m_canvas, QRectF(image.rect()));
    painter.end();
    return pictureFromImage(image);
}

std::unique_ptr<View> PictureBox::makeView()
{
    auto* surface = new PictureBoxSurface(*this, *m_canvas); // its parent widget owns it
    return std::make_unique<PictureBoxView>(*this, surface);
}

} // namespace trovarium
