#pragma once

#include "session/RowSelectionModel.h"

#include <QBasicTimer>
#include <QTreeView>

#include <functional>
#include <optional>

/// Shows a Grid: rows with a small icon, several selected at once, header clicks, files dragged out and dropped in.
class GridView : public QTreeView
{
    Q_OBJECT

public:
    explicit GridView(Grid *shownGrid, QWidget *parent = nullptr);

    /// Brings the header to the grid's column widths; a width of 0 hides the column.
    void ApplyColumnWidths();
    void MakeVisible(int row);
    /// Scrolls up or down only: a click on a column that is cut must not move the others away.
    void scrollTo(const QModelIndex &index, ScrollHint hint = EnsureVisible) override;
    QRect visualRect(const QModelIndex &index) const override;
    void dataChanged(const QModelIndex &topLeft, const QModelIndex &bottomRight, const QList<int> &roles = {}) override;
    const Grid &Rows() const { return *grid; }
    /// Taken by a drag as its data, when rows are dragged out.
    std::function<QMimeData *()> MakeDragData;
    /// Carries rows about until they are dropped somewhere.
    std::function<void(QDrag &)> CarryOut;

Q_SIGNALS:
    /// A mouse button or a key has been released: selection or focus may have changed.
    void Clicked();
    void EnterPressed();
    void InsertPressed();
    /// Right after Clicked.
    void MenuRequested(const QPoint &globalPosition);
    void HeaderClicked(int column);
    void HeaderMenuRequested(const QPoint &globalPosition);
    /// Inside paths, in the order dropped.
    void FilesDropped(const QStringList &paths);
    /// The selected rows have been dragged before a row, or behind the last one; again: to be added there once more.
    void RowsDropped(int before, bool again);

protected:
    /// Only for the base class, which asks whether there is anything to be dragged: one cell of a selected row.
    QModelIndexList selectedIndexes() const override;
    void setSelection(const QRect &rect, QItemSelectionModel::SelectionFlags command) override;
    void drawRow(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void keyReleaseEvent(QKeyEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    void startDrag(Qt::DropActions supportedActions) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dragMoveEvent(QDragMoveEvent *event) override;
    void dragLeaveEvent(QDragLeaveEvent *event) override;
    void dropEvent(QDropEvent *event) override;
    void timerEvent(QTimerEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void ConnectHeader();
    void MarkSortedColumn();
    void MoveFocus(QKeyEvent *event);
    /// The row before which what is dropped at a height of the viewport would come.
    int RowBelow(int height) const;
    void DragRowsTo(int height);
    void EndDragOfRows();
    void PaintDropLine(QPainter &painter) const;
    RowSelectionModel::Mirror MirrorRowAt(const QMouseEvent *event);

    Grid *grid;
    RowSelectionModel *rowSelection;
    bool carriesRows = false;
    /// While rows are dragged over the list: the height of the mouse in the viewport; negative otherwise.
    int dragHeight = -1;
    QBasicTimer dragScroll;
    int scrolledSteps = 0;
    /// Rows have been dropped; told once the drag is over.
    struct RowDrop {
        int Before;
        bool Again;
    };
    std::optional<RowDrop> rowDrop;
};
