#include "BenchRows.h"
#include "BenchSupport.h"
#include "MediaFiles.h"

#include "platform/Drives.h"
#include "text/FolderWalk.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>

#include <memory>
#include <stdexcept>

#include <dirent.h>
#include <sys/stat.h>

using namespace Qt::StringLiterals;

// What the disk is asked for, over the bare system calls, with everything in the host's cache.

namespace
{
void AnalyseFileOverBareCalls(benchmark::State &state)
{
    static const MediaFolder files(10000, CommonShape);
    CompareInTurn(
        state, files.HostPaths.size(), 1.6, [] { ReadBare(files); },
        [] {
            for (const QString &path : files.Paths)
                benchmark::DoNotOptimize(AnalyseFile(path).Size);
        });
}

/// Files in folders of twelve, and two playlists of them beside the folders: one absolute, one relative.
struct ListedFiles {
    ListedFiles()
    {
        QByteArray absolute;
        QByteArray relative;
        for (int i = 0; i < FullList; ++i) {
            const QByteArray album =
                "Some Artist " + QByteArray::number(i / 120) + "/Their Album " + QByteArray::number(i / 12);
            if (i % 12 == 0)
                QDir(Folder.path()).mkpath(QString::fromLatin1(album));
            const QByteArray name = album + '/' + QByteArray::number(i % 12 + 1) + " - The title of a song.wma";
            WriteBenchFile(Folder.filePath(QString::fromLatin1(name)), "x");
            RelativePaths.push_back(name.toStdString());
            AbsolutePaths.push_back(Folder.path().toStdString() + '/' + name.toStdString());
            relative += name + '\n';
            absolute += QByteArray::fromStdString(AbsolutePaths.back()) + '\n';
        }
        WriteBenchFile(Folder.filePath(u"absolute.m3u"_s), absolute);
        WriteBenchFile(Folder.filePath(u"relative.m3u"_s), relative);
    }

    QTemporaryDir Folder;
    std::vector<std::string> AbsolutePaths;
    std::vector<std::string> RelativePaths;
};

void StatBare(const std::vector<std::string> &paths)
{
    struct stat facts;
    for (const std::string &path : paths) {
        if (stat(path.c_str(), &facts) != 0)
            throw std::runtime_error("A file of the benchmark is missing.");
    }
}

void PlaylistOverBareStats(benchmark::State &state, bool relative)
{
    static const ListedFiles files;
    const QString folder = FromHostPath(files.Folder.path());
    const QString playlist = folder + (relative ? u"\\relative.m3u"_s : u"\\absolute.m3u"_s);
    SetCurrentDirectory(folder);
    const auto &paths = relative ? files.RelativePaths : files.AbsolutePaths;
    std::unique_ptr<Grid> grid;
    const Side floor{[&] { StatBare(paths); }, FullList};
    const Side subject{[&] { LoadPlaylist(*grid, playlist); }, FullList, [&] { grid = std::make_unique<Grid>(); }};
    Compare(state, 2, floor, subject);
    if (grid->Count() != FullList || !grid->Item(FullList).Measured())
        throw std::runtime_error("The playlist of the benchmark is not read.");
}

constexpr int treeFolders = 5000;
constexpr int treeFiles = 100000;

/// Folders in three levels with twenty files each, of which most are audio files.
struct FileTree {
    FileTree()
    {
        const QStringList extensions{u".mp3"_s, u".ogg"_s, u".jpg"_s, u".mp3"_s, u".wma"_s, u".mp3"_s, u".wav"_s};
        for (int i = 0; i < treeFolders; ++i) {
            const QString branch = Folder.filePath(u"Genre %1/Artist %2"_s.arg(i / 500).arg(i / 10));
            const QString leaf = i % 10 == 0 ? branch : branch + u"/Album %1"_s.arg(i);
            QDir().mkpath(leaf);
            for (int file = 0; file < treeFiles / treeFolders; ++file)
                WriteBenchFile(leaf + u"/%1 - The title of a song"_s.arg(file + 1) + extensions[file % 7], {});
        }
    }

    QTemporaryDir Folder;
};

/// Counts the entries below a folder.
std::size_t ListBare(const std::string &folder)
{
    DIR *open = opendir(folder.c_str());
    std::size_t count = 0;
    while (const dirent *entry = readdir(open)) {
        const std::string_view name = entry->d_name;
        ++count;
        if (entry->d_type == DT_DIR && name != "." && name != "..")
            count += ListBare(folder + '/' + entry->d_name);
    }
    closedir(open);
    return count;
}

void WalkFolderOverBareListing(benchmark::State &state)
{
    static const FileTree tree;
    const std::string hostFolder = tree.Folder.path().toStdString();
    const QString folder = FromHostPath(tree.Folder.path());
    CompareInTurn(
        state, treeFiles, 1.5, [&] { benchmark::DoNotOptimize(ListBare(hostFolder)); },
        [&] {
            QStringList found;
            WalkFolder(folder, FileTypes(), found, true);
            if (found.size() < treeFiles / 2)
                throw std::runtime_error("The tree of the benchmark is not walked.");
        });
}

BENCHMARK(AnalyseFileOverBareCalls)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(PlaylistOverBareStats, Absolute, false)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(PlaylistOverBareStats, Relative, true)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(WalkFolderOverBareListing)->UseManualTime()->Unit(benchmark::kMillisecond);
} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
