#include "platform/PlatformTests.h"

#include "platform/linux/DesktopEntry.h"

#include <QFileInfo>
#include <QTest>

#include <csignal>
#include <filesystem>

#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

class LinuxFilesTest : public FolderTest
{
    Q_OBJECT

    QByteArray Host(const char *name) const { return directory->path().toUtf8() + '/' + name; }
    bool Link(const char *target, const char *name) const { return ::symlink(target, Host(name).constData()) == 0; }
    bool SetValue(const char *name, const QByteArray &value) const
    {
        return ::setxattr(Host("a").constData(), name, value.constData(), static_cast<size_t>(value.size()), 0) == 0;
    }
    QByteArray Value(const char *name) const
    {
        QByteArray value(256, '\0');
        const ssize_t size = ::getxattr(Host("a").constData(), name, value.data(), static_cast<size_t>(value.size()));
        return value.first(std::max<ssize_t>(size, 0));
    }
    bool SetMode(mode_t mode) const { return ::chmod(Host("a").constData(), mode) == 0; }
    int Mode() const { return static_cast<int>(std::filesystem::status(Host("a").toStdString()).permissions()); }

private Q_SLOTS:
    void LinksStayLinks()
    {
        QVERIFY(EnsureFolder(In(u"sub"_s)) && Write(u"sub\\a"_s, "old"));
        QVERIFY(Link("sub/a", "one") && Link("one", "two") && Link("sub/fresh", "new") && Link("y", "x") &&
                Link("x", "y") && Link("sub", "to folder") && Link("..", "loop"));
        QCOMPARE(Listed(), (QStringList{u"one"_s, u"two"_s, u"sub"_s}));
        QVERIFY(Write(u"two"_s, "replaced") && Write(u"new"_s, "fresh") && !Write(u"x"_s, "1"));
        QCOMPARE(Content(u"sub\\a"_s), QByteArray("replaced"));
        QCOMPARE(Content(u"sub\\fresh"_s), QByteArray("fresh"));
        for (const QString &name : {u"one"_s, u"two"_s, u"new"_s, u"x"_s})
            QVERIFY(QFileInfo(directory->filePath(name)).isSymLink());
    }

    void SpecialFilesAreNoFiles()
    {
        QVERIFY(::mkfifo(Host("pipe").constData(), 0644) == 0);
        InputFile file;
        for (const QString &path : {In(u"pipe"_s), u"z:\\dev\\null"_s})
            QVERIFY(!file.Open(path) && !WriteWholeFile(path, "x"));
        QCOMPARE(Listed(), QStringList());
        QVERIFY(!HoldsUserFiles(u"z:\\proc"_s) && !HoldsUserFiles(u"z:\\dev\\pts"_s) && HoldsUserFiles(u"z:"_s));
    }

    void FullDiskLeavesTheOldFile()
    {
        const QByteArray large(50'000, 'n');
        QVERIFY(Write(u"a"_s, "old") && Write(u"large"_s, large));
        rlimit old{};
        QVERIFY(::getrlimit(RLIMIT_FSIZE, &old) == 0);
        const auto handler = std::signal(SIGXFSZ, SIG_IGN);
        const rlimit small{4096, old.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &small);
        const bool written = Write(u"a"_s, large);
        const bool created = Write(u"b"_s, large);
        const bool copied = CopyFile(In(u"large"_s), In(u"a"_s));
        ::setrlimit(RLIMIT_FSIZE, &old);
        std::signal(SIGXFSZ, handler);
        QVERIFY(!written && !created && !copied);
        QCOMPARE(Content(u"a"_s), QByteArray("old"));
        QCOMPARE(Listed(), (QStringList{u"a"_s, u"large"_s}));
    }

    void RightsAndAttributesAreKept()
    {
        const mode_t mask = ::umask(027);
        const bool written = Write(u"a"_s, "old");
        ::umask(mask);
        QVERIFY(written);
        QCOMPARE(Mode(), 0640);
        QVERIFY(SetMode(0751));
        if (!SetValue("user.DOSATTRIB", "0x22"))
            QSKIP("The file system of the temporary folder keeps no extended attributes");
        QVERIFY(SetValue("user.other", QByteArray("\0binary", 7)));
        QVERIFY(Write(u"a"_s, "new"));
        QCOMPARE(Mode(), 0751);
        QCOMPARE(Value("user.other"), QByteArray("\0binary", 7));
        QCOMPARE(FileAttributes(In(u"a"_s)), AttributeHidden | AttributeArchive);
        QVERIFY(SetFileAttributes(In(u"a"_s), AttributeReadOnly | AttributeArchive));
        QCOMPARE(Value("user.DOSATTRIB"), QByteArray("0x21"));
        QCOMPARE(Mode(), 0551);
        QVERIFY(SetFileAttributes(In(u"a"_s), AttributeNormal) && SetMode(0464));
        QCOMPARE(FileAttributes(In(u"a"_s)), static_cast<int>(AttributeReadOnly));
    }

    void AttributesOfFileServers()
    {
        QVERIFY(Write(u"a"_s, "x"));
        if (!SetValue("user.DOSATTRIB", "0x20"))
            QSKIP("The file system of the temporary folder keeps no extended attributes");
        const QByteArray record("\0\0\3\0\3\0\0\0\x11\0\0\0\x22\0\0\0rest", 20);
        // The value, the attributes in it, the value after the system attribute was set.
        const std::tuple<QByteArray, int, QByteArray> cases[] = {
            {"0X6", AttributeHidden | AttributeSystem, "0x4"},
            {QByteArray("0x22\0\1\2", 7), AttributeHidden | AttributeArchive, "0x4"},
            {"0x1", AttributeNormal, "0x4"},
            {record, AttributeHidden | AttributeArchive, QByteArray(record).replace(12, 1, "\4")},
            {QByteArray(record).replace(8, 1, "\x10"), AttributeNormal, QByteArray(record).replace(12, 1, "\4")},
            {"hidden", AttributeNormal, "0x4"},
        };
        for (const auto &[value, attributes, afterSystem] : cases) {
            QVERIFY(SetValue("user.DOSATTRIB", value));
            QCOMPARE(FileAttributes(In(u"a"_s)), attributes);
            QVERIFY(SetFileAttributes(In(u"a"_s), AttributeSystem));
            QCOMPARE(Value("user.DOSATTRIB"), afterSystem);
        }
    }

    void NamesThatDifferInCase()
    {
        QVERIFY(Write(u"same"_s, "x") && Write(u"SAME"_s, "x") && Write(u"sAME"_s, "x"));
        QCOMPARE(Listed(), (QStringList{u"SAME"_s, u"sAME"_s, u"same"_s}));
        QVERIFY(!RenameFile(In(u"same"_s), In(u"SAME"_s)));
        QVERIFY(::link(Host("same").constData(), Host("hard").constData()) == 0);
        QVERIFY(!RenameFile(In(u"hard"_s), In(u"same"_s)) && Listed().contains(u"hard"_s));
    }

    void MovesBetweenFileSystems()
    {
        const QTemporaryDir other(u"/dev/shm/vantrel-XXXXXX"_s);
        const QString target = FromHostPath(other.path());
        if (!other.isValid() || IdentifyFolder(target).Device == IdentifyFolder(folder).Device)
            QSKIP("There is no second file system");
        QVERIFY(Write(u"a"_s, "content") && WriteWholeFile(target + u"\\there", "old") && SetMode(0440));
        QVERIFY(!RenameFile(In(u"a"_s), target + u"\\there") && RenameFile(In(u"a"_s), target + u"\\moved"));
        QCOMPARE(Listed(), QStringList());
        QCOMPARE(ExamineFile(target + u"\\moved").Size, 7);
        QVERIFY((FileAttributes(target + u"\\moved") & AttributeReadOnly) != 0);
        QCOMPARE(ExamineFile(target + u"\\there").Size, 3);
    }

    void ProgramsOfDesktopEntries()
    {
        const QByteArray quoted = "Exec = \"/opt/My \\\\\"Player/run\" %f";
        QCOMPARE(ProgramOfDesktopEntry("[Desktop Entry]\nName=Player\n" + quoted), u"/opt/My \"Player/run"_s);
        QCOMPARE(ProgramOfDesktopEntry("[Desktop Entry]\nTryExec=a\n[Desktop Action New]\nExec=b"), QString());
    }
};

static const RegisterTest<LinuxFilesTest> registered;

#include "LinuxFilesTest.moc"
