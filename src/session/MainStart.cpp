#include "platform/DiskFile.h"
#include "platform/Drives.h"
#include "platform/Files.h"
#include "platform/FolderLock.h"
#include "platform/WayBack.h"
#include "playlist/M3UFile.h"
#include "session/Main.h"
#include "text/FormatText.h"
#include "text/TextFiles.h"

#include <QAction>
#include <QMenu>

using namespace Qt::StringLiterals;

void Main::RestoreSession(const QString &commandLine)
{
    keepsSession = true;
    const bool isTidy = KeepWaysBack(host.ApplicationFolder);
    SetFormState(false);
    ReadWholeFile(SessionFile(), sessionContent);
    ShowBookmarkMenu(DetectPlayer());
    menus["MViewTrans"]->setEnabled(IsNtFamily() || host.WindowsCanFade);
    if (!commandLine.isEmpty())
        OpenCommandLine(commandLine);
    // A list that gave nothing does not take the place of the last session's.
    if (ListView1.Count() == 0)
        RestoreRows();
    if (!isTidy)
        Answer(u"Not all that the last run left half done could be taken back; the next start tries it again"_s);
    TipTimer.start(0);
}

void Main::RestoreRows()
{
    // Reading the session file must not move the user out of the folder of the last session.
    const auto unchanged = qScopeGuard([this, folder = CurrentDirectory()] {
        PlaylistDirty = false;
        SetCurrentDirectory(folder);
        // A list that has not come counts as another program's, which is kept when this one stores its own.
        if (ListView1.Count() == 0)
            sessionContent.clear();
    });
    ListView1.Steps().End();
    AddPath(SessionFile(), false);
    ListView1_Click();
}

void Main::TipTimer_Timer()
{
    if (TipsAtStartup())
        Command("MHelpTip")->trigger();
}

bool Main::DetectPlayer()
{
    EnsureFolder(host.ApplicationFolder);
    {
        // Another program may store its session in this moment.
        const FolderLock lock(host.ApplicationFolder);
        if (IsAbsent(SessionFile()))
            WriteLinesToFile(SessionFile(), {u"#"_s});
    }
    const QString player = host.Shell.AssociatedProgram(SessionFile());
    const QString name = player.toLower();
    if (!name.contains("studio"_L1) && !name.contains("winamp"_L1))
        return false;
    if (BookmarkFilePath.isEmpty())
        BookmarkFilePath = GetFolderPart(player) + u"winamp.bm";
    return true;
}

void Main::ShowBookmarkMenu(bool on)
{
    const QList<QAction *> lines = menus["MTools"]->actions();
    const qsizetype place = lines.indexOf(Command("MToolsWinamp"));
    lines[place]->setVisible(on);
    lines[place - 1]->setVisible(on);
}

bool Main::IsNtFamily() const
{
    const QString family = host.Environment(u"OS"_s);
    return family == "Windows_XP"_L1 || family == "Windows_NT"_L1;
}

void Main::ShowFileFacts(const QString &path)
{
    const FileRecord record = AnalyseFile(path);
    QStringList facts{record.FileName, record.Folder};
    if (record.Size == 0) {
        facts.append(u"The file is missing or empty."_s);
    } else {
        const int attributes = FileAttributes(path);
        facts.append(u"%1 (%2 bytes)"_s.arg(FormatFileSize(record.Size), QString::number(record.Size)));
        for (const QString &text :
             {record.FileType, record.LayerText, record.BitrateText, record.SampleRateText, record.ModeText}) {
            if (!text.isEmpty())
                facts.append(text);
        }
        facts.append(u"Read-only: %1"_s.arg(YesNoText((attributes & AttributeReadOnly) != 0)));
    }
    host.Prompts.Message({facts.join(u'\n'), PromptIcon::Information});
}
