#include "platform/qt/toolkit/RowList.h"
#include "platform/qt/toolkit/View.h"
#include "platform/toolkit/FileList.h"
#include "runtime/Failure.h"

namespace trovarium {

namespace {

class FileListView : public WidgetView, private RowSource {
public:
    explicit FileListView(FileList& files)
        : FileListView(files, new RowList(*this, files))
    {
    }
    ~FileListView() override
    {
        if (widget() != nullptr)
            m_list->detach();
    }

    void apply(Change change) override
    {
        if (change == Change::Content || change == Change::Enabled)
            m_list->follow();
        else if (change == Change::Appearance)
            m_list->setExtended(m_files.MultiSelect());
        else
            WidgetView::apply(change);
    }

private:
    FileListView(FileList& files, RowList* list)
        : WidgetView(files, list)
        , m_files(files)
        , m_list(list)
    {
        m_list->setExtended(files.MultiSelect());
    }

    // The program is told of a failure when it asks itself.
    int rowCount() const override
    {
        int count = 0;
        attempt([&] { count = m_files.ListCount(); });
        return count;
    }
    QString rowText(int row) const override { return toQString(m_files.List(row)); }
    bool isRowSelected(int row) const override { return m_files.Selected(row); }
    int currentRow() const override { return -1; }

    void rowsChosen(int, const std::vector<bool>& selected) override { m_files.chosen(selected); }
    void rowDoubleClicked(int) override { m_files.DblClick.raise(); }

    FileList& m_files;
    RowList* m_list;
};

} // namespace

std::unique_ptr<View> FileList::makeView()
{
    return std::make_unique<FileListView>(*this);
}

} // namespace trovarium
