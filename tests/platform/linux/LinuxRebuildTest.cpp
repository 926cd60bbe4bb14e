#include "platform/PlatformTests.h"

#include "platform/RebuiltFile.h"

#include <QFileInfo>
#include <QTest>

#include <csignal>

#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <sys/xattr.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

class LinuxRebuildTest : public FolderTest
{
    Q_OBJECT

    static constexpr uid_t Nobody = 65534;

    QByteArray Host(const char *name) const { return directory->path().toUtf8() + '/' + name; }
    bool LinkFile(const char *from, const char *to) const
    {
        return ::link(Host(from).constData(), Host(to).constData()) == 0;
    }
    struct stat Facts(const char *name) const
    {
        struct stat facts {
        };
        ::stat(Host(name).constData(), &facts);
        return facts;
    }
    bool SetMode(const char *name, mode_t mode) const { return ::chmod(Host(name).constData(), mode) == 0; }
    /// Puts a new front before the whole file.
    RebuildState Prepend(const QString &name, const QByteArray &front) const
    {
        const std::int64_t size = ExamineFile(In(name)).Size;
        const FilePiece pieces[] = {{front}, {{}, 0, size}};
        return RebuildFile(In(name), size, pieces);
    }

private Q_SLOTS:
    void FactsAreKept()
    {
        const bool isRoot = ::geteuid() == 0;
        QVERIFY(Write(u"a"_s, "old") && ::symlink("a", Host("link").constData()) == 0);
        QVERIFY(!isRoot || ::chown(Host("a").constData(), Nobody, Nobody) == 0);
        QVERIFY(SetMode("a", 0640));
        const bool hasValue = ::setxattr(Host("a").constData(), "user.tag", "value", 5, 0) == 0;
        const struct stat before = Facts("a");
        QVERIFY(Prepend(u"link"_s, "new ") == RebuildState::Done);
        QCOMPARE(Content(u"a"_s), QByteArray("new old"));
        QVERIFY(QFileInfo(directory->filePath(u"link"_s)).isSymLink());
        const struct stat after = Facts("a");
        QVERIFY(after.st_ino != before.st_ino && after.st_mode == before.st_mode);
        QVERIFY(after.st_uid == before.st_uid && after.st_gid == before.st_gid);
        if (!hasValue)
            QSKIP("The file system of the temporary folder keeps no extended attributes");
        char value[8] = "";
        QCOMPARE(::getxattr(Host("a").constData(), "user.tag", value, sizeof value), 5);
        QCOMPARE(QByteArray(value), QByteArray("value"));
    }

    void FullDiskLeavesTheOldFile()
    {
        const QByteArray content(1'000'000, 'o');
        QVERIFY(Write(u"a"_s, content) && Write(u"b"_s, content) && LinkFile("b", "c"));
        rlimit old{};
        QVERIFY(::getrlimit(RLIMIT_FSIZE, &old) == 0);
        const auto handler = std::signal(SIGXFSZ, SIG_IGN);
        const rlimit small{1'100'000, old.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &small);
        const RebuildState copied = Prepend(u"a"_s, QByteArray(200'000, 'n'));
        const RebuildState inPlace = Prepend(u"b"_s, QByteArray(200'000, 'n'));
        ::setrlimit(RLIMIT_FSIZE, &old);
        std::signal(SIGXFSZ, handler);
        QVERIFY(copied == RebuildState::DiskFull && inPlace == RebuildState::DiskFull);
        QVERIFY(Content(u"a"_s) == content && Content(u"b"_s) == content);
        QCOMPARE(Listed(), (QStringList{u"a"_s, u"b"_s, u"c"_s}));
    }

    void FolderThatTakesNoCopy_data()
    {
        QTest::addColumn<mode_t>("mode");
        QTest::addRow("not writable") << mode_t{0555};
        QTest::addRow("others' files stay") << mode_t{01777};
    }

    void FolderThatTakesNoCopy()
    {
        QFETCH(const mode_t, mode);
        const bool isRoot = ::geteuid() == 0;
        if (!isRoot && mode != 0555)
            QSKIP("Only root can make files of another user");
        QVERIFY(Write(u"a"_s, "old") && Write(u"private"_s, "old") && SetMode("a", 0666) && SetMode("private", 0600));
        const ino_t number = Facts("a").st_ino;
        QVERIFY(SetMode(".", mode) && (!isRoot || ::seteuid(Nobody) == 0));
        const RebuildState state = Prepend(u"a"_s, "new ");
        const RebuildState refused = isRoot ? Prepend(u"private"_s, "new ") : RebuildState::CannotOpen;
        QVERIFY((!isRoot || ::seteuid(0) == 0) && SetMode(".", 0700));
        QVERIFY(state == RebuildState::Done && refused == RebuildState::CannotOpen);
        QCOMPARE(Content(u"a"_s), QByteArray("new old"));
        QCOMPARE(Content(u"private"_s), QByteArray("old"));
        QCOMPARE(Facts("a").st_ino, number);
        QCOMPARE(Listed(), (QStringList{u"a"_s, u"private"_s}));
    }

    void KilledProcessLeavesOneOfBoth()
    {
        const QByteArray audio(2'000'000, 'a');
        const FilePiece shortFront{"tag"};
        const FilePiece longFront{QByteArray(70'000, 't')};
        QVERIFY(Write(u"a"_s, shortFront.Bytes + audio));
        for (int trial = 0; trial < 40; ++trial) {
            const pid_t child = ::fork();
            QVERIFY(child >= 0);
            for (bool longer = true; child == 0; longer = !longer) {
                const std::int64_t size = ExamineFile(In(u"a"_s)).Size;
                const FilePiece pieces[] = {longer ? longFront : shortFront, {{}, size - audio.size(), audio.size()}};
                if (RebuildFile(In(u"a"_s), size, pieces) != RebuildState::Done)
                    ::_exit(1);
            }
            ::usleep(static_cast<useconds_t>(trial) * 500);
            ::kill(child, SIGKILL);
            int status = 0;
            QVERIFY(::waitpid(child, &status, 0) == child && WIFSIGNALED(status));
            const QByteArray found = Content(u"a"_s);
            QVERIFY(found == shortFront.Bytes + audio || found == longFront.Bytes + audio);
        }
    }
};

static const RegisterTest<LinuxRebuildTest> registered;

#include "LinuxRebuildTest.moc"
