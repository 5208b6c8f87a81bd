// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/toolkit/Control.h"

namespace trovarium {

enum class Orientation { Horizontal, Vertical };

// Change comes with every real change of Value, from code and by clamping too, inside the statement; after
// a drag of the thumb once, on release. Scroll comes from the user alone: while dragging, and behind Change
// for an arrow, the trough, the wheel and a key, which all move by 1. Enabled gates input and doesn't break off
// a held arrow.
class ScrollBar : public Control {
public:
    ScrollBar(Container* parent, const Plan& plan, Orientation orientation);

private:
    int value() const { return m_value; }
    void setValue(int value); // "Invalid property value" outside Min and Max
    void showRange();         // where an end has moved past it, Value moves along

protected:
    void enableOrDisable() override;

public:
    Stored<&ScrollBar::showRange, int> Min{this, 0};
    Stored<&ScrollBar::showRange, int> Max{this, 32767};
    Property<&ScrollBar::value, &ScrollBar::setValue> Value{this};

    // Steps as the user makes them in the trough: nothing while disabled or hidden.
    void page(int steps);

    Event<> Change{this};
    Event<> Scroll{this};

private:
    class Bar;

    void dragged(int value);  // while the thumb moves
    void released(int value); // by arrow, trough, or the end of a drag
    void settle(int value);
    void showValue();
    int upperEnd() const; // Max, or Min when that is above it

    Bar& m_bar;
    int m_value = 0;
    int m_settledValue = 0; // as the last Change left it; Value runs ahead while the user drags
};

class VScroll : public ScrollBar {
public:
    VScroll(Container* parent, const Plan& plan);
};

class HScroll : public ScrollBar {
public:
    HScroll(Container* parent, const Plan& plan)
        : ScrollBar(parent, plan, Orientation::Horizontal)
    {
    }
};

} // namespace trovarium
