#include "session/ProgramName.h"
#include "support/FormDriver.h"

#include <QMenu>

using namespace Qt::StringLiterals;

namespace
{
const QString notFound = u"Could not find the Bookmark file, please locate it. You will only need to do this once."_s;
const QString noBackup = u"The process failed because a backup copy of the Bookmarks file could not be created!"_s;

/// Runs a command that shows these messages; "PROPOSAL>ANSWER" is a file dialog, cancelled without an answer.
void Do(MainFixture &f, const char *command, const QStringList &prompts)
{
    for (const QString &prompt : prompts) {
        const QString answer = prompt.section(u'>', 1);
        if (prompt.contains(u'>'))
            f.Prompts.ExpectPath(prompt.section(u'>', 0, 0), answer.isEmpty() ? std::nullopt : std::optional(answer));
        else
            f.Prompts.Expect(prompt, PromptAnswer::Ok);
    }
    f.Trigger(command);
}
} // namespace

class SideToolsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void ImportsBookmarks()
    {
        MainFixture f;
        f.AddRows({1});
        const QString folder = GetFolderPart(f.Write(u"here.bm\\b.wma"_s, "x")).chopped(1);
        const QString list = f.Write(u"list.bm"_s, "here.bm/b.wma\r\nA title\r\nsub\\c.mp3\r\nLike d.ogg\r\n");
        f.Window->BookmarkFilePath = folder;
        Do(f, "MToolsLoadWinamp", {notFound, folder + u'>'});
        f.Window->BookmarkFilePath.clear();
        Do(f, "MToolsLoadWinamp", {notFound, u"winamp.bm>"_s + folder, folder + u" is not valid."});
        QVERIFY(!f.Window->PlaylistDirty && f.Window->BookmarkFilePath.isEmpty());
        Do(f, "MToolsLoadWinamp", {notFound, u"winamp.bm>"_s + list});
        QCOMPARE(f.Rows(), u"a B C LIKE D"_s);
        QVERIFY(f.Window->PlaylistDirty && f.Window->CurrentPlaylistPath.isEmpty());
        Do(f, "MToolsLocWinamp", {list + u'>' + f.Inside(u"a.wma"_s)});
        QCOMPARE(f.Window->BookmarkFilePath, f.Inside(u"a.wma"_s));
    }

    void SavesBookmarks()
    {
        FormDriver d;
        MainFixture &f = d.F;
        const QString noItems = u"The function cannot be performed because there are no Playlist items!\nUse Drag and "
                                "Drop or 'Add Item' to add files/folders/m3us to the list."_s;
        Do(f, "MToolsSaveWinamp", {noItems, noBackup});
        d.TakeData(u"Tagged.MP3"_s, "tag-id3v24.mp3");
        f.Window->AddFile(f.Write(u"tagged.OGG"_s, "\3vorbis\x1D"
                                                   "ARTIST=An ELKx\0\0\0TITLE=song\1\5vorbis"_ba +
                                                       QByteArray(4096, 'x')),
                          0);
        d.TakeData(u"plain.mp3"_s, "cbr128-mpeg1-joint-info.mp3");
        f.Window->AddFile(f.Inside(u"Sub\\GONE song.mp3"_s), 0);
        f.Window->AddFile(f.Inside(u"take.wav.two\u2028(live).wav"_s), 0);
        const QString list = f.Write(u"w.bm"_s, "old\r\n");
        const QString backup = u"The program just created a backup of the Bookmark file as "_s + list + u".bak";
        f.Write(u"w.bm.bak"_s, "older\r\n");
        Do(f, "MToolsSaveWinamp",
           {notFound, u"winamp.bm>"_s + list, backup,
            u"The Bookmark file was successfully updated. You may need to restart WinAmp to view the changes."_s});
        QCOMPARE(f.Read(u"w.bm.bak"_s), QByteArray("old\r\n"));
        QByteArray expected;
        for (const auto &[name, title] : {std::pair{u"Tagged.MP3"_s, "Caf Meridian -  Ber Den Wolken"},
                                          {u"tagged.OGG"_s, "An Elk - Song"},
                                          {u"plain.mp3"_s, "Plain"},
                                          {u"Sub\\GONE song.mp3"_s, "Gone Song"},
                                          {u"take.wav.two\u2028(live).wav"_s, "Take.two (live)"}})
            expected += ToPlaylistLine(f.Inside(name)).toUtf8() + "\r\n" + title + "\r\n";
        QVERIFY2(f.Read(u"w.bm"_s).endsWith(expected), f.Read(u"w.bm"_s).constData());
        f.Window->ListView1.RemoveIf([](const PlaylistItem &item) { return item.Text == u"plain.mp3"_s; });
        SetFileAttributes(list, AttributeReadOnly);
        Do(f, "MToolsSaveWinamp", {backup, u"Unable to write to the bookmark file."_s});
        SetFileAttributes(list, AttributeNormal);
        DeleteFile(f.Inside(u"w.bm.bak"_s));
        f.Write(u"w.bm.bak\\x"_s, {});
        Do(f, "MToolsSaveWinamp", {noBackup});
        QVERIFY(f.Read(u"w.bm"_s).endsWith(expected));
    }

    void OpensTheDesktopsTools()
    {
        FormDriver d;
        MainFixture &f = d.F;
        auto *menu = f.Window->findChild<QMenu *>(u"MToolsShortCut"_s);
        f.AddRows({1});
        f.Window->AddFile(f.Inside(u"sub\\x.wma"_s), 0);
        for (const QString &missing : {u"find"_s, u"volume"_s}) {
            f.ShellCalls.clear();
            f.MissingTools = QStringList{missing};
            menu->popup({});
            menu->hide();
            for (const char *name : {"MToolsShortCutFind", "MToolsShortCutExplore", "MToolsShortCutVolume"}) {
                if (f.Window->Command(name)->isVisible())
                    f.Trigger(name);
            }
            const QString explored = u"explore "_s + f.Folder;
            const bool first = missing == "find"_L1;
            QCOMPARE(f.ShellCalls, first ? QStringList({explored, u"volume"_s}) : QStringList({u"find"_s, explored}));
            f.Window->ListView1.Clear();
        }
        d.OpenTool("MHelpAbout", "frmAbout", {});
        d.Click("cmdSysInfo");
        QCOMPARE(f.ShellCalls.last(), u"system information"_s);
        f.MissingTools = QStringList{u"system information"_s};
        f.Prompts.Expect(u"System Information Is Unavailable At This Time"_s, PromptAnswer::Ok);
        d.Click("cmdSysInfo");
        const QString facts = d.Text("txtFacts");
        for (const QString &fact : {ProgramVersion(), QString::fromLatin1(qVersion()), f.SettingsPlace, f.System,
                                    ToHostPath(f.Inside(u"app\\tmp.m3u"_s))})
            QVERIFY2(facts.contains(fact), qPrintable(fact));
        d.Click("cmdCopy");
        QCOMPARE(QGuiApplication::clipboard()->text(), facts);
    }

    void ShowsTips()
    {
        FormDriver d;
        const auto tips = [&d](const QList<const char *> &buttons) {
            QStringList shown;
            for (const char *button : buttons) {
                d.Click(button);
                shown.append(d.Text("CurTip") + d.Text("lblTipText"));
            }
            return shown.join(u' ');
        };
        const auto start = [&d](const QByteArray &content) {
            d.F.Write(u"program\\VTLPLE20.htd"_s, content);
            d.F.Restart();
            d.F.Window->RestoreSession({});
            QCoreApplication::processEvents();
            d.Form = d.F.Window->findChild<QDialog *>(u"frmTip"_s);
            return d.Form != nullptr && d.Form->isVisible();
        };
        QVERIFY(!start({}));
        d.OpenTool("MHelpTip", "frmTip", {});
        tips({"CmdNext", "CmdPrev", "CmdPrev", "cmdNextTip"});
        QVERIFY(d.Text("lblTipText").startsWith(u"Cannot find the Tip-Of-Day Data File. Please reinstall"));
        QVERIFY(!d.Ticked("chkLoadTipsAtStartup"));
        d.F.Settings.clear();
        // One is drawn each time that the window opens.
        d.F.Draws = {0.25, 0.99, 0.0};
        QVERIFY(start("first\r\n<b>\r\n\r\n" + QByteArray("long").repeated(3000)) && d.Ticked("chkLoadTipsAtStartup"));
        QCOMPARE(d.Text("CurTip") + d.Text("lblTipText"), u"2<b>"_s);
        d.Click("cmdOK");
        d.OpenTool("MHelpTip", "frmTip", {});
        QVERIFY(d.Form->height() < 400 && d.Text("CurTip") == u"4"_s);
        QCOMPARE(tips({"CmdNext", "CmdNext", "CmdNext", "CmdPrev", "cmdNextTip"}), u"1first 2<b> 3 2<b> 1first"_s);
        d.Click("CmdPrev");
        QCOMPARE(d.Text("CurTip"), u"4"_s);
        d.Click("chkLoadTipsAtStartup");
        QVERIFY(!start("x"));
    }
};

QTEST_MAIN(SideToolsTest)
#include "SideToolsTest.moc"
