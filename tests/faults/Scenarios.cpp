#include "faults/Scenarios.h"

#include "faults/Faults.h"
#include "playlist/FileRecord.h"

#include <QCryptographicHash>

#include <filesystem>

#include <sys/wait.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

Stage::Stage()
{
    qputenv("XDG_CONFIG_HOME", F.Temporary.filePath(u"config"_s).toLocal8Bit());
    F.Adjust = [this](Host &host) {
        host.Settings = HeadlessHost(u"test"_s).Settings;
        if (host.Settings.Read(u"Options"_s, u"Show Tips at Startup"_s).isEmpty())
            host.Settings.Write(u"Options"_s, u"Show Tips at Startup"_s, u"0"_s);
        AnswerPrompts(host.Prompts);
    };
    // Twice, so that all stands that a start makes.
    for (int start = 0; start < 2; ++start) {
        F.Restart();
        F.Window->RestoreSession({});
    }
}

void Stage::AnswerPrompts(Prompts &prompts)
{
    prompts.Message = [this](const MessagePrompt &prompt) {
        Said.append(prompt.Text + u' ' + prompt.Details);
        return prompt.Buttons == PromptButtons::Ok ? PromptAnswer::Ok : PromptAnswer::Yes;
    };
    prompts.Line = [](const auto &) { return std::optional(u"cover"_s); };
    prompts.SaveFile = prompts.OpenFile = [this](const FilePrompt &) { return Target; };
}

void Stage::TakeSong(const QString &name, const QByteArray &ending)
{
    QByteArray content;
    ReadWholeFile(FromHostPath(QStringLiteral(TEST_DATA "/tag-id3v24.mp3")), content);
    F.Window->AddFile(F.Write(name, content + ending), 0);
    F.Window->PlaylistDirty = false;
}

QString Stage::Memory() const
{
    QStringList rows;
    for (int row = 1; F.Window && row <= F.Window->ListView1.Count(); ++row) {
        const PlaylistItem &item = F.Window->ListView1.Item(row);
        const bool isTrue = AnalyseFile(item.FullPath()).Size == item.Size;
        rows.append(item.FullPath() + (isTrue ? QString() : u" (not as on the disk)"_s));
    }
    if (F.Window)
        rows.append(F.Window->CurrentPlaylistPath + (F.Window->PlaylistDirty ? u" changed"_s : u" saved"_s));
    return rows.join(u'\n');
}

QString Stage::Told() const
{
    QStringList texts = Said;
    if (F.Window)
        texts.append(F.Window->PanelText(4));
    if (Form != nullptr) {
        texts.append(Texts("^(lb|lbl)Report$"));
        if (At("lstReport") != nullptr)
            texts.append(Cells("lstReport"));
    }
    return texts.join(u'\n');
}

void Stage::Leave()
{
    if (F.Window->close())
        F.Window.reset();
}

namespace
{
void PrepareList(Stage &s)
{
    s.F.Write(u"1.m3u"_s, "the former list\r\n");
    s.TakeSong(u"3\\a.mp3"_s);
    s.TakeSong(u"3\\b.mp3"_s);
    s.F.Window->CurrentPlaylistPath = s.Target = s.F.Inside(u"1.m3u"_s);
    s.F.Window->PlaylistDirty = true;
}

void PrepareSession(Stage &s)
{
    s.TakeSong(u"3\\a.mp3"_s);
    s.Leave();
    s.F.Restart();
    // Another program stores a list of its own, once this one has read the last one.
    const QByteArray theirs = "theirs.mp3\r\n";
    const QByteArray mark = QCryptographicHash::hash(theirs, QCryptographicHash::Sha1).toHex();
    s.F.Window->World().Settings.Write(u"Session"_s, u"Mark"_s, QString::fromLatin1(mark));
    s.F.Window->World().Settings.Flush();
    s.F.Window->RestoreSession({});
    s.TakeSong(u"3\\b.mp3"_s);
    s.F.Window->PlaylistDirty = false;
    s.F.Write(u"app\\tmp.m3u"_s, theirs);
}

void PrepareTags(Stage &s)
{
    for (const char *name : {"a", "b", "c"})
        s.TakeSong(u"3\\"_s + QLatin1StringView(name) + u".mp3", name);
    s.OpenTool("MEditId3", "Id3Info", {1, 2, 3});
    s.Click("ID3v1Present");
    s.Click("ID3v2Present");
    s.Enter("ID3v2Title", QString(9000, u't'));
    s.Target = s.F.Inside(u"picture.bmp"_s);
    QImage(2, 2, QImage::Format_RGB888).save(ToHostPath(s.Target));
    s.Reach("ID3v2LstImages");
    s.Click("ID3v2ImageAdd");
}

/// A file with two names is written in place, and its audio moves.
void PrepareLinkedTags(Stage &s)
{
    s.TakeSong(u"3\\a.mp3"_s, QByteArray(600'000, 'a'));
    const std::filesystem::path song = s.F.Temporary.filePath(u"3/a.mp3"_s).toStdString();
    std::filesystem::create_hard_link(song, song.parent_path() / "b.mp3");
    s.OpenTool("MEditId3", "Id3Info", {1});
    s.Enter("ID3v2Title", QString(9000, u't'));
}

void PrepareRename(Stage &s)
{
    for (const char *name : {"a_1", "b_2", "c_3"})
        s.TakeSong(u"3\\"_s + QLatin1StringView(name) + u".mp3", QByteArray(name).repeated(name[2] - '0'));
    s.OpenTool("MToolsRename", "RenameForm", {1, 2, 3});
}

void PrepareAutocreate(Stage &s)
{
    s.TakeSong(u"3\\4x\\a.mp3"_s);
    s.TakeSong(u"3\\5y\\b.mp3"_s);
    s.F.Write(u"3\\5y\\5y-3.m3u"_s, "mine\r\n");
    s.OpenTool("MToolsM3UWiz", "AutoCreateWizard", {});
    s.Next(3);
}

void PrepareReport(Stage &s)
{
    s.TakeSong(u"3\\a.mp3"_s);
    s.TakeSong(u"3\\b.mp3"_s);
    s.F.Write(u"3\\tmp.htm"_s, "mine");
    s.Target = s.F.Write(u"4.htm"_s, "the last one");
    s.OpenTool("MToolsReport", "ReportForm", {});
    s.Next(3);
}

/// The wizard, so many steps from its first.
void OpenCompilation(Stage &s, int steps)
{
    s.TakeSong(u"3\\4\\a.mp3"_s);
    s.F.Write(u"program\\VTLMP3FB.exe"_s, "browser");
    s.OpenTool("MToolsMP3CDWiz", "MP3CDWizard", {});
    s.Enter("AssembleLoc", s.F.Inside(u"3\\"_s));
    s.Enter("CDROMLoc", u"4"_s);
    s.Next(steps);
}

void PreparePreviews(Stage &s)
{
    s.F.Write(u"3\\4\\tmp.htm"_s, "mine");
    OpenCompilation(s, 2);
}

void PrepareCompilation(Stage &s)
{
    s.F.Write(u"3\\4\\playlist.m3u"_s, "mine");
    s.F.Write(u"3\\4\\autorun.inf"_s, "mine too");
    OpenCompilation(s, 3);
}

void PrepareFailingCompilation(Stage &s)
{
    s.F.Write(u"3\\4\\setup.ico"_s, "my icon");
    EnsureFolder(s.F.Inside(u"3\\4\\MP3Index.htm"_s));
    PrepareCompilation(s);
}

void PrepareBookmarks(Stage &s)
{
    s.TakeSong(u"3\\a.mp3"_s);
    s.F.Window->BookmarkFilePath = s.F.Write(u"5.bm"_s, "bookmarks");
    s.F.Write(u"5.bm.bak"_s, "bookmarks of old");
}
/// Kills another process in the midst of what is done, and starts anew.
void Kill(Stage &s, const char *button, std::size_t at)
{
    const pid_t child = ::fork();
    if (child == 0) {
        ArmFaults(QFile::encodeName(s.F.Temporary.path()).toStdString(), {Fault::Kill, at, false, {}});
        s.Click(button);
        ::_exit(0);
    }
    ::waitpid(child, nullptr, 0);
    s.Form = nullptr;
    s.F.Restart();
}

void PrepareLeftDisc(Stage &s)
{
    PrepareFailingCompilation(s);
    Kill(s, "CmdNext", 80);
}

void PrepareLeftTags(Stage &s)
{
    PrepareLinkedTags(s);
    Kill(s, "CmdUpdate", 15);
}
} // namespace

const std::vector<Scenario> &Scenarios()
{
    const auto next = [](Stage &s) { s.Click("CmdNext"); };
    const auto look = [](Stage &s) { s.Click("PrevReportSet"); };
    const auto undo = [](Stage &s) { s.Click("cmdUndo"); };
    const auto update = [](Stage &s) { s.Click("CmdUpdate"); };
    const auto start = [](Stage &s) { s.F.Window->RestoreSession({}); };
    static const char *disc = "3/4/MP3Index.htm,3/4/vtlmp3fb.exe,3/4/playlist.m3u,3/4/autorun.inf";
    const std::vector<Claim> discClaims{{"completed successfully", disc, 4},
                                        {"created\n.*completed successfully", "3/4/setup.ico", 1},
                                        {"could not be saved\n", "3/4/setup.ico", 0},
                                        {"any files created were removed", disc, 0},
                                        {"any files created were removed", "3/4/setup.ico", 0}};
    const std::vector<Claim> saveClaims{{"Saved 2", "1.m3u", 1}, {"Unable to write", "1.m3u", 0}};
    const std::vector<Claim> reportClaims{{"Report kept as", "4.htm", 1},
                                          {"Report not kept|No report written", "4.htm", 0},
                                          {"Could not take back", "3/tmp.htm", 1},
                                          {"^(?!.*Could not take back)", "3/tmp.htm", 0}};
    static const std::vector<Scenario> scenarios{
        {"save", PrepareList, {[](Stage &s) { s.F.Trigger("MFileSave"); }}, "", "", "1.m3u", 0, saveClaims},
        {"save relative", PrepareList, {[](Stage &s) { s.F.Trigger("MFileSaveRel"); }}, "", "", "1.m3u", 0, saveClaims},
        {"session end", PrepareSession, {[](Stage &s) { s.Leave(); }}},
        {"tags of several files",
         PrepareTags,
         {[](Stage &s) { s.Click("CmdCopy"); }, update},
         "tmp.bmp",
         "",
         "",
         3,
         {{"(\\d) files? updated", "3/a.mp3,3/b.mp3,3/c.mp3"}}},
        {"tags in place", PrepareLinkedTags, {update}, "", "a.mp3 b.mp3", "", 0, {{"(\\d) file", "3/a.mp3"}}},
        {"rename and undo",
         PrepareRename,
         {[](Stage &s) { s.Click("CmdProcess"); }, undo},
         "",
         "",
         "",
         0,
         {{"Done: (\\d)/(\\d) Items were Restored", "3/A 1.mp3,3/B 2.mp3,3/C 3.mp3"}}},
        {"autocreate and undo",
         PrepareAutocreate,
         {next, undo},
         "",
         "",
         "5y-3.m3u",
         0,
         {{"playlists? deleted(?:, (\\d) failed)?\n", "3/4x/4x-3.m3u,3/5y/5y-3.m3u"},
          {"0 playlists written", "3/4x/4x-3.m3u,3/5y/5y-3.m3u", 0}}},
        {"report kept", PrepareReport, {next}, "tmp.htm", "", "tmp.htm 4.htm", 0, reportClaims},
        {"previews",
         PreparePreviews,
         {look, look, next},
         "",
         "",
         "tmp.htm",
         0,
         {{"^(?!.*Could not take back)", "3/4/tmp.htm", 0}}},
        {"compilation", PrepareCompilation, {next}, "", "", "playlist.m3u autorun.inf", 0, discClaims},
        {"failing compilation",
         PrepareFailingCompilation,
         {next},
         "vtlmp3fb.exe setup.ico playlist.m3u autorun.inf",
         "",
         "setup.ico playlist.m3u autorun.inf",
         0,
         discClaims},
        {"bookmarks",
         PrepareBookmarks,
         {[](Stage &s) { s.F.Trigger("MToolsSaveWinamp"); }},
         "",
         "",
         "5.bm 5.bm.bak",
         0,
         {{"successfully updated", "5.bm", 1},
          {"Unable to write to the bookmark", "5.bm", 0},
          {"just created a backup", "5.bm.bak", 1},
          {"backup copy of the Bookmarks file could not", "5.bm,5.bm.bak", 0}}},
        {"start after a disc", PrepareLeftDisc, {start}, "", "", "setup.ico playlist.m3u vtlmp3fb.exe"},
        {"start after tags in place", PrepareLeftTags, {start}, "", "", "a.mp3 b.mp3"},
    };
    return scenarios;
}
