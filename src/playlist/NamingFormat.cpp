#include "playlist/NamingFormat.h"

#include "text/PathText.h"

#include <QStringList>

using namespace Qt::StringLiterals;

namespace
{
// No host has longer names. Folder names that hold tokens can make the text grow with each piece without end.
constexpr qsizetype LongestName = 32767;

QString Token(qsizetype number)
{
    return u"%"_s + QString::number(number);
}

// False when the result would be too long; the text is then as it was.
bool ReplaceToken(QString &text, const QString &token, const QString &value)
{
    const qsizetype grown = text.size() + text.count(token) * (value.size() - token.size());
    if (grown > LongestName)
        return false;
    text.replace(token, value);
    return true;
}

bool ReplaceFolders(QString &text, const QString &path)
{
    const QStringList pieces = path.split(u'\\');
    for (qsizetype i = pieces.size(); i >= 1; --i) {
        if (!ReplaceToken(text, Token(pieces.size() - i), pieces[i - 1]))
            return false;
    }
    return true;
}
} // namespace

QString ExpandNamingFormat(const QString &format, const QString &path, const QDateTime &now)
{
    QString name = format.isEmpty() ? u"%0-%1-%2-%3-%4-%5-%6-%7-%8-%9-"_s : format;
    if (!ReplaceFolders(name, path) || !ReplaceToken(name, u"%DATE"_s, now.toString(u"MM-dd-yyyy"_s)) ||
        !ReplaceToken(name, u"%TIME"_s, now.toString(u"HH-mm-ss"_s)))
        return QString();
    for (int i = 1; i <= 9; ++i)
        name.remove(Token(i));
    name = TrimBlanks(name);
    for (const QChar separator : {u':', u'\\', u'/'})
        name.remove(separator);
    return name.isEmpty() ? name : name + u".m3u"_s;
}
