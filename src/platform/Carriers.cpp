#include "platform/Carriers.h"

#include <algorithm>
#include <array>

namespace
{

constexpr char16_t CarrierBase = 0xF000;
constexpr char16_t CarriedBackslash = CarrierBase + '\\';
constexpr char16_t CarriedLineFeed = CarrierBase + '\n';
constexpr char16_t CarriedReturn = CarrierBase + '\r';

using AsciiUnits = std::array<char16_t, 128>;

constexpr AsciiUnits MakeAsciiUnits(Carriage carriage)
{
    AsciiUnits units{};
    for (std::size_t c = 0; c < units.size(); ++c)
        units[c] = static_cast<char16_t>(c);
    units['\n'] = CarriedLineFeed;
    units['\r'] = CarriedReturn;
    if (carriage == Carriage::Inside) {
        units['/'] = u'\\';
        units['\\'] = CarriedBackslash;
    }
    return units;
}

constexpr AsciiUnits InsideUnits = MakeAsciiUnits(Carriage::Inside);
constexpr AsciiUnits LineUnits = MakeAsciiUnits(Carriage::Line);

/// Whether a text holds neither control characters nor anything beyond ASCII, as nearly all do. Without a branch, so
/// that the compiler lets it look at many characters at once; so are the loops over such a text.
bool IsPlain(QStringView text)
{
    // Beyond ASCII a unit has a high bit, below the blank its distance from the blank has.
    unsigned short bits = 0;
    for (const QChar c : text)
        bits = static_cast<unsigned short>(bits | c.unicode() | static_cast<unsigned short>(c.unicode() - 0x20));
    return bits < 0x80;
}

bool IsCarrier(char32_t c, Carriage carriage)
{
    if (c < CarriedLineFeed || c > CarrierBase + 0xFF)
        return false;
    return c >= CarrierBase + 0x80 || c == CarriedLineFeed || c == CarriedReturn ||
           (c == CarriedBackslash && carriage == Carriage::Inside);
}

struct Sequence {
    char32_t Character = 0;
    int Length = 0;
};

/// The UTF-8 sequence at the start of some bytes; length 0 when there is none that is well-formed.
Sequence ReadSequence(const unsigned char *bytes, qsizetype size)
{
    const unsigned char lead = bytes[0];
    int length = 0;
    char32_t smallest = 0;
    char32_t value = 0;
    if (lead >= 0xC2 && lead <= 0xDF) {
        length = 2;
        smallest = 0x80;
        value = lead & 0x1FU;
    } else if (lead >= 0xE0 && lead <= 0xEF) {
        length = 3;
        smallest = 0x800;
        value = lead & 0x0FU;
    } else if (lead >= 0xF0 && lead <= 0xF4) {
        length = 4;
        smallest = 0x10000;
        value = lead & 0x07U;
    }
    if (length == 0 || length > size)
        return {};
    for (int i = 1; i < length; ++i) {
        if ((bytes[i] & 0xC0U) != 0x80U)
            return {};
        value = (value << 6) | (bytes[i] & 0x3FU);
    }
    if (value < smallest || value > 0x10FFFF || (value >= 0xD800 && value <= 0xDFFF))
        return {};
    return {value, length};
}

/// Appends the character at the start of some bytes; returns the bytes consumed.
int DecodeSequence(const unsigned char *bytes, qsizetype size, Carriage carriage, char16_t *&out)
{
    const Sequence sequence = ReadSequence(bytes, size);
    if (sequence.Length == 0 || IsCarrier(sequence.Character, carriage)) {
        const int carried = sequence.Length == 0 ? 1 : sequence.Length;
        for (int i = 0; i < carried; ++i)
            *out++ = static_cast<char16_t>(CarrierBase + bytes[i]);
        return carried;
    }
    if (sequence.Character >= 0x10000) {
        *out++ = QChar::highSurrogate(sequence.Character);
        *out++ = QChar::lowSurrogate(sequence.Character);
    } else {
        *out++ = static_cast<char16_t>(sequence.Character);
    }
    return sequence.Length;
}

/// Appends a character beyond ASCII as UTF-8.
void EncodeCharacter(char32_t c, char *&out)
{
    const auto put = [&out](char32_t byte) { *out++ = static_cast<char>(static_cast<unsigned char>(byte)); };
    if (c < 0x800) {
        put(0xC0 | (c >> 6));
    } else {
        if (c < 0x10000) {
            put(0xE0 | (c >> 12));
        } else {
            put(0xF0 | (c >> 18));
            put(0x80 | ((c >> 12) & 0x3F));
        }
        put(0x80 | ((c >> 6) & 0x3F));
    }
    put(0x80 | (c & 0x3F));
}

/// BytesFromText for any text.
QByteArray EncodeAnyText(QByteArrayView prefix, QStringView text, Carriage carriage)
{
    QByteArray done = prefix.toByteArray();
    const qsizetype start = done.size();
    done.resize(start + 3 * text.size());
    char *out = done.data() + start;
    for (qsizetype i = 0; i < text.size(); ++i) {
        char32_t c = text[i].unicode();
        if (c == 0)
            return {};
        if (c < 0x80) {
            *out++ = c == U'\\' && carriage == Carriage::Inside ? '/' : static_cast<char>(c);
            continue;
        }
        if (IsCarrier(c, carriage)) {
            *out++ = static_cast<char>(static_cast<unsigned char>(c - CarrierBase));
            continue;
        }
        if (QChar::isHighSurrogate(c) && i + 1 < text.size() && text[i + 1].isLowSurrogate())
            c = QChar::surrogateToUcs4(static_cast<char16_t>(c), text[++i].unicode());
        else if (QChar::isSurrogate(c))
            c = QChar::ReplacementCharacter;
        EncodeCharacter(c, out);
    }
    done.truncate(out - done.constData());
    return done;
}

} // namespace

QString TextFromBytes(QByteArrayView bytes, Carriage carriage, QStringView prefix)
{
    // No byte becomes more than one code unit.
    QString text(prefix.size() + bytes.size(), Qt::Uninitialized);
    auto *out = reinterpret_cast<char16_t *>(text.data());
    char16_t *const first = out;
    for (const QChar c : prefix)
        *out++ = c.unicode();
    const AsciiUnits &units = carriage == Carriage::Inside ? InsideUnits : LineUnits;
    const auto *in = reinterpret_cast<const unsigned char *>(bytes.data());
    const unsigned char *const end = in + bytes.size();
    while (in != end) {
        if (*in < 0x80)
            *out++ = units[*in++];
        else
            in += DecodeSequence(in, end - in, carriage, out);
    }
    text.truncate(out - first);
    return text;
}

QByteArray BytesFromText(QStringView text, Carriage carriage, QByteArrayView prefix)
{
    if (!IsPlain(text))
        return EncodeAnyText(prefix, text, carriage);
    QByteArray bytes(prefix.size() + text.size(), Qt::Uninitialized);
    char *out = std::copy(prefix.begin(), prefix.end(), bytes.data());
    const char separator = carriage == Carriage::Inside ? '/' : '\\';
    for (qsizetype i = 0; i < text.size(); ++i) {
        const auto c = static_cast<char>(text.utf16()[i]);
        out[i] = c == '\\' ? separator : c;
    }
    return bytes;
}

QString InsideFromLine(QStringView line, QStringView prefix)
{
    if (!IsPlain(line)) {
        const QByteArray bytes = BytesFromText(line, Carriage::Line);
        return bytes.isEmpty() ? QString() : TextFromBytes(bytes, Carriage::Inside, prefix);
    }
    QString text(prefix.size() + line.size(), Qt::Uninitialized);
    auto *out = reinterpret_cast<char16_t *>(std::copy(prefix.begin(), prefix.end(), text.data()));
    for (qsizetype i = 0; i < line.size(); ++i) {
        const char16_t unit = line.utf16()[i];
        const char16_t turned = unit == u'/' ? u'\\' : unit;
        out[i] = unit == u'\\' ? CarriedBackslash : turned;
    }
    return text;
}

std::optional<unsigned char> CarriedByte(QChar character, Carriage carriage)
{
    if (!IsCarrier(character.unicode(), carriage))
        return std::nullopt;
    return static_cast<unsigned char>(character.unicode() - CarrierBase);
}

QString ShownText(QString text)
{
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (const QChar character = std::as_const(text)[i]; IsCarrier(character.unicode(), Carriage::Inside))
            text[i] = character == CarriedBackslash ? u'\\' : QChar(QChar::ReplacementCharacter);
    }
    return text;
}
