#pragma once

#include "session/RowSelectionModel.h"

#include <QTreeView>

#include <functional>

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
    void dataChanged(const QModelIndex &topLeft, const QModelIndex &bottomRight, const QList<int> &roles = {}) override;
    const Grid &Rows() const { return *grid; }
    /// Taken by a drag as its data, when rows are dragged out.
    std::function<QMimeData *()> MakeDragData;

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
    void dropEvent(QDropEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void ConnectHeader();
    void MarkSortedColumn();
    void MoveFocus(QKeyEvent *event);
    bool AcceptsDrop(const QDropEvent *event) const;
    RowSelectionModel::Mirror MirrorRowAt(const QMouseEvent *event);

    Grid *grid;
    RowSelectionModel *rowSelection;
};
