#include "platform/HostCodePage.h"

std::optional<QByteArray> EncodeInHostPage(const QString &text)
{
    // A text that starts with what reads as a mark needs a mark of its own before it.
    if (text.startsWith(QChar(QChar::ByteOrderMark)))
        return std::nullopt;
    return text.toUtf8();
}

bool HostPageIsUtf8()
{
    return true;
}

QString DecodeFromHostPage(QByteArrayView bytes)
{
    static const RecordPage page = Windows1252Page();
    return DecodeSingleBytes(bytes, page);
}

RecordPage HostRecordPage()
{
    return Windows1252Page();
}
