#pragma once

#include <QStringView>

/// The columns that a report can have, by their fixed numbers.
enum class ReportColumn {
    FileName = 1,
    Folder,
    Time,
    Size,
    ID,
    Layer,
    BitRate,
    SampleRate,
    Mode,
    CRCProtection,
    Emphasis,
    Copyrighted,
    ID3v1Title,
    ID3v1Artist,
    ID3v1Album,
    ID3v1Year,
    ID3v2Title,
    ID3v2Artist,
    ID3v2Album,
    ID3v2Year,
    Link,
};
inline constexpr int ReportColumnCount = 21;

/// The column of a number from a settings file: the nearest one for a number out of range.
ReportColumn ReportColumnOf(int number);
QStringView ReportHeading(ReportColumn column);
/// Characters in a space aligned text; 0 for a column that it has not.
int ReportWidth(ReportColumn column);
