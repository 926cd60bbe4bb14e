#include "FuzzTarget.h"

#include "app/Tools.h"
#include "platform/Drives.h"
#include "session/Main.h"

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QFile>

using namespace Qt::StringLiterals;

namespace
{
/// The window over a settings file that changes with each input.
class SettledWindow
{
public:
    SettledWindow()
    {
        host.Settings.Read = [this](const QString &section, const QString &key) { return Value(section, key); };
        host.Settings.Write = [this](const QString &section, const QString &key, const QString &value) {
            written[section + u'/' + key] = value;
        };
        host.ApplicationFolder = FuzzFolder();
        window = std::make_unique<Main>(host, Tools());
        folder = CurrentDirectory();
        // A window has a place from when something stands before it.
        OpenCompilation();
    }

    /// What the window would keep after it has taken these settings.
    QMap<QString, QString> Keep(const SettingsStore &settings)
    {
        store = settings;
        written.clear();
        return KeepAgain();
    }
    QMap<QString, QString> KeepAgain()
    {
        LoadDriveMappings(host.Settings);
        window->MToolsShortCutDel_Click();
        window->SetFormState(false);
        window->SetFormState(true);
        OpenCompilation();
        SetDriveMappings({});
        SetCurrentDirectory(folder);
        return written;
    }

private:
    /// The wizard whose entries are settings too.
    void OpenCompilation()
    {
        window->Command("MToolsMP3CDWiz")->trigger();
        window->findChild<QDialog *>(u"MP3CDWizard"_s)->close();
        // What is left to the event loop would gather.
        QCoreApplication::processEvents();
    }

    QString Value(const QString &section, const QString &key)
    {
        const QString name = section + u'/' + key;
        return written.contains(name) ? written[name] : store.Read(section, key);
    }

    int one = 1;
    char *program = qstrdup("fuzz");
    QApplication application{one, &program};
    Host host = HeadlessHost(u"fuzz"_s);
    SettingsStore store = host.Settings;
    QMap<QString, QString> written;
    QString folder;
    std::unique_ptr<Main> window;
};

void TakeSettings(const QByteArray &input)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static auto *const window = new SettledWindow;
    static int number = 0;
    // Under a new name each time, or what was read last is believed.
    qputenv("XDG_CONFIG_HOME", ToHostPath(FuzzFolder()).toLocal8Bit());
    const QString name = QString::number(++number);
    const QString path = PutFile(name + u".ini"_s, input);
    const QMap<QString, QString> kept = window->Keep(HeadlessHost(name).Settings);
    Require(window->KeepAgain() == kept, "settings that were kept come back");
    Require(ContentOf(path) == input, "reading leaves the settings as they are");
}

const FuzzTarget target("settings", TakeSettings);
} // namespace

/// What the host's font library keeps to itself is none of ours.
extern "C" const char *__lsan_default_suppressions();
extern "C" const char *__lsan_default_suppressions() // NOLINT: the sanitizer's name
{
    return "leak:libfontconfig";
}
