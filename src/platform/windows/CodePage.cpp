#include "platform/CodePage.h"
#include "platform/HostCodePage.h"
#include "platform/windows/WindowsApi.h"

#include <algorithm>
#include <vector>

namespace
{

bool PageIsUtf8()
{
    return GetACP() == CP_UTF8;
}

bool PageHasSingleBytes()
{
    CPINFO facts;
    return GetCPInfo(CP_ACP, &facts) && facts.MaxCharSize == 1;
}

} // namespace

std::optional<QByteArray> EncodeInHostPage(const QString &text)
{
    if (text.isEmpty())
        return QByteArray();
    QByteArray bytes;
    if (PageIsUtf8()) {
        bytes = text.toUtf8();
    } else {
        const std::wstring wide = text.toStdWString();
        const int length = static_cast<int>(wide.size());
        BOOL replaced = FALSE;
        const int size =
            WideCharToMultiByte(CP_ACP, WC_NO_BEST_FIT_CHARS, wide.data(), length, nullptr, 0, nullptr, &replaced);
        if (size <= 0 || replaced)
            return std::nullopt;
        bytes.resize(size);
        WideCharToMultiByte(CP_ACP, WC_NO_BEST_FIT_CHARS, wide.data(), length, bytes.data(), size, nullptr, nullptr);
    }
    // Letters of the page may by chance read as UTF-8 or as a mark.
    if (DecodeText(bytes) != text)
        return std::nullopt;
    return bytes;
}

QString DecodeFromHostPage(QByteArrayView bytes)
{
    static const RecordPage western = Windows1252Page();
    if (PageIsUtf8() || bytes.isEmpty())
        return DecodeSingleBytes(bytes, western);
    const int length = static_cast<int>(bytes.size());
    const int size = MultiByteToWideChar(CP_ACP, 0, bytes.data(), length, nullptr, 0);
    std::vector<wchar_t> buffer(static_cast<std::size_t>(std::max(size, 0)));
    MultiByteToWideChar(CP_ACP, 0, bytes.data(), length, buffer.data(), size);
    return QString::fromWCharArray(buffer.data(), static_cast<qsizetype>(buffer.size()));
}

RecordPage HostRecordPage()
{
    RecordPage page = Windows1252Page();
    if (!PageHasSingleBytes())
        return page;
    for (std::size_t i = 0x80; i < page.size(); ++i) {
        const char byte = static_cast<char>(static_cast<unsigned char>(i));
        wchar_t wide = 0;
        const bool known = MultiByteToWideChar(CP_ACP, MB_ERR_INVALID_CHARS, &byte, 1, &wide, 1) == 1;
        // A byte without a character is carried in the private use area, so that it survives.
        page[i] = known ? static_cast<char16_t>(wide) : static_cast<char16_t>(0xF700 + i);
    }
    return page;
}
