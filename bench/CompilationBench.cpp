#include "BenchSupport.h"
#include "BenchTree.h"

#include "compilation/BuildCompilation.h"
#include "compilation/CompilationFiles.h"
#include "compilation/DiscCapacity.h"
#include "platform/Drives.h"
#include "reports/WriteReport.h"

using namespace Qt::StringLiterals;

// What the compilation wizard asks the disk, and what a build takes besides its report.

namespace
{
/// Ten thousand files in five hundred folders.
struct Library {
    BenchTree Tree;
    QString HostFolder = Tree.Folder.filePath(u"Genre 0"_s);
    QString Folder = FromHostPath(HostFolder);
    QStringList Files = CheckCompilationFiles(Folder, UsualDisc).Files;
    std::vector<std::string> HostFiles;

    Library()
    {
        for (const QString &file : Files)
            HostFiles.push_back(ToHostBytes(file).toStdString());
    }
};

const Library &TheLibrary()
{
    static const Library library;
    return library;
}

void CompilationCheckOverBareWalk(benchmark::State &state)
{
    const Library &library = TheLibrary();
    CompareInTurn(
        state, library.HostFiles.size(), 1.5,
        [&] {
            benchmark::DoNotOptimize(ListBare(library.HostFolder.toStdString()));
            StatBare(library.HostFiles);
        },
        [&] { benchmark::DoNotOptimize(CheckCompilationFiles(library.Folder, UsualDisc).Files.size()); });
}

void CompilationOverItsReport(benchmark::State &state)
{
    const Library &library = TheLibrary();
    Clock time;
    time.Now = [] { return QDateTime(QDate(2026, 1, 2), QTime(3, 4, 5)); };
    CompilationPlan plan{library.Folder, u"Genre 0"_s, {}, false, true, true, true, true, false, {}, "icon"};
    CompareInTurn(
        state, library.HostFiles.size(), 1.1,
        [&] {
            ReportSettings settings = DefaultReportSettings();
            settings.Title = u"Genre 0"_s;
            WriteReport(library.Folder + u"\\MP3Index.htm", library.Files, settings, Progress(), time);
        },
        [&] {
            ReportSettings settings = DefaultReportSettings();
            QStringList files = library.Files;
            QStringList entries;
            BuildCompilation(plan, files, entries, settings, Progress(), time);
        });
}

BENCHMARK(CompilationCheckOverBareWalk)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(9);
BENCHMARK(CompilationOverItsReport)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(5);
} // namespace
