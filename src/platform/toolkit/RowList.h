// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QBasicTimer>
#include <QListView>

#include <memory>
#include <vector>

namespace trovarium {

class RowsControl;

// The widget of a list of rows, which belong to its control. It follows them late: a scan that adds thousands of names
// must not lay it out each time. One that isn't to be seen asks for no rows.
class RowList : public QListView {
public:
    RowList(RowsControl& control, QWidget* parent);
    ~RowList() override;

    void follow();                   // soon: before the user acts on it, or with the next repaint but a few
    int rowAt(QPointF pixels) const; // of the widget; -1 for none

protected:
    void timerEvent(QTimerEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void updateGeometries() override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) override;
    void dataChanged(const QModelIndex& first, const QModelIndex& last, const QList<int>& roles) override;

private:
    class Rows;
    class Delegate;

    bool acceptsInput();
    void report();
    void showRows();
    void showSelection();
    std::vector<bool> selectedRows() const;

    RowsControl& m_control;
    std::unique_ptr<Rows> m_rows;
    std::unique_ptr<Delegate> m_delegate;
    bool m_showsRows = false;
    bool m_isReportDue = false;
    QBasicTimer m_late; // runs while the rows are to be shown anew
};

} // namespace trovarium
