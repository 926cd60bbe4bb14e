#include "text/MadeFiles.h"

#include <algorithm>

bool MadeFiles::Make(const QString &path, const std::function<bool()> &write)
{
    // What could not be taken back there before is no former file.
    WayBack::GoAbandoned();
    FormerFile former(path);
    const DiskFacts replaced = DiskFactsOf(path);
    const auto isReplaced = [&](const File &file) { return file.Path != path && file.Facts == replaced; };
    if (former.Existed() && std::any_of(files.cbegin(), files.cend(), isReplaced))
        return false;
    if (!former.IsKept() || (afterKill == AfterKill::TakeBack && !former.Note()))
        return false;
    if (!write()) {
        former.Forget();
        return false;
    }
    files.push_back({path, former, replaced, DiskFactsOf(path)});
    files.back().Former.NoteMade(files.back().Facts);
    return true;
}

MadeFiles::TakenBack MadeFiles::TakeBack(qsizetype n)
{
    File &file = files[static_cast<std::size_t>(n)];
    const DiskFacts found = DiskFactsOf(file.Path);
    const bool isAnother = found.Size >= 0 && found != file.Facts;
    if (isAnother)
        file.Former.Forget();
    if (file.IsTakenBack || isAnother || !file.Former.GiveBack())
        return TakenBack::Failed;
    file.IsTakenBack = true;
    // One that the run had made there before has its content back, but in a file of another number.
    if (!file.Former.Existed())
        return TakenBack::Deleted;
    for (File &earlier : files) {
        if (earlier.Path == file.Path && earlier.Facts == file.Replaced) {
            earlier.Facts = DiskFactsOf(file.Path);
            earlier.Former.NoteMade(earlier.Facts);
        }
    }
    return TakenBack::PutBack;
}

QStringList MadeFiles::TakeAllBack()
{
    QStringList failed;
    for (qsizetype n = Count(); n-- > 0;) {
        if (TakeBack(n) == TakenBack::Failed)
            failed.append(Path(n));
    }
    files.clear();
    return failed;
}

void MadeFiles::Clear()
{
    for (File &file : files)
        file.Former.Forget();
    files.clear();
}
