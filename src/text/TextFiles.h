#pragma once

#include <QString>
#include <QStringList>

/// The lines of a text: each ends at CR, CR LF or LF; what stands behind the last line end is a line unless empty. A
/// byte order mark at the start is left out.
QStringList SplitLines(const QString &text);

/// Replaces the file by the lines, each ended by CR LF. False, and the old file untouched, on any failure.
bool WriteLinesToFile(const QString &path, const QStringList &lines);
/// Appends the lines of a text file as they stand. False on any failure.
bool ReadLinesFromFile(QStringList &list, const QString &path);
