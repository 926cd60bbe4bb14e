#include "media/MP3File.h"
#include "media/PictureFrame.h"

#include "media/TagEditor.h"

#include <QBuffer>
#include <QProgressBar>

#include <cstring>

using namespace Qt::StringLiterals;

namespace
{
constexpr auto failedOne = "Failed to update the file!, check that it is not in use or set as Read-Only."_L1;
constexpr auto failedSome = "Some files could not be updated!, check that they are not in use or set as Read-Only."_L1;

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
    for (const char *comment : {"TITLE=T", "ARTIST=A", "ALBUM=L", "TRACKNUMBER=7", "ENCODED_USING=E"})
        bytes += char(std::strlen(comment)) + QByteArray(3, '\0') + comment;
    bytes += "\x01\x05vorbis";
    return bytes.leftJustified(5000, '\0');
}

std::unique_ptr<MP3File> Tags(const QString &path)
{
    auto file = std::make_unique<MP3File>();
    file->ReadTags(path, false);
    return file;
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
    void ShowsOneFile_data();
    void ShowsOneFile();
    void ShowsSelections_data();
    void ShowsSelections();
    void WritesWhatWasTyped();
    void LeavesUntouchedTextsAlone();
    void SpreadsACopy();
    void ClearBoxesRemoveTags();
    void TellsWhatCouldNotBeWritten();
    void DuplicatesToID3v2();
    void DuplicatesToID3v1_data();
    void DuplicatesToID3v1();
    void KeepsAListOfComments();
    void KeepsAListOfPictures();
    void TrackTakesDigits();
    void StepsThroughTheList();
    void AttributesActAtOnce();
    void DoubleClicks();
    void MnemonicsAreDistinct();
};

void Id3InfoTest::ShowsOneFile_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("fileInfo");
    QTest::addColumn<QString>("frame");
    QTest::addColumn<QStringList>("lines");
    QTest::newRow("cbr128-mpeg1-joint-info.mp3") << u"One.mp3"_s << u"File Size: 36,361 bytes"_s << u"MPEGInfo"_s
                                                 << QStringList{u"Length: 2.2 Seconds"_s, u"Version: MPEG 1.0"_s,
                                                                u"Encoding: 128 Kbit "_s, u"Samplerate: 44100 Hz"_s,
                                                                u"CRCProtection: No"_s,   u"Copyrighted: No"_s,
                                                                u"Original: Yes"_s,       u"Emphasis: None"_s,
                                                                u"Mode: Joint Stereo"_s,  u"Layer: III"_s};
    QTest::newRow("") << u"Two.OGG"_s << u"File Size: 5,000 bytes"_s << u"OGGInfo"_s
                      << QStringList{u"Title: T"_s, u"Artist: A"_s, u"Album: L"_s, u"Encoded with: E"_s, u"Track: 7"_s};
    QTest::newRow("zeros-behind-xing.mp3")
        << u"no.ogg"_s << u"File Size: 24,222 bytes"_s << u"OGGInfo"_s
        << QStringList{u"Vorbis header not found!"_s, u"????"_s, u"????"_s, u"????"_s, u"????"_s};
    QTest::newRow("stereo-16bit.wav") << u"three.wav"_s << u"File Size: 44,144 bytes"_s << u"MPEGInfo"_s
                                      << QStringList(10, QString());
}

void Id3InfoTest::ShowsOneFile()
{
    QFETCH(const QString, name);
    QFETCH(const QString, fileInfo);
    QFETCH(const QString, frame);
    QFETCH(const QStringList, lines);
    TagEditor e;
    if (*QTest::currentDataTag() != '\0')
        e.Take(QTest::currentDataTag(), name);
    else
        e.F.Window->AddFile(e.F.Write(name, VorbisFile()), 0);
    e.Open({1});
    const bool isMP3 = name.endsWith(u".mp3");
    QCOMPARE(e.Text("FileInfo_0"), name);
    QCOMPARE(e.Text("FileInfo_1"), fileInfo);
    QVERIFY(e.At(("Frame"_L1 + frame).toUtf8().constData())->isVisible());
    QVERIFY(e.At("FrameMPEGInfo")->isVisible() != e.At("FrameOGGInfo")->isVisible());
    QCOMPARE(e.Texts(frame.toUtf8(), static_cast<int>(lines.size())), lines);
    QCOMPARE(e.Enabled("CmdUpdate"), isMP3);
    QCOMPARE(e.At<QTabWidget>("Id3MainTab")->isTabEnabled(2), isMP3);
    QVERIFY(!e.Enabled("CmdPrev") && !e.Enabled("CmdNext") && !e.Enabled("CmdPaste") && !e.Enabled("CmdCopy"));
    QVERIFY(!e.Ticked("FileInfoReadOnly") && e.Enabled("FileInfoReadOnly"));
}

void Id3InfoTest::ShowsSelections_data()
{
    QTest::addColumn<QStringList>("names");
    QTest::addColumn<QString>("first");
    QTest::addColumn<QString>("second");
    const QString unable = u"Unable to Update/Read files..."_s;
    const QString check = u"Check the item(s) exist and are of the same type."_s;
    const QString paste = u"Click 'Paste' then 'Update' to update all items."_s;
    const QString single = u"Choose a single file to view the file info."_s;
    QTest::newRow("mp3") << QStringList{u"a.mp3"_s, u"b.MP3"_s} << u"Multiple MP3 Files Selected..."_s << paste;
    QTest::newRow("ogg") << QStringList{u"a.ogg"_s, u"b.ogg"_s} << u"Multiple OGG Files Selected..."_s
                         << u"Updating OGG files is currenlty unsupported."_s;
    QTest::newRow("wav") << QStringList{u"a.wav"_s, u"b.wav"_s} << u"Multiple WAV Files Selected..."_s << single;
    QTest::newRow("vqf") << QStringList{u"a.vqf"_s, u"b.vqf"_s} << u"Multiple VQF Files Selected..."_s << single;
    QTest::newRow("mixed") << QStringList{u"a.mp3"_s, u"b.wav"_s} << unable << check;
    QTest::newRow("gone") << QStringList{u"a.mp3"_s, u"gone.mp3"_s} << unable << check;
}

void Id3InfoTest::ShowsSelections()
{
    QFETCH(const QStringList, names);
    QFETCH(const QString, first);
    QFETCH(const QString, second);
    TagEditor e;
    for (const QString &name : names) {
        if (name.startsWith(u"gone"))
            e.F.Window->AddFile(e.F.Inside(name), 0);
        else
            e.Take("tag-id3v24.mp3", name);
    }
    e.F.Window->AddFile(e.F.Inside(names[0]), 1);
    e.Open({2, 3});
    QCOMPARE(e.Text("FileInfo_0"), first);
    QCOMPARE(e.Text("FileInfo_1"), second);
    const bool isMP3 = first.contains(u"MP3");
    QCOMPARE(e.Enabled("CmdUpdate"), isMP3);
    QCOMPARE(e.At<QTabWidget>("Id3MainTab")->isTabEnabled(1), isMP3);
    QVERIFY(e.Enabled("CmdPrev") && !e.Enabled("CmdNext") && !e.Enabled("CmdCopy") && !e.Enabled("CmdPaste"));
    QVERIFY(!e.Ticked("ID3v1Present") && !e.Ticked("ID3v2Present"));
    QCOMPARE(e.Text("MPEGInfo_0") + e.Text("OGGInfo_0") + e.Text("ID3v2Title"), QString());
}

void Id3InfoTest::WritesWhatWasTyped()
{
    TagEditor e;
    const QString path = e.Take("cbr128-mpeg1-joint-info.mp3", u"a.mp3"_s);
    const QByteArray audio = e.F.Read(u"a.mp3"_s);
    e.Open({1});
    e.Page("Id3MainTab", 2);
    QVERIFY(!e.Enabled("ID3v2Title") && !e.Enabled("ID3v2Duplicate"));
    e.Click("ID3v2Present");
    QVERIFY(e.Enabled("ID3v2Title") && e.Enabled("CmdCopy"));
    const std::initializer_list<std::pair<const char *, QString>> texts{{"ID3v2Title", u"Тихая гавань"_s},
                                                                        {"ID3v2Artist", u"夜の散歩"_s},
                                                                        {"ID3v2Album", u"שלום עולם"_s},
                                                                        {"ID3v2Year", u"1999"_s},
                                                                        {"ID3v2Track", u"3/12"_s},
                                                                        {"ID3v2Composer", u"🎵👩‍👩‍👧"_s},
                                                                        {"ID3v2OrigArtist", u"a & <b> \"c\""_s},
                                                                        {"ID3v2EncodedBy", QString(40'000, u'x')}};
    for (const auto &[field, text] : texts)
        e.Enter(field, text);
    e.Enter("ID3v2Genre", u"Own genre"_s);
    e.Page("Id3v2Tab", 2);
    e.Enter("ID3v2Lyrics", u"one\ntwo"_s);
    e.Page("Id3v2Tab", 4);
    e.Enter("ID3v2Mood", u"Ruhig"_s);
    e.Page("Id3MainTab", 1);
    e.Click("ID3v1Present");
    QTest::keyClicks(e.At("ID3v1Title"), u"Quiet Harbour"_s);
    QTest::keyClicks(e.At("ID3v1Track"), u"254"_s);
    QTest::keyClicks(e.At("ID3v1Genre"), u"Polka"_s);
    e.F.Window->PlaylistDirty = false;
    e.Click("CmdUpdate");

    const auto file = Tags(path);
    QVERIFY(file->HasID3v1() && file->HasID3v2());
    for (const auto &[field, text] : texts)
        QCOMPARE(e.Text(field), text);
    QCOMPARE(file->GetFrame("TIT2"), texts.begin()->second);
    QCOMPARE(file->GetFrame("TCOM"), e.Text("ID3v2Composer"));
    QCOMPARE(file->GetFrame("TENC").size(), 40'000);
    QCOMPARE(file->GetFrame("TCON"), u"Own genre"_s);
    QCOMPARE(file->GetFrame("USLT"), u"one\ntwo"_s);
    QCOMPARE(file->Mood(), u"Ruhig"_s);
    QCOMPARE(file->Title(), u"Quiet Harbour"_s);
    QCOMPARE(int(file->Track()), 254);
    QCOMPARE(MP3File::GenreList().split(u'|').at(file->Genre()), u"Polka"_s);
    QVERIFY(e.F.Read(u"a.mp3"_s).contains(audio));
    // The row shows the file as it is now, and is selected; the editor stays where it was.
    const PlaylistItem &row = e.F.Window->ListView1.Item(1);
    QVERIFY(row.Selected && row.Size == e.F.Read(u"a.mp3"_s).size() && !e.F.Window->PlaylistDirty);
    QCOMPARE(e.At<QTabWidget>("Id3MainTab")->currentIndex(), 1);
    QCOMPARE(e.At<QProgressBar>("ProgressBar1")->value(), 0);
}

void Id3InfoTest::LeavesUntouchedTextsAlone()
{
    TagEditor e;
    const QString path = e.Take("cbr128-mpeg1-joint-info.mp3", u"a.mp3"_s);
    MP3File file;
    file.SetFrame("USLT", u"one\r\ntwo\rthree\u2028four"_s);
    file.SetFrame("TIT2", u"up\r\ndown"_s);
    file.SetTempo(u"a\nb"_s);
    file.Comments().Add(u"x\r\ny"_s, u"d"_s);
    file.WriteID3v2(path);
    const QByteArray before = e.F.Read(u"a.mp3"_s);
    e.Open({1});
    e.Click("CmdUpdate");
    QCOMPARE(e.F.Read(u"a.mp3"_s), before);
}

void Id3InfoTest::SpreadsACopy()
{
    TagEditor e;
    const QString source = e.Take("tag-id3v24.mp3", u"a.mp3"_s);
    const QStringList targets{e.Take("tag-id3v23.mp3", u"b.mp3"_s), e.Take("cbr128-mpeg1-joint-info.mp3", u"c.mp3"_s)};
    const auto original = Tags(source);
    QVERIFY(original->HasID3v1() && original->HasID3v2());
    e.Open({1});
    e.Page("Id3MainTab", 2);
    e.Page("Id3v2Tab", 4);
    e.Enter("ID3v2Situation", u"Evening"_s);
    e.Page("Id3v2Tab", 3);
    e.AddImage(e.F.Write(u"cover.bmp"_s, Encoded(Qt::red, "BMP")));
    e.Click("CmdCopy");
    e.Click("CmdClose");
    QVERIFY(!e.Form->isVisible());
    e.Open({2, 3});
    QVERIFY(e.Enabled("CmdPaste") && !e.Enabled("CmdCopy"));
    e.Click("CmdPaste");
    QVERIFY(e.Ticked("ID3v1Present") && e.Ticked("ID3v2Present") && e.Enabled("CmdCopy"));
    e.Page("Id3MainTab", 2);
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
    QVERIFY(Tags(source)->Situation().isEmpty());
}

void Id3InfoTest::ClearBoxesRemoveTags()
{
    TagEditor e;
    const QString path = e.Take("tag-id3v24.mp3", u"a.mp3"_s);
    e.Open({1});
    e.Page("Id3MainTab", 1);
    e.Click("ID3v1Present");
    QVERIFY(e.Enabled("CmdCopy") && !e.Enabled("ID3v1Title"));
    e.Click("CmdUpdate");
    QVERIFY(!Tags(path)->HasID3v1() && Tags(path)->HasID3v2());
    e.Page("Id3MainTab", 2);
    e.Click("ID3v2Present");
    QVERIFY(!e.Enabled("CmdCopy"));
    e.Click("CmdUpdate");
    QVERIFY(!Tags(path)->HasID3v2());
    // Several files, nothing pasted: both tags go from every file.
    const QStringList paths{e.Take("tag-id3v24.mp3", u"b.mp3"_s), e.Take("tag-id3v24.mp3", u"c.mp3"_s)};
    e.Open({2, 3});
    e.Click("CmdUpdate");
    for (const QString &each : paths)
        QVERIFY(!Tags(each)->HasID3v1() && !Tags(each)->HasID3v2());
}

void Id3InfoTest::TellsWhatCouldNotBeWritten()
{
    TagEditor e;
    const QString good = e.Take("tag-id3v24.mp3", u"good.mp3"_s);
    const QString locked = e.Take("tag-id3v24.mp3", u"locked.mp3"_s);
    e.Take("tag-beyond-end.mp3", u"damaged.mp3"_s);
    e.Take("tag-id3v24.mp3", u"gone.mp3"_s);
    const QByteArray lockedBytes = e.F.Read(u"locked.mp3"_s);
    const QByteArray damagedBytes = e.F.Read(u"damaged.mp3"_s);
    QVERIFY(SetFileAttributes(locked, AttributeReadOnly));
    e.Open({1, 2, 3, 4});
    QVERIFY(DeleteFile(e.F.Inside(u"gone.mp3"_s)));
    e.F.Prompts.Expect(failedSome, PromptAnswer::Ok);
    e.Click("CmdUpdate");
    const QStringList details = e.F.Prompts.LastDetails.split(u'\n');
    QCOMPARE(details.size(), 3);
    QCOMPARE(details[0], u"locked.mp3: the file is read-only"_s);
    QVERIFY2(details[1].startsWith(u"damaged.mp3: ") && details[2].startsWith(u"gone.mp3: "), qPrintable(details[1]));
    QVERIFY(!Tags(good)->HasID3v2());
    QCOMPARE(e.F.Read(u"locked.mp3"_s), lockedBytes);
    QCOMPARE(e.F.Read(u"damaged.mp3"_s), damagedBytes);
    QVERIFY(e.F.Window->ListView1.Item(4).Ghosted);
    QCOMPARE(e.Text("FileInfo_0"), u"Unable to Update/Read files..."_s);
    e.Open({3});
    e.F.Prompts.Expect(failedOne, PromptAnswer::Ok);
    e.Click("CmdUpdate");
    QCOMPARE(e.F.Read(u"damaged.mp3"_s), damagedBytes);
    SetFileAttributes(locked, AttributeNormal);
}

void Id3InfoTest::DuplicatesToID3v2()
{
    TagEditor e;
    const QString path = e.Take("cbr128-mpeg1-joint-info.mp3", u"a.mp3"_s);
    e.Open({1});
    e.Page("Id3MainTab", 2);
    QVERIFY(!e.Enabled("ID3v1Duplicate"));
    e.Page("Id3MainTab", 1);
    e.Click("ID3v1Present");
    for (const char *field : {"ID3v1Title", "ID3v1Artist", "ID3v1Comment"})
        QTest::keyClicks(e.At(field), QString(QLatin1Char(field[5])));
    QTest::keyClicks(e.At("ID3v1Year"), u"1984"_s);
    QTest::keyClicks(e.At("ID3v1Track"), u"9"_s);
    QTest::keyClicks(e.At("ID3v1Genre"), u"Jazz"_s);
    e.Page("Id3MainTab", 2);
    e.Click("ID3v1Duplicate");
    e.Click("ID3v1Duplicate");
    QVERIFY(e.Ticked("ID3v2Present") && e.Enabled("ID3v2Title"));
    e.Click("CmdUpdate");
    const auto file = Tags(path);
    QCOMPARE(file->GetFrame("TIT2") + file->GetFrame("TPE1"), u"TA"_s);
    QCOMPARE(file->GetFrame("TYER") + file->GetFrame("TRCK") + file->GetFrame("TCON"), u"19849Jazz"_s);
    QCOMPARE(Comments(*file), (QStringList{u"|C"_s, u"|C"_s}));
}

void Id3InfoTest::DuplicatesToID3v1_data()
{
    QTest::addColumn<QString>("track");
    QTest::addColumn<QString>("genre");
    QTest::addColumn<QString>("trackThen");
    QTest::addColumn<QString>("genreThen");
    QTest::newRow("number") << u"12"_s << u"blues"_s << u"12"_s << u"Blues"_s;
    QTest::newRow("of") << u"3/12"_s << u"Hard Rock"_s << u"3"_s << u"Rock"_s;
    QTest::newRow("of nothing") << u"/12"_s << u"nothing known"_s << u"5"_s << u"Polka"_s;
    QTest::newRow("no number") << u"x/12"_s << QString() << u"5"_s << u"Polka"_s;
}

void Id3InfoTest::DuplicatesToID3v1()
{
    QFETCH(const QString, track);
    QFETCH(const QString, genre);
    QFETCH(const QString, trackThen);
    QFETCH(const QString, genreThen);
    TagEditor e;
    const QString path = e.Take("cbr128-mpeg1-joint-info.mp3", u"a.mp3"_s);
    MP3File file;
    file.SetTrack(5);
    file.SetGenre(75);
    file.WriteID3v1(path);
    file.SetFrame("TIT2", u"T"_s);
    file.SetFrame("TRCK", track);
    file.SetFrame("TCON", genre);
    file.Comments().Add(u"first"_s, u"d"_s);
    file.WriteID3v2(path);
    e.Open({1});
    e.Page("Id3MainTab", 1);
    e.Click("ID3v2Duplicate");
    QCOMPARE(e.Text("ID3v1Title") + e.Text("ID3v1Comment"), u"Tfirst"_s);
    QCOMPARE(e.Text("ID3v1Track"), trackThen);
    QCOMPARE(e.Text("ID3v1Genre"), genreThen);
}

void Id3InfoTest::KeepsAListOfComments()
{
    TagEditor e;
    const QString path = e.Take("cbr128-mpeg1-joint-info.mp3", u"a.mp3"_s);
    e.Open({1});
    e.Page("Id3MainTab", 2);
    e.Click("ID3v2Present");
    e.Page("Id3v2Tab", 1);
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

void Id3InfoTest::KeepsAListOfPictures()
{
    const QByteArray gif = QByteArray::fromBase64("R0lGODlhAQABAIAAAP8AAP///yH5BAAAAAAALAAAAAABAAEAAAICRAEAOw==");
    TagEditor e;
    const QString path = e.Take("cbr128-mpeg1-joint-info.mp3", u"a.mp3"_s);
    MP3File file;
    file.Images().Add(e.F.Write(u"odd"_s, "no picture"), u"odd"_s);
    file.WriteID3v2(path);
    e.Open({1});
    e.Page("Id3MainTab", 2);
    e.Page("Id3v2Tab", 3);
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
    e.F.Prompts.Expect(ShownPath(e.F.Inside(u"a.gif"_s)) + u" exists, do you want to replace it?", PromptAnswer::No);
    e.Click("ID3v2ImageSave");
    QCOMPARE(e.F.Read(u"a.gif"_s), gif);
    e.F.Prompts.ExpectPath(QString(), e.F.Inside(u"new.bmp"_s));
    e.Click("ID3v2ImageSave");
    QVERIFY(QImage::fromData(e.F.Read(u"new.bmp"_s), "BMP").pixelColor(0, 0) == Qt::red);
    e.Click("ID3v2ImageOpen");
    QCOMPARE(e.F.ShellCalls, QStringList{u"open "_s + e.F.Inside(u"app\\tmp.bmp"_s)});
    QVERIFY(PathExists(e.F.Inside(u"app\\tmp.bmp"_s)));

    e.SelectRow("ID3v2LstImages", 2);
    e.Click("ID3v2ImageRemove");
    QCOMPARE(shown->Picture().pixelColor(0, 0), QColor(Qt::red));
    e.Click("CmdUpdate");
    QVERIFY(!PathExists(e.F.Inside(u"app\\tmp.bmp"_s)));
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

void Id3InfoTest::TrackTakesDigits()
{
    TagEditor e;
    const QString path = e.Take("cbr128-mpeg1-joint-info.mp3", u"a.mp3"_s);
    e.Open({1});
    e.Page("Id3MainTab", 1);
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

void Id3InfoTest::StepsThroughTheList()
{
    TagEditor e;
    for (const QString &name : {u"a.mp3"_s, u"b.mp3"_s, u"c.wav"_s, u"d.mp3"_s})
        e.Take("tag-id3v24.mp3", name);
    e.Open({2, 3});
    e.Click("CmdPrev");
    QCOMPARE(e.F.Rows(), u"A b c d"_s);
    QCOMPARE(e.Text("FileInfo_0"), u"a.mp3"_s);
    QVERIFY(!e.Enabled("CmdPrev") && e.Enabled("CmdNext"));
    e.Page("Id3MainTab", 2);
    e.Page("Id3v2Tab", 1);
    e.Click("CmdNext");
    QCOMPARE(e.F.Rows(), u"a B c d"_s);
    QVERIFY(e.At("ID3v2LstComments")->isVisible());
    e.Page("Id3MainTab", 2); // A click goes back to the first inner page.
    QVERIFY(e.At("ID3v2Title")->isVisible());
    e.Click("CmdNext");
    QVERIFY(e.At("FileInfo_0")->isVisible());
    e.Click("CmdNext");
    QVERIFY(!e.Enabled("CmdNext"));
    e.Click("CmdListen");
    QCOMPARE(e.F.ShellCalls, QStringList{u"open "_s + e.F.Inside(u"app\\tmp.m3u"_s)});
}

void Id3InfoTest::AttributesActAtOnce()
{
    TagEditor e;
    const QString a = e.Take("tag-id3v24.mp3", u"a.mp3"_s);
    const QString b = e.Take("tag-id3v24.mp3", u"b.mp3"_s);
    const auto attributes = [](const QString &path) {
        return FileAttributes(path) & (AttributeReadOnly | AttributeArchive);
    };
    const int first = attributes(a);
    e.Open({1});
    e.Click("FileInfoReadOnly");
    QCOMPARE(attributes(a), first | AttributeReadOnly);
    e.Open({1, 2});
    QCOMPARE(e.At<QCheckBox>("FileInfoReadOnly")->checkState(), Qt::PartiallyChecked);
    QCOMPARE(attributes(b), first);
    e.Click("FileInfoReadOnly");
    QCOMPARE(attributes(b), first | AttributeReadOnly);
    e.Click("FileInfoReadOnly");
    QCOMPARE(attributes(a), first);
    QCOMPARE(attributes(b), first);
}

void Id3InfoTest::DoubleClicks()
{
    TagEditor e;
    e.Take("tag-id3v24.mp3", u"SLOW (live) harbour.MP3"_s);
    e.Take("tag-id3v24.mp3", u"b.mp3"_s);
    e.Open({1});
    e.Page("Id3MainTab", 2);
    e.DoubleClick("ID3v2Title");
    QCOMPARE(e.Text("ID3v2Title"), u"Slow (live) Harbour"_s);
    e.Page("Id3v2Tab", 4);
    QStringList opened;
    for (const QString &address : {QString(), u"vantrel.example"_s, u"x:http://y"_s}) {
        e.Enter("ID3v2URL", address);
        e.DoubleClick("ID3v2URL");
        if (!address.isEmpty())
            opened.append(u"open "_s + (address.contains(u':') ? address : u"http://"_s + address));
    }
    e.Page("Id3v2Tab", 1);
    e.Enter("ID3v2Comment", u"a b&c"_s);
    e.DoubleClick("ID3v2Comment");
    opened.append(u"open https://search.vantrel.example/search?hl=en&q=a b&c"_s);
    QCOMPARE(e.F.ShellCalls, opened);
}

void Id3InfoTest::MnemonicsAreDistinct()
{
    TagEditor e;
    e.Take("tag-id3v24.mp3", u"a.mp3"_s);
    e.Open({1});
    const auto check = [&] {
        QMap<QString, QString> taken;
        const auto take = [&](const QString &caption) {
            const QString key = QKeySequence::mnemonic(caption).toString();
            QVERIFY2(key.isEmpty() || !taken.contains(key), qPrintable(caption + u" and " + taken[key]));
            taken[key] = caption;
        };
        for (const auto *widget : e.Form->findChildren<QWidget *>()) {
            if (widget->isVisible())
                take(widget->property("text").toString());
            const auto *tabs = qobject_cast<const QTabWidget *>(widget);
            for (int i = 0; tabs != nullptr && tabs->isVisible() && i < tabs->count(); ++i)
                take(tabs->tabText(i));
        }
    };
    check();
    e.Page("Id3MainTab", 1);
    check();
    e.Page("Id3MainTab", 2);
    for (int page = 0; page < 5; ++page) {
        e.Page("Id3v2Tab", page);
        check();
    }
}

QTEST_MAIN(Id3InfoTest)
#include "Id3InfoTest.moc"
