#include "purge/DriveSearch.h"

#include "platform/Files.h"
#include "platform/Names.h"
#include "text/FolderWalk.h"
#include "text/PathText.h"

#include <QHash>
#include <QSet>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace
{
QString TargetOf(const QString &path, bool usePathInfo)
{
    if (!usePathInfo)
        return GetFileName(path);
    const qsizetype colon = path.indexOf(u':');
    const QString target = colon < 0 ? path : path.mid(colon + 2);
    return target.startsWith(u'\\') ? target.sliced(1) : target;
}

/// A target without the separators that say nothing.
QString PlainTarget(const QString &target)
{
    const bool plain = !target.startsWith(u'\\') && !target.endsWith(u'\\') && !target.contains("\\\\"_L1);
    return plain ? target : target.split(u'\\', Qt::SkipEmptyParts).join(u'\\');
}

/// What a search looks for.
class Targets
{
public:
    Targets(const QStringList &missingPaths, bool usePathInfo)
    {
        names.reserve(missingPaths.size());
        targets.reserve(missingPaths.size());
        for (const QString &path : missingPaths)
            Add(TargetOf(path, usePathInfo));
    }

    /// Adds what the files of a folder, which ends in a backslash, answer to.
    void LookUp(const QString &folder, const QStringList &files, FoundItems &found) const
    {
        FoundFolder here{folder, {}};
        for (const QString &name : files) {
            // Nearly every name ends here.
            if (names.contains(FoldedHash(name)))
                LookUp(QString(folder + name), here, found);
        }
        if (!here.Items.isEmpty())
            found.Folders.push_back(std::move(here));
    }

private:
    struct Target {
        QString Text;
        QString Plain;
        /// How many missing items bear it.
        int Count = 1;
    };

    void Add(const QString &text)
    {
        const QString plain = PlainTarget(text);
        if (plain.isEmpty())
            return;
        const quint64 hash = FoldedHash(plain);
        const auto [first, end] = targets.equal_range(hash);
        const auto same = std::find_if(first, end, [&text](const Target &target) { return target.Text == text; });
        if (same != end) {
            ++same->Count;
            return;
        }
        targets.insert(hash, {text, plain});
        names.insert(FoldedHash(QStringView(plain).sliced(FileNameStart(plain))));
        depths.insert(plain.count(u'\\'));
    }

    void LookUp(const QString &path, FoundFolder &here, FoundItems &found) const
    {
        for (const qsizetype depth : depths) {
            const qsizetype start = LastPieces(here.Folder, depth);
            if (start < 0)
                continue;
            const QStringView last = QStringView(path).sliced(start);
            const auto [first, end] = targets.equal_range(FoldedHash(last));
            for (auto target = first; target != end; ++target) {
                if (!IsSameName(target->Plain, last))
                    continue;
                here.Items.append(path.first(start) + target->Text);
                found.Count += target->Count;
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
    /// By the hash of Plain.
    QMultiHash<quint64, Target> targets;
};

/// Separators in the path of a folder that cannot be told from others: on a server, links of its own may lead back up
/// without end.
constexpr qsizetype deepestUntold = 64;

/// The folders that a walk has been in.
class Visited
{
public:
    /// False for a folder that the walk has been in, for one that holds no files of the user, and, where the disk does
    /// not tell which folder it is, for one that lies too deep.
    bool Enter(const QString &folder, const FolderReader &open)
    {
        const FolderIdentity identity = open.Identify();
        if (!identity.Valid)
            return folder.count(u'\\') <= deepestUntold && HoldsUserFiles(folder);
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
    const auto enter = [&](const QString &folder, const FolderReader &open) {
        if (progress.Stopped() || !visited.Enter(folder, open))
            return false;
        progress.SetText(folder);
        return true;
    };
    progress.SetLimits(0, LetterCount);
    for (const QString &root : roots) {
        progress.SetValue(PlaceOfLetter(root[0]));
        WalkTree(root, enter, [&](const QString &folder, const FolderEntries &entries) {
            targets.LookUp(folder, entries.Files, found);
            return true;
        });
    }
    return found;
}
