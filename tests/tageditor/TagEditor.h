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

inline constexpr const char *v1Fields = "^ID3v1(Title|Artist|Album|Track|Genre|Year|Comment)$";
/// All of the second tag but the comment in work.
inline constexpr const char *v2Fields =
    "^ID3v2(Title|Artist|Album|Track|Genre|Year|Composer|OrigArtist|Copyright|EncodedBy|Lyrics|UserText|URL|ArtistURL|"
    "Preference|Mood|Tempo|Situation)$";

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

    /// The texts of all fields, by their names: pages that are turned to change places.
    QStringList Fields() const
    {
        QStringList texts;
        for (const QWidget *field : Named(v1Fields) + Named(v2Fields))
            texts.append(field->objectName() + u'=' + Text(field->objectName().toLatin1().constData()));
        texts.sort();
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
