#include "text/MadeFiles.h"

bool MadeFiles::Make(const QString &path, const std::function<bool()> &write)
{
    const FormerFile former(path);
    if (!former.IsKept() || !write())
        return false;
    files.push_back({path, former});
    return true;
}

MadeFiles::TakenBack MadeFiles::TakeBack(qsizetype n)
{
    File &file = files[static_cast<std::size_t>(n)];
    if (file.IsTakenBack || !file.Former.GiveBack())
        return TakenBack::Failed;
    file.IsTakenBack = true;
    return file.Former.Existed() ? TakenBack::PutBack : TakenBack::Deleted;
}

void MadeFiles::TakeAllBack()
{
    for (qsizetype n = Count(); n-- > 0;)
        TakeBack(n);
    Clear();
}
