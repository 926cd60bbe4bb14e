#include "platform/WayBack.h"

#include "platform/DiskFile.h"
#include "platform/Drives.h"
#include "platform/Files.h"
#include "platform/ReplacedFile.h"

#include <QDataStream>
#include <QHash>
#include <QIODevice>
#include <QMap>
#include <QRandomGenerator>

#include <algorithm>
#include <optional>
#include <vector>

using namespace Qt::StringLiterals;

namespace
{

constexpr QLatin1StringView NotesPrefix("way-back-");
constexpr std::int64_t BlockSize = 256 * 1024;

// A note is a byte that says whether it stands, its kind, the bytes that follow in all and those of its head, the head,
// and, for some kinds, bytes of a file. Behind the last one stands a zero.
constexpr char Unwritten = 0;
constexpr char Stands = 'S';
constexpr char Dropped = 'D';
constexpr std::int64_t FrontSize = 2 + 2 * sizeof(qint64);
enum Kind : char { CopyKind = 'c', RenameKind = 'r', FormerKind = 'f', StretchesKind = 's' };

QByteArray FrontOf(Kind kind, qint64 size, qint64 headSize)
{
    QByteArray front;
    QDataStream stream(&front, QIODevice::WriteOnly);
    stream << static_cast<qint8>(Unwritten) << static_cast<qint8>(kind) << size << headSize;
    return front;
}

QString FolderOfPath(const QString &path)
{
    return path.first(path.lastIndexOf(u'\\') + 1);
}

/// By which a folder is told from the one that stands at its path while its disk is away.
quint64 FolderNumber(const QString &path)
{
    return IdentifyFolder(FolderOfPath(path)).Number;
}

bool CopyBytes(const DiskFile &source, std::int64_t from, DiskFile &target, std::int64_t to, std::int64_t count)
{
    QByteArray buffer(std::min(count, BlockSize), Qt::Uninitialized);
    for (std::int64_t done = 0; done < count; done += BlockSize) {
        const std::int64_t size = std::min(BlockSize, count - done);
        if (!source.ReadAt(from + done, {buffer.data(), static_cast<std::size_t>(size)}) ||
            !target.WriteAt(to + done, QByteArrayView(buffer).first(size)))
            return false;
    }
    return true;
}

/// The notes of this process: one file, which it holds, so that others see that it is alive.
class Notes
{
public:
    ~Notes() { Leave(); }

    void Enter(const QString &newFolder)
    {
        Leave();
        folder = newFolder;
    }

    bool IsKept() const { return !folder.isEmpty(); }

    /// The number of a note with a head and stretches of a file behind it; 0 when it cannot be written. It is on the
    /// disk when this returns, but for that of a copy: that one would cost too much for what it is worth.
    std::uint64_t Add(Kind kind, const QByteArray &head, const DiskFile *source = nullptr,
                      std::span<const WayBack::Stretch> stretches = {})
    {
        if (!Open())
            return 0;
        std::int64_t size = head.size();
        for (const WayBack::Stretch &stretch : stretches)
            size += stretch.Count;
        bool written = file.WriteAt(end, QByteArray(FrontOf(kind, size, head.size()) + head + Unwritten));
        std::int64_t at = end + FrontSize + head.size();
        for (const WayBack::Stretch &stretch : stretches) {
            written = written && CopyBytes(*source, stretch.From, file, at, stretch.Count);
            at += stretch.Count;
        }
        // It stands only when all of it does.
        const auto flushed = [&] { return kind == CopyKind || file.Flush(); };
        written = written && (stretches.empty() || file.WriteAt(at, QByteArrayView(&Unwritten, 1))) && flushed() &&
                  file.WriteAt(end, QByteArrayView(&Stands, 1)) && flushed();
        if (!written) {
            file.Resize(end);
            return 0;
        }
        standing[++last] = {end, end + FrontSize + size};
        end += FrontSize + size;
        return last;
    }

    /// Writes over a piece of a note's head.
    void Amend(std::uint64_t number, std::int64_t place, QByteArrayView piece)
    {
        if (const auto note = standing.constFind(number); note != standing.cend())
            file.WriteAt(note->At + FrontSize + place, piece);
    }

    void Abandon(std::uint64_t number) { abandoned.append(number); }
    /// Goes what can be gone of the abandoned ways back.
    template <typename Go>
    void GoAbandoned(Go go)
    {
        for (const std::uint64_t number : std::exchange(abandoned, {})) {
            if (standing.contains(number) && !go(file, standing[number].At))
                abandoned.append(number);
            else
                Drop(number);
        }
    }

    void Drop(std::uint64_t number)
    {
        const auto note = standing.find(number);
        if (note == standing.end())
            return;
        const bool dropped = file.WriteAt(note->At, QByteArrayView(&Dropped, 1));
        standing.erase(note);
        // A later one stands behind all earlier ones.
        const std::int64_t needed = standing.isEmpty() ? 0 : standing.last().End;
        if (!dropped || end - needed > BlockSize)
            file.Resize(needed);
        end = needed;
    }

private:
    struct Place {
        std::int64_t At = 0;
        std::int64_t End = 0;
    };

    bool Open()
    {
        if (file.IsOpen())
            return true;
        if (!EnsureFolder(folder))
            return false;
        do {
            path = folder + u'\\' + NotesPrefix + QString::number(QRandomGenerator::system()->generate64(), 36);
            if (!file.Create(ToHostBytes(path), true))
                return false;
            // Another program that starts in this moment may take it for one that was left, and delete it.
        } while (!file.HoldAlone() && LastFault() == FileFault::Held);
        return true;
    }

    void Leave()
    {
        if (file.IsOpen() && file.Close() && standing.isEmpty())
            DeleteFile(path);
        standing.clear();
        end = 0;
    }

    QString folder;
    QString path;
    DiskFile file;
    /// Where the next note goes.
    std::int64_t end = 0;
    std::uint64_t last = 0;
    QList<std::uint64_t> abandoned;
    /// Where each note stands.
    QMap<std::uint64_t, Place> standing;
};

Notes &OwnNotes()
{
    static Notes notes;
    return notes;
}

/// A note that is read again.
struct LeftNote {
    /// Where it stands.
    std::int64_t At;
    Kind What;
    QByteArray Head;
    /// Where what stands behind the head begins.
    std::int64_t Behind;
};

/// Nothing when they cannot be read.
std::optional<std::vector<LeftNote>> ReadNotes(const DiskFile &file)
{
    std::vector<LeftNote> notes;
    QByteArray front(FrontSize, Qt::Uninitialized);
    const auto read = [&file](std::int64_t at, QByteArray &bytes) {
        return file.ReadAt(at, {bytes.data(), static_cast<std::size_t>(bytes.size())});
    };
    const std::int64_t whole = file.Facts().Size;
    if (whole < 0)
        return std::nullopt;
    for (std::int64_t at = 0; whole - at >= FrontSize;) {
        if (!read(at, front))
            return std::nullopt;
        qint8 state = 0;
        qint8 kind = 0;
        qint64 size = 0;
        qint64 headSize = 0;
        QDataStream(front) >> state >> kind >> size >> headSize;
        const std::int64_t start = at + FrontSize;
        if ((state != Stands && state != Dropped) || headSize < 0 || size < headSize || size > whole - start)
            break;
        if (state == Stands) {
            QByteArray head(headSize, Qt::Uninitialized);
            if (!read(start, head))
                return std::nullopt;
            notes.push_back({at, static_cast<Kind>(kind), head, start + headSize});
        }
        at = start + size;
    }
    return notes;
}

bool GoCopy(QDataStream &head)
{
    QString path;
    head >> path;
    const QStringView name = QStringView(path).mid(path.lastIndexOf(u'\\') + 1);
    if (!name.startsWith(u".vantrel-") || !name.endsWith(u".tmp"))
        return true;
    return DeleteFile(path) || IsGone(path);
}

bool GoRename(QDataStream &head)
{
    QString from;
    QString former;
    quint64 folder = 0;
    head >> from >> former >> folder;
    return RenameFile(from, former) || ExamineFile(former).Exists || (IsGone(from) && FolderNumber(from) == folder);
}

/// Files that have got back what they held before, as they are now: what had been made there earlier still had been.
using GivenBack = QHash<QString, DiskFacts>;

bool GoFormer(QDataStream &head, GivenBack &givenBack)
{
    qint64 madeSize = 0;
    qint64 madeTime = 0;
    bool isNoted = false;
    QString path;
    bool existed = false;
    QByteArray content;
    head >> madeSize >> madeTime >> isNoted >> path >> existed >> content;
    if (!ExamineFile(FolderOfPath(path)).IsFolder)
        return false;
    const DiskFacts found = DiskFactsOf(path);
    if (found.Size < 0 && !IsAbsent(path))
        return false;
    const bool isAnother = isNoted && found.Size >= 0 && found != givenBack.value(path) &&
                           (found.Size != madeSize || found.Modified != madeTime);
    if (isAnother) {
        // It may have been given back, and a kill came before that was noted.
        QByteArray now;
        if (existed && found.Size == content.size() && ReadWholeFile(path, now) && now == content)
            givenBack[path] = found;
        return true;
    }
    const bool done = existed ? WriteWholeFile(path, content) : DeleteMadeFile(path) || IsAbsent(path);
    givenBack[path] = DiskFactsOf(path);
    return done;
}

bool GoStretches(QDataStream &head, const DiskFile &notes, std::int64_t from)
{
    QString path;
    quint64 number = 0;
    qint64 size = 0;
    quint64 folder = 0;
    QList<std::pair<qint64, qint64>> stretches;
    head >> path >> number >> size >> folder >> stretches;
    DiskFile file;
    if (!file.Open(path))
        return IsGone(path) && FolderNumber(path) == folder;
    const DiskFacts found = file.Facts();
    if (found.Size < 0)
        return false;
    // Another file stands there by now.
    if (found.Number != number)
        return true;
    for (const auto &[to, count] : stretches) {
        if (!CopyBytes(notes, from, file, to, count))
            return false;
        from += count;
    }
    return file.Resize(size) && file.Flush();
}

bool Go(const LeftNote &note, const DiskFile &notes, GivenBack &givenBack)
{
    QDataStream head(note.Head);
    switch (note.What) {
    case CopyKind:
        return GoCopy(head);
    case RenameKind:
        return GoRename(head);
    case FormerKind:
        return GoFormer(head, givenBack);
    case StretchesKind:
        return GoStretches(head, notes, note.Behind);
    }
    return true;
}

/// Goes all ways back of a process, the last one first, unless it is alive. False when some could not be gone.
bool GoAll(const QString &path)
{
    DiskFile file;
    if (!file.Open(path) || !file.HoldAlone())
        return LastFault() == FileFault::Held || IsAbsent(path);
    GivenBack givenBack;
    const auto notes = ReadNotes(file);
    if (!notes)
        return false;
    QList<std::int64_t> gone;
    for (auto note = notes->rbegin(); note != notes->rend(); ++note) {
        if (Go(*note, file, givenBack))
            gone.append(note->At);
    }
    // Those are not gone a second time when others must be tried again.
    for (const std::int64_t at : std::as_const(gone))
        file.WriteAt(at, QByteArrayView(&Dropped, 1));
    if (gone.size() < static_cast<qsizetype>(notes->size()))
        return false;
    // Still held: who has just made it sees that it is gone.
    DeleteFile(path);
    return true;
}

template <typename... Values>
QByteArray HeadOf(const Values &...values)
{
    QByteArray head;
    QDataStream stream(&head, QIODevice::WriteOnly);
    (stream << ... << values);
    return head;
}

} // namespace

bool WayBack::Take(std::uint64_t noted)
{
    number = noted;
    return number > 0;
}

bool WayBack::NoteCopy(const QString &path)
{
    return !OwnNotes().IsKept() || Take(OwnNotes().Add(CopyKind, HeadOf(path)));
}

bool WayBack::NoteRename(const QString &from, const QString &former)
{
    return !OwnNotes().IsKept() || Take(OwnNotes().Add(RenameKind, HeadOf(from, former, FolderNumber(from))));
}

bool WayBack::NoteFormer(const QString &path, bool existed, const QByteArray &content)
{
    return !OwnNotes().IsKept() ||
           Take(OwnNotes().Add(FormerKind, HeadOf(qint64{0}, qint64{0}, false, path, existed, content)));
}

void WayBack::NoteMade(const DiskFacts &made)
{
    const QByteArray facts = HeadOf(static_cast<qint64>(made.Size), static_cast<qint64>(made.Modified));
    OwnNotes().Amend(number, facts.size(), HeadOf(false));
    if (made.Size < 0)
        return;
    OwnNotes().Amend(number, 0, facts);
    // The mark that they stand comes last, so that half of them is nothing.
    OwnNotes().Amend(number, facts.size(), HeadOf(true));
}

bool WayBack::NoteStretches(const QString &path, const DiskFile &file, std::span<const Stretch> stretches)
{
    QList<std::pair<qint64, qint64>> list;
    for (const Stretch &stretch : stretches)
        list.append({stretch.From, stretch.Count});
    const DiskFacts facts = file.Facts();
    const QByteArray head =
        HeadOf(path, static_cast<quint64>(facts.Number), static_cast<qint64>(facts.Size), FolderNumber(path), list);
    return !OwnNotes().IsKept() || Take(OwnNotes().Add(StretchesKind, head, &file, stretches));
}

void WayBack::Drop()
{
    OwnNotes().Drop(std::exchange(number, 0));
}

void WayBack::Abandon()
{
    OwnNotes().Abandon(std::exchange(number, 0));
}

void WayBack::GoAbandoned()
{
    OwnNotes().GoAbandoned([givenBack = GivenBack()](const DiskFile &file, std::int64_t at) mutable {
        const auto notes = ReadNotes(file);
        return notes && std::all_of(notes->begin(), notes->end(),
                                    [&](const LeftNote &note) { return note.At != at || Go(note, file, givenBack); });
    });
}

bool KeepWaysBack(const QString &folder)
{
    WayBack::GoAbandoned();
    OwnNotes().Enter(folder);
    FolderEntries entries;
    if (folder.isEmpty() || !ListFolder(folder, entries))
        return true;
    bool allGone = true;
    for (const QString &name : std::as_const(entries.Files))
        allGone = (!name.startsWith(NotesPrefix) || GoAll(folder + u'\\' + name)) && allGone;
    return allGone;
}
