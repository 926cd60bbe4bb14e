#include "media/FullData.h"
#include "platform/Drives.h"
#include "session/ProgramName.h"
#include "support/FormDriver.h"

#include <QAction>
#include <QMenu>

using namespace Qt::StringLiterals;

namespace
{
const QString notFound = u"Could not find the Bookmark file, please locate it. You will only need to do this once."_s;
const QString noBackup = u"The process failed because a backup copy of the Bookmarks file could not be created!"_s;
const QString noItems =
    u"The function cannot be performed because there are no Playlist items!\nUse Drag and Drop or 'Add Item' to add files/folders/m3us to the list."_s;

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
    void DrivesGetTheirFolders()
    {
        FormDriver d;
        MainFixture &f = d.F;
        if (!CanMapDrives())
            QSKIP("The drives of this host are its own.");
        const auto restored = qScopeGuard([] { SetDriveMappings({}); });
        f.Write(u"1\\Rock\\a.wma"_s, "1");
        f.Window->AddPath(f.Write(u"l.m3u"_s, "B:\\rock\\A.wma\nb:\\rock\\gone.wma\nZ:\\x.wma\n"), false);
        d.OpenTool("MToolsDrives", "frmDrives", {});
        const auto state = [&] {
            return QString(d.Cells("lstDrives").join(u' ') + u'|' + d.Text("lblItems") +
                           (d.Enabled("cmdSet") ? u"|set" : u"") + (d.Enabled("cmdRemove") ? u"|remove" : u""));
        };
        // The drive that the list misses stands chosen.
        QCOMPARE(state(), u"z:|/|b: 0 of 2 items found"_s);
        d.Enter("txtFolder", u"1"_s);
        QCOMPARE(state(), u"z:|/|b: 0 of 2 items found"_s);
        f.Prompts.ExpectPath(u"Select Folder..."_s, f.Inside(u"1"_s));
        d.Click("cmdBrowse");
        QCOMPARE(state(), u"z:|/|b: 1 of 2 items found|set"_s);
        d.Click("cmdSet");
        const QString folder = ToHostPath(f.Inside(u"1"_s));
        QCOMPARE(d.Cells("lstDrives"), (QStringList{u"b:|"_s + folder + u'/', u"z:|/"_s}));
        QCOMPARE(f.Rows(), u"a gone x"_s);
        QCOMPARE(f.Window->ListView1.Item(1).FullPath(), u"b:\\Rock\\a.wma"_s);
        QVERIFY(f.Window->PlaylistDirty);
        d.Choose("cmbLetter", 2);
        QCOMPARE(d.Text("lblItems"), u"c: 0 of 0 items found"_s);
        d.SelectRow("lstDrives", 0);
        QVERIFY(state().endsWith(u"|b: 1 of 2 items found|set|remove"_s) && d.Text("txtFolder") == folder + u'/');
        d.Click("cmdRemove");
        QCOMPARE(d.Cells("lstDrives"), QStringList{u"z:|/"_s});
        QVERIFY(f.Window->ListView1.Item(1).Ghosted && f.Settings[u"Drives/b"_s].isEmpty());
        d.Click("cmdClose");
        QVERIFY(!d.Form->isVisible());
    }

    void FullDataOfAllKinds()
    {
        FormDriver d;
        MainFixture &f = d.F;
        const auto restored = qScopeGuard([] { SetFullData(false); });
        for (const char *data :
             {"tagged-utf8.ogg", "tagged.wma", "stereo-16bit.wav", "mono-8bit.wav", "cbr128-mpeg1-joint-info.mp3"})
            d.TakeData(QLatin1StringView(data), data);
        const QByteArray ogg = f.Read(u"tagged-utf8.ogg"_s);
        f.Window->AddFile(f.Write(u"cut.ogg"_s, ogg.first(100)), 0);
        f.Window->AddFile(f.Write(u"other.wma"_s, ogg), 0);
        f.Window->AddFile(f.Write(u"empty.wav"_s, {}), 0);
        const auto rows = [&] {
            QString texts;
            for (int row = 1; row <= f.Window->ListView1.Count(); ++row) {
                for (const int column : {ColumnTime, ColumnBitrate, ColumnSamplerate, ColumnMode})
                    texts += f.Window->ListView1.CellText(row, column) + (column == ColumnMode ? u'\n' : u'|');
            }
            return texts;
        };
        const QString mp3 = u"0:02|128 Kbit|44100 Hz|Joint Stereo\n"_s;
        const QString plain = u"0:00|||\n"_s;
        QCOMPARE(rows(), plain.repeated(4) + mp3 + plain.repeated(3));
        f.Trigger("MToolsFullData");
        const QString stereo = u"0:02|23 Kbit|22050 Hz|Stereo\n"_s;
        QCOMPARE(rows(), stereo + u"0:03|48 Kbit|22050 Hz|Stereo\n0:01|353 Kbit|11025 Hz|Stereo\n"_s +
                             u"0:02|64 Kbit|8000 Hz|Single Channel\n"_s + mp3 + plain + stereo + plain);
        QCOMPARE(f.Settings[u"Options/Full Data"_s], u"1"_s);
        // It is kept, and the next start says so.
        SetFullData(false);
        f.Restart();
        f.Window->RestoreSession({});
        QVERIFY(f.Window->Command("MToolsFullData")->isChecked() && FullData());
        f.Trigger("MToolsFullData");
        QVERIFY(f.Settings[u"Options/Full Data"_s] == u"0"_s && !FullData());
    }

    void ExchangesBookmarks()
    {
        FormDriver d;
        MainFixture &f = d.F;
        const QString list = f.Write(u"w.bm"_s, "sub\\c.mp3\r\nLike d.ogg\r\n");
        const QString backup = u"The program just created a backup of the Bookmark file as "_s + list + u".bak";
        Do(f, "MToolsSaveWinamp", {noItems, noBackup});
        Do(f, "MToolsLoadWinamp", {notFound, u"winamp.bm>"_s});
        Do(f, "MToolsLoadWinamp", {notFound, u"winamp.bm>"_s + f.Folder, f.Folder + u" is not valid."});
        Do(f, "MToolsLoadWinamp", {notFound, u"winamp.bm>"_s + list});
        QCOMPARE(f.Rows(), u"C LIKE D"_s);
        d.TakeData(u"Tagged.MP3"_s, "tag-id3v24.mp3");
        f.Window->AddFile(f.Write(u"x.OGG"_s, "\3vorbis\x1D"
                                              "ARTIST=ELKx\0\0\0TITLE=so\1\5vorbis"_ba.leftJustified(4999)),
                          0);
        f.Window->AddFile(f.Inside(u"take.wav.two\u2028(live).wav"_s), 0);
        f.Write(u"w.bm.bak"_s, "older\r\n");
        Do(f, "MToolsSaveWinamp",
           {backup,
            u"The Bookmark file was successfully updated. You may need to restart WinAmp to view the changes."_s});
        QByteArray lines;
        for (const auto &[name, title] : {std::pair{u"sub\\c.mp3"_s, "C"},
                                          {u"Like d.ogg"_s, "Like D"},
                                          {u"Tagged.MP3"_s, "Caf Meridian -  Ber Den Wolken"},
                                          {u"x.OGG"_s, "Elk - So"},
                                          {u"take.wav.two\u2028(live).wav"_s, "Take.two (live)"}})
            lines += ToPlaylistLine(f.Inside(name)).toUtf8() + "\r\n" + title + "\r\n";
        QVERIFY2(f.Read(u"w.bm"_s).endsWith(lines), f.Read(u"w.bm"_s).constData());
        QVERIFY(f.Read(u"w.bm.bak"_s).startsWith("sub"));
        f.Select({1});
        f.Trigger("MEditRemove");
        SetFileAttributes(list, AttributeReadOnly);
        Do(f, "MToolsSaveWinamp", {backup, u"Unable to write to the bookmark file."_s});
        SetFileAttributes(list, AttributeNormal);
        DeleteFile(list + u".bak");
        f.Write(u"w.bm.bak\\x"_s, {});
        Do(f, "MToolsSaveWinamp", {noBackup});
        QVERIFY(f.Read(u"w.bm"_s).endsWith(lines));
        Do(f, "MToolsLocWinamp", {list + u'>' + f.Inside(u"x.OGG"_s)});
        QCOMPARE(f.Window->BookmarkFilePath, f.Inside(u"x.OGG"_s));
    }

    void OpensTheDesktopsTools()
    {
        FormDriver d;
        MainFixture &f = d.F;
        auto *menu = f.Window->findChild<QMenu *>(u"MToolsShortCut"_s);
        f.AddRows({1});
        for (const QString &missing : {u"find"_s, u"volume"_s}) {
            f.MissingTools = QStringList{missing};
            menu->popup({});
            menu->hide();
            for (QAction *command : menu->actions().first(3)) {
                if (command->isVisible())
                    command->trigger();
            }
        }
        d.OpenTool("MHelpAbout", "frmAbout", {});
        d.Click("cmdSysInfo");
        const QString explored = u"explore "_s + f.Folder;
        QCOMPARE(f.ShellCalls.join(u','),
                 QStringList({explored, u"volume,find"_s, explored, u"system information"_s}).join(u','));
        f.MissingTools = QStringList{u"system information"_s};
        f.Prompts.Expect(u"System Information Is Unavailable At This Time"_s, PromptAnswer::Ok);
        d.Click("cmdSysInfo");
        d.Click("cmdCopy");
        const QString facts = QGuiApplication::clipboard()->text();
        for (const QString &fact : {ProgramVersion(), QString::fromLatin1(qVersion()), f.SettingsPlace, f.System,
                                    ToHostPath(f.Inside(u"app\\tmp.m3u"_s))})
            QVERIFY2(facts.contains(fact), qPrintable(fact));
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
        d.F.Settings.clear();
        // One is drawn each time that the window opens.
        d.F.Draws = {0.25, 0.99, 0.0};
        QVERIFY(start("first\r\n<b>\r\n\r\n" + QByteArray("long").repeated(3000)) && d.Ticked("chkLoadTipsAtStartup"));
        QCOMPARE(d.Text("CurTip") + d.Text("lblTipText"), u"2<b>"_s);
        d.Click("cmdOK");
        d.OpenTool("MHelpTip", "frmTip", {});
        QVERIFY(d.Form->height() < 400 && d.Text("CurTip") == u"4"_s);
        QCOMPARE(tips({"CmdNext", "CmdNext", "CmdNext", "CmdPrev", "cmdNextTip"}), u"1first 2<b> 3 2<b> 1first"_s);
        QVERIFY(tips({"CmdPrev"}).startsWith(u"4long"));
        d.Click("chkLoadTipsAtStartup");
        QVERIFY(!start("x"));
    }
};

QTEST_MAIN(SideToolsTest)
#include "SideToolsTest.moc"
