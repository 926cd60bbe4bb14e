#pragma once

#include <QByteArray>

#include <optional>

// The ways of writing bytes that ID3v2 has.

constexpr qsizetype ID3v2HeaderBytes = 10;

inline quint32 BigEndian(QByteArrayView bytes)
{
    quint32 value = 0;
    for (const char byte : bytes)
        value = value << 8 | static_cast<quint8>(byte);
    return value;
}

/// Seven bits a byte; bytes with a high bit are not checked.
inline quint32 SyncSafe(QByteArrayView bytes)
{
    quint32 value = 0;
    for (const char byte : bytes)
        value = value << 7 | (static_cast<quint8>(byte) & 0x7FU);
    return value;
}

bool HasHighBit(QByteArrayView bytes);
QByteArray BigEndianBytes(quint32 value);
QByteArray SyncSafeBytes(quint32 value);

/// Puts a zero byte behind each FF that a decoder could take for the start of audio, and takes it out again.
QByteArray Unsynchronise(QByteArrayView bytes);
QByteArray Resynchronise(QByteArrayView bytes);
/// False for bytes in which an FF lacks the zero that it would need, whatever is said of them.
bool CanBeUnsynchronised(QByteArrayView bytes);

/// The size of a whole tag from the ten bytes of its header ("ID3") or footer ("3DI"), which look alike but for the
/// mark; nothing when there is no such mark or the size has high bits.
std::optional<qint64> ID3v2Size(QByteArrayView bytes, QByteArrayView mark);

/// Takes the last ten bytes off a whole tag that claims a footer where none stands, since they are audio, and the claim
/// with them.
void DropMissingFooter(QByteArray &tag);
