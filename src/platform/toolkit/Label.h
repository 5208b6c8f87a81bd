#pragma once

#include "platform/toolkit/Control.h"

#include <optional>
#include <string>

namespace trovarium {

// A drawn text; "&&" shows as one ampersand. With AutoSize it grows about its alignment, so that a
// centred one keeps its centre.
class Label : public Control {
public:
    Label(Container* parent, const Plan& plan);

private:
    const std::string& caption() const { return m_caption; }
    void setCaption(std::string value);
    trovarium::Alignment alignment() const { return m_alignment; }
    void setAlignment(trovarium::Alignment value);
    bool autoSize() const { return m_autoSize; }
    void setAutoSize(bool value);
    Color foreColor() const { return m_foreColor; }
    void setForeColor(Color value);
    std::optional<Color> backColor() const { return m_backColor; }
    void setBackColor(std::optional<Color> value);
    float fontSize() const { return m_fontSize; }
    void setFontSize(float pixels);
    bool bold() const { return m_bold; }
    void setBold(bool value);
    bool wordWrap() const { return m_wordWrap; }
    void setWordWrap(bool value);
    bool shadow() const { return m_shadow; }
    void setShadow(bool value);

public:
    Property<&Label::caption, &Label::setCaption> Caption{this};
    Property<&Label::alignment, &Label::setAlignment> Alignment{this};
    Property<&Label::autoSize, &Label::setAutoSize> AutoSize{this};
    Property<&Label::foreColor, &Label::setForeColor> ForeColor{this};
    Property<&Label::backColor, &Label::setBackColor> BackColor{this}; // none: what lies below shows
    Property<&Label::fontSize, &Label::setFontSize> FontSize{this};    // pixels of the plan
    Property<&Label::bold, &Label::setBold> Bold{this};
    Property<&Label::wordWrap, &Label::setWordWrap> WordWrap{this}; // otherwise a long text ends in "…"
    Property<&Label::shadow, &Label::setShadow> Shadow{this};       // a dark halo, legible on any picture

    Event<int, int, float, float> MouseDown{this}; // Button, Shift, X, Y in twips
    Event<int, int, float, float> MouseMove{this};
    Event<> Click{this};

    std::unique_ptr<View> makeView() override;

private:
    void fit(); // AutoSize

    std::string m_caption;
    trovarium::Alignment m_alignment = trovarium::Alignment::Left;
    bool m_autoSize = false;
    Color m_foreColor = Black;
    std::optional<Color> m_backColor;
    float m_fontSize = 12;
    bool m_bold = false;
    bool m_wordWrap = false;
    bool m_shadow = false;
};

} // namespace trovarium
