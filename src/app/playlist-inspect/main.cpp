#include "session/Main.h"
#include "app/Tools.h"
#include "platform/Arguments.h"
#include "platform/Drives.h"
#include "platform/Files.h"
#include "platform/Headless.h"
#include "platform/Host.h"
#include "reports/WriteReport.h"
#include "session/Palettes.h"
#include "session/ProgramName.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QBuffer>
#include <QComboBox>
#include <QCommandLineParser>
#include <QDialog>
#include <QTabWidget>
#include <QTimer>

#include <algorithm>
#include <cstdio>
#include <optional>

using namespace Qt::StringLiterals;

namespace
{
struct Request {
    QString Path;
    /// Empty for none.
    QString Picture;
    /// Empty for the window's own size.
    std::optional<QSize> Size;
    int Scale = 1;
    bool Dark = false;
    bool Compact = false;
    /// The rows that are selected, from 1.
    int FirstRow = 1;
    int LastRow = 0;
    /// The dialog that is pictured; empty for the main window.
    QString Window;
    /// Captions of the dialog's pages, outer ones first.
    QStringList Pages;
    /// What is done in the dialog: a button's control name, or one of a list, field or pages and its
    /// value ("MissAction=2").
    QStringList Steps;
    /// A report of the playlist that is written; empty for none.
    QString ReportFile;
};

constexpr QLatin1StringView usage = "usage: playlist-inspect [--picture FILE.png] [--size WIDTHxHEIGHT] [--scale 1-4] "
                                    "[--style dark|light] [--mode normal|compact] [--select all|N] "
                                    "[--window NAME [--page NAME/NAME] [--steps NAME=VALUE/NAME]] "
                                    "[--report FILE.htm|FILE.txt|FILE.tsv] PATH"_L1;

/// A line break in a host's file name is carried as a private-use character; to a reader it is a control character too.
bool IsControl(QChar character)
{
    return character.category() == QChar::Other_Control || character == u'\uF00A' || character == u'\uF00D';
}

QString Printable(QString value)
{
    std::replace_if(value.begin(), value.end(), IsControl, u'?');
    return value;
}

/// One line on standard error.
void Complain(QString text)
{
    text.replace(u'\n', u' ');
    std::fprintf(stderr, "playlist-inspect: %s\n", qUtf8Printable(Printable(text)));
}

int Fail(const QString &reason)
{
    Complain(reason);
    return 1;
}

std::optional<QSize> ParsedSize(const QString &text)
{
    const QStringList parts = text.split(u'x');
    if (parts.size() != 2)
        return {};
    const QSize size(parts[0].toInt(), parts[1].toInt());
    const bool sane = size.width() >= 100 && size.height() >= 100 && size.width() <= 8192 && size.height() <= 8192;
    return sane ? std::optional(size) : std::nullopt;
}

/// False when the value is neither "all" nor a row number.
bool ParseSelection(const QString &text, Request &request)
{
    if (text == "all"_L1) {
        request.LastRow = Grid::MaxRows;
        return true;
    }
    request.FirstRow = request.LastRow = text.toInt();
    return request.FirstRow >= 1;
}

/// The tool that has the window; none for a name that no window has.
const Tool *ToolOfWindow(const QString &name)
{
    const std::span<const Tool> tools = Tools();
    const auto tool = std::find_if(tools.begin(), tools.end(), [&](const Tool &each) {
        return each.Window != nullptr && name == QLatin1StringView(each.Window);
    });
    return tool != tools.end() ? &*tool : nullptr;
}

/// False when the options of dialogs make no sense.
bool ParseDialog(const QCommandLineParser &parser, Request &request)
{
    request.Window = parser.value(u"window"_s);
    request.Pages = parser.value(u"page"_s).split(u'/', Qt::SkipEmptyParts);
    request.Steps = parser.value(u"steps"_s).split(u'/', Qt::SkipEmptyParts);
    const bool known = !parser.isSet(u"window"_s) || ToolOfWindow(request.Window) != nullptr;
    const bool pagesOfNothing = parser.isSet(u"page"_s) && (request.Pages.isEmpty() || request.Window.isEmpty());
    const bool stepsOfNothing = !request.Steps.isEmpty() && request.Window.isEmpty();
    return known && !pagesOfNothing && !stepsOfNothing &&
           (!parser.isSet(u"select"_s) || ParseSelection(parser.value(u"select"_s), request));
}

/// The place of a value among the choices of an option, -1 for none of them. The first choice is the default.
int ChoiceOf(const QCommandLineParser &parser, const QString &option, const QStringList &choices)
{
    return parser.isSet(option) ? static_cast<int>(choices.indexOf(parser.value(option))) : 0;
}

/// The request of the command line; empty when it makes no sense. Arguments are bytes, a character each.
std::optional<Request> ParsedRequest(const QStringList &arguments)
{
    QCommandLineParser parser;
    for (const QString &option : {u"picture"_s, u"size"_s, u"scale"_s, u"style"_s, u"mode"_s, u"select"_s, u"window"_s,
                                  u"page"_s, u"steps"_s, u"report"_s})
        parser.addOption(QCommandLineOption(option, {}, option));
    if (!parser.parse(arguments) || parser.positionalArguments().size() != 1)
        return {};
    Request request;
    request.Path = PathOfArgument(parser.positionalArguments().front().toLatin1());
    request.Picture = PathOfArgument(parser.value(u"picture"_s).toLatin1());
    request.ReportFile = PathOfArgument(parser.value(u"report"_s).toLatin1());
    if (parser.isSet(u"size"_s))
        request.Size = ParsedSize(parser.value(u"size"_s));
    const int scale = ChoiceOf(parser, u"scale"_s, {u"1"_s, u"2"_s, u"3"_s, u"4"_s});
    const int style = ChoiceOf(parser, u"style"_s, {u"light"_s, u"dark"_s});
    const int mode = ChoiceOf(parser, u"mode"_s, {u"normal"_s, u"compact"_s});
    const bool nameless = (parser.isSet(u"picture"_s) && request.Picture.isEmpty()) ||
                          (parser.isSet(u"report"_s) && request.ReportFile.isEmpty());
    if (request.Size.has_value() != parser.isSet(u"size"_s) || !ParseDialog(parser, request) || scale < 0 ||
        style < 0 || mode < 0 || nameless || request.Path.isEmpty())
        return {};
    request.Scale = scale + 1;
    request.Dark = style == 1;
    request.Compact = mode == 1;
    return request;
}

bool CanBeRead(const QString &path)
{
    FolderEntries entries;
    InputFile file;
    return ExamineFile(path).IsFolder ? ListFolder(path, entries) : file.Open(path);
}

void PrintLine(QStringList values)
{
    std::transform(values.cbegin(), values.cend(), values.begin(), Printable);
    std::printf("%s\n", qUtf8Printable(values.join(u'\t')));
}

/// False when the list could not be written, as on a full disk.
bool PrintPlaylist(const Main &window)
{
    QStringList values;
    for (int column = 1; column <= ColumnCount; ++column)
        values.append(Grid::Caption(column));
    PrintLine(values << u"SmallIcon"_s);
    for (int row = 1; row <= window.ListView1.Count(); ++row) {
        values.clear();
        for (int column = 1; column <= ColumnCount; ++column)
            values.append(window.ListView1.CellText(row, column));
        PrintLine(values << QString::number(window.ListView1.Item(row).SmallIcon));
    }
    PrintLine({});
    for (int panel = 1; panel <= 4; ++panel)
        PrintLine({u"panel %1: "_s.arg(panel) + window.PanelText(panel)});
    return std::fflush(stdout) == 0 && std::ferror(stdout) == 0;
}

void SelectRows(Main &window, int first, int last)
{
    window.ListView1.Reselect([&](int row, const PlaylistItem &) { return row >= first && row <= last; });
    window.ListView1_Click();
}

/// Brings the page with a caption to the front, in the first tab control that has one and is shown.
bool ShowPage(const QWidget &dialog, const QString &caption)
{
    for (auto *tabs : dialog.findChildren<QTabWidget *>()) {
        for (int i = 0; i < tabs->count() && tabs->isVisible(); ++i) {
            if (tabs->tabText(i).remove(u'&') == caption && tabs->isTabEnabled(i)) {
                tabs->setCurrentIndex(i);
                return true;
            }
        }
    }
    return false;
}

/// Clicks the button, or gives the list or field its value. False when there is none that can be used.
bool TakeStep(const QWidget &dialog, const QString &step)
{
    auto *control = dialog.findChild<QWidget *>(step.section(u'=', 0, 0));
    if (control == nullptr || !control->isEnabled())
        return false;
    const QString value = step.section(u'=', 1);
    if (auto *button = qobject_cast<QAbstractButton *>(control))
        button->click();
    else if (auto *list = qobject_cast<QComboBox *>(control))
        list->isEditable() ? list->setEditText(value) : list->setCurrentIndex(value.toInt());
    else if (auto *tabs = qobject_cast<QTabWidget *>(control))
        tabs->setCurrentIndex(value.toInt());
    else
        return control->setProperty("text", value);
    return true;
}

/// Lets a window do what it does once it has been painted.
void Settle(const QWidget &dialog)
{
    const QList<QTimer *> timers = dialog.findChildren<QTimer *>();
    while (std::any_of(timers.cbegin(), timers.cend(), [](const QTimer *timer) { return timer->isActive(); }))
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

/// The window that the request names, opened; none when it, one of its pages or a step in it cannot be shown.
QWidget *RequestedWindow(Main &window, const Request &request)
{
    if (request.Window.isEmpty())
        return &window;
    window.Command(ToolOfWindow(request.Window)->Command)->trigger();
    auto *dialog = window.findChild<QDialog *>(request.Window);
    if (dialog == nullptr || !dialog->isVisible())
        return nullptr;
    if (request.Size)
        dialog->resize(*request.Size);
    Settle(*dialog);
    const bool shown = std::all_of(request.Pages.cbegin(), request.Pages.cend(),
                                   [&](const QString &page) { return ShowPage(*dialog, page); });
    const bool done = shown && std::all_of(request.Steps.cbegin(), request.Steps.cend(),
                                           [&](const QString &step) { return TakeStep(*dialog, step); });
    return done ? dialog : nullptr;
}

bool SavePicture(QWidget &window, const QString &path)
{
    // What has just been shown gets its layout first.
    QCoreApplication::processEvents();
    QByteArray png;
    QBuffer buffer(&png);
    return window.grab().save(&buffer, "PNG") && WriteWholeFile(path, png);
}

/// A report with the default settings, as text, or as text with tabs, when the file's name says so.
bool WriteReportFile(Main &window, const QString &path)
{
    window.DestroyFileArray();
    window.SaveFileArrayFromList(true);
    ReportSettings settings = DefaultReportSettings();
    const QString extension = GetExtension(path).toLower();
    settings.TabDelimited = extension == ".tsv"_L1;
    settings.SpaceAligned = !settings.TabDelimited;
    settings.RepType = settings.TabDelimited || extension == ".txt"_L1 ? 1 : 0;
    return WriteWholeReport(path, window.FileArray, settings, Progress(), window.World().Clock);
}

/// Reads the drive letters of the user's settings and writes nothing; a message becomes the reason of a failure.
Host InspectingHost(const QString &path, QStringList &messages)
{
    Host host = HeadlessHost(ApplicationName());
    LoadDriveMappings(host.Settings);
    // A search stays on the drive of the list, as the settings map it.
    host.Roots = [path] { return QStringList{FromHostPath(ToHostPath(path)).first(2) + u'\\'}; };
    host.Settings.Read = [](const QString &, const QString &) { return QString(); };
    host.Settings.Write = [](const QString &, const QString &, const QString &) {};
    host.Prompts.Message = [&messages](const MessagePrompt &prompt) {
        messages.append(prompt.Text);
        return PromptAnswer::Cancel;
    };
    return host;
}
} // namespace

int main(int argc, char **argv)
{
    QStringList arguments{u"playlist-inspect"_s};
    for (const QByteArray &argument : ProgramArguments(argc, argv))
        arguments.append(QString::fromLatin1(argument));
    const auto request = ParsedRequest(arguments);
    if (!request)
        return Fail(usage);
    if (!CanBeRead(request->Path))
        return Fail(u"cannot read "_s + ToHostPath(request->Path));

    PrepareHeadless(request->Scale);
    QApplication app(argc, argv);
    UseStyle(request->Dark);
    QStringList messages;
    Main window(InspectingHost(request->Path, messages), Tools());
    window.resize(request->Window.isEmpty() && request->Size ? *request->Size : QSize(1000, 640));
    if (request->Compact)
        window.MViewCompact_Click();
    // The path was read before the drives were known.
    window.Run([&] { window.OpenCommandLine(FromHostBytes(ToHostBytes(request->Path))); });
    if (request->LastRow > 0)
        SelectRows(window, request->FirstRow, request->LastRow);
    if (!PrintPlaylist(window))
        return Fail(u"cannot write the list"_s);
    if (!request->ReportFile.isEmpty() && !WriteReportFile(window, request->ReportFile))
        return Fail(u"cannot write "_s + ToHostPath(request->ReportFile));
    QWidget *pictured = RequestedWindow(window, *request);
    for (const QString &message : std::as_const(messages))
        Complain(message);
    if (pictured == nullptr)
        return Fail(u"cannot show "_s + request->Window + u' ' + (request->Pages + request->Steps).join(u'/'));
    if (!request->Picture.isEmpty() && !SavePicture(*pictured, request->Picture))
        return Fail(u"cannot write "_s + ToHostPath(request->Picture));
    return 0;
}
