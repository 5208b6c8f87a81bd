// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/toolkit/RowList.h"

#include "platform/toolkit/DesktopState.h"
#include "platform/toolkit/ListBox.h"
#include "platform/toolkit/QtValues.h"

#include <QAbstractListModel>
#include <QAccessible>
#include <QItemSelectionModel>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPointer>
#include <QScopedValueRollback>
#include <QStyle>
#include <QStyledItemDelegate>

#include <algorithm>
#include <utility>

namespace trovarium {

namespace {

// Pixels.
constexpr int TextEdge = 3; // as the style leaves them beside a row's text
constexpr int Indent = 12;  // to a level of folders
// A long list takes a millisecond or two to be laid out anew.
constexpr int LateMilliseconds = 40;

} // namespace

// Texts are read from the control when they are painted; only the number of rows is kept, since the library must be
// told before it changes.
class RowList::Rows : public QAbstractListModel {
public:
    static constexpr int IndentRole = Qt::UserRole;
    static constexpr int MarkRole = Qt::UserRole + 1;

    explicit Rows(RowsControl& control)
        : m_control(control)
    {
    }

    // Rows come and go at the end, so that the view keeps its place.
    void follow(int count)
    {
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
        const int row = index.row();
        if (row >= m_control.rowCount())
            return {};
        const int level = m_control.rowLevel(row);
        switch (role) {
        case Qt::DisplayRole:
            return toQString(m_control.rowText(row));
        case Qt::DecorationRole:
            return level == RowsControl::NoFolder ? QVariant() : folderIcon(m_control.isOpenFolder(row));
        case IndentRole:
            return std::max(level, 0) * Indent;
        case MarkRole:
            return toQString(m_control.widestMark());
        default:
            return {};
        }
    }

private:
    QIcon folderIcon(bool isOpen) const
    {
        return m_control.widget()->style()->standardIcon(isOpen ? QStyle::SP_DirOpenIcon : QStyle::SP_DirClosedIcon);
    }

    RowsControl& m_control;
    int m_count = 0;
};

class RowList::Delegate : public QStyledItemDelegate {
public:
    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        QStyledItemDelegate::paint(painter, option, index);
        const QString widest = index.data(Rows::MarkRole).toString();
        if (!widest.isEmpty())
            paintMarked(*painter, option, index.data().toString(), widest);
    }

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override
    {
        QStyledItemDelegate::initStyleOption(option, index);
        option->rect.adjust(index.data(Rows::IndentRole).toInt(), 0, 0, 0);
        if (!index.data(Rows::MarkRole).toString().isEmpty())
            option->text.clear(); // which is painted part by part
    }

private:
    // The brackets are aligned in all rows, whatever mark is between them.
    static void paintMarked(
        QPainter& painter, const QStyleOptionViewItem& option, const QString& text, const QString& widest)
    {
        const qsizetype length = widest.size();
        QRect behind = option.rect.adjusted(TextEdge, 0, -TextEdge, 0);
        QRect mark = behind;
        mark.setWidth(option.fontMetrics.horizontalAdvance(widest));
        behind.setLeft(mark.right() + 1);
        const bool chosen = option.state.testFlag(QStyle::State_Selected);
        const auto group = option.state.testFlag(QStyle::State_Enabled) ? QPalette::Active : QPalette::Disabled;
        painter.save();
        painter.setFont(option.font);
        painter.setPen(option.palette.color(group, chosen ? QPalette::HighlightedText : QPalette::Text));
        painter.drawText(mark, Qt::AlignVCenter | Qt::AlignLeft, text.left(1));
        painter.drawText(mark, Qt::AlignVCenter | Qt::AlignHCenter, text.mid(1, length - 2));
        painter.drawText(mark, Qt::AlignVCenter | Qt::AlignRight, text.mid(length - 1, 1));
        painter.drawText(
            behind, Qt::AlignVCenter, option.fontMetrics.elidedText(text.mid(length), Qt::ElideMiddle, behind.width()));
        painter.restore();
    }
};

// The control may be half made.
RowList::RowList(RowsControl& control, QWidget* parent)
    : QListView(parent)
    , m_control(control)
    , m_rows(std::make_unique<Rows>(control))
    , m_delegate(std::make_unique<Delegate>())
{
    setModel(m_rows.get());
    setItemDelegate(m_delegate.get());
    setEditTriggers(NoEditTriggers);
    setUniformItemSizes(true);
    setTextElideMode(Qt::ElideMiddle);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setIconSize({14, 14});
}

RowList::~RowList()
{
    m_showsRows = true;
    setModel(nullptr);
}

void RowList::follow()
{
    if (m_late.isActive())
        return;
    const bool isPaced = m_control.desktop().state().pace == Pace::Paced;
    m_late.start(isPaced ? LateMilliseconds : 0, this);
}

void RowList::timerEvent(QTimerEvent* event)
{
    if (event->timerId() == m_late.timerId())
        showRows();
    else
        QListView::timerEvent(event);
}

int RowList::rowAt(QPointF pixels) const
{
    return indexAt(viewport()->mapFrom(this, pixels).toPoint()).row();
}

void RowList::showEvent(QShowEvent* event)
{
    QListView::showEvent(event);
    showRows();
}

// Shows whole rows only: what is left of the height stays free below them.
void RowList::updateGeometries()
{
    const int rowHeight = sizeHintForRow(0);
    const int room = viewport()->height() + viewportMargins().bottom();
    setViewportMargins(0, 0, 0, rowHeight > 0 ? room % rowHeight : 0);
    QListView::updateGeometries();
}

// All rows are of one height and read when they are painted: other texts need no other layout. The library's way works
// out the place of each row, which only screen readers are worth.
void RowList::dataChanged(const QModelIndex& first, const QModelIndex& last, const QList<int>& roles)
{
    if (QAccessible::isActive())
        QAbstractItemView::dataChanged(first, last, roles); // NOLINT(bugprone-parent-virtual-call)
    viewport()->update();
}

// Mouse and keys report at once. An assistive technology chooses without them.
void RowList::selectionChanged(const QItemSelection& selected, const QItemSelection& deselected)
{
    QListView::selectionChanged(selected, deselected);
    if (!isVisible() || m_showsRows || std::exchange(m_isReportDue, true))
        return;
    m_control.desktop().state().invokeLater([list = QPointer(this)] {
        if (list && std::exchange(list->m_isReportDue, false))
            list->acceptsInput() ? list->report() : list->follow();
    });
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
    const int button = mouseButtons(event->button());
    const int shift = shiftKeys(event->modifiers());
    const QPointF place = viewport()->mapTo(this, event->position()) * TwipsPerPixel;
    deliverEvent(m_control,
        [&] { m_control.mouseReleased(button, shift, static_cast<float>(place.x()), static_cast<float>(place.y())); });
}

void RowList::mouseDoubleClickEvent(QMouseEvent* event)
{
    if (!acceptsInput())
        return;
    QListView::mouseDoubleClickEvent(event);
    report();
    const QModelIndex index = indexAt(event->position().toPoint());
    if (index.isValid() && event->button() == Qt::LeftButton)
        deliverEvent(m_control, [&] { m_control.rowDoubleClicked(index.row()); });
}

void RowList::keyPressEvent(QKeyEvent* event)
{
    if (!acceptsInput())
        return;
    deliverEvent(m_control, [&] { m_control.keyDown(keyCode(*event), shiftKeys(event->modifiers())); });
    const int ascii = keyAscii(*event);
    if (ascii != 0)
        deliverEvent(m_control, [&] { m_control.keyPressed(ascii); });
    if (!acceptsInput())
        return;
    const int row = currentIndex().row();
    bool entered = false;
    if (ascii == 13 && row >= 0)
        deliverEvent(m_control, [&] { entered = m_control.rowEntered(row); });
    if (entered || !acceptsInput())
        return;
    QListView::keyPressEvent(event);
    report();
}

// Applies delayed changes first, so that the user acts on the rows as they are now.
bool RowList::acceptsInput()
{
    if (!m_control.takesInput())
        return false;
    if (m_late.isActive())
        showRows();
    return true;
}

// If the program has changed the rows, a choice among the old ones is dropped.
void RowList::report()
{
    m_isReportDue = false;
    if (m_late.isActive())
        return;
    const std::vector<bool> selected = selectedRows();
    const auto first = std::find(selected.begin(), selected.end(), true);
    const bool none = first == selected.end();
    // In a single-selection list a press below the last row doesn't clear the selection.
    if (selectionMode() == SingleSelection && none) {
        follow();
        return;
    }
    const bool isOne = selectionMode() == SingleSelection;
    const int current = isOne ? static_cast<int>(first - selected.begin()) : currentIndex().row();
    deliverEvent(m_control, [&] { m_control.rowsChosen(current, selected); });
}

void RowList::showRows()
{
    m_late.stop();
    // Delayed too, so that a list keeps the focus if it is disabled only while a handler changes it.
    setEnabled(m_control.Enabled());
    if (!isVisible())
        return;
    const QScopedValueRollback whileShowing(m_showsRows, true);
    m_rows->follow(m_control.rowCount());
    showSelection();
    const int current = m_control.currentRow();
    if (current >= 0 && current != currentIndex().row())
        selectionModel()->setCurrentIndex(m_rows->index(current), QItemSelectionModel::NoUpdate);
}

void RowList::showSelection()
{
    const int count = m_rows->rowCount();
    std::vector<bool> selected(static_cast<std::size_t>(count), false);
    for (int row = 0; row < count; ++row)
        selected[static_cast<std::size_t>(row)] = m_control.isRowSelected(row);
    if (selected == selectedRows())
        return;
    QItemSelection selection;
    for (auto first = selected.begin(); first != selected.end();) {
        first = std::find(first, selected.end(), true);
        const auto end = std::find(first, selected.end(), false);
        if (first != end)
            selection.append(QItemSelectionRange(m_rows->index(static_cast<int>(first - selected.begin())),
                m_rows->index(static_cast<int>(end - selected.begin()) - 1)));
        first = end;
    }
    selectionModel()->clearSelection(); // thousands of ranges aren't compared with as many old ones
    selectionModel()->select(selection, QItemSelectionModel::Select);
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
