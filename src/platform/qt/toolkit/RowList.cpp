#include "platform/qt/toolkit/RowList.h"

#include "platform/qt/toolkit/DesktopState.h"
#include "platform/qt/toolkit/View.h"

#include <QAbstractListModel>
#include <QItemSelectionModel>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QScrollBar>

#include <algorithm>

namespace trovarium {

// Texts are read from the source when they are painted; only the number of rows is kept, since Qt must be
// told before it changes.
class RowList::Rows : public QAbstractListModel {
public:
    explicit Rows(RowSource& source)
        : m_source(&source)
    {
    }

    void detach() { m_source = nullptr; }

    // Rows come and go at the end, so that the view keeps its place.
    void follow()
    {
        const int count = m_source->rowCount();
        if (count > m_count) {
            beginInsertRows({}, m_count, count - 1);
            m_count = count;
            endInsertRows();
        } else if (count < m_count) {
            beginRemoveRows({}, count, m_count - 1);
            m_count = count;
            endRemoveRows();
        }
        if (m_count > 0)
            emit dataChanged(index(0), index(m_count - 1));
    }

    int rowCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : m_count; }

    QVariant data(const QModelIndex& index, int role) const override
    {
        if (m_source == nullptr || index.row() >= m_source->rowCount())
            return {};
        if (role == Qt::DisplayRole)
            return m_source->rowText(index.row());
        if (role == Qt::DecorationRole) {
            const QIcon icon = m_source->rowIcon(index.row());
            return icon.isNull() ? QVariant() : QVariant(icon);
        }
        return {};
    }

private:
    RowSource* m_source;
    int m_count = 0;
};

RowList::RowList(RowSource& source, QWidget* parent)
    : QListView(parent)
    , m_source(&source)
    , m_rows(std::make_unique<Rows>(source))
    , m_update([this] { showSource(); })
{
    setModel(m_rows.get());
    setEditTriggers(NoEditTriggers);
    setUniformItemSizes(true);
    setTextElideMode(Qt::ElideMiddle);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setIconSize({14, 14});
    m_update.schedule();
}

RowList::~RowList()
{
    setModel(nullptr);
}

void RowList::setExtended(bool extended)
{
    setSelectionMode(extended ? ExtendedSelection : SingleSelection);
}

void RowList::detach()
{
    m_source = nullptr;
    m_rows->detach();
}

void RowList::mousePressEvent(QMouseEvent* event)
{
    if (!acceptsInput())
        return;
    QListView::mousePressEvent(event);
    report();
}

void RowList::mouseMoveEvent(QMouseEvent* event)
{
    if (!acceptsInput())
        return;
    QListView::mouseMoveEvent(event);
    if (event->buttons() != Qt::NoButton)
        report();
}

void RowList::mouseReleaseEvent(QMouseEvent* event)
{
    if (!acceptsInput())
        return;
    QListView::mouseReleaseEvent(event);
    report();
    if (m_source == nullptr)
        return;
    const int button = mouseButton(event->button());
    const int shift = shiftKeys(event->modifiers());
    const QPointF place = viewport()->mapTo(this, event->position());
    fromDesktop(m_source->sender(), [&] { m_source->mouseReleased(button, shift, place); });
}

void RowList::mouseDoubleClickEvent(QMouseEvent* event)
{
    if (!acceptsInput())
        return;
    QListView::mouseDoubleClickEvent(event);
    report();
    const QModelIndex index = indexAt(event->position().toPoint());
    if (m_source != nullptr && index.isValid() && event->button() == Qt::LeftButton)
        fromDesktop(m_source->sender(), [&] { m_source->rowDoubleClicked(index.row()); });
}

void RowList::keyPressEvent(QKeyEvent* event)
{
    if (!acceptsInput())
        return;
    fromDesktop(m_source->sender(), [&] { m_source->keyDown(keyCode(*event), shiftKeys(event->modifiers())); });
    if (m_source == nullptr)
        return;
    const int ascii = keyAscii(*event);
    if (ascii != 0)
        fromDesktop(m_source->sender(), [&] { m_source->keyPressed(ascii); });
    if (!acceptsInput())
        return;
    const int row = currentIndex().row();
    bool entered = false;
    if (ascii == 13 && row >= 0)
        fromDesktop(m_source->sender(), [&] { entered = m_source->rowEntered(row); });
    if (entered || !acceptsInput())
        return;
    QListView::keyPressEvent(event);
    report();
}

void RowList::paintEvent(QPaintEvent* event)
{
    if (m_source != nullptr)
        QListView::paintEvent(event);
}

// The user acts on what the list is, not on what it was.
bool RowList::acceptsInput()
{
    if (m_source == nullptr || !m_source->takesInput())
        return false;
    m_update.flush();
    return true;
}

// What the program changed meanwhile goes before what the user chose from the old rows.
void RowList::report()
{
    if (m_source == nullptr || m_update.isDue())
        return;
    const std::vector<bool> selected = selectedRows();
    const bool none = std::find(selected.begin(), selected.end(), true) == selected.end();
    // A press below the last row takes no choice away where there is always one.
    if (selectionMode() == SingleSelection && none) {
        m_update.schedule();
        return;
    }
    fromDesktop(m_source->sender(), [&] { m_source->rowsChosen(currentIndex().row(), selected); });
}

void RowList::showSource()
{
    if (m_source == nullptr)
        return;
    // Late too: a list that is closed only while a handler changes it keeps the focus.
    setEnabled(m_source->isEnabled());
    m_rows->follow();
    QItemSelection selection;
    const int count = m_source->rowCount();
    for (int row = 0; row < count; ++row) {
        if (!m_source->isRowSelected(row))
            continue;
        const int first = row;
        while (row + 1 < count && m_source->isRowSelected(row + 1))
            ++row;
        selection.append(QItemSelectionRange(m_rows->index(first), m_rows->index(row)));
    }
    if (selection != selectionModel()->selection())
        selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
    const int current = m_source->currentRow();
    if (current >= 0 && current != currentIndex().row())
        selectionModel()->setCurrentIndex(m_rows->index(current), QItemSelectionModel::NoUpdate);
}

std::vector<bool> RowList::selectedRows() const
{
    std::vector<bool> selected(static_cast<std::size_t>(m_rows->rowCount()), false);
    for (const QItemSelectionRange& range : selectionModel()->selection())
        for (int row = range.top(); row <= range.bottom(); ++row)
            selected[static_cast<std::size_t>(row)] = true;
    return selected;
}

} // namespace trovarium
