#include "session/GridView.h"

#include "session/Colours.h"
#include "session/DragData.h"
#include "session/GridAccessible.h"

#include <QAccessible>
#include <QContextMenuEvent>
#include <QDrag>
#include <QHeaderView>
#include <QMimeData>
#include <QPainter>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QStyledItemDelegate>

#include <utility>

using namespace Qt::StringLiterals;

namespace
{
/// Dims the rows of missing files, and gives the selected ones their colours: a style would tint the icons and put them
/// on a ground on which some are lost.
class RowDelegate : public QStyledItemDelegate
{
public:
    RowDelegate(const Grid *shownGrid, QObject *parent) : QStyledItemDelegate(parent), grid(shownGrid) {}

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override
    {
        QStyledItemDelegate::initStyleOption(option, index);
        const PlaylistItem &item = grid->Item(index.row() + 1);
        // The view draws the focus; what a style draws of it looks like a selection.
        option->state &= ~(QStyle::State_Selected | QStyle::State_HasFocus);
        QPalette &palette = option->palette;
        const bool odd = option->features.testFlag(QStyleOptionViewItem::Alternate);
        QColor ground = palette.color(odd ? QPalette::AlternateBase : QPalette::Base);
        QColor text = palette.color(QPalette::Text);
        if (item.Selected) {
            ground = SelectedGround(palette);
            text = TextOn(ground, text);
            option->backgroundBrush = ground;
        }
        palette.setColor(QPalette::Text, item.Ghosted ? Dimmed(text, ground, seen) : text);
    }

private:
    const Grid *grid;
};
} // namespace

GridView::GridView(Grid *shownGrid, QWidget *parent) : QTreeView(parent), grid(shownGrid)
{
    InstallGridAccessibility();
    // Before the model, or the first layout measures every row.
    setUniformRowHeights(true);
    setModel(grid);
    rowSelection = new RowSelectionModel(grid, this);
    delete selectionModel();
    setSelectionModel(rowSelection);
    setItemDelegate(new RowDelegate(grid, this));
    setSelectionMode(ExtendedSelection);
    setSelectionBehavior(SelectRows);
    setRootIsDecorated(false);
    setItemsExpandable(false);
    setAlternatingRowColors(true);
    setEditTriggers(NoEditTriggers);
    setDragEnabled(true);
    setAcceptDrops(true);
    setDropIndicatorShown(false);
    setHorizontalScrollMode(ScrollPerPixel);
    setTextElideMode(Qt::ElideRight);
    setAccessibleName(tr("Playlist"));
    header()->setSectionsMovable(false);
    header()->setSectionsClickable(true);
    header()->setStretchLastSection(false);
    header()->setMinimumSectionSize(0);
    header()->setHighlightSections(false);
    ApplyColumnWidths();

    connect(grid, &Grid::SelectionChanged, this, [this] {
        viewport()->update();
        if (QAccessible::isActive()) {
            QAccessibleEvent event(this, QAccessible::SelectionWithin);
            QAccessible::updateAccessibility(&event);
        }
    });
    connect(grid, &Grid::FocusMoved, this, [this](int row) {
        if (row - 1 != currentIndex().row())
            rowSelection->setCurrentIndex(row > 0 ? grid->index(row - 1, 0) : QModelIndex(),
                                          QItemSelectionModel::NoUpdate);
    });
    connect(rowSelection, &QItemSelectionModel::currentChanged, this, [this](const QModelIndex &current) {
        if (current.row() + 1 != grid->FocusedRow())
            grid->SetFocusedRow(current.row() + 1);
        // The base class would paint the current cell alone.
        viewport()->update();
    });
    ConnectHeader();
    // Never as a move, or another program would take the files away.
    CarryOut = [](QDrag &drag) { drag.exec(Qt::CopyAction, Qt::CopyAction); };
}

void GridView::ConnectHeader()
{
    header()->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(header(), &QHeaderView::sectionClicked, this, [this](int section) { Q_EMIT HeaderClicked(section + 1); });
    connect(header(), &QHeaderView::sectionResized, this,
            [this](int section, int, int size) { grid->ColumnWidths[static_cast<std::size_t>(section)] = size; });
    connect(header(), &QHeaderView::customContextMenuRequested, this, [this](const QPoint &position) {
        Q_EMIT HeaderMenuRequested(header()->viewport()->mapToGlobal(position));
    });
    // A click turns the mark round, whatever comes of the click.
    connect(header(), &QHeaderView::sortIndicatorChanged, this, &GridView::MarkSortedColumn);
    connect(grid, &Grid::SortedColumnChanged, this, &GridView::MarkSortedColumn);
}

void GridView::MarkSortedColumn()
{
    const QSignalBlocker quiet(header());
    header()->setSortIndicatorShown(grid->SortedColumn() > 0);
    header()->setSortIndicator(grid->SortedColumn() - 1,
                               grid->SortOrder == 0 ? Qt::AscendingOrder : Qt::DescendingOrder);
}

void GridView::ApplyColumnWidths()
{
    const QSignalBlocker quiet(header());
    for (int column = 1; column <= ColumnCount; ++column) {
        const int width = grid->ColumnWidths[static_cast<std::size_t>(column - 1)];
        header()->setSectionHidden(column - 1, width == 0);
        if (width > 0)
            header()->resizeSection(column - 1, width);
    }
    doItemsLayout();
}

void GridView::MakeVisible(int row)
{
    if (row >= 1 && row <= grid->Count())
        scrollTo(grid->index(row - 1, 0));
}

void GridView::scrollTo(const QModelIndex &index, ScrollHint hint)
{
    const int horizontal = horizontalScrollBar()->value();
    QTreeView::scrollTo(index, hint);
    horizontalScrollBar()->setValue(horizontal);
}

QRect GridView::visualRect(const QModelIndex &index) const
{
    // A row has its place also where the column is hidden by which it is named.
    int column = index.column();
    for (int place = 0; index.isValid() && isColumnHidden(column) && place < header()->count(); ++place)
        column = header()->logicalIndex(place);
    return QTreeView::visualRect(index.siblingAtColumn(column));
}

QModelIndexList GridView::selectedIndexes() const
{
    for (int row = 1; row <= grid->Count(); ++row) {
        if (grid->Item(row).Selected)
            return {grid->index(row - 1, 0)};
    }
    return {};
}

void GridView::dataChanged(const QModelIndex &topLeft, const QModelIndex &bottomRight, const QList<int> &roles)
{
    // The base class looks at every row of the range, to paint those that are seen.
    if (roles == QList<int>{Qt::DecorationRole})
        viewport()->update();
    else
        QTreeView::dataChanged(topLeft, bottomRight, roles);
}

// As the base class does it, which makes its range of the rows one by one.
void GridView::setSelection(const QRect &rect, QItemSelectionModel::SelectionFlags command)
{
    if (rect.isNull())
        return;
    const auto [low, high] = std::minmax({rect.left(), rect.right()});
    const auto [top, bottom] = std::minmax({rect.top(), rect.bottom()});
    const QModelIndex first = indexAt({isRightToLeft() ? high : low, top});
    const QModelIndex last = indexAt({isRightToLeft() ? low : high, bottom});
    if (first.isValid() || last.isValid()) {
        const int firstRow = first.isValid() ? first.row() : 0;
        const int lastRow = last.isValid() ? last.row() : grid->Count() - 1;
        rowSelection->select({grid->index(firstRow, 0), grid->index(lastRow, ColumnCount - 1)}, command);
    } else if (command & QItemSelectionModel::Clear) {
        rowSelection->clear();
    }
}

void GridView::drawRow(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    QTreeView::drawRow(painter, option, index);
    if (hasFocus() && index.row() + 1 == grid->FocusedRow()) {
        const QColor text = palette().color(QPalette::Text);
        const bool selected = grid->Item(index.row() + 1).Selected;
        painter->setPen(QPen(selected ? TextOn(SelectedGround(palette()), text) : text, 1, Qt::DotLine));
        painter->drawRect(QRect(0, option.rect.top(), header()->length() - 1, option.rect.height() - 1));
    }
}

RowSelectionModel::Mirror GridView::MirrorRowAt(const QMouseEvent *event)
{
    return {*rowSelection, indexAt(event->position().toPoint())};
}

void GridView::mousePressEvent(QMouseEvent *event)
{
    const auto mirror = MirrorRowAt(event);
    QTreeView::mousePressEvent(event);
}

void GridView::mouseMoveEvent(QMouseEvent *event)
{
    {
        const auto mirror = MirrorRowAt(event);
        QTreeView::mouseMoveEvent(event);
    }
    if (const auto drop = std::exchange(rowDrop, std::nullopt))
        Q_EMIT RowsDropped(drop->Before, drop->Again);
}

void GridView::mouseReleaseEvent(QMouseEvent *event)
{
    {
        const auto mirror = MirrorRowAt(event);
        QTreeView::mouseReleaseEvent(event);
    }
    Q_EMIT Clicked();
    if (event->button() == Qt::RightButton)
        Q_EMIT MenuRequested(event->globalPosition().toPoint());
}

void GridView::mouseDoubleClickEvent(QMouseEvent *event)
{
    {
        const auto mirror = MirrorRowAt(event);
        QTreeView::mouseDoubleClickEvent(event);
    }
    if (event->button() == Qt::LeftButton)
        Q_EMIT EnterPressed();
}

void GridView::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        Q_EMIT EnterPressed();
    else if (event->key() == Qt::Key_Insert && event->modifiers() == Qt::NoModifier)
        Q_EMIT InsertPressed();
    else
        MoveFocus(event);
}

void GridView::MoveFocus(QKeyEvent *event)
{
    // The base class does nothing where the key leads to the row that has the focus, selected or not.
    const bool home = event->key() == Qt::Key_Home;
    const int last = grid->Count() - 1;
    if ((home || event->key() == Qt::Key_End) && event->modifiers() == Qt::NoModifier &&
        currentIndex().row() == (home ? 0 : last))
        rowSelection->setCurrentIndex(last > 0 ? grid->index(home ? last : 0, 0) : QModelIndex(),
                                      QItemSelectionModel::NoUpdate);
    QTreeView::keyPressEvent(event);
}

void GridView::keyReleaseEvent(QKeyEvent *event)
{
    QTreeView::keyReleaseEvent(event);
    Q_EMIT Clicked();
}

void GridView::contextMenuEvent(QContextMenuEvent *event)
{
    // The mouse asks for it when its button comes up, whatever the host's habit.
    if (event->reason() != QContextMenuEvent::Keyboard)
        return;
    Q_EMIT Clicked();
    Q_EMIT MenuRequested(viewport()->mapToGlobal(visualRect(currentIndex()).bottomLeft()));
}

void GridView::startDrag(Qt::DropActions)
{
    QMimeData *files = MakeDragData ? MakeDragData() : nullptr;
    if (files == nullptr)
        return;
    auto *drag = new QDrag(this);
    drag->setMimeData(files);
    carriesRows = true;
    CarryOut(*drag);
    carriesRows = false;
    EndDragOfRows();
}

int GridView::RowBelow(int height) const
{
    const int row = indexAt({-header()->offset(), height}).row();
    if (row < 0)
        return grid->Count() + 1;
    const QRect place = visualRect(grid->index(row, header()->logicalIndexAt(-header()->offset())));
    return row + (height > place.center().y() ? 2 : 1);
}

void GridView::DragRowsTo(int height)
{
    dragHeight = height;
    viewport()->update();
    const int margin = autoScrollMargin();
    if (height >= margin && height < viewport()->height() - margin) {
        dragScroll.stop();
    } else if (!dragScroll.isActive()) {
        constexpr int interval = 40;
        scrolledSteps = 0;
        dragScroll.start(interval, this);
    }
}

void GridView::EndDragOfRows()
{
    dragHeight = -1;
    dragScroll.stop();
    viewport()->update();
}

void GridView::timerEvent(QTimerEvent *event)
{
    if (event->timerId() != dragScroll.timerId()) {
        QTreeView::timerEvent(event);
        return;
    }
    // The longer it lasts, the faster.
    constexpr int stepsPerSpeed = 8;
    const int rows = 1 + scrolledSteps++ / stepsPerSpeed;
    const bool up = dragHeight < viewport()->height() / 2;
    verticalScrollBar()->setValue(verticalScrollBar()->value() + (up ? -rows : rows));
    // The line stays where the mouse is.
    viewport()->update();
}

void GridView::dragEnterEvent(QDragEnterEvent *event)
{
    dragMoveEvent(event);
}

void GridView::dragMoveEvent(QDragMoveEvent *event)
{
    if (!event->mimeData()->hasUrls()) {
        event->ignore();
        return;
    }
    event->setDropAction(Qt::CopyAction);
    event->accept();
    if (carriesRows)
        DragRowsTo(event->position().toPoint().y());
}

void GridView::dragLeaveEvent(QDragLeaveEvent *)
{
    EndDragOfRows();
}

void GridView::dropEvent(QDropEvent *event)
{
    setState(NoState);
    if (!event->mimeData()->hasUrls()) {
        event->ignore();
        return;
    }
    event->setDropAction(Qt::CopyAction);
    event->accept();
    if (carriesRows)
        rowDrop = {RowBelow(event->position().toPoint().y()), (event->modifiers() & Qt::ControlModifier) != 0};
    else
        Q_EMIT FilesDropped(FilesOf(*event->mimeData()));
}

void GridView::PaintDropLine(QPainter &painter) const
{
    constexpr int thickness = 2;
    constexpr int hook = 4;
    const int before = RowBelow(dragHeight);
    const int column = header()->logicalIndexAt(-header()->offset());
    const int y = before <= grid->Count() ? visualRect(grid->index(before - 1, column)).top()
                                          : visualRect(grid->index(grid->Count() - 1, column)).bottom() + 1;
    const int width = std::min(header()->length() - header()->offset(), viewport()->width());
    const QColor colour = palette().color(QPalette::Text);
    painter.fillRect(0, y - thickness / 2, width, thickness, colour);
    for (const int end : {0, width - thickness})
        painter.fillRect(end, y - hook, thickness, 2 * hook, colour);
}

void GridView::paintEvent(QPaintEvent *event)
{
    QTreeView::paintEvent(event);
    QPainter painter(viewport());
    if (dragHeight >= 0 && grid->Count() > 0)
        PaintDropLine(painter);
    if (grid->Count() > 0)
        return;
    painter.setPen(Dimmed(palette().color(QPalette::Text), palette().color(QPalette::Base), readable));
    painter.drawText(viewport()->rect().adjusted(16, 16, -16, -16), Qt::AlignCenter | Qt::TextWordWrap,
                     tr("Drop files, folders or playlists here, or press F1 to add a folder."));
}
