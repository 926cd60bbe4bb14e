#pragma once

#include <QTemporaryDir>

#include <string>
#include <vector>

// Trees of files that hold next to nothing, for what asks the disk where files are.

/// As many files as a list can have rows, so many to a folder, and playlists of them beside the folders:
/// "absolute.m3u", "relative.m3u", and "capitals.m3u", in which every line differs in case.
struct ListedFiles {
    explicit ListedFiles(int perFolder = 12);

    QTemporaryDir Folder;
    std::vector<std::string> AbsolutePaths;
    std::vector<std::string> RelativePaths;
};

/// Asks for each file once; raises std::runtime_error for one that is missing.
void StatBare(const std::vector<std::string> &paths);

/// Folders in three levels with twenty files each, of which most are audio files. No two files have the same name.
struct BenchTree {
    static constexpr int FolderCount = 5000;
    static constexpr int FileCount = 100000;

    BenchTree();

    QTemporaryDir Folder;
};

/// Counts the entries below a folder.
std::size_t ListBare(const std::string &folder);
