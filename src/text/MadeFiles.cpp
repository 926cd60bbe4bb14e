#include "text/MadeFiles.h"

#include "platform/Files.h"

#include <algorithm>

bool MadeFiles::Make(const QString &path, const std::function<bool()> &write)
{
    // What could not be taken back there before is no former file.
    WayBack::GoAbandoned();
    FormerFile former(path);
    const DiskFacts replaced = DiskFactsOf(path);
    const std::vector<File *> made = former.Existed() ? MadeAs(replaced) : std::vector<File *>();
    if (std::any_of(made.cbegin(), made.cend(), [&](const File *each) { return each->Path != path; }))
        return false;
    if (!former.IsKept() || (afterKill == AfterKill::TakeBack && !former.Note()))
        return false;
    if (!write()) {
        former.Forget();
        return false;
    }
    files.push_back({path, former, replaced, DiskFactsOf(path)});
    files.back().Former.NoteMade(files.back().Facts);
    places.insert(files.back().Facts.Number, files.size() - 1);
    return true;
}

MadeFiles::TakenBack MadeFiles::TakeBack(qsizetype n)
{
    File &file = files[static_cast<std::size_t>(n)];
    const DiskFacts found = DiskFactsOf(file.Path);
    if (found.Size < 0 && !IsAbsent(file.Path)) {
        Abandon(file);
        return TakenBack::Failed;
    }
    const bool isAnother = found.Size >= 0 && !found.HasSameContent(file.Facts);
    if (isAnother)
        file.Former.Forget();
    if (file.IsTakenBack || isAnother)
        return TakenBack::Failed;
    // One that the run had made there before gets its content back, but in a file of another number.
    const std::vector<File *> earlier = ReplacedBy(file);
    for (File *each : earlier)
        each->Former.NoteMade({});
    file.IsTakenBack = file.Former.GiveBack();
    for (File *each : earlier) {
        if (file.IsTakenBack) {
            each->Facts = DiskFactsOf(file.Path);
            places.insert(each->Facts.Number, static_cast<std::size_t>(each - files.data()));
        }
        each->Former.NoteMade(each->Facts);
        if (!file.IsTakenBack)
            Abandon(*each);
    }
    if (!file.IsTakenBack)
        return TakenBack::Failed;
    return file.Former.Existed() ? TakenBack::PutBack : TakenBack::Deleted;
}

QStringList MadeFiles::TakeAllBack()
{
    QStringList failed;
    for (qsizetype n = Count(); n-- > 0;) {
        const bool isGone = !files[static_cast<std::size_t>(n)].Former.Existed() && IsGone(Path(n));
        if (TakeBack(n) == TakenBack::Failed && !isGone)
            failed.append(Path(n));
    }
    files.clear();
    places.clear();
    failed.removeDuplicates();
    return failed;
}

void MadeFiles::Clear()
{
    for (File &file : files)
        file.Former.Forget();
    files.clear();
    places.clear();
}

std::vector<MadeFiles::File *> MadeFiles::MadeAs(const DiskFacts &facts)
{
    std::vector<File *> made;
    const auto [first, last] = places.equal_range(facts.Number);
    for (auto place = first; place != last; ++place) {
        if (files[*place].Facts == facts)
            made.push_back(&files[*place]);
    }
    return made;
}

std::vector<MadeFiles::File *> MadeFiles::ReplacedBy(const File &file)
{
    std::vector<File *> earlier = file.Former.Existed() ? MadeAs(file.Replaced) : std::vector<File *>();
    std::erase_if(earlier, [&](const File *each) { return each >= &file || each->Path != file.Path; });
    return earlier;
}

void MadeFiles::Abandon(File &file)
{
    file.Former.Abandon();
    for (File *each : ReplacedBy(file))
        Abandon(*each);
}
