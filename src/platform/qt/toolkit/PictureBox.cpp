#include "platform/toolkit/PictureBox.h"

#include "platform/media/FilmSurface.h"
#include "platform/qt/pictures/PictureData.h"
#include "platform/qt/pictures/PicturePainter.h"
#include "platform/qt/toolkit/Canvas.h"
#include "platform/qt/toolkit/DesktopState.h"
#include "platform/qt/toolkit/FilmPainting.h"
#include "platform/qt/toolkit/Pointers.h"
#include "platform/qt/toolkit/SurfaceView.h"
#include "platform/qt/toolkit/View.h"
#include "platform/toolkit/Form.h"
#include "runtime/Failure.h"

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
    return {static_cast<int>(std::lround(box.parent().toPixels(box.Width()))),
        static_cast<int>(std::lround(box.parent().toPixels(box.Height())))};
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
        const QPointF at = pixels * TwipsPerPixel;
        m_box.MouseDown.raise(button, shift, inScale(at.x()), inScale(at.y()));
    }
    void mouseMove(int button, int shift, QPointF pixels) override
    {
        const QPointF at = pixels * TwipsPerPixel;
        m_box.MouseMove.raise(button, shift, inScale(at.x()), inScale(at.y()));
    }
    void mouseUp(int button, int shift, QPointF pixels) override
    {
        const QPointF at = pixels * TwipsPerPixel;
        m_box.MouseUp.raise(button, shift, inScale(at.x()), inScale(at.y()));
    }
    void click() override { m_box.Click.raise(); }
    bool takesKeys() const override { return m_box.KeyDown.isWired(); }
    bool keyDown(int code, int shift) override
    {
        m_box.KeyDown.raise(code, shift);
        return m_box.KeyDown.isWired();
    }

protected:
    MouseTarget& ownTarget() override { return *this; }

    void paintBack(QPainter& painter) override
    {
        paintContent(painter, m_painter, m_box, m_canvas, rect());
        if (!m_box.Border())
            return;
        const QRectF edge = rect();
        const QColor shade(128, 128, 128);
        painter.fillRect(QRectF(edge.topLeft(), QSizeF(edge.width(), 1)), shade);
        painter.fillRect(QRectF(edge.topLeft(), QSizeF(1, edge.height())), shade);
        painter.fillRect(QRectF(edge.left(), edge.bottom() - 1, edge.width(), 1), Qt::white);
        painter.fillRect(QRectF(edge.right() - 1, edge.top(), 1, edge.height()), Qt::white);
    }

private:
    float inScale(qreal twips) const { return m_box.fromTwips(static_cast<float>(twips)); }

    PictureBox& m_box;
    Canvas& m_canvas;
    PicturePainter m_painter;
};

class PictureBoxView : public WidgetView {
public:
    PictureBoxView(PictureBox& box, PictureBoxSurface* surface)
        : WidgetView(box, surface)
        , m_box(box)
        , m_surface(surface)
    {
        m_box.filmSurface()->tell([this] {
            QMetaObject::invokeMethod(
                &m_turn, [this] { paintAnew(); }, Qt::QueuedConnection);
        });
    }
    ~PictureBoxView() override
    {
        m_box.filmSurface()->tell({});
        if (m_surface)
            m_surface->detach();
    }

    void apply(Change change) override
    {
        WidgetView::apply(change);
        if (change == Change::Content || change == Change::Appearance)
            m_surface->addDirty(m_surface->rect());
        if (change == Change::Hint)
            pointerChangedOn(m_box);
    }
    void pointerChanged() override { m_surface->updatePointer(); }

private:
    void paintAnew()
    {
        if (m_surface)
            m_surface->update();
    }

    PictureBox& m_box;
    QPointer<PictureBoxSurface> m_surface;
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
    m_film->clear();
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
    Width = parent().fromTwips(static_cast<float>(m_picture.width()) * TwipsPerPixel);
    Height = parent().fromTwips(static_cast<float>(m_picture.height()) * TwipsPerPixel);
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
    m_film->clear();
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
