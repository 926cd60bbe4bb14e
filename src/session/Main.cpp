#include "session/Main.h"

#include "platform/WayBack.h"
#include "session/ClientArea.h"
#include "session/GridView.h"
#include "session/Icons.h"
#include "session/MenuTable.h"
#include "session/StatusPanel.h"
#include "session/ToolForm.h"
#include "session/Toolbar.h"

#include <QAction>
#include <QActionGroup>
#include <QApplication>
#include <QCloseEvent>
#include <QMenuBar>
#include <QStatusBar>
#include <QToolButton>

#include <utility>

using namespace Qt::StringLiterals;

Main::Main(const Host &hostOfProgram, std::span<const Tool> toolsOfProgram)
    : host(hostOfProgram), tools(toolsOfProgram), recentFiles(RecentCount, QString())
{
    setObjectName("Main"_L1);
    client = new ClientArea(this);
    client->Resized = [this] { Form_Resize(); };
    setCentralWidget(client);
    status = new Status(this);
    BuildGrid();
    BuildMenus();
    BuildToolbar();
    BuildStatusBar();
    ColourMenus();
    CheckDefaults();
    ShowSteps();
    TipTimer.setSingleShot(true);
    connect(&TipTimer, &QTimer::timeout, this, &Main::TipTimer_Timer);
    SetCurrentPlaylist({});
    resize(QSize(1000, 640).boundedTo(Room().size()));
    ListView1_Click();
    MEditSelNone_Click();
    view->setFocus();
}

Main::~Main()
{
    KeepWaysBack({});
}

void Main::BuildGrid()
{
    ListView1.SmallIcons = {Icon("row-normal"_L1), Icon("row-missing"_L1), Icon("row-blue"_L1), Icon("row-green"_L1),
                            Icon("row-red"_L1)};
    view = new GridView(&ListView1, client);
    view->setObjectName("ListView1"_L1);
    view->MakeDragData = [this] { return MakeDragData(); };
    std::copy_n(ListView1.ColumnWidths.begin(), ColumnWidthDefaults.size(), ColumnWidthDefaults.begin());
    GridFontDefaultName = view->font().family();
    view->setFont(DefaultGridFont());
    connect(view, &GridView::Clicked, this, &Main::RefreshUnlessRunning);
    connect(view, &GridView::EnterPressed, this, [this] { Run([this] { PrevM3U(PreviewSelected); }); });
    connect(view, &GridView::InsertPressed, this, [this] { Run([this] { MEditAddDir_Click(); }); });
    connect(view, &GridView::HeaderClicked, this, [this](int column) { Run([&] { AskAndSort(column); }); });
    connect(view, &GridView::FilesDropped, this, [this](const QStringList &paths) { Run([&] { DropFiles(paths); }); });
    connect(view, &GridView::RowsDropped, this,
            [this](int before, bool again) { Run([&] { DropRows(before, again); }); });
    connect(view, &GridView::MenuRequested, this, [this](const QPoint &position) { menus["MEdit"]->popup(position); });
    connect(view, &GridView::HeaderMenuRequested, this,
            [this](const QPoint &position) { menus["MHidOptionColumns"]->popup(position); });
}

QAction *Main::MakeCommand(const MenuEntry &entry, int index)
{
    auto *action = new QAction(entry.Caption.toString(), this);
    action->setObjectName(QLatin1StringView(entry.Name));
    action->setCheckable(entry.Checkable);
    if (entry.Icon[0] != '\0')
        action->setIcon(Icon(QLatin1StringView(entry.Icon)));
    QString tip = entry.Tip.toString();
    if (!entry.Shortcut.isEmpty()) {
        action->setShortcut(QKeySequence::fromString(entry.Shortcut.toString(), QKeySequence::PortableText));
        tip += u" (" + action->shortcut().toString(QKeySequence::NativeText) + u')';
        // Also of the window, so that the key works while the menu bar is hidden.
        addAction(action);
    }
    if (entry.Handler != nullptr) {
        connect(action, &QAction::triggered, this,
                [this, handler = entry.Handler] { Run([&] { (this->*handler)(); }); });
    } else if (entry.ArrayHandler != nullptr) {
        connect(action, &QAction::triggered, this,
                [this, handler = entry.ArrayHandler, index] { Run([&] { (this->*handler)(index); }); });
    } else if (const Tool *tool = ToolOf(action->objectName())) {
        connect(action, &QAction::triggered, this, [this, tool] { Run([&] { OpenTool(*tool); }); });
    } else {
        action->setEnabled(false);
        unavailable.insert(action);
    }
    action->setToolTip(tip);
    commands.insert(entry.Name, action);
    return action;
}

QAction *Main::MakeElement(MenuEntry entry, int index, QStringView caption)
{
    const QByteArray name = ElementName(entry.Name, index);
    entry.Name = name.constData();
    entry.Caption = caption;
    return MakeCommand(entry, index);
}

QMenu *Main::MakeMenu(const MenuEntry &entry, QMenu *parent)
{
    auto *menu = new QMenu(entry.Caption.toString(), this);
    menu->setObjectName(QLatin1StringView(entry.Name));
    menu->setToolTipsVisible(true);
    if (entry.Icon[0] != '\0')
        menu->setIcon(Icon(QLatin1StringView(entry.Icon)));
    if (parent != nullptr)
        parent->addMenu(menu);
    menus.insert(entry.Name, menu);
    commands.insert(entry.Name, menu->menuAction());
    connect(menu, &QMenu::aboutToShow, this, [this, menu] { ShowAvailable(*menu); });
    return menu;
}

void Main::ShowAvailable(const QMenu &menu) const
{
    for (QAction *command : menu.actions()) {
        const Tool *tool = ToolOf(command->objectName());
        if (tool != nullptr && tool->Available != nullptr)
            command->setVisible(tool->Available(*this));
    }
}

void Main::BuildMenus()
{
    QList<QMenu *> open;
    for (const MenuEntry &entry : MenuTable()) {
        open.resize(entry.Level);
        QMenu *parent = open.isEmpty() ? nullptr : open.last();
        const bool isMenu = entry.Handler == nullptr && entry.ArrayHandler == nullptr && entry.Tip.isEmpty();
        if (entry.Name[0] == '\0')
            parent->addSeparator();
        else if (isMenu)
            open.append(MakeMenu(entry, parent));
        else if (entry.ArrayHandler == nullptr)
            parent->addAction(MakeCommand(entry));
        for (std::size_t i = 0; i < entry.Captions.size(); ++i)
            parent->addAction(MakeElement(entry, static_cast<int>(i), entry.Captions[i]));
    }
    for (const char *name : {"MFile", "MEdit", "MView", "MTools", "MHelp"})
        menuBar()->addMenu(menus[name]);
    // What a right click on the toolbar brings up can be reached while there is no toolbar too.
    menus["MView"]->addSeparator();
    menus["MView"]->addMenu(menus["MHidOption"]);
    ShowRecentFiles();
    // One of them holds at any time, so they have radio marks.
    auto *transparencies = new QActionGroup(this);
    for (QAction *action : menus["MViewTrans"]->actions())
        transparencies->addAction(action);
}

void Main::ColourMenus()
{
    // A highlight as strong as the icons would swallow them.
    QPalette palette = QApplication::palette("QMenu");
    palette.setColor(QPalette::Highlight,
                     Blend(palette.color(QPalette::Highlight), palette.color(QPalette::Window), 30));
    palette.setColor(QPalette::HighlightedText, palette.color(QPalette::WindowText));
    for (QMenu *menu : findChildren<QMenu *>())
        menu->setPalette(palette);
}

void Main::changeEvent(QEvent *event)
{
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::ApplicationPaletteChange)
        ColourMenus();
}

void Main::BuildToolbar()
{
    static constexpr std::array buttons{"MFileNew",
                                        "MFileOpen",
                                        "MFileSave",
                                        "",
                                        "MEditAddDir",
                                        "MEditRemove",
                                        "",
                                        "MEditMoveUp",
                                        "MEditMoveDown",
                                        "",
                                        "MEditPlaySel",
                                        "MEditPlayList",
                                        "MEditId3",
                                        "",
                                        "MToolsSearch",
                                        "",
                                        "MHelpHelp"};
    Toolbar1 = new Toolbar(client);
    Toolbar1->setObjectName("Toolbar1"_L1);
    for (const char *name : buttons) {
        if (name[0] == '\0') {
            Toolbar1->AddGap();
            continue;
        }
        QAction *command = Command(name);
        QToolButton *button = Toolbar1->AddButton(command);
        button->setEnabled(!unavailable.contains(command));
        connect(button, &QToolButton::clicked, this, [this, command] { RunFromToolbar(command); });
        if (QByteArrayView(name) == "MToolsSearch")
            AddToolsMenu(button);
    }
    connect(Toolbar1, &Toolbar::Dragged, this, &Main::DragToolbar);
    connect(Toolbar1, &Toolbar::MenuRequested, this,
            [this](const QPoint &position) { menus["MHidOption"]->popup(position); });
    connect(Toolbar1, &Toolbar::CustomizeRequested, this, [this] { Run([this] { CustomizeToolbar1(); }); });
}

void Main::AddToolsMenu(QToolButton *button)
{
    auto *menu = new QMenu(button);
    menu->setToolTipsVisible(true);
    for (const char *name :
         {"MToolsSearch", "MToolsFilter", "MToolsRename", "MToolsReport", "MToolsM3UWiz", "MToolsMP3CDWiz"})
        menu->addAction(Command(name));
    button->setMenu(menu);
    button->setPopupMode(QToolButton::InstantPopup);
    button->setEnabled(true);
}

const Tool *Main::ToolOf(const QString &command) const
{
    const auto tool = std::find_if(tools.begin(), tools.end(),
                                   [&](const Tool &each) { return command == QLatin1StringView(each.Command); });
    return tool != tools.end() ? &*tool : nullptr;
}

void Main::OpenTool(const Tool &tool)
{
    if (tool.NeedsItems && ListView1.Count() == 0) {
        RequireItems();
        return;
    }
    if (tool.Run != nullptr) {
        tool.Run(*this);
        return;
    }
    ToolForm *&form = toolForms[&tool];
    if (form == nullptr)
        form = tool.Make(*this);
    form->Open();
}

void Main::RunFromToolbar(QAction *command)
{
    if (const Tool *tool = ToolOf(command->objectName())) {
        Run([&] { OpenTool(*tool); });
        return;
    }
    for (const MenuEntry &entry : MenuTable()) {
        if (entry.Handler != nullptr && command->objectName() == QLatin1StringView(entry.Name))
            Run([&] { (this->*entry.Handler)(); });
    }
}

void Main::BuildStatusBar()
{
    // Long texts of a full list; the fourth panel takes what is left.
    static constexpr std::array<QStringView, 4> usual{u"Track: 32767/32767", u"100:00:00[100:00:00]", u"16,384 Bytes",
                                                      u""};
    StatusBar1 = new QStatusBar(client);
    StatusBar1->setObjectName("StatusBar1"_L1);
    // The panels draw their own borders; some styles would add a second one.
    StatusBar1->setStyleSheet(u"QStatusBar::item { border: none; }"_s);
    for (std::size_t i = 0; i < panels.size(); ++i) {
        panels[i] = new StatusPanel(usual[i].toString(), StatusBar1);
        StatusBar1->addWidget(panels[i], usual[i].isEmpty() ? 1 : 0);
    }
}

QAction *Main::Command(QByteArrayView name) const
{
    QAction *action = commands.value(name.toByteArray());
    Q_ASSERT(action != nullptr);
    return action;
}

void Main::Run(const std::function<void()> &command)
{
    if (running)
        return;
    running = true;
    toldBefore = std::exchange(told, {});
    if (!toldBefore.isEmpty())
        ShowMessage({});
    stepName.clear();
    stopped.clear();
    hostEnds = false;
    ListView1.Steps().Open();
    const auto stop = qScopeGuard([this, dirty = PlaylistDirty] {
        ListView1.CloseStep(stepName.isEmpty() ? NameOfStep() : stepName, dirty);
        ShowSteps();
        toldBefore.clear();
        hostEnds = false;
        running = false;
        host.Settings.Flush();
    });
    Attempt(command);
}

void Main::RefreshUnlessRunning()
{
    if (!running)
        Attempt([this] { ListView1_Click(); });
}

void Main::Attempt(const std::function<void()> &command)
{
    try {
        command();
    } catch (const std::exception &failure) {
        host.Prompts.Message({QString::fromUtf8(failure.what()), PromptIcon::Stop});
        ListView1_Click();
    }
}

bool Main::ConfirmLoss()
{
    return host.Prompts.Message(
               {u"The list and the settings could not be stored for the next start, perhaps because the "
                "disk is full. Do you want to close the program all the same?"_s,
                PromptIcon::Warning, PromptButtons::YesNo}) == PromptAnswer::Yes;
}

bool Main::PrepareToEnd()
{
    return (hostEnds || ConfirmSaveFirst()) && (!keepsSession || SetFormState(true) || ConfirmLoss());
}

bool Main::CloseTools()
{
    for (ToolForm *form : std::as_const(toolForms)) {
        if (form->isVisible() && (!form->close() || form->isVisible()))
            return false;
    }
    return true;
}

bool Main::EndWithHost(bool mayAsk)
{
    const bool asked = std::exchange(hostEnds, false);
    bool ends = true;
    // In the midst of a command nobody can be asked, and the files that it works on stay. A tool's may be on the way
    // between the files and the list, or hold what has been entered.
    const auto isOpen = [](const ToolForm *form) { return form != nullptr && form->isVisible(); };
    const bool isAtStake = PlaylistDirty || std::any_of(toolForms.cbegin(), toolForms.cend(), isOpen);
    const QStringList files = FileArray;
    Attempt([&] {
        if (mayAsk)
            ends = !isClosing && (running ? !isAtStake : CloseTools() && PrepareToEnd());
        // A list that is being read has no rows yet: the last session stays.
        if (keepsSession && (running ? ListView1.Count() > 0 : !mayAsk))
            SetFormState(true);
    });
    if (running)
        FileArray = files;
    hostEnds = mayAsk ? ends : asked;
    return ends;
}

void Main::closeEvent(QCloseEvent *event)
{
    event->ignore();
    isClosing = true;
    const auto closed = qScopeGuard([this] { isClosing = false; });
    Attempt([&] {
        if (PrepareToEnd())
            event->accept();
    });
}
