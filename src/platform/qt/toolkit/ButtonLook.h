#pragma once

#include "platform/qt/toolkit/View.h"

#include <QAbstractButton>

#include <optional>
#include <string>

namespace trovarium {

// Fills the button's ground with a colour, with text that can be read on it; none: what lies below shows.
void setBackColor(QAbstractButton& button, std::optional<Color> color);

// Shows a caption in a size that its button has room for beside `taken` pixels: fonts differ in width. Its access
// key is the button's unless a menu of the bar has it.
void showCaption(QAbstractButton& button, const std::string& caption, int taken);

// A control that the desktop shows as one of its buttons. Without a caption or a name of its own it is known to
// screen readers by its tool tip.
template <class Kind, class Widget>
class CaptionedView : public WidgetView {
public:
    void apply(Change change) override
    {
        switch (change) {
        case Change::Geometry:
            WidgetView::apply(change);
            [[fallthrough]];
        case Change::Text:
            showCaption(*m_button, m_kind.Caption(), m_taken);
            break;
        case Change::Content:
            showValue();
            break;
        case Change::Appearance:
            showLook();
            break;
        default:
            WidgetView::apply(change);
            if (m_button->text().isEmpty() && m_kind.AccessibleName().empty())
                m_button->setAccessibleName(toQString(m_kind.ToolTipText()));
        }
    }

protected:
    // `taken`: pixels of the width that the caption leaves free.
    CaptionedView(Kind& kind, int taken)
        : CaptionedView(kind, new Widget(surfaceWidget(kind)), taken)
    {
    }

    virtual void showValue() { }
    virtual void showLook() = 0;
    // Called by the constructor of the kind's own view.
    void showAll()
    {
        for (const Change change : {Change::Text, Change::Content, Change::Appearance, Change::Hint})
            apply(change);
    }

    Kind& kind() const { return m_kind; }
    Widget* button() const { return m_button; }

private:
    CaptionedView(Kind& kind, Widget* button, int taken)
        : WidgetView(kind, button)
        , m_kind(kind)
        , m_button(button)
        , m_taken(taken)
    {
    }

    Kind& m_kind;
    Widget* m_button;
    int m_taken;
};

} // namespace trovarium
