#include "BenchRows.h"
#include "BenchSupport.h"
#include "MediaFiles.h"

#include "platform/Drives.h"
#include "rename/FollowFiles.h"
#include "rename/RenamePreview.h"
#include "text/FormatText.h"
#include "text/PathText.h"

#include <QCoreApplication>
#include <QDir>

#include <algorithm>
#include <cstdio>
#include <stdexcept>

using namespace Qt::StringLiterals;

// What the batch rename does, without its window: names by rules, and runs over real files with their undo.

namespace
{
constexpr int RunFiles = 10000;

RenameSettings FiveRules()
{
    RenameSettings settings;
    const RenameRule rules[] = {
        {u"_"_s, u" "_s}, {u"ing"_s, u"ed"_s}, {u" the"_s, {}}, {{}, u" (live)"_s}, {u"  "_s, u" "_s}};
    int slot = 0;
    for (const RenameRule &rule : rules) {
        SetRule(settings, slot, rule);
        settings.RuleEnabled[static_cast<std::size_t>(slot++)] = flagSet;
    }
    return settings;
}

QStringList ManyPaths(int count)
{
    QStringList paths;
    for (const FileRecord &record : BenchRecords(count))
        paths.append(record.Folder + record.FileName);
    return paths;
}

Side Names(int count)
{
    return {[paths = ManyPaths(count)] {
                const RenameRules rules(FiveRules());
                for (const QString &path : paths)
                    benchmark::DoNotOptimize(ApplyRenameRules(rules, path, 1, 1, false).size());
            },
            static_cast<std::size_t>(count)};
}

/// What the text alone takes, with everything known beforehand.
Side BareNames(int count)
{
    return {[paths = ManyPaths(count)] {
                const std::pair<QString, QString> replaced[] = {
                    {u"_"_s, u" "_s}, {u"ing"_s, u"ed"_s}, {u" the"_s, QString()}, {u"  "_s, u" "_s}};
                for (const QString &path : paths) {
                    const qsizetype start = path.lastIndexOf(u'\\') + 1;
                    QString name = path.mid(start, path.size() - start - 4);
                    for (const auto &[from, to] : replaced)
                        name.replace(from, to);
                    name += u" (live)"_s;
                    name = TrimBlanks(ProperCase(name));
                    const QString made = path.left(start) + name + path.right(4).toLower();
                    benchmark::DoNotOptimize(made.size());
                }
            },
            static_cast<std::size_t>(count)};
}

/// Files that the default rules rename, spread over folders: neighbours lie in the same one or in different ones.
class RenamedFiles
{
public:
    RenamedFiles(int count, int folders, bool alternating)
    {
        for (int i = 0; i < folders; ++i)
            QDir(directory.path()).mkpath(QString::number(i));
        for (int i = 0; i < count; ++i) {
            const int folder = alternating ? i % folders : static_cast<int>(std::int64_t{i} * folders / count);
            const QString prefix = directory.path() + u'/' + QString::number(folder) + u'/';
            const QString name = u"track_%1_of a list.mp3"_s.arg(i, 5, 10, QChar(u'0'));
            const QString renamed = u"Track %1 Of A List.mp3"_s.arg(i, 5, 10, QChar(u'0'));
            WriteBenchFile(prefix + name, {});
            Old.push_back(QString(prefix + name).toStdString());
            New.push_back(QString(prefix + renamed).toStdString());
            Paths.append(FromHostPath(prefix + name));
            FileRecord record;
            record.FileName = name;
            record.Folder = FromHostPath(prefix);
            record.Size = 1;
            Records.push_back(record);
        }
    }

    std::size_t Count() const { return Old.size(); }

    std::vector<std::string> Old;
    std::vector<std::string> New;
    QStringList Paths;
    std::vector<FileRecord> Records;

private:
    QTemporaryDir directory;
};

/// In the order of a run, or of an undo.
void RenameBare(const std::vector<std::string> &from, const std::vector<std::string> &to, bool back)
{
    for (std::size_t i = 0; i < from.size(); ++i) {
        const std::size_t place = back ? from.size() - 1 - i : i;
        if (std::rename(from[place].c_str(), to[place].c_str()) != 0)
            throw std::runtime_error("A file of the benchmark cannot be renamed.");
    }
}

/// A run over all rows of a list, and its undo.
class ListedFiles
{
public:
    ListedFiles(int count, int folders, bool alternating, const RenameSettings &settingsOfRun)
        : files(count, folders, alternating), settings(settingsOfRun)
    {
        grid.Append(files.Records);
    }

    std::size_t Count() const { return files.Count(); }

    /// As a click on Rename does: the paths of the rows, the look for missing files, the run, the rows that follow.
    void Rename()
    {
        old.clear();
        for (int row = 1; row <= grid.Count(); ++row)
            old.append(grid.Item(row).FullPath());
        if (AnyMissing(old, {}))
            throw std::runtime_error("A file of the benchmark is missing.");
        const RenameOutcome outcome = RunRename(settings, old, IsSet(settings.Increment), {});
        if (outcome.Changed != grid.Count())
            throw std::runtime_error("A file of the benchmark was not renamed.");
        now = outcome.NewPaths;
        FollowFiles(grid, old, now);
    }
    void Undo()
    {
        const UndoOutcome outcome = UndoRename(old, now, {});
        FollowFiles(grid, outcome.From, outcome.To);
        grid.Reselect([](int, const PlaylistItem &) { return true; });
    }
    bool IsRenamed() const { return !now.isEmpty(); }

private:
    RenamedFiles files;
    RenameSettings settings;
    Grid grid;
    QStringList old;
    QStringList now;
};

void Run(benchmark::State &state, bool undo)
{
    const RenamedFiles bare(RunFiles, 100, false);
    ListedFiles list(RunFiles, 100, false, {});
    bool bareIsRenamed = false;
    const auto renameBare = [&](bool back) {
        RenameBare(back ? bare.New : bare.Old, back ? bare.Old : bare.New, back);
        bareIsRenamed = !back;
    };
    const Side floor{[&] { renameBare(undo); }, bare.Count(),
                     [&] {
                         if (bareIsRenamed != undo)
                             renameBare(!undo);
                     }};
    const Side subject{[&] { undo ? list.Undo() : list.Rename(); }, list.Count(),
                       [&] {
                           if (list.IsRenamed() != undo)
                               undo ? list.Rename() : list.Undo();
                       }};
    Compare(state, 1.3, floor, subject);
}

void RunGrowth(benchmark::State &state, bool alternating)
{
    RenameSettings numbered;
    numbered.Increment = flagSet;
    ListedFiles part(ShortList, 2, alternating, numbered);
    ListedFiles full(FullList, 2, alternating, numbered);
    const auto sideOf = [](ListedFiles &list) {
        return Side{[&list] { list.Rename(); }, list.Count(),
                    [&list] {
                        if (list.IsRenamed())
                            list.Undo();
                    }};
    };
    Compare(state, 1.2, sideOf(part), sideOf(full));
}

/// A preview of a full list, its folders listed anew, against the 0.2 seconds that nobody notices.
void Preview(benchmark::State &state, int folders)
{
    const RenamedFiles files(FullList, folders, false);
    const RenameRules rules(FiveRules());
    for ([[maybe_unused]] auto round : state) {
        FolderNames names;
        benchmark::DoNotOptimize(PreviewRename(rules, files.Paths, names, {}).Items.size());
    }
    state.counters["bound_ms"] = 200;
}

void NamesOverBareText(benchmark::State &state)
{
    Compare(state, 2, BareNames(FullList), Names(FullList));
}

void NamesGrowth(benchmark::State &state)
{
    Compare(state, 1.2, Names(ShortList), Names(FullList));
}

BENCHMARK(NamesOverBareText)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(9);
BENCHMARK(NamesGrowth)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(9);
BENCHMARK_CAPTURE(Run, Rename, false)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(9);
BENCHMARK_CAPTURE(Run, Undo, true)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(9);
BENCHMARK_CAPTURE(RunGrowth, FolderByFolder, false)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(5);
BENCHMARK_CAPTURE(RunGrowth, Alternating, true)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(5);
BENCHMARK_CAPTURE(Preview, OneFolder, 1)->Unit(benchmark::kMillisecond)->Iterations(5);
BENCHMARK_CAPTURE(Preview, ManyFolders, 2700)->Unit(benchmark::kMillisecond)->Iterations(5);
} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
