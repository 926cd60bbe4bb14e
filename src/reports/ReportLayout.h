#pragma once

#include "reports/ReportColumns.h"
#include "reports/ReportSettings.h"

#include <QString>

#include <array>
#include <vector>

class ReportRow;

/// The columns of a report, in their order.
std::vector<ReportColumn> SelectedColumns(const ReportSettings &settings);

// The two kinds of report. Each member appends its part to a text; the caller ends what it prints with a line end.

/// A page with one table.
class PageLayout
{
public:
    PageLayout(const ReportSettings &reportSettings, std::vector<ReportColumn> selected);

    void Head(QString &text) const;
    void TableHead(QString &text) const;
    void Row(QString &text, ReportRow &row);
    void Summary(QString &text, const QString &line) const;
    void End(QString &text) const;

private:
    QString Font(int size) const;
    std::vector<QString> PartsOfRow(const QString &colour) const;

    const ReportSettings &settings;
    std::vector<ReportColumn> columns;
    /// What stands before the content of each cell of a row and behind the last one, for the second and the first
    /// colour.
    std::array<std::vector<QString>, 2> parts;
    bool firstColour = false;
};

/// A table of plain text: aligned by blanks, or with a delimiter behind each cell.
class TextLayout
{
public:
    TextLayout(const ReportSettings &reportSettings, std::vector<ReportColumn> selected);

    void Head(QString &text) const;
    void TableHead(QString &text) const;
    void Row(QString &text, ReportRow &row) const;
    void Summary(QString &text, const QString &line) const;
    void End(QString &) const {}

private:
    void AppendCell(QString &text, const QString &cell, ReportColumn column) const;
    /// The line over and under the parts of an aligned table.
    void AppendRuler(QString &text) const;

    const ReportSettings &settings;
    std::vector<ReportColumn> columns;
    int totalWidth = 0;
    QString delimiter;
};
