#include "platform/ReplacedText.h"

#include "platform/CodePage.h"
#include "platform/HostCodePage.h"
#include "platform/ReplacedFile.h"

#include <optional>

namespace
{

/// Nothing for what can only stand behind a mark.
std::optional<QByteArray> EncodeUnmarked(const QString &text, ReplacedText::Kind kind)
{
    auto bytes = EncodeInHostPage(text);
    const bool readsWrong =
        kind == ReplacedText::Kind::Page && HostPageIsUtf8() && bytes && bytes->size() != text.size();
    return readsWrong ? std::nullopt : bytes;
}

} // namespace

ReplacedText::ReplacedText(Kind kindOfText) : kind(kindOfText) {}

ReplacedText::~ReplacedText() = default;

bool ReplacedText::Begin(const QString &pathOfFile)
{
    path = pathOfFile;
    file = std::make_unique<ReplacedFile>();
    if (!file->Begin(path))
        file.reset();
    return file != nullptr;
}

bool ReplacedText::AppendBytes(const QByteArray &bytes)
{
    if (file && !file->Append(bytes))
        file.reset();
    // The disk works while the next pieces are made.
    constexpr qsizetype enough = 1 << 20;
    unflushed += bytes.size();
    if (file && unflushed > enough) {
        file->Copy().BeginFlush();
        unflushed = 0;
    }
    return file != nullptr;
}

bool ReplacedText::Append(const QString &piece)
{
    const auto unmarked = marked ? std::nullopt : EncodeUnmarked(piece, kind);
    if (unmarked) {
        sizes.append(unmarked->size());
        return AppendBytes(*unmarked);
    }
    return (marked || Mark()) && AppendBytes(piece.toUtf8());
}

bool ReplacedText::Mark()
{
    marked = true;
    const std::unique_ptr<ReplacedFile> old = std::move(file);
    if (!old || !Begin(path) || !AppendBytes(QByteArray(Utf8Mark.data(), Utf8Mark.size())))
        return false;
    std::int64_t offset = 0;
    for (const qsizetype size : std::exchange(sizes, {})) {
        QByteArray bytes(size, Qt::Uninitialized);
        if (!old->Copy().ReadAt(offset, {bytes.data(), static_cast<std::size_t>(size)})) {
            file.reset();
            return false;
        }
        AppendBytes(DecodeText(bytes).toUtf8());
        offset += size;
    }
    return file != nullptr;
}

bool ReplacedText::Commit()
{
    return file && file->Commit();
}
