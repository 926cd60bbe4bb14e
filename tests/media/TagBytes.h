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

inline quint32 NumberOf(QByteArrayView bytes, int bits)
{
    quint32 value = 0;
    for (const char byte : bytes)
        value = value << bits | static_cast<quint8>(byte);
    return value;
}

/// A frame of version 3 or 4.
inline QByteArray Frame(int version, const QByteArray &id, const QByteArray &data, const QByteArray &flags = {2, '\0'})
{
    return id + Number(static_cast<quint32>(data.size()), version == 4 ? 7 : 8) + flags + data;
}

/// Bytes from a text where "~" stands for a zero.
inline QByteArray Zeros(QByteArray text)
{
    return text.replace('~', '\0');
}

/// Frames from such a text, with a bar between two: each one's id and its data.
inline QByteArray Frames(int version, const QByteArray &text)
{
    QByteArray frames;
    for (const QByteArray &frame : text.split('|'))
        frames += Frame(version, frame.first(4), Zeros(frame.sliced(4)));
    return frames;
}

inline QByteArray Tag(int version, const QByteArray &body, int flags = 0)
{
    QByteArray header("ID3");
    header.append(static_cast<char>(version)).append('\0').append(static_cast<char>(flags));
    return header + Number(static_cast<quint32>(body.size()), 7) + body;
}

/// The bytes of the tag at a file's front.
inline qsizetype TagSize(QByteArrayView file)
{
    if (!file.startsWith("ID3"))
        return 0;
    const qsizetype size = 10 + NumberOf(file.sliced(6, 4), 7);
    const bool footer =
        file[3] == 4 && (file[5] & 0x10) != 0 && size < file.size() && file.sliced(size).startsWith("3DI");
    return size + (footer ? 10 : 0);
}
