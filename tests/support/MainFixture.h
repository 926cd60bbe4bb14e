#pragma once

#include "app/Tools.h"
#include "platform/Drives.h"
#include "platform/Files.h"
#include "session/GridView.h"
#include "session/Main.h"
#include "support/PromptQueue.h"

#include <QFile>
#include <QProgressBar>
#include <QTemporaryDir>

#include <functional>
#include <memory>

/// What a command that needs items says without any.
inline const QString NoItems = QStringLiteral("The function cannot be performed because there are no Playlist items!\n"
                                              "Use Drag and Drop or 'Add Item' to add files/folders/m3us to the list.");

/// A main window on a world of its own: a temporary folder, settings in memory, queued prompts, a recorded shell and a
/// clock that stands still.
struct MainFixture {
    QTemporaryDir Temporary;
    /// Inside form, no trailing backslash.
    QString Folder = FromHostPath(Temporary.path());
    PromptQueue Prompts;
    /// No tip opens over the window.
    QMap<QString, QString> Settings{{QStringLiteral("Options/Show Tips at Startup"), QStringLiteral("0")}};
    QStringList ShellCalls;
    /// What the desktop does not have: "find", "volume", "system information".
    QStringList MissingTools;
    const QString SettingsPlace = QStringLiteral("the settings' place");
    const QString System = QStringLiteral("the test's system");
    QString Player;
    /// The desktop has no program for playlists but this one.
    bool NoPlayer = false;
    QList<double> Draws;
    /// What a search over the drives walks.
    std::function<QStringList()> Roots = [this] { return QStringList{Folder + u'\\'}; };
    /// What of the world is another one from the next start on.
    std::function<void(Host &)> Adjust = [](Host &) {};
    std::unique_ptr<Main> Window;

    MainFixture() { Restart(); }

    ~MainFixture()
    {
        Window.reset();
        // Windows removes no folder that somebody works in.
        SetCurrentDirectory(startFolder);
    }
    MainFixture(const MainFixture &) = delete;
    MainFixture &operator=(const MainFixture &) = delete;

    void Restart()
    {
        Window.reset();
        SetCurrentDirectory(Folder);
        Window = std::make_unique<Main>(MakeHost(), Tools());
    }

    QString Inside(const QString &name) const { return Folder + u'\\' + name; }

    /// Writes a file below the folder and returns its inside path. Folders are made as needed.
    QString Write(const QString &name, const QByteArray &content)
    {
        const QString path = Temporary.filePath(QString(name).replace(u'\\', u'/'));
        QDir().mkpath(QFileInfo(path).path());
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
            qFatal("cannot write the test's file");
        return Inside(name);
    }

    QByteArray Read(const QString &name) const
    {
        QByteArray content;
        ReadWholeFile(Inside(name), content);
        return content;
    }

    /// The names of the files of a folder.
    QString Listing(const QString &name) const
    {
        FolderEntries entries;
        ListFolder(Inside(name), entries);
        return entries.Files.join(u' ');
    }

    /// Files a.wma, b.wma, ... with so many bytes each, and their rows.
    void AddRows(const QList<int> &sizes)
    {
        for (qsizetype i = 0; i < sizes.size(); ++i)
            Window->AddPath(
                Write(QString(QChar(u'a' + char16_t(i))) + QStringLiteral(".wma"), QByteArray(sizes[i], 'x')), false);
        Window->PlaylistDirty = false;
        Window->MEditSelNone_Click();
    }

    void Select(const QList<int> &rows)
    {
        Window->ListView1.Reselect([&](int row, const PlaylistItem &) { return rows.contains(row); });
        if (rows.size() == 1)
            Window->ListView1.SetFocusedRow(rows.front());
        Window->ListView1_Click();
    }

    QWidget *Bar(const char *name) const { return Window->findChild<QWidget *>(QLatin1StringView(name)); }
    /// Clicks into the name of a row, from 1.
    void Click(int row, Qt::KeyboardModifiers modifiers = {}, Qt::MouseButton button = Qt::LeftButton) const
    {
        const GridView &view = *Window->View();
        QTest::mouseClick(view.viewport(), button, modifiers,
                          view.visualRect(view.model()->index(row - 1, 0)).center());
    }
    /// Shows the window and gives it the keyboard.
    void Show() const
    {
        Window->show();
        Window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(Window.get()));
    }
    void Press(const char *keys) const { QTest::keySequence(Window->View(), QKeySequence(QLatin1StringView(keys))); }

    /// Presses Escape once a progress bar says so.
    void StopAt(const QString &text)
    {
        auto *timer = new QTimer(Window.get());
        QObject::connect(timer, &QTimer::timeout, timer, [this, timer, text] {
            const auto bars = Window->findChildren<QProgressBar *>();
            const auto saysSo = [&](const QProgressBar *bar) { return bar->isVisible() && bar->text() == text; };
            if (std::none_of(bars.begin(), bars.end(), saysSo))
                return;
            delete timer;
            QTest::keyClick(Window.get(), Qt::Key_Escape);
        });
        timer->start(0);
    }

    void Trigger(const char *command) { Window->Command(command)->trigger(); }

    /// What would be undone; empty for nothing.
    QString Undoable() const
    {
        const QAction *undo = Window->Command("MEditUndo");
        return undo->isEnabled() ? undo->text().mid(6) : QString();
    }

    /// The names of the rows without extension, a selected one in capitals.
    QString Rows() const
    {
        QString text;
        for (int row = 1; row <= Window->ListView1.Count(); ++row) {
            const PlaylistItem &item = Window->ListView1.Item(row);
            const QString name = item.Text.section(u'.', 0, 0);
            text += (row > 1 ? QStringLiteral(" ") : QString()) + (item.Selected ? name.toUpper() : name);
        }
        return text;
    }

    /// The paths of the rows, those in the folder without it.
    QStringList Paths() const
    {
        QStringList paths;
        for (int row = 1; row <= Window->ListView1.Count(); ++row)
            paths.append(Window->ListView1.Item(row).FullPath().remove(Folder + u'\\'));
        return paths;
    }

    QStringList Panels() const { return {Window->PanelText(1), Window->PanelText(2), Window->PanelText(3)}; }

private:
    const QString startFolder = CurrentDirectory();

    Host MakeHost()
    {
        Host host = HeadlessHost(QStringLiteral("test"));
        Prompts.Install(host.Prompts);
        host.Settings.Read = [this](const QString &section, const QString &key) {
            return Settings.value(section + u'/' + key);
        };
        host.Settings.Write = [this](const QString &section, const QString &key, const QString &value) {
            Settings[section + u'/' + key] = value;
        };
        const auto record = [this](const char *verb) {
            return [this, verb](const QString &path) {
                ShellCalls.append(QLatin1StringView(verb) + u' ' + path);
                return true;
            };
        };
        host.Shell.Open = record("open");
        host.Shell.Browse = record("browse");
        host.Shell.OpenElsewhere = [this, open = record("open")](const QString &path) {
            return !NoPlayer && open(path);
        };
        host.Shell.Explore = record("explore");
        host.Shell.Properties = record("properties");
        const auto tool = [this](const QString &name) {
            const auto exists = [this, name] { return !MissingTools.contains(name); };
            return DesktopTool{exists, [this, name, exists] {
                                   ShellCalls += exists() ? QStringList{name} : QStringList();
                                   return exists();
                               }};
        };
        host.Shell.Find = tool(QStringLiteral("find"));
        host.Shell.VolumeControl = tool(QStringLiteral("volume"));
        host.Shell.SystemInformation = tool(QStringLiteral("system information"));
        host.Shell.AssociatedProgram = [this](const QString &) { return Player; };
        host.Settings.Place = SettingsPlace;
        host.System = System;
        host.Clock.Now = [] { return QDateTime(QDate(2026, 1, 2), QTime(3, 4, 5)); };
        host.Clock.Reseed = [] {};
        host.Clock.Random = [this] { return Draws.isEmpty() ? 0.0 : Draws.takeFirst(); };
        host.Roots = [this] { return Roots(); };
        host.Environment = [](const QString &) { return QString(); };
        host.ApplicationFolder = Inside(QStringLiteral("app"));
        host.ProgramFolder = Inside(QStringLiteral("program"));
        Adjust(host);
        return host;
    }
};
