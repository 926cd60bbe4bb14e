#pragma once

#include <QString>
#include <QStringList>

#include <algorithm>

/// The lines of a text: each ends at CR, CR LF or LF; what stands behind the last line end is a line unless empty. A
/// byte order mark at the start is left out.
QStringList SplitLines(const QString &text);

/// Hands each line of a text to a function, as SplitLines tells them.
template <typename Take>
void ForEachLine(QStringView text, Take take);

/// How a text file holds its characters: as EncodeText tells, or as UTF-8 without a mark on every host.
enum class TextForm { HostPage, Utf8 };

/// Replaces the file by the lines, each ended by CR LF. False, and the old file untouched, on any failure.
bool WriteLinesToFile(const QString &path, const QStringList &lines, TextForm form = TextForm::HostPage);
/// Appends the lines of a text file as they stand. False on any failure.
bool ReadLinesFromFile(QStringList &list, const QString &path);
/// The whole text of a file; false on any failure.
bool ReadTextFile(const QString &path, QString &text);

template <typename Take>
void ForEachLine(QStringView text, Take take)
{
    if (text.startsWith(QChar(QChar::ByteOrderMark)))
        text = text.sliced(1);
    const auto isEnd = [](QChar unit) { return unit == u'\n' || unit == u'\r'; };
    while (!text.isEmpty()) {
        const auto end = std::find_if(text.begin(), text.end(), isEnd);
        take(text.first(end - text.begin()));
        if (end == text.end())
            return;
        const bool isPair = *end == u'\r' && end + 1 != text.end() && end[1] == u'\n';
        text = text.sliced(end - text.begin() + (isPair ? 2 : 1));
    }
}
