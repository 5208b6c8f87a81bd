#pragma once

#include "platform/toolkit/Control.h"

namespace trovarium {

// A drawn line from the upper left to the lower right corner of its place.
class Line : public Control {
public:
    Line(Container* parent, const Plan& plan);

private:
    Color borderColor() const { return m_borderColor; }
    void setBorderColor(Color value);
    int borderWidth() const { return m_borderWidth; }
    void setBorderWidth(int pixels);

public:
    Property<&Line::borderColor, &Line::setBorderColor> BorderColor{this};
    Property<&Line::borderWidth, &Line::setBorderWidth> BorderWidth{this};

    std::unique_ptr<View> makeView() override;

private:
    Color m_borderColor = Black;
    int m_borderWidth = 1;
};

} // namespace trovarium
