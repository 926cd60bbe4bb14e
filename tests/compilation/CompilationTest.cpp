#include "compilation/CompilationFiles.h"
#include "compilation/DiscIcon.h"
#include "reports/ReportSettings.h"
#include "session/Icons.h"
#include "support/FormDriver.h"

#include <QBuffer>
#include <QComboBox>
#include <QLabel>
#include <QMimeData>
#include <QPainter>

using namespace Qt::StringLiterals;

namespace
{
/// The wizard over a root folder that is missing; the browser program lies where it should.
struct Wizard : FormDriver {
    const QString Folder = F.Inside(u"1\\2"_s);
    const QString Root = Folder.chopped(1);
    const QString Browser = F.Write(u"program\\VTLMP3FB.exe"_s, "browser");

    Wizard() { Open(); }
    void Open() { OpenTool("MToolsMP3CDWiz", "MP3CDWizard", {}); }
    void Put(const QString &name, const QByteArray &content) { F.Write(u"1\\2\\"_s + name, content); }
    QByteArray Content(QAnyStringView name) const { return F.Read(u"1\\2\\"_s + name.toString()); }
    /// Two files in the compilation, and so many steps.
    void Fill(int steps)
    {
        Put(u"a b.wma"_s, "1");
        Put(u"4\\c.wma"_s, "22");
        Enter("AssembleLoc", Root);
        Enter("CDROMLoc", u"2"_s);
        Next(steps);
    }
    /// What can be used, but for what always can.
    QString Usable() const
    {
        return FormDriver::Usable("^(BrowseImageLoc|CDROMLoc|.*Set|chk(Co|Au).*|Show.*|.*Icon.*|Cmd[BN].*)$");
    }
    QString After(const char *command) const
    {
        Click(command);
        return Usable();
    }
    /// The files of the compilation's root.
    QByteArray Listed() const { return F.Listing(u"1\\2"_s).toUtf8(); }
    QByteArray Picture() const { return IconFileContent(At<QLabel>("CDIcon")->pixmap()); }
    QString &Setting(const char *key) { return F.Settings[u"MP3CDWiz/"_s + QLatin1StringView(key)]; }
    /// A look at the report: whether it tells the folders of its files.
    bool PreviewHasFolders() const
    {
        Click("PrevReportSet");
        return Content("tmp.htm").contains("Folder</b>");
    }
};

const QString first = u"CDROMLoc BrowseImageLoc CmdNext"_s;
const QString steps = u"CmdBack CmdNext"_s;
} // namespace

class CompilationTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void LeadsThroughItsSteps()
    {
        Wizard w;
        QVERIFY(w.Text("ImSize") == u"680Mb" && w.Usable().isEmpty());
        w.ClickAndGive("BrowseAssembleLoc", u"Select Folder..."_s, w.Root.chopped(1));
        w.ClickAndGive("BrowseImageLoc", u"Select Folder..."_s, QString(w.Folder + u"\\sub"));
        w.ClickAndGive("BrowseImageLoc", u"Select Folder..."_s, w.F.Folder,
                       u"The build folder must be a sub-folder of the Root specified..."_s);
        QCOMPARE(w.Text("AssembleLoc") + w.Text("CDROMLoc"), QString(w.Folder + u"\\sub"));
        w.Enter("CDROMLoc", QString(229, u'x'));
        QTest::keyClicks(w.At("CDROMLoc"), u"\\/:yz\b"_s);
        QCOMPARE(w.Text("CDROMLoc"), QString(229, u'x'));
        // One level is made, and no name that means another folder.
        for (const QString &refused : {u"2"_s, u".. "_s}) {
            w.Enter("CDROMLoc", refused);
            w.ClickAndRead("CmdNext", u"Could not create a new folder for the Image."_s);
            EnsureFolder(w.Root);
        }
        for (const QString &name : u"6 5 4 3 2 1 2"_s.split(u' ')) {
            w.Enter("CDROMLoc", name);
            QCOMPARE(w.After("CmdNext"), steps);
            QCOMPARE(w.Text("lblCheckFilesReport"), QString(u"Folder: " + w.Root + name));
            QCOMPARE(w.After("CmdBack"), first);
        }
        w.Next(1);
        w.Click("OpenImageLoc");
        w.ClickAndRead("CmdNext", u"You must add at least one MP3 file to the compilation."_s);
        w.Put(u"a.wma"_s, "1");
        w.ClickAndStop("CmdNext");
        QVERIFY(w.Text("lblCheckFilesReport") == u"Stopped: media files found so far: 0" && w.Step() == 1);
        w.Next(2);
        QVERIFY(w.Text("lblCheckFilesReport") == u"Media files found: 1" && w.Step() == 3 && w.Usable() == steps);
        QVERIFY(w.After("CmdBack").endsWith(steps) && w.After("CmdBack") == steps && w.Step() == 1);
        w.Next(3);
        QVERIFY(w.Usable() == u"CmdNext" && w.Focused() == u"CmdClose");
        QCOMPARE(w.Setting("RI1") + w.Setting("RI2") + w.Setting("RI5"), u"125"_s);
        QVERIFY(w.After("CmdNext") == first && w.F.ShellCalls.join(u'|') == u"explore " + w.Folder);
    }

    void BuildsADisc()
    {
        Wizard w;
        w.Fill(4);
        QCOMPARE(w.Text("lblReport"), u"Done: The process completed successfully."_s);
        QCOMPARE(w.F.Window->PanelText(4), u"Compilation of 2 files created"_s);
        QVERIFY(w.Text("Label7").startsWith(u"The compilation is now ready to burn."_s));
        QCOMPARE(w.Listed(), "a b.wma autorun.inf MP3Index.htm playlist.m3u setup.ico vtlmp3fb.exe"_ba);
        QCOMPARE(w.Content("autorun.inf"), "[autorun]\r\nicon=setup.ico\r\nopen=start playlist.m3u\r\n"
                                           "open=start vtlmp3fb.exe\r\n"_ba);
        QCOMPARE(w.Content("playlist.m3u") + w.Content("vtlmp3fb.exe"), "a b.wma\r\n4\\c.wma\r\nbrowser"_ba);
        const QByteArray page = w.Content("MP3Index.htm");
        QVERIFY(page.contains("<title>2 - Created: 03:04:05 [01-02-2026] ") && page.contains("<a href=4/c.wma>"));
        QVERIFY(page.contains("Folder</b>") && !page.contains("Report Description"));
        const auto dragged = [model = w.At<QAbstractItemView>("DragToBurn")->model()] {
            return std::unique_ptr<QMimeData>(model->mimeData({model->index(0, 0)}))->urls();
        };
        QVERIFY(dragged()[0] == ToUrl(w.Folder + u"\\4"_s) && dragged()[1] == ToUrl(w.Folder + u"\\a b.wma"_s));
        QVERIFY(dragged().size() == 7 && w.Cells("DragToBurn") == QStringList{u"2"_s});

        // The next disc starts with the settings of this one, and an opening of its own with nothing else.
        QString saved;
        for (const auto &[key, value] : w.F.Settings.asKeyValueRange())
            saved += key.section(u'/', 1) + u'=' + value + u' ';
        QVERIFY(saved.startsWith(u"AB=1 AI=1 AL=" + w.Root +
                                 u" AX=1 CA=1 CB=1 CT=1 IC=8 IFL= Init=1 RFL= RI1=2 RI2= "
                                 "RI3= RI4= RI5= SZ=6 "));
        for (const char *key : {"AB", "AI", "AX", "CA", "SZ"})
            w.Setting(key) = u"0"_s;
        w.Setting("RI2") = w.Setting("IC") = u"99"_s;
        w.Next(3);
        QCOMPARE(w.Usable(), QString(u"chkCopyBrowser ShowSoftware chkAutoIndex chkAutoBigList chkAutoIcon " + steps));
        QVERIFY(w.Ticked("chkCopyBrowser") && !w.Ticked("chkAutoIndex") && w.Text("IconChooser") == u"8");
        w.Next(2);
        QVERIFY(dragged().size() == 14 && w.Setting("RI2") == u"99" && w.Text("ImSize") == u"100Mb");
        w.Setting("Init").clear();
        w.Open();
        QVERIFY(w.Usable().isEmpty() && w.Text("CDROMLoc").isEmpty() && w.Text("ImSize") == u"680Mb");
        w.Fill(4);
        QVERIFY(dragged().size() == 7);
    }

    void MakesWhatIsAskedFor()
    {
        Wizard w;
        const QString report = u"LoadReportSet DefReportSet PrevReportSet "_s;
        const QString browser = u"chkCopyBrowser ShowSoftware "_s;
        const QString plays = u"chkAutoBigList chkAutoIcon "_s;
        w.Fill(2);
        QCOMPARE(w.Usable(),
                 QString(report + browser + u"chkAutoIndex " + plays + u"LabelIcon IconChooser CDIcon " + steps));
        QCOMPARE(w.After("chkAutoIcon"), QString(report + browser + u"chkAutoIndex " + plays + steps));
        QCOMPARE(w.After("chkCopyBrowser"), QString(report + browser + plays + steps));
        QCOMPARE(w.After("chkCreateTable"), QString(browser + plays + steps));
        w.Click("chkAutoBigList");
        // No song is a comment.
        w.Put(u"4\\#1.wma"_s, "1");
        w.Put(u"#2.wma"_s, "1");
        w.Click("CmdBack");
        w.Next(1);
        w.Click("CmdBack");
        w.Next(3);
        QCOMPARE(w.Content("playlist.m3u"), ".\\#2.wma\r\na b.wma\r\n4\\#1.wma\r\n4\\c.wma\r\n"_ba);
        QVERIFY(DeleteFile(w.Folder + u"\\#2.wma"_s));
        // A file with nothing to say is not written.
        QCOMPARE(w.Listed(), "a b.wma playlist.m3u"_ba);
        w.Next(3);
        w.Click("chkAutoIcon");
        QCOMPARE(w.After("chkCreateAutorun"), QString(browser + steps));
        QVERIFY(DeleteFile(w.Folder + u"\\playlist.m3u"_s) && DeleteFile(w.Browser));
        w.Next(5);
        QVERIFY(w.Listed() == "a b.wma" && w.Usable() == steps);
    }

    void GivesBackWhatAFailedBuildReplaced()
    {
        // A folder of that name cannot be replaced, nor a file that is read-only; an icon that cannot be saved fails
        // nothing.
        for (const QString &name : u"vtlmp3fb.exe autorun.inf MP3Index.htm playlist.m3u setup.ico "_s.split(u' ')) {
            Wizard w;
            const QString other = name == u"playlist.m3u" ? u"autorun.inf"_s : u"playlist.m3u"_s;
            w.Put(other, "mine");
            if (name == u"setup.ico") {
                w.Put(name, "old");
                SetFileAttributes(w.Folder + u"\\setup.ico", AttributeReadOnly);
            } else {
                EnsureFolder(w.Folder + u'\\' + name);
            }
            w.Fill(3);
            name.isEmpty() ? w.ClickAndStop("CmdNext") : w.Next(1);
            const bool fails = name != u"setup.ico";
            QCOMPARE(w.Text("lblReport").section(u':', 0, 0), name.isEmpty() ? u"Stopped"_s : u"Done"_s);
            QCOMPARE(w.Text("lblReport").endsWith(u" any files created were removed."_s), fails);
            QCOMPARE(w.F.Window->PanelText(4), fails
                                                   ? u"No compilation created"_s
                                                   : u"Compilation of 2 files created; the icon could not be saved"_s);
            QCOMPARE(w.Text("Label7").endsWith(u"lick 'Next>' to try again..."_s), fails);
            QCOMPARE(w.Listed() + w.Content(other) == "a b.wma " + other.toLatin1() + "mine", fails);
            QCOMPARE(w.Cells("DragToBurn").isEmpty() && w.Setting("Init").isEmpty(), fails);
            // What was entered is there for another try.
            w.Setting("Init") = u"1"_s;
            w.Setting("CA") = u"0"_s;
            w.Next(1);
            QCOMPARE(w.Ticked("chkCreateTable"), fails);
        }
    }

    void TakesBackAtTheLastMoment()
    {
        Wizard w;
        w.Put(u"MP3Index.htm"_s, "mine");
        w.Put(u"tmp.htm"_s, "mine");
        w.Fill(2);
        w.ClickAndStopAtEnd("PrevReportSet", "ProgressBar1");
        QCOMPARE(w.F.ShellCalls.join(u'|').remove(w.Folder), u"open \\tmp.htm"_s);
        // What somebody else has put there since stays, and that is told.
        w.Put(u"tmp.htm"_s, "theirs");
        w.ClickAndRead("CmdNext", u"Could not take back the file: "_s + ToHostPath(w.Folder + u"\\tmp.htm"_s));
        w.ClickAndStopAtEnd("CmdNext", "ProgressBar2", 2);
        QCOMPARE(w.Text("lblReport"), u"Stopped: any files created were removed."_s);
        QCOMPARE(w.Listed() + w.Content("MP3Index.htm") + w.Content("tmp.htm"),
                 "a b.wma MP3Index.htm tmp.htmminetheirs"_ba);
    }

    void ReportAndBrowser()
    {
        Wizard w;
        w.F.Window->RestoreSession({});
        w.Put(u"tmp.htm"_s, "mine");
        w.Fill(2);
        QVERIFY(w.PreviewHasFolders() && w.Content("tmp.htm").contains("<title>2 - Created: 03:04:05 [01-02-2026] "));
        w.ClickAndStop("PrevReportSet");
        QCOMPARE(w.Text("lblFilesReport"), u"Stopped: no report was written."_s);
        ReportSettings record = DefaultReportSettings();
        record.SaveRel = false;
        const QString settings = w.F.Inside(u"own.rpt"_s);
        SaveReportSettings(settings, record);
        w.ClickAndGive("LoadReportSet", u"*.rpt"_s, {});
        w.ClickAndGive("LoadReportSet", u"*.rpt"_s, w.F.Inside(u"gone.rpt"_s), u"Could not read the file!"_s);
        QVERIFY(w.PreviewHasFolders());
        w.ClickAndGive("LoadReportSet", u"*.rpt"_s, settings);
        QVERIFY(!w.PreviewHasFolders() && w.Content("tmp.htm").contains("<a href=4/c.wma>"));
        w.Click("ShowSoftware");
        QCOMPARE(w.F.ShellCalls.mid(2).join(u'|').remove(w.Folder), u"open \\tmp.htm|open \\vtlmp3fb.exe"_s);
        // What a look has made goes, and what it replaced is back.
        w.Next(1);
        QCOMPARE(w.Listed() + w.Content("tmp.htm"), "a b.wma tmp.htmmine"_ba);
        w.Click("CmdBack");
        DeleteFile(w.Browser);
        w.ClickAndRead("ShowSoftware",
                       u"Failed to locate the browser software, it may not be installed correctly or not "
                       "packaged with this program, please contact the program vendor..."_s);
        QVERIFY(!w.Usable().contains(u"ows") && !w.Ticked("chkCopyBrowser") && !w.Ticked("chkAutoIndex"));
        w.Next(2);
        QVERIFY(!w.Content("MP3Index.htm").contains("Folder</b>") && w.Setting("RFL") == settings);

        // The settings of the session before, as long as they are there.
        w.Next(3);
        QVERIFY(!w.PreviewHasFolders());
        w.Click("DefReportSet");
        QVERIFY(w.PreviewHasFolders());
        w.Click("CmdClose");
        QVERIFY(w.Content("tmp.htm") == "mine" && DeleteFile(settings));
        w.Open();
        w.Enter("CDROMLoc", u"2"_s);
        w.Next(1);
        w.ClickAndRead("CmdNext", u"Could not load the Report Settings used in the previous session, using default."_s);
        QVERIFY(w.PreviewHasFolders() && w.PreviewHasFolders());
        // What cannot be taken back waits for the next look.
        const QString looked = w.Folder + u"\\tmp.htm";
        QVERIFY(SetFileAttributes(looked, AttributeReadOnly));
        w.ClickAndRead("CmdNext", u"Could not take back the file: "_s + ToHostPath(looked));
        QVERIFY(SetFileAttributes(looked, AttributeNormal));
        w.Click("CmdBack");
        QVERIFY(w.PreviewHasFolders());
        w.F.Window.reset();
        QCOMPARE(w.Content("tmp.htm"), "mine"_ba);
    }

    void Icons()
    {
        Wizard w;
        QPixmap half(100, 100);
        half.fill(Qt::transparent);
        QPainter(&half).fillRect(0, 0, 50, 100, Qt::red);
        QBuffer png;
        half.save(&png, "PNG");
        const QByteArray icon = IconFileContent(half) + "tail";
        const QString own = w.F.Write(u"own.ICO"_s, icon);
        const auto choose = [&w](const std::optional<QString> &path) {
            QTest::keyClick(w.At("IconChooser"), Qt::Key_End);
            w.F.Prompts.ExpectPath(u"*.ico"_s, path);
            w.Choose("IconChooser", 0);
            return w.Text("IconChooser");
        };
        const auto isWhole = [&w] { return w.Content("setup.ico").endsWith("tail"); };
        w.Fill(2);
        const QByteArray eighth = w.Picture();
        // The file that was chosen before is forgotten when the choice of another one is given up.
        QCOMPARE(choose(own), u"Custom"_s);
        w.F.Prompts.ExpectPath(u"*.ico"_s, {});
        Q_EMIT w.At<QComboBox>("IconChooser")->activated(0);
        w.Click("CmdBack");
        w.Next(1);
        QVERIFY(w.Picture() == eighth);
        QVERIFY(choose({}) == u"8" && choose(w.F.Write(u"no.ico"_s, "no picture")) == u"8" && w.Picture() == eighth);
        QTest::keyClick(w.At("IconChooser"), Qt::Key_Down);
        w.Next(2);
        QCOMPARE(w.Content("setup.ico"), IconFileContent(Icon("disc-9"_L1)));
        // A picture that is no icon becomes one; an icon is copied as it stands.
        for (const QString &path : {w.F.Write(u"png.ico"_s, png.data()), w.F.Write(u"icon.png"_s, icon), own}) {
            w.Next(3);
            QCOMPARE(choose(path), u"Custom"_s);
            w.Next(2);
            QVERIFY(isWhole() == (path == own) && w.Content("setup.ico").startsWith(icon.first(6)));
        }
        // It is shown again while it is there.
        w.Setting("IC") = u"0"_s;
        w.Next(4);
        DeleteFile(own);
        w.Next(1);
        QVERIFY(w.Picture() != eighth && !isWhole());
        w.Next(3);
        QVERIFY(w.Picture() == eighth && w.Text("IconChooser") == u"8");

        // The number that was chosen before takes the place of a picture that is remembered.
        w.F.Write(u"own.ICO"_s, icon);
        w.Setting("IC") = u"8"_s;
        w.Open();
        w.Enter("CDROMLoc", u"2"_s);
        w.Next(2);
        const QByteArray remembered = w.Picture();
        Q_EMIT w.At<QComboBox>("IconChooser")->activated(8);
        QVERIFY(remembered != eighth && w.Picture() == eighth);

        // Four entries, which are read back. A header, the lowest row of 16 pixels, and the first row of the mask.
        QCOMPARE(icon.first(22) + icon.mid(70, 16), "\0\0\1\0\4\0\x10\x10\0\0\1\0\x20\0\x68\4\0\0\x46\0\0\0"
                                                    "\x28\0\0\0\x10\0\0\0\x20\0\0\0\1\0\x20\0"_ba);
        QCOMPARE(icon.mid(110, 4) + icon.mid(170, 4) + icon.mid(1134, 4), "\0\0\xFF\xFF\0\0\0\0\0\xFF\0\0"_ba);
        QCOMPARE(ReadDiscPicture(w.F.Write(u"icon.ico"_s, icon)).Picture.availableSizes(),
                 QList<QSize>({{16, 16}, {32, 32}, {48, 48}, {256, 256}}));
    }

    void ChecksTheSize()
    {
        Wizard w;
        w.Fill(0);
        QFile large(ToHostPath(w.Folder + u"\\large.WAV"_s));
        QVERIFY(large.open(QIODevice::WriteOnly));
        constexpr qint64 most = 104857600 - 1048576 - 3;
        using enum CompilationState;
        for (const auto &[size, disc, state] : {std::tuple(most - 1, 0, Fits),
                                                {most, 0, TooLarge},
                                                {qint64(2147483644), 0, TooLarge},
                                                {qint64(2147483645), 0, Unknown},
                                                {qint64(0), 10, Unknown}})
            QVERIFY(large.resize(size) && CheckCompilationFiles(w.Folder, disc).State == state);
        w.Choose("ImSize", 15);
        w.Next(1);
        w.ClickAndRead("CmdNext", u"The total size of all the files is 1,024 Kb more than the capacity of the CD-ROM!\n"
                                  "Remove some of the files and try again..."_s);
        QCOMPARE(w.Step(), 1);
    }
};

QTEST_MAIN(CompilationTest)
#include "CompilationTest.moc"
