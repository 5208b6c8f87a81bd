#pragma once

#include "platform/toolkit/Component.h"
#include "platform/toolkit/Container.h"
#include "platform/toolkit/Event.h"
#include "platform/toolkit/Plan.h"
#include "platform/toolkit/Property.h"

#include <memory>
#include <optional>
#include <string>

namespace trovarium {

class View;

// A thing with a place on a form. Its values live here from construction on, with or without a window;
// a view shows them while the form is loaded. Left, Top, Width and Height are in the parent's scale and
// keep their fractions.
class Control : public Component {
public:
    Control(Container* parent, const Plan& plan);
    ~Control() override;

    Form& form() override { return m_parent->form(); }
    Container& parent() const { return *m_parent; }

    Stored<float> Left;
    Stored<float> Top;
    AtLeast<float, 0> Width;
    AtLeast<float, 0> Height;
    Stored<bool> Visible;
    Stored<bool> Enabled;
    Stored<std::string> ToolTipText;
    Stored<int> MousePointer{this, Change::Hint, DefaultPointer};
    Stored<std::string> AccessibleName{this, Change::Hint};
    // Whether a screen reader is to call it selected; empty where selection has no meaning.
    Stored<std::optional<bool>> AccessibleSelected{this, Change::Hint};

    void ZOrder();   // to the top among its siblings
    void Refresh();  // paints now
    void SetFocus(); // nothing where it can't take it; typing into a text replaces it
    // Tab leads here from a widget of another container.
    void TabBehind(const Control& before);
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
    void changed(Change change) override;

private:
    Container* m_parent;
    std::unique_ptr<View> m_view;
};

} // namespace trovarium
