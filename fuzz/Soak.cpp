#include "FuzzTarget.h"
#include "SoakForms.h"
#include "app/Tools.h"
#include "platform/Drives.h"
#include "platform/Files.h"
#include "session/GridView.h"
#include "session/Main.h"
#include "session/MenuTable.h"

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QDir>
#include <QDrag>
#include <QDropEvent>
#include <QElapsedTimer>
#include <QImage>
#include <QMimeData>
#include <QTest>

#include <cmath>
#include <cstdio>
#include <random>

using namespace Qt::StringLiterals;

namespace
{
/// Random commands, tools and answers through the window; the same seed is the same run.
class Soak
{
public:
    explicit Soak(unsigned seed) : draws(seed)
    {
        window = std::make_unique<Main>(MakeHost(), Tools());
        window->show();
        QByteArray lines;
        for (int i = 0; i < 9; ++i)
            lines += AnySong().toUtf8() + "\r\n";
        Require(WriteWholeFile(Inside(u"0.bm"_s), lines), "bookmarks are written");
        Require(QImage(8, 8, QImage::Format_RGB32).save(ToHostPath(Inside(u"0.bmp"_s))), "a picture is written");
    }

    /// Opens a list of so many rows and gives it so many commands.
    void RunList(int rows, int commands)
    {
        Tell(QByteArray::number(rows) + " rows");
        WriteSongs();
        WriteList(rows);
        window->PlaylistDirty = false;
        now = ListOf(*window);
        toOpen = Inside(u"0.m3u"_s);
        Command("MFileOpen");
        toOpen.clear();
        while (commands-- > 0)
            Step();
    }

    qint64 Commands = 0;

private:
    int Draw(int below) { return static_cast<int>(draws() % static_cast<unsigned>(below)); }
    template <typename List>
    auto AnyOf(const List &list)
    {
        return list[static_cast<typename List::size_type>(Draw(static_cast<int>(list.size())))];
    }
    static QString Inside(const QString &name) { return FuzzFolder() + u'\\' + name; }
    /// A file that may be there.
    QString AnySong()
    {
        const QStringList types{u"mp3"_s, u"mp3"_s, u"mp3"_s, u"wma"_s, u"ogg"_s, u"wav"_s};
        return Inside(u"%1\\song of %2.%3"_s.arg(Draw(5)).arg(Draw(8)).arg(AnyOf(types)));
    }
    QString AnyFolder() { return Draw(3) == 0 ? FuzzFolder() : Inside(QString::number(Draw(5))); }

    void WriteSong()
    {
        struct Kind {
            QByteArray Header;
            int FrameSize;
        };
        static const std::vector<Kind> kinds{{QByteArray("\xff\xfb\x90\x64", 4), 417},
                                             {QByteArray("\xff\xfb\xb0\xc4", 4), 626},
                                             {QByteArray("\xff\xfb\x94\x04", 4), 384}};
        const Kind kind = AnyOf(kinds);
        const QByteArray frame = kind.Header.leftJustified(kind.FrameSize, '\0');
        Require(WriteWholeFile(AnySong(), frame.repeated(1 + Draw(200))), "a song is written");
    }

    /// In place of those that tools have left, renamed or changed.
    void WriteSongs()
    {
        for (int i = 0; i < 5; ++i) {
            const QString folder = Inside(QString::number(i));
            Require(QDir(ToHostPath(folder)).removeRecursively() && EnsureFolder(folder), "a folder is made anew");
        }
        for (int i = 0; i < 60; ++i)
            WriteSong();
    }

    void WriteList(int rows)
    {
        QStringList entries;
        for (int i = 0; i < rows; ++i)
            entries += Draw(3) == 0 ? u"d:\\%1\\%2.mp3"_s.arg(Draw(30)).arg(Draw(9999)) : AnySong();
        const QString path = Inside(u"0.m3u"_s);
        Require(WriteWholeFile(path, entries.join("\r\n"_L1).toUtf8()), "a list is written");
        model.Playlists[path] = entries;
    }

    PromptAnswer Answer(const MessagePrompt &prompt)
    {
        const PromptAnswer answer = prompt.Buttons == PromptButtons::Ok ? PromptAnswer::Ok
                                    : Draw(4) != 0                      ? PromptAnswer::Yes
                                    : prompt.Buttons == PromptButtons::YesNoCancel && Draw(2) == 0
                                        ? PromptAnswer::Cancel
                                        : PromptAnswer::No;
        model.Answers.Given.push_back(answer);
        return answer;
    }

    /// A file of the kind that a prompt asks for.
    QString FileFor(const FilePrompt &prompt, int number)
    {
        const QString extension = prompt.Filter.section("(*."_L1, 1).section(u')', 0, 0);
        return extension == u'*' ? AnySong() : Inside(QString::number(number) + u'.' + extension);
    }

    QString FileToOpen(const FilePrompt &prompt)
    {
        return model.Answers.Opened = toOpen.isEmpty() ? FileFor(prompt, Draw(4)) : toOpen;
    }

    std::optional<QString> FileToSave(const FilePrompt &prompt)
    {
        if (Draw(4) == 0) {
            model.Answers.Given.push_back(PromptAnswer::Cancel);
            return std::nullopt;
        }
        return model.Answers.Saved = FileFor(prompt, 1 + Draw(3));
    }

    Host MakeHost()
    {
        Host host = HeadlessHost(u"soak"_s);
        host.Prompts.Message = [this](const MessagePrompt &prompt) { return Answer(prompt); };
        host.Prompts.OpenFile = [this](const FilePrompt &prompt) { return std::optional(FileToOpen(prompt)); };
        host.Prompts.SaveFile = [this](const FilePrompt &prompt) { return FileToSave(prompt); };
        host.Prompts.OpenFiles = [this](const FilePrompt &) { return QStringList{AnySong(), AnySong()}; };
        host.Prompts.Folder = [this](const FolderPrompt &) {
            return std::optional(model.Answers.Folder = AnyFolder());
        };
        host.Prompts.Line = [this](const LinePrompt &) { return std::optional(QString::number(Draw(9))); };
        host.Prompts.Colour = [this](const QColor &) { return std::optional(QColor::fromHsv(Draw(360), 99, 99)); };
        host.Settings.Read = [this](const QString &section, const QString &key) {
            return settings.value(section + u'/' + key);
        };
        host.Settings.Write = [this](const QString &section, const QString &key, const QString &value) {
            settings[section + u'/' + key] = value;
        };
        host.Clock.Now = [] { return QDateTime(QDate(2026, 1, 2), QTime(3, 4, 5)); };
        host.Clock.Random = [this] { return static_cast<double>(draws()) * 0x1p-32; };
        host.Clock.Reseed = [] {};
        host.Roots = [] { return QStringList{FuzzFolder() + u'\\'}; };
        host.ProgramFolder = host.ApplicationFolder = FuzzFolder();
        return host;
    }

    /// What is done is told before, so that the last line names what failed.
    void Tell(const QByteArray &what)
    {
        std::printf("%s\n", what.constData());
        std::fflush(stdout);
    }

    void Step()
    {
        const int kind = Draw(20);
        if (kind < 2)
            Press();
        else if (kind == 2)
            Drag();
        else if (kind == 3)
            DropFiles();
        else if (kind < 6)
            OpenTool(AnyOf(tools));
        else
            Command(kind < 17 ? AnyOf(changing) : AnyOf(all));
        if (Draw(6) == 0 && Command("MEditUndo") && Draw(3) != 0)
            Command("MEditRedo");
    }

    /// Only where the rows of each folder stand together does each get one playlist.
    void OpenTool(const QByteArray &name)
    {
        if (name == "MToolsM3UWiz")
            Command("MViewSortFolder");
        Command(name);
    }

    /// False for a command that stands disabled. Rows that are alike could be shuffled without a trace.
    bool Command(const QByteArray &name)
    {
        if (!window->Command(name)->isEnabled() || (name == "MEditSelShuffle" && HasTwins(now.Rows)))
            return false;
        Tell(name);
        ++Commands;
        model.Answers = {};
        window->Command(name)->trigger();
        QCoreApplication::processEvents();
        const SoakList before = TakeList();
        model.Follow(name, before, now);
        WorkForms();
        model.CheckWindow(*window, now);
        return true;
    }

    /// Takes the list as it is by now; returns what it was.
    SoakList TakeList() { return std::exchange(now, ListOf(*window)); }

    static bool HasTwins(const SoakRows &rows)
    {
        QSet<QString> paths;
        for (const SoakRow &row : rows) {
            if (row.Selected && paths.contains(row.Path))
                return true;
            if (row.Selected)
                paths.insert(row.Path);
        }
        return false;
    }

    QList<QDialog *> OpenForms() const
    {
        QList<QDialog *> open = window->findChildren<QDialog *>();
        open.removeIf([](const QDialog *form) { return !form->isVisible(); });
        return open;
    }

    /// Works about in what has opened, and closes it.
    void WorkForms()
    {
        for (int i = 0; i < 20 && !OpenForms().isEmpty(); ++i)
            WorkForm(*OpenForms().last());
        for (int i = 0; i < 50 && !OpenForms().isEmpty(); ++i)
            CloseForm(*OpenForms().last());
        Require(OpenForms().isEmpty(), "a form closes at Escape");
    }

    void WorkForm(QDialog &form)
    {
        QWidget *control = forms.Choose(form);
        if (control == nullptr)
            return;
        const QByteArray name = form.objectName().toUtf8();
        const QByteArray controlName = control->objectName().toUtf8();
        Tell("  " + name + ' ' + controlName);
        const int songs = name == "RenameForm" ? CountSongs(FuzzFolder()) : 0;
        forms.Work(form, *control);
        FollowForm(name, controlName);
        Require(songs == 0 || songs == CountSongs(FuzzFolder()), "a renaming loses no file");
    }

    void CloseForm(QDialog &form)
    {
        const QByteArray name = form.objectName().toUtf8();
        QTest::keyClick(&form, Qt::Key_Escape);
        QCoreApplication::processEvents();
        FollowForm(name, "Escape");
    }

    void FollowForm(const QByteArray &form, const QByteArray &control)
    {
        if (const QString answer = window->PanelText(4); !answer.isEmpty())
            Tell("    " + answer.toUtf8());
        const SoakList before = TakeList();
        SoakForms::Follow(form, control, before, now, *window, model.History);
    }

    /// Begins a selection with a key or a click alone, and goes on with keys and clicks.
    void Press()
    {
        const QList<Qt::KeyboardModifiers> modifiers{Qt::NoModifier, Qt::ShiftModifier, Qt::ControlModifier};
        SoakSelection selection(now.Rows);
        PressOne(selection, {Qt::Key_Home, Qt::Key_End}, Qt::NoModifier);
        for (int i = Draw(6); i > 0; --i)
            PressOne(
                selection,
                {Qt::Key_Down, Qt::Key_Up, Qt::Key_End, Qt::Key_Home, Qt::Key_Space, Qt::Key_PageDown, Qt::Key_PageUp},
                AnyOf(modifiers));
        model.CheckWindow(*window, now);
    }

    void PressOne(SoakSelection &selection, const QList<Qt::Key> &keys, Qt::KeyboardModifiers modifiers)
    {
        GridView &view = *window->View();
        const auto [place, row] = PlaceInList(false);
        if (row > 0 && Draw(3) == 0) {
            Tell("click " + QByteArray::number(row) + ' ' + QByteArray::number(modifiers.toInt()));
            QTest::mouseClick(view.viewport(), Qt::LeftButton, modifiers, place);
            selection.Click(row, modifiers);
        } else {
            const Qt::Key key = AnyOf(keys);
            Tell("key " + QByteArray::number(key, 16) + ' ' + QByteArray::number(modifiers.toInt(), 16));
            const int height = view.visualRect(view.indexAt({2, 0})).height();
            QTest::keyClick(&view, key, modifiers);
            selection.Press(key, modifiers, height == 0 ? 0 : static_cast<double>(view.viewport()->height()) / height);
        }
        SoakList expected = TakeList();
        expected.Rows = selection.Rows();
        RequireList(now, expected, "keys and clicks select as in every list");
    }

    /// A place in the upper or lower half of a row that can be seen, whose number comes with it; 0 below the last one.
    std::pair<QPoint, int> PlaceInList(bool lower)
    {
        const GridView &view = *window->View();
        const QPoint place(2, Draw(view.viewport()->height() - view.visualRect(view.indexAt({2, 0})).height()));
        const QModelIndex index = view.indexAt(place);
        if (!index.isValid())
            return {place, 0};
        const QRect rect = view.visualRect(index);
        return {{2, lower ? rect.bottom() - 1 : rect.top() + 1}, index.row() + 1};
    }

    /// Drags rows with the mouse from where they are seen to where others are, sometimes with Ctrl.
    void Drag()
    {
        const auto [start, pressed] = PlaceInList(true);
        if (pressed == 0)
            return;
        const bool lower = Draw(2) == 0;
        const bool again = Draw(2) == 0;
        const auto [target, under] = PlaceInList(lower);
        const int place = under == 0 ? window->ListView1.Count() + 1 : under + (lower ? 1 : 0);
        Tell("drag " + QByteArray::number(pressed) + " before " + QByteArray::number(place) + (again ? ", again" : ""));
        ++Commands;
        window->View()->CarryOut = [&, at = target](QDrag &drag) {
            Drop(*drag.mimeData(), at, again ? Qt::ControlModifier : Qt::NoModifier);
        };
        QWidget *list = window->View()->viewport();
        QTest::mousePress(list, Qt::LeftButton, {}, start);
        for (const int distance : {1, 2})
            QTest::mouseMove(list, start + distance * QPoint(QApplication::startDragDistance() + 1, 0));
        QTest::mouseRelease(list, Qt::LeftButton, {}, start);
        SoakList before = TakeList();
        PressRow(before.Rows, pressed);
        model.FollowDrag(place, again, before, now);
        model.CheckWindow(*window, now);
    }

    /// A press gives the focus; one on what is not selected selects it alone.
    static void PressRow(SoakRows &rows, int pressed)
    {
        const SoakRow *row = &rows[static_cast<std::size_t>(pressed - 1)];
        const bool selects = !row->Selected;
        for (SoakRow &each : rows) {
            each.Focused = &each == row;
            each.Selected = selects ? &each == row : each.Selected;
        }
    }

    /// Files, folders and addresses from outside.
    void DropFiles()
    {
        Tell("drop");
        ++Commands;
        QMimeData files;
        files.setUrls({ToUrl(AnySong()), ToUrl(AnyFolder()), QUrl(u"http://radio.example/"_s)});
        Drop(files, {5, 5}, Qt::NoModifier);
        const SoakList before = TakeList();
        model.Follow("MEditPaste", before, now);
        model.CheckWindow(*window, now);
    }

    void Drop(const QMimeData &content, QPoint place, Qt::KeyboardModifiers modifiers)
    {
        QDragEnterEvent enter(place, Qt::CopyAction, &content, Qt::LeftButton, modifiers);
        QDragMoveEvent move(place, Qt::CopyAction, &content, Qt::LeftButton, modifiers);
        QDropEvent drop(place, Qt::CopyAction, &content, Qt::LeftButton, modifiers);
        for (QEvent *event :
             {static_cast<QEvent *>(&enter), static_cast<QEvent *>(&move), static_cast<QEvent *>(&drop)})
            QCoreApplication::sendEvent(window->View()->viewport(), event);
    }

    /// The commands of the menus, each element of an array for itself; one of them ends the run.
    static std::vector<QByteArray> AllCommands()
    {
        std::vector<QByteArray> names;
        for (const MenuEntry &entry : MenuTable()) {
            if (!entry.Tip.isEmpty() && entry.Captions.empty() && QByteArrayView(entry.Name) != "MFileExit")
                names.emplace_back(entry.Name);
            for (std::size_t i = 0; i < entry.Captions.size(); ++i)
                names.push_back(QByteArray(entry.Name) + '(' + QByteArray::number(i) + ')');
        }
        return names;
    }

    const std::vector<QByteArray> changing = SoakModel::Commands();
    const std::vector<QByteArray> all = AllCommands();
    const std::vector<QByteArray> tools{"MEditId3",     "MToolsRename",   "MToolsFilter", "MToolsReport",
                                        "MToolsM3UWiz", "MToolsMP3CDWiz", "MToolsSearch", "MToolsDrives"};
    std::mt19937 draws;
    QMap<QString, QString> settings{{u"Options/Show Tips at Startup"_s, u"0"_s}};
    SoakModel model;
    SoakForms forms{[this](int below) { return Draw(below); }};
    std::unique_ptr<Main> window;
    /// What the next prompt for a file to open is answered with; empty for any.
    QString toOpen;
    SoakList now;
};

/// Every tenth list is as long as may be, and every tenth one hardly any; of the others as many are short as long.
int RowsOf(int list, int most, std::mt19937 &draws)
{
    const double size = std::pow(most + 1.0, static_cast<double>(draws()) * 0x1p-32) - 1;
    return list % 10 == 4 ? most : list % 10 == 9 ? list / 10 % 3 : static_cast<int>(size);
}

/// So that lists of all lengths take about as long.
int CommandsOf(int rows, int most)
{
    constexpr int longList = 1000;
    return rows <= longList ? most : std::max(most * longList / rows, 20);
}
} // namespace

/// soak SEED LISTS ROWS COMMANDS [SECONDS]: so many lists of 0 to so many rows, with so many commands each, fewer for
/// long ones; with a time it goes on with further lists until that is over.
int main(int count, char **arguments)
{
    QApplication application(count, arguments);
    const QStringList given = QCoreApplication::arguments();
    Require(given.size() >= 5, "the arguments are SEED LISTS ROWS COMMANDS [SECONDS]");
    const qint64 time = given.value(5).toLongLong() * 1000;
    std::printf("seed %s\n", qPrintable(given[1]));
    const unsigned seed = given[1].toUInt();
    Soak soak(seed);
    std::mt19937 draws(seed);
    QElapsedTimer clock;
    clock.start();
    int lists = 0;
    for (; lists < given[2].toInt() || clock.elapsed() < time; ++lists) {
        const int rows = RowsOf(lists, given[3].toInt(), draws);
        soak.RunList(rows, CommandsOf(rows, given[4].toInt()));
    }
    std::printf("%d lists, %lld commands, seed %u\n", lists, soak.Commands, seed);
    return 0;
}
