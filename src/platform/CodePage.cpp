#include "platform/CodePage.h"

#include "platform/HostCodePage.h"

#include <QByteArrayList>
#include <QStringDecoder>
#include <QStringList>

#include <algorithm>

namespace
{

// 80 to 9F; a byte without a character stands for its C1 control, so that it survives.
constexpr std::array<char16_t, 32> Windows1252High{
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,
};

QString DecodeWith(QStringDecoder::Encoding encoding, QByteArrayView bytes)
{
    // A mark has been cut off by now; another one is text.
    QStringDecoder decoder(encoding, QStringDecoder::Flag::Stateless | QStringDecoder::Flag::ConvertInitialBom);
    return decoder.decode(bytes);
}

/// Text of which not all is valid UTF-8: line by line where most lines that go beyond ASCII are, so that a line in
/// another form spoils no other. A line in single bytes can look like UTF-8 by chance, most of a file's cannot.
QString DecodeMixed(const QByteArray &bytes)
{
    const QByteArrayList lines = bytes.split('\n');
    QStringList texts;
    qsizetype most = 0;
    for (const QByteArray &line : lines) {
        const bool isUtf8 = line.isValidUtf8();
        if (!isUtf8 || QString::fromUtf8(line).size() < line.size())
            most += isUtf8 ? 1 : -1;
        texts.append(isUtf8 ? QString::fromUtf8(line) : DecodeFromHostPage(line));
    }
    return most > 0 ? texts.join(u'\n') : DecodeFromHostPage(bytes);
}

} // namespace

RecordPage Windows1252Page()
{
    RecordPage page{};
    for (std::size_t i = 0; i < page.size(); ++i)
        page[i] = i >= 0x80 && i < 0xA0 ? Windows1252High[i - 0x80] : static_cast<char16_t>(i);
    return page;
}

QString DecodeSingleBytes(QByteArrayView bytes, const RecordPage &page)
{
    QString text(bytes.size(), Qt::Uninitialized);
    std::transform(bytes.begin(), bytes.end(), text.begin(),
                   [&page](char byte) { return QChar(page[static_cast<unsigned char>(byte)]); });
    return text;
}

QByteArray EncodeText(const QString &text)
{
    const auto encoded = EncodeInHostPage(text);
    return encoded ? *encoded : Utf8Mark + text.toUtf8();
}

QString DecodeText(const QByteArray &bytes)
{
    if (bytes.startsWith(Utf8Mark))
        return DecodeWith(QStringDecoder::Utf8, QByteArrayView(bytes).sliced(Utf8Mark.size()));
    if (bytes.startsWith("\xFF\xFE"))
        return DecodeWith(QStringDecoder::Utf16LE, QByteArrayView(bytes).sliced(2));
    if (bytes.startsWith("\xFE\xFF"))
        return DecodeWith(QStringDecoder::Utf16BE, QByteArrayView(bytes).sliced(2));
    return bytes.isValidUtf8() ? QString::fromUtf8(bytes) : DecodeMixed(bytes);
}

QByteArray EncodeRecordText(const QString &text)
{
    static const RecordPage page = HostRecordPage();
    QByteArray bytes(text.size(), '?');
    for (qsizetype i = 0; i < text.size(); ++i) {
        const auto found = std::find(page.begin(), page.end(), text[i].unicode());
        if (found != page.end())
            bytes[i] = static_cast<char>(static_cast<unsigned char>(found - page.begin()));
    }
    return bytes;
}

QString DecodeRecordText(const QByteArray &bytes)
{
    static const RecordPage page = HostRecordPage();
    return DecodeSingleBytes(bytes, page);
}
