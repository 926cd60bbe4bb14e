#pragma once

#include <QByteArray>
#include <QStringList>

// Tags put together by hand, byte by byte, and texts for them.

inline const QStringList scripts{QStringLiteral("Grüße – 1997"), QStringLiteral("Чёрный ворон"),
                                 QStringLiteral("君が代 / さくら"), QStringLiteral("שלום עולם"),
                                 QStringLiteral("🎵 Song 🎶")};

inline QByteArray Number(quint32 value, int bits)
{
    QByteArray bytes(4, '\0');
    for (qsizetype i = 4; i-- > 0; value >>= bits)
        bytes[i] = static_cast<char>(value & ((1U << bits) - 1));
    return bytes;
}

/// A frame of version 3 or 4.
inline QByteArray Frame(int version, const QByteArray &id, const QByteArray &data, const QByteArray &flags = {2, '\0'})
{
    return QByteArray(id)
        .append(Number(static_cast<quint32>(data.size()), version == 4 ? 7 : 8))
        .append(flags)
        .append(data);
}

inline QByteArray Tag(int version, const QByteArray &body, int flags = 0)
{
    QByteArray header("ID3");
    header.append(static_cast<char>(version)).append('\0').append(static_cast<char>(flags));
    return header.append(Number(static_cast<quint32>(body.size()), 7)).append(body);
}

/// A text with its zeros, from a literal.
template <std::size_t size>
QByteArray Raw(const char (&literal)[size])
{
    return QByteArray(literal, static_cast<qsizetype>(size) - 1);
}
