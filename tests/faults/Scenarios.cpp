#include "faults/Scenarios.h"

#include "playlist/FileRecord.h"

#include <QCryptographicHash>

#include <filesystem>

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
        s.TakeSong(u"3\\"_s + QLatin1StringView(name) + u".mp3", name);
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
} // namespace

const std::vector<Scenario> &Scenarios()
{
    const auto next = [](Stage &s) { s.Click("CmdNext"); };
    const auto look = [](Stage &s) { s.Click("PrevReportSet"); };
    const auto undo = [](Stage &s) { s.Click("cmdUndo"); };
    static const std::vector<Scenario> scenarios{
        {"save", PrepareList, {[](Stage &s) { s.F.Trigger("MFileSave"); }}, "", "", "1.m3u"},
        {"save relative", PrepareList, {[](Stage &s) { s.F.Trigger("MFileSaveRel"); }}, "", "", "1.m3u"},
        {"session end", PrepareSession, {[](Stage &s) { s.Leave(); }}},
        {"tags of several files", PrepareTags, {[](Stage &s) { s.Click("CmdUpdate"); }}, "", "", "", 3},
        {"tags in place", PrepareLinkedTags, {[](Stage &s) { s.Click("CmdUpdate"); }}, "", "a.mp3 b.mp3"},
        {"rename and undo", PrepareRename, {[](Stage &s) { s.Click("CmdProcess"); }, undo}},
        {"autocreate and undo", PrepareAutocreate, {next, undo}, "", "", "5y-3.m3u"},
        {"report kept", PrepareReport, {next}, "tmp.htm", "", "tmp.htm 4.htm"},
        {"previews", PreparePreviews, {look, look, next}, "", "", "tmp.htm"},
        {"compilation", PrepareCompilation, {next}, "", "", "playlist.m3u autorun.inf"},
        {"failing compilation",
         PrepareFailingCompilation,
         {next},
         "vtlmp3fb.exe setup.ico playlist.m3u autorun.inf",
         "",
         "setup.ico playlist.m3u autorun.inf"},
        {"bookmarks", PrepareBookmarks, {[](Stage &s) { s.F.Trigger("MToolsSaveWinamp"); }}, "", "", "5.bm 5.bm.bak"},
    };
    return scenarios;
}
