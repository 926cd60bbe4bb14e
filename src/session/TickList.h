#pragma once

#include <QTreeWidget>

/// A list whose rows bear tick boxes, with a column of texts or several. Rows count from 0; Space ticks the current
/// one.
class TickList : public QTreeWidget
{
    Q_OBJECT

public:
    explicit TickList(QWidget *parent = nullptr);

    QTreeWidgetItem *AddRow(const QStringList &texts, bool ticked);
    int RowCount() const { return topLevelItemCount(); }
    QString RowText(int row) const { return topLevelItem(row)->text(0); }
    bool IsTicked(int row) const { return topLevelItem(row)->checkState(0) == Qt::Checked; }
    void SetTicked(int row, bool on) { topLevelItem(row)->setCheckState(0, on ? Qt::Checked : Qt::Unchecked); }
    void TickAll(bool on);
    /// Exchanges texts and ticks of two rows.
    void SwapRows(int row, int other);
    /// -1 for none.
    int SelectedRow() const;
    void SelectRow(int row);
};
