#include "platform/qt/toolkit/ButtonLook.h"
#include "platform/qt/toolkit/DesktopState.h"
#include "platform/qt/toolkit/View.h"
#include "platform/toolkit/OptionButton.h"

#include <QRadioButton>
#include <QSignalBlocker>

namespace trovarium {

namespace {

constexpr int MarkWidth = 20; // pixels in front of the caption

class OptionButtonView : public WidgetView {
public:
    explicit OptionButtonView(OptionButton& option)
        : OptionButtonView(option, new QRadioButton(surfaceWidget(option)))
    {
    }

    void apply(Change change) override
    {
        switch (change) {
        case Change::Geometry:
            WidgetView::apply(change);
            [[fallthrough]];
        case Change::Text:
            showCaption(*m_radio, m_option.Caption(), MarkWidth);
            break;
        case Change::Content:
            showValue();
            break;
        case Change::Appearance:
            setBackColor(*m_radio, m_option.BackColor());
            break;
        default:
            WidgetView::apply(change);
            nameByToolTip(*m_radio, m_option);
        }
    }

private:
    OptionButtonView(OptionButton& option, QRadioButton* radio)
        : WidgetView(option, radio)
        , m_option(option)
        , m_radio(radio)
    {
        for (const Change change : {Change::Text, Change::Content, Change::Appearance, Change::Hint})
            OptionButtonView::apply(change);
        QObject::connect(m_radio, &QRadioButton::clicked, m_radio,
            [this] { fromDesktop(m_option, [&] { m_option.Value = true; }); });
    }

    // Exclusive for the arrow keys' sake; a button that is alone in its group couldn't be cleared so.
    void showValue()
    {
        const QSignalBlocker quiet(m_radio);
        m_radio->setAutoExclusive(false);
        m_radio->setChecked(m_option.Value());
        m_radio->setAutoExclusive(true);
    }

    OptionButton& m_option;
    QRadioButton* m_radio;
};

} // namespace

std::unique_ptr<View> OptionButton::makeView()
{
    return std::make_unique<OptionButtonView>(*this);
}

} // namespace trovarium
