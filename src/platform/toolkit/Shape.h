#pragma once

#include "platform/toolkit/Control.h"

#include <optional>

namespace trovarium {

// A drawn rectangle; the mouse goes through it.
class Shape : public Control {
public:
    Shape(Container* parent, const Plan& plan);

private:
    Color borderColor() const { return m_borderColor; }
    void setBorderColor(Color value);
    int borderWidth() const { return m_borderWidth; }
    void setBorderWidth(int pixels);
    std::optional<Color> fillColor() const { return m_fillColor; }
    void setFillColor(std::optional<Color> value);

public:
    Property<&Shape::borderColor, &Shape::setBorderColor> BorderColor{this};
    Property<&Shape::borderWidth, &Shape::setBorderWidth> BorderWidth{this};
    Property<&Shape::fillColor, &Shape::setFillColor> FillColor{this};

    std::unique_ptr<View> makeView() override;

private:
    Color m_borderColor = Black;
    int m_borderWidth = 1;
    std::optional<Color> m_fillColor;
};

} // namespace trovarium
