// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/pictures/Picture.h"
#include "platform/toolkit/Drawn.h"

#include <functional>
#include <memory>
#include <string>

namespace trovarium {

class PicturePainter;
class SharpThumbnail;

// A drawn picture that takes the mouse. With Stretch it fills its own size; without, the picture shows at its natural
// size in the middle of the width, at the top edge.
class Image : public DrawnControl {
public:
    Image(Container* parent, const Plan& plan);
    ~Image() override;

private:
    void showPicture();

public:
    Stored<&Image::showPicture, trovarium::Picture> Picture{this};
    Stored<&Image::showPicture, bool> Stretch{this};

    // Tells the path of the photograph whose thumbnail, no larger than this control, `Picture` is. Call it after
    // setting `Picture`, which forgets it. On a dense screen the photograph is decoded on another core and painted in
    // the thumbnail's place. The thumbnail stays where the photograph can't be read or has another shape.
    void sharpenFrom(std::function<std::string()> photograph);

    void draw(QPainter& painter, const QRectF& place) override;
    Role accessibleRole() const override { return takesFocus() ? Role::Button : Role::Graphic; }

protected:
    bool isOpaque() const override;
    void showOrHide() override;

private:
    std::unique_ptr<PicturePainter> m_painter;
    std::shared_ptr<SharpThumbnail> m_sharp; // null unless there is a photograph to take it from
};

// A drawn button whose face is its picture, stretched to its size. A label that lies over it gives it a name for screen
// readers.
class PictureButton : public DrawnControl {
public:
    PictureButton(Container* parent, const Plan& plan);
    ~PictureButton() override;

    Stored<&PictureButton::repaint, trovarium::Picture> Picture{this};

    void draw(QPainter& painter, const QRectF& place) override;
    Role accessibleRole() const override { return Role::Button; }
    std::string accessibleName() const override;
    bool isPictureButton() const override { return true; }

private:
    std::unique_ptr<PicturePainter> m_painter;
};

} // namespace trovarium
