#include "media/FullData.h"
#include "platform/DiskFile.h"
#include "platform/Drives.h"
#include "platform/Files.h"
#include "platform/FolderLock.h"
#include "playlist/M3UFile.h"
#include "session/FormLayout.h"
#include "session/GridView.h"
#include "session/Hourglass.h"
#include "session/Main.h"
#include "session/Toolbar.h"

#include <QAction>
#include <QCryptographicHash>
#include <QGuiApplication>
#include <QScreen>
#include <QStatusBar>

#include <algorithm>
#include <optional>

using namespace Qt::StringLiterals;

namespace
{
// Positions and sizes are kept in twips, fifteen to a pixel.
constexpr int twips = 15;
constexpr int smallestStored = 500;

const QString optionsSection = u"Options"_s;
const QString tipKey = u"Show Tips at Startup"_s;
const QString fullDataKey = u"Full Data"_s;
const QString sessionSection = u"Session"_s;
const QString markKey = u"Mark"_s;

/// Values of one section. A value that cannot be read leaves what it was to set alone.
class Section
{
public:
    Section(const SettingsStore &settingsStore, const QString &sectionName) : store(settingsStore), name(sectionName) {}

    QString Text(const QString &key) const { return store.Read(name, key); }
    void Write(const QString &key, const QString &value) const { store.Write(name, key, value); }
    void Write(const QString &key, qint64 value) const { Write(key, QString::number(value)); }
    void WriteTruth(const QString &key, bool value) const { Write(key, value ? u"True"_s : u"False"_s); }

    std::optional<int> Number(const QString &key) const
    {
        bool ok = false;
        const int number = Text(key).toInt(&ok);
        return ok ? std::optional(number) : std::nullopt;
    }

    std::optional<bool> Truth(const QString &key) const
    {
        const QString text = Text(key);
        if (text.compare("True"_L1, Qt::CaseInsensitive) == 0)
            return true;
        return text.compare("False"_L1, Qt::CaseInsensitive) == 0 ? std::optional(false) : std::nullopt;
    }

    /// A switch kept as "1" or "0"; what is no number counts as on.
    bool SwitchedOn(const QString &key) const { return Number(key).value_or(1) == 1; }

private:
    const SettingsStore &store;
    QString name;
};

/// A list with what others have put into its stored form since that was read.
QStringList OthersBefore(const QStringList &own, const QStringList &wasStored, const QStringList &isStored)
{
    QStringList paths;
    for (const QString &path : isStored) {
        if (!wasStored.contains(path) && !own.contains(path))
            paths.append(path);
    }
    return paths + own;
}

/// By which the settings tell the list that a program stored at its end from one that it only previewed.
QString SessionMark(const QByteArray &content)
{
    return QString::fromLatin1(QCryptographicHash::hash(content, QCryptographicHash::Sha1).toHex());
}
} // namespace

bool Main::SetFormState(bool save)
{
    const Hourglass hourglass(this);
    if (save)
        return SaveState();
    LoadState();
    return true;
}

bool Main::TipsAtStartup() const
{
    const QString value = host.Settings.Read(optionsSection, tipKey);
    return value.isEmpty() || value.toInt() == 1;
}

void Main::SetTipsAtStartup(bool on)
{
    host.Settings.Write(optionsSection, tipKey, on ? u"1"_s : u"0"_s);
}

void Main::MToolsFullData_Click()
{
    SetFullData(IsChecked("MToolsFullData"));
    host.Settings.Write(optionsSection, fullDataKey, FullData() ? u"1"_s : u"0"_s);
    MViewRefresh_Click();
}

bool Main::SaveState()
{
    EnsureFolder(host.ApplicationFolder);
    const FolderLock lock(host.ApplicationFolder);
    host.Settings.Refresh();
    QStringList recentOnes = OthersBefore(recentFiles, storedRecentFiles, StoredRecentFiles());
    const Section recent(host.Settings, u"RF"_s);
    bool done = true;
    if (IsChecked("MToolsSaveSetting")) {
        SaveView();
        DestroyFileArray();
        SaveFileArrayFromList(true);
        const std::optional<QString> kept = KeepOtherSession();
        done = kept && WriteSession();
        if (done)
            host.Settings.Write(sessionSection, markKey, SessionMark(sessionContent));
        if (done && !kept->isEmpty())
            recentOnes.prepend(*kept);
        recent.Write(u"Wkdir"_s, NormalisedPath(CurrentDirectory()));
    }
    recentOnes.resize(RecentCount);
    for (int i = 0; i < RecentCount; ++i) {
        const QString number = QString::number(i + 1);
        recent.Write(number, recentOnes[i].isEmpty() ? QString() : number + u": " + recentOnes[i]);
    }
    storedRecentFiles += recentFiles;
    SaveShortcuts();
    recent.Write(u"W"_s, BookmarkFilePath);
    Section(host.Settings, u"SSE"_s).Write(u"V"_s, IsChecked("MToolsSaveSetting") ? 1 : 0);
    return host.Settings.Flush() && done;
}

bool Main::WriteSession()
{
    return WritePlaylistFile(SessionFile(), FileArray) && ReadWholeFile(SessionFile(), sessionContent);
}

void Main::SaveShortcuts()
{
    const QStringList stored = StoredShortcuts();
    QStringList all;
    for (const QString &path : ShortcutList + stored) {
        const bool isKept = ShortcutList.contains(path) || awayShortcuts.contains(path);
        const bool isGone = storedShortcuts.contains(path) && (!stored.contains(path) || !isKept);
        if (!isGone && !all.contains(path))
            all.append(path);
    }
    const Section shortcuts(host.Settings, u"SH"_s);
    for (qsizetype i = 0; i < std::max(all.size(), stored.size()); ++i)
        shortcuts.Write(QString::number(i + 1), all.value(i));
    storedShortcuts += ShortcutList;
}

std::optional<QString> Main::KeepOtherSession() const
{
    QByteArray content;
    QStringList others;
    if (!ReadWholeFile(SessionFile(), content))
        return IsAbsent(SessionFile()) ? std::optional(QString()) : std::nullopt;
    const bool isSession = host.Settings.Read(sessionSection, markKey) == SessionMark(content);
    if (content == sessionContent || !isSession || !TakeSession(content, SessionFile(), others))
        return QString();
    const QSet<QString> own(FileArray.cbegin(), FileArray.cend());
    if (std::all_of(others.cbegin(), others.cend(), [&own](const QString &path) { return own.contains(path); }))
        return QString();
    const QString name = host.ApplicationFolder + host.Clock.Now().toString(u"'\\session-'yyyyMMdd-HHmmss"_s);
    QString path = name + u".m3u";
    for (int i = 2; ExamineFile(path).Exists; ++i)
        path = name + u'-' + QString::number(i) + u".m3u";
    return WriteWholeFile(path, content) ? std::optional(path) : std::nullopt;
}

QStringList Main::StoredRecentFiles() const
{
    const Section recent(host.Settings, u"RF"_s);
    QStringList paths;
    for (int i = 0; i < RecentCount; ++i)
        paths.append(recent.Text(QString::number(i + 1)).mid(3));
    paths.removeAll(QString());
    return paths;
}

QStringList Main::StoredShortcuts() const
{
    const Section shortcuts(host.Settings, u"SH"_s);
    QStringList paths;
    for (int i = 1; !shortcuts.Text(QString::number(i)).isEmpty(); ++i)
        paths.append(shortcuts.Text(QString::number(i)));
    return paths;
}

void Main::SaveView()
{
    const Section position(host.Settings, u"PS"_s);
    const QRect normal = isMaximized() ? normalGeometry() : geometry();
    if (normal.top() > 0 && normal.left() > 0 && !isMinimized()) {
        position.Write(u"H"_s, normal.height() * twips);
        position.Write(u"T"_s, normal.top() * twips);
        position.Write(u"W"_s, normal.width() * twips);
        position.Write(u"L"_s, normal.left() * twips);
    }
    const Section elements(host.Settings, u"VE"_s);
    elements.Write(u"TA"_s, IsChecked("MViewToolbar") ? 1 : 0);
    elements.Write(u"SA"_s, IsChecked("MViewStatusBar") ? 1 : 0);
    elements.Write(u"TRANS"_s, transparency);
    const Section bar(host.Settings, u"ToolB"_s);
    bar.WriteTruth(u"Flat"_s, IsChecked("MHidOptionToolbarFlat"));
    bar.WriteTruth(u"3D"_s, IsChecked("MHidOptionToolbar3D"));
    bar.Write(u"Align"_s, toolbarAtTop ? 1 : 2);
    Section(host.Settings, u"Menu"_s).WriteTruth(u"Visible"_s, IsChecked("MHidOptionMenuVisible"));
    const Section table(host.Settings, u"TableB"_s);
    table.WriteTruth(u"BCD"_s, IsChecked("MHidOptionTableBCDefault"));
    table.Write(u"BC"_s, gridBackground);
    table.WriteTruth(u"FCD"_s, IsChecked("MHidOptionTableFCDefault"));
    table.Write(u"FC"_s, gridForeground);
    for (int i = 1; i <= ColumnMode; ++i) {
        table.Write(u"TV"_s + QString::number(i), ListView1.ColumnWidths[static_cast<std::size_t>(i - 1)]);
        table.WriteTruth(u"TX"_s + QString::number(i), IsChecked(ElementName("MHidOptionColumnVis", i - 1)));
    }
    const Section font(host.Settings, u"TableFont"_s);
    font.WriteTruth(u"Default"_s, IsChecked("MHidOptionTableFontDefault"));
    font.Write(u"Name"_s, view->font().family());
    font.Write(u"Size"_s, QString::number(view->font().pointSizeF()));
    font.WriteTruth(u"Italic"_s, view->font().italic());
    font.WriteTruth(u"Bold"_s, view->font().bold());
    font.WriteTruth(u"Strikethrough"_s, view->font().strikeOut());
    font.WriteTruth(u"Underline"_s, view->font().underline());
}

void Main::LoadState()
{
    const bool keeps = Section(host.Settings, u"SSE"_s).SwitchedOn(u"V"_s);
    Check("MToolsSaveSetting", keeps);
    const Section recent(host.Settings, u"RF"_s);
    if (keeps) {
        LoadPlace();
        LoadBars();
        LoadTable();
        const QString folder = recent.Text(u"Wkdir"_s);
        if (!folder.isEmpty())
            SetCurrentDirectory(folder);
    }
    recentFiles = storedRecentFiles = StoredRecentFiles();
    recentFiles.resize(RecentCount);
    ShowRecentFiles();
    storedShortcuts = StoredShortcuts();
    for (const QString &path : std::as_const(storedShortcuts)) {
        if (PathExists(path))
            AddShortcut(path);
        else if (!IsGone(path))
            awayShortcuts.append(path);
    }
    BookmarkFilePath = recent.Text(u"W"_s);
    SetFullData(host.Settings.Read(optionsSection, fullDataKey) == "1"_L1);
    Check("MToolsFullData", FullData());
    MEditSelNone_Click();
    Form_Resize();
}

void Main::LoadPlace()
{
    const Section position(host.Settings, u"PS"_s);
    QRect place = geometry();
    const auto apply = [&](const QString &key, auto set) {
        const auto number = position.Number(key);
        if (number && *number >= smallestStored)
            set(*number / twips);
    };
    apply(u"H"_s, [&](int height) { place.setHeight(height); });
    apply(u"W"_s, [&](int width) { place.setWidth(width); });
    apply(u"T"_s, [&](int top) { place.moveTop(top); });
    apply(u"L"_s, [&](int left) { place.moveLeft(left); });
    if (place == geometry())
        return;
    QList<QRect> screens;
    for (const QScreen *each : QGuiApplication::screens())
        screens.append(each->availableGeometry());
    const QMargins frame = FrameMargins();
    setGeometry(BroughtInsideOneOf(place.marginsAdded(frame), screens).marginsRemoved(frame));
}

void Main::LoadBars()
{
    const Section elements(host.Settings, u"VE"_s);
    const auto show = [this](const char *name, QWidget *bar, bool on) {
        Check(name, on);
        bar->setVisible(on);
    };
    show("MViewToolbar", Toolbar1, elements.SwitchedOn(u"TA"_s));
    show("MViewStatusBar", StatusBar1, elements.SwitchedOn(u"SA"_s));
    const Section bar(host.Settings, u"ToolB"_s);
    Check("MHidOptionToolbarFlat", bar.Truth(u"Flat"_s).value_or(IsChecked("MHidOptionToolbarFlat")));
    Check("MHidOptionToolbar3D", bar.Truth(u"3D"_s).value_or(IsChecked("MHidOptionToolbar3D")));
    Toolbar1->SetFlat(IsChecked("MHidOptionToolbarFlat"));
    Toolbar1->SetRaised(IsChecked("MHidOptionToolbar3D"));
    Toolbar1->SetLayout(host.Settings.Read(u"PS"_s, u"Toolbar1"_s));
    const auto align = bar.Number(u"Align"_s);
    if (align == 1 || align == 2)
        SetToolbarAtTop(align == 1);
    ShowMenus(Section(host.Settings, u"Menu"_s).Truth(u"Visible"_s).value_or(IsChecked("MHidOptionMenuVisible")));
    const auto steps = elements.Number(u"TRANS"_s);
    if (steps && *steps >= 1 && *steps <= 10)
        MViewTransVal_Click(*steps);
}

void Main::LoadTable()
{
    const Section table(host.Settings, u"TableB"_s);
    const auto colour = [&](const QString &mark, const QString &key, const char *check, ColourNumber &number) {
        const bool isDefault = table.Truth(mark).value_or(IsChecked(check));
        const auto stored = table.Number(key);
        if (!isDefault && (!stored || !IsColour(*stored)))
            return;
        Check(check, isDefault);
        if (!isDefault)
            number = *stored;
    };
    colour(u"BCD"_s, u"BC"_s, "MHidOptionTableBCDefault", gridBackground);
    colour(u"FCD"_s, u"FC"_s, "MHidOptionTableFCDefault", gridForeground);
    ApplyGridColours();

    const Section stored(host.Settings, u"TableFont"_s);
    Check("MHidOptionTableFontDefault", stored.Truth(u"Default"_s).value_or(true));
    QFont font = view->font();
    if (!stored.Text(u"Name"_s).isEmpty())
        font.setFamily(stored.Text(u"Name"_s));
    const double size = stored.Text(u"Size"_s).toDouble();
    if (size >= 4 && size <= 96)
        font.setPointSizeF(size);
    font.setItalic(stored.Truth(u"Italic"_s).value_or(font.italic()));
    font.setBold(stored.Truth(u"Bold"_s).value_or(font.bold()));
    font.setStrikeOut(stored.Truth(u"Strikethrough"_s).value_or(font.strikeOut()));
    font.setUnderline(stored.Truth(u"Underline"_s).value_or(font.underline()));
    view->setFont(font);

    for (int i = 1; i <= ColumnMode; ++i) {
        const auto width = table.Number(u"TV"_s + QString::number(i));
        if (width && *width >= 0 && *width <= 10000)
            ListView1.ColumnWidths[static_cast<std::size_t>(i - 1)] = *width;
        const auto shown = table.Truth(u"TX"_s + QString::number(i));
        Check(ElementName("MHidOptionColumnVis", i - 1),
              shown.value_or(ListView1.ColumnWidths[static_cast<std::size_t>(i - 1)] > 0));
    }
    view->ApplyColumnWidths();
}
