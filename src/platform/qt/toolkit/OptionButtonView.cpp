#include "platform/qt/toolkit/ButtonLook.h"
#include "platform/qt/toolkit/DesktopState.h"
#include "platform/toolkit/OptionButton.h"

#include <QRadioButton>
#include <QSignalBlocker>

namespace trovarium {

namespace {

constexpr int MarkWidth = 20; // pixels in front of the caption

class OptionButtonView final : public CaptionedView<OptionButton, QRadioButton> {
public:
    explicit OptionButtonView(OptionButton& option)
        : CaptionedView(option, MarkWidth)
    {
        showAll();
        QObject::connect(
            button(), &QRadioButton::clicked, button(), [this] { fromDesktop(kind(), [&] { kind().Value = true; }); });
    }

private:
    // Exclusive for the arrow keys' sake; a button that is alone in its group couldn't be cleared so.
    void showValue() override
    {
        const QSignalBlocker quiet(button());
        button()->setAutoExclusive(false);
        button()->setChecked(kind().Value());
        button()->setAutoExclusive(true);
    }
    void showLook() override { setBackColor(*button(), kind().BackColor()); }
};

} // namespace

std::unique_ptr<View> OptionButton::makeView()
{
    return std::make_unique<OptionButtonView>(*this);
}

} // namespace trovarium
