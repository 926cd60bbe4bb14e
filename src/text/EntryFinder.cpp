#include "text/EntryFinder.h"

#include "platform/CodePage.h"
#include "platform/Drives.h"
#include "platform/Files.h"
#include "platform/Names.h"
#include "platform/PlaylistLines.h"
#include "text/PathText.h"

#include <QSet>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace
{
/// Equal for names that differ in case or in their normal form alone.
QString SpellingKey(const QString &name)
{
    return FoldedName(name.normalized(QString::NormalizationForm_C));
}

QHash<QString, QStringList> BySpelling(const QStringList &names)
{
    QHash<QString, QStringList> sorted;
    sorted.reserve(names.size());
    for (const QString &name : names)
        sorted[SpellingKey(name)].append(name);
    return sorted;
}

/// The names that a name may mean: itself, those that differ in case alone, those in another normal form.
QStringList NamesLike(const QHash<QString, QStringList> &names, const QString &name)
{
    QStringList like = names.value(SpellingKey(name));
    if (like.size() < 2)
        return like;
    const auto differing =
        std::stable_partition(like.begin(), like.end(), [&](const QString &each) { return each == name; });
    std::stable_partition(differing, like.end(),
                          [folded = FoldedName(name)](const QString &each) { return FoldedName(each) == folded; });
    return like;
}

/// What a hexadecimal digit stands for; -1 for anything else.
int DigitValue(QChar digit)
{
    constexpr QStringView digits = u"0123456789abcdef";
    return static_cast<int>(digits.indexOf(digit, 0, Qt::CaseInsensitive));
}

/// The byte that a "%" and two digits stand for; -1 where there is no such sequence.
int EncodedByte(QStringView text, qsizetype percent)
{
    if (text[percent] != u'%' || percent + 2 >= text.size())
        return -1;
    const int high = DigitValue(text[percent + 1]);
    const int low = DigitValue(text[percent + 2]);
    return high < 0 || low < 0 ? -1 : 16 * high + low;
}

/// What an address behind "file:" says in the form of a playlist's line.
QString LineOfAddress(QStringView address)
{
    if (address.startsWith(u"//")) {
        const QStringView server = address.sliced(2, std::max<qsizetype>(address.indexOf(u'/', 2), 2) - 2);
        const bool isHere = server.isEmpty() || server.compare(u"localhost", Qt::CaseInsensitive) == 0;
        if (isHere)
            address = address.sliced(2 + server.size());
        else if (HasDrive(address.sliced(2)))
            address = address.sliced(2);
    }
    return (address.startsWith(u'/') && HasDrive(address.sliced(1)) ? address.sliced(1) : address).toString();
}

/// The address that a row stands for, or an entry of a list.
QStringView AddressOf(QStringView entry)
{
    return IsWebRow(entry) ? entry.sliced(1) : entry;
}

/// An entry that was written in another way, as an absolute path.
QString PathOfLine(const QString &line, const QString &folder)
{
    return line.isEmpty() ? line : AbsolutePath(FromPlaylistLine(line, folder), folder);
}

/// Leaves the first name of each folder. A disk that ignores case knows one under several, and each part of a path
/// would have twice as many.
void DropOtherNames(QStringList &paths)
{
    QSet<std::pair<std::uint64_t, std::uint64_t>> numbers;
    QSet<QString> names;
    paths.removeIf([&](const QString &path) {
        const FolderIdentity folder = IdentifyFolder(path);
        const qsizetype before = numbers.size() + names.size();
        if (folder.Valid)
            numbers.insert({folder.Device, folder.Number});
        else
            names.insert(FoldedName(path));
        return numbers.size() + names.size() == before;
    });
}
} // namespace

QString PercentDecoded(const QString &text)
{
    QString decoded;
    for (qsizetype i = 0; i < text.size();) {
        QByteArray bytes;
        for (int byte = 0; i < text.size() && (byte = EncodedByte(text, i)) >= 0; i += 3)
            bytes.append(static_cast<char>(byte));
        if (bytes.isEmpty())
            decoded += text[i++];
        else
            decoded += DecodeText(bytes);
    }
    const bool isName = std::none_of(decoded.begin(), decoded.end(), [](QChar unit) { return unit < u' '; });
    return isName ? decoded : QString();
}

QString EntryFinder::Find(const QString &entry, const QString &folder)
{
    const QStringView address = AddressOf(entry);
    if (address.startsWith(u"file:", Qt::CaseInsensitive)) {
        const QString line = LineOfAddress(address.sliced(5));
        const QString found = InAnySpelling(PathOfLine(PercentDecoded(line), folder));
        return found.isEmpty() ? InAnySpelling(PathOfLine(line, folder)) : found;
    }
    if (IsWebAddress(address))
        return {};
    const QString found = InAnySpelling(AbsolutePath(entry, folder));
    return found.isEmpty() && entry.contains(u'%') ? InAnySpelling(PathOfLine(PercentDecoded(entry), folder)) : found;
}

QString EntryFinder::InAnySpelling(const QString &path)
{
    if (path.isEmpty() || ExamineFile(path).Exists)
        return path;
    const QString name = GetFileName(path);
    for (const QString &folder : FoldersLike(FolderOf(path))) {
        const Listing &listing = ListingOf(folder);
        for (const Names &names : {listing.Files, listing.Folders}) {
            const QStringList like = NamesLike(names, name);
            if (!like.isEmpty())
                return folder + u'\\' + like.first();
        }
    }
    return {};
}

const QStringList &EntryFinder::FoldersLike(const QString &folder)
{
    auto known = folders.constFind(folder);
    if (known == folders.constEnd())
        known = folders.insert(folder, FindFolders(folder));
    return *known;
}

QStringList EntryFinder::FindFolders(const QString &folder)
{
    if (!HasDrive(folder) && !IsOnShare(folder))
        return {};
    // From the root down, and no deeper than folders are: a line may hold thousands of separators.
    const QString root = RootOf(folder);
    QStringList found{root};
    for (qsizetype end = root.size(); end < folder.size() && !found.isEmpty();) {
        const qsizetype separator = folder.indexOf(u'\\', end + 1);
        const qsizetype next = separator < 0 ? folder.size() : separator;
        const QString name = folder.sliced(end + 1, next - end - 1);
        if (!name.isEmpty() && name != "."_L1)
            found = SubfoldersLike(found, name);
        end = next;
    }
    return found;
}

QStringList EntryFinder::SubfoldersLike(const QStringList &parents, const QString &name)
{
    QStringList found;
    for (const QString &parent : parents) {
        const QString exact = parent + u'\\' + name;
        // A folder may be entered where its parent cannot be listed.
        if (ExamineFile(exact).IsFolder)
            found.append(exact);
        for (const QString &like : NamesLike(ListingOf(parent).Folders, name)) {
            if (like != name)
                found.append(parent + u'\\' + like);
        }
    }
    if (found.size() > 1)
        DropOtherNames(found);
    return found;
}

const EntryFinder::Listing &EntryFinder::ListingOf(const QString &folder)
{
    auto known = listings.constFind(folder);
    if (known == listings.constEnd())
        known = listings.insert(folder, ReadListing(folder + u'\\'));
    return *known;
}

EntryFinder::Listing EntryFinder::ReadListing(const QString &folder)
{
    const FolderReader reader(folder);
    const FolderIdentity identity = reader.Identify();
    const std::pair number{identity.Device, identity.Number};
    if (const auto known = listed.constFind(number); identity.Valid && known != listed.constEnd())
        return *known;
    FolderEntries entries;
    reader.List(entries);
    const Listing listing{BySpelling(entries.Files), BySpelling(entries.Folders)};
    if (identity.Valid)
        listed.insert(number, listing);
    return listing;
}
