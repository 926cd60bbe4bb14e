#include "text/TextFiles.h"

#include "platform/CodePage.h"
#include "platform/Files.h"

using namespace Qt::StringLiterals;

QStringList SplitLines(const QString &text)
{
    QStringList lines;
    const QStringView view(text);
    qsizetype start = text.startsWith(QChar::ByteOrderMark) ? 1 : 0;
    for (qsizetype i = start; i < view.size(); ++i) {
        const QChar character = view[i];
        if (character != u'\r' && character != u'\n')
            continue;
        lines.append(text.mid(start, i - start));
        if (character == u'\r' && i + 1 < view.size() && view[i + 1] == u'\n')
            ++i;
        start = i + 1;
    }
    if (start < view.size())
        lines.append(text.mid(start));
    return lines;
}

bool WriteLinesToFile(const QString &path, const QStringList &lines)
{
    QString text;
    for (const QString &line : lines)
        text += line + u"\r\n"_s;
    return WriteWholeFile(path, EncodeText(text));
}

bool ReadLinesFromFile(QStringList &list, const QString &path)
{
    QByteArray content;
    if (!ReadWholeFile(path, content))
        return false;
    list.append(SplitLines(DecodeText(content)));
    return true;
}
