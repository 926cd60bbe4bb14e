#include "compilation/CompilationFiles.h"

#include "compilation/DiscCapacity.h"
#include "platform/Drives.h"
#include "platform/Files.h"
#include "text/FolderWalk.h"

#include <limits>

namespace
{
constexpr qint64 heldBack = 1048576;
constexpr qint64 mostBytes = std::numeric_limits<qint32>::max();

} // namespace

CompilationCheck CheckCompilationFiles(const QString &folder, int disc, const Progress &progress)
{
    CompilationCheck check;
    WalkFolder(folder, FileTypes(), check.Files, true, [&progress](const QString &current) {
        progress.SetText(ShownPath(current));
        return !progress.Stopped();
    });
    if (check.Files.isEmpty() && !progress.Stopped())
        return check;
    qint64 total = 0;
    for (const QString &file : std::as_const(check.Files))
        total += ExamineFile(file).Size;
    const std::optional<qint32> capacity = DiscCapacity(disc);
    check.State = CompilationState::Unknown;
    if (total > mostBytes || !capacity || progress.Stopped())
        return check;
    check.Excess = total - (*capacity - heldBack);
    if (check.Excess < 0)
        check.State = CompilationState::Fits;
    else if (check.Excess <= mostBytes)
        check.State = CompilationState::TooLarge;
    return check;
}
