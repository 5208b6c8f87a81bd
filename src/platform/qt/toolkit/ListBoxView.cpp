#include "platform/files/FileService.h"
#include "platform/qt/toolkit/RowList.h"
#include "platform/qt/toolkit/View.h"
#include "platform/toolkit/ListBox.h"

namespace trovarium {

namespace {

class ListBoxView : public WidgetView, private RowSource {
public:
    explicit ListBoxView(ListBox& box)
        : ListBoxView(box, new RowList(*this, box))
    {
    }
    ~ListBoxView() override
    {
        if (widget() != nullptr)
            m_list->detach();
    }

    int rowAt(QPointF pixels) const { return m_list->rowAt(pixels); }

    void apply(Change change) override
    {
        switch (change) {
        case Change::Content:
        case Change::Enabled:
            m_list->follow();
            break;
        case Change::Appearance:
            m_list->setExtended(m_box.MultiSelect());
            m_list->follow();
            break;
        default:
            WidgetView::apply(change);
        }
    }

private:
    ListBoxView(ListBox& box, RowList* list)
        : WidgetView(box, list)
        , m_box(box)
        , m_list(list)
    {
        m_list->setExtended(box.MultiSelect());
    }

    int rowCount() const override { return m_box.ListCount(); }
    QString rowText(int row) const override { return toQString(readablePath(m_box.List(row))); }
    QString widestMark() const override { return toQString(m_box.Mark()); }
    bool isRowSelected(int row) const override { return m_box.Selected(row); }
    int currentRow() const override { return m_box.ListIndex(); }

    void rowsChosen(int current, const std::vector<bool>& selected) override { m_box.chosen(current, selected); }
    void rowDoubleClicked(int) override { m_box.DblClick.raise(); }
    void keyDown(int code, int shift) override { m_box.KeyDown.raise(code, shift); }
    void keyPressed(int ascii) override { m_box.KeyPress.raise(ascii); }
    void mouseReleased(int button, int shift, QPointF pixels) override
    {
        raiseAt(m_box.MouseUp, button, shift, pixels);
    }

    ListBox& m_box;
    RowList* m_list;
};

} // namespace

int ListBox::entryAt(float X, float Y) const
{
    const auto* shown = dynamic_cast<const ListBoxView*>(view());
    return shown != nullptr ? shown->rowAt(QPointF(X, Y) / TwipsPerPixel) : -1;
}

std::unique_ptr<View> ListBox::makeView()
{
    return std::make_unique<ListBoxView>(*this);
}

} // namespace trovarium
