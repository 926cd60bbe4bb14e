#include "purge/DriveSearch.h"

#include "platform/Files.h"
#include "platform/Names.h"
#include "text/FolderWalk.h"
#include "text/PathText.h"

#include <QHash>
#include <QMap>
#include <QSet>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace
{
/// Of a name without regard to case.
quint64 FoldedHash(QStringView name)
{
    quint64 hash = 0xcbf29ce484222325;
    for (const QChar unit : name)
        hash = (hash ^ FoldedUnit(unit.unicode())) * 0x100000001b3;
    return hash;
}

QString TargetOf(const QString &path, bool usePathInfo)
{
    if (!usePathInfo)
        return GetFileName(path);
    const qsizetype colon = path.indexOf(u':');
    const QString target = colon < 0 ? path : path.mid(colon + 2);
    return target.startsWith(u'\\') ? target.sliced(1) : target;
}

/// What a search looks for.
class Targets
{
public:
    Targets(const QStringList &missingPaths, bool usePathInfo)
    {
        for (const QString &path : missingPaths) {
            const QString target = TargetOf(path, usePathInfo);
            const QStringList pieces = target.split(u'\\', Qt::SkipEmptyParts);
            if (pieces.isEmpty())
                continue;
            names.insert(FoldedHash(pieces.last()));
            depths.insert(pieces.size() - 1);
            ++targets[FoldedName(pieces.join(u'\\'))][target];
        }
    }

    /// Adds what the files of a folder, which ends in a backslash, answer to.
    void LookUp(const QString &folder, const QStringList &files, FoundItems &found) const
    {
        FoundFolder here{folder, {}};
        for (const QString &name : files) {
            // Nearly every name ends here.
            if (names.contains(FoldedHash(name)))
                LookUp(name, here, found);
        }
        if (!here.Items.isEmpty())
            found.Folders.push_back(std::move(here));
    }

private:
    void LookUp(const QString &name, FoundFolder &here, FoundItems &found) const
    {
        for (const qsizetype depth : depths) {
            const qsizetype start = LastPieces(here.Folder, depth);
            const auto spellings =
                start < 0 ? targets.cend() : targets.constFind(FoldedName(QString(here.Folder.sliced(start) + name)));
            if (spellings == targets.cend())
                continue;
            for (auto target = spellings->cbegin(); target != spellings->cend(); ++target) {
                here.Items.append(here.Folder.first(start) + target.key());
                found.Count += *target;
            }
        }
    }

    /// Where the last folders of a path begin; -1 when it has no more above them.
    static qsizetype LastPieces(const QString &folder, qsizetype depth)
    {
        qsizetype backslash = folder.size() - 1;
        while (depth-- > 0 && backslash > 0)
            backslash = folder.lastIndexOf(u'\\', backslash - 1);
        return backslash < 0 ? -1 : backslash + 1;
    }

    /// Hashes of the file names.
    QSet<quint64> names;
    /// How many folders the targets have in front of their names.
    QSet<qsizetype> depths;
    /// By the folded target: its spellings, and how many missing items bear each.
    QHash<QString, QMap<QString, int>> targets;
};

/// The folders that a walk has been in.
class Visited
{
public:
    /// False for a folder that the walk has been in, and for one that holds no files of the user.
    bool Enter(const QString &folder)
    {
        const FolderIdentity identity = IdentifyFolder(folder);
        if (!identity.Valid)
            return false;
        Device &device = devices[identity.Device];
        if (device.Folders.isEmpty())
            device.HoldsUserFiles = HoldsUserFiles(folder);
        const qsizetype before = device.Folders.size();
        device.Folders.insert(identity.Number);
        return device.HoldsUserFiles && device.Folders.size() > before;
    }

private:
    struct Device {
        bool HoldsUserFiles = false;
        QSet<quint64> Folders;
    };
    QHash<quint64, Device> devices;
};

constexpr int LetterCount = 26;

int PlaceOfLetter(QChar letter)
{
    return letter.unicode() - (letter <= u'h' ? u'a' : u'h');
}
} // namespace

FoundItems SearchDrives(const QStringList &roots, const QStringList &missingPaths, bool usePathInfo,
                        const Progress &progress)
{
    const Targets targets(missingPaths, usePathInfo);
    Visited visited;
    FoundItems found;
    const auto enter = [&](const QString &folder) {
        if (progress.Stopped() || !visited.Enter(folder))
            return false;
        progress.SetText(folder);
        return true;
    };
    progress.SetLimits(0, LetterCount);
    for (const QString &root : roots) {
        progress.SetValue(PlaceOfLetter(root[0]));
        WalkTree(root, enter, [&](const QString &folder, const FolderEntries &entries) {
            targets.LookUp(folder, entries.Files, found);
        });
    }
    return found;
}
