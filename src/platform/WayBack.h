#pragma once

#include <QByteArray>
#include <QString>

#include <cstdint>
#include <span>

class DiskFile;
struct DiskFacts;

/// The way back from something that is begun: it is noted in the application's folder first, and what a killed process
/// has left half done the next start takes back. Paths are inside paths. A note is on the disk before it is told, but
/// for that of a copy, which a kill leaves there and a power failure may not.
class WayBack
{
public:
    struct Stretch {
        std::int64_t From = 0;
        std::int64_t Count = 0;
    };

    // False when the note cannot be written; true, and no note, while no folder is set.

    /// Deletes a copy that ReplacedFile makes.
    bool NoteCopy(const QString &path);
    /// Renames, unless something stands at the former name.
    bool NoteRename(const QString &from, const QString &former);
    /// Gives a file its former content; deletes it where none stood there.
    bool NoteFormer(const QString &path, bool existed, const QByteArray &content);
    /// The file whose former content is noted has been made: from now on another one that stands there stays. Any one
    /// goes again when there is no such file.
    void NoteMade(const DiskFacts &made);
    /// Writes stretches of a file back and cuts it to its size, while it is still the same file.
    bool NoteStretches(const QString &path, const DiskFile &file, std::span<const Stretch> stretches);
    /// It has been done whole, or taken back.
    void Drop();
    /// It could not be taken back now.
    void Abandon();
    /// Goes the abandoned ways back that can be gone by now, before their files are written anew.
    static void GoAbandoned();

private:
    bool Take(std::uint64_t noted);

    /// 0 for none.
    std::uint64_t number = 0;
};

/// Where ways back are noted from now on; empty for nowhere. Those that processes have left there which have ended are
/// gone first, and what this one has abandoned; one that cannot be gone now, since the disk is not there, is kept, and
/// false is returned.
bool KeepWaysBack(const QString &folder);
