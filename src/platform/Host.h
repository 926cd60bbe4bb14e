#pragma once

#include <QColor>
#include <QDateTime>
#include <QFont>
#include <QString>
#include <QStringList>

#include <functional>
#include <optional>

// What the program asks of the world, as plain records of functions. The real ones stand behind QtHost(); a test
// installs a queue that states each prompt and gives its answer.

enum class PromptIcon { None, Question, Information, Warning, Stop };
enum class PromptButtons { Ok, YesNo, YesNoCancel };
enum class PromptAnswer { Ok, Yes, No, Cancel };

struct MessagePrompt {
    QString Text;
    PromptIcon Icon = PromptIcon::None;
    PromptButtons Buttons = PromptButtons::Ok;
    /// What else a person may want to know, a line each; empty for nothing.
    QString Details{};
};

/// A file dialog. Filter is in the form "Text (*.m3u)|*.m3u|"; paths are inside paths.
struct FilePrompt {
    QString Title;
    QString Filter;
    QString DefaultExtension;
    QString Proposal;
};

struct FolderPrompt {
    QString Title;
    bool EditBox = false;
};

struct LinePrompt {
    QString Title;
    QString Text;
    QString Proposal;
};

/// An empty optional is Cancel.
struct Prompts {
    std::function<PromptAnswer(const MessagePrompt &)> Message;
    std::function<std::optional<QString>(const FilePrompt &)> OpenFile;
    std::function<std::optional<QString>(const FilePrompt &)> SaveFile;
    std::function<std::optional<QString>(const FolderPrompt &)> Folder;
    std::function<std::optional<QColor>(const QColor &)> Colour;
    std::function<std::optional<QFont>(const QFont &)> Font;
    std::function<std::optional<QString>(const LinePrompt &)> Line;
    /// Several files at once; none is Cancel.
    std::function<QStringList(const FilePrompt &)> OpenFiles;
};

/// A program of the desktop that takes no document.
struct DesktopTool {
    std::function<bool()> Exists = [] { return false; };
    /// False when it cannot be started.
    std::function<bool()> Open = [] { return false; };
};

/// The desktop's own programs. Paths are inside paths; false when the desktop refused.
struct Shell {
    /// A document, or a web address that starts with a scheme and "://", with its registered program.
    std::function<bool(const QString &)> Open;
    /// A text from a file as a web address, whatever it says; what would be no address but a file is refused.
    std::function<bool(const QString &)> Browse;
    /// A document with the first program registered for it that is not this one; false for none.
    std::function<bool(const QString &)> OpenElsewhere;
    /// A folder window.
    std::function<bool(const QString &)> Explore;
    /// The desktop's properties of a file; false where there is no such dialog.
    std::function<bool(const QString &)> Properties;
    /// Full path (or command) of the program registered for a document, empty for none.
    std::function<QString(const QString &)> AssociatedProgram;
    /// The desktop's file search.
    DesktopTool Find{};
    DesktopTool VolumeControl{};
    DesktopTool SystemInformation{};
};

struct Clock {
    std::function<QDateTime()> Now;
    /// A draw in [0, 1).
    std::function<double()> Random;
    /// Seeds Random from the clock.
    std::function<void()> Reseed;
};

/// Per-user text values by section and key; a key never written reads as the empty text.
struct SettingsStore {
    std::function<QString(const QString &section, const QString &key)> Read;
    /// A value that is the one last read or written changes nothing, so that another process keeps what it stored.
    std::function<void(const QString &section, const QString &key, const QString &value)> Write;
    /// Stores what was written. False when that fails; it is then kept for the next time. It also happens when the
    /// program ends.
    std::function<bool()> Flush = [] { return true; };
    /// From now on Read tells what others have stored meanwhile, too.
    std::function<void()> Refresh = [] {};
    /// Where they are kept, for a person.
    QString Place{};
};

struct Host {
    struct Prompts Prompts;
    struct Shell Shell;
    struct Clock Clock;
    SettingsStore Settings;
    /// Delivered and read-only: tips, help page. Inside form, no trailing backslash.
    QString ProgramFolder;
    /// Written: `tmp.m3u`, `tmp.htm`. Beside the program when that is writable and marked portable, else the user's
    /// data folder, which is not created before somebody writes to it (EnsureFolder). Inside form, no trailing
    /// backslash.
    QString ApplicationFolder;
    /// The windowing system can show a window half transparent.
    bool WindowsCanFade = false;
    /// The folders below which everything lies, as "c:\", in the order of their letters.
    std::function<QStringList()> Roots;
    /// What this host is, for a person.
    QString System;
    /// An environment variable; empty when it is not set.
    std::function<QString(const QString &name)> Environment;
};

/// Clock, settings and folders of this host, without anything that needs a window: its prompts answer Cancel (Ok) and
/// its shell refuses. Settings are kept under applicationName. Needs a QCoreApplication; writes nothing by itself.
Host HeadlessHost(const QString &applicationName);

/// Maps the drive letters of the settings section "Drives": key = letter "a" to "y", value = host folder.
void LoadDriveMappings(const SettingsStore &settings);
