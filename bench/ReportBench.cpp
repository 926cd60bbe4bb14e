#include "BenchRows.h"
#include "BenchSupport.h"
#include "BenchTree.h"
#include "MediaFiles.h"
#include "PeakMemory.h"

#include "media/MP3File.h"
#include "platform/Drives.h"
#include "platform/Files.h"
#include "platform/ReplacedFile.h"
#include "reports/WriteReport.h"

#include <QFile>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

// Reports over what they read, and how they grow.

namespace
{
constexpr int Files = 10000;
constexpr int FewRows = 1000;

/// Writes reports of files, with all columns or with names, folders and sizes alone.
class Reporter
{
    QTemporaryDir folder;

public:
    Reporter()
    {
        time.Now = [] { return QDateTime(QDate(2026, 1, 2), QTime(3, 4, 5)); };
    }

    const QString Path = FromHostPath(folder.filePath(u"report.htm"_s));

    void Write(const QStringList &files, bool allColumns)
    {
        ReportSettings settings = DefaultReportSettings();
        for (std::size_t place = 0; place < settings.ColumnChecked.size(); ++place) {
            const ReportColumn column = ReportColumnOf(settings.ColumnOrder[place]);
            settings.ColumnChecked[place] = allColumns || column == ReportColumn::FileName ||
                                            column == ReportColumn::Folder || column == ReportColumn::Size;
        }
        if (!WriteReport(Path, files, settings, Progress(), time))
            throw std::runtime_error("The report cannot be written.");
    }

private:
    Clock time;
};

const ListedFiles &Listed()
{
    static const ListedFiles files;
    return files;
}

const QStringList &ListedPaths()
{
    static const QStringList paths = [] {
        QStringList list;
        for (const std::string &path : Listed().AbsolutePaths)
            list.append(FromHostPath(QString::fromStdString(path)));
        return list;
    }();
    return paths;
}

void ReportOverReadingTheFiles(benchmark::State &state)
{
    static const MediaFolder library(Files, CommonShape);
    Reporter reporter;
    CompareInTurn(
        state, Files, 1.2,
        [] {
            for (const QString &path : library.Paths) {
                MP3File file;
                file.ReadTags(path, false);
                file.ReadMPEG(path);
                benchmark::DoNotOptimize(file.SongLength());
            }
        },
        [&] { reporter.Write(library.Paths, true); });
}

void PlainReportOverBareStats(benchmark::State &state)
{
    Reporter reporter;
    CompareInTurn(
        state, FullList, 1.5, [] { StatBare(Listed().AbsolutePaths); }, [&] { reporter.Write(ListedPaths(), false); });
}

/// The system's calls alone: one stat a file, and a file of that size in the place of the old one.
void PlainReportOverItsCalls(benchmark::State &state)
{
    Reporter reporter;
    reporter.Write(ListedPaths(), false);
    const QByteArray piece(1 << 15, 'x');
    const qint64 pieces = ExamineFile(reporter.Path).Size / piece.size();
    CompareInTurn(
        state, FullList, 1.5,
        [&] {
            StatBare(Listed().AbsolutePaths);
            ReplacedFile page;
            page.Begin(reporter.Path);
            for (qint64 i = 0; i < pieces; ++i)
                page.Append(piece);
            page.Commit();
        },
        [&] { reporter.Write(ListedPaths(), false); });
}

void PlainReportGrowth(benchmark::State &state)
{
    Reporter reporter;
    const QStringList few = ListedPaths().first(FewRows);
    Compare(state, 1.1, {[&] { reporter.Write(few, false); }, FewRows},
            {[&] { reporter.Write(ListedPaths(), false); }, FullList});
}

/// "ratio" is here the megabytes that a report of all rows takes more than one of few.
void PlainReportMemory(benchmark::State &state)
{
    Reporter reporter;
    const QStringList few = ListedPaths().first(FewRows);
    const auto peakOf = [&](const QStringList &files) {
        PeakMegabytes();
        reporter.Write(files, false);
        return PeakMegabytes();
    };
    peakOf(ListedPaths());
    std::vector<double> more;
    for ([[maybe_unused]] auto round : state) {
        const double before = peakOf(few);
        more.push_back(peakOf(ListedPaths()) - before);
    }
    state.counters["ratio"] = Median(more);
    state.counters["bound"] = 8;
    state.SetLabel(Median(more) > 8 ? "OVER ITS BOUND" : "within its bound");
}

BENCHMARK(ReportOverReadingTheFiles)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(5);
BENCHMARK(PlainReportOverBareStats)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(9);
BENCHMARK(PlainReportOverItsCalls)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(9);
BENCHMARK(PlainReportGrowth)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(9);
BENCHMARK(PlainReportMemory)->Unit(benchmark::kMillisecond)->Iterations(5);
} // namespace

BENCHMARK_MAIN();
