#include "media/TagLibText.h"

#include "media/ID3v2Bytes.h"

#include <algorithm>

QString FromTagLib(const TagLib::String &text)
{
    QString result;
    result.reserve(static_cast<qsizetype>(text.size()));
    for (const wchar_t unit : text)
        result += QChar(static_cast<char16_t>(unit));
    return result;
}

TagLib::String ToTagLib(const QString &text)
{
    return TagLib::String(text.toUtf8().constData(), TagLib::String::UTF8);
}

QByteArray FromTagLib(const TagLib::ByteVector &bytes)
{
    return QByteArray(bytes.data(), static_cast<qsizetype>(bytes.size()));
}

TagLib::ByteVector ToTagLib(const QByteArray &bytes)
{
    return TagLib::ByteVector(bytes.constData(), static_cast<unsigned int>(bytes.size()));
}

TagLib::ByteVector PlainFrame(const QByteArray &id, const QByteArray &content)
{
    return ToTagLib(id + SyncSafeBytes(static_cast<quint32>(content.size())) + QByteArray(2, '\0') + content);
}

QByteArray ContentOf(const TagLib::ID3v2::Frame &frame)
{
    return FromTagLib(frame.render()).sliced(ID3v2HeaderBytes);
}

TagLib::String::Type EncodingFor(const QString &text, int version)
{
    const auto isLatin1 = [](QChar character) { return character.unicode() <= 0xFF; };
    if (std::all_of(text.begin(), text.end(), isLatin1))
        return TagLib::String::Latin1;
    return version == 4 ? TagLib::String::UTF8 : TagLib::String::UTF16;
}
