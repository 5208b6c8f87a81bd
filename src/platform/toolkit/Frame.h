// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/toolkit/Colors.h"
#include "platform/toolkit/Drawn.h"

#include <string>

namespace trovarium {

// A drawn control that others lie on.
class DrawnContainer : public DrawnControl, public Container {
public:
    DrawnContainer(Container* parent, const Plan& plan, ScaleMode scale);

    Form& form() override { return Control::form(); }
    Container* container() override { return this; }
    QWidget* client() const override { return widget(); }
    bool showsControls() const override { return isShown(); }
    bool takesInput() const override { return Control::takesInput(); }
    bool isPainted() const override { return true; }
    bool hasControls() const override { return true; }
    void SetFocus() override; // for what is drawn on it and had it last, as soon as that shows; or itself, or the first
    void letGo() override { }

protected:
    // As those of the library's widgets: what lies on it is hidden or disabled with it.
    void showOrHide() override;
    void enableOrDisable() override;
};

// A panel with a caption in its upper left corner when it has one. Its children's places are in twips.
class Frame : public DrawnContainer {
public:
    Frame(Container* parent, const Plan& plan);

private:
    void showLook();

public:
    Stored<&Frame::showLook, std::string> Caption;
    Stored<&Frame::showLook, Color> BackColor{this, PanelBlue};

    void draw(QPainter& painter, const QRectF& place) override;
    bool takesFocus() const override { return false; }
    std::string accessibleName() const override { return AccessibleName().empty() ? Caption() : AccessibleName(); }
};

} // namespace trovarium
