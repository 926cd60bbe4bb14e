#pragma once

#include "support/FormDriver.h"

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
};
