#pragma once

#include <QScrollBar>

namespace trovarium {

// The widget of a scrollbar, which is never disabled itself: that would break off a held arrow and hand on the focus
// each time a handler closes the bar for a moment.
class OpenOrClosedBar : public QScrollBar {
public:
    using QScrollBar::QScrollBar;

    virtual bool takesInput() const = 0;
};

} // namespace trovarium
