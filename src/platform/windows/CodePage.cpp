#include "platform/CodePage.h"
#include "platform/windows/AnsiPage.h"
#include "platform/windows/WindowsApi.h"

#include <algorithm>
#include <vector>

namespace
{

bool HasSingleBytes(unsigned page)
{
    CPINFO facts;
    return GetCPInfo(page, &facts) && facts.MaxCharSize == 1;
}

} // namespace

std::optional<QByteArray> EncodeInPage(unsigned page, const QString &text)
{
    if (text.isEmpty())
        return QByteArray();
    const std::wstring wide = text.toStdWString();
    const int length = static_cast<int>(wide.size());
    BOOL replaced = FALSE;
    const int size =
        WideCharToMultiByte(page, WC_NO_BEST_FIT_CHARS, wide.data(), length, nullptr, 0, nullptr, &replaced);
    if (size <= 0 || replaced)
        return std::nullopt;
    QByteArray bytes(size, Qt::Uninitialized);
    WideCharToMultiByte(page, WC_NO_BEST_FIT_CHARS, wide.data(), length, bytes.data(), size, nullptr, nullptr);
    return bytes;
}

QString DecodeFromPage(unsigned page, QByteArrayView bytes)
{
    static const RecordPage western = Windows1252Page();
    if (page == CP_UTF8 || bytes.isEmpty())
        return DecodeSingleBytes(bytes, western);
    const int length = static_cast<int>(bytes.size());
    const int size = MultiByteToWideChar(page, 0, bytes.data(), length, nullptr, 0);
    std::vector<wchar_t> buffer(static_cast<std::size_t>(std::max(size, 0)));
    MultiByteToWideChar(page, 0, bytes.data(), length, buffer.data(), size);
    return QString::fromWCharArray(buffer.data(), static_cast<qsizetype>(buffer.size()));
}

RecordPage RecordPageOf(unsigned page)
{
    RecordPage characters = Windows1252Page();
    if (!HasSingleBytes(page))
        return characters;
    for (std::size_t i = 0x80; i < characters.size(); ++i) {
        const char byte = static_cast<char>(static_cast<unsigned char>(i));
        wchar_t wide = 0;
        const bool known = MultiByteToWideChar(page, MB_ERR_INVALID_CHARS, &byte, 1, &wide, 1) == 1;
        // A byte without a character is carried in the private use area, so that it survives.
        characters[i] = known ? static_cast<char16_t>(wide) : static_cast<char16_t>(0xF700 + i);
    }
    return characters;
}

bool HostPageIsUtf8()
{
    return GetACP() == CP_UTF8;
}

std::optional<QByteArray> EncodeInHostPage(const QString &text)
{
    const auto bytes = HostPageIsUtf8() ? text.toUtf8() : EncodeInPage(GetACP(), text);
    // Letters of the page may by chance read as UTF-8 or as a mark.
    return bytes && DecodeText(*bytes) == text ? bytes : std::nullopt;
}

QString DecodeFromHostPage(QByteArrayView bytes)
{
    return DecodeFromPage(GetACP(), bytes);
}

RecordPage HostRecordPage()
{
    return RecordPageOf(GetACP());
}
