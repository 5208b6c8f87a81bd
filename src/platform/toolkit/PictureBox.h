#pragma once

#include "platform/pictures/Picture.h"
#include "platform/toolkit/Colors.h"
#include "platform/toolkit/Control.h"

#include <memory>

namespace trovarium {

struct Canvas;
class FilmSurface;

// A box with a picture in the back, a canvas that keeps what is painted on it, and controls on top.
// Width and Height are in the parent's scale, ScaleWidth and ScaleHeight in its own. X and Y of its mouse
// events are in its own scale. Inside a border: children, canvas, ScaleWidth, ScaleHeight, X and Y.
class PictureBox : public Control, public Container {
public:
    PictureBox(Container* parent, const Plan& plan, ScaleMode scale = ScaleMode::Twips);
    ~PictureBox() override;

    Form& form() override { return Control::form(); }
    float edge() const override { return Border() ? 2 : 0; }

private:
    const trovarium::Picture& picture() const { return m_picture; }
    // Clears the canvas and shuts the film's surface; AutoSize takes its natural size.
    void setPicture(trovarium::Picture value);
    bool autoSize() const { return m_autoSize; }
    void setAutoSize(bool value);

public:
    float ScaleWidth() const { return fromTwips((parent().toPixels(Width()) - 2 * edge()) * TwipsPerPixel); }
    float ScaleHeight() const { return fromTwips((parent().toPixels(Height()) - 2 * edge()) * TwipsPerPixel); }
    Property<&PictureBox::picture, &PictureBox::setPicture> Picture{this};
    Property<&PictureBox::autoSize, &PictureBox::setAutoSize> AutoSize{this};
    Stored<Color> BackColor{this, Change::Appearance, PanelGrey};
    Stored<bool> Border{this, Change::Appearance}; // two pixels: a line, and one of the back colour
    Stored<Color> BorderColor{this, Change::Appearance, OutlineBlue};
    // Percent, 0 to 100, that make it a progress bar to screen readers; -1 for a box that is none.
    Stored<int> AccessibleValue{this, Change::Text, -1};

    // Paints `picture` stretched to the given place, in the box's scale; "Invalid picture" for an empty one.
    // Works without a window.
    void PaintPicture(const trovarium::Picture& picture, float x, float y, float width, float height);
    void Cls();
    // Where a film may show its frames, above all that has been painted; lives on while the film holds it.
    const std::shared_ptr<FilmSurface>& filmSurface() const { return m_film; }
    // Back colour, picture, all that has been painted and the film's frame, at the box's size in whole pixels.
    trovarium::Picture Image() const;

    std::unique_ptr<View> makeView() override;

    Event<int, int, float, float> MouseDown{this}; // Button, Shift, X, Y
    Event<int, int, float, float> MouseMove{this};
    Event<int, int, float, float> MouseUp{this};
    Event<> Click{this};
    Event<int, int> KeyDown{this}; // KeyCode, Shift

private:
    void takePictureSize();

    trovarium::Picture m_picture;
    std::unique_ptr<Canvas> m_canvas;
    std::shared_ptr<FilmSurface> m_film;
    bool m_autoSize = false;
};

} // namespace trovarium
