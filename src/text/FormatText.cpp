#include "text/FormatText.h"

#include "text/PathText.h"

#include <QLocale>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace
{
constexpr qint64 Kilobyte = 1024;
constexpr qint64 Megabyte = 1024 * Kilobyte;

qint64 Rounded(qint64 bytes, qint64 unit)
{
    return bytes / unit + (bytes % unit >= unit / 2 ? 1 : 0);
}

QString TwoDigits(qint64 number)
{
    return (number <= 9 ? u"0"_s : QString()) + QString::number(number);
}

bool IsKept(QChar character)
{
    const char16_t code = character.unicode();
    return code > 255 || (code >= u'0' && code <= u'9') || (code >= u'A' && code <= u'Z') ||
           (code >= u'a' && code <= u'z');
}

// Most characters need no look into the tables of all scripts.
QChar Upper(QChar character)
{
    return character < u'a' ? character : character.toUpper();
}

QChar Lower(QChar character)
{
    if (character >= u'A' && character <= u'Z')
        return QChar(character.unicode() + (u'a' - u'A'));
    return character < u'\x80' ? character : character.toLower();
}

bool EndsWord(QChar character)
{
    return character == u'\0' || character == u' ' || (character >= u'\t' && character <= u'\r');
}
} // namespace

QString GroupedDigits(qint64 number)
{
    static const QString separator = QLocale::system().groupSeparator();
    QString digits = QString::number(number);
    for (qsizetype place = digits.size() - 3; place > 0; place -= 3)
        digits.insert(place, separator);
    return digits;
}

QString Counted(qint64 number, const QString &kind)
{
    return GroupedDigits(number) + u' ' + kind + (number == 1 ? u"" : u"s");
}

QString FormatFileSize(qint64 bytes)
{
    if (bytes == 0)
        return u"0 Bytes"_s;
    if (bytes <= 1)
        return QString();
    if (bytes <= 16 * Kilobyte)
        return GroupedDigits(bytes) + u" Bytes"_s;
    if (bytes <= 16 * Megabyte)
        return GroupedDigits(Rounded(bytes, Kilobyte)) + u" Kb"_s;
    return GroupedDigits(Rounded(bytes, Megabyte)) + u" Mb"_s;
}

QString FormatPlayTime(qint64 seconds)
{
    const qint64 hours = seconds / 3600;
    const qint64 minutes = seconds % 3600 / 60;
    const QString tail = u":"_s + TwoDigits(seconds % 60);
    if (hours >= 1)
        return QString::number(hours) + u":"_s + TwoDigits(minutes) + tail;
    return QString::number(minutes) + tail;
}

QString YesNoText(bool value)
{
    return value ? u"Yes"_s : u"No"_s;
}

QString ProperCase(QString text)
{
    bool startsWord = true;
    for (QChar &character : text) {
        character = startsWord ? Upper(character) : Lower(character);
        startsWord = EndsWord(character);
    }
    return text;
}

QString CleanText(const QString &text)
{
    QString clean;
    clean.reserve(text.size());
    for (const QChar character : TrimBlanks(text)) {
        if (IsKept(character))
            clean += character;
        else if (!clean.endsWith(u' '))
            clean += u' ';
    }
    return clean;
}
