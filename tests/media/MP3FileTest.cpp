#include "media/MP3File.h"
#include "media/FullWalk.h"
#include "platform/Drives.h"

#include <QByteArray>
#include <QDir>
#include <QTemporaryDir>
#include <QTest>

#include <cmath>
#include <random>

using namespace Qt::StringLiterals;

namespace
{
const QString DataFolder = QStringLiteral(TEST_DATA) + u'/';

QByteArray DataFile(const QString &name)
{
    QFile file(DataFolder + name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QByteArray LongVariable(int frames)
{
    QByteArray stream;
    for (int frame = 0; frame < frames; ++frame)
        stream += SilentFrame(5 + frame * frame % 9, false);
    return stream;
}
} // namespace

class MP3FileTest : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir folder;
    MP3File file;

    /// Reads these bytes from a file; false when they hold no audio.
    bool Read(const QByteArray &content)
    {
        const QString path = folder.filePath(u"stream.mp3"_s);
        QFile out(path);
        if (!out.open(QIODevice::WriteOnly) || out.write(content) != content.size())
            return false;
        out.close();
        try {
            file.ReadMPEG(FromHostPath(path));
            return true;
        } catch (const MediaError &) {
            return false;
        }
    }

    /// Empty when the file reads as a walk over all its frames says.
    QString Difference(const QByteArray &content)
    {
        const FullWalk walk(content);
        if (Read(content) != walk.HasAudio)
            return walk.HasAudio ? u"no audio"_s : u"audio where there is none"_s;
        if (!walk.HasAudio)
            return QString();
        const double rate = file.Bitrate().section(u' ', 0, 0).toDouble();
        const bool sameRate = walk.Kilobits == 0 || (file.Bitrate().contains(u"VBR"_s) == walk.Variable &&
                                                     std::abs(rate - walk.Kilobits) <= 2.5);
        if (std::abs(file.SongLength() - walk.Seconds) <= 0.1 && sameRate)
            return QString();
        return u"%1 s, %2 instead of %3 s, %4"_s.arg(file.SongLength())
            .arg(file.Bitrate())
            .arg(walk.Seconds)
            .arg(walk.Kilobits);
    }

private Q_SLOTS:
    void ReadsEveryProperty_data();
    void ReadsEveryProperty();
    void AgreesWithAWalk_data();
    void AgreesWithAWalk();
    void AgreesBehindJunk();
    void SurvivesDamage_data() { AgreesWithAWalk_data(); }
    void SurvivesDamage();
    void ReadsLongStreams_data();
    void ReadsLongStreams();
    void PassesOverALargeTag();
    void DoubtsALyingHeader();
    void RefusesWhatIsNoAudio_data();
    void RefusesWhatIsNoAudio();
};

void MP3FileTest::ReadsEveryProperty_data()
{
    QTest::addColumn<double>("seconds");
    QTest::addColumn<QString>("facts");
    const auto row = [](const char *name, double seconds, const char *facts) {
        QTest::newRow(name) << seconds << QString::fromLatin1(facts);
    };
    // Lengths as decoders give them, without the encoder's delay where the stream states it.
    row("abr-mpeg1-joint-xing", 2.200, "1.0 III 44100 Joint Stereo, 87 VBR, original, None");
    row("cbr128-mpeg1-dual-crc-info", 2.200, "1.0 III 44100 Dual Channel, 128, crc, original, None");
    row("cbr128-mpeg1-joint-xing", 2.200, "1.0 III 44100 Joint Stereo, 128, original, None");
    row("cbr128-mpeg1-stereo-unpadded", 2.508, "1.0 III 44100 Stereo, 128, None");
    row("cbr16-mpeg25-mono-bare", 4.176, "2.5 III 8000 Single Channel, 16, original, None");
    row("cbr320-mpeg1-stereo-info", 1.200, "1.0 III 48000 Stereo, 320, original, None");
    row("cbr96-mpeg1-mono-flags-info", 2.000, "1.0 III 32000 Single Channel, 96, copyright, 50/15 microsec");
    row("free-mpeg2-mono", 3.056, "2.0 III 22050 Single Channel, 51, original, None");
    row("layer1-cbr256-mpeg1-stereo", 0.958, "1.0 I 44100 Stereo, 256, None");
    row("layer1-cbr64-mpeg2-mono", 2.560, "2.0 I 24000 Single Channel, 64, None");
    row("layer1-vbr-mpeg1-stereo", 0.960, "1.0 I 32000 Stereo, 224 VBR, None");
    row("layer2-cbr128-mpeg1-dual-crc", 1.200, "1.0 II 48000 Dual Channel, 128, crc, original, None");
    row("layer2-free-mpeg1-stereo", 1.306, "1.0 II 44100 Stereo, 276, None");
    row("layer2-vbr-mpeg1-joint", 2.220, "1.0 II 44100 Stereo, 207 VBR, original, None");
    row("vbr-mpeg1-joint-vbri", 2.247, "1.0 III 44100 Joint Stereo, 79 VBR, original, None");
    row("vbr-mpeg2-stereo-xing", 2.500, "2.0 III 24000 Stereo, 39 VBR, original, None");
    row("tag-everything-vbr-xing", 2.200, "1.0 III 44100 Joint Stereo, 79 VBR, original, None");
    row("cut-in-second-frame", 0.026, "1.0 III 44100 Joint Stereo, 128, original, None");
}

void MP3FileTest::ReadsEveryProperty()
{
    QFETCH(double, seconds);
    QFETCH(QString, facts);
    const QString path = DataFolder + QString::fromLatin1(QTest::currentDataTag()) + u".mp3"_s;
    file.ReadMPEG(FromHostPath(path));
    QVERIFY2(std::abs(file.SongLength() - seconds) < 0.001, qPrintable(QString::number(file.SongLength())));
    QCOMPARE(file.MPEGVersion() + u' ' + file.Layer() + u' ' + QString::number(file.SampleRate()) + u' ' + file.Mode() +
                 u", "_s + file.Bitrate() + (file.CRCProtection() ? u", crc"_s : QString()) +
                 (file.Copyrighted() ? u", copyright"_s : QString()) + (file.Original() ? u", original"_s : QString()) +
                 u", "_s + file.Emphasis(),
             facts);
    QCOMPARE(file.FileSize(), QFileInfo(path).size());
}

void MP3FileTest::AgreesWithAWalk_data()
{
    QTest::addColumn<QString>("name");
    const QStringList names = QDir(DataFolder).entryList({u"*.mp3"_s}, QDir::Files, QDir::Name);
    for (const QString &name : names)
        QTest::newRow(qPrintable(name)) << name;
}

void MP3FileTest::AgreesWithAWalk()
{
    QFETCH(QString, name);
    const QByteArray content = DataFile(name);
    QCOMPARE(Difference(content), QString());
    // Cut in twenty places, and close to the end, where a header's count still seems to hold.
    for (int part = 1; part < 20; ++part)
        QCOMPARE(Difference(content.left(content.size() * part / 20 + part)), QString());
    for (qsizetype lost = 1; lost < std::min<qsizetype>(content.size(), 3000); lost += 97)
        QCOMPARE(Difference(content.chopped(lost)), QString());
}

void MP3FileTest::AgreesBehindJunk()
{
    std::minstd_rand noise(11);
    for (const auto &name : {u"vbr-mpeg1-joint-xing.mp3"_s, u"layer1-cbr64-mpeg2-mono.mp3"_s, u"free-mpeg2-mono.mp3"_s,
                             u"cbr56-mpeg2-joint-bare.mp3"_s}) {
        for (const int length : {1, 5, 1000, 4094, 4096, 70000, 700000}) {
            QByteArray junk(length, '\0');
            for (char &byte : junk)
                byte = static_cast<char>(noise() >> 8);
            QCOMPARE(Difference(junk + DataFile(name)), QString());
        }
    }
}

void MP3FileTest::SurvivesDamage()
{
    QFETCH(QString, name);
    const QByteArray content = DataFile(name);
    const bool walked = name.contains(u"bare"_s) || name.startsWith(u"layer"_s) || name.startsWith(u"tag-id3v1"_s);
    std::minstd_rand noise(17);
    for (int round = 0; round < 60 && !content.isEmpty(); ++round) {
        QByteArray damaged = content;
        for (int count = 1 << round % 10; count > 0; --count)
            damaged[static_cast<qsizetype>(noise() % static_cast<unsigned>(damaged.size()))] =
                round % 3 == 0 ? '\xFF' : static_cast<char>(noise() >> 8);
        if (walked)
            QCOMPARE(Difference(damaged), QString());
        else if (Read(damaged))
            QVERIFY2(file.SongLength() >= 0 && std::isfinite(file.SongLength()), qPrintable(QString::number(round)));
    }
}

void MP3FileTest::ReadsLongStreams_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("rate");
    const QByteArray tag = "TAG" + QByteArray(125, ' ');
    const QByteArray steady = SilentStream(9, 10440);
    QTest::newRow("constant") << steady << u"128"_s;
    QTest::newRow("constant, tag") << steady + tag << u"128"_s;
    QTest::newRow("constant, cut") << steady.chopped(200) + tag << u"128"_s;
    QTest::newRow("constant, little padding") << SilentStream(2, 3000) << u"40"_s;
    QTest::newRow("never padded") << SilentStream(9, 10436, false) << u"128"_s;
    QTest::newRow("never padded, 320") << SilentStream(14, 1500, false) << u"320"_s;
    QTest::newRow("padding changes") << SilentStream(9, 1500) + SilentStream(9, 9000, false) << u"128"_s;
    QTest::newRow("junk between") << SilentStream(9, 3000) + QByteArray(5000, 'x') + SilentStream(9, 3001) << u"128"_s;
    QTest::newRow("zeros behind") << SilentStream(9, 4000) + QByteArray(400000, '\0') << u"128"_s;
    QTest::newRow("variable") << LongVariable(9000) + tag << u"117 VBR"_s;
    QTest::newRow("variable late") << SilentStream(9, 4000) + SilentStream(11, 4000) << u"160 VBR"_s;
}

void MP3FileTest::ReadsLongStreams()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, rate);
    QCOMPARE(Difference(content), QString());
    QCOMPARE(file.Bitrate(), rate);
}

void MP3FileTest::PassesOverALargeTag()
{
    const QByteArray stream = DataFile(u"vbr-mpeg1-joint-xing.mp3"_s);
    QVERIFY(Read(stream));
    const double seconds = file.SongLength();
    // Four megabytes of what looks like frames.
    const QByteArray inside = SilentStream(5, 20065);
    const qsizetype size = inside.size();
    const char head[] = {'I',
                         'D',
                         '3',
                         4,
                         0,
                         0,
                         static_cast<char>(size >> 21),
                         static_cast<char>(size >> 14 & 127),
                         static_cast<char>(size >> 7 & 127),
                         static_cast<char>(size & 127)};
    QVERIFY(Read(QByteArray(head, sizeof head) + inside + stream));
    QCOMPARE(file.SongLength(), seconds);
    QCOMPARE(file.Bitrate(), u"79 VBR"_s);
    QCOMPARE(file.FileSize(), 10 + size + stream.size());
}

void MP3FileTest::DoubtsALyingHeader()
{
    const QByteArray stream = DataFile(u"vbr-mpeg1-joint-xing.mp3"_s);
    const qsizetype counts = stream.indexOf("Xing") + 8;
    QByteArray without = stream;
    without.replace(counts - 4, 4, QByteArray(4, '\0'));
    QCOMPARE(Difference(without), QString());
    QByteArray bytes = stream;
    bytes[counts + 5] = 9;
    QCOMPARE(Difference(bytes), QString());
    QByteArray frames = stream;
    frames[counts] = 1;
    QVERIFY(Read(frames));
    QVERIFY(std::abs(file.SongLength() - 2.247) < 0.1);
}

void MP3FileTest::RefusesWhatIsNoAudio_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("one byte") << DataFile(u"one-byte.mp3"_s);
    QTest::newRow("text") << DataFile(u"text.mp3"_s);
    QTest::newRow("only tags") << DataFile(u"only-tags.mp3"_s);
    QTest::newRow("cut in the first frame") << DataFile(u"cut-in-first-frame.mp3"_s);
    QTest::newRow("megabytes of sync") << QByteArray(4000000, '\xFF');
    QTest::newRow("megabytes of headers") << QByteArray("\xFF\xFB\x90\x00", 4).repeated(1000000);
    QTest::newRow("megabytes of free format")
        << QByteArray(QByteArray("\xFF\xFB\x00\x00", 4) + QByteArray(6000, '\xFF')).repeated(700);
    QTest::newRow("a row of empty tags") << QByteArray("ID3\3\0\0\0\0\0\0", 10).repeated(200000);
}

void MP3FileTest::RefusesWhatIsNoAudio()
{
    QFETCH(QByteArray, content);
    QVERIFY(Read(DataFile(u"cbr128-mpeg1-joint-info.mp3"_s)));
    QVERIFY(!Read(content));
    QCOMPARE(file.FileSize(), content.size());
    QCOMPARE(file.SongLength(), 0.0);
    QCOMPARE(file.Layer() + file.MPEGVersion() + file.Mode() + file.Emphasis() + file.Bitrate(), QString());
    const QString path = FromHostPath(folder.filePath(u"stream.mp3"_s));
    try {
        file.ReadMPEG(path);
    } catch (const MediaError &error) {
        QCOMPARE(error.Text(), path + u" holds no MPEG audio."_s);
    }
    QVERIFY_THROWS_EXCEPTION(MediaError, file.ReadMPEG(FromHostPath(folder.path())));
    QVERIFY_THROWS_EXCEPTION(MediaError, file.ReadMPEG(FromHostPath(folder.filePath(u"missing.mp3"_s))));
    QCOMPARE(file.FileSize(), 0);
}

QTEST_GUILESS_MAIN(MP3FileTest)
#include "MP3FileTest.moc"
