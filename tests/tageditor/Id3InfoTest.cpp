#include "media/TagBytes.h"
#include "tageditor/SetAttributes.h"

#include "support/HostNames.h"
#include "tageditor/TagEditor.h"

#include <QBuffer>
#include <QComboBox>
#include <QProgressBar>

using namespace Qt::StringLiterals;

namespace
{
QByteArray Encoded(const QColor &colour, const char *format)
{
    QImage image(8, 6, QImage::Format_RGB32);
    image.fill(colour);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    image.save(&buffer, format);
    return bytes;
}

QByteArray VorbisFile()
{
    QByteArray bytes = "\x03vorbis\x1d"_ba + QByteArray(3, '\0') + QByteArray(29, 'v');
    for (const QByteArray &comment :
         {"TITLE=T"_ba, "ARTIST=A"_ba, "ALBUM=L"_ba, "TRACKNUMBER=7"_ba, "ENCODED_USING=E"_ba})
        bytes += static_cast<char>(comment.size()) + QByteArray(3, '\0') + comment;
    bytes += "\x01\x05vorbis";
    return bytes.leftJustified(5000, '\0');
}

const QString failed = u"Failed to update the file!, check that it is not in use or set as Read-Only."_s;

/// The comments of a file, as cells are told.
QStringList Comments(const QString &path)
{
    QStringList list;
    for (const MP3Comment &comment : Tags(path)->Comments().Items())
        list.append(comment.Description + u'|' + comment.Text);
    return list;
}
} // namespace

class Id3InfoTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void ShowsSelections()
    {
        const QMap<QString, const char *> data{{u"One.mp3"_s, "cbr128-mpeg1-joint-info.mp3"},
                                               {u"no.ogg"_s, "zeros-behind-xing.mp3"},
                                               {u"three.wav"_s, "stereo-16bit.wav"}};
        const QString unable = u"Unable to Update/Read files...|Check the item(s) exist and are of the same type."_s;
        const QString none(10, u'|');
        // The selected files; the two lines above and those of the panel.
        const std::pair<QStringList, QString> cases[] = {
            {{u"One.mp3"_s},
             u"One.mp3|File Size: 36,361 bytes|Length: 2.2 Seconds|Version: MPEG 1.0|Encoding: 128 Kbit |Samplerate: "
             "44100 Hz|CRCProtection: No|Copyrighted: No|Original: Yes|Emphasis: None|Mode: Joint Stereo|Layer: III"_s},
            {{u"Two.OGG"_s}, u"Two.OGG|File Size: 5,000 bytes|Title: T|Artist: A|Album: L|Encoded with: E|Track: 7"_s},
            {{u"no.ogg"_s}, u"no.ogg|File Size: 24,222 bytes|Vorbis header not found!|????|????|????|????"_s},
            {{u"three.wav"_s}, u"three.wav|File Size: 44,144 bytes"_s + none},
            {{u"a.mp3"_s, u"b.MP3"_s},
             u"Multiple MP3 Files Selected...|Click 'Paste' then 'Update' to update all items."_s + none},
            {{u"a.ogg"_s, u"b.ogg"_s},
             u"Multiple OGG Files Selected...|Updating OGG files is currenlty unsupported.|||||"_s},
            {{u"a.wav"_s, u"b.wav"_s},
             u"Multiple WAV Files Selected...|Choose a single file to view the file info."_s + none},
            {{u"a.mp3"_s, u"b.wav"_s}, unable},
            {{u"a.mp3"_s, u"gone.mp3"_s}, unable},
        };
        for (const auto &[names, lines] : cases) {
            TagEditor e;
            e.Take(u"before.mp3"_s);
            for (const QString &name : names)
                e.Take(name, data.value(name, "tag-id3v24.mp3"));
            e.F.Write(u"Two.OGG"_s, VorbisFile());
            DeleteFile(e.F.Inside(u"gone.mp3"_s));
            e.Open(names.size() == 1 ? QList<int>{2} : QList<int>{2, 3});
            const char *panel = e.At("FrameMPEGInfo")->isVisible()  ? "^(File|MPEG)Info_"
                                : e.At("FrameOGGInfo")->isVisible() ? "^(File|OGG)Info_"
                                                                    : "^FileInfo_";
            QCOMPARE(e.Texts(panel), lines);
            const bool isMP3 = names.last().endsWith(u".mp3", Qt::CaseInsensitive) && lines != unable;
            QCOMPARE(e.Commands(), isMP3 ? u"Prev Update"_s : u"Prev"_s);
            QCOMPARE(e.At<QTabWidget>("Id3MainTab")->isTabEnabled(2), isMP3);
            QVERIFY(!e.Ticked("ID3v1Present") && !e.Ticked("ID3v2Present") && e.Text("ID3v2Title").isEmpty());
            QVERIFY(!e.Ticked("FileInfoReadOnly") && e.Enabled("FileInfoReadOnly") == (lines != unable));
        }
    }

    void WritesAndSpreadsEveryField()
    {
        TagEditor e;
        const QString path = e.OpenUntagged();
        const QStringList others{e.Take(u"b.mp3"_s, "tag-id3v23.mp3"), e.Take(u"c.mp3"_s, "tag-apev2.mp3")};
        const QByteArray audio = e.F.Read(u"a.mp3"_s);
        QVERIFY(!e.Enabled("ID3v2Title") && !e.Enabled("ID3v2Duplicate") && e.Commands() == u"Update"_s);
        e.Click("ID3v2Present");
        QVERIFY(e.Enabled("ID3v2Title") && e.Enabled("ID3v2Duplicate") && e.Commands() == u"Copy Update"_s);
        e.Click("ID3v1Present");
        QVERIFY(e.Enabled("ID3v1Title") && e.Enabled("ID3v1Duplicate"));
        // Each field gets a text of its own, in all scripts and one of them long.
        QStringList texts;
        for (qsizetype i = 0; i < tagFields.size(); ++i) {
            const QByteArray name = tagFields[i].first;
            const bool isLatin = name.startsWith("ID3v1") || name.endsWith("URL");
            texts.append(QString::number(10 + i) + (name.endsWith("Track") || isLatin ? QString() : scripts[i % 5]));
            texts.last() += name == "ID3v2Lyrics" ? u"\n"_s + QString(40'000, u'x') : QString();
            e.Enter(name.constData(), texts.last());
        }
        QTest::keyClicks(e.At("ID3v1Genre"), u"Polka"_s);
        e.F.Trigger("MEditSeMarkBlue");
        e.F.Window->PlaylistDirty = false;
        e.Click("CmdUpdate");
        QCOMPARE(TagTexts(path), texts + QStringList{u"Polka"_s});
        QVERIFY(e.F.Read(u"a.mp3"_s).contains(audio));
        // The row shows the file as it is now, and is selected; the editor stays where it was.
        const PlaylistItem &row = e.F.Window->ListView1.Item(1);
        QVERIFY(row.Selected && row.Size == e.F.Read(u"a.mp3"_s).size() && !e.F.Window->PlaylistDirty);
        QCOMPARE(e.F.Undoable() + e.F.Window->PanelText(4), u"1 file updated"_s);
        QCOMPARE(e.At<QTabWidget>("Id3MainTab")->currentIndex(), 1);
        QVERIFY(!e.At("ProgressBar1")->isVisible());
        QCOMPARE(e.Form->windowTitle(), u"File Info/Tag Editor... a.mp3"_s);
        QCOMPARE(e.Fields(), texts);

        e.AddImage(e.F.Write(u"cover.bmp"_s, Encoded(Qt::red, "BMP")));
        e.Enter("ID3v2Comment", u"c"_s);
        e.ClickAndGive("ID3v2AddComment", u"Enter description."_s, u"d"_s);
        e.Click("CmdCopy");
        e.ExpectQuestion(PromptAnswer::No);
        e.Click("CmdClose");
        e.Open({2, 3});
        QCOMPARE(e.Commands(), u"Prev Paste Update"_s);
        QCOMPARE(e.Fields().join(QString()) + e.Text("ID3v1Genre"), QString());
        e.Click("CmdPaste");
        QVERIFY(e.Ticked("ID3v1Present") && e.Ticked("ID3v2Present") && e.Enabled("ID3v2Title"));
        QCOMPARE(e.Commands(), u"Prev Copy Paste Update"_s);
        QCOMPARE(e.Fields(), texts);
        e.Click("CmdUpdate");
        for (const QString &other : others) {
            QCOMPARE(TagTexts(other), texts + QStringList{u"Polka"_s});
            QCOMPARE(Comments(other), QStringList{u"d|c"_s});
            QCOMPARE(Tags(other)->Images().Count(), 1);
        }
        QCOMPARE(e.F.Rows(), u"a B C"_s);
        QVERIFY(Comments(path).isEmpty());
        // A tag that was not ticked at the copy is not ticked by a paste either.
        e.Open({1});
        e.Click("ID3v2Present");
        e.Click("CmdCopy");
        e.Reset();
        e.Click("CmdPaste");
        QVERIFY(e.Ticked("ID3v1Present") && !e.Ticked("ID3v2Present"));
        QVERIFY(!e.Text("ID3v1Title").isEmpty() && e.Text("ID3v2Title").isEmpty());
    }

    void AsksBeforeChangesAreLost()
    {
        TagEditor e;
        for (const QString &name : {u"a.mp3"_s, u"b.mp3"_s, u"c.mp3"_s})
            e.Take(name);
        const QString path = e.F.Inside(u"b.mp3"_s);
        MP3File file;
        file.ReadTags(path, false);
        file.Images().Add(e.F.Write(u"a.bmp"_s, Encoded(Qt::red, "BMP")), {});
        file.Comments().Add(u"c"_s, u"d"_s);
        file.SetGenre(17);
        file.WriteTags(path, MP3File::TagChange::Write, MP3File::TagChange::Write);
        const QByteArray before = e.F.Read(u"b.mp3"_s);
        e.Open({2});
        // What was changed back is nothing to ask about.
        e.Click("ID3v1Present");
        e.Enter("ID3v2Title", e.Text("ID3v2Title"));
        e.Click("ID3v1Present");
        e.Click("CmdNext");
        e.Click("CmdPrev");
        // A key enters a text, clicks a button that leads nowhere else, or changes the genre.
        for (const char *field : {"ID3v1Present", "ID3v2Present", "ID3v2RemoveComment", "ID3v2ImageRemove",
                                  "ID3v1Genre", "ID3v1Comment", "ID3v2Genre", "ID3v2Lyrics", "ID3v2Mood"}) {
            const QStringList texts = e.Fields();
            if (e.At<QAbstractButton>(field) != nullptr)
                e.Click(field);
            else
                QTest::keyClick(e.Reach(field), Qt::Key_A);
            const QStringList changed = e.Fields();
            for (const char *way : {"CmdNext", "CmdPrev", "CmdRefresh", "CmdClose", "Escape", "Cross"}) {
                e.ExpectQuestion(PromptAnswer::Cancel);
                if (QByteArrayView(way) == "Escape")
                    QTest::keyClick(e.Form, Qt::Key_Escape);
                else if (QByteArrayView(way) == "Cross")
                    e.Form->close();
                else
                    e.Click(way);
            }
            QVERIFY(e.Form->isVisible() && e.F.Prompts.IsEmpty());
            QCOMPARE(e.Fields(), changed);
            e.Reset();
            QCOMPARE(e.Fields(), texts);
        }
        e.Enter("ID3v2Title", u"lost"_s);
        e.ExpectQuestion(PromptAnswer::No);
        QTest::keyClick(e.Form, Qt::Key_Escape);
        QVERIFY(!e.Form->isVisible() && e.F.Read(u"b.mp3"_s) == before);
        e.Open({2});
        e.Enter("ID3v2Title", u"kept"_s);
        e.ExpectQuestion(PromptAnswer::Yes);
        e.Click("CmdNext");
        QCOMPARE(e.Text("FileInfo_0"), u"c.mp3"_s);
        QCOMPARE(Tags(path)->GetFrame("TIT2"), u"kept"_s);
        // What could not be written goes no further.
        e.Open({2});
        e.Enter("ID3v2Title", u"lost"_s);
        QVERIFY(SetFileAttributes(path, AttributeReadOnly));
        e.ExpectQuestion(PromptAnswer::Yes);
        e.ClickAndRead("CmdPrev", failed);
        QCOMPARE(e.Text("FileInfo_0") + e.Text("ID3v2Title"), u"b.mp3lost"_s);
        QVERIFY(e.Ticked("FileInfoReadOnly"));
        // The end of the host's session asks as well, and waits for an answer.
        bool ends = true;
        e.F.Prompts.Meanwhile = [&] { ends = e.F.Window->EndWithHost(true); };
        e.ExpectQuestion(PromptAnswer::Cancel);
        e.Click("CmdClose");
        QVERIFY(!ends);
        e.F.Prompts.Meanwhile = [] {};
        e.ExpectQuestion(PromptAnswer::Cancel);
        QVERIFY(!e.F.Window->EndWithHost(true) && e.Form->isVisible());
        // What was entered waits for a second try.
        SetFileAttributes(path, AttributeNormal);
        e.Click("CmdUpdate");
        QCOMPARE(Tags(path)->GetFrame("TIT2"), u"lost"_s);
        // Of several files the question speaks in the plural.
        e.Open({1, 3});
        e.Click("ID3v1Present");
        const QString question = u"The tags have been changed. Do you want to update the files first?"_s;
        e.ClickAndRead("CmdClose", question, PromptAnswer::Yes);
        QVERIFY(!e.Form->isVisible());
        QCOMPARE(Kinds(e.F.Inside(u"a.mp3"_s)) + Kinds(e.F.Inside(u"c.mp3"_s)), u"11"_s);
    }

    void UnreadTagsStay()
    {
        if (!NamesHoldAnything())
            QSKIP("A file that is there and cannot be opened is made of a link to a device");
        TagEditor e;
        QFile::link(u"/dev/null"_s, ToHostPath(e.F.Inside(u"x.mp3"_s)));
        e.F.Window->AddFile(e.F.Inside(u"x.mp3"_s), 0);
        e.Take(u"b.mp3"_s);
        e.Open({1});
        QCOMPARE(e.Commands() + e.Text("lbLostTags"), u"NextThe tags of this file could not be read."_s);
        QVERIFY(!e.Enabled("ID3v1Present") && !e.Enabled("ID3v2Present"));
        e.Click("CmdNext");
        QCOMPARE(e.Commands() + e.Text("lbLostTags"), u"Prev Copy Update"_s);
        e.Click("ID3v1Present");
        e.Click("CmdCopy");
        e.Click("CmdUpdate");
        e.Click("CmdPrev");
        QCOMPARE(e.Commands(), u"Next"_s);
    }

    void ChangedFilesStay()
    {
        TagEditor e;
        const QString path = e.OpenUntagged();
        e.Click("ID3v2Present");
        e.Enter("ID3v2Title", u"mine"_s);
        MP3File theirs;
        theirs.SetFrame("TPE1", u"theirs"_s);
        theirs.WriteID3v2(path);
        const QByteArray before = e.F.Read(u"a.mp3"_s);
        e.ClickAndRead("CmdUpdate", failed);
        QVERIFY(e.F.Prompts.LastDetails.endsWith(u"was changed meanwhile.") && e.F.Read(u"a.mp3"_s) == before);
        // Who has been told may do it all the same.
        QCOMPARE(e.Text("ID3v2Title"), u"mine"_s);
        e.Click("CmdUpdate");
        QCOMPARE(Tags(path)->GetFrame("TIT2"), u"mine"_s);
        // A disk that is away for a moment takes nothing of what was entered with it.
        e.Enter("ID3v2Title", u"again"_s);
        const QString away = e.F.Inside(u"away"_s);
        QVERIFY(RenameFile(path, away));
        e.ClickAndRead("CmdUpdate", failed);
        QVERIFY(RenameFile(away, path));
        e.Click("CmdUpdate");
        QCOMPARE(Tags(path)->GetFrame("TIT2"), u"again"_s);
    }

    void SecondClicksUpdateNothing()
    {
        TagEditor e;
        const QString path = e.Take(u"a.mp3"_s, "tag-id3v23.mp3");
        const QString other = e.Take(u"b.mp3"_s, "tag-id3v1.mp3");
        e.Open({1});
        e.Click("CmdCopy");
        e.Open({1, 2});
        e.Click("CmdPaste");
        e.Click("CmdUpdate");
        e.PressOn("CmdUpdate", Qt::Key_U);
        QVERIFY(!e.Text("lbLostTags").isEmpty());
        QCOMPARE(Kinds(path) + Kinds(other), u"22"_s);
        // What is meant takes the tags away.
        QTest::keyClick(e.Form, Qt::Key_U, Qt::AltModifier);
        QTRY_COMPARE(Kinds(path) + Kinds(other), QString());
    }

    void TypedCommentsAreTaken()
    {
        TagEditor e;
        const QString path = e.OpenUntagged();
        e.Click("ID3v2Present");
        e.Enter("ID3v2Comment", u"first"_s);
        const QByteArray before = e.F.Read(u"a.mp3"_s);
        e.ClickAndGive("CmdUpdate", u"Enter description."_s, {});
        QVERIFY(e.F.Read(u"a.mp3"_s) == before && e.Text("ID3v2Comment") == u"first");
        e.ClickAndGive("CmdUpdate", u"Enter description."_s, u"1"_s);
        e.Enter("ID3v2Comment", u"new"_s);
        e.ClickAndGive("ID3v2AddComment", u"Enter description."_s, u"2"_s);
        // It is the one that was added last which is corrected.
        e.Enter("ID3v2Comment", u"second"_s);
        e.ExpectQuestion(PromptAnswer::Yes);
        e.Click("CmdClose");
        QString told;
        for (const MP3Comment &comment : Tags(path)->Comments().Items())
            told += comment.Description + comment.Text;
        QCOMPARE(told, u"1first2second"_s);

        // What is typed over one stays its text when another one is shown, copied in or taken away.
        const auto listed = [&e] { return e.Cells("ID3v2LstComments").join(u' '); };
        e.Open({1});
        e.Enter("ID3v2Comment", u"one"_s);
        e.SelectRow("ID3v2LstComments", 1);
        e.Enter("ID3v2Comment", u"two"_s);
        QTest::keyClick(e.At("ID3v2LstComments"), Qt::Key_Up);
        QCOMPARE(listed() + e.Text("ID3v2Comment"), u"1|one 2|twoone"_s);
        e.Enter("ID3v2Comment", u"one!"_s);
        e.SelectRow("ID3v2LstComments", 0);
        QCOMPARE(listed() + e.Text("ID3v2Comment"), u"1|one! 2|twoone!"_s);
        e.Enter("ID3v2Comment", u"uno"_s);
        e.Click("ID3v1Present");
        e.Enter("ID3v1Comment", u"old"_s);
        e.Click("ID3v1Duplicate");
        e.Click("ID3v2RemoveComment");
        QCOMPARE(listed() + e.Text("ID3v2Comment"), u"1|uno 2|twotwo"_s);
        e.Enter("ID3v2Comment", u"due"_s);
        e.Click("CmdCopy");
        e.Click("CmdPaste");
        QCOMPARE(listed(), u"1|uno 2|due"_s);
    }

    void TellsWhatTagsGo()
    {
        TagEditor e;
        const QStringList paths{e.Take(u"a.mp3"_s), e.Take(u"b.mp3"_s, "tag-id3v23.mp3"),
                                e.Take(u"c.mp3"_s, "tag-apev2.mp3")};
        for (int i = 0; i < 20; ++i)
            e.Take(u"d%1.mp3"_s.arg(i), "tag-id3v1.mp3");
        e.Open({2});
        e.Click("ID3v2Present");
        QVERIFY(e.Text("lbLostTags").isEmpty() && !e.Enabled("CmdCopy"));
        e.Open({1, 2, 3});
        QCOMPARE(e.Text("lbLostTags"), u"Update removes the ID3v1 tag of 1 file and the ID3v2 tag of 2 files."_s);
        e.Click("ID3v1Present");
        QCOMPARE(e.Text("lbLostTags"), u"Update removes the ID3v2 tag of 2 files."_s);
        e.Click("ID3v2Present");
        QCOMPARE(e.Text("lbLostTags"), QString());
        e.Click("ID3v1Present");
        QCOMPARE(e.Text("lbLostTags"), u"Update removes the ID3v1 tag of 1 file."_s);
        QVERIFY(!e.Enabled("ID3v1Title") && e.Enabled("CmdCopy"));
        e.Click("CmdUpdate");
        QCOMPARE(Kinds(paths[0]) + Kinds(paths[1]) + Kinds(paths[2]), u"222"_s);
        QCOMPARE(e.Text("lbLostTags"), u"Update removes the ID3v2 tag of 3 files."_s);
        e.Click("CmdUpdate");
        QCOMPARE(Kinds(paths[0]) + Kinds(paths[1]) + Kinds(paths[2]) + e.Text("lbLostTags"), QString());
        // Many are counted a few at a time.
        QList<int> rows(20);
        std::iota(rows.begin(), rows.end(), 4);
        e.Open(rows);
        QCOMPARE(e.Text("lbLostTags"), u"Update removes the ID3v1 tag of 16 files so far."_s);
        QTRY_COMPARE(e.Text("lbLostTags"), u"Update removes the ID3v1 tag of 20 files."_s);
        e.Click("CmdClose");
        e.Open(rows);
        e.Click("CmdClose");
        QCoreApplication::processEvents();
        QCOMPARE(e.Text("lbLostTags"), u"Update removes the ID3v1 tag of 16 files so far."_s);
    }

    void TellsWhatCouldNotBeWritten()
    {
        TagEditor e;
        const QString good = e.Take(u"good.mp3"_s);
        const QString locked = e.Take(u"locked.mp3"_s);
        e.Take(u"damaged.mp3"_s, "tag-beyond-end.mp3");
        const QString gone = e.Take(u"gone.mp3"_s);
        QList<int> rows{1, 2, 3, 4};
        for (int i = 0; i < 25; ++i) {
            QVERIFY(SetFileAttributes(e.Take(u"x%1.mp3"_s.arg(i)), AttributeReadOnly));
            rows.append(5 + i);
        }
        const auto contents = [&e] { return QByteArrayList{e.F.Read(u"locked.mp3"_s), e.F.Read(u"damaged.mp3"_s)}; };
        const QByteArrayList before = contents();
        QVERIFY(SetFileAttributes(locked, AttributeReadOnly));
        e.Open(rows);
        QVERIFY(DeleteFile(gone));
        e.ClickAndRead("CmdUpdate",
                       u"Some files could not be updated!, check that they are not in use or set as Read-Only."_s);
        static const QRegularExpression reasons(
            u"\\Alocked.mp3: the file is read-only\ndamaged.mp3: .+ holds, so it is not written over.\ngone.mp3: "
            "(.+\n){21}x20.mp3: the file is read-only\nand 4 more\\z"_s);
        QVERIFY2(e.F.Prompts.LastDetails.contains(reasons), qPrintable(e.F.Prompts.LastDetails));
        QCOMPARE(Kinds(good), QString()); // Nothing was pasted, so both of its tags go.
        QVERIFY(e.F.Window->ListView1.Item(4).Ghosted);
        QCOMPARE(e.Text("FileInfo_0"), u"Unable to Update/Read files..."_s);
        e.Open({3});
        e.ClickAndRead("CmdUpdate", failed);
        QCOMPARE(contents(), before);
        for (const int row : rows)
            SetFileAttributes(e.F.Window->ListView1.Item(row).FullPath(), AttributeNormal);
    }

    void EscapeEndsAnUpdate()
    {
        TagEditor e;
        const QStringList paths{e.Take(u"a.mp3"_s), e.Take(u"b.mp3"_s), e.Take(u"c.mp3"_s)};
        e.Open({1, 2, 3});
        e.Click("ID3v1Present");
        e.Enter("ID3v1Title", u"New"_s);
        e.F.StopAt(u"33%"_s);
        e.Click("CmdUpdate");
        QCOMPARE(e.F.Window->PanelText(4), u"Stopped: 1 file updated"_s);
        QCOMPARE(Kinds(paths[0]) + u' ' + Kinds(paths[1]) + u' ' + Kinds(paths[2]), u"1 12 12"_s);
        // What was entered is not lost: a second click goes on.
        e.Click("CmdUpdate");
        for (const QString &path : paths)
            QCOMPARE(Tags(path)->Title() + Kinds(path), u"New1"_s);
        QCOMPARE(e.F.Rows() + e.F.Window->PanelText(4), u"A B C3 files updated"_s);
    }

    void DescribedFramesStayInTheirFile()
    {
        TagEditor e;
        const auto take = [&e](const QString &name, const QByteArray &frames) {
            e.F.Window->AddFile(e.F.Write(name, Tag(3, Frames(3, frames)) + QByteArray(2000, 'x')), 0);
        };
        take(u"a.mp3"_s, "TXXX~gain~-7 dB|USLT~engwords~la");
        take(u"b.mp3"_s, "TXXX~id~one|WXXX~shop~http://s");
        take(u"c.mp3"_s, "TIT2~c");
        const auto user = [&e](const QString &name) { return Tags(e.F.Inside(name))->GetFrame("TXXX"); };
        e.Open({1});
        QCOMPARE(e.Text("ID3v2UserText") + e.Text("ID3v2Lyrics"), u"-7 dBla"_s);
        e.Click("CmdCopy");
        e.Open({2, 3});
        e.Click("CmdPaste");
        QCOMPARE(e.Text("ID3v2UserText"), QString());
        e.Click("CmdUpdate");
        QCOMPARE(user(u"b.mp3"_s) + user(u"c.mp3"_s), u"one"_s);
        QVERIFY(e.F.Read(u"b.mp3"_s).contains("http://s"));
        // What is typed over the shown text changes that frame, and means the other one elsewhere.
        e.Open({2});
        e.Enter("ID3v2UserText", u"two"_s);
        e.Click("CmdUpdate");
        QVERIFY(e.F.Read(u"b.mp3"_s).contains(Frames(3, "TXXX~id~two")));
        e.Enter("ID3v2UserText", u"own"_s);
        e.Click("CmdCopy");
        e.Open({1});
        e.Click("CmdPaste");
        e.Click("CmdUpdate");
        QCOMPARE(e.Text("ID3v2UserText"), u"own"_s);
        QVERIFY(e.F.Read(u"a.mp3"_s).contains(Frames(3, "TXXX~gain~-7 dB")));
        e.Open({2});
        e.Enter("ID3v2UserText", {});
        e.Click("CmdUpdate");
        QVERIFY(!e.F.Read(u"b.mp3"_s).contains("TXXX"));
    }

    void DuplicatesTags()
    {
        TagEditor e;
        const QString path = e.OpenUntagged();
        QVERIFY(!e.Enabled("ID3v1Duplicate"));
        e.Click("ID3v1Present");
        for (const char *field : {"Title", "Artist", "Album", "Year", "Comment"})
            e.Enter(QByteArray("ID3v1"_ba + field).constData(), QLatin1StringView(field));
        e.Enter("ID3v1Track", u"9"_s);
        QTest::keyClicks(e.At("ID3v1Genre"), u"Jazz"_s);
        e.Click("ID3v1Duplicate");
        e.Click("ID3v1Duplicate");
        e.Enter("ID3v1Comment", {});
        e.Click("ID3v1Duplicate"); // An empty comment adds none.
        QVERIFY(e.Ticked("ID3v2Present") && e.Enabled("ID3v2Title"));
        const char *fields = "^ID3v2(Title|Artist|Album|Track|Genre|Year)$";
        QCOMPARE(e.Texts(fields), u"Title|Artist|Album|9|Jazz|Year"_s);
        QCOMPARE(e.Text("ID3v2Comment"), u"Comment"_s);
        e.Click("CmdUpdate");
        QCOMPARE(Comments(path), (QStringList{u"|Comment"_s, u"|Comment"_s}));

        // Back again: track, genre, what the other tag then says.
        const std::tuple<QString, QString, QString> cases[] = {
            {u"/12"_s, u"nothing known"_s, u"T|R|L|9|Jazz|2001|Comment"_s},
            {u"x/12"_s, QString(), u"T|R|L|9|Jazz|2001|Comment"_s},
            {u"12"_s, u"blues"_s, u"T|R|L|12|Blues|2001|Comment"_s},
            {u"3/12"_s, u"Hard Rock"_s, u"T|R|L|3|Rock|2001|Comment"_s},
        };
        e.Enter("ID3v2Title", u"T"_s);
        e.Enter("ID3v2Artist", u"R"_s);
        e.Enter("ID3v2Album", u"L"_s);
        e.Enter("ID3v2Year", u"2001"_s);
        e.Click("ID3v1Present");
        for (const auto &[track, genre, texts] : cases) {
            e.Enter("ID3v2Track", track);
            e.Enter("ID3v2Genre", genre);
            e.Click("ID3v2Duplicate");
            QCOMPARE(e.Texts("^ID3v1(Title|Artist|Album|Track|Genre|Year|Comment)$"), texts);
            QVERIFY(e.Ticked("ID3v1Present") && e.Enabled("ID3v1Title"));
            e.Enter("ID3v1Comment", {});
        }
    }

    void KeepsAListOfComments()
    {
        TagEditor e;
        const QString path = e.OpenUntagged();
        e.Click("ID3v2Present");
        QVERIFY(!e.Enabled("ID3v2RemoveComment") && !e.Enabled("ID3v2EditComment"));
        e.Click("ID3v2AddComment"); // An empty text asks nothing.
        for (const QString &answer : {QString(), u"one"_s, u"two"_s, u"three"_s}) {
            e.Enter("ID3v2Comment", answer.isEmpty() ? u"lost"_s : answer.toUpper());
            e.ClickAndGive("ID3v2AddComment", u"Enter description."_s, answer);
            QVERIFY(answer.isEmpty() || e.Form->focusWidget() == e.At("ID3v2Comment"));
        }
        QCOMPARE(e.Cells("ID3v2LstComments"), (QStringList{u"one|ONE"_s, u"two|TWO"_s, u"three|THREE"_s}));
        // The first one is selected, but its text does not show yet.
        e.SelectRow("ID3v2LstComments", 0);
        QCOMPARE(e.Text("ID3v2Comment"), u"ONE"_s);
        e.SelectRow("ID3v2LstComments", 1);
        QCOMPARE(e.Text("ID3v2Comment"), u"TWO"_s);
        e.Enter("ID3v2Comment", u"Zwei\nDrei"_s);
        e.Click("ID3v2EditComment");
        e.SelectRow("ID3v2LstComments", 2);
        e.Click("ID3v2RemoveComment");
        QCOMPARE(e.Text("ID3v2Comment"), u"Zwei\nDrei"_s);
        e.Click("CmdUpdate");
        QCOMPARE(Comments(path), (QStringList{u"one|ONE"_s, u"two|Zwei\nDrei"_s}));
        QCOMPARE(e.Text("ID3v2Comment"), u"ONE"_s);
        QCOMPARE(e.Cells("ID3v2LstComments"), (QStringList{u"one|ONE"_s, u"two|Zwei Drei"_s}));
        e.Click("ID3v2RemoveComment");
        QCOMPARE(e.Text("ID3v2Comment"), u"Zwei\nDrei"_s);
        for (int i = 0; i < 2; ++i)
            e.Click("ID3v2RemoveComment");
        QVERIFY(e.Cells("ID3v2LstComments").isEmpty() && e.Text("ID3v2Comment").isEmpty());
        QVERIFY(e.Enabled("ID3v2RemoveComment") && e.Enabled("ID3v2EditComment"));
        e.Click("ID3v2EditComment");
        e.Reset(); // Nothing was written.
        QCOMPARE(e.Cells("ID3v2LstComments").size(), 2);
    }

    void KeepsPicturesAndTexts()
    {
        const QByteArray gif = QByteArray::fromBase64("R0lGODlhAQABAIAAAP8AAP///yH5BAAAAAAALAAAAAABAAEAAAICRAEAOw==");
        TagEditor e;
        const QString path = e.OpenUntagged();
        MP3File file;
        file.Images().Add(e.F.Write(u"odd"_s, "no picture"), u"odd"_s);
        file.SetFrame("USLT", u"one\r\ntwo\rthree\u2028four"_s);
        file.SetFrame("TIT2", u"up\r\ndown"_s);
        file.SetTempo(u"a\nb"_s);
        file.Comments().Add(u"x\r\ny"_s, u"d"_s);
        file.WriteID3v2(path);
        e.Click("CmdRefresh");
        const QByteArray before = e.F.Read(u"a.mp3"_s);
        e.Click("CmdUpdate"); // What nobody touched stays as it is.
        QCOMPARE(e.F.Read(u"a.mp3"_s), before);
        e.Click("ID3v2ImageSave"); // What is no picture is neither saved nor opened.
        e.Click("ID3v2ImageOpen");
        e.AddImage(e.F.Write(u"a.gif"_s, gif));
        e.AddImage(e.F.Write(u"b.JPG"_s, Encoded(Qt::blue, "JPG")));
        e.AddImage(e.F.Write(u"c.bmp"_s, Encoded(Qt::green, "BMP")));
        e.AddImage(e.F.Write(u"d.bmp"_s, "no picture")); // Nothing is added, nothing is told.
        const QStringList rows = e.Cells("ID3v2LstImages");
        QCOMPARE(rows.size(), 4);
        QVERIFY(rows[0].startsWith(u"odd|10 Bytes|") && rows[2].endsWith(u"|image/JPG"));
        const auto shown = [&e] {
            const QImage image = e.At("ID3v2Image")->grab().toImage();
            return image.pixelColor(image.rect().center());
        };
        QCOMPARE(shown(), QColor(Qt::green));
        e.SelectRow("ID3v2LstImages", 1);
        QCOMPARE(shown(), QColor(Qt::red));

        const QString taken = e.F.Inside(u"a.gif"_s);
        e.ClickAndGive("ID3v2ImageSave", QString(), taken, ShownPath(taken) + u" exists, do you want to replace it?",
                       PromptAnswer::No);
        QCOMPARE(e.F.Read(u"a.gif"_s), gif);
        e.ClickAndGive("ID3v2ImageSave", QString(), e.F.Inside(u"new.bmp"_s));
        e.ClickAndGive("ID3v2ImageSave", QString(), e.F.Inside(u"no folder\\new.bmp"_s), u"Could not save the file!"_s);
        QCOMPARE(QImage::fromData(e.F.Read(u"new.bmp"_s), "BMP").pixelColor(0, 0), QColor(Qt::red));
        e.Click("ID3v2ImageOpen");
        const QString temporary = e.F.Inside(u"app\\tmp.bmp"_s);
        QCOMPARE(e.F.ShellCalls, QStringList{u"open "_s + temporary});
        QVERIFY(PathExists(temporary));

        e.SelectRow("ID3v2LstImages", 2);
        e.Click("ID3v2ImageRemove");
        QCOMPARE(shown(), QColor(Qt::red));
        e.Click("CmdUpdate");
        QVERIFY(!PathExists(temporary));
        const QList<MP3Image> images = Tags(path)->Images().Items();
        QCOMPARE(images.size(), 3);
        QCOMPARE(images[0].Data, QByteArray("no picture"));
        QVERIFY(images[1].Data.startsWith("BM") && images[1].MIMEType == u"image/bmp"_s);
        QCOMPARE(images[2].Data, e.F.Read(u"c.bmp"_s));
        // A picture stays what it shows, and becomes the front cover only when it is new and the first.
        QVERIFY(images[1].Type == 0 && Tags(path)->Images().Count() == 3);
        file.Images().Add(taken, u"back"_s, 4);
        file.WriteID3v2(path);
        e.Click("CmdRefresh");
        e.Click("CmdUpdate");
        QVERIFY(Tags(path)->Images().Items()[0].Type == 3);
        QVERIFY(Tags(path)->Images().Items()[1].Type == 4 && Tags(path)->Images().Item(2).Data.startsWith("BM"));
        // A copy that fails is no copy.
        e.Click("CmdCopy");
        QVERIFY(e.Enabled("CmdPaste") && EnsureFolder(temporary));
        e.ClickAndRead("CmdCopy",
                       u"a picture could not be handed over: "_s + ShownPath(temporary) + u" cannot be written");
        QVERIFY(!e.Enabled("CmdPaste"));
        for (int i = 0; i < 2; ++i)
            e.Click("ID3v2ImageRemove");
        QVERIFY(shown() != QColor(Qt::red) && shown() != QColor(Qt::green));
        e.Click("ID3v2ImageOpen");
        QCOMPARE(e.F.ShellCalls.size(), 1);
    }

    void OddNumbersHarmNothing()
    {
        TagEditor e;
        const QString path = e.OpenUntagged();
        e.Click("ID3v1Present");
        QTest::keyClicks(e.At("ID3v1Track"), u"1a-2 "_s);
        QTest::keyClick(e.At("ID3v1Track"), Qt::Key_Backspace);
        QCOMPARE(e.Text("ID3v1Track"), u"12"_s);
        QTest::keyClick(e.At("ID3v1Track"), Qt::Key_Home);
        QTest::keyClick(e.At("ID3v1Track"), Qt::Key_Delete);
        QCOMPARE(e.Text("ID3v1Track"), u"2"_s);
        e.Enter("ID3v1Track", u"x2 5٣5y"_s);
        QCOMPARE(e.Text("ID3v1Track"), u"255"_s);
        e.Click("CmdUpdate");
        QCOMPARE(int(Tags(path)->Track()), 0);
        QCOMPARE(int(Tags(path)->Genre()), 254);
        e.Enter("ID3v1Track", u"1"_s);
        e.Click("CmdUpdate");
        QCOMPARE(int(Tags(path)->Track()), 1);
        const QByteArray before = e.F.Read(u"a.mp3"_s);
        e.Enter("ID3v1Title", u"kept"_s);
        e.Enter("ID3v1Track", u"32768"_s);
        e.ClickAndRead("CmdUpdate", u"The track number is too large: a tag holds numbers from 1 to 254.\n"
                                    "Nothing has been changed."_s);
        QCOMPARE(e.F.Read(u"a.mp3"_s), before);
        QCOMPARE(e.Text("ID3v1Title"), u"kept"_s);
        // A genre that has no name leaves the list on the one before.
        e.F.Write(u"a.mp3"_s, QByteArray(before).replace(before.size() - 1, 1, "\xC8"));
        QTest::keyClicks(e.At("ID3v1Genre"), u"Polka"_s);
        e.Reset();
        QCOMPARE(e.Text("ID3v1Genre"), u"Polka"_s);
        // It stays until another one is chosen, though it be the one that is shown.
        for (const int genre : {0xC8, 75}) {
            e.Enter("ID3v1Title", QString::number(genre));
            e.Click("CmdUpdate");
            QCOMPARE(Tags(path)->Title() + QString::number(Tags(path)->Genre()), QString::number(genre).repeated(2));
            Q_EMIT e.At<QComboBox>("ID3v1Genre")->activated(e.At<QComboBox>("ID3v1Genre")->currentIndex());
        }
    }

    void StepsThroughTheList()
    {
        TagEditor e;
        for (const QString &name : {u"a.mp3"_s, u"b.mp3"_s, u"c.wav"_s, u"d.mp3"_s})
            e.Take(name);
        e.Open({2, 3});
        e.Click("CmdPrev");
        QCOMPARE(e.F.Rows(), u"A b c d"_s);
        QCOMPARE(e.Text("FileInfo_0"), u"a.mp3"_s);
        QCOMPARE(e.Commands(), u"Next Copy Update"_s);
        e.Page(2);
        e.InnerPage(1);
        e.Click("CmdNext");
        QCOMPARE(e.F.Rows(), u"a B c d"_s);
        QVERIFY(e.At("ID3v2LstComments")->isVisible());
        e.Page(2); // A click goes back to the first inner page.
        QVERIFY(e.At("ID3v2Title")->isVisible());
        e.Click("CmdNext");
        QVERIFY(e.At("FileInfo_0")->isVisible());
        e.Click("CmdNext");
        QCOMPARE(e.Commands(), u"Prev Copy Update"_s);
        e.Click("CmdListen");
        QCOMPARE(e.F.ShellCalls, QStringList{u"open "_s + e.F.Inside(u"app\\tmp.m3u"_s)});
    }

    void AttributesActAtOnce()
    {
        TagEditor e;
        const QStringList paths{e.Take(u"a.mp3"_s), e.Take(u"b.mp3"_s)};
        constexpr int all = AttributeReadOnly | AttributeArchive | AttributeSystem | AttributeHidden;
        if (!SetFileAttributes(paths[0], all) || !SetFileAttributes(paths[1], AttributeNormal))
            QSKIP("The file system of the temporary folder keeps no extended attributes");
        // A host without a clearable archive attribute is asked for the others only.
        const int kept = FileAttributes(paths[1]) & AttributeArchive;
        // Attributes before, requests, attributes after.
        const std::tuple<int, AttributeRequests, int> cases[] = {
            {all, {.Archive = u"CLR"_s, .Hidden = u"CLR"_s}, AttributeReadOnly | AttributeSystem},
            {AttributeHidden, {u"SET"_s, u"SET"_s, u"SET"_s, u"SET"_s, u"CLR"_s}, all & ~AttributeHidden},
            {AttributeReadOnly, {u"CLR"_s, u"CLR"_s, u"CLR"_s, u"CLR"_s, u"CLR"_s}, AttributeNormal},
        };
        for (const auto &[before, requests, after] : cases) {
            QVERIFY(SetFileAttributes(paths[0], before) && SetAttributes(paths[0], requests));
            QCOMPARE(FileAttributes(paths[0]) & ~kept, kept == 0 ? after : after & ~(kept | AttributeNormal));
        }
        // The two boxes, each for its own attribute; the others stay.
        constexpr int others = AttributeSystem | AttributeHidden;
        SetFileAttributes(paths[0], others);
        for (const char *box : {"FileInfoReadOnly", "FileInfoArchive"}) {
            const bool isArchive = QByteArrayView(box) == "FileInfoArchive";
            const int attribute = isArchive ? AttributeArchive & ~kept : AttributeReadOnly;
            const auto held = [&paths](int file) { return FileAttributes(paths[file]) & ~AttributeNormal; };
            const auto state = [&] { return e.At<QCheckBox>(box)->checkState(); };
            if (attribute == 0)
                continue;
            e.Open({1});
            e.Click(box);
            QCOMPARE(state(), Qt::Checked);
            e.Open({1, 2});
            QCOMPARE(state(), Qt::PartiallyChecked);
            QVERIFY(held(0) == (others | attribute | kept) && held(1) == kept);
            e.Click(box);
            QCOMPARE(state(), Qt::Checked);
            QVERIFY(held(0) == (others | attribute | kept) && held(1) == (attribute | kept));
            e.Click(box);
            QCOMPARE(state(), Qt::Unchecked);
            QVERIFY(held(0) == (others | kept) && held(1) == kept);
        }
        // What could not be changed is shown as it is.
        DeleteFile(paths[0]);
        e.F.Trigger("MEditSeMarkBlue");
        e.Click("FileInfoReadOnly");
        QCOMPARE(e.F.Undoable(), QString());
        QCOMPARE(e.At<QCheckBox>("FileInfoReadOnly")->checkState(), Qt::PartiallyChecked);
        SetFileAttributes(paths[1], AttributeNormal);
    }

    void DoubleClicks()
    {
        TagEditor e;
        e.Take(u"SLOW (live) harbour.MP3"_s);
        e.Take(u"b.mp3"_s);
        e.Open({1});
        for (const char *title : {"ID3v1Title", "ID3v2Title"}) {
            e.DoubleClick(title);
            QCOMPARE(e.Text(title), u"Slow (live) Harbour"_s);
        }
        for (const QString &address : {QString(), u"vantrel.example"_s, u"x:http://y"_s, u" http://z "_s, u"  "_s}) {
            e.Enter("ID3v2URL", address);
            e.DoubleClick("ID3v2URL");
        }
        e.Enter("ID3v2ArtistURL", u"artist"_s);
        e.DoubleClick("ID3v2ArtistURL");
        for (const char *comment : {"ID3v1Comment", "ID3v2Comment"}) {
            e.Enter(comment, {});
            e.DoubleClick(comment);
            e.Enter(comment, u"a b&c"_s);
            e.DoubleClick(comment);
        }
        const QString search = u"browse https://search.vantrel.example/search?hl=en&q=a b&c"_s;
        QCOMPARE(e.F.ShellCalls, (QStringList{u"browse http://vantrel.example"_s, u"browse x:http://y"_s,
                                              u"browse http://z"_s, u"browse http://artist"_s, search, search}));
        // Only a left button asks for it, and several files have no name to take.
        QTest::mouseDClick(e.Reach("ID3v2URL"), Qt::RightButton);
        e.Open({1, 2});
        e.Click("ID3v2Present");
        e.DoubleClick("ID3v2Title");
        QCOMPARE(e.Text("ID3v2Title"), QString());
        QCOMPARE(e.F.ShellCalls.size(), 6);
    }

    void IsPlainToSee()
    {
        TagEditor e;
        e.OpenUntagged();
        const QPalette palette = e.At("ID3v1Title")->palette();
        QCOMPARE(palette.color(QPalette::Disabled, QPalette::Base), palette.color(QPalette::Active, QPalette::Button));
        // The two plain pages, then those within the third.
        for (int page = 0; page < 7; ++page) {
            e.Page(std::min(page, 2));
            if (page > 2)
                e.InnerPage(page - 2);
            QMap<QString, QString> taken;
            const auto take = [&taken](const QString &caption) {
                const QString key = QKeySequence::mnemonic(caption).toString();
                QVERIFY2(key.isEmpty() || !taken.contains(key), qPrintable(caption + u" and " + taken[key]));
                taken[key] = caption;
            };
            for (const auto *widget : e.Form->findChildren<QWidget *>()) {
                const auto *tabs = qobject_cast<const QTabWidget *>(widget);
                if (widget->isVisible())
                    take(widget->property("text").toString());
                for (int i = 0; tabs != nullptr && tabs->isVisible() && i < tabs->count(); ++i)
                    take(tabs->tabText(i));
            }
        }
    }
};

QTEST_MAIN(Id3InfoTest)
#include "Id3InfoTest.moc"
