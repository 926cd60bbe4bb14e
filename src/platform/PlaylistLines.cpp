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

/// What stands before the first colon where that is a scheme of two letters or more; else empty.
QStringView SchemeOf(QStringView text)
{
    const qsizetype colon = text.indexOf(u':');
    if (colon < 2 || !IsLetter(text[0]))
        return {};
    const QStringView scheme = text.first(colon);
    const bool fits = std::all_of(scheme.begin(), scheme.end(), [](QChar c) {
        return IsLetter(c) || (c >= u'0' && c <= u'9') || c == u'+' || c == u'-' || c == u'.';
    });
    return fits ? scheme : QStringView();
}

} // namespace

bool HasDrive(QStringView path)
{
    return path.size() >= 2 && path[1] == u':' && IsLetter(path[0]);
}

bool IsOnShare(QStringView path)
{
    return path.size() >= 2 && path[0] == u'\\' && path[1] == u'\\';
}

bool IsWebAddress(QStringView line)
{
    const QStringView scheme = SchemeOf(line);
    if (scheme.isEmpty())
        return false;
    const QStringView rest = line.sliced(scheme.size());
    return rest.startsWith(u"://") || (rest.startsWith(u":/") && scheme.compare(u"file", Qt::CaseInsensitive) == 0);
}

QString WebAddressOf(QStringView line)
{
    return line.toString().replace(u'\\', u'/');
}

bool IsForeignAddress(QStringView text)
{
    const QStringView scheme = SchemeOf(text);
    return !scheme.isEmpty() && scheme.compare(u"file", Qt::CaseInsensitive) != 0;
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
    // Behind a host's prefix a backslash is part of the name.
    const QStringView prefix = line.startsWith(u".\\") ? u".\\" : u"./";
    while (line.startsWith(prefix)) {
        line = line.sliced(2);
        while (line.startsWith(u'/'))
            line = line.sliced(1);
    }
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

QString RootOf(const QString &folder)
{
    return HasDrive(folder) ? folder.first(2) : folder.section(u'\\', 0, 3);
}

QString FromWindowsLine(QStringView line, const QString &folder)
{
    QString path(line.size(), Qt::Uninitialized);
    std::replace_copy(line.begin(), line.end(), path.begin(), QChar(u'/'), QChar(u'\\'));
    if (HasDrive(path)) {
        path[0] = path[0].toLower();
        if (path.size() > 2 && path[2] != u'\\')
            path.insert(2, u'\\');
        return path;
    }
    const bool rooted = path.startsWith(u'\\') && !IsOnShare(path);
    return rooted ? QString(RootOf(folder) + path) : path;
}
