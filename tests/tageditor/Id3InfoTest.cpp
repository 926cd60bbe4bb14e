#include "media/MP3File.h"
#include "tageditor/PictureFrame.h"

#include "tageditor/TagEditor.h"

#include <QBuffer>
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

std::unique_ptr<MP3File> Tags(const QString &path)
{
    auto file = std::make_unique<MP3File>();
    file->ReadTags(path, false);
    return file;
}

/// Which tags a file has: "1", "2", "12" or nothing.
QString Kinds(const QString &path)
{
    const auto file = Tags(path);
    return (file->HasID3v1() ? u"1"_s : QString()) + (file->HasID3v2() ? u"2"_s : QString());
}

QStringList Comments(MP3File &file)
{
    QStringList list;
    for (const MP3Comment &comment : file.Comments().Items())
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

    void WritesWhatWasTyped()
    {
        const std::tuple<const char *, const char *, QString> texts[] = {
            {"ID3v2Title", "TIT2", u"Тихая гавань"_s}, {"ID3v2Artist", "TPE1", u"夜の散歩"_s},
            {"ID3v2Album", "TALB", u"שלום עולם"_s},    {"ID3v2Year", "TYER", u"1999"_s},
            {"ID3v2Track", "TRCK", u"3/12"_s},         {"ID3v2Composer", "TCOM", u"🎵👩‍👩‍👧"_s},
            {"ID3v2OrigArtist", "TOPE", u"a & <b>"_s}, {"ID3v2EncodedBy", "TENC", QString(40'000, u'x')},
            {"ID3v2Genre", "TCON", u"Own genre"_s},    {"ID3v2Lyrics", "USLT", u"one\ntwo"_s},
        };
        TagEditor e;
        const QString path = e.OpenUntagged();
        const QByteArray audio = e.F.Read(u"a.mp3"_s);
        QVERIFY(!e.Enabled("ID3v2Title") && !e.Enabled("ID3v2Duplicate"));
        e.Click("ID3v2Present");
        QCOMPARE(e.Commands(), u"Copy Update"_s);
        for (const auto &[field, id, text] : texts)
            e.Enter(field, text);
        e.Enter("ID3v2Mood", u"Ruhig"_s);
        e.Click("ID3v1Present");
        e.Enter("ID3v1Title", u"Quiet Harbour"_s);
        e.Enter("ID3v1Track", u"254"_s);
        QTest::keyClicks(e.At("ID3v1Genre"), u"Polka"_s);
        e.F.Window->PlaylistDirty = false;
        e.Click("CmdUpdate");

        const auto file = Tags(path);
        for (const auto &[field, id, text] : texts) {
            QCOMPARE(file->GetFrame(id), text);
            QCOMPARE(e.Text(field), text);
        }
        QCOMPARE(file->Mood() + u'|' + file->Title(), u"Ruhig|Quiet Harbour"_s);
        QCOMPARE(int(file->Track()), 254);
        QCOMPARE(MP3File::GenreList().split(u'|').at(file->Genre()), u"Polka"_s);
        QVERIFY(e.F.Read(u"a.mp3"_s).contains(audio));
        // The row shows the file as it is now, and is selected; the editor stays where it was.
        const PlaylistItem &row = e.F.Window->ListView1.Item(1);
        QVERIFY(row.Selected && row.Size == e.F.Read(u"a.mp3"_s).size() && !e.F.Window->PlaylistDirty);
        QCOMPARE(e.At<QTabWidget>("Id3MainTab")->currentIndex(), 1);
        QCOMPARE(e.At<QProgressBar>("ProgressBar1")->value(), 0);
    }

    void SpreadsACopy()
    {
        TagEditor e;
        const QString source = e.Take(u"a.mp3"_s);
        const QStringList targets{e.Take(u"b.mp3"_s, "tag-id3v23.mp3"), e.Take(u"c.mp3"_s, "tag-apev2.mp3")};
        const auto original = Tags(source);
        QCOMPARE(Kinds(source), u"12"_s);
        e.Open({1});
        e.Enter("ID3v2Situation", u"Evening"_s);
        e.AddImage(e.F.Write(u"cover.bmp"_s, Encoded(Qt::red, "BMP")));
        e.Click("CmdCopy");
        e.Click("CmdClose");
        QVERIFY(!e.Form->isVisible());
        e.Open({2, 3});
        QCOMPARE(e.Commands(), u"Prev Paste Update"_s);
        e.Click("CmdPaste");
        QVERIFY(e.Ticked("ID3v1Present") && e.Ticked("ID3v2Present") && e.Enabled("CmdCopy"));
        e.Enter("ID3v2Album", u"Other album"_s);
        e.Click("CmdUpdate");
        for (const QString &path : targets) {
            const auto file = Tags(path);
            QCOMPARE(file->Title(), original->Title());
            QCOMPARE(file->GetFrame("TIT2"), original->GetFrame("TIT2"));
            QCOMPARE(file->GetFrame("TALB"), u"Other album"_s);
            QCOMPARE(file->Situation(), u"Evening"_s);
            QCOMPARE(Comments(*file), Comments(*original));
            QCOMPARE(file->Images().Count(), original->Images().Count() + 1);
        }
        QCOMPARE(e.F.Rows(), u"a B C"_s);
        QCOMPARE(Tags(source)->Situation(), QString());
    }

    void ClearBoxesRemoveTags()
    {
        TagEditor e;
        const QString path = e.Take(u"a.mp3"_s);
        e.Open({1});
        e.Click("ID3v1Present");
        QVERIFY(e.Enabled("CmdCopy") && !e.Enabled("ID3v1Title"));
        e.Click("CmdUpdate");
        QCOMPARE(Kinds(path), u"2"_s);
        e.Click("ID3v2Present");
        QVERIFY(!e.Enabled("CmdCopy"));
        e.Click("CmdUpdate");
        QCOMPARE(Kinds(path), QString());
    }

    void TellsWhatCouldNotBeWritten()
    {
        TagEditor e;
        const QString good = e.Take(u"good.mp3"_s);
        const QString locked = e.Take(u"locked.mp3"_s);
        e.Take(u"damaged.mp3"_s, "tag-beyond-end.mp3");
        const QString gone = e.Take(u"gone.mp3"_s);
        const auto contents = [&e] { return QByteArrayList{e.F.Read(u"locked.mp3"_s), e.F.Read(u"damaged.mp3"_s)}; };
        const QByteArrayList before = contents();
        QVERIFY(SetFileAttributes(locked, AttributeReadOnly));
        e.Open({1, 2, 3, 4});
        QVERIFY(DeleteFile(gone));
        e.F.Prompts.Expect(u"Some files could not be updated!, check that they are not in use or set as Read-Only."_s,
                           PromptAnswer::Ok);
        e.Click("CmdUpdate");
        static const QRegularExpression reasons(
            u"\\Alocked.mp3: the file is read-only\ndamaged.mp3: .+\ngone.mp3: .+\\z"_s);
        QVERIFY2(e.F.Prompts.LastDetails.contains(reasons), qPrintable(e.F.Prompts.LastDetails));
        QCOMPARE(Kinds(good), QString()); // Nothing was pasted, so both of its tags go.
        QVERIFY(e.F.Window->ListView1.Item(4).Ghosted);
        QCOMPARE(e.Text("FileInfo_0"), u"Unable to Update/Read files..."_s);
        e.Open({3});
        e.F.Prompts.Expect(u"Failed to update the file!, check that it is not in use or set as Read-Only."_s,
                           PromptAnswer::Ok);
        e.Click("CmdUpdate");
        QCOMPARE(contents(), before);
        SetFileAttributes(locked, AttributeNormal);
    }

    void DuplicatesTags()
    {
        TagEditor e;
        const QString path = e.OpenUntagged();
        QVERIFY(!e.Enabled("ID3v1Duplicate"));
        e.Click("ID3v1Present");
        for (const char *field : {"ID3v1Title", "ID3v1Artist", "ID3v1Comment"})
            e.Enter(field, QString(QLatin1Char(field[5])));
        e.Enter("ID3v1Year", u"1984"_s);
        e.Enter("ID3v1Track", u"9"_s);
        QTest::keyClicks(e.At("ID3v1Genre"), u"Jazz"_s);
        e.Click("ID3v1Duplicate");
        e.Click("ID3v1Duplicate");
        QVERIFY(e.Ticked("ID3v2Present") && e.Enabled("ID3v2Title"));
        QCOMPARE(e.Texts("^ID3v2(Title|Artist|Track|Genre|Year)$"), u"T|A|9|Jazz|1984"_s);
        e.Click("CmdUpdate");
        QCOMPARE(Comments(*Tags(path)), (QStringList{u"|C"_s, u"|C"_s}));
        QTest::keyClick(e.Reach("ID3v1Genre"), Qt::Key_Home);
        QCOMPARE(e.Text("ID3v1Genre"), QString());
        e.Click("CmdRefresh"); // Nothing was written.

        // Back again: track, genre, what the other tag then says.
        const std::tuple<QString, QString, QString> cases[] = {
            {u"/12"_s, u"nothing known"_s, u"New|9|Jazz|C"_s},
            {u"x/12"_s, QString(), u"New|9|Jazz|C"_s},
            {u"12"_s, u"blues"_s, u"New|12|Blues|C"_s},
            {u"3/12"_s, u"Hard Rock"_s, u"New|3|Rock|C"_s},
        };
        e.Enter("ID3v2Title", u"New"_s);
        for (const auto &[track, genre, texts] : cases) {
            e.Enter("ID3v2Track", track);
            e.Enter("ID3v2Genre", genre);
            e.Enter("ID3v1Comment", {});
            e.Click("ID3v2Duplicate");
            QCOMPARE(e.Texts("^ID3v1(Title|Track|Genre|Comment)$"), texts);
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
            e.F.Prompts.ExpectPath(u"Enter description."_s, answer);
            e.Click("ID3v2AddComment");
        }
        QCOMPARE(e.Cells("ID3v2LstComments"), (QStringList{u"one|ONE"_s, u"two|TWO"_s, u"three|THREE"_s}));
        e.SelectRow("ID3v2LstComments", 1);
        QCOMPARE(e.Text("ID3v2Comment"), u"TWO"_s);
        e.Enter("ID3v2Comment", u"Zwei\nDrei"_s);
        e.Click("ID3v2EditComment");
        e.SelectRow("ID3v2LstComments", 2);
        e.Click("ID3v2RemoveComment");
        QCOMPARE(e.Text("ID3v2Comment"), u"Zwei\nDrei"_s);
        e.Click("CmdUpdate");
        QCOMPARE(Comments(*Tags(path)), (QStringList{u"one|ONE"_s, u"two|Zwei\nDrei"_s}));
        QCOMPARE(e.Text("ID3v2Comment"), u"ONE"_s);
        for (int i = 0; i < 3; ++i)
            e.Click("ID3v2RemoveComment");
        QVERIFY(e.Cells("ID3v2LstComments").isEmpty() && e.Text("ID3v2Comment").isEmpty());
        e.Click("CmdRefresh"); // Nothing was written.
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
        auto *shown = dynamic_cast<PictureFrame *>(e.At("ID3v2Image"));
        QCOMPARE(shown->Picture().pixelColor(1, 1), QColor(Qt::green));
        e.SelectRow("ID3v2LstImages", 1);
        QCOMPARE(shown->Picture().pixelColor(0, 0), QColor(Qt::red));

        e.F.Prompts.ExpectPath(QString(), e.F.Inside(u"a.gif"_s));
        e.F.Prompts.Expect(ShownPath(e.F.Inside(u"a.gif"_s)) + u" exists, do you want to replace it?",
                           PromptAnswer::No);
        e.Click("ID3v2ImageSave");
        QCOMPARE(e.F.Read(u"a.gif"_s), gif);
        e.F.Prompts.ExpectPath(QString(), e.F.Inside(u"new.bmp"_s));
        e.Click("ID3v2ImageSave");
        QCOMPARE(QImage::fromData(e.F.Read(u"new.bmp"_s), "BMP").pixelColor(0, 0), QColor(Qt::red));
        e.Click("ID3v2ImageOpen");
        const QString temporary = e.F.Inside(u"app\\tmp.bmp"_s);
        QCOMPARE(e.F.ShellCalls, QStringList{u"open "_s + temporary});
        QVERIFY(PathExists(temporary));

        e.SelectRow("ID3v2LstImages", 2);
        e.Click("ID3v2ImageRemove");
        QCOMPARE(shown->Picture().pixelColor(0, 0), QColor(Qt::red));
        e.Click("CmdUpdate");
        QVERIFY(!PathExists(temporary));
        const QList<MP3Image> images = Tags(path)->Images().Items();
        QCOMPARE(images.size(), 3);
        QCOMPARE(images[0].Data, QByteArray("no picture"));
        QVERIFY(images[1].Data.startsWith("BM") && images[1].MIMEType == u"image/bmp"_s);
        QCOMPARE(images[2].Data, e.F.Read(u"c.bmp"_s));
        for (int i = 0; i < 3; ++i)
            e.Click("ID3v2ImageRemove");
        QVERIFY(shown->Picture().isNull());
        e.Click("ID3v2ImageOpen");
        QCOMPARE(e.F.ShellCalls.size(), 1);
    }

    void TrackTakesDigits()
    {
        TagEditor e;
        const QString path = e.OpenUntagged();
        e.Click("ID3v1Present");
        QTest::keyClicks(e.At("ID3v1Track"), u"1a-2 "_s);
        QTest::keyClick(e.At("ID3v1Track"), Qt::Key_Backspace);
        QCOMPARE(e.Text("ID3v1Track"), u"12"_s);
        e.Enter("ID3v1Track", u"x2 5٣5y"_s);
        QCOMPARE(e.Text("ID3v1Track"), u"255"_s);
        e.Click("CmdUpdate");
        QCOMPARE(int(Tags(path)->Track()), 0);
        const QByteArray before = e.F.Read(u"a.mp3"_s);
        e.Enter("ID3v1Title", u"kept"_s);
        e.Enter("ID3v1Track", u"32768"_s);
        e.F.Prompts.Expect(u"The track number is too large: a tag holds numbers from 1 to 254.\n"
                           u"Nothing has been changed."_s,
                           PromptAnswer::Ok);
        e.Click("CmdUpdate");
        QCOMPARE(e.F.Read(u"a.mp3"_s), before);
        QCOMPARE(e.Text("ID3v1Title"), u"kept"_s);
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
        const auto locked = [&paths] {
            return QList<int>{FileAttributes(paths[0]) & AttributeReadOnly,
                              FileAttributes(paths[1]) & AttributeReadOnly};
        };
        const int archived = FileAttributes(paths[0]) & AttributeArchive;
        e.Open({1});
        e.Click("FileInfoReadOnly");
        e.Open({1, 2});
        QCOMPARE(e.At<QCheckBox>("FileInfoReadOnly")->checkState(), Qt::PartiallyChecked);
        QCOMPARE(locked(), (QList<int>{AttributeReadOnly, 0}));
        e.Click("FileInfoReadOnly");
        QCOMPARE(locked(), (QList<int>{AttributeReadOnly, AttributeReadOnly}));
        e.Click("FileInfoReadOnly");
        QCOMPARE(locked(), (QList<int>{0, 0}));
        QCOMPARE(FileAttributes(paths[0]) & AttributeArchive, archived);
    }

    void DoubleClicks()
    {
        TagEditor e;
        e.Take(u"SLOW (live) harbour.MP3"_s);
        e.Open({1});
        e.DoubleClick("ID3v2Title");
        QCOMPARE(e.Text("ID3v2Title"), u"Slow (live) Harbour"_s);
        for (const QString &address : {QString(), u"vantrel.example"_s, u"x:http://y"_s}) {
            e.Enter("ID3v2URL", address);
            e.DoubleClick("ID3v2URL");
        }
        e.Enter("ID3v2Comment", u"a b&c"_s);
        e.DoubleClick("ID3v2Comment");
        QCOMPARE(e.F.ShellCalls, (QStringList{u"open http://vantrel.example"_s, u"open x:http://y"_s,
                                              u"open https://search.vantrel.example/search?hl=en&q=a b&c"_s}));
    }

    void MnemonicsAreDistinct()
    {
        TagEditor e;
        e.Take(u"a.mp3"_s);
        e.Open({1});
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
