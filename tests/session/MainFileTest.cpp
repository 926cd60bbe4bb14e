#include "support/HostNames.h"
#include "support/MainFixture.h"

#include "platform/CodePage.h"
#include "platform/Files.h"
#include "session/GridView.h"

#include <QMimeData>
#include <QTest>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace
{
const QString title = u"[Vantrel] M3U Playlist Editor v2.0 "_s;
const QString saveFirst = u"Do you want to save the current playlist first?"_s;
const QString cannotWrite = u"Unable to write to the specified file."_s;
} // namespace

/// The File menu and what is dropped, through the window.
class MainFileTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void OpensAndReplaces()
    {
        MainFixture f;
        f.Window->RestoreSession({});
        f.Write(u"sub\\one.wma"_s, "12345");
        const QString list = f.Write(u"list.m3u"_s, "#EXTM3U\r\nsub\\one.wma\r\nnote.txt\r\nsub/gone.mp3\r\n");
        const QString empty = f.Write(u"empty.m3u"_s, "# nothing\r\n");
        f.Show();
        f.Prompts.ExpectPath({}, list);
        f.Press("Ctrl+O");
        QCOMPARE(f.Rows(), u"one gone"_s);
        QCOMPARE(f.Window->ListView1.Item(1).FullPath(), f.Inside(u"sub\\one.wma"_s));
        QVERIFY(f.Window->ListView1.Item(2).Ghosted);
        QCOMPARE(f.Window->windowTitle(), title + list);
        QVERIFY(!f.Window->PlaylistDirty);
        // A missing row counts with the numbers of the row before it.
        QCOMPARE(f.Panels(), (QStringList{u"Total: 2"_s, u"0:00"_s, u"10 Bytes"_s}));

        f.Prompts.ExpectPath({}, std::nullopt);
        f.Press("Ctrl+O");
        QCOMPARE(f.Rows(), u"one gone"_s);
        // What has changed is not dropped unasked, whichever way it would go; Yes goes on only when the save succeeded.
        f.Click(1);
        f.Press("F4");
        const QByteArray session = f.Read(u"app\\tmp.m3u"_s);
        for (const char *keys : {"Ctrl+O", "Ctrl+N", "Ctrl+X", "MFileRecent(0)"}) {
            for (const auto answer : {PromptAnswer::Cancel, PromptAnswer::Yes}) {
                if (QByteArrayView(keys) == "Ctrl+O")
                    f.Prompts.ExpectPath({}, empty);
                f.Prompts.Expect(saveFirst, answer);
                if (answer == PromptAnswer::Yes)
                    f.Prompts.Expect(list + u" exists, do you want to replace it?", PromptAnswer::No);
                keys[0] == 'M' ? f.Trigger(keys) : f.Press(keys);
                QCOMPARE(f.Rows(), u"gone ONE"_s);
                QCOMPARE(f.Window->windowTitle(), title + list);
                QVERIFY(f.Window->PlaylistDirty && f.Window->isVisible() && f.Read(u"app\\tmp.m3u"_s) == session);
            }
        }
        // Saved elsewhere, both are recent files, and the first one comes back unasked.
        const QString copy = f.Inside(u"copy.m3u"_s);
        f.Prompts.ExpectPath(list, copy);
        f.Trigger("MFileSaveAs");
        QCOMPARE(f.Window->Command("MFileRecent(0)")->text(), u"&1: "_s + copy);
        QCOMPARE(f.Window->windowTitle(), title + copy);
        f.Trigger("MFileRecent(1)");
        QCOMPARE(f.Rows(), u"one gone"_s);
        QCOMPARE(f.Window->PanelText(1), u"Total: 2"_s);
        // The list has gone by the time the file turns out to be empty; the caption stays.
        f.Prompts.ExpectPath({}, empty);
        f.Press("Ctrl+O");
        QVERIFY(f.Rows().isEmpty() && f.Window->PanelText(4) == QString(u"No items in "_s + empty));
        QCOMPARE(f.Window->windowTitle(), title + list);
        f.AddRows({1});
        for (const char *keys : {"Ctrl+X", "Ctrl+N"}) {
            f.Window->PlaylistDirty = true;
            f.Prompts.Expect(saveFirst, PromptAnswer::No);
            f.Press(keys);
            QVERIFY(f.Window->isVisible() == (QByteArrayView(keys) == "Ctrl+N"));
            f.Show();
        }
        QCOMPARE(f.Read(u"app\\tmp.m3u"_s), ToHostBytes(f.Inside(u"a.wma"_s)) + "\r\n");
        QCOMPARE(f.Panels(), (QStringList{u"Total: 0"_s, u"0:00"_s, u"0 Bytes"_s}));
        QCOMPARE(f.Window->windowTitle(), title);
        QVERIFY(!f.Window->PlaylistDirty);
    }

    void RecentFilesOpenAndGoStale()
    {
        MainFixture f;
        f.AddRows({1});
        QVERIFY(!f.Window->Command("MFileRec")->isEnabled() && !f.Window->Command("MFileRecent(0)")->isVisible());
        QStringList lists;
        for (int i = 1; i <= 11; ++i) {
            lists.append(f.Write(u"list & %1.m3u"_s.arg(i), "a.wma\r\n"));
            f.Prompts.ExpectPath({}, lists.last());
            f.Trigger("MFileOpen");
        }
        f.Prompts.ExpectPath({}, lists[5]);
        f.Trigger("MFileOpen");
        // The newest of eleven stands first, a path already listed keeps its place, the two oldest have gone.
        const auto recent = [&](const char *name) { return f.Window->Command(name); };
        QCOMPARE(recent("MFileRecent(0)")->text(), u"&1: "_s + QString(lists[10]).replace(u'&', "&&"_L1));
        QCOMPARE(recent("MFileRecent(8)")->text(), u"&9: "_s + QString(lists[2]).replace(u'&', "&&"_L1));
        f.Trigger("MFileRecent(8)");
        QCOMPARE(f.Window->windowTitle(), title + lists[2]);
        DeleteFile(lists[10]);
        f.Prompts.Expect(u"Could not open the file, check that it hasnt been moved, renamed or deleted!"_s,
                         PromptAnswer::Ok);
        f.Trigger("MFileRecent(0)");
        QCOMPARE(f.Rows(), u"a"_s);
        QVERIFY(recent("MFileRec")->isEnabled() && recent("MFileRecent(8)")->isVisible());
    }

    void SavesAbsoluteAndAsksEachTime()
    {
        MainFixture f;
        f.Trigger("MFileSaveAs"); // An empty list: nothing is said, nothing written.
        f.AddRows({1, 2});
        f.Window->PlaylistDirty = true;
        const QString target = f.Inside(u"out.m3u"_s);
        f.Prompts.ExpectPath(f.Folder + u'\\' + f.Folder.section(u'\\', -1) + u".m3u", target);
        f.Trigger("MFileSave");
        const QByteArray lines =
            ToHostBytes(f.Inside(u"a.wma"_s)) + "\r\n" + ToHostBytes(f.Inside(u"b.wma"_s)) + "\r\n";
        QCOMPARE(f.Read(u"out.m3u"_s), lines);
        QCOMPARE(f.Window->windowTitle(), title + target);
        QVERIFY(!f.Window->PlaylistDirty);

        const QString replace = target + u" exists, do you want to replace it?";
        f.Select({1});
        f.Trigger("MEditRemove");
        f.Prompts.Expect(replace, PromptAnswer::No);
        f.Trigger("MFileSave");
        QCOMPARE(f.Read(u"out.m3u"_s), lines);
        QVERIFY(f.Window->PlaylistDirty);
        for (int time = 0; time < 2; ++time) {
            f.Prompts.Expect(replace, PromptAnswer::Yes);
            f.Trigger("MFileSave");
            QCOMPARE(f.Read(u"out.m3u"_s), ToHostBytes(f.Inside(u"b.wma"_s)) + "\r\n");
            QCOMPARE(f.Prompts.LastDetails, QString());
        }
        // What somebody has written there since is not replaced unawares.
        f.Write(u"out.m3u"_s, "theirs");
        f.Prompts.Expect(replace, PromptAnswer::No);
        f.Trigger("MFileSave");
        const QString changed = u"Another program has changed it meanwhile."_s;
        QCOMPARE(f.Prompts.LastDetails, changed);
        QCOMPARE(f.Read(u"out.m3u"_s), "theirs"_ba);
        // Nor what is written there while it is read; but a disk may give a file that nobody changes another number.
        const auto save = [&](const QByteArray &content) {
            const auto put = [&](const QByteArray &bytes) {
                f.Write(u"out.m3u"_s, bytes);
                QFile file(f.Temporary.filePath(u"out.m3u"_s));
                QVERIFY(
                    file.open(QIODevice::ReadWrite) &&
                    file.setFileTime(QDateTime::fromSecsSinceEpoch(1'000'000'000), QFileDevice::FileModificationTime));
            };
            put(lines);
            QTimer::singleShot(0, f.Window.get(), [&] { put(content); });
            f.Prompts.ExpectPath({}, target);
            f.Window->PlaylistDirty = false;
            f.Trigger("MFileOpen");
            QCOMPARE(f.Rows(), u"a b"_s);
            f.Prompts.Expect(replace, PromptAnswer::No);
            f.Trigger("MFileSave");
            QCOMPARE(f.Read(u"out.m3u"_s), content);
        };
        save("theirs, too");
        QCOMPARE(f.Prompts.LastDetails, changed);
        save(lines);
        QCOMPARE(f.Prompts.LastDetails, QString());
    }

    void ProposesNames()
    {
        MainFixture f;
        f.Window->AddPath(f.Write(u"rock\\a.wma"_s, "1"), false);
        f.Prompts.ExpectPath(f.Folder + u"\\rock.m3u", std::nullopt);
        f.Trigger("MFileSaveAs");
        f.Prompts.ExpectPath(f.Inside(u"rock\\rock.m3u"_s), std::nullopt);
        f.Trigger("MFileSaveRel");
        f.Window->AddPath(f.Write(u"away.m3u"_s, "q:\\w.mp3\r\n"), false);
        f.Prompts.Expect(
            u"This playlist cannot be saved to a relative directory because it points to files at different "
            u"Root locations or items that are pointed to incorrectly."_s,
            PromptAnswer::Ok);
        f.Prompts.ExpectPath(f.Folder + u"\\playlist.m3u", std::nullopt);
        f.Trigger("MFileSaveRel");
    }

    void SavesRelative()
    {
        MainFixture f;
        const QString colon = NamesHoldAnything() ? u"music\\c: d.wma"_s : u"music\\c d.wma"_s;
        const QStringList names{u"music\\rock\\a.wma"_s, u"music\\#1 b.wma"_s, colon, u"other\\e.wma"_s};
        for (const QString &name : names)
            f.Window->AddPath(f.Write(name, "1"), false);
        f.Prompts.ExpectPath(f.Folder + u'\\' + f.Folder.section(u'\\', -1) + u".m3u", f.Inside(u"music\\all.m3u"_s));
        f.Trigger("MFileSaveRel");
        const QList<QByteArray> lines = f.Read(u"music\\all.m3u"_s).split('\n');
        QCOMPARE(lines[0], EncodeText(ToPlaylistLine(u"rock\\a.wma"_s)) + '\r');
        QCOMPARE(lines[3], ToHostBytes(f.Inside(u"other\\e.wma"_s)) + '\r');
        // What would read back as a comment or a drive must not.
        f.Prompts.ExpectPath({}, f.Inside(u"music\\all.m3u"_s));
        f.Trigger("MFileOpen");
        QCOMPARE(f.Paths(), names);
    }

    void FailedSaveKeepsEverything()
    {
        MainFixture f;
        f.AddRows({1});
        f.Window->PlaylistDirty = true;
        const QString target = f.Write(u"old.m3u"_s, "old\r\n");
        SetFileAttributes(target, AttributeReadOnly);
        f.Prompts.ExpectPath(f.Folder + u'\\' + f.Folder.section(u'\\', -1) + u".m3u", target);
        f.Prompts.Expect(target + u" exists, do you want to replace it?", PromptAnswer::Yes);
        f.Prompts.Expect(cannotWrite, PromptAnswer::Ok);
        f.Trigger("MFileSaveAs");
        QCOMPARE(f.Read(u"old.m3u"_s), QByteArray("old\r\n"));
        QVERIFY(f.Window->PlaylistDirty);
        QVERIFY(f.Window->CurrentPlaylistPath.isEmpty());
        QCOMPARE(f.Rows(), u"a"_s);
        QCOMPARE(f.Window->PanelText(4), QString());
    }

    void NothingIsLostWhileADiskIsAway()
    {
        MainFixture f;
        QString text;
        for (const QString &path :
             {u"q:\\Music\\\u00C4rzte\\1: x.mp3"_s, f.Inside(u"away\\\u041C\u0438\u0440\\\U0001F3B5.ogg"_s),
              u"\\\\server\\share\\y.wav"_s, f.Inside(u"away\\e\u0301 ~!@#$%^&()_+{}[];',.\uF05C`=-.wma"_s)})
            text += ToPlaylistLine(path) + u"\r\n";
        text += u"http://radio.example/live/x.mp3\r\n"_s;
        const QByteArray lines = EncodeText(text);
        f.Prompts.ExpectPath({}, f.Write(u"away.m3u"_s, lines));
        f.Trigger("MFileOpen");
        QCOMPARE(f.Window->ListView1.Count(), 5);
        f.Prompts.ExpectPath(f.Inside(u"away.m3u"_s), f.Inside(u"again.m3u"_s));
        f.Trigger("MFileSaveAs");
        QCOMPARE(f.Read(u"again.m3u"_s), lines);
    }

    void PlaylistsOfOtherProgramsOpen()
    {
        MainFixture f;
        f.Settings[u"SSE/V"_s] = u"1"_s;
        const QString cyrillic = u"Music\\\u041C\u0438\u0440.wma"_s;
        const QString list = f.Write(u"l.M3U8"_s, "Music/a%20b.wma\r\n" + ToPlaylistLine(cyrillic).toUtf8() +
                                                      "\r\n\"file\".wma\r\nQ:\\c.wma\r\nW:d.wma\n");
        f.Write(u"Music\\a b.wma"_s, "1");
        f.Write(cyrillic, "22");
        f.Write(u"notes.txt"_s, "a.wma\r\n");
        f.Window->RestoreSession(list);
        const auto restart = [&](const QString &commandLine) {
            f.Window->close();
            f.Restart();
            f.Window->RestoreSession(commandLine);
            return QString(f.Rows() + u'|' + f.Window->PanelText(4));
        };
        QCOMPARE(f.Window->PanelText(4), u"Drives q:, w: are not there"_s);
        QCOMPARE(f.Window->PanelText(3), u"9 Bytes"_s);
        // What gives no items does not take the place of the session's list.
        const QString rows = f.Rows();
        QCOMPARE(restart(f.Inside(u"notes.txt"_s)), rows + u"|No items in " + f.Inside(u"notes.txt"_s));
        QCOMPARE(restart(f.Inside(u"Music"_s)), u"a b \u041C\u0438\u0440|"_s);
        // The names of the disk are saved, in this form on every host.
        f.Prompts.ExpectPath(f.Inside(u"Music\\Music.m3u"_s), f.Inside(u"Music\\out.m3u8"_s));
        f.Trigger("MFileSaveRel");
        QCOMPARE(f.Read(u"Music\\out.m3u8"_s), "a b.wma\r\n" + cyrillic.sliced(6).toUtf8() + "\r\n");
        f.Prompts.ExpectPath({}, f.Inside(u"Music\\out.m3u8"_s));
        f.Trigger("MFileImport");
        QVERIFY(f.Window->PanelText(1) == u"Total: 4"_s && f.Window->PanelText(4) == u"Added 2 items"_s);
        f.Prompts.ExpectPath({}, f.Inside(u"notes.txt"_s));
        f.Trigger("MFileImport");
        QCOMPARE(f.Window->PanelText(4), u"No items in "_s + f.Inside(u"notes.txt"_s));
        // A row finds its file when it has got another spelling since; that is a change. So does a typed address.
        f.Window->PlaylistDirty = false;
        f.Trigger("MFileNew");
        f.Prompts.ExpectPath(u"Select Folder..."_s,
                             QString::fromLatin1(ToUrl(f.Inside(u"Music\\a b.wma"_s)).toEncoded()));
        f.Trigger("MEditAddDir");
        QCOMPARE(f.Rows(), u"A B"_s);
        f.Trigger("MEditSelNone");
        f.Window->AddFile(f.Inside(u"e\u0301.wma"_s), 0);
        f.Window->PlaylistDirty = false;
        f.Trigger("MViewRefresh");
        QVERIFY(!f.Window->PlaylistDirty);
        f.Write(u"\u00E9.wma"_s, "1");
        f.Trigger("MViewRefresh");
        QCOMPARE(f.Rows(), u"a b \u00E9"_s);
        QVERIFY(f.Window->PlaylistDirty);
    }

    void StopsAtTheLastRow()
    {
        MainFixture f;
        f.Prompts.ExpectPath({}, f.Write(u"short.m3u"_s, "q:\\x.wma\r\n"));
        f.Trigger("MFileOpen");
        const QString longList = f.Write(u"long.m3u"_s, QByteArray("q:\\x.wma\r\n").repeated(Grid::MaxRows + 1));
        const QString full = QString::fromLatin1(PlaylistFull().what());
        // What did fit can be taken back.
        f.Prompts.ExpectPath({}, longList);
        f.Prompts.Expect(full, PromptAnswer::Ok);
        f.Trigger("MFileImport");
        QCOMPARE(f.Undoable(), u"Add 32,766 items"_s);
        f.Trigger("MEditUndo");
        QVERIFY(f.Window->ListView1.Count() == 1 && !f.Window->PlaylistDirty);
        f.Prompts.ExpectPath({}, longList);
        f.Prompts.Expect(full, PromptAnswer::Ok);
        f.Trigger("MFileOpen");
        QCOMPARE(f.Window->PanelText(1), u"Total: 32767"_s);
        // What stands there is not the whole file: a save must not go to it unasked.
        QVERIFY(f.Window->CurrentPlaylistPath.isEmpty() && f.Window->PlaylistDirty && f.Window->windowTitle() == title);
        f.Prompts.Expect(full, PromptAnswer::Ok);
        f.Window->Run([&] { f.Window->AddPath(f.Write(u"a.wma"_s, "1"), true); });
        QCOMPARE(f.Window->PanelText(1), u"Total: 32767"_s);
        // Of a tree no more is looked through than fits.
        for (const QString &name : {u"tree\\1\\a.wma"_s, u"tree\\2\\b.wma"_s})
            f.Write(name, "1");
        f.Prompts.Expect(full, PromptAnswer::Ok);
        f.Window->Run([&] { f.Window->AddPath(f.Inside(u"tree"_s), true); });
        QCOMPARE(f.Window->FileArray.size(), 1);
    }

    void UndoKnowsWhatWasSaved()
    {
        MainFixture f;
        f.AddRows({1, 2, 3});
        const QString list = f.Inside(u"l.m3u"_s);
        const auto step = [&](const char *command) {
            f.Trigger(command);
            return QString(f.Rows() + (f.Window->PlaylistDirty ? u'*' : u' '));
        };
        f.Select({1});
        step("MEditRemove");
        f.Select({1});
        step("MEditRemove");
        f.Prompts.ExpectPath(f.Folder + u'\\' + f.Folder.section(u'\\', -1) + u".m3u", list);
        QCOMPARE(step("MFileSave"), u"c "_s);
        QCOMPARE(step("MEditUndo"), u"B c*"_s);
        QCOMPARE(step("MEditUndo"), u"A b c*"_s);
        QCOMPARE(step("MEditRedo"), u"B c*"_s);
        QCOMPARE(step("MEditRedo"), u"c "_s);
        // Another list has a history of its own.
        for (const char *command : {"MFileNew", "MFileOpen", "MFileRecent(0)"}) {
            f.Window->PlaylistDirty = false;
            if (QByteArrayView(command) == "MFileOpen")
                f.Prompts.ExpectPath({}, list);
            step(command);
            QVERIFY(f.Undoable().isEmpty() && !f.Window->Command("MEditRedo")->isEnabled());
            f.Prompts.ExpectPath({}, list);
            step("MFileImport");
            QCOMPARE(f.Undoable(), u"Add 1 item"_s);
        }
    }

    void AddsFoldersFilesAndDrops()
    {
        MainFixture f;
        f.Write(u"tree\\b.wma"_s, "1");
        f.Write(u"tree\\a.MP3"_s, "no audio");
        f.Write(u"tree\\deep\\c.wav"_s, "1");
        f.Write(u"tree\\notes.txt"_s, "1");
        f.Prompts.ExpectPath(u"Select Folder..."_s, f.Inside(u"tree"_s));
        f.Trigger("MEditAddDir");
        QCOMPARE(f.Rows(), u"A B C"_s);
        QVERIFY(f.Window->PlaylistDirty);
        f.Prompts.ExpectPath(u"Select Folder..."_s, std::nullopt);
        QTest::keyClick(f.Window->View(), Qt::Key_Insert);
        QCOMPARE(f.Rows(), u"A B C"_s);
        // After a drop of several items the rows of the last one are selected.
        Q_EMIT f.Window->View()->FilesDropped({f.Write(u"d.wma"_s, "1"), f.Inside(u"tree\\notes.txt"_s),
                                               f.Write(u"l.m3u"_s, "tree/b.wma\r\ngone.mp3\r\n")});
        QCOMPARE(f.Rows(), u"a b c d B GONE"_s);
        QCOMPARE(f.Window->PanelText(4), u"Added 3 items; No items in "_s + f.Inside(u"tree\\notes.txt"_s));
        QCOMPARE(f.Window->PanelText(1), u"2 Items"_s);

        f.Window->AddPath(f.Write(u"self.m3u"_s, "self.m3u\r\ntree\r\n"), false);
        QCOMPARE(f.Window->ListView1.Count(), 6);
        const std::unique_ptr<QMimeData> dragged(f.Window->View()->MakeDragData());
        QCOMPARE(dragged->urls(), (QList<QUrl>{ToUrl(f.Inside(u"tree\\b.wma"_s)), ToUrl(f.Inside(u"gone.mp3"_s))}));
    }

    void LinesCountFromTheListsFolder()
    {
        MainFixture f;
        f.Write(u"lists\\a.wma"_s, "1");
        const QString rooted = f.Inside(u"b.wma"_s).sliced(2);
        f.Write(u"b.wma"_s, "22");
        f.Write(u"lists\\sub\\c.wma"_s, "333");
        const QString list =
            f.Write(u"lists\\l.m3u"_s, EncodeText(u"a.wma\n"_s + rooted + u"\nQ:gone.mp3\n.\\sub/c.wma\n"));
        // Whatever becomes of the current directory while the list is read.
        QTimer::singleShot(0, f.Window.get(), [&f] { SetCurrentDirectory(f.Folder); });
        f.Prompts.ExpectPath({}, list);
        f.Trigger("MFileOpen");
        QCOMPARE(f.Paths().join(u'|'), u"lists\\a.wma|b.wma|q:\\gone.mp3|lists\\sub\\c.wma"_s);
        QCOMPARE(f.Window->PanelText(3), u"8 Bytes"_s);
    }

    void NoSaveGoesToAnAudioFile()
    {
        MainFixture f;
        const QString song = f.Write(u"song.wma"_s, "sound");
        f.Prompts.ExpectPath({}, song);
        f.Trigger("MFileOpen");
        QVERIFY(f.Rows() == u"song" && f.Window->CurrentPlaylistPath.isEmpty());
        f.Prompts.ExpectPath(f.Inside(f.Temporary.path().section(u'/', -1)) + u".m3u", {});
        f.Trigger("MFileSave");
        QCOMPARE(f.Read(u"song.wma"_s), "sound");
    }

    void SessionRowsStaySingle()
    {
        MainFixture f;
        f.Settings[u"SSE/V"_s] = u"1"_s;
        f.Window->RestoreSession({});
        f.Window->AddPath(f.Write(u"live.mp3.wma"_s, "1"), false);
        f.Window->AddPath(f.Write(u"l.m3u"_s, "twice.wav.ogg\n"), false);
        QCOMPARE(f.Rows(), u"live twice twice"_s);
        for (int start = 0; start < 2; ++start) {
            f.Window->PlaylistDirty = false;
            f.Window->close();
            f.Restart();
            f.Window->RestoreSession({});
            QCOMPARE(f.Rows(), u"live twice twice"_s);
        }
    }
};

QTEST_MAIN(MainFileTest)
#include "MainFileTest.moc"
