#include "reports/ReportColumns.h"

#include <algorithm>
#include <array>

namespace
{
struct ColumnFacts {
    QStringView Heading;
    int Width;
};

constexpr std::array<ColumnFacts, ReportColumnCount> columns{{
    {u"FileName", 40},   {u"Folder", 100},     {u"Time", 9},          {u"Size", 10},         {u"ID", 4},
    {u"Layer", 9},       {u"BitRate", 10},     {u"SampleRate", 7},    {u"Mode", 13},         {u"CRC Protection", 4},
    {u"Emphasis", 6},    {u"Copyrighted", 4},  {u"Id3v1 Title", 30},  {u"Id3v1 Artist", 30}, {u"Id3v1 Album", 30},
    {u"Id3v1 Year", 12}, {u"Id3v2 Title", 30}, {u"Id3v2 Artist", 30}, {u"Id3v2 Album", 30},  {u"Id3v2 Year", 12},
    {u"Link", 0},
}};

const ColumnFacts &FactsOf(ReportColumn column)
{
    return columns[static_cast<std::size_t>(column) - 1];
}
} // namespace

ReportColumn ReportColumnOf(int number)
{
    return static_cast<ReportColumn>(std::clamp(number, 1, ReportColumnCount));
}

QStringView ReportHeading(ReportColumn column)
{
    return FactsOf(column).Heading;
}

int ReportWidth(ReportColumn column)
{
    return FactsOf(column).Width;
}
