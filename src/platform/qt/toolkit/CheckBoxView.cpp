#include "platform/qt/toolkit/ButtonLook.h"
#include "platform/qt/toolkit/DesktopState.h"
#include "platform/toolkit/CheckBox.h"

#include <QCheckBox>
#include <QSignalBlocker>

namespace trovarium {

namespace {

constexpr int MarkWidth = 20; // pixels in front of the caption

class CheckBoxView final : public CaptionedView<CheckBox, QCheckBox> {
public:
    explicit CheckBoxView(CheckBox& box)
        : CaptionedView(box, MarkWidth)
    {
        showAll();
        QObject::connect(button(), &QCheckBox::clicked, button(),
            [this](bool checked) { fromDesktop(kind(), [&] { kind().Value = checked ? 1 : 0; }); });
    }

private:
    void showValue() override
    {
        const QSignalBlocker quiet(button());
        button()->setChecked(kind().Value() != 0);
    }
    void showLook() override { setBackColor(*button(), kind().BackColor()); }
};

} // namespace

std::unique_ptr<View> CheckBox::makeView()
{
    return std::make_unique<CheckBoxView>(*this);
}

} // namespace trovarium
