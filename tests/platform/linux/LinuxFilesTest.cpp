#include "platform/PlatformTests.h"

#include "platform/Drives.h"
#include "platform/Files.h"
#include "platform/linux/DesktopEntry.h"

#include <QTemporaryDir>
#include <QTest>

#include <csignal>
#include <memory>

#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

class LinuxFilesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void LinksToFoldersAreNotFollowed();
    void TargetOfALinkIsReplaced();
    void SpecialFilesAreNoFiles();
    void FullDiskLeavesTheOldFile();
    void RightsAndAttributesAreKept();
    void ReadOnlyIsTheWriteBit();
    void AttributesOfFileServers_data();
    void AttributesOfFileServers();
    void NamesThatDifferInCase();
    void MovesBetweenFileSystems();
    void PseudoFileSystemsAreTold();
    void ProgramsOfDesktopEntries_data();
    void ProgramsOfDesktopEntries();

private:
    QString In(const QString &name) const { return folder + u'\\' + name; }
    QByteArray Host(const char *name) const { return hostFolder + '/' + name; }
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
    int Mode(const char *name) const
    {
        struct stat facts;
        return ::stat(Host(name).constData(), &facts) == 0 ? static_cast<int>(facts.st_mode & 07777U) : -1;
    }
    QStringList Listed() const
    {
        FolderEntries entries;
        ListFolder(folder, entries);
        return entries.Files + entries.Folders;
    }

    std::unique_ptr<QTemporaryDir> directory;
    QByteArray hostFolder;
    QString folder;
};

static const RegisterTest<LinuxFilesTest> registered;

void LinuxFilesTest::init()
{
    directory = std::make_unique<QTemporaryDir>();
    hostFolder = directory->path().toUtf8();
    folder = FromHostPath(directory->path());
}

void LinuxFilesTest::LinksToFoldersAreNotFollowed()
{
    QVERIFY(EnsureFolder(In(u"folder"_s)) && WriteWholeFile(In(u"file"_s), "x"));
    QVERIFY(Link("file", "to file") && Link("folder", "to folder") && Link("..", "loop") && Link("gone", "dangling") &&
            Link("b", "c") && Link("c", "b"));
    QCOMPARE(Listed(), (QStringList{u"file"_s, u"to file"_s, u"folder"_s}));
    FolderEntries entries;
    QVERIFY(ListFolder(In(u"to folder"_s), entries));
}

void LinuxFilesTest::TargetOfALinkIsReplaced()
{
    QVERIFY(EnsureFolder(In(u"sub"_s)) && WriteWholeFile(In(u"sub\\a"_s), "old"));
    QVERIFY(Link("sub/a", "one") && Link("one", "two") && Link("sub/fresh", "new") && Link("y", "x") && Link("x", "y"));
    QVERIFY(WriteWholeFile(In(u"two"_s), "replaced"));
    QCOMPARE(ExamineFile(In(u"sub\\a"_s)).Size, 8);
    QVERIFY(WriteWholeFile(In(u"new"_s), "1"));
    QCOMPARE(ExamineFile(In(u"sub\\fresh"_s)).Size, 1);
    QVERIFY(!WriteWholeFile(In(u"x"_s), "1"));
    for (const char *name : {"one", "two", "new", "x"}) {
        struct stat facts;
        QVERIFY(::lstat(Host(name).constData(), &facts) == 0 && S_ISLNK(facts.st_mode));
    }
}

void LinuxFilesTest::SpecialFilesAreNoFiles()
{
    QVERIFY(::mkfifo(Host("pipe").constData(), 0644) == 0);
    InputFile file;
    QVERIFY(!file.Open(In(u"pipe"_s)) && !file.Open(u"z:\\dev\\null"_s));
    QVERIFY(!WriteWholeFile(In(u"pipe"_s), "x") && !WriteWholeFile(u"z:\\dev\\null"_s, "x"));
    QCOMPARE(Listed(), QStringList());
}

void LinuxFilesTest::FullDiskLeavesTheOldFile()
{
    QVERIFY(WriteWholeFile(In(u"a"_s), "old") && WriteWholeFile(In(u"large"_s), QByteArray(50'000, 'x')));
    rlimit old{};
    QVERIFY(::getrlimit(RLIMIT_FSIZE, &old) == 0);
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    const rlimit small{4096, old.rlim_max};
    ::setrlimit(RLIMIT_FSIZE, &small);
    const bool written = WriteWholeFile(In(u"a"_s), QByteArray(50'000, 'n'));
    const bool created = WriteWholeFile(In(u"b"_s), QByteArray(50'000, 'n'));
    const bool copied = CopyFile(In(u"large"_s), In(u"a"_s));
    ::setrlimit(RLIMIT_FSIZE, &old);
    std::signal(SIGXFSZ, handler);
    QVERIFY(!written && !created && !copied);
    QByteArray content;
    QVERIFY(ReadWholeFile(In(u"a"_s), content));
    QCOMPARE(content, QByteArray("old"));
    QCOMPARE(Listed(), (QStringList{u"a"_s, u"large"_s}));
}

void LinuxFilesTest::RightsAndAttributesAreKept()
{
    const mode_t mask = ::umask(027);
    const bool written = WriteWholeFile(In(u"a"_s), "old");
    ::umask(mask);
    QVERIFY(written);
    QCOMPARE(Mode("a"), 0640);
    QVERIFY(::chmod(Host("a").constData(), 0751) == 0);
    if (!SetValue("user.DOSATTRIB", "0x22"))
        QSKIP("The file system of the temporary folder keeps no extended attributes");
    QVERIFY(SetValue("user.other", QByteArray("\0binary", 7)));
    QVERIFY(WriteWholeFile(In(u"a"_s), "new"));
    QCOMPARE(Mode("a"), 0751);
    QCOMPARE(Value("user.other"), QByteArray("\0binary", 7));
    QCOMPARE(FileAttributes(In(u"a"_s)), AttributeHidden | AttributeArchive);
    QVERIFY(SetFileAttributes(In(u"a"_s), AttributeReadOnly | AttributeArchive));
    QCOMPARE(Value("user.DOSATTRIB"), QByteArray("0x21"));
    QCOMPARE(Mode("a"), 0551);
}

void LinuxFilesTest::ReadOnlyIsTheWriteBit()
{
    QVERIFY(WriteWholeFile(In(u"a"_s), "x") && ::chmod(Host("a").constData(), 0666) == 0);
    QVERIFY(SetFileAttributes(In(u"a"_s), AttributeReadOnly));
    QCOMPARE(Mode("a"), 0444);
    QVERIFY(SetFileAttributes(In(u"a"_s), AttributeNormal));
    QCOMPARE(Mode("a"), 0644);
    QVERIFY(::chmod(Host("a").constData(), 0464) == 0);
    QCOMPARE(FileAttributes(In(u"a"_s)), static_cast<int>(AttributeReadOnly));
}

void LinuxFilesTest::AttributesOfFileServers_data()
{
    const QByteArray record("\0\0\3\0\3\0\0\0\x11\0\0\0\x22\0\0\0rest", 20);
    QTest::addColumn<QByteArray>("value");
    QTest::addColumn<int>("attributes");
    QTest::addColumn<QByteArray>("afterSystem");
    QTest::newRow("text") << QByteArray("0x20") << 32 << QByteArray("0x4");
    QTest::newRow("capitals") << QByteArray("0X6") << 6 << QByteArray("0x4");
    QTest::newRow("text and more") << QByteArray("0x22\0\1\2", 7) << 34 << QByteArray("0x4");
    QTest::newRow("read-only is not there") << QByteArray("0x1") << 128 << QByteArray("0x4");
    QTest::newRow("record") << record << 34 << QByteArray("\0\0\3\0\3\0\0\0\x11\0\0\0\4\0\0\0rest", 20);
    QTest::newRow("record without attributes")
        << QByteArray(record).replace(8, 1, "\x10") << 128 << QByteArray("\0\0\3\0\3\0\0\0\x11\0\0\0\4\0\0\0rest", 20);
    QTest::newRow("nonsense") << QByteArray("hidden") << 128 << QByteArray("0x4");
}

void LinuxFilesTest::AttributesOfFileServers()
{
    QFETCH(QByteArray, value);
    QVERIFY(WriteWholeFile(In(u"a"_s), "x"));
    if (!SetValue("user.DOSATTRIB", value))
        QSKIP("The file system of the temporary folder keeps no extended attributes");
    QTEST(FileAttributes(In(u"a"_s)), "attributes");
    QVERIFY(SetFileAttributes(In(u"a"_s), AttributeSystem));
    QTEST(Value("user.DOSATTRIB"), "afterSystem");
    QCOMPARE(FileAttributes(In(u"a"_s)), static_cast<int>(AttributeSystem));
}

void LinuxFilesTest::NamesThatDifferInCase()
{
    const QStringList sorted{u"SAME"_s, u"SAMe"_s, u"SAmE"_s, u"SaME"_s, u"Same"_s, u"sAME"_s, u"sAme"_s, u"same"_s};
    for (const int i : {7, 2, 5, 0, 6, 3, 1, 4})
        QVERIFY(WriteWholeFile(In(sorted[i]), "x"));
    QCOMPARE(Listed(), sorted);
    QVERIFY(!RenameFile(In(u"same"_s), In(u"SAME"_s)));
    QVERIFY(RenameFile(In(u"same"_s), In(u"samE"_s)) && RenameFile(In(u"samE"_s), In(u"same"_s)));
    QVERIFY(::link(Host("same").constData(), Host("hard").constData()) == 0);
    QVERIFY(!RenameFile(In(u"hard"_s), In(u"same"_s)));
    QVERIFY(ExamineFile(In(u"hard"_s)).Exists);
}

void LinuxFilesTest::MovesBetweenFileSystems()
{
    QTemporaryDir other(u"/dev/shm/vantrel-XXXXXX"_s);
    const QString target = FromHostPath(other.path());
    if (!other.isValid() || IdentifyFolder(target).Device == IdentifyFolder(folder).Device)
        QSKIP("There is no second file system");
    QVERIFY(WriteWholeFile(In(u"a"_s), "content") && WriteWholeFile(target + u"\\there", "old"));
    QVERIFY(::chmod(Host("a").constData(), 0440) == 0);
    QVERIFY(!RenameFile(In(u"a"_s), target + u"\\there"));
    QVERIFY(RenameFile(In(u"a"_s), target + u"\\moved"));
    QVERIFY(!ExamineFile(In(u"a"_s)).Exists);
    QCOMPARE(ExamineFile(target + u"\\moved").Size, 7);
    QVERIFY((FileAttributes(target + u"\\moved") & AttributeReadOnly) != 0);
    QCOMPARE(ExamineFile(target + u"\\there").Size, 3);
}

void LinuxFilesTest::PseudoFileSystemsAreTold()
{
    QVERIFY(!HoldsUserFiles(u"z:\\proc"_s) && !HoldsUserFiles(u"z:\\dev\\pts"_s));
    QVERIFY(HoldsUserFiles(u"z:"_s));
}

void LinuxFilesTest::ProgramsOfDesktopEntries_data()
{
    QTest::addColumn<QByteArray>("exec");
    QTest::addColumn<QString>("program");
    QTest::newRow("plain") << QByteArray("Exec=player --open %U") << u"player"_s;
    QTest::newRow("quoted") << QByteArray(R"(Exec = "/opt/My \\"Player/run" %f)") << u"/opt/My \"Player/run"_s;
    QTest::newRow("of an action only") << QByteArray("[Desktop Action New]\nExec=other") << QString();
    QTest::newRow("none") << QByteArray("TryExec=player") << QString();
}

void LinuxFilesTest::ProgramsOfDesktopEntries()
{
    QFETCH(QByteArray, exec);
    QTEST(ProgramOfDesktopEntry("[Desktop Entry]\nName=Player\n" + exec + "\n"), "program");
}

#include "LinuxFilesTest.moc"
