#include "media/ID3v2Bytes.h"

#include <algorithm>

namespace
{
constexpr qsizetype flagsAt = 5;
constexpr quint8 footerFlag = 0x10;

// Versions before 2.4 have no footer; the bit means nothing in them.
bool ClaimsFooter(QByteArrayView tag)
{
    return static_cast<quint8>(tag[3]) >= 4 && (static_cast<quint8>(tag[flagsAt]) & footerFlag) != 0;
}
} // namespace

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

bool CanBeUnsynchronised(QByteArrayView bytes)
{
    for (qsizetype i = 0; i + 1 < bytes.size(); ++i) {
        if (bytes[i] == '\xFF' && static_cast<quint8>(bytes[i + 1]) >= 0xE0)
            return false;
    }
    return true;
}

std::optional<qint64> ID3v2Size(QByteArrayView bytes, QByteArrayView mark)
{
    if (bytes.size() < ID3v2HeaderBytes || !bytes.startsWith(mark) || bytes[3] == '\xFF' || bytes[4] == '\xFF' ||
        HasHighBit(bytes.sliced(6, 4)))
        return std::nullopt;
    return SyncSafe(bytes.sliced(6, 4)) + ID3v2HeaderBytes * (ClaimsFooter(bytes) ? 2 : 1);
}

void DropMissingFooter(QByteArray &tag)
{
    if (ID3v2Size(tag, "ID3") != std::optional<qint64>(tag.size()) || !ClaimsFooter(tag) ||
        QByteArrayView(tag).last(ID3v2HeaderBytes).startsWith("3DI"))
        return;
    tag.chop(ID3v2HeaderBytes);
    tag[flagsAt] = static_cast<char>(static_cast<quint8>(tag[flagsAt]) & ~footerFlag);
}
