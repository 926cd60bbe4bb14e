#include "media/MP3File.h"
#include "media/FullWalk.h"
#include "platform/Drives.h"
#include "platform/Files.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <cmath>
#include <random>

using namespace Qt::StringLiterals;

class MP3FileTest : public QObject
{
    Q_OBJECT

    const QString dataFolder = QStringLiteral(TEST_DATA) + u'/';
    const QTemporaryDir folder;
    MP3File file;

    QByteArray DataFile(const QString &name) const
    {
        QByteArray content;
        ReadWholeFile(FromHostPath(dataFolder + name), content);
        return content;
    }

    /// Reads these bytes from a file; false when they hold no audio.
    bool Read(const QByteArray &content)
    {
        QFile stream(folder.filePath(u"stream.mp3"_s));
        if (!stream.open(QIODevice::WriteOnly) || stream.write(content) != content.size())
            return false;
        stream.close();
        try {
            file.ReadMPEG(FromHostPath(stream.fileName()));
            return true;
        } catch (const MediaError &) {
            return false;
        }
    }

    /// Empty when the file reads as a walk over all its frames says, up to so many seconds.
    QString Difference(const QByteArray &content, double most = 0.1)
    {
        const FullWalk walk(content);
        if (Read(content) != walk.HasAudio)
            return walk.HasAudio ? u"no audio"_s : u"audio where there is none"_s;
        const double rate = file.Bitrate().section(u' ', 0, 0).toDouble();
        const bool isExact = walk.Rate != 0 && !walk.Variable;
        const bool sameRate = walk.Frames == 0 || (isExact ? file.Bitrate() == QString::number(walk.Rate)
                                                           : std::abs(rate - walk.Kilobits) <= 1.5);
        if (std::abs(file.SongLength() - walk.Seconds) <= most && sameRate && file.SampleRate() == walk.SampleRate)
            return QString();
        const QString read = QString::number(file.SongLength()) + u" s, "_s + file.Bitrate();
        return u"%1 instead of %2 s, %3"_s.arg(read).arg(walk.Seconds).arg(walk.Kilobits);
    }

private Q_SLOTS:
    void ReadsEveryProperty()
    {
        // Lengths as decoders give them, without the encoder's delay where the stream states it.
        const std::tuple<QString, double, QString> cases[] = {
            {u"cbr128-mpeg1-dual-crc-info"_s, 2.200, u"1.0 III 44100 Dual Channel, 128, crc, original, None"_s},
            {u"cbr16-mpeg25-mono-bare"_s, 4.176, u"2.5 III 8000 Single Channel, 16, original, None"_s},
            {u"cbr96-mpeg1-mono-flags-info"_s, 2.000, u"1.0 III 32000 Single Channel, 96, copyright, 50/15 microsec"_s},
            {u"free-mpeg2-mono"_s, 3.056, u"2.0 III 22050 Single Channel, 51, original, None"_s},
            {u"layer1-cbr64-mpeg2-mono"_s, 2.560, u"2.0 I 24000 Single Channel, 64, None"_s},
            {u"layer2-cbr128-mpeg1-dual-crc"_s, 1.200, u"1.0 II 48000 Dual Channel, 128, crc, original, None"_s},
            {u"tag-everything-vbr-xing"_s, 2.200, u"1.0 III 44100 Joint Stereo, 79 VBR, original, None"_s},
            {u"cut-in-second-frame"_s, 0.026, u"1.0 III 44100 Joint Stereo, 128, original, None"_s},
        };
        for (const auto &[name, seconds, facts] : cases) {
            const QString path = dataFolder + name + u".mp3"_s;
            file.ReadMPEG(FromHostPath(path));
            QVERIFY2(std::abs(file.SongLength() - seconds) < 0.001, qPrintable(name));
            const QString rate = QString::number(file.SampleRate());
            QString read = file.MPEGVersion() + u' ' + file.Layer() + u' ' + rate + u' ' + file.Mode() + u", "_s;
            read += file.Bitrate() + (file.CRCProtection() ? u", crc"_s : QString());
            read += file.Copyrighted() ? u", copyright"_s : QString();
            read += file.Original() ? u", original"_s : QString();
            QCOMPARE(read + u", "_s + file.Emphasis(), facts);
            QCOMPARE(file.FileSize(), QFileInfo(path).size());
        }
    }

    void AgreesWithAWalk()
    {
        std::minstd_rand random(17);
        QByteArray noise(700000, '\0');
        std::generate(noise.begin(), noise.end(), [&random] { return static_cast<char>(random() >> 8); });
        for (const QString &name : QDir(dataFolder).entryList({u"*.mp3"_s}, QDir::Files, QDir::Name)) {
            const QByteArray content = DataFile(name);
            QList<QByteArray> variants{content};
            // Cut in ten places, and close to the end, where a header's count still seems to hold.
            for (int part = 1; part < 10; ++part)
                variants.append(content.left(content.size() * part / 10 + part));
            for (qsizetype lost = 1; lost < std::min<qsizetype>(content.size(), 3000); lost += 194)
                variants.append(content.chopped(lost));
            // Headers that state the length are believed as long as they may be true.
            const bool walked = name.contains(u"bare"_s) || name.startsWith(u"layer"_s) || name == u"tag-id3v1.mp3"_s;
            for (const int length : walked ? QList<int>{1, 5, 1000, 4094, 4096, 70000} : QList<int>())
                variants.append(noise.first(length) + content);
            // What looks like the start of a frame, one byte before one.
            if (walked)
                variants.append('\xFF' + content);
            if (name.startsWith(u"vbr-mpeg1-joint-bare"_s))
                variants.append(noise + content);
            // Without a header each frame counts, but free format needs three to be seen.
            const double most = walked && !name.contains(u"free"_s) ? 0.02 : 0.1;
            for (const QByteArray &variant : variants)
                QCOMPARE(name + Difference(variant, most), name);
            for (int round = 0; round < 30 && !content.isEmpty(); ++round) {
                QByteArray damaged = content;
                for (int count = 1 << round % 10; count > 0; --count)
                    damaged[static_cast<qsizetype>(random() % static_cast<unsigned>(damaged.size()))] =
                        round % 3 == 0 ? '\xFF' : static_cast<char>(random() >> 8);
                if (walked)
                    QCOMPARE(name + Difference(damaged, most), name);
                else if (Read(damaged))
                    QVERIFY2(file.SongLength() >= 0 && std::isfinite(file.SongLength()), qPrintable(name));
            }
        }
    }

    void ReadsLongStreams()
    {
        const QByteArray tag = "TAG" + QByteArray(125, ' ');
        const QByteArray steady = SilentStream(9, 10440);
        // Two megabytes of what looks like frames.
        const QByteArray largeTag = QByteArray("ID3\4\0\0\1\0\0\0", 10) + SilentStream(5, 10040).first(1 << 21);
        // A few frames of other kinds, by chance or by a cut, and then the stream.
        const QByteArray x(900, 'x');
        const QByteArray chance = x + SilentStream(12, 3, true, 1) + x + SilentStream(11, 2, true, 2) + x;
        const QByteArray cut = SilentStream(9, 7) + x;
        const std::pair<QByteArray, QString> cases[] = {
            {chance + SilentStream(9, 460) + chance, u"128"_s},
            {cut + chance + SilentStream(12, 8) + chance + cut, u"163 VBR"_s},
            {SilentStream(5, 900) + SilentStream(5, 900, true, 1) + SilentStream(5, 900, true, 2), u"64"_s},
            {SilentStream(5, 900) + chance + SilentStream(12, 900, true, 1) + chance + cut, u"141 VBR"_s},
            {steady + tag, u"128"_s},
            {steady.chopped(200) + tag, u"128"_s},
            {SilentStream(2, 3000), u"40"_s},
            {SilentStream(14, 1500, false), u"320"_s},
            {SilentStream(9, 1500) + SilentStream(9, 9000, false), u"128"_s},
            {SilentStream(9, 3000) + QByteArray(5000, 'x') + SilentStream(9, 3001), u"128"_s},
            {SilentStream(9, 4000) + QByteArray(400000, '\0'), u"128"_s},
            {SilentStream(9, 4000) + SilentStream(11, 4000), u"160 VBR"_s},
            {QByteArray(SilentStream(5, 1) + SilentStream(12, 2)).repeated(3000) + tag, u"170 VBR"_s},
            {largeTag + DataFile(u"vbr-mpeg1-joint-xing.mp3"_s), u"79 VBR"_s},
        };
        for (const auto &[content, rate] : cases) {
            QCOMPARE(Difference(content), QString());
            QCOMPARE(file.Bitrate(), rate);
        }
    }

    void PassesEveryTagBehind()
    {
        const QByteArray text(500, 'x');
        const QByteArray oldTag = "TAG" + QByteArray(125, ' ');
        const QByteArray ape = "APETAGEX" + QByteArray("\xE8\3\0\0\x14\2\0\0\1\0\0\0", 12).leftJustified(24, '\0');
        const QByteArray footer("3DI\4\0\x10\0\0\3\x74", 10);
        const QByteArray tags[] = {
            oldTag,
            "TAG+" + QByteArray(223, ' ') + oldTag,
            text + ape,
            "ID3" + footer.sliced(3) + text + footer,
            "LYRICSBEGIN" + text + "000511LYRICS200",
            "LYRICSBEGIN" + text + "LYRICSEND" + oldTag,
        };
        for (QByteArray tag : tags) {
            // A last frame that a tag completes does not count, nor do frames within a tag.
            QVERIFY(Read(SilentStream(9, 100).chopped(100) + tag.replace(text, SilentStream(9, 2).first(500))));
            QCOMPARE(qRound64(file.SongLength() * 44100), 99 * 1152);
        }
    }

    void KnowsEveryRate()
    {
        for (const char kind : {'\xFF', '\xFD', '\xFB', '\xF7', '\xF5', '\xF3', '\xE7', '\xE5', '\xE3'}) {
            for (int rate = 0; rate < 14 * 3; ++rate)
                QCOMPARE(Difference(SilentFrames(kind, 1 + rate % 14, rate / 14, 9), 0.02), QString());
        }
    }

    void DoubtsALyingHeader()
    {
        const QByteArray stream = DataFile(u"vbr-mpeg1-joint-xing.mp3"_s);
        const qsizetype counts = stream.indexOf("Xing") + 8;
        QByteArray changed = stream;
        QCOMPARE(Difference(changed.replace(counts - 4, 4, QByteArray(4, '\0'))), QString());
        changed = stream;
        QCOMPARE(Difference(changed.replace(counts + 5, 1, "\t")), QString());
        // Frames of 23 and of 1,500 bytes, which this rate does not have.
        for (const char frames : {'\x03', '\0'}) {
            changed = stream;
            QCOMPARE(Difference(changed.replace(counts + 2, 2, QByteArray{1, frames}.append('\x0F'))), QString());
        }
        changed = stream;
        QVERIFY(Read(changed.replace(counts, 1, "\1")));
        QVERIFY(std::abs(file.SongLength() - 2.247) < 0.1);
    }

    void RefusesWhatIsNoAudio()
    {
        const auto Frames = [](const char *header, qsizetype size, int count) {
            return QByteArray(header, 3).leftJustified(size, 'x').repeated(count);
        };
        // What looks like free format: frames by chance, waves and texts that repeat, a rate that none has.
        const QByteArray chance = QByteArray(9000, 'x') + Frames("\xFF\xFB\0", 500, 8) + QByteArray(9000, 'x');
        const QByteArray contents[] = {
            QByteArray(),
            QByteArray(4000000, '\xFF'),
            Frames("\xFF\xFB\x90", 4, 1000000),
            QByteArray(QByteArray("\xFF\xFB\0\0", 4) + QByteArray(6000, '\xFF')).repeated(700),
            QByteArray("ID3\3\0\0\0\0\0\0", 10).repeated(200000),
            chance,
            chance.repeated(9),
            "RIFF, a wave: " + Frames("\xFF\xFB\0", 400, 200),
            Frames("\xFF\xFB\0", 2318, 90),
            // A version and a layer that are none.
            Frames("\xFF\xEB\x90", 522, 90),
            Frames("\xFF\xF9\x90", 470, 90),
        };
        for (const QByteArray &content : contents) {
            QVERIFY(Read(DataFile(u"cbr128-mpeg1-joint-info.mp3"_s)));
            QVERIFY(!Read(content));
            QCOMPARE(file.FileSize(), content.size());
            QCOMPARE(file.SongLength(), 0.0);
            QCOMPARE(file.Layer() + file.MPEGVersion() + file.Mode() + file.Emphasis() + file.Bitrate(), QString());
        }
        for (const QString &path : {folder.path(), folder.filePath(u"missing.mp3"_s)})
            QVERIFY_THROWS_EXCEPTION(MediaError, file.ReadMPEG(FromHostPath(path)));
        QCOMPARE(file.FileSize(), 0);
    }
};

QTEST_GUILESS_MAIN(MP3FileTest)
#include "MP3FileTest.moc"
