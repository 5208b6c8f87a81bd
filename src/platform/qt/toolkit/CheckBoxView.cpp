#include "platform/qt/toolkit/ButtonLook.h"
#include "platform/qt/toolkit/DesktopState.h"
#include "platform/qt/toolkit/View.h"
#include "platform/toolkit/CheckBox.h"

#include <QCheckBox>
#include <QSignalBlocker>

namespace trovarium {

namespace {

constexpr int MarkWidth = 20; // pixels in front of the caption

class CheckBoxView : public WidgetView {
public:
    explicit CheckBoxView(CheckBox& box)
        : CheckBoxView(box, new QCheckBox(surfaceWidget(box)))
    {
    }

    void apply(Change change) override
    {
        switch (change) {
        case Change::Geometry:
            WidgetView::apply(change);
            [[fallthrough]];
        case Change::Text:
            showCaption(*m_check, m_box.Caption(), MarkWidth);
            break;
        case Change::Content: {
            const QSignalBlocker quiet(m_check);
            m_check->setChecked(m_box.Value() != 0);
            break;
        }
        case Change::Appearance:
            setBackColor(*m_check, m_box.BackColor());
            break;
        default:
            WidgetView::apply(change);
            nameByToolTip(*m_check, m_box);
        }
    }

private:
    CheckBoxView(CheckBox& box, QCheckBox* check)
        : WidgetView(box, check)
        , m_box(box)
        , m_check(check)
    {
        for (const Change change : {Change::Text, Change::Content, Change::Appearance, Change::Hint})
            CheckBoxView::apply(change);
        QObject::connect(m_check, &QCheckBox::clicked, m_check,
            [this](bool checked) { fromDesktop(m_box, [&] { m_box.Value = checked ? 1 : 0; }); });
    }

    CheckBox& m_box;
    QCheckBox* m_check;
};

} // namespace

std::unique_ptr<View> CheckBox::makeView()
{
    return std::make_unique<CheckBoxView>(*this);
}

} // namespace trovarium
