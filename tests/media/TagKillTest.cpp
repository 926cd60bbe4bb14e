#include "media/MP3File.h"
#include "platform/Drives.h"
#include "platform/Files.h"

#include <QCryptographicHash>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

/// Updates that are cut short, by a kill or a full disk.
class TagKillTest : public QObject
{
    Q_OBJECT

    const QTemporaryDir folder;
    const QString path = FromHostPath(folder.filePath(u"song.mp3"_s));
    /// The titles of tags that fit their old room, outgrow it and shrink from it; their first letter is the old title.
    const QStringList titles{u"a"_s, QString(90'000, u'b'), QString(500, u'c'), QString(300'000, u'd')};
    QByteArray audio;
    QByteArray audioHash;

    static QByteArray Hash(const QByteArray &bytes)
    {
        return QCryptographicHash::hash(bytes, QCryptographicHash::Sha256);
    }

    QByteArray Content() const
    {
        QByteArray content;
        ReadWholeFile(path, content);
        return content;
    }

    void Update(const QString &title) const
    {
        MP3File file;
        file.ResetFile(path);
        file.ReadTags(path, false);
        file.SetTitle(title.first(1));
        file.SetFrame("TIT2", title);
        file.WriteTags(path, MP3File::TagChange::Write, MP3File::TagChange::Write);
    }

    [[noreturn]] void UpdateForEver(int told) const
    {
        try {
            for (qsizetype i = 0;; ++i) {
                Update(titles[i % titles.size()]);
                if (::write(told, "x", 1) != 1)
                    break;
            }
        } catch (const MediaError &) {
        }
        ::_exit(1);
    }

    void CheckFile() const
    {
        MP3File file;
        file.ReadTags(path, true);
        QVERIFY(titles.contains(file.GetFrame("TIT2")));
        QCOMPARE(file.Title(), file.GetFrame("TIT2").first(1));
        QCOMPARE(file.Bitrate(), u"128"_s);
        // Nothing but the tags stands around the audio.
        const QByteArray content = Content();
        const qsizetype tagBytes = 10 + (content[6] << 21 | content[7] << 14 | content[8] << 7 | content[9]);
        QCOMPARE(content.size(), tagBytes + audio.size() + 128);
        QVERIFY(Hash(content.sliced(tagBytes, audio.size())) == audioHash);
    }

private Q_SLOTS:
    void init()
    {
        QVERIFY(ReadWholeFile(FromHostPath(QStringLiteral(TEST_DATA) + u"/cbr128-mpeg1-joint-bare.mp3"_s), audio));
        audio = audio.repeated(20);
        audioHash = Hash(audio);
        QVERIFY(WriteWholeFile(path, audio));
        Update(titles.front());
    }

    void KilledUpdateLeavesOneOfTheTags()
    {
        for (int trial = 0; trial < 40; ++trial) {
            int told[2] = {};
            QVERIFY(::pipe(told) == 0);
            const pid_t child = ::fork();
            QVERIFY(child >= 0);
            if (child == 0)
                UpdateForEver(told[1]);
            ::close(told[1]);
            // So many updates were whole, and the kill meets one of those after them somewhere on its way.
            char byte = 0;
            for (int whole = trial % 5; whole > 0; --whole)
                QVERIFY(::read(told[0], &byte, 1) == 1);
            ::usleep(static_cast<useconds_t>(trial) * 190);
            ::kill(child, SIGKILL);
            int status = 0;
            QVERIFY(::waitpid(child, &status, 0) == child && WIFSIGNALED(status));
            ::close(told[0]);
            CheckFile();
            if (QTest::currentTestFailed())
                return;
        }
    }

    void FullDiskLeavesTheOldTag()
    {
        rlimit old{};
        QVERIFY(::getrlimit(RLIMIT_FSIZE, &old) == 0);
        const auto handler = std::signal(SIGXFSZ, SIG_IGN);
        QString reason;
        for (rlim_t room = 0; room < 350'000; room += 10'000) {
            const QByteArray before = Content();
            const rlimit small{static_cast<rlim_t>(audio.size()) + room, old.rlim_max};
            ::setrlimit(RLIMIT_FSIZE, &small);
            try {
                reason.clear();
                Update(titles[room % 20'000 == 0 ? 3 : 1]);
            } catch (const MediaError &error) {
                reason = error.Text();
            }
            ::setrlimit(RLIMIT_FSIZE, &old);
            QVERIFY(reason.isEmpty() || (reason.contains(u"the disk is full") && Content() == before));
            QCOMPARE(reason.isEmpty(), room > (room % 20'000 == 0 ? 300'000U : 90'000U));
            CheckFile();
        }
        std::signal(SIGXFSZ, handler);
    }
};

QTEST_GUILESS_MAIN(TagKillTest)
#include "TagKillTest.moc"
