#include "BenchTree.h"

#include "BenchRows.h"
#include "MediaFiles.h"

#include <QDir>

#include <stdexcept>
#include <string_view>

#include <dirent.h>
#include <sys/stat.h>

using namespace Qt::StringLiterals;

ListedFiles::ListedFiles(int perFolder)
{
    QByteArray absolute;
    QByteArray relative;
    for (int i = 0; i < FullList; ++i) {
        const QByteArray album =
            "Some Artist " + QByteArray::number(i / 120) + "/Their Album " + QByteArray::number(i / perFolder);
        if (i % perFolder == 0 || i % 120 == 0)
            QDir(Folder.path()).mkpath(QString::fromLatin1(album));
        const QByteArray name = album + '/' + QByteArray::number(i % perFolder + 1) + " - The title of a song.wma";
        WriteBenchFile(Folder.filePath(QString::fromLatin1(name)), "x");
        RelativePaths.push_back(name.toStdString());
        AbsolutePaths.push_back(Folder.path().toStdString() + '/' + name.toStdString());
        relative += name + '\n';
        absolute += QByteArray::fromStdString(AbsolutePaths.back()) + '\n';
    }
    WriteBenchFile(Folder.filePath(u"absolute.m3u"_s), absolute);
    WriteBenchFile(Folder.filePath(u"relative.m3u"_s), relative);
    WriteBenchFile(Folder.filePath(u"capitals.m3u"_s), relative.toUpper());
}

void StatBare(const std::vector<std::string> &paths)
{
    struct stat facts;
    for (const std::string &path : paths) {
        if (stat(path.c_str(), &facts) != 0)
            throw std::runtime_error("A file of the benchmark is missing.");
    }
}

BenchTree::BenchTree()
{
    const QStringList extensions{u".mp3"_s, u".ogg"_s, u".jpg"_s, u".mp3"_s, u".wma"_s, u".mp3"_s, u".wav"_s};
    for (int i = 0; i < FolderCount; ++i) {
        const QString branch = Folder.filePath(u"Genre %1/Artist %2"_s.arg(i / 500).arg(i / 10));
        const QString leaf = i % 10 == 0 ? branch : branch + u"/Album %1"_s.arg(i);
        QDir().mkpath(leaf);
        for (int file = 0; file < FileCount / FolderCount; ++file)
            WriteBenchFile(leaf + u"/%1 - The title of %2"_s.arg(file + 1).arg(i) + extensions[file % 7], {});
    }
}

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
