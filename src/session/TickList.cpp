#include "session/TickList.h"

#include "session/Colours.h"

#include <QStyledItemDelegate>

namespace
{
/// Tick boxes have their edge from the colour of the window, which a dark list would swallow.
class TickDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override
    {
        QStyledItemDelegate::initStyleOption(option, index);
        QPalette &palette = option->palette;
        palette.setColor(QPalette::Window, Blend(palette.color(QPalette::Text), palette.color(QPalette::Base), 60));
    }
};
} // namespace

TickList::TickList(QWidget *parent) : QTreeWidget(parent)
{
    setRootIsDecorated(false);
    setUniformRowHeights(true);
    setAllColumnsShowFocus(true);
    setItemDelegate(new TickDelegate(this));
}

QTreeWidgetItem *TickList::AddRow(const QStringList &texts, bool ticked)
{
    auto *row = new QTreeWidgetItem(this, texts);
    row->setCheckState(0, ticked ? Qt::Checked : Qt::Unchecked);
    return row;
}

void TickList::TickAll(bool on)
{
    for (int row = 0; row < RowCount(); ++row)
        SetTicked(row, on);
}

void TickList::SwapRows(int row, int other)
{
    QTreeWidgetItem *one = topLevelItem(row);
    QTreeWidgetItem *two = topLevelItem(other);
    for (int column = 0; column < columnCount(); ++column) {
        const QString text = one->text(column);
        one->setText(column, two->text(column));
        two->setText(column, text);
    }
    const bool ticked = IsTicked(row);
    SetTicked(row, IsTicked(other));
    SetTicked(other, ticked);
}

int TickList::SelectedRow() const
{
    const QList<QTreeWidgetItem *> rows = selectedItems();
    return rows.isEmpty() ? -1 : indexOfTopLevelItem(rows.front());
}

void TickList::SelectRow(int row)
{
    setCurrentItem(topLevelItem(row));
}
