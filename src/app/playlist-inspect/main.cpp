#include "platform/Arguments.h"
#include "platform/Drives.h"
#include "platform/Files.h"
#include "platform/Headless.h"
#include "platform/Host.h"
#include "session/Main.h"
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
};

int Fail(const QString &reason)
{
    std::fprintf(stderr, "playlist-inspect: %s\n", qUtf8Printable(reason));
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

/// The request of the command line, or the reason why there is none. Arguments are bytes, a character each.
std::optional<Request> ParsedRequest(const QStringList &arguments, QString &reason)
{
    QCommandLineParser parser;
    const QCommandLineOption picture(u"picture"_s, {}, u"FILE.png"_s);
    const QCommandLineOption size(u"size"_s, {}, u"WIDTHxHEIGHT"_s);
    parser.addOptions({picture, size});
    reason = u"usage: playlist-inspect [--picture FILE.png] [--size WIDTHxHEIGHT] PATH"_s;
    if (!parser.parse(arguments) || parser.positionalArguments().size() != 1)
        return {};
    Request request;
    request.Path = PathOfArgument(parser.positionalArguments().front().toLatin1());
    if (parser.isSet(picture))
        request.Picture = PathOfArgument(parser.value(picture).toLatin1());
    if (parser.isSet(size)) {
        const auto parsed = ParsedSize(parser.value(size));
        reason = u"--size wants WIDTHxHEIGHT, each from 100 to 8192"_s;
        if (!parsed)
            return {};
        request.Size = *parsed;
    }
    return request;
}

bool CanBeRead(const QString &path)
{
    FolderEntries entries;
    InputFile file;
    return ExamineFile(path).IsFolder ? ListFolder(path, entries) : file.Open(path);
}

QString Printable(QString value)
{
    for (QChar &character : value) {
        if (character.category() == QChar::Other_Control)
            character = u'?';
    }
    return value;
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
    PrepareHeadless();
    QApplication app(argc, argv);
    QStringList arguments{u"playlist-inspect"_s};
    for (const QByteArray &argument : ProgramArguments(argc, argv))
        arguments.append(QString::fromLatin1(argument));
    QString reason;
    const auto request = ParsedRequest(arguments, reason);
    if (!request)
        return Fail(reason);
    if (!CanBeRead(request->Path))
        return Fail(u"cannot read "_s + ToHostPath(request->Path));

    QStringList messages;
    Main window(InspectingHost(messages));
    window.resize(request->Size);
    window.Run([&] { window.OpenCommandLine(request->Path); });
    PrintPlaylist(window);
    for (const QString &message : std::as_const(messages))
        std::fprintf(stderr, "playlist-inspect: %s\n", qUtf8Printable(message));
    if (!request->Picture.isEmpty() && !SavePicture(window, request->Picture))
        return Fail(u"cannot write "_s + ToHostPath(request->Picture));
    return 0;
}
