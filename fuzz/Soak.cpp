#include "FuzzTarget.h"
#include "SoakModel.h"
#include "app/Tools.h"
#include "platform/Drives.h"
#include "platform/Files.h"
#include "session/GridView.h"
#include "session/Main.h"
#include "session/MenuTable.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QDrag>
#include <QDropEvent>
#include <QElapsedTimer>
#include <QLineEdit>
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
        for (int i = 0; i < 40; ++i)
            WriteSong();
        window = std::make_unique<Main>(MakeHost(), Tools());
        window->show();
    }

    /// Opens a list of so many rows and gives it so many commands.
    void RunList(int rows, int commands)
    {
        Tell(QByteArray::number(rows) + " rows");
        QByteArray lines;
        for (int i = 0; i < rows; ++i)
            lines += (Draw(3) == 0 ? u"d:\\%1\\%2.mp3"_s.arg(Draw(30)).arg(Draw(9999)) : AnySong()).toUtf8() + "\r\n";
        Require(WriteWholeFile(Inside(u"0.m3u"_s), lines), "a list is written");
        window->PlaylistDirty = false;
        Trigger("MFileOpen");
        Require(window->ListView1.Count() == rows, "every line is a row");
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
        const QStringList types{u"mp3"_s, u"wma"_s, u"ogg"_s, u"wav"_s};
        return Inside(u"%1\\%2.%3"_s.arg(Draw(5)).arg(Draw(20)).arg(AnyOf(types)));
    }

    void WriteSong()
    {
        const QString path = AnySong();
        EnsureFolder(path.section(u'\\', 0, -2));
        const QByteArray frame = QByteArray("\xff\xfb\x90\x64", 4) + QByteArray(413, '\0');
        Require(WriteWholeFile(path, frame.repeated(1 + Draw(200))), "a song is written");
    }

    Host MakeHost()
    {
        Host host = HeadlessHost(u"soak"_s);
        host.Prompts.Message = [this](const MessagePrompt &prompt) {
            const PromptAnswer refusal = prompt.Buttons == PromptButtons::Ok ? PromptAnswer::Ok : PromptAnswer::No;
            return Draw(4) == 0 || refusal == PromptAnswer::Ok ? refusal : PromptAnswer::Yes;
        };
        host.Prompts.OpenFile = [](const FilePrompt &) { return std::optional(Inside(u"0.m3u"_s)); };
        host.Prompts.SaveFile = [this](const FilePrompt &) {
            return Draw(4) == 0 ? std::nullopt : std::optional(Inside(u"%1.m3u"_s.arg(1 + Draw(3))));
        };
        host.Prompts.OpenFiles = [this](const FilePrompt &) { return QStringList{AnySong(), AnySong()}; };
        host.Prompts.Folder = [this](const FolderPrompt &) { return std::optional(Inside(QString::number(Draw(5)))); };
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

    void Trigger(const QByteArray &name)
    {
        Tell(name);
        ++Commands;
        window->Command(name)->trigger();
        QCoreApplication::processEvents();
    }

    void Step()
    {
        SoakRows before = RowsOf(window->ListView1);
        const bool dirty = window->PlaylistDirty;
        const int kind = Draw(20);
        if (kind < 2)
            Press();
        else if (kind == 2)
            Drag(before);
        else if (kind == 3)
            DropFiles(before);
        else if (!Command(kind < 17 ? AnyOf(modelled) : AnyOf(others), before))
            return;
        CheckWindow(*window);
        const SoakRows after = RowsOf(window->ListView1);
        if (kind >= 2 && Draw(3) == 0 && window->Command("MEditUndo")->isEnabled() && isStep && after != before) {
            Trigger("MEditUndo");
            Require(RowsOf(window->ListView1) == before && window->PlaylistDirty == dirty, "undo goes back");
            CheckWindow(*window);
            Trigger("MEditRedo");
            Require(RowsOf(window->ListView1) == after, "redo goes forth");
            CheckWindow(*window);
        }
    }

    /// False for a command that stands disabled.
    bool Command(const QByteArray &name, const SoakRows &before)
    {
        if (!window->Command(name)->isEnabled())
            return false;
        const qsizetype forms = OpenForms().size();
        Trigger(name);
        // What changes the selection alone is no step, nor is what several commands did.
        isStep = name != "MEditUndo" && name != "MEditRedo" && OpenForms().size() == forms &&
                 PathsAndIcons(before) != PathsAndIcons(RowsOf(window->ListView1));
        CheckCommand(name, before, RowsOf(window->ListView1));
        WorkForms();
        return true;
    }

    static SoakRows PathsAndIcons(SoakRows rows)
    {
        for (SoakRow &row : rows)
            row.Selected = false;
        return rows;
    }

    QList<QDialog *> OpenForms() const
    {
        QList<QDialog *> forms = window->findChildren<QDialog *>();
        forms.removeIf([](const QDialog *form) { return !form->isVisible(); });
        return forms;
    }

    /// Clicks about in what has opened, and closes it.
    void WorkForms()
    {
        for (int i = 0; i < 6 && !OpenForms().isEmpty(); ++i)
            Work(*OpenForms().last());
        for (int i = 0; i < 50 && !OpenForms().isEmpty(); ++i) {
            QTest::keyClick(OpenForms().last(), Qt::Key_Escape);
            QCoreApplication::processEvents();
        }
        Require(OpenForms().isEmpty(), "a form closes at Escape");
    }

    void Work(QDialog &form)
    {
        QList<QWidget *> controls = form.findChildren<QWidget *>();
        controls.removeIf([](const QWidget *control) {
            return !control->isVisible() || !control->isEnabled() || control->objectName().startsWith("qt_"_L1);
        });
        if (controls.isEmpty())
            return;
        QWidget *control = AnyOf(controls);
        Tell("  " + form.objectName().toUtf8() + ' ' + control->objectName().toUtf8());
        if (qobject_cast<QLineEdit *>(control) != nullptr)
            QTest::keyClicks(control, QString::number(Draw(300)));
        else if (auto *list = qobject_cast<QAbstractItemView *>(control))
            QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, QPoint(20, 8 + Draw(60)));
        else if (qobject_cast<QAbstractButton *>(control) != nullptr)
            QTest::mouseClick(control, Qt::LeftButton, {}, QPoint(8, control->height() / 2));
        else
            QTest::keyClick(control, Qt::Key_Down);
        QCoreApplication::processEvents();
    }

    void Press()
    {
        const QList<Qt::Key> keys{Qt::Key_Down,  Qt::Key_Up,       Qt::Key_End,   Qt::Key_Home,
                                  Qt::Key_Space, Qt::Key_PageDown, Qt::Key_PageUp};
        const QList<Qt::KeyboardModifiers> modifiers{Qt::NoModifier, Qt::ShiftModifier, Qt::ControlModifier};
        QTest::keyClick(window->View(), AnyOf(keys), AnyOf(modifiers));
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

    /// Drags rows with the mouse from where they are seen to where others are, sometimes with Ctrl; before has then the
    /// selection that the press makes.
    void Drag(SoakRows &before)
    {
        const auto [start, pressed] = PlaceInList(true);
        if (pressed == 0)
            return;
        // A press on what is not selected selects it alone.
        SoakRow &row = before[static_cast<std::size_t>(pressed - 1)];
        if (!row.Selected) {
            for (SoakRow &each : before)
                each.Selected = &each == &row;
        }
        const bool lower = Draw(2) == 0;
        const bool again = Draw(2) == 0;
        const auto [target, under] = PlaceInList(lower);
        const int place = under == 0 ? window->ListView1.Count() + 1 : under + (lower ? 1 : 0);
        Tell("drag before " + QByteArray::number(place) + (again ? ", again" : ""));
        ++Commands;
        window->View()->CarryOut = [&, at = target](QDrag &drag) {
            Drop(*drag.mimeData(), at, again ? Qt::ControlModifier : Qt::NoModifier);
        };
        QWidget *list = window->View()->viewport();
        QTest::mousePress(list, Qt::LeftButton, {}, start);
        for (const int distance : {1, 2})
            QTest::mouseMove(list, start + distance * QPoint(QApplication::startDragDistance() + 1, 0));
        QTest::mouseRelease(list, Qt::LeftButton, {}, start);
        CheckDrag(place, again, before, RowsOf(window->ListView1));
        isStep = true;
    }

    /// Files, folders and addresses from outside.
    void DropFiles(const SoakRows &before)
    {
        Tell("drop");
        ++Commands;
        QMimeData files;
        files.setUrls({ToUrl(AnySong()), ToUrl(Inside(QString::number(Draw(5)))), QUrl(u"http://radio.example/"_s)});
        Drop(files, {5, 5}, Qt::NoModifier);
        CheckCommand("MEditPaste", before, RowsOf(window->ListView1));
        isStep = true;
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

    /// The commands of the menus besides; one of them ends the run.
    static std::vector<QByteArray> OtherCommands()
    {
        std::vector<QByteArray> names;
        for (const MenuEntry &entry : MenuTable()) {
            if (!entry.Tip.isEmpty() && entry.Captions.empty() && QByteArrayView(entry.Name) != "MFileExit")
                names.emplace_back(entry.Name);
        }
        return names;
    }

    const std::vector<QByteArray> modelled = ModelledCommands();
    const std::vector<QByteArray> others = OtherCommands();
    std::mt19937 draws;
    QMap<QString, QString> settings{{u"Options/Show Tips at Startup"_s, u"0"_s}};
    std::unique_ptr<Main> window;
    bool isStep = false;
};
} // namespace

/// soak SEED LISTS ROWS COMMANDS [SECONDS]: so many lists of 0 to so many rows, with so many commands each; with a time
/// it goes on with further lists until that is over.
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
        // As many short lists as long ones.
        const double size = std::pow(given[3].toDouble() + 1, static_cast<double>(draws()) * 0x1p-32) - 1;
        soak.RunList(static_cast<int>(size), given[4].toInt());
    }
    std::printf("%d lists, %lld commands, seed %u\n", lists, soak.Commands, seed);
    return 0;
}
