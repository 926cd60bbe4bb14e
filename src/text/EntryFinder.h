#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

/// Finds the files that entries of playlists mean although nothing stands at their paths as written. It remembers what
/// it has listed, each folder at most once, so one finder serves one load.
class EntryFinder
{
public:
    /// The path of what an entry means, by the names on the disk; empty when it is found nowhere. In this order: as
    /// written; without regard to case, folder by folder; by names that are canonically equivalent in Unicode;
    /// percent-decoded; as a `file:` address. Of several names in one folder the exact one comes first, then the order
    /// of the listing. The entry has the inside form; a relative one counts from the folder.
    QString Find(const QString &entry, const QString &folder);

private:
    /// Names of a folder by SpellingKey.
    using Names = QHash<QString, QStringList>;
    struct Listing {
        Names Files;
        Names Folders;
    };

    QString InAnySpelling(const QString &path);
    /// Existing folders that a folder's path may mean.
    const QStringList &FoldersLike(const QString &folder);
    QStringList FindFolders(const QString &folder);
    QStringList SubfoldersLike(const QStringList &parents, const QString &name);
    const Listing &ListingOf(const QString &folder);
    Listing ReadListing(const QString &folder);

    QHash<QString, Listing> listings;
    /// The same by the folder's device and number: a path may name one folder in many ways.
    QHash<std::pair<std::uint64_t, std::uint64_t>, Listing> listed;
    QHash<QString, QStringList> folders;
};

/// A text with its percent-encoded bytes decoded: as UTF-8 where they are that, else in the host's code page. What is
/// no whole sequence stays; null when a control character would come out, which no name can mean.
QString PercentDecoded(const QString &text);
