#include "faults/Faults.h"
#include "faults/Scenarios.h"
#include "text/FormerFile.h"

#include <QDataStream>
#include <QDirIterator>
#include <QRegularExpression>
#include <QSet>

#include <algorithm>
#include <array>
#include <filesystem>
#include <span>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <sys/xattr.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace
{
/// The files below the test's folder by their names there, with their contents, and its folders, which end with "/".
using Disk = QMap<QString, QByteArray>;

struct Mode {
    const char *Name;
    Fault Kind;
    /// Where the calls are met: the songs may lie on a disk of their own.
    const char *Folder = "";
    bool IsPlain = false;

    bool IsAtEachCall() const { return Kind != Fault::None && Kind != Fault::Held && Kind != Fault::Sealed; }
};
constexpr std::array<Mode, 15> Modes{{{"error", Fault::Error},
                                      {"half", Fault::Half},
                                      {"full", Fault::Full},
                                      {"read-only", Fault::ReadOnly},
                                      {"gone", Fault::Gone},
                                      {"killed", Fault::Kill},
                                      {"killed half-way", Fault::KillHalf},
                                      {"held", Fault::Held},
                                      {"songs full", Fault::Full, "/3"},
                                      {"songs read-only", Fault::ReadOnly, "/3"},
                                      {"songs gone", Fault::Gone, "/3"},
                                      {"plain", Fault::None, "", true},
                                      {"plain error", Fault::Error, "", true},
                                      {"plain killed", Fault::Kill, "", true},
                                      // The files are others afterwards.
                                      {"replaced", Fault::Meanwhile}}};

constexpr std::array<Mode, 4> DiskModes{
    {{"rights", Fault::Rights}, {"filled", Fault::Filled}, {"sealed", Fault::Sealed}, {"pulled", Fault::Pulled}}};

/// The mount point and the device of a disk of the test's own, which its folder lies on; empty for none.
QByteArrayList OwnDisk()
{
    return qgetenv("FAULTS_DISK").split(' ');
}

/// The disk of the test in the course of one run.
class DiskState
{
public:
    DiskState(const Mode &mode, int at, const QString &folderOfTest) : kind(mode.Kind), folder(folderOfTest)
    {
        if (kind == Fault::Filled)
            Fill(at - 1);
        if (kind == Fault::Sealed &&
            ::mount(nullptr, OwnDisk()[0].constData(), nullptr, MS_REMOUNT | MS_RDONLY, nullptr) != 0)
            qFatal("cannot seal the disk");
        if (kind == Fault::Rights)
            Own(nobody);
        if (kind == Fault::Pulled)
            FlushDisk();
    }
    ~DiskState()
    {
        const QByteArrayList disk = OwnDisk();
        QFile::remove(filler);
        if (kind == Fault::Sealed)
            ::mount(nullptr, disk[0].constData(), nullptr, MS_REMOUNT, nullptr);
        if (kind == Fault::Rights)
            Own(0);
        if (kind != Fault::Pulled)
            return;
        const QString here = QDir::currentPath();
        QDir::setCurrent(u"/"_s);
        if (::umount(disk[0].constData()) != 0 ||
            ::mount(disk[1].constData(), disk[0].constData(), "ext4", 0, nullptr) != 0)
            qFatal("cannot mount the disk anew");
        QDir::setCurrent(here);
    }
    DiskState(const DiskState &) = delete;
    DiskState &operator=(const DiskState &) = delete;

    /// In the process that the run has: an administrator needs no rights.
    static void BecomeNobody()
    {
        if (::setresgid(nobody, nobody, nobody) != 0 || ::setresuid(nobody, nobody, nobody) != 0)
            qFatal("cannot become another user");
    }

private:
    static constexpr unsigned nobody = 65534;

    static void FlushDisk()
    {
        const int folder = ::open(OwnDisk()[0].constData(), O_RDONLY | O_CLOEXEC);
        if (::syncfs(folder) != 0)
            qFatal("cannot flush the disk");
        ::close(folder);
    }

    void Fill(int freePages) const
    {
        constexpr off_t page = 4096;
        QFile file(filler);
        if (!file.open(QIODevice::WriteOnly))
            qFatal("cannot fill the disk");
        // What has been deleted is free when that is on the disk.
        FlushDisk();
        off_t size = 0;
        for (off_t more = off_t{1} << 30; more >= page; more /= 2) {
            while (::fallocate(file.handle(), 0, size, more) == 0)
                size += more;
        }
        if (::ftruncate(file.handle(), size - freePages * page) != 0)
            qFatal("cannot fill the disk");
        FlushDisk();
    }

    void Own(unsigned user) const
    {
        QDirIterator all(folder, QDir::Files | QDir::Dirs | QDir::Hidden | QDir::NoDotAndDotDot,
                         QDirIterator::Subdirectories);
        for (QString path = folder; !path.isEmpty(); path = all.hasNext() ? all.next() : QString()) {
            const QByteArray name = QFile::encodeName(path);
            if (::chown(name.constData(), user, user) != 0 ||
                (QFileInfo(path).isDir() && ::chmod(name.constData(), 0755) != 0))
                qFatal("cannot give the folder away");
        }
    }

    Fault kind;
    QString folder;
    const QString filler = folder + u".filler";
};

/// What a run has left behind, in memory; without anything when it was killed.
struct Outcome {
    bool Ended = false;
    QString Told;
    QString Memory;
    QByteArray Calls;
    /// After each step.
    QList<Disk> Steps;
};

QDataStream &operator<<(QDataStream &stream, const Outcome &outcome)
{
    return stream << outcome.Ended << outcome.Told << outcome.Memory << outcome.Calls << outcome.Steps;
}

QDataStream &operator>>(QDataStream &stream, Outcome &outcome)
{
    return stream >> outcome.Ended >> outcome.Told >> outcome.Memory >> outcome.Calls >> outcome.Steps;
}

/// Runs something in a process of its own and returns what it tells.
template <typename Work>
QByteArray InChild(Work work)
{
    int told[2] = {};
    if (::pipe(told) != 0)
        qFatal("no pipe");
    const pid_t child = ::fork();
    if (child == 0) {
        QByteArray bytes;
        if constexpr (std::is_void_v<decltype(work())>)
            work();
        else
            bytes = work();
        QFile out;
        const bool done = out.open(told[1], QIODevice::WriteOnly) && out.write(bytes) == bytes.size();
        out.close();
        ::_exit(done ? 0 : 1);
    }
    ::close(told[1]);
    QFile in;
    in.open(told[0], QIODevice::ReadOnly, QFileDevice::AutoCloseHandle);
    const QByteArray bytes = in.readAll();
    ::waitpid(child, nullptr, 0);
    return bytes;
}

/// A scenario, which is run again and again in processes of their own.
class Rehearsal
{
public:
    explicit Rehearsal(const Scenario &wanted) : scenario(wanted)
    {
        scenario.Prepare(stage);
        before = Look();
        for (auto file = before.begin(); file != before.end(); ++file) {
            if (IsOfUser(file.key()))
                MakeOwn(file.key());
            times[file.key()] = std::filesystem::last_write_time(PathOf(file.key()));
        }
        hasLink = before.contains(u"3/b.mp3"_s) && std::filesystem::equivalent(Linked("a"), Linked("b"));
        clean = Run({"", Fault::None}, 0);
        afterwards = Look();
    }

    /// What a mode can meet.
    QByteArray Calls(const Mode &mode)
    {
        if (!mode.IsAtEachCall())
            return "c";
        Restore();
        return Run({"", Fault::None, mode.Folder, mode.IsPlain}, 0).Calls;
    }
    /// Whether the scenario does anything.
    bool IsSound() const { return clean.Ended && !clean.Calls.isEmpty(); }
    /// Whether the last run has met nothing.
    bool WentWell() const { return wentWell; }

    /// What is wrong after a fault at one call; empty for nothing.
    QStringList Try(const Mode &mode, int at)
    {
        Restore();
        isTheirs = mode.Kind == Fault::Meanwhile;
        isPassing = mode.Kind == Fault::Error || mode.Kind == Fault::Half;
        Outcome outcome;
        {
            const DiskState disk(mode, at, stage.F.Temporary.path());
            const auto held = mode.Kind == Fault::Held ? HoldAll() : HeldFiles();
            outcome = Run(mode, at);
        }
        wentWell = outcome.Ended && outcome.Told == clean.Told;
        QStringList faults;
        const bool isKilled = mode.Kind == Fault::Kill || mode.Kind == Fault::KillHalf;
        if (outcome.Ended == isKilled)
            faults.append(isKilled ? u"the program lives"_s : u"the program ended"_s);
        if (!mode.IsAtEachCall() && mode.Kind != Fault::Sealed && !wentWell)
            faults.append(u"does not go as ever: "_s + outcome.Told);
        if (mode.Kind == Fault::Meanwhile)
            CheckTheirs(faults);
        // The last seconds before the end of a disk are not on it.
        const bool isToldTruly = outcome.Ended && mode.Kind != Fault::Pulled;
        if (isToldTruly && mode.Kind != Fault::Meanwhile)
            CheckTold(mode, outcome, faults);
        if (isToldTruly)
            CheckClaims(outcome, faults);
        // What is put there in its place, or given away, has others.
        if (mode.Kind != Fault::Meanwhile && mode.Kind != Fault::Rights)
            CheckOwn(faults);
        const Disk disk = Look();
        const bool isClean = CheckDisk(disk, true, faults);
        if (outcome.Ended && isClean)
            return faults;
        InChild([this] { Start(); });
        // The note of a copy is not flushed, so a copy may stay on a disk that has ended.
        Disk left = Look();
        if (mode.Kind == Fault::Pulled)
            left.removeIf([](const Disk::iterator &file) { return file.key().contains(u".vantrel-"); });
        CheckDisk(left, false, faults);
        return faults;
    }

private:
    Disk Look() const
    {
        Disk disk;
        const QString root = stage.F.Temporary.path();
        QDirIterator all(root, QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                         QDirIterator::Subdirectories);
        while (all.hasNext()) {
            QFile file(all.next());
            const QString name = file.fileName().mid(root.size() + 1);
            if (all.fileInfo().isDir())
                disk[name + u'/'] = "";
            else if (file.open(QIODevice::ReadOnly))
                disk[name] = file.readAll();
        }
        return disk;
    }

    std::filesystem::path PathOf(const QString &name) const { return stage.F.Temporary.filePath(name).toStdString(); }

    /// Puts the files back as they were before.
    void Restore() const
    {
        const Disk disk = Look();
        for (auto file = disk.begin(); file != disk.end(); ++file) {
            if (!before.contains(file.key()))
                std::filesystem::remove_all(PathOf(file.key()));
        }
        for (auto file = before.begin(); file != before.end(); ++file) {
            if (!disk.contains(file.key()) || disk.value(file.key()) != *file)
                WriteAnew(stage.F.Temporary.filePath(file.key()), *file);
            if (IsOfUser(file.key()))
                MakeOwn(file.key());
            std::filesystem::last_write_time(PathOf(file.key()), times[file.key()]);
        }
        if (hasLink && !std::filesystem::equivalent(Linked("a"), Linked("b"))) {
            std::filesystem::remove(Linked("b"));
            std::filesystem::create_hard_link(Linked("a"), Linked("b"));
        }
    }

    /// Gives a file rights and an extended attribute that no new one has.
    void MakeOwn(const QString &name) const
    {
        std::filesystem::permissions(PathOf(name), std::filesystem::perms(0640));
        ::setxattr(PathOf(name).c_str(), "user.mark", "own", 3, 0);
    }
    void CheckOwn(QStringList &faults) const
    {
        const Disk disk = Look();
        for (auto file = before.begin(); file != before.end(); ++file) {
            if (!IsOfUser(file.key()) || !disk.contains(file.key()))
                continue;
            const std::string path = PathOf(file.key());
            std::array<char, 8> mark{};
            const bool isMarked =
                ::getxattr(path.c_str(), "user.mark", mark.data(), mark.size()) == 3 || errno == ENOTSUP;
            if (std::filesystem::status(path).permissions() != std::filesystem::perms(0640) || !isMarked)
                faults.append(u"has other rights: "_s + file.key());
        }
    }

    /// One of the two names of a file.
    std::filesystem::path Linked(const char *name) const
    {
        return stage.F.Temporary.filePath(u"3/%1.mp3"_s.arg(QLatin1StringView(name))).toStdString();
    }

    static void WriteAnew(const QString &path, const QByteArray &content)
    {
        QDir().mkpath(QFileInfo(path).path());
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
            qFatal("cannot restore a file");
    }

    Outcome Run(const Mode &mode, int at)
    {
        Outcome outcome;
        const QByteArray told = InChild([&] {
            Outcome ended;
            if (mode.Kind == Fault::Rights)
                DiskState::BecomeNobody();
            ArmFaults(QFile::encodeName(stage.F.Temporary.path()).toStdString() + mode.Folder,
                      {mode.Kind, static_cast<std::size_t>(at), mode.IsPlain, [this] { PutTheirs(); }});
            for (const auto step : scenario.Steps) {
                step(stage);
                if (mode.Kind == Fault::None)
                    ended.Steps.append(Look());
            }
            ended.Calls = QByteArray::fromStdString(DisarmFaults());
            ended.Steps.append(Look());
            ended.Ended = true;
            ended.Told = stage.Told();
            ended.Memory = stage.Memory();
            // What could not be done once can be done by the end of the program.
            if (mode.Kind == Fault::Error || mode.Kind == Fault::Half)
                stage.F.Window.reset();
            QByteArray bytes;
            QDataStream stream(&bytes, QIODevice::WriteOnly);
            stream << ended;
            return bytes;
        });
        QDataStream stream(told);
        stream >> outcome;
        return outcome;
    }

    using HeldFiles = std::vector<std::unique_ptr<QFile>>;
    /// Another program has all of the user's files open and locked.
    HeldFiles HoldAll() const
    {
        HeldFiles held;
        for (const QString &name : before.keys()) {
            if (!IsOfUser(name))
                continue;
            held.push_back(std::make_unique<QFile>(stage.F.Temporary.filePath(name)));
            struct flock whole {
            };
            whole.l_type = F_WRLCK;
            if (!held.back()->open(QIODevice::ReadWrite) || ::fcntl(held.back()->handle(), F_SETLK, &whole) != 0)
                qFatal("cannot hold a file");
            // A file with two names is locked once.
            ::flock(held.back()->handle(), LOCK_EX | LOCK_NB);
        }
        return held;
    }

    /// The next start of the program.
    void Start()
    {
        stage.F.Restart();
        stage.F.Window->RestoreSession({});
        stage.F.Window.reset();
    }

    /// Another program puts files of its own where the user's were before.
    void PutTheirs() const
    {
        for (auto file = before.begin(); file != before.end(); ++file) {
            const QString path = stage.F.Temporary.filePath(file.key());
            if (IsOfUser(file.key()) && QFile::exists(QFileInfo(path).path())) {
                const QString copy = path + u".theirs"_s;
                WriteAnew(copy, TheirsOf(file));
                std::filesystem::rename(copy.toStdString(), path.toStdString());
            }
        }
    }

    /// As long as the user's, so that reports tell the same.
    static QByteArray TheirsOf(Disk::const_iterator file)
    {
        const QByteArray mark = "theirs " + file.key().toUtf8();
        return QByteArray(*file).replace(file->size() * 3 / 4, mark.size(), mark);
    }

    static bool IsOfUser(const QString &name)
    {
        return !name.endsWith(u'/') &&
               !QStringList{u"config"_s, u"program"_s, u"app"_s}.contains(name.section(u'/', 0, 0));
    }

    void CheckTheirs(QStringList &faults)
    {
        const QByteArray all = Look().values().join();
        for (auto file = before.begin(); file != before.end(); ++file) {
            const bool isLost = IsOfUser(file.key()) && !all.contains(QByteArray("theirs " + file.key().toUtf8()));
            const QString name = file.key().section(u'/', -1);
            if (isLost && !QLatin1StringView(scenario.WrittenOver).contains(name) && ++unseen > scenario.Unseen)
                faults.append(u"theirs is lost: "_s + file.key());
        }
    }

    void CheckTold(const Mode &mode, const Outcome &outcome, QStringList &faults) const
    {
        if (outcome.Told == clean.Told && Shown(outcome.Steps.last()) != Shown(afterwards))
            faults.append(u"says that all went well, and the disk is not so"_s);
        // What was read while the disk was gone is no longer so.
        const bool isRead = mode.Kind != Fault::Gone;
        if (isRead && outcome.Told == clean.Told && outcome.Memory != clean.Memory)
            faults.append(u"says that all went well, and the list is not so: "_s + outcome.Memory);
        if (isRead && outcome.Memory.contains(u"(not as on the disk)"))
            faults.append(u"the list is not as the disk: "_s + outcome.Memory);
        if (outcome.Memory.endsWith(u" saved") && !clean.Memory.isEmpty() &&
            Shown(outcome.Steps.last()) != Shown(afterwards) &&
            clean.Memory.section(u'\n', -1).startsWith(stage.F.Folder))
            faults.append(u"calls the list saved"_s);
    }

    /// What the user is told of files must be so.
    void CheckClaims(const Outcome &outcome, QStringList &faults) const
    {
        const QString &told = outcome.Told;
        const Disk &disk = outcome.Steps.last();
        const QRegularExpression::PatternOptions options = QRegularExpression::DotMatchesEverythingOption;
        for (const Claim &claim : scenario.Claims) {
            const auto match = QRegularExpression(QLatin1StringView(claim.Told), options).match(told);
            if (!match.hasMatch())
                continue;
            const bool isDifference = match.lastCapturedIndex() == 2;
            const int captured =
                isDifference ? match.captured(2).toInt() - match.captured(1).toInt() : match.captured(1).toInt();
            const int claimed = claim.Changed == Claim::AsTold ? captured : claim.Changed;
            int changed = 0;
            int theirs = 0;
            for (const QString &name : QString::fromLatin1(claim.Files).split(u',')) {
                const bool isTorn = !isPassing && QLatin1StringView(scenario.Torn).contains(name.section(u'/', -1));
                const auto was = before.constFind(name);
                const bool isAsBefore =
                    disk.contains(name) == (was != before.cend()) && disk.value(name) == before.value(name);
                const bool isTheirsNow = was != before.cend() && disk.value(name) == TheirsOf(was);
                theirs += isTorn || isTheirsNow ? 1 : 0;
                changed += isTorn || isTheirsNow || isAsBefore ? 0 : 1;
            }
            if (claimed < changed || claimed > changed + theirs)
                faults.append(
                    u"says \"%1\", and %2 files are changed: %3"_s.arg(match.captured()).arg(changed).arg(told));
        }
    }

    /// What the window tells of: settings that could not be stored are kept until it closes.
    Disk Shown(Disk disk) const
    {
        disk.removeIf([this](const Disk::iterator &file) {
            return IsTemporary(file.key(), *file, false) ||
                   (!clean.Memory.isEmpty() && file.key().startsWith(u"config/"));
        });
        return disk;
    }

    /// What may be left until the next start.
    bool IsTemporary(const QString &name, const QByteArray &content, bool nothingFails) const
    {
        const QString file = name.section(u'/', -1);
        // Notes that a start has found stay for the next one when it cannot follow them, and so do those of which none
        // stands when they cannot be deleted.
        if (nothingFails)
            return file.startsWith(u"way-back-") && (before.contains(name) || !content.startsWith('S'));
        if (file.isEmpty())
            return false;
        return (file.startsWith(u".vantrel-") && file.endsWith(u".tmp")) || file.startsWith(u"way-back-") ||
               QLatin1StringView(scenario.Passing).contains(file) ||
               (!isPassing && QLatin1StringView(scenario.Torn).contains(file));
    }

    /// False when something stands there that the next start must remove.
    bool CheckDisk(const Disk &disk, bool beforeStart, QStringList &faults) const
    {
        bool isClean = true;
        for (auto file = disk.begin(); file != disk.end(); ++file) {
            if (MayStand(file.key(), *file))
                continue;
            const bool isLeft = beforeStart && IsTemporary(file.key(), *file, isPassing);
            isClean = isClean && !isLeft;
            if (!isLeft)
                faults.append((Names().contains(file.key()) ? u"neither old nor new: "_s : u"stray: "_s) + file.key());
        }
        for (auto file = before.begin(); file != before.end(); ++file) {
            const auto holds = [&](const Disk &other) { return other.values().contains(*file); };
            if (!disk.contains(file.key()) && !IsAbsentSomewhere(file.key()))
                faults.append(u"gone: "_s + file.key());
            if (isClean && !isTheirs && std::all_of(clean.Steps.begin(), clean.Steps.end(), holds) && !holds(disk))
                faults.append(u"lost: "_s + file.key());
        }
        return isClean;
    }

    QList<Disk> AllowedDisks() const { return QList<Disk>{before} + clean.Steps; }
    QSet<QString> Names() const
    {
        QSet<QString> names;
        for (const Disk &disk : AllowedDisks()) {
            for (auto file = disk.begin(); file != disk.end(); ++file)
                names.insert(file.key());
        }
        return names;
    }
    bool MayStand(const QString &name, const QByteArray &content) const
    {
        const QList<Disk> disks = AllowedDisks();
        if (content.contains("theirs "))
            return Names().contains(name);
        return std::any_of(disks.begin(), disks.end(),
                           [&](const Disk &disk) { return disk.contains(name) && disk.value(name) == content; });
    }
    bool IsAbsentSomewhere(const QString &name) const
    {
        const QList<Disk> disks = AllowedDisks();
        return std::any_of(disks.begin(), disks.end(), [&](const Disk &disk) { return !disk.contains(name); });
    }

    const Scenario &scenario;
    Stage stage;
    Disk before;
    QHash<QString, std::filesystem::file_time_type> times;
    Disk afterwards;
    Outcome clean;
    /// The fault meets one call, and nothing is wrong after it.
    bool isPassing = false;
    bool isTheirs = false;
    bool hasLink = false;
    bool wentWell = false;
    int unseen = 0;
};
} // namespace

class FaultsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void EveryCall_data()
    {
        QTest::addColumn<int>("scenario");
        for (std::size_t i = 0; i < Scenarios().size(); ++i)
            QTest::newRow(Scenarios()[i].Name) << static_cast<int>(i);
    }
    void EveryCall()
    {
        QFETCH(int, scenario);
        Rehearsal rehearsal(Scenarios()[static_cast<std::size_t>(scenario)]);
        QVERIFY(rehearsal.IsSound());
        // Every call takes minutes, so it has a command of its own: run.
        const int every = std::max(qEnvironmentVariableIntValue("FAULTS_EVERY"), 1);
        const int step = qEnvironmentVariableIsSet("FAULTS_EVERY") ? every : 13;
        int found = 0;
        QString table = u"| %1 |"_s.arg(QLatin1StringView(QTest::currentDataTag()));
        const bool hasDisk = OwnDisk().size() == 2;
        const auto modes = hasDisk ? std::span<const Mode>(DiskModes) : std::span<const Mode>(Modes);
        for (std::size_t number = 0; number < modes.size(); ++number) {
            const Mode &mode = modes[number];
            const QByteArray calls = rehearsal.Calls(mode);
            const bool writesOnly = mode.Kind == Fault::Half || mode.Kind == Fault::KillHalf;
            const int first = mode.IsAtEachCall() ? 1 + 7 * static_cast<int>(number) % step : 1;
            // A disk has more room with each run, until there is enough.
            const bool isFilled = mode.Kind == Fault::Filled;
            int runs = 0;
            int enough = 0;
            for (int at = first; isFilled ? enough < 3 || at <= 12 : at <= calls.size(); at += step) {
                if (writesOnly && calls[at - 1] != 'w')
                    continue;
                ++runs;
                for (const QString &fault : rehearsal.Try(mode, at)) {
                    ++found;
                    qWarning("%s, call %d of %lld: %s", mode.Name, at, calls.size(), qPrintable(fault));
                }
                enough = rehearsal.WentWell() ? enough + 1 : 0;
            }
            table += u" %1 |"_s.arg(runs);
        }
        qInfo("%s %d |", qPrintable(table), found);
        QCOMPARE(found, 0);
    }

    void TwoProgramsAtOnce()
    {
        Stage one;
        const auto change = [](Stage &stage, const QString &name) {
            stage.Target = stage.F.Inside(name + u".m3u");
            stage.TakeSong(name + u".mp3");
            stage.F.Trigger("MFileSaveAs");
            stage.F.Window->ShortcutClick(0);
        };
        one.TakeSong(u"a.mp3"_s);
        one.Leave();
        // Nobody else stores while the other one's session is kept.
        bool isAlone = false;
        const QByteArray folder = one.F.Temporary.filePath(u"app"_s).toUtf8();
        one.F.Adjust = [adjust = one.F.Adjust, folder, &isAlone](Host &host) {
            adjust(host);
            host.Clock.Now = [now = host.Clock.Now, folder, &isAlone] {
                const int file = ::open(folder.constData(), O_RDONLY | O_CLOEXEC);
                isAlone = ::flock(file, LOCK_EX | LOCK_NB) != 0;
                ::close(file);
                return now();
            };
        };
        one.F.Restart();
        one.F.Window->RestoreSession({});
        // What this process has begun the start of another one leaves alone.
        FormerFile former(one.F.Write(u"held"_s, "former"));
        QVERIFY(former.Note());
        one.F.Write(u"held"_s, "new");
        one.Target = one.F.Inside(u"shared.m3u"_s);
        one.F.Trigger("MFileSaveAs");
        const QByteArray told = InChild([&] {
            one.F.Restart();
            one.F.Window->RestoreSession({});
            const QString said = one.Said.join(u'|') + one.F.Rows();
            one.F.Trigger("MFileSaveAs");
            change(one, u"b"_s);
            one.F.Window->SetTipsAtStartup(true);
            one.Leave();
            return said.toUtf8();
        });
        QCOMPARE(told, "a");
        QCOMPARE(one.F.Read(u"held"_s), "new");
        former.Forget();
        // What the other one has saved is not replaced without a word.
        one.F.Trigger("MFileSave");
        QCOMPARE(one.Said, QStringList{one.F.Inside(u"shared.m3u exists, do you want to replace it? "_s) +
                                       u"Another program has changed it meanwhile."});
        change(one, u"c"_s);
        one.Leave();
        one.F.Restart();
        one.F.Window->RestoreSession({});
        QCOMPARE(one.F.Rows(), u"a c"_s);
        QVERIFY(isAlone && one.F.Window->TipsAtStartup());
        // The list of the other one is the first of the recent files, before those that both have saved.
        QStringList recent;
        for (int i = 0; i < 3; ++i)
            recent.append(one.F.Window->Command(QByteArray("MFileRecent("_ba + QByteArray::number(i) + ')'))
                              ->text()
                              .section(u'\\', -1));
        QCOMPARE(recent.join(u' '), u"session-20260102-030405.m3u b.m3u c.m3u"_s);
        one.F.Window->MFileRecent_Click(0);
        QCOMPARE(one.F.Rows(), u"a b"_s);
        one.F.ShellCalls.clear();
        one.F.Window->ShortcutClick(1);
        one.F.Window->ShortcutClick(2);
        QCOMPARE(one.F.ShellCalls.join(u' '),
                 QString(u"open "_s + one.F.Inside(u"c.m3u open "_s) + one.F.Inside(u"b.m3u"_s)));
    }
};

QTEST_MAIN(FaultsTest)
#include "FaultsTest.moc"
