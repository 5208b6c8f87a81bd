#include "platform/qt/toolkit/RowList.h"
#include "platform/qt/toolkit/View.h"
#include "platform/toolkit/Desktop.h"
#include "platform/toolkit/FolderList.h"
#include "platform/toolkit/FolderPath.h"
#include "platform/toolkit/Prompts.h"
#include "runtime/Failure.h"

#include <QStyle>

#include <algorithm>

namespace trovarium {

namespace {

constexpr int Indent = 12; // pixels to a level

class FolderListView : public WidgetView, private RowSource {
public:
    explicit FolderListView(FolderList& folders)
        : FolderListView(folders, new RowList(*this, folders))
    {
    }
    ~FolderListView() override
    {
        if (widget() != nullptr)
            m_list->detach();
    }

    void apply(Change change) override
    {
        if (change != Change::Content) {
            WidgetView::apply(change);
            return;
        }
        m_current = m_folders.depth() - 1;
        m_list->follow();
    }

private:
    FolderListView(FolderList& folders, RowList* list)
        : WidgetView(folders, list)
        , m_folders(folders)
        , m_list(list)
        , m_current(folders.depth() - 1)
    {
        m_list->setExtended(false);
    }

    // The program is told of a failure when it asks itself.
    int rowCount() const override
    {
        int count = 0;
        attempt([&] { count = m_folders.ListCount(); });
        return count;
    }
    QString rowText(int row) const override { return toQString(folderName(m_folders.rowPath(row))); }
    int rowIndent(int row) const override { return std::min(row, m_folders.depth()) * Indent; }
    QIcon rowIcon(int row) const override
    {
        return m_list->style()->standardIcon(
            row < m_folders.depth() ? QStyle::SP_DirOpenIcon : QStyle::SP_DirClosedIcon);
    }
    bool isRowSelected(int row) const override { return row == m_current; }
    int currentRow() const override { return m_current; }

    void rowsChosen(int current, const std::vector<bool>&) override { m_current = current; }
    void rowDoubleClicked(int row) override { rowEntered(row); }
    // One that can't be entered tells why, and the list stays where it is.
    bool rowEntered(int row) override
    {
        // The path that is set may be the row's own, and its text goes with the rows.
        const auto failure = attempt([&] { m_folders.Path = std::string(m_folders.rowPath(row)); });
        if (failure)
            m_folders.desktop().prompts().messageBox(
                "Error: " + std::string(failure->description()), Message::Error, "");
        return true;
    }

    FolderList& m_folders;
    RowList* m_list;
    int m_current;
};

} // namespace

std::unique_ptr<View> FolderList::makeView()
{
    return std::make_unique<FolderListView>(*this);
}

} // namespace trovarium
