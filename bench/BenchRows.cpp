#include "BenchRows.h"

#include "playlist/M3UFile.h"
#include "text/PathText.h"

#include <random>

using namespace Qt::StringLiterals;

namespace
{
QString Words(std::minstd_rand &noise, int count)
{
    static const QStringList words{u"Morning"_s, u"river"_s, u"Blue"_s, u"the"_s,     u"Northern"_s, u"light"_s,
                                   u"of"_s,      u"Stone"_s, u"late"_s, u"Another"_s, u"Garden"_s,   u"wind"_s};
    QStringList chosen;
    for (int i = 0; i < count; ++i)
        chosen.append(words[static_cast<qsizetype>((noise() >> 8) % static_cast<std::uint32_t>(words.size()))]);
    return chosen.join(u' ');
}

FileRecord Measured(FileRecord record, std::minstd_rand &noise)
{
    static constexpr std::array rates{128, 160, 192, 256, 320};
    const auto draw = static_cast<std::uint32_t>(noise() >> 8);
    const QString rate = QString::number(rates[draw % rates.size()]);
    record.Valid = true;
    record.Size = 1000000 + draw % 9000000;
    record.Length = static_cast<qint32>(60 + draw % 500);
    record.FileType = draw % 8 == 0 ? u"MPEG 2.0"_s : u"MPEG 1.0"_s;
    record.LayerText = draw % 64 == 0 ? u"Layer II"_s : u"Layer III"_s;
    record.BitrateText = draw % 3 == 0 ? QString(rate + u" VBR"_s) : QString(rate + u" Kbit"_s);
    record.SampleRateText = draw % 5 == 0 ? u"48000 Hz"_s : u"44100 Hz"_s;
    record.ModeText = draw % 2 == 0 ? u"Joint Stereo"_s : u"Stereo"_s;
    return record;
}
} // namespace

std::vector<FileRecord> BenchRecords(int count)
{
    constexpr int albumSize = 12;
    constexpr int missingEvery = 50;
    std::minstd_rand noise(7);
    std::vector<FileRecord> records;
    QString folder;
    for (int i = 0; i < count; ++i) {
        if (i % albumSize == 0)
            folder = u"d:\\Music\\%1 %2\\%3\\"_s.arg(Words(noise, 2)).arg((noise() >> 8) % 1000).arg(Words(noise, 3));
        FileRecord record;
        record.Folder = folder;
        record.FileName = u"%1 - %2 %3.mp3"_s.arg(i % albumSize + 1, 2, 10, QChar(u'0')).arg(Words(noise, 3)).arg(i);
        records.push_back(i % missingEvery == 0 ? record : Measured(record, noise));
    }
    return records;
}

void LoadPlaylist(Grid &grid, const QString &path)
{
    QStringList paths;
    ReadM3UFile(path, paths);
    std::vector<FileRecord> records;
    records.reserve(static_cast<std::size_t>(paths.size()));
    EntryReader reader(FolderOf(path));
    for (const QString &entry : std::as_const(paths))
        records.push_back(reader.Analyse(entry));
    grid.Append(records);
}
