#include "platform/PlatformTests.h"

#include "platform/DesktopShell.h"
#include "platform/FolderLock.h"
#include "platform/Host.h"
#include "platform/RebuiltFile.h"
#include "platform/ReplacedFile.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QMimeDatabase>
#include <QStandardPaths>
#include <QTest>

#include <cerrno>
#include <csignal>
#include <functional>
#include <memory>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <sys/xattr.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace
{
// What the file system of the tests is made to lack.
bool knowsNoReplace = true;
bool knowsLinks = true;
bool knowsCase = true;
bool knowsModes = true;
/// What another program does in front of the next hold.
std::function<void()> beforeHold;

/// Where case is ignored, all spellings of a name are the small one.
QByteArray Spelling(const char *path)
{
    const QByteArray name(path);
    const qsizetype start = name.lastIndexOf('/') + 1;
    return knowsCase ? name : name.first(start) + name.sliced(start).toLower();
}
} // namespace

// These take the place of the C library's.
extern "C" int renameat2(int fromFolder, const char *from, int toFolder, const char *to, unsigned flags) noexcept
{
    errno = EINVAL;
    return knowsNoReplace ? static_cast<int>(::syscall(SYS_renameat2, fromFolder, Spelling(from).constData(), toFolder,
                                                       Spelling(to).constData(), flags))
                          : -1;
}

extern "C" int link(const char *from, const char *to) noexcept
{
    errno = EPERM;
    return knowsLinks ? static_cast<int>(::syscall(SYS_linkat, AT_FDCWD, Spelling(from).constData(), AT_FDCWD,
                                                   Spelling(to).constData(), 0))
                      : -1;
}

extern "C" int fchmod(int file, mode_t mode) noexcept
{
    errno = EPERM;
    return knowsModes ? static_cast<int>(::syscall(SYS_fchmod, file, mode)) : -1;
}

extern "C" int flock(int file, int operation) noexcept
{
    if (beforeHold)
        std::exchange(beforeHold, nullptr)();
    return static_cast<int>(::syscall(SYS_flock, file, operation));
}

extern "C" int lstat(const char *path, struct stat *facts) noexcept
{
    return ::fstatat(AT_FDCWD, Spelling(path).constData(), facts, AT_SYMLINK_NOFOLLOW);
}

class LinuxFilesTest : public FolderTest
{
    Q_OBJECT

    static constexpr uid_t Nobody = 65534;

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
    struct stat Facts(const char *name) const
    {
        struct stat facts {
        };
        ::stat(Host(name).constData(), &facts);
        return facts;
    }
    bool SetMode(const char *name, mode_t mode) const { return ::chmod(Host(name).constData(), mode) == 0; }
    int Mode() const { return static_cast<int>(Facts("a").st_mode & 07777); }
    /// Puts a new front before the whole file.
    RebuildState Prepend(const QString &name, const QByteArray &front) const
    {
        const std::int64_t size = ExamineFile(In(name)).Size;
        const FilePiece pieces[] = {{front}, {{}, 0, size}};
        return RebuildFile(In(name), DiskFactsOf(In(name)), pieces);
    }

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
        // Also where what was made behind them is taken away again.
        QVERIFY(DeleteMadeFile(In(u"new"_s)) && !DeleteMadeFile(In(u"new"_s)) && !DeleteMadeFile(In(u"x"_s)));
        KeepWaysBack(In(u"notes"_s));
        QVERIFY(WayBack().NoteFormer(In(u"new"_s), false, {}) && Write(u"new"_s, "fresh"));
        KeepWaysBack({});
        KeepWaysBack(In(u"notes"_s));
        KeepWaysBack({});
        QVERIFY(QFileInfo(directory->filePath(u"new"_s)).isSymLink() && Content(u"sub\\fresh"_s) == "unreadable");
    }

    void NoteThatAnotherStartTakesIsMadeAnew()
    {
        const auto note = [this]() -> QString {
            const QStringList names = QDir(directory->filePath(u"notes"_s)).entryList(QDir::Files);
            return directory->filePath(u"notes/"_s) + names.value(0);
        };
        DiskFile theirs;
        for (const bool isHeldFirst : {true, false}) {
            KeepWaysBack(In(u"notes"_s));
            beforeHold = [&] {
                if (isHeldFirst)
                    QVERIFY(theirs.Open(FromHostPath(note())) && theirs.HoldAlone());
                QVERIFY(QFile::remove(note()));
            };
            QVERIFY(Write(u"a"_s, "new") && WayBack().NoteFormer(In(u"a"_s), true, "old"));
            QVERIFY(!beforeHold);
            KeepWaysBack({});
            KeepWaysBack(In(u"notes"_s));
            KeepWaysBack({});
            QCOMPARE(Content(u"a"_s), "old"_ba);
        }
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

    void RightsAndAttributesAreKept()
    {
        const mode_t mask = ::umask(027);
        const bool written = Write(u"a"_s, "old");
        ::umask(mask);
        QVERIFY(written && Link("a", "link"));
        QCOMPARE(Mode(), 0640);
        QVERIFY(::geteuid() != 0 || ::chown(Host("a").constData(), Nobody, Nobody) == 0);
        QVERIFY(SetMode("a", 0751));
        const QByteArray other("\0binary", 7);
        const bool hasValues = SetValue("user.DOSATTRIB", "0x22") && SetValue("user.other", other);
        for (const bool whole : {true, false}) {
            const struct stat before = Facts("a");
            QVERIFY(whole ? Write(u"link"_s, "old") : Prepend(u"link"_s, "new ") == RebuildState::Done);
            const struct stat after = Facts("a");
            QVERIFY(after.st_ino != before.st_ino && after.st_mode == before.st_mode);
            QVERIFY(after.st_uid == before.st_uid && after.st_gid == before.st_gid);
            QCOMPARE(Value("user.other"), hasValues ? other : QByteArray());
        }
        QCOMPARE(Content(u"a"_s), QByteArray("new old"));
        // What the folder gives to new files is not for one that had been without.
        const QByteArray access("\2\0\0\0\1\0\7\0\xff\xff\xff\xff\2\0\7\0\1\0\0\0\4\0\5\0\xff\xff\xff\xff"
                                "\x10\0\7\0\xff\xff\xff\xff\x20\0\0\0\xff\xff\xff\xff",
                                44);
        if (::setxattr(directory->path().toUtf8().constData(), "system.posix_acl_default", access.constData(), 44, 0) ==
            0)
            QVERIFY(Write(u"a"_s, "new old") && Value("system.posix_acl_access").isEmpty() && Mode() == 0751);
        // A disk may have one mode for all files and refuse to set even that.
        QVERIFY(Write(u"fixed"_s, "old") && SetMode("fixed", 0600));
        knowsModes = false;
        const bool kept = Write(u"fixed"_s, "new") && !Write(u"a"_s, "new");
        knowsModes = true;
        QVERIFY(kept);
        QVERIFY(QFileInfo(directory->filePath(u"link"_s)).isSymLink());
        if (!hasValues)
            QSKIP("The file system of the temporary folder keeps no extended attributes");
        QCOMPARE(FileAttributes(In(u"a"_s)), AttributeHidden | AttributeArchive);
        QVERIFY(SetFileAttributes(In(u"a"_s), AttributeReadOnly | AttributeArchive));
        QCOMPARE(Value("user.DOSATTRIB"), QByteArray("0x21"));
        QCOMPARE(Mode(), 0551);
        QVERIFY(SetFileAttributes(In(u"a"_s), AttributeNormal) && SetMode("a", 0464));
        QCOMPARE(FileAttributes(In(u"a"_s)), static_cast<int>(AttributeReadOnly));
    }

    void LentFilesAreCalledBack()
    {
        QVERIFY(Write(u"a"_s, "old"));
        int told[2] = {};
        QVERIFY(::pipe(told) == 0);
        static int lent = -1;
        lent = ::open(Host("a").constData(), O_RDONLY | O_CLOEXEC);
        const pid_t borrower = ::fork();
        if (borrower == 0) {
            ::signal(SIGIO, [](int) { ::fcntl(lent, F_SETLEASE, F_UNLCK); });
            const char isLent = ::fcntl(lent, F_SETLEASE, F_RDLCK) == 0 ? 1 : 0;
            if (::write(told[1], &isLent, 1) == 1) {
                for (;;)
                    ::pause();
            }
            ::_exit(1);
        }
        ::close(lent);
        char isLent = 0;
        const bool isTold = ::read(told[0], &isLent, 1) == 1;
        const RebuildState state = Prepend(u"a"_s, "new ");
        ::kill(borrower, SIGKILL);
        ::waitpid(borrower, nullptr, 0);
        ::close(told[0]);
        ::close(told[1]);
        QVERIFY(isTold);
        QCOMPARE(state, RebuildState::Done);
        QCOMPARE(Content(u"a"_s), QByteArray("new old"));
        if (isLent == 0)
            QSKIP("The file system of the temporary folder lends no files");
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
            {record.first(12), AttributeNormal, "0x4"},
        };
        for (const auto &[value, attributes, afterSystem] : cases) {
            QVERIFY(SetValue("user.DOSATTRIB", value));
            QCOMPARE(FileAttributes(In(u"a"_s)), attributes);
            QVERIFY(SetFileAttributes(In(u"a"_s), AttributeSystem));
            QCOMPARE(Value("user.DOSATTRIB"), afterSystem);
        }
    }

    void FullDiskLeavesTheOldFile()
    {
        const QByteArray content(1'000'000, 'o');
        const QByteArray large(1'200'000, 'n');
        QVERIFY(Write(u"a"_s, content) && Write(u"b"_s, content) && LinkFile(u"b"_s, u"c"_s));
        QVERIFY(Write(u"large"_s, large));
        rlimit old{};
        QVERIFY(::getrlimit(RLIMIT_FSIZE, &old) == 0);
        const auto handler = std::signal(SIGXFSZ, SIG_IGN);
        const rlimit small{1'100'000, old.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &small);
        const RebuildState states[] = {Prepend(u"a"_s, large.first(200'000)), Prepend(u"b"_s, large.first(200'000))};
        const bool written = Write(u"a"_s, large) || Write(u"new"_s, large) || CopyFile(In(u"large"_s), In(u"a"_s));
        ::setrlimit(RLIMIT_FSIZE, &old);
        std::signal(SIGXFSZ, handler);
        QVERIFY(states[0] == RebuildState::DiskFull && states[1] == RebuildState::DiskFull);
        QVERIFY(!written);
        QVERIFY(Content(u"a"_s) == content && Content(u"b"_s) == content);
        QCOMPARE(Listed(), (QStringList{u"a"_s, u"b"_s, u"c"_s, u"large"_s}));
    }

    void FolderThatTakesNoCopy()
    {
        const bool isRoot = ::geteuid() == 0;
        QVERIFY(Write(u"private"_s, "old") && SetMode("private", 0600));
        // It cannot be written, or others' files stay in it, which only root can make.
        for (const mode_t mode : isRoot ? std::vector<mode_t>{0555, 01777} : std::vector<mode_t>{0555}) {
            QVERIFY(Write(u"a"_s, "old") && SetMode("a", 0666));
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
    }

    void NamesThatDifferInCase()
    {
        QVERIFY(Write(u"same"_s, "x") && Write(u"SAME"_s, "x") && Write(u"sAME"_s, "x"));
        QCOMPARE(Listed(), (QStringList{u"SAME"_s, u"sAME"_s, u"same"_s}));
        QVERIFY(!RenameFile(In(u"same"_s), In(u"SAME"_s)));
        QVERIFY(LinkFile(u"same"_s, u"hard"_s));
        QVERIFY(!RenameFile(In(u"hard"_s), In(u"same"_s)) && Listed().contains(u"hard"_s));
        QVERIFY(LinkFile(u"same"_s, u"Same"_s) && !RenameFile(In(u"same"_s), In(u"Same"_s)));
        QCOMPARE(Listed().size(), 5);
    }

    void FileSystemsThatCanLess()
    {
        const auto restored = qScopeGuard([] { knowsNoReplace = knowsLinks = knowsCase = true; });
        QVERIFY(Write(u"a"_s, "a") && Write(u"b"_s, "b") && EnsureFolder(In(u"sub"_s)));
        knowsNoReplace = false;
        for (const bool links : {true, false}) {
            knowsLinks = links;
            QVERIFY(!RenameFile(In(u"a"_s), In(u"b"_s)) && !RenameFile(In(u"a"_s), In(u"gone\\a"_s)));
            QVERIFY(RenameFile(In(u"a"_s), In(u"c"_s)) && RenameFile(In(u"c"_s), In(u"a"_s)));
            QVERIFY(!RenameFile(In(u"sub"_s), In(u"bus"_s)));
            QCOMPARE(Listed(), (QStringList{u"a"_s, u"b"_s, u"sub"_s}));
            QCOMPARE(Content(u"a"_s) + Content(u"b"_s), QByteArray("ab"));
        }
        knowsNoReplace = true;
        knowsCase = false;
        QVERIFY(RenameFile(In(u"b"_s), In(u"B"_s)) && !RenameFile(In(u"a"_s), In(u"B"_s)));
        QCOMPARE(Listed(), (QStringList{u"a"_s, u"b"_s, u"sub"_s}));
    }

    void PreviewsGoToAnotherProgram()
    {
        const QString entries =
            FromHostPath(QStandardPaths::writableLocation(QStandardPaths::ApplicationsLocation)) + u'\\';
        const auto enter = [&](const QString &file, const QByteArray &content) {
            return EnsureFolder(entries + u"my") && WriteWholeFile(entries + file, content);
        };
        const QString list = In(u"a list.m3u"_s);
        const QString player = In(u"my \"player"_s);
        QVERIFY(Write(u"a list.m3u"_s, "x") && WriteWholeFile(player, "#!/bin/sh\nprintf '%s|' \"$@\" > \"$0.got\"\n"));
        QVERIFY(SetMode("my \"player", 0755));
        const QByteArray type = QMimeDatabase().mimeTypeForFile(ToHostPath(list)).name().toUtf8();
        if (type.isEmpty())
            QSKIP("The system knows no types of files");
        const Shell shell = DesktopShell();
        QVERIFY(!shell.OpenElsewhere(list) && shell.AssociatedProgram(list).isEmpty());
        // The default program is this one, further ones are gone or need a terminal.
        const QByteArray own = QCoreApplication::applicationFilePath().toUtf8();
        const std::pair<QString, QByteArray> files[] = {
            {u"own.desktop"_s, "[Desktop Entry]\nExec=" + own + " %f\n"},
            {u"gone.desktop"_s, "[Desktop Entry]\nTryExec=sh\nExec=/gone %f\n[Desktop Action New]\nExec=sh"},
            {u"text.desktop"_s, "[Desktop Entry]\nExec=sh -c true\nTerminal=true\n"},
            {u"mimeapps.list"_s, "[Default Applications]\n" + type + "=none.desktop;own.desktop;\n"},
            {u"mimeinfo.cache"_s, "[MIME Cache]\n" + type + "=gone.desktop;text.desktop;my-player.desktop;\n"},
        };
        for (const auto &[name, content] : files)
            QVERIFY(enter(name, content));
        QCOMPARE(shell.AssociatedProgram(list), FromHostPath(QString::fromUtf8(own)));
        QVERIFY(!shell.OpenElsewhere(list));
        const QByteArray path = directory->path().toUtf8();
        const QByteArray address = ToUrl(list).toEncoded();
        const std::pair<QByteArray, QByteArray> cases[] = {
            {" \"-n a\" %c --file=%f", "-n a|--file=" + path + "/a list.m3u|"},
            {" %U  %k", address + '|'},
            {" -q", "-q|" + path + "/a list.m3u|"},
        };
        for (const auto &[arguments, got] : cases) {
            const QByteArray exec = '"' + path + R"(/my \\"player")" + arguments;
            QVERIFY(enter(u"my\\player.desktop"_s, "[Desktop Entry]\nName=My\nExec = " + exec + '\n'));
            QVERIFY(shell.OpenElsewhere(list));
            QTRY_COMPARE(Content(u"my \"player.got"_s), got);
            QVERIFY(DeleteFile(player + u".got"));
        }
        QVERIFY(enter(u"mimeapps.list"_s, ""));
        QVERIFY(enter(u"mimeinfo.cache"_s, "[MIME Cache]\n" + type + "=my-player.desktop;\n"));
        QCOMPARE(shell.AssociatedProgram(list), player);
    }

    void FolderIsOnesAlone()
    {
        const int other = ::open(directory->path().toLocal8Bit().constData(), O_RDONLY | O_CLOEXEC);
        const auto isFree = [other] { return ::flock(other, LOCK_EX | LOCK_NB) == 0; };
        {
            auto first = std::make_unique<FolderLock>(In({}));
            QVERIFY(!isFree());
            // It goes while it is waited for.
            beforeHold = [&] { beforeHold = [&] { first.reset(); }; };
            const FolderLock second(In({}));
            QVERIFY(!first && !isFree());
        }
        QVERIFY(isFree());
        ::close(other);
    }

    /// A process of the program that stands still holds the others up for a second at most.
    void SettingsAreStoredDespiteALock()
    {
        qputenv("XDG_CONFIG_HOME", directory->path().toLocal8Bit());
        const SettingsStore store = HeadlessHost(u"locked"_s).Settings;
        store.Write(u"A"_s, u"b"_s, u"2"_s);
        const int held = ::open(directory->path().toLocal8Bit().constData(), O_RDONLY | O_CLOEXEC);
        QVERIFY(::flock(held, LOCK_EX | LOCK_NB) == 0 && store.Flush());
        ::close(held);
        QCOMPARE(HeadlessHost(u"locked"_s).Settings.Read(u"A"_s, u"b"_s), u"2"_s);
        // What is stored in one moment is read as it was stored last.
        for (int i = 3; i < 9; ++i) {
            store.Write(u"A"_s, u"b"_s, QString::number(i));
            QVERIFY(store.Flush());
            QCOMPARE(store.Read(u"A"_s, u"b"_s), QString::number(i));
        }
    }
};

static const RegisterTest<LinuxFilesTest> registered;

#include "LinuxFilesTest.moc"
