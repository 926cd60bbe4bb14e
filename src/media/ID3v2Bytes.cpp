#include "media/ID3v2Bytes.h"

#include <algorithm>

bool HasHighBit(QByteArrayView bytes)
{
    return std::any_of(bytes.begin(), bytes.end(), [](char byte) { return static_cast<quint8>(byte) >= 0x80; });
}

QByteArray BigEndianBytes(quint32 value)
{
    QByteArray bytes(4, '\0');
    for (qsizetype i = 4; i-- > 0; value >>= 8)
        bytes[i] = static_cast<char>(value & 0xFF);
    return bytes;
}

QByteArray SyncSafeBytes(quint32 value)
{
    QByteArray bytes(4, '\0');
    for (qsizetype i = 4; i-- > 0; value >>= 7)
        bytes[i] = static_cast<char>(value & 0x7F);
    return bytes;
}

QByteArray Unsynchronise(QByteArrayView bytes)
{
    QByteArray result;
    result.reserve(bytes.size());
    for (qsizetype i = 0; i < bytes.size(); ++i) {
        result += bytes[i];
        if (bytes[i] != '\xFF')
            continue;
        const bool last = i + 1 == bytes.size();
        if (last || bytes[i + 1] == '\0' || static_cast<quint8>(bytes[i + 1]) >= 0xE0)
            result += '\0';
    }
    return result;
}

QByteArray Resynchronise(QByteArrayView bytes)
{
    QByteArray result;
    result.reserve(bytes.size());
    for (qsizetype i = 0; i < bytes.size(); ++i) {
        result += bytes[i];
        if (bytes[i] == '\xFF' && i + 1 < bytes.size() && bytes[i + 1] == '\0')
            ++i;
    }
    return result;
}

std::optional<qint64> ID3v2Size(QByteArrayView bytes, QByteArrayView mark)
{
    constexpr quint8 footerFlag = 0x10;
    if (bytes.size() < ID3v2HeaderBytes || !bytes.startsWith(mark) || bytes[3] == '\xFF' || bytes[4] == '\xFF' ||
        HasHighBit(bytes.sliced(6, 4)))
        return std::nullopt;
    const bool footer = (static_cast<quint8>(bytes[5]) & footerFlag) != 0;
    return SyncSafe(bytes.sliced(6, 4)) + ID3v2HeaderBytes * (footer ? 2 : 1);
}
