#include "platform/RebuiltFile.h"

#include "platform/Files.h"
#include "platform/ReplacedFile.h"
#include "platform/WayBack.h"

#include <algorithm>
#include <optional>
#include <vector>

namespace
{

constexpr std::int64_t BlockSize = 256 * 1024;

/// A piece that is not empty, and where it goes.
struct PlacedPiece {
    QByteArrayView Bytes;
    std::int64_t From;
    std::int64_t To;
    std::int64_t Count;

    bool IsOld() const { return Bytes.isEmpty(); }
};

struct RebuildPlan {
    std::vector<PlacedPiece> Pieces;
    std::int64_t OldSize = 0;
    std::int64_t Size = 0;
};

/// Nothing when a stretch lies outside the old file or stands before one it followed there.
std::optional<RebuildPlan> MakePlan(std::int64_t oldSize, std::span<const FilePiece> pieces)
{
    RebuildPlan plan;
    plan.OldSize = oldSize;
    std::int64_t used = 0;
    for (const FilePiece &piece : pieces) {
        const bool isOld = piece.Bytes.isEmpty();
        const std::int64_t count = isOld ? piece.Count : piece.Bytes.size();
        if (count == 0)
            continue;
        if (isOld) {
            if (count < 0 || piece.From < used || piece.From > oldSize - count)
                return std::nullopt;
            used = piece.From + count;
        }
        plan.Pieces.push_back({piece.Bytes, piece.From, plan.Size, count});
        plan.Size += count;
    }
    return plan;
}

bool KeepsOffsets(const RebuildPlan &plan)
{
    return std::all_of(plan.Pieces.begin(), plan.Pieces.end(),
                       [](const PlacedPiece &piece) { return !piece.IsOld() || piece.From == piece.To; });
}

RebuildState StateOfFault()
{
    return LastFault() == FileFault::DiskFull ? RebuildState::DiskFull : RebuildState::Failed;
}

std::span<char> FirstOf(QByteArray &buffer, std::int64_t count)
{
    return {buffer.data(), static_cast<std::size_t>(count)};
}

bool CopyBlock(const DiskFile &source, std::int64_t from, DiskFile &target, std::int64_t to, std::span<char> buffer)
{
    return source.ReadAt(from, buffer) &&
           target.WriteAt(to, QByteArrayView(buffer.data(), static_cast<qsizetype>(buffer.size())));
}

bool CopyStretch(const DiskFile &old, DiskFile &copy, const PlacedPiece &piece)
{
    std::int64_t done = copy.CopyFrom(old, piece.From, piece.To, piece.Count);
    QByteArray buffer(done < piece.Count ? BlockSize : 0, Qt::Uninitialized);
    for (; done < piece.Count; done += BlockSize) {
        const std::int64_t count = std::min(BlockSize, piece.Count - done);
        if (!CopyBlock(old, piece.From + done, copy, piece.To + done, FirstOf(buffer, count)))
            return false;
    }
    return true;
}

bool ReadsBack(const DiskFile &old, const DiskFile &target, const PlacedPiece &piece)
{
    QByteArray found(BlockSize, Qt::Uninitialized);
    QByteArray held(piece.IsOld() ? BlockSize : 0, Qt::Uninitialized);
    for (std::int64_t done = 0; done < piece.Count; done += BlockSize) {
        const std::int64_t count = std::min(BlockSize, piece.Count - done);
        if (!target.ReadAt(piece.To + done, FirstOf(found, count)) ||
            (piece.IsOld() && !old.ReadAt(piece.From + done, FirstOf(held, count))))
            return false;
        const QByteArrayView wanted =
            piece.IsOld() ? QByteArrayView(held).first(count) : piece.Bytes.sliced(done, count);
        if (QByteArrayView(found).first(count) != wanted)
            return false;
    }
    return true;
}

/// Writes the pieces to their places and compares them; without the old stretches where those stand there already.
RebuildState WritePieces(const DiskFile &old, DiskFile &target, const RebuildPlan &plan, bool oldStand)
{
    for (const PlacedPiece &piece : plan.Pieces) {
        const bool written =
            piece.IsOld() ? oldStand || CopyStretch(old, target, piece) : target.WriteAt(piece.To, piece.Bytes);
        if (!written)
            return StateOfFault();
    }
    if (!target.Resize(plan.Size))
        return StateOfFault();
    target.BeginFlush();
    const bool same = std::all_of(plan.Pieces.begin(), plan.Pieces.end(), [&](const PlacedPiece &piece) {
        return (piece.IsOld() && oldStand) || ReadsBack(old, target, piece);
    });
    return same && target.Facts().Size == plan.Size ? RebuildState::Done : RebuildState::Failed;
}

/// Nothing, and the file as it was, when its folder takes no copy.
std::optional<RebuildState> RebuildByCopy(const QString &path, DiskFile &old, const RebuildPlan &plan)
{
    const DiskFacts facts = old.Facts();
    ReplacedFile replaced;
    if (!replaced.Begin(path))
        return LastFault() == FileFault::Rights ? std::nullopt : std::optional(StateOfFault());
    const bool cloned = KeepsOffsets(plan) && replaced.Copy().CloneFrom(old);
    RebuildState state = WritePieces(old, replaced.Copy(), plan, cloned);
    if (state == RebuildState::Done && !replaced.Settle())
        state = StateOfFault();
    // An open file is not replaced everywhere.
    old.Close();
    const DiskFacts found = DiskFactsOf(path);
    const bool isThere = found.Size >= 0 || state == RebuildState::Done;
    if (state != RebuildState::DiskFull && isThere && found != facts)
        return RebuildState::Changed;
    if (state != RebuildState::Done)
        return state;
    if (replaced.TakePlace())
        return RebuildState::Done;
    switch (LastFault()) {
    case FileFault::Rights:
        return std::nullopt;
    case FileFault::Held:
        return RebuildState::CannotOpen;
    default:
        return StateOfFault();
    }
}

/// Writes a file in place, and takes it back when that fails.
class InPlaceRebuild
{
public:
    InPlaceRebuild(const QString &pathOfFile, DiskFile &openFile, const RebuildPlan &wanted)
        : path(pathOfFile), file(openFile), plan(wanted)
    {
    }

    RebuildState Run()
    {
        WayBack wayBack;
        if (!HoldLost() || !wayBack.NoteStretches(path, file, OverwrittenStretches()))
            return StateOfFault();
        RebuildState state = RebuildState::Done;
        if (!file.Reserve(plan.Size) || !MoveStretches())
            state = StateOfFault();
        else
            state = WritePieces(file, file, plan, true);
        if (state == RebuildState::Done && !file.Flush())
            state = StateOfFault();
        if (state == RebuildState::Done || TakeBack())
            wayBack.Drop();
        else
            wayBack.Abandon();
        return state;
    }

private:
    struct Move {
        std::int64_t From;
        std::int64_t To;
        std::int64_t Count;
    };
    struct Held {
        std::int64_t From;
        QByteArray Bytes;
    };

    /// What of the old file does not stay where it is.
    std::vector<WayBack::Stretch> OverwrittenStretches() const
    {
        std::vector<WayBack::Stretch> stretches;
        std::int64_t stays = 0;
        const auto add = [&](std::int64_t end) {
            if (end > stays)
                stretches.push_back({stays, end - stays});
        };
        for (const PlacedPiece &piece : plan.Pieces) {
            if (!piece.IsOld() || piece.From != piece.To)
                continue;
            add(piece.From);
            stays = piece.From + piece.Count;
        }
        add(plan.OldSize);
        return stretches;
    }

    bool Hold(std::int64_t from, std::int64_t end)
    {
        if (from == end)
            return true;
        lost.push_back({from, QByteArray(end - from, Qt::Uninitialized)});
        return file.ReadAt(from, FirstOf(lost.back().Bytes, end - from));
    }

    /// What of the old file is in no piece.
    bool HoldLost()
    {
        std::int64_t end = 0;
        for (const PlacedPiece &piece : plan.Pieces) {
            if (!piece.IsOld())
                continue;
            if (!Hold(end, piece.From))
                return false;
            end = piece.From + piece.Count;
        }
        return Hold(end, plan.OldSize);
    }

    /// The blocks of a stretch, first those at the end it moves towards.
    static void AddMoves(const PlacedPiece &piece, std::vector<Move> &moves)
    {
        for (std::int64_t done = 0; done < piece.Count; done += BlockSize) {
            const std::int64_t count = std::min(BlockSize, piece.Count - done);
            const std::int64_t offset = piece.To > piece.From ? piece.Count - done - count : done;
            moves.push_back({piece.From + offset, piece.To + offset, count});
        }
    }

    /// All moves in an order in which none writes over what a later one reads.
    std::vector<Move> OrderedMoves() const
    {
        std::vector<Move> moves;
        for (auto piece = plan.Pieces.rbegin(); piece != plan.Pieces.rend(); ++piece) {
            if (piece->IsOld() && piece->To > piece->From)
                AddMoves(*piece, moves);
        }
        for (const PlacedPiece &piece : plan.Pieces) {
            if (piece.IsOld() && piece.To < piece.From)
                AddMoves(piece, moves);
        }
        return moves;
    }

    bool MoveStretches()
    {
        QByteArray buffer(BlockSize, Qt::Uninitialized);
        for (const Move &move : OrderedMoves()) {
            if (!file.ReadAt(move.From, FirstOf(buffer, move.Count)))
                return false;
            if (!file.WriteAt(move.To, QByteArrayView(buffer).first(move.Count))) {
                // Its target may overlap it, so only the buffer has it whole.
                lost.push_back({move.From, buffer.first(move.Count)});
                return false;
            }
            moved.push_back(move);
        }
        return true;
    }

    bool TakeBack()
    {
        QByteArray buffer(BlockSize, Qt::Uninitialized);
        bool done = true;
        for (auto move = moved.rbegin(); move != moved.rend(); ++move)
            done = CopyBlock(file, move->To, file, move->From, FirstOf(buffer, move->Count)) && done;
        for (const Held &held : lost)
            done = file.WriteAt(held.From, held.Bytes) && done;
        return file.Resize(plan.OldSize) && file.Flush() && done;
    }

    const QString &path;
    DiskFile &file;
    const RebuildPlan &plan;
    std::vector<Move> moved;
    std::vector<Held> lost;
};

RebuildState OpenOld(const QString &path, const DiskFacts &planned, DiskFile &old)
{
    const int attributes = FileAttributes(path);
    if (attributes == -1 || (attributes & AttributeDirectory) != 0)
        return RebuildState::CannotOpen;
    if ((attributes & AttributeReadOnly) != 0)
        return RebuildState::ReadOnly;
    if (!old.Open(path))
        return RebuildState::CannotOpen;
    return old.Facts() == planned ? RebuildState::Done : RebuildState::Changed;
}

} // namespace

RebuildState RebuildFile(const QString &path, const DiskFacts &planned, std::span<const FilePiece> pieces)
{
    WayBack::GoAbandoned();
    DiskFile old;
    RebuildState state = OpenOld(path, planned, old);
    if (state != RebuildState::Done)
        return state;
    const auto plan = MakePlan(planned.Size, pieces);
    if (!plan)
        return RebuildState::Failed;
    if (old.Facts().Links == 1) {
        if (const auto copied = RebuildByCopy(path, old, *plan))
            return *copied;
        state = OpenOld(path, planned, old);
        if (state != RebuildState::Done)
            return state;
    }
    return InPlaceRebuild(path, old, *plan).Run();
}
