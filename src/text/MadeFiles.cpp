#include "text/MadeFiles.h"

bool MadeFiles::Make(const QString &path, const std::function<bool()> &write)
{
    FormerFile former(path);
    const DiskFacts replaced = DiskFactsOf(path);
    if (!former.IsKept() || (afterKill == AfterKill::TakeBack && !former.Note()))
        return false;
    if (!write()) {
        former.Forget();
        return false;
    }
    files.push_back({path, former, replaced, DiskFactsOf(path)});
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
    for (File &earlier : files) {
        if (earlier.Path == file.Path && earlier.Facts == file.Replaced)
            earlier.Facts = DiskFactsOf(file.Path);
    }
    return file.Former.Existed() ? TakenBack::PutBack : TakenBack::Deleted;
}

bool MadeFiles::TakeAllBack()
{
    bool done = true;
    for (qsizetype n = Count(); n-- > 0;)
        done = TakeBack(n) != TakenBack::Failed && done;
    files.clear();
    return done;
}

void MadeFiles::Clear()
{
    for (File &file : files)
        file.Former.Forget();
    files.clear();
}
