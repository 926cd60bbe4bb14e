#include "session/TickList.h"

TickList::TickList(QWidget *parent) : QTreeWidget(parent)
{
    setRootIsDecorated(false);
    setUniformRowHeights(true);
    setAllColumnsShowFocus(true);
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
