#include "session/Main.h"
#include "platform/Arguments.h"
#include "platform/Drives.h"
#include "platform/Files.h"
#include "platform/Headless.h"
#include "platform/Host.h"
#include "session/Palettes.h"
#include "session/ProgramName.h"

#include <QApplication>
#include <QBuffer>
#include <QCommandLineParser>

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
    QSize Size{1000, 640};
    int Scale = 1;
    bool Dark = false;
    bool Compact = false;
};

constexpr QLatin1StringView usage = "usage: playlist-inspect [--picture FILE.png] [--size WIDTHxHEIGHT] [--scale 1-4] "
                                    "[--style dark|light] [--mode normal|compact] PATH"_L1;

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

/// The place of a value among the choices of an option, -1 for none of them. The first choice is the default.
int ChoiceOf(const QCommandLineParser &parser, const QString &option, const QStringList &choices)
{
    return parser.isSet(option) ? static_cast<int>(choices.indexOf(parser.value(option))) : 0;
}

/// The request of the command line; empty when it makes no sense. Arguments are bytes, a character each.
std::optional<Request> ParsedRequest(const QStringList &arguments)
{
    QCommandLineParser parser;
    for (const QString &option : {u"picture"_s, u"size"_s, u"scale"_s, u"style"_s, u"mode"_s})
        parser.addOption(QCommandLineOption(option, {}, option));
    if (!parser.parse(arguments) || parser.positionalArguments().size() != 1)
        return {};
    Request request;
    request.Path = PathOfArgument(parser.positionalArguments().front().toLatin1());
    request.Picture = PathOfArgument(parser.value(u"picture"_s).toLatin1());
    const auto size = parser.isSet(u"size"_s) ? ParsedSize(parser.value(u"size"_s)) : request.Size;
    const int scale = ChoiceOf(parser, u"scale"_s, {u"1"_s, u"2"_s, u"3"_s, u"4"_s});
    const int style = ChoiceOf(parser, u"style"_s, {u"light"_s, u"dark"_s});
    const int mode = ChoiceOf(parser, u"mode"_s, {u"normal"_s, u"compact"_s});
    const bool nameless = parser.isSet(u"picture"_s) && request.Picture.isEmpty();
    if (!size || scale < 0 || style < 0 || mode < 0 || nameless || request.Path.isEmpty())
        return {};
    request.Size = *size;
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

void PrintPlaylist(const Main &window)
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
}

bool SavePicture(Main &window, const QString &path)
{
    QByteArray png;
    QBuffer buffer(&png);
    return window.grab().save(&buffer, "PNG") && WriteWholeFile(path, png);
}

/// Reads the drive letters of the user's settings and writes nothing; a message becomes the reason of a failure.
Host InspectingHost(QStringList &messages)
{
    Host host = HeadlessHost(ApplicationName());
    LoadDriveMappings(host.Settings);
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
    Main window(InspectingHost(messages));
    window.resize(request->Size);
    if (request->Compact)
        window.MViewCompact_Click();
    window.Run([&] { window.OpenCommandLine(request->Path); });
    PrintPlaylist(window);
    for (const QString &message : std::as_const(messages))
        Complain(message);
    if (!request->Picture.isEmpty() && !SavePicture(window, request->Picture))
        return Fail(u"cannot write "_s + ToHostPath(request->Picture));
    return 0;
}
