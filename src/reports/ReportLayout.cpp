#include "reports/ReportLayout.h"

#include "reports/ReportRow.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace
{
constexpr auto lineEnd = "\r\n"_L1;

/// The text cut or filled up to one less than the width, and a blank.
QString PadCell(const QString &text, int width)
{
    QString cell = text.leftJustified(width - 1, u' ', true) + u' ';
    // Half a character is none.
    if (width > 1 && cell[width - 2].isHighSurrogate())
        cell[width - 2] = u' ';
    return cell;
}

QString RepeatText(int count, QStringView text)
{
    return text.toString().repeated(count);
}

void AppendEscaped(QString &text, const QString &cell)
{
    if (std::none_of(cell.begin(), cell.end(), [](QChar character) { return character == u'<' || character == u'>'; }))
        text += cell;
    else
        text += QString(cell).replace(u'<', "&lt;"_L1).replace(u'>', "&gt;"_L1);
}

QString WithBreaks(QString text)
{
    return text.replace(lineEnd, "<br>"_L1);
}

bool BreaksLine(QChar character)
{
    return character < u' ' || character == u'\u0085' || character == u'\u2028' || character == u'\u2029';
}
} // namespace

std::vector<ReportColumn> SelectedColumns(const ReportSettings &settings)
{
    std::vector<ReportColumn> columns;
    for (std::size_t place = 0; place < settings.ColumnOrder.size(); ++place) {
        if (settings.ColumnChecked[place])
            columns.push_back(ReportColumnOf(settings.ColumnOrder[place]));
    }
    return columns;
}

PageLayout::PageLayout(const ReportSettings &reportSettings, std::vector<ReportColumn> selected)
    : settings(reportSettings), columns(std::move(selected))
{
    parts = {PartsOfRow(settings.ColorTable ? u" bgcolor=#EEEEEE"_s : QString()),
             PartsOfRow(settings.ColorTable ? u" bgcolor=#D5DEFF"_s : QString())};
}

std::vector<QString> PageLayout::PartsOfRow(const QString &colour) const
{
    std::vector<QString> row;
    QString part = u"<tr>"_s + lineEnd;
    for (const ReportColumn column : columns) {
        const bool isLink = column == ReportColumn::Link;
        part += u"<td" + colour + u'>';
        part += isLink ? u"<font face='Webdings' size='%1'><a href="_s.arg(settings.FontSizeIndex + 2)
                       : Font(settings.FontSizeIndex);
        row.push_back(part);
        part = (isLink ? u">X</a></font></td>"_s : u"</font></td>"_s) + lineEnd;
    }
    row.push_back(part + u"</tr>" + lineEnd);
    return row;
}

QString PageLayout::Font(int size) const
{
    return u"<font face='" + settings.FontName.Trimmed() + u"' size='" + QString::number(size) + u"'>";
}

void PageLayout::Head(QString &text) const
{
    text += u"<head><html><title>" + settings.Title.Whole() + u"</title></head><body>";
    const QString title = settings.Title.Trimmed();
    if (!title.isEmpty())
        text += u"<p align=center>" + Font(settings.FontSizeIndex + 1) + u"<b>" + WithBreaks(title) +
                u"</b></font></p>" + lineEnd;
    const QString description = settings.Description.Trimmed();
    if (!description.isEmpty())
        text += u"<p align=center>" + Font(settings.FontSizeIndex) + WithBreaks(description) + u"</font></p>" + lineEnd;
}

void PageLayout::TableHead(QString &text) const
{
    text += u"<center><table border=" + settings.ValBorder.Trimmed();
    if (settings.ValWidth.Whole() != "Auto"_L1)
        text += u" width=" + settings.ValWidth.Trimmed();
    text += u" cellspacing=" + settings.ValSpacing.Trimmed() + u" cellpadding=" + settings.ValPadding.Trimmed() + u'>';
    if (settings.ColumnHeaders) {
        for (const ReportColumn column : columns)
            text +=
                u"<td>" + Font(settings.FontSizeIndex) + u"<b>" + ReportHeading(column) + u"</b></font></td>" + lineEnd;
    }
    text += lineEnd;
}

void PageLayout::Row(QString &text, ReportRow &row)
{
    firstColour = !firstColour;
    const std::vector<QString> &around = parts[firstColour ? 1 : 0];
    for (std::size_t i = 0; i < columns.size(); ++i) {
        text += around[i];
        if (columns[i] == ReportColumn::Link)
            text += row.Link();
        else if (const QString cell = row.Cell(columns[i]); cell.isEmpty())
            text += "?????"_L1;
        else
            AppendEscaped(text, cell);
    }
    text += around.back();
}

void PageLayout::Summary(QString &text, const QString &line) const
{
    text += u"<tr><td colspan=" + QString::number(columns.size()) + u'>' + Font(settings.FontSizeIndex) + line +
            u"</font></td></tr>" + lineEnd;
}

void PageLayout::End(QString &text) const
{
    text += "</table></center></body></html>"_L1;
}

TextLayout::TextLayout(const ReportSettings &reportSettings, std::vector<ReportColumn> selected)
    : settings(reportSettings), columns(std::move(selected))
{
    for (const ReportColumn column : columns)
        totalWidth += settings.SpaceAligned ? ReportWidth(column) : 0;
    if (settings.CommaDelimited)
        delimiter = u","_s;
    if (settings.TabDelimited)
        delimiter = u"\t"_s;
    if (settings.CustomDelimited)
        delimiter = settings.Delimiter.Trimmed();
}

void TextLayout::AppendCell(QString &text, const QString &cell, ReportColumn column) const
{
    if (!settings.SpaceAligned)
        text += cell + delimiter;
    else if (const int width = ReportWidth(column); width > 0)
        text += PadCell(cell, width);
}

void TextLayout::AppendRuler(QString &text) const
{
    text += RepeatText(totalWidth, u"-");
}

void TextLayout::Head(QString &text) const
{
    for (const QString &line : {settings.Title.Trimmed(), settings.Description.Trimmed()})
        text += line.isEmpty() ? QString() : line + lineEnd;
    AppendRuler(text);
}

void TextLayout::TableHead(QString &text) const
{
    if (settings.ColumnHeaders) {
        for (const ReportColumn column : columns)
            AppendCell(text, ReportHeading(column).toString(), column);
        text += lineEnd;
        AppendRuler(text);
    }
    text += lineEnd;
}

void TextLayout::Row(QString &text, ReportRow &row) const
{
    for (const ReportColumn column : columns) {
        if (column == ReportColumn::Link)
            continue;
        QString cell = row.Cell(column);
        std::replace_if(cell.begin(), cell.end(), BreaksLine, u' ');
        AppendCell(text, cell, column);
    }
}

void TextLayout::Summary(QString &text, const QString &line) const
{
    AppendRuler(text);
    text += lineEnd + line + lineEnd;
    AppendRuler(text);
}
