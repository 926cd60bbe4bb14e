#include "text/TextFiles.h"

#include "platform/CodePage.h"
#include "platform/Files.h"

using namespace Qt::StringLiterals;

QStringList SplitLines(const QString &text)
{
    QStringList lines;
    ForEachLine(text, [&lines](QStringView line) { lines.append(line.toString()); });
    return lines;
}

bool WriteLinesToFile(const QString &path, const QStringList &lines, TextForm form)
{
    QString text;
    for (const QString &line : lines)
        text += line + u"\r\n"_s;
    return WriteWholeFile(path, form == TextForm::Utf8 ? text.toUtf8() : EncodeText(text));
}

bool ReadTextFile(const QString &path, QString &text)
{
    QByteArray content;
    if (!ReadWholeFile(path, content))
        return false;
    text = DecodeText(content);
    return true;
}

bool ReadLinesFromFile(QStringList &list, const QString &path)
{
    QString text;
    if (!ReadTextFile(path, text))
        return false;
    list.append(SplitLines(text));
    return true;
}
