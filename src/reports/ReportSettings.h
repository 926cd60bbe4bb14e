#pragma once

#include "reports/ReportColumns.h"
#include "text/PathText.h"

#include <QString>

#include <array>

/// A text of fixed length: what is assigned is cut to it, or filled with blanks.
template <qsizetype Length>
class FixedText
{
public:
    FixedText(const QString &text = {}) : whole(text.leftJustified(Length, u' ', true)) {}

    const QString &Whole() const { return whole; }
    QString Trimmed() const { return TrimBlanks(whole); }

private:
    QString whole;
};

/// All choices of a report. A new record is empty, as a settings file of zeros and blanks would be.
struct ReportSettings {
    /// 0 HTML, 1 TXT; what a settings file holds beyond that counts as the nearer one.
    qint16 RepType = 0;
    FixedText<200> Title;
    FixedText<1000> Description;
    bool Summary = false;
    bool ColumnHeaders = false;
    /// Folders and links are relative to what all files have in common.
    bool SaveRel = false;
    /// Table width; "Auto" for none.
    FixedText<4> ValWidth;
    FixedText<3> ValSpacing;
    FixedText<3> ValPadding;
    FixedText<3> ValBorder;
    /// The number of the column at each position.
    std::array<qint16, ReportColumnCount> ColumnOrder{};
    /// By position, not by column.
    std::array<bool, ReportColumnCount> ColumnChecked{};
    FixedText<3> Delimiter;
    bool SpaceAligned = false;
    bool TabDelimited = false;
    bool CommaDelimited = false;
    bool CustomDelimited = false;
    FixedText<20> FontName;
    /// The place in the list of font sizes, from 0; it is the font size of the page.
    qint16 FontSizeIndex = 0;
    /// Rows have two colours in turn.
    bool ColorTable = false;

    bool IsText() const { return RepType > 0; }
};

ReportSettings DefaultReportSettings();

/// Reads a settings file (".rpt": 1340 bytes, a field behind the other) as it comes: of one that is shorter the rest
/// is zeros and blanks. False, and the record untouched, when no such file can be read.
bool LoadReportSettings(const QString &path, ReportSettings &record);
/// Writes the record; what a longer file holds behind it stays. False on any failure.
bool SaveReportSettings(const QString &path, const ReportSettings &record);
