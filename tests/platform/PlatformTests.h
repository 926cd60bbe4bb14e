#pragma once

#include "platform/Drives.h"
#include "platform/Files.h"

#include <QTemporaryDir>

#include <filesystem>
#include <functional>
#include <memory>
#include <vector>

using TestMaker = std::function<std::unique_ptr<QObject>()>;

/// The test classes of this executable.
std::vector<TestMaker> &PlatformTests();

/// Put a static one beside a test class to have it run.
template <typename Test>
struct RegisterTest {
    RegisterTest()
    {
        PlatformTests().push_back([] { return std::make_unique<Test>(); });
    }
};

/// A test class with a new folder for each of its tests.
class FolderTest : public QObject
{
    Q_OBJECT

protected:
    QString In(const QString &name) const { return folder + u'\\' + name; }
    bool Write(const QString &name, const QByteArray &content) const { return WriteWholeFile(In(name), content); }
    /// Gives a file a second name.
    bool LinkFile(const QString &from, const QString &to) const
    {
        const auto host = [this](const QString &name) {
            return std::filesystem::path(ToHostPath(In(name)).toStdU16String());
        };
        std::error_code error;
        std::filesystem::create_hard_link(host(from), host(to), error);
        return !error;
    }
    /// "unreadable" for what cannot be read.
    QByteArray Content(const QString &name) const
    {
        QByteArray content;
        return ReadWholeFile(In(name), content) ? content : QByteArray("unreadable");
    }
    /// Files, then folders.
    QStringList Listed() const
    {
        FolderEntries entries;
        ListFolder(folder, entries);
        return entries.Files + entries.Folders;
    }

    std::unique_ptr<QTemporaryDir> directory;
    /// Inside form, without a trailing backslash.
    QString folder;

private Q_SLOTS:
    void init()
    {
        directory = std::make_unique<QTemporaryDir>();
        folder = FromHostPath(directory->path());
    }
};
