#include "platform/PlaylistLines.h"

#include <QChar>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace
{

bool IsLetter(QChar c)
{
    return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z');
}

} // namespace

bool HasDrive(QStringView path)
{
    return path.size() >= 2 && path[1] == u':' && IsLetter(path[0]);
}

bool IsWebAddress(QStringView line)
{
    const qsizetype colon = line.indexOf(u':');
    if (colon < 2 || !line.sliced(colon).startsWith(u"://") || !IsLetter(line[0]))
        return false;
    return std::all_of(line.begin(), line.begin() + colon, [](QChar c) {
        return IsLetter(c) || (c >= u'0' && c <= u'9') || c == u'+' || c == u'-' || c == u'.';
    });
}

bool IsWebRow(QStringView path)
{
    return path.startsWith(u'\\') && IsWebAddress(path.sliced(1));
}

bool NeedsDotPrefix(QStringView line)
{
    return line.startsWith(u'#') || line.startsWith(QChar(QChar::ByteOrderMark)) || HasDrive(line) ||
           IsWebAddress(line);
}

QStringView WithoutDotPrefix(QStringView line)
{
    while (line.startsWith(u"./") || line.startsWith(u".\\"))
        line = line.sliced(2);
    return line;
}

QString PercentEncoded(unsigned char byte)
{
    const QString digits = QString::number(byte, 16).toUpper();
    return (byte < 16 ? u"%0"_s : u"%"_s) + digits;
}

QString EscapedAddress(QStringView text)
{
    constexpr QStringView ending = u" %#?\"'`<>\\";
    QString address;
    address.reserve(text.size() + 16);
    for (qsizetype i = 0; i < text.size(); ++i) {
        const char16_t unit = text[i].unicode();
        // An ampersand before a letter may be read as the name of another character.
        const bool named = unit == u'&' && i + 1 < text.size() && IsLetter(text[i + 1]);
        if (unit < u' ' || unit == 0x7F || named || ending.contains(text[i]))
            address += PercentEncoded(static_cast<unsigned char>(unit));
        else
            address += text[i];
    }
    return address;
}
