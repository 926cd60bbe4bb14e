#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <functional>
#include <random>
#include <string>
#include <vector>

#include <sys/types.h>

/// What a file of the benchmarks holds: a tag, then frames of layer III.
struct MediaShape {
    qsizetype TagBytes;
    qsizetype AudioBytes;
    bool Variable;
    /// With a Xing or Info header in front of the audio.
    bool HasHeader;
};

/// A folder of MPEG files, each known by its path inside the program, its path on the host and where its audio begins.
class MediaFolder
{
public:
    MediaFolder(int count, const std::function<MediaShape(int number, std::minstd_rand &noise)> &shapeOf);

    QStringList Paths;
    std::vector<std::string> HostPaths;
    std::vector<off_t> AudioStarts;

private:
    QTemporaryDir folder;
};

/// Files as collections hold them: tags of 1 to 60 KB, constant and variable rate in turn, one in 33 without a header.
MediaShape CommonShape(int number, std::minstd_rand &noise);

/// Open, fstat, two reads (where the tag and where the audio begins) and close of each file.
void ReadBare(const MediaFolder &files);

/// Writes a file of a benchmark; raises std::runtime_error.
void WriteBenchFile(const QString &hostPath, const QByteArray &content);
