#pragma once

#include "media/MP3File.h"
#include "support/FormDriver.h"

#include <memory>

inline std::unique_ptr<MP3File> Tags(const QString &path)
{
    auto file = std::make_unique<MP3File>();
    file->ReadTags(path, false);
    return file;
}

/// Which tags a file has: "1", "2", "12" or nothing.
inline QString Kinds(const QString &path)
{
    const auto file = Tags(path);
    return QLatin1StringView(file->HasID3v1() ? "1" : "") + QLatin1StringView(file->HasID3v2() ? "2" : "");
}

/// The fields that a text can be typed into, and what they are in a file: a frame, or else a value by the field's name.
inline const QList<std::pair<const char *, const char *>> tagFields{
    {"ID3v2Title", "TIT2"},     {"ID3v2Artist", "TPE1"},   {"ID3v2Album", "TALB"},      {"ID3v2Year", "TYER"},
    {"ID3v2Track", "TRCK"},     {"ID3v2Composer", "TCOM"}, {"ID3v2OrigArtist", "TOPE"}, {"ID3v2Copyright", "TCOP"},
    {"ID3v2EncodedBy", "TENC"}, {"ID3v2URL", "WXXX"},      {"ID3v2Lyrics", "USLT"},     {"ID3v2UserText", "TXXX"},
    {"ID3v2ArtistURL", "WOAR"}, {"ID3v2Genre", "TCON"},    {"ID3v2Preference", ""},     {"ID3v2Mood", ""},
    {"ID3v2Tempo", ""},         {"ID3v2Situation", ""},    {"ID3v1Title", ""},          {"ID3v1Artist", ""},
    {"ID3v1Album", ""},         {"ID3v1Year", ""},         {"ID3v1Comment", ""},        {"ID3v1Track", ""}};

/// What a file holds for these fields, and the name of its genre.
inline QStringList TagTexts(const QString &path)
{
    const auto file = Tags(path);
    QStringList texts;
    for (qsizetype i = 0; i < 14; ++i)
        texts.append(file->GetFrame(tagFields[i].second));
    texts += {file->Preference(), file->Mood(), file->Tempo(), file->Situation()};
    texts += {file->Title(), file->Artist(), file->Album(), file->Year(), file->Comment()};
    return texts << QString::number(file->Track()) << MP3File::GenreList().split(u'|').value(file->Genre());
}

/// A main window and the tag editor over it.
struct TagEditor : FormDriver {
    /// Copies a file of the test data, one with both tags, to a name and adds its row.
    QString Take(const QString &name, const char *data = "tag-id3v24.mp3") { return TakeData(name, data); }

    /// Opens the editor over one file, unlike the others without tags; returns its path.
    QString OpenUntagged()
    {
        const QString path = Take(QStringLiteral("a.mp3"), "cbr128-mpeg1-joint-info.mp3");
        Open({1});
        return path;
    }

    void Open(const QList<int> &rows) { OpenTool("MEditId3", "Id3Info", rows); }

    /// The commands below the pages that are enabled, by their names, from left to right.
    QString Commands() const
    {
        QStringList names;
        for (const QWidget *command : Named("^Cmd(Copy|Next|Paste|Prev|Update)"))
            names += command->isEnabled() ? QStringList{command->objectName().mid(3)} : QStringList();
        return names.join(u' ');
    }

    void Page(int page) const { Turn(*At<QTabWidget>("Id3MainTab"), page); }
    void InnerPage(int page) const { Turn(*At<QTabWidget>("Id3v2Tab"), page); }

    void AddImage(const QString &path)
    {
        F.Prompts.ExpectPath(QString(), path);
        F.Prompts.ExpectPath(QStringLiteral("Enter description."), QString());
        Click("ID3v2ImageAdd");
    }

    QStringList Fields() const
    {
        QStringList texts;
        for (const auto &[field, frame] : tagFields)
            texts.append(Text(field));
        return texts;
    }

    /// Before a click that would lose changed fields of one file.
    void ExpectQuestion(PromptAnswer answer)
    {
        F.Prompts.Expect(QStringLiteral("The tags have been changed. Do you want to update the file first?"), answer);
    }
    /// Reads the file again, whatever was changed.
    void Reset()
    {
        ExpectQuestion(PromptAnswer::No);
        Click("CmdRefresh");
    }
};
