// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/toolkit/Colors.h"
#include "platform/toolkit/Drawn.h"

#include <optional>

namespace trovarium {

// A drawn rectangle; the mouse goes through it.
class Shape : public DrawnControl {
public:
    using DrawnControl::DrawnControl;

    Stored<&Shape::repaint, Color> BorderColor{this, Black};
    Stored<&Shape::repaint, int> BorderWidth{this, 1}; // pixels
    Stored<&Shape::repaint, std::optional<Color>> FillColor{this};

    void draw(QPainter& painter, const QRectF& place) override;
    bool takesMouse() const override { return false; }
    bool takesFocus() const override { return false; }
    Role accessibleRole() const override { return Role::Graphic; }
};

// A drawn line along the upper edge of its place, one pixel wide.
class Line : public DrawnControl {
public:
    using DrawnControl::DrawnControl;

    Stored<&Line::repaint, Color> BorderColor{this, Black};

    void draw(QPainter& painter, const QRectF& place) override;
    bool takesMouse() const override { return false; }
    bool takesFocus() const override { return false; }
    Role accessibleRole() const override { return Role::Separator; }

protected:
    QMargins margins() const override;
};

} // namespace trovarium
