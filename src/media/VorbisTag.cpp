#include "media/VorbisTag.h"

#include "media/FullData.h"
#include "platform/CodePage.h"
#include "platform/Files.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <optional>
#include <string_view>

using namespace Qt::StringLiterals;
using namespace std::string_view_literals;

namespace
{
constexpr int BufferBytes = 2048;
using Buffer = std::array<unsigned char, BufferBytes>;

constexpr std::size_t Nowhere = std::string_view::npos;
// A packet begins with its number and the name of the codec; a comment header goes on with the vendor text's length.
constexpr std::string_view CommentHeader = "\3vorbis"sv;
constexpr std::string_view SetupHeader = "\5vorbis"sv;
constexpr std::string_view FramedSetupHeader = "\1\5vorbis"sv;

struct Key {
    std::string_view Name;
    /// Null for the track number, which is no text.
    QString VorbisTag::*Field;
};
constexpr Key Keys[] = {
    {"TITLE="sv, &VorbisTag::Title},     {"ARTIST="sv, &VorbisTag::Artist},
    {"COMMENT="sv, &VorbisTag::Comment}, {"ALBUM="sv, &VorbisTag::Album},
    {"DATE="sv, &VorbisTag::Date},       {"TRACKNUMBER="sv, nullptr},
    {"GENRE="sv, &VorbisTag::Genre},     {"ENCODED_USING="sv, &VorbisTag::EncodedUsing},
};

std::string_view Characters(const Buffer &buffer)
{
    return {reinterpret_cast<const char *>(buffer.data()), buffer.size()};
}

bool ReadBuffer(const InputFile &file, std::int64_t offset, Buffer &buffer)
{
    return file.ReadAt(offset, buffer) == BufferBytes;
}

std::size_t FindMarker(std::string_view chunk)
{
    for (std::size_t place = 0; (place = chunk.find(CommentHeader, place)) != Nowhere; ++place) {
        const std::string_view behind = chunk.substr(place + CommentHeader.size(), 1);
        if (behind == "\x1D"sv || behind == "\x20"sv)
            return place;
    }
    return Nowhere;
}

// Fills the buffer with the file from its marker on. Returns the error's message, empty when there is none.
QString LoadComments(const QString &path, Buffer &buffer)
{
    InputFile file;
    if (!file.Open(path))
        return u"Error opening file! "_s;
    const QString failure = u"Error processing file."_s;
    if (file.Size() < BufferBytes)
        return failure;
    // A chunk counts only when another whole one follows it.
    for (std::int64_t start = 0; start + 2 * BufferBytes <= file.Size(); start += BufferBytes) {
        if (!ReadBuffer(file, start, buffer))
            return failure;
        const std::size_t place = FindMarker(Characters(buffer));
        if (place != Nowhere) // The place is taken from the front of the file, whichever the chunk.
            return ReadBuffer(file, static_cast<std::int64_t>(place), buffer) ? QString() : failure;
    }
    return u"Vorbis header not found!"_s;
}

// What stands behind a key, up to the next comment or the end of the header; nothing when its end is missing or lies
// before its start.
std::optional<std::string_view> FindValue(std::string_view block, std::size_t keyPlace, std::size_t start)
{
    const std::size_t zeros = block.find("\0\0\0"sv, keyPlace);
    const std::size_t setup = block.find(FramedSetupHeader, keyPlace);
    if (setup < zeros)
        return block.substr(start, setup - start);
    // The next comment's length, below 256: one byte, then three zeros.
    if (zeros == Nowhere || zeros <= start)
        return std::nullopt;
    return block.substr(start, zeros - 1 - start);
}

// The number that a value begins with, halves to the even neighbour; 0 when it begins with none. Nothing beyond 16
// bits.
std::optional<qint16> LeadingNumber(std::string_view value)
{
    value.remove_prefix(std::min(value.find_first_not_of(" \t\n"sv), value.size()));
    const bool negative = value.starts_with('-');
    if (negative || value.starts_with('+'))
        value.remove_prefix(1);
    const auto atDigit = [&value] { return !value.empty() && value.front() >= '0' && value.front() <= '9'; };
    double number = 0;
    for (; atDigit(); value.remove_prefix(1))
        number = 10 * number + (value.front() - '0');
    if (value.starts_with('.')) {
        value.remove_prefix(1);
        for (double unit = 0.1; atDigit(); value.remove_prefix(1), unit /= 10)
            number += unit * (value.front() - '0');
    }
    number = std::nearbyint(negative ? -number : number);
    using Limits = std::numeric_limits<qint16>;
    if (number < Limits::min() || number > Limits::max())
        return std::nullopt;
    return static_cast<qint16>(number);
}

bool Store(std::string_view value, QString VorbisTag::*field, VorbisTag &tag)
{
    if (field) {
        tag.*field = DecodeText(QByteArray(value.data(), static_cast<qsizetype>(value.size())));
        return true;
    }
    const std::optional<qint16> number = LeadingNumber(value);
    tag.TrackNumber = number.value_or(0);
    return number.has_value();
}

// Returns the error's message, empty when there is none.
QString TakeFields(std::string_view block, VorbisTag &tag)
{
    const QString failure = u"Vorbis header not closed!"_s;
    if (block.find(SetupHeader, CommentHeader.size() - 1) == Nowhere)
        return failure;
    bool found = false;
    for (const Key &key : Keys) {
        const std::size_t place = block.find(key.Name);
        if (place == Nowhere)
            continue;
        found = true;
        const auto value = FindValue(block, place, place + key.Name.size());
        if (!value || !Store(*value, key.Field, tag))
            return failure;
    }
    return found ? QString() : u"No tag information exists!"_s;
}
} // namespace

bool ReadVorbisTag(const QString &path, VorbisTag &tag)
{
    tag = VorbisTag();
    Buffer buffer;
    tag.ErrorMessage = LoadComments(path, buffer);
    if (tag.ErrorMessage.isEmpty())
        tag.ErrorMessage = TakeFields(Characters(buffer), tag);
    if (!tag.ErrorMessage.isEmpty() && FullData()) {
        VorbisTag comments;
        if (ReadComments(path, comments))
            tag = comments;
    }
    return tag.ErrorMessage.isEmpty();
}
