#pragma once

#include "platform/qt/toolkit/LateUpdate.h"
#include "platform/toolkit/Control.h"

#include <QIcon>
#include <QListView>
#include <QString>

#include <memory>
#include <vector>

namespace trovarium {

// What a list of rows shows, and what it tells of the user's acts. They come through the dispatch wall, and
// the source may be gone behind each.
class RowSource {
public:
    virtual ~RowSource() = default;

    virtual int rowCount() const = 0;
    virtual QString rowText(int row) const = 0;
    virtual QIcon rowIcon(int) const { return {}; }
    virtual int rowIndent(int) const { return 0; }    // in pixels
    virtual QString widestMark() const { return {}; } // of those with which the rows begin
    virtual bool isRowSelected(int row) const = 0;
    virtual int currentRow() const = 0; // -1 for none

    virtual void rowsChosen(int current, const std::vector<bool>& selected) = 0;
    virtual void rowDoubleClicked(int) { }
    virtual bool rowEntered(int) { return false; } // Enter; true when it meant something
    virtual void mouseReleased(int /*button*/, int /*shift*/, QPointF /*pixels*/) { }
    virtual void keyDown(int /*code*/, int /*shift*/) { }
    virtual void keyPressed(int /*ascii*/) { }
};

// The list widget of list box, folder list and file list. The rows belong to the source; the widget follows
// when `follow` was called, and keeps its place in the list. One that isn't to be seen asks for no rows.
class RowList : public QListView {
public:
    RowList(RowSource& source, Control& control);
    ~RowList() override;

    void follow() { m_update.schedule(); }
    void setExtended(bool extended);
    int rowAt(QPointF pixels) const; // of the widget; -1 for none
    void detach();                   // the source goes

protected:
    void showEvent(QShowEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void dataChanged(const QModelIndex& first, const QModelIndex& last, const QList<int>& roles) override;

private:
    class Rows;
    class Delegate;

    bool acceptsInput();
    void report();
    void showSource();
    void showSelection();
    std::vector<bool> selectedRows() const;

    RowSource* m_source;
    Control* m_control;
    std::unique_ptr<Rows> m_rows;
    std::unique_ptr<Delegate> m_delegate;
    LateUpdate m_update;
};

} // namespace trovarium
