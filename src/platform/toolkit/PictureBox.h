// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/pictures/Picture.h"
#include "platform/toolkit/Frame.h"

#include <memory>

namespace trovarium {

class FilmSurface;
class PicturePainter;

// A box with a picture stretched over it, and controls on top. Width and Height are in the parent's scale, ScaleWidth
// and ScaleHeight in its own. Children, the picture, ScaleWidth, ScaleHeight and mouse positions count from inside the
// border.
class PictureBox : public DrawnContainer {
public:
    PictureBox(Container* parent, const Plan& plan, ScaleMode scale = ScaleMode::Twips);
    ~PictureBox() override;

    float edge() const override { return Border() ? 2 : 0; }

private:
    const trovarium::Picture& picture() const { return m_picture; }
    // Shuts the film's surface. With AutoSize the box takes the picture's natural size.
    void setPicture(trovarium::Picture value);
    void takePictureSize();
    void showBorder();
    void tellValue();

public:
    float ScaleWidth() const { return fromTwips((parent().toPixels(Width()) - 2 * edge()) * TwipsPerPixel); }
    float ScaleHeight() const { return fromTwips((parent().toPixels(Height()) - 2 * edge()) * TwipsPerPixel); }
    Property<&PictureBox::picture, &PictureBox::setPicture> Picture{this};
    Stored<&PictureBox::takePictureSize, bool> AutoSize{this};
    Stored<&PictureBox::repaint, Color> BackColor{this, PanelGray};
    Stored<&PictureBox::showBorder, bool> Border{this}; // two pixels: a line, and one of the back color
    Stored<&PictureBox::repaint, Color> BorderColor{this, OutlineBlue};
    // Percent, 0 to 100, that make it a progress bar to screen readers; -1 for a box that is none.
    Stored<&PictureBox::tellValue, int> AccessibleValue{this, -1};

    // Where a film may show its frames, above the picture; lives on while the film holds it.
    const std::shared_ptr<FilmSurface>& filmSurface() const { return m_film; }
    // Back color, picture and the film's frame, at the box's size in whole pixels. Works without a window.
    trovarium::Picture Image() const;

    Event<int, int> KeyDown{this}; // KeyCode, Shift

    void draw(QPainter& painter, const QRectF& place) override;
    bool takesFocus() const override { return MouseDown.isWired() || Click.isWired() || KeyDown.isWired(); }
    QPointF handlerPlace(const QPointF& pixels) const override;
    bool keyDown(int code, int shift) override;
    Role accessibleRole() const override { return takesFocus() ? Role::Button : Role::Pane; }
    std::string accessibleName() const override;
    int percent() const override { return AccessibleValue(); }

private:
    void paintAll(QPainter& painter, const QRectF& place) const;

    trovarium::Picture m_picture;
    std::unique_ptr<PicturePainter> m_painter; // of the picture and of films
    std::shared_ptr<FilmSurface> m_film;
};

} // namespace trovarium
