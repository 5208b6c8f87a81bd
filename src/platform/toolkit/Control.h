#pragma once

#include "platform/toolkit/Component.h"
#include "platform/toolkit/Container.h"
#include "platform/toolkit/Event.h"
#include "platform/toolkit/Plan.h"
#include "platform/toolkit/Property.h"

#include <memory>
#include <string>

namespace trovarium {

class View;

// What changed in a control, for the view that shows it. Hint: pointer, tool tip or accessible name.
enum class Change { Geometry, Visible, Enabled, Text, Appearance, Content, Hint, Order };

// A thing with a place on a form. Its values live here from construction on, with or without a window;
// a view shows them while the form is loaded. Left, Top, Width and Height are in the parent's scale and
// keep their fractions.
class Control : public Component {
public:
    Control(Container* parent, const Plan& plan);
    ~Control() override;

    Form& form() override { return m_parent->form(); }
    Container& parent() const { return *m_parent; }

private:
    float left() const { return m_left; }
    float top() const { return m_top; }
    float width() const { return m_width; }
    float height() const { return m_height; }
    bool visible() const { return m_visible; }
    bool enabled() const { return m_enabled; }
    const std::string& toolTipText() const { return m_toolTipText; }
    int mousePointer() const { return m_mousePointer; }
    const std::string& accessibleName() const { return m_accessibleName; }
    void setLeft(float value);
    void setTop(float value);
    void setWidth(float value);
    void setHeight(float value);
    void setVisible(bool value);
    void setEnabled(bool value);
    void setToolTipText(std::string value);
    void setMousePointer(int value);
    void setAccessibleName(std::string value);

public:
    Property<&Control::left, &Control::setLeft> Left{this};
    Property<&Control::top, &Control::setTop> Top{this};
    Property<&Control::width, &Control::setWidth> Width{this};
    Property<&Control::height, &Control::setHeight> Height{this};
    Property<&Control::visible, &Control::setVisible> Visible{this};
    Property<&Control::enabled, &Control::setEnabled> Enabled{this};
    Property<&Control::toolTipText, &Control::setToolTipText> ToolTipText{this};
    Property<&Control::mousePointer, &Control::setMousePointer> MousePointer{this};
    Property<&Control::accessibleName, &Control::setAccessibleName> AccessibleName{this};

    void ZOrder();   // to the top among its siblings
    void Refresh();  // paints now
    void SetFocus(); // nothing where it can't take it
    bool hasFocus() const;

    // Makes the view when the form gets its window, and drops it with the window.
    virtual std::unique_ptr<View> makeView() = 0;
    void attachView();
    void detachView();
    View* view() const { return m_view.get(); }

    // Visible and enabled, and all that it lies on too.
    bool isShown() const;
    bool takesInput() const;

protected:
    void changed(Change change);

private:
    Container* m_parent;
    float m_left;
    float m_top;
    float m_width;
    float m_height;
    bool m_visible;
    bool m_enabled;
    std::string m_toolTipText;
    int m_mousePointer = DefaultPointer;
    std::string m_accessibleName;
    std::unique_ptr<View> m_view;
};

} // namespace trovarium
