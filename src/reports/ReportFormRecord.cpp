#include "reports/ReportForm.h"

#include "ui_ReportForm.h"

#include <QHash>
#include <QSignalBlocker>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace
{
qint16 NumberOfHeading(const QString &heading)
{
    for (qint16 number = 1; number < ReportColumnCount; ++number) {
        if (heading == ReportHeading(ReportColumnOf(number)))
            return number;
    }
    return ReportColumnCount;
}

/// The entry of a list for a number from a settings file: the nearest one for a number out of range.
void ShowIndex(QComboBox *list, int index)
{
    list->setCurrentIndex(std::clamp(index, 0, list->count() - 1));
}
} // namespace

void ReportForm::ShowRecord(const ReportSettings &record)
{
    ui->ColumnList->clear();
    for (std::size_t place = 0; place < record.ColumnOrder.size(); ++place)
        ui->ColumnList->AddRow({ReportHeading(ReportColumnOf(record.ColumnOrder[place])).toString()},
                               record.ColumnChecked[place]);
    ShowIndex(ui->RepType, record.RepType);
    ui->txtTitle->setText(record.Title.Trimmed());
    ui->txtDesc->setPlainText(record.Description.Trimmed());
    ui->SaveRel->setChecked(record.SaveRel);
    ui->ColumnHeaders->setChecked(record.ColumnHeaders);
    ui->Summary->setChecked(record.Summary);
    ui->ColorTable->setChecked(record.ColorTable);
    ui->ValWidth->setCurrentText(record.ValWidth.Trimmed());
    ui->ValBorder->setCurrentText(record.ValBorder.Trimmed());
    ui->ValSpacing->setCurrentText(record.ValSpacing.Trimmed());
    ui->ValPadding->setCurrentText(record.ValPadding.Trimmed());
    ShowFont(record.FontName.Trimmed());
    ShowIndex(ui->FontSizer, record.FontSizeIndex);
    FontSizer_Click();
    // One of them is always chosen; of several the last one counts.
    ui->SpaceAligned->setChecked(true);
    const std::pair<QRadioButton *, bool> layouts[] = {{ui->CommaDelimited, record.CommaDelimited},
                                                       {ui->TabDelimited, record.TabDelimited},
                                                       {ui->CustomDelimited, record.CustomDelimited}};
    for (const auto &[button, chosen] : layouts) {
        if (chosen)
            button->setChecked(true);
    }
    ui->txtDelimiter->setText(record.Delimiter.Trimmed());
}

void ReportForm::ShowFont(const QString &family)
{
    QFont font = ui->FontTest->font();
    font.setFamily(family);
    font.setBold(false);
    font.setItalic(false);
    ui->FontTest->setFont(font);
    ui->FontList->setToolTip(family);
    // A font that this host lacks stays in the record without a row.
    const QSignalBlocker blocked(ui->FontList);
    const QList<QListWidgetItem *> rows = ui->FontList->findItems(family, Qt::MatchFixedString);
    ui->FontList->setCurrentItem(rows.isEmpty() ? nullptr : rows.front());
}

void ReportForm::FillRecordFromControls(ReportSettings &record) const
{
    for (std::size_t place = 0; place < record.ColumnOrder.size(); ++place) {
        const int row = static_cast<int>(place);
        record.ColumnOrder[place] = NumberOfHeading(ui->ColumnList->RowText(row));
        record.ColumnChecked[place] = ui->ColumnList->IsTicked(row);
    }
    record.RepType = static_cast<qint16>(ui->RepType->currentIndex());
    record.Title = ui->txtTitle->text();
    record.Description = ui->txtDesc->toPlainText().replace(u'\n', u"\r\n"_s);
    record.SaveRel = ui->SaveRel->isChecked();
    record.ColumnHeaders = ui->ColumnHeaders->isChecked();
    record.Summary = ui->Summary->isChecked();
    record.ColorTable = ui->ColorTable->isChecked();
    record.ValWidth = ui->ValWidth->currentText();
    record.ValBorder = ui->ValBorder->currentText();
    record.ValSpacing = ui->ValSpacing->currentText();
    record.ValPadding = ui->ValPadding->currentText();
    record.FontName = ui->FontTest->font().family();
    record.FontSizeIndex = static_cast<qint16>(ui->FontSizer->currentIndex());
    record.SpaceAligned = ui->SpaceAligned->isChecked();
    record.TabDelimited = ui->TabDelimited->isChecked();
    record.CommaDelimited = ui->CommaDelimited->isChecked();
    record.CustomDelimited = ui->CustomDelimited->isChecked();
    record.Delimiter = ui->txtDelimiter->text();
}
