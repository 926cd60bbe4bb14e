#include "platform/Drives.h"
#include "support/FormDriver.h"

#include <QMenu>

using namespace Qt::StringLiterals;

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
        const auto state = [&d] {
            return QString(d.Cells("lstDrives").join(u' ') + u' ' + d.Text("lblItems") + u' ' + d.Usable("cmd[SR].*"));
        };
        // The drive that the list misses stands chosen.
        QCOMPARE(state(), u"z:|/ b: 0 of 2 items found "_s);
        d.ClickAndGive("cmdBrowse", u"Select Folder..."_s, f.Inside(u"1"_s));
        QCOMPARE(state(), u"z:|/ b: 1 of 2 items found cmdSet"_s);
        d.Click("cmdSet");
        QCOMPARE(f.Rows() + f.Window->ListView1.Item(1).FullPath(), u"a gone xb:\\Rock\\a.wma"_s);
        d.Enter("txtFolder", u"1"_s);
        d.Choose("cmbLetter", 2);
        QVERIFY(f.Window->PlaylistDirty && state().endsWith(u"c: 0 of 0 items found "));
        d.SelectRow("lstDrives", 0);
        QCOMPARE(state(),
                 QString(u"b:|" + ToHostPath(f.Inside(u"1"_s)) + u"/ z:|/ b: 1 of 2 items found cmdSet cmdRemove"));
        d.Click("cmdRemove");
        QVERIFY(f.Window->ListView1.Item(1).Ghosted && state() == u"z:|/ b: 1 of 2 items found cmdSet");
        // Many are counted a few at a time, until the window is closed.
        f.Window->AddPath(f.Write(u"l.m3u"_s, QByteArray("b:\\rock\\A.wma\n").repeated(50)), false);
        d.Enter("txtFolder", u"/"_s);
        d.Enter("txtFolder", ToHostPath(f.Inside(u"1"_s)));
        QCOMPARE(d.Text("lblItems"), u"b: 15 of 52 items found so far"_s);
        QTRY_COMPARE(d.Text("lblItems"), u"b: 51 of 52 items found"_s);
        d.Enter("txtFolder", u"/"_s);
        d.Enter("txtFolder", ToHostPath(f.Inside(u"1"_s)));
        d.Click("cmdClose");
        QCoreApplication::processEvents();
        QCOMPARE(d.Text("lblItems"), u"b: 15 of 52 items found so far"_s);
    }

    void ExchangesBookmarks()
    {
        FormDriver d;
        MainFixture &f = d.F;
        const auto run = [&f](const char *command, const QStringList &messages) {
            for (const QString &message : messages)
                f.Prompts.Expect(message, PromptAnswer::Ok);
            f.Trigger(command);
        };
        const QString list = f.Write(u"w.bm"_s, "sub\\c.mp3\r\nLike d.ogg\r\n");
        const QString backup = u"The program just created a backup of the Bookmark file as "_s + list + u".bak";
        run("MToolsSaveWinamp",
            {NoItems, u"The process failed because a backup copy of the Bookmarks file could not be created!"_s});
        f.Prompts.ExpectPath(u"winamp.bm"_s, f.Folder);
        run("MToolsLocWinamp", {f.Folder + u" is not valid."});
        f.Prompts.Expect(u"Could not find the Bookmark file, please locate it. You will only need to do this once."_s,
                         PromptAnswer::Ok);
        f.Prompts.ExpectPath(u"winamp.bm"_s, list);
        run("MToolsLoadWinamp", {});
        QCOMPARE(f.Window->PanelText(4), u"Added 2 items"_s);
        d.TakeData(u"Tagged.MP3"_s, "tag-id3v24.mp3");
        f.Write(u"x.OGG"_s, "\3vorbis\x1D" + "ARTIST=ELKx\0\0\0TITLE=so\1\5vorbis"_ba.leftJustified(4999));
        f.Window->AddFile(f.Inside(u"x.OGG"_s), 0);
        f.Window->AddFile(f.Inside(u"a.wav.2\u2028(l).wav"_s), 0);
        run("MToolsSaveWinamp",
            {backup,
             u"The Bookmark file was successfully updated. You may need to restart WinAmp to view the changes."_s});
        QCOMPARE(f.Window->PanelText(4), u"Saved 5 bookmarks"_s);
        const QByteArray saved = f.Read(u"w.bm"_s);
        const QString lines = QString::fromUtf8(saved).remove(ToPlaylistLine(f.Folder)).replace(u"\r\n"_s, u"|"_s);
        QCOMPARE(QString(lines).replace(u'/', u'\\'),
                 u"\\sub\\c.mp3|C|\\Like d.ogg|Like D|\\Tagged.MP3|Caf Meridian -  Ber Den Wolken|\\x.OGG|"
                 "Elk - So|\\a.wav.2\u2028(l).wav|A.2 (l)|"_s);
        QVERIFY(f.Read(u"w.bm.bak"_s).startsWith("sub"));
        f.AddRows({1});
        SetFileAttributes(list, AttributeReadOnly);
        run("MToolsSaveWinamp", {backup, u"Unable to write to the bookmark file."_s});
        SetFileAttributes(list, AttributeNormal);
        DeleteFile(list + u".bak");
        f.Write(u"w.bm.bak\\x"_s, {});
        run("MToolsSaveWinamp",
            {u"The process failed because a backup copy of the Bookmarks file could not be created!"_s});
        for (const std::optional<QString> &path : {std::optional(list), std::optional<QString>()}) {
            f.Prompts.ExpectPath(list, path);
            run("MToolsLocWinamp", {});
            QCOMPARE(f.Window->PanelText(4), path ? QString(u"Bookmark file: "_s + ShownPath(list)) : QString());
        }
        QCOMPARE(f.Read(u"w.bm"_s), saved);
    }

    void OpensTheDesktopsToolsAndTips()
    {
        FormDriver d;
        MainFixture &f = d.F;
        auto *menu = f.Window->findChild<QMenu *>(u"MToolsShortCut"_s);
        f.Window->AddFile(f.Write(u"1\\a.wma"_s, "x"), 0);
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
        QCOMPARE(f.ShellCalls.join(u','),
                 u"explore %1,volume,find,explore %1,system information"_s.arg(f.Inside(u"1"_s)));
        f.MissingTools = QStringList{u"system information"_s};
        d.ClickAndRead("cmdSysInfo", u"System Information Is Unavailable At This Time"_s);
        d.Click("cmdCopy");
        const QString facts =
            u"%1 on %2\nSettings: %3\nSession: "_s.arg(QLatin1StringView(qVersion()), f.System, f.SettingsPlace);
        QVERIFY(QGuiApplication::clipboard()->text().endsWith(facts + ToHostPath(f.Inside(u"app\\tmp.m3u"_s))));

        f.Write(u"program\\VTLPLE20.htd"_s, {});
        d.OpenTool("MHelpTip", "frmTip", {});
        for (const char *button : {"CmdNext", "CmdPrev", "CmdPrev", "cmdNextTip"})
            d.Click(button);
        QVERIFY(d.Text("lblTipText").startsWith(u"Cannot find the Tip-Of-Day Data File. Please reinstall"));
        f.Write(u"program\\VTLPLE20.htd"_s, "first\r\n<b>\r\n\r\n" + QByteArray("long").repeated(3000));
        f.Settings.clear();
        f.Restart();
        // One is drawn each time that the window opens.
        f.Draws = {0.25, 0.99, 0.0};
        f.Window->RestoreSession({});
        QTRY_VERIFY((d.Form = f.Window->findChild<QDialog *>(u"frmTip"_s)) != nullptr && d.Form->isVisible());
        QString shown = d.Texts("CurTip|lblTipText");
        d.Click("cmdOK");
        d.OpenTool("MHelpTip", "frmTip", {});
        QVERIFY(d.Form->height() < 400 && d.Ticked("chkLoadTipsAtStartup"));
        for (const char *button : {"CmdNext", "CmdPrev", "CmdNext", "CmdNext", "CmdNext", "CmdPrev", "cmdNextTip"}) {
            d.Click(button);
            shown += u' ' + d.Texts("CurTip|lblTipText");
        }
        QCOMPARE(shown.remove(u"long"_s), u"2|<b> 1|first 4| 1|first 2|<b> 3| 2|<b> 1|first"_s);
        d.Click("chkLoadTipsAtStartup");
        QCOMPARE(f.Settings[u"Options/Show Tips at Startup"_s], u"0"_s);
    }
};

QTEST_MAIN(SideToolsTest)
#include "SideToolsTest.moc"
