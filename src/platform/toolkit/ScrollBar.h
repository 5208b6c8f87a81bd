#pragma once

#include "platform/toolkit/Control.h"

namespace trovarium {

enum class Orientation { Horizontal, Vertical };

// Change comes with every real change of Value, from code and by clamping too, inside the statement; after
// a drag of the thumb once, on release. Scroll comes while the user drags. Enabled gates input and doesn't
// break off a held arrow.
class ScrollBar : public Control {
public:
    ScrollBar(Container* parent, const Plan& plan, Orientation orientation);

private:
    int minimum() const { return m_min; }
    void setMinimum(int value);
    int maximum() const { return m_max; }
    void setMaximum(int value);
    int value() const { return m_value; }
    void setValue(int value); // "Invalid property value" outside Min and Max
    int smallChange() const { return m_smallChange; }
    void setSmallChange(int value);
    int largeChange() const { return m_largeChange; }
    void setLargeChange(int value);

public:
    Property<&ScrollBar::minimum, &ScrollBar::setMinimum> Min{this};
    Property<&ScrollBar::maximum, &ScrollBar::setMaximum> Max{this};
    Property<&ScrollBar::value, &ScrollBar::setValue> Value{this};
    Property<&ScrollBar::smallChange, &ScrollBar::setSmallChange> SmallChange{this};
    Property<&ScrollBar::largeChange, &ScrollBar::setLargeChange> LargeChange{this};

    Orientation orientation() const { return m_orientation; }

    // Steps as the user makes them in the trough: nothing while disabled or hidden.
    void page(int steps);

    Event<> Change{this};
    Event<> Scroll{this};

    std::unique_ptr<View> makeView() override;

    void dragged(int value);  // while the thumb moves
    void released(int value); // by arrow, trough, or the end of a drag

private:
    int upperEnd() const; // Max, or Min when that is above it
    void clamp();
    void settle(int value);

    Orientation m_orientation;
    int m_min = 0;
    int m_max = 32767;
    int m_value = 0;
    int m_settledValue = 0; // as the last Change left it; Value runs ahead while the user drags
    int m_smallChange = 1;
    int m_largeChange = 1;
};

class VScroll : public ScrollBar {
public:
    VScroll(Container* parent, const Plan& plan)
        : ScrollBar(parent, plan, Orientation::Vertical)
    {
    }
};

class HScroll : public ScrollBar {
public:
    HScroll(Container* parent, const Plan& plan)
        : ScrollBar(parent, plan, Orientation::Horizontal)
    {
    }
};

} // namespace trovarium
