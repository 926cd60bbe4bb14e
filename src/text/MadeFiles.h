#pragma once

#include "platform/DiskFile.h"
#include "text/FormerFile.h"

#include <QMultiHash>
#include <QString>
#include <QStringList>

#include <cstdint>
#include <functional>
#include <vector>

/// The files that a run has made, each with what it replaced, so that the run can be taken back: a file that stood
/// there before is afterwards what it was.
class MadeFiles
{
public:
    /// What becomes of the files of a run whose process is killed: they stay, or the next start takes them back.
    enum class AfterKill { Stay, TakeBack };
    explicit MadeFiles(AfterKill choice = AfterKill::Stay) : afterKill(choice) {}

    /// Lets write make or replace the file. False when that fails, and when a file stands there whose content cannot be
    /// kept, or which the run has made under another path: it is then not touched.
    bool Make(const QString &path, const std::function<bool()> &write);

    qsizetype Count() const { return static_cast<qsizetype>(files.size()); }
    /// The n-th file, from 0, in the order in which they were made.
    const QString &Path(qsizetype n) const { return files[static_cast<std::size_t>(n)].Path; }

    enum class TakenBack { Failed, Deleted, PutBack };
    /// Deletes the n-th file, or gives it back what it held before. What has been taken back once fails, and so does
    /// what is another file by now.
    TakenBack TakeBack(qsizetype n);

    /// Forgets them: they stay.
    void Clear();
    /// Takes all back, the last one first, and forgets them. Returns those where that failed; it is tried again before
    /// the next file is made, and at the next start, unless it is another file by now.
    QStringList TakeAllBack();

private:
    struct File {
        QString Path;
        FormerFile Former;
        /// Of what it replaced, and as it was made.
        DiskFacts Replaced;
        DiskFacts Facts;
        bool IsTakenBack = false;
    };
    /// The files of the run that are this one.
    std::vector<File *> MadeAs(const DiskFacts &facts);
    /// Those that the run had made at the same path, and that the file has replaced.
    std::vector<File *> ReplacedBy(const File &file);
    /// It cannot be given back now, nor what the run had made there before, which is only to be given back behind it.
    void Abandon(File &file);

    AfterKill afterKill;
    std::vector<File> files;
    /// Places in files by number on the disk; a file that has got another number stands under both.
    QMultiHash<std::uint64_t, std::size_t> places;
};
