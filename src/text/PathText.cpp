#include "text/PathText.h"

#include "platform/Files.h"
#include "platform/PlaylistLines.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace
{
constexpr QChar Backslash = u'\\';

/// Where a part begins; -1 for nowhere. Names are short and rarely there, so a look for the first character is quicker
/// than a search that prepares itself.
qsizetype FindText(QStringView text, QStringView part, qsizetype from)
{
    for (from = text.indexOf(part[0], from); from >= 0; from = text.indexOf(part[0], from + 1)) {
        if (text.sliced(from).startsWith(part))
            return from;
    }
    return -1;
}
} // namespace

qsizetype FileNameStart(QStringView path)
{
    qsizetype start = path.size();
    while (start > 0 && path[start - 1] != Backslash)
        --start;
    return start;
}

QString GetFileName(const QString &path)
{
    return path.sliced(FileNameStart(path));
}

QString GetExtension(const QString &name)
{
    const qsizetype stop = name.lastIndexOf(u'.');
    return stop < 0 ? QString() : name.mid(stop);
}

QString GetFolderPart(const QString &path)
{
    const qsizetype nameStart = FileNameStart(path);
    const QStringView name = QStringView(path).sliced(nameStart);
    const QString folder = path.left(nameStart);
    return name.size() < nameStart && name.size() <= LongestName ? RemoveText(folder, name) : folder;
}

bool IsFolderPart(const QString &folder, const QString &path)
{
    const qsizetype start = FileNameStart(path);
    const QStringView name = QStringView(path).sliced(start);
    return start == folder.size() && path.startsWith(folder) &&
           (name.isEmpty() || name.size() > LongestName || FindText(folder, name, 0) < 0);
}

QString FolderOf(const QString &path)
{
    return path.first(std::max<qsizetype>(FileNameStart(path) - 1, 0));
}

bool IsAbsolute(const QString &path)
{
    return HasDrive(path) || IsOnShare(path) || std::find(path.begin(), path.end(), u':') != path.end();
}

QString AbsolutePath(const QString &path, const QString &folder)
{
    if (path.isEmpty())
        return folder;
    if (IsAbsolute(path))
        return path;
    return path.startsWith(Backslash) ? QString(RootOf(folder) + path) : QString(folder + Backslash + path);
}

QString WithoutFolder(const QString &path, const QString &folder)
{
    const bool isInside = FindText(path, folder, 0) == 0;
    QString rest = RemoveText(path, folder);
    while (isInside && rest.startsWith(Backslash))
        rest.remove(0, 1);
    return rest;
}

QString RemoveText(QString text, QStringView part)
{
    qsizetype found = part.isEmpty() ? -1 : FindText(text, part, 0);
    if (found < 0)
        return text;
    if (found + part.size() == text.size()) {
        text.truncate(found);
        return text;
    }
    QString rest;
    rest.reserve(text.size());
    qsizetype from = 0;
    for (; found >= 0; found = FindText(text, part, from)) {
        rest += QStringView(text).sliced(from, found - from);
        from = found + part.size();
    }
    rest += QStringView(text).sliced(from);
    return rest;
}

QString TrimBlanks(const QString &text)
{
    qsizetype first = 0;
    qsizetype end = text.size();
    while (first < end && text[first] == u' ')
        ++first;
    while (end > first && text[end - 1] == u' ')
        --end;
    return text.mid(first, end - first);
}

QString NormalisePath(QString &path)
{
    const qsizetype colon = path.indexOf(u':');
    if (colon >= 0) {
        if (!path.contains(u":\\"_s))
            path.replace(u":"_s, u":\\"_s);
        const QStringView start = QStringView(path).left(2);
        if (std::any_of(start.begin(), start.end(), [](QChar character) { return character != character.toLower(); })) {
            const QString drive = start.toString();
            path.replace(drive, drive.toLower());
        }
    }
    if (path.endsWith(Backslash))
        path.chop(1);
    return path;
}

QString NormalisedPath(QString path)
{
    NormalisePath(path);
    return path;
}

PathInfo AnalysePath(const QString &path)
{
    PathInfo info;
    info.Path = NormalisedPath(path);
    const FileFacts facts = ExamineFile(info.Path);
    info.Valid = facts.Exists;
    info.IsFolder = facts.Exists && facts.IsFolder;
    info.IsFile = facts.Exists && !facts.IsFolder;
    if (info.IsFile)
        info.Extension = GetExtension(GetFileName(info.Path)).toLower();
    return info;
}

bool PathExists(const QString &path)
{
    return path.isEmpty() || ExamineFile(path).Exists;
}

bool RenameFilePath(const QString &newPath, const QString &oldPath)
{
    return RenameFile(oldPath, newPath);
}

bool DeleteFilePath(const QString &path)
{
    return DeleteFile(path);
}

bool CopyFilePath(const QString &source, const QString &target)
{
    return CopyFile(source, target);
}
