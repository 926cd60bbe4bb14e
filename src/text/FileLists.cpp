#include "text/FileLists.h"

#include "text/PathText.h"

#include <QSet>

#include <algorithm>

namespace
{
bool IsInEach(const QSet<QString> &folders, const QString &piece)
{
    return std::all_of(folders.cbegin(), folders.cend(),
                       [&piece](const QString &folder) { return folder.contains(piece); });
}
} // namespace

bool ListDistinctFolders(const QStringList &paths, QStringList &list)
{
    const qsizetype before = list.size();
    QString previous;
    for (const QString &path : paths) {
        const qsizetype nameStart = FileNameStart(path);
        // Neighbours mostly share their folder, and few names stand in it too.
        if (nameStart == previous.size() && nameStart > 0 && path.startsWith(previous) &&
            !previous.contains(QStringView(path).sliced(nameStart)))
            continue;
        const QString folder = GetFolderPart(path);
        if (folder != previous || list.size() == before)
            list.append(folder);
        previous = folder;
    }
    return list.size() > before;
}

bool ListFilesInFolder(const QStringList &paths, QStringList &list, const QString &folder)
{
    const qsizetype before = list.size();
    const QString wanted = folder.endsWith(u'\\') ? folder : folder + u'\\';
    for (const QString &path : paths) {
        if (GetFolderPart(path) == wanted)
            list.append(GetFileName(path));
    }
    return list.size() > before;
}

bool FilterByText(const QStringList &texts, QStringList &list, const QString &text)
{
    const qsizetype before = list.size();
    std::copy_if(texts.cbegin(), texts.cend(), std::back_inserter(list),
                 [&text](const QString &entry) { return entry.contains(text); });
    return list.size() > before;
}

void MakePathsRelative(QStringList &paths, const QString &folder)
{
    if (folder.isEmpty())
        return;
    const QString prefix = folder + u'\\';
    for (QString &path : paths)
        path = WithoutFolder(path, prefix);
}

bool RemoveMissingPaths(QStringList &paths)
{
    return paths.removeIf([](const QString &path) { return !PathExists(path); }) == 0;
}

void ClearList(QStringList &list)
{
    list.clear();
}

QString FindCommonRoot(const QStringList &paths)
{
    QSet<QString> folders;
    QString longest;
    QString previous;
    for (const QString &path : paths) {
        if (!folders.isEmpty() && IsFolderPart(previous, path))
            continue;
        previous = GetFolderPart(path);
        const QString folder = previous.chopped(std::min<qsizetype>(previous.size(), 1));
        folders.insert(folder);
        if (folder.size() >= longest.size())
            longest = folder;
    }
    // The first piece that one of the folders lacks ends the root, whatever the pieces behind it are.
    const QStringList pieces = longest.split(u'\\');
    QSet<QString> common;
    qsizetype depth = 0;
    while (depth < pieces.size() && (common.contains(pieces[depth]) || IsInEach(folders, pieces[depth])))
        common.insert(pieces[depth++]);
    return pieces.first(depth).join(u'\\');
}
