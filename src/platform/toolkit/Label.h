// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/toolkit/Drawn.h"

#include <optional>
#include <string>

namespace trovarium {

// Where a text that is too long is cut off.
enum class Elision { End, Start, Middle };

// A drawn text, as it stands. With AutoSize it grows about its alignment, so that a centered one keeps its center. One
// that nobody listens to lets the mouse through to what it lies on.
class Label : public DrawnControl {
public:
    Label(Container* parent, const Plan& plan);

private:
    void fit();     // AutoSize
    void restyle(); // what lies beyond the place has another size

public:
    Stored<&Label::fit, std::string> Caption;
    Stored<&Label::repaint, trovarium::Alignment> Alignment{this, trovarium::Alignment::Left};
    Stored<&Label::fit, bool> AutoSize{this};
    Stored<&Label::fit, float> MostWidth{this};                    // of AutoSize; 0: no limit
    Stored<&Label::repaint, std::optional<Color>> ForeColor{this}; // none: that of what it lies on
    Stored<&Label::repaint, std::optional<Color>> BackColor{this}; // none: what lies below shows
    Stored<&Label::restyle, float> FontSize{this, 12.0F};          // pixels of the plan
    Stored<&Label::restyle, bool> Bold{this};
    Stored<&Label::restyle, bool> WordWrap{this}; // otherwise a long text gets a "…"
    Stored<&Label::restyle, bool> Shadow{this};   // a dark halo, legible on any picture
    Stored<&Label::fit, bool> UseMnemonic{this};  // "&" marks an access key, "&&" shows as one
    Stored<&Label::repaint, bool> Raised{this};   // looks like a push button, for one that is clicked
    // A text that is too long is drawn narrower before it is cut.
    Stored<&Label::repaint, bool> NarrowToFit{this};
    Stored<&Label::repaint, trovarium::Elision> Elision{this, trovarium::Elision::End};

    void draw(QPainter& painter, const QRectF& place) override;
    bool takesMouse() const override { return listens() || !ToolTipText().empty(); }
    void followInput() override;
    bool takesFocus() const override { return Click.isWired() && buttonBeneath() == nullptr; }
    void pressed(bool down) override;
    Role accessibleRole() const override { return takesFocus() ? Role::Button : Role::Text; }
    std::string accessibleName() const override;

protected:
    QMargins margins() const override;

private:
    bool listens() const { return MouseDown.isWired() || MouseMove.isWired() || Click.isWired(); }
    const Control* buttonBeneath() const;
    void paintButton(QPainter& painter, const QRectF& place);
    void paintText(QPainter& painter, const QRectF& place);

    bool m_isDown = false; // the mouse holds it
};

} // namespace trovarium
