#include "platform/Drives.h"
#include "session/ClientArea.h"
#include "session/FormLayout.h"
#include "session/GridView.h"
#include "session/Hourglass.h"
#include "session/LockWindowRedraw.h"
#include "session/Main.h"
#include "session/StatusPanel.h"
#include "session/Toolbar.h"
#include "text/FormatText.h"

#include <QAction>
#include <QHeaderView>
#include <QLayout>
#include <QMenuBar>
#include <QScreen>
#include <QStatusBar>
#include <QStyle>

#include <numeric>

using namespace Qt::StringLiterals;

void Main::ListView1_Click()
{
    LockWindowRedraw(StatusBar1, false);
    {
        const Hourglass hourglass(view);
        const PlaylistTotals totals = CountTotals(ListView1);
        EnableCommands(totals);
        ShowPanels(totals);
        SetSmallestSize();
    }
    LockWindowRedraw(StatusBar1, true);
}

void Main::EnableCommands(const PlaylistTotals &totals)
{
    const auto enable = [this](std::initializer_list<const char *> names, bool on) {
        for (const char *name : names)
            Command(name)->setEnabled(on && !unavailable.contains(Command(name)));
    };
    const bool any = totals.SelectedCount > 0;
    const bool one = totals.SelectedCount == 1;
    enable({"MEditRemove", "MEditCopy", "MEditPlaySel", "MEditPlayFol", "MEditPlayLoc", "MEditSelAlt", "MEditSelNone",
            "MEditSelLoc", "MEditSeMark", "MEditSeUnMark", "MEditId3"},
           any);
    enable({"MEditFileInfo"}, one);
    if (!any) {
        enable({"MEditSelTop", "MEditSelBottom", "MEditMoveUp", "MEditMoveDown"}, false);
        if (totals.Count > 0)
            enable({"MEditSelAll"}, true);
        return;
    }
    // With a single row in the grid Move Up and Move Down keep the state they had unless that row is selected.
    if (totals.FirstSelected || totals.Count >= 2)
        enable({"MEditMoveUp"}, !totals.FirstSelected);
    if (totals.LastSelected || totals.Count >= 2)
        enable({"MEditMoveDown"}, !totals.LastSelected);
    if (one) {
        enable({"MEditSelAll"}, true);
        enable({"MEditSelTop"}, !totals.FirstSelected);
        enable({"MEditSelBottom"}, !totals.LastSelected);
    } else {
        enable({"MEditSelAll", "MEditSelTop", "MEditSelBottom"}, totals.SelectedCount < totals.Count);
    }
}

void Main::ShowPanels(const PlaylistTotals &totals)
{
    if (totals.SelectedCount == 0) {
        SetPanel(1, u"Total: "_s + QString::number(totals.Count));
        SetPanel(2, FormatPlayTime(totals.Length));
        SetPanel(3, FormatFileSize(totals.Size));
        return;
    }
    SetPanel(3, FormatFileSize(totals.SelectedSize));
    if (totals.SelectedCount > 1) {
        SetPanel(1, QString::number(totals.SelectedCount) + u" Items");
        SetPanel(2, FormatPlayTime(totals.SelectedLength));
        return;
    }
    SetPanel(1, u"Track: "_s + QString::number(totals.CurrentRow) + u'/' + QString::number(totals.Count));
    SetPanel(2, FormatPlayTime(totals.SelectedLength) + u'[' +
                    FormatPlayTime(totals.RunningTime - totals.SelectedLength) + u']');
}

void Main::SetPanel(int panel, const QString &text)
{
    panels[static_cast<std::size_t>(panel - 1)]->setText(text);
}

QString Main::PanelText(int panel) const
{
    return panels[static_cast<std::size_t>(panel - 1)]->text();
}

void Main::ShowMessage(const QString &text)
{
    SetPanel(4, ShownPath(text));
    panels[3]->repaint();
}

void Main::Answer(const QString &text)
{
    ShowMessage(text);
    told = text;
}

void Main::KeepAnswer()
{
    if (told.isEmpty() && !toldBefore.isEmpty())
        Answer(toldBefore);
}

void Main::RequireItems()
{
    host.Prompts.Message({u"The function cannot be performed because there are no Playlist items!\n"
                          u"Use Drag and Drop or 'Add Item' to add files/folders/m3us to the list."_s,
                          PromptIcon::Warning});
}

void Main::Check(QByteArrayView name, bool on)
{
    Command(name)->setChecked(on);
}

bool Main::IsChecked(QByteArrayView name) const
{
    return Command(name)->isChecked();
}

QByteArray Main::ElementName(const char *array, int index)
{
    return QByteArray(array) + '(' + QByteArray::number(index) + ')';
}

void Main::CheckDefaults()
{
    for (const char *name : {"MViewToolbar", "MViewStatusBar", "MViewTransVal(0)", "MToolsSaveSetting",
                             "MHidOptionMenuVisible", "MHidOptionToolbarFlat", "MHidOptionTableFontDefault",
                             "MHidOptionTableBCDefault", "MHidOptionTableFCDefault"})
        Check(name, true);
    for (int i = 0; i < ColumnMode; ++i)
        Check(ElementName("MHidOptionColumnVis", i), true);
}

void Main::Form_Resize()
{
    const int toolbarHeight = Toolbar1->isHidden() ? 0 : Toolbar1->sizeHint().height();
    const int statusHeight = StatusBar1->isHidden() ? 0 : StatusBar1->sizeHint().height();
    const FormLayout places = LayOutForm(client->size(), toolbarHeight, statusHeight, toolbarAtTop);
    Toolbar1->setGeometry(places.Toolbar);
    StatusBar1->setGeometry(places.StatusBar);
    if (!places.Grid.isEmpty())
        view->setGeometry(places.Grid);
}

void Main::SetSmallestSize()
{
    constexpr int rows = 3;
    const int grid = view->header()->sizeHint().height() + rows * (view->fontMetrics().height() + 4);
    // Or the bar would still answer for the former texts.
    StatusBar1->layout()->activate();
    const QSize bar = StatusBar1->minimumSizeHint();
    client->setMinimumSize(bar.width(), Toolbar1->sizeHint().height() + grid + bar.height());
}

void Main::PositionForm(QWidget *dialog)
{
    const QRect area = screen()->geometry();
    const QRect main = frameGeometry().translated(-area.topLeft());
    const QPoint place = PlaceDialog(main, dialog->frameSize(), area.size()) + area.topLeft();
    const QSize frame = screen()->availableSize() - Room().size();
    dialog->move(BroughtInside({place, dialog->size() + frame}, screen()->availableGeometry()).topLeft());
}

QMargins Main::FrameMargins() const
{
    const QRect inner = geometry();
    const QRect outer = frameGeometry();
    // The window system has not told of any before the first paint.
    const int title = std::max(inner.top() - outer.top(), style()->pixelMetric(QStyle::PM_TitleBarHeight));
    return {inner.left() - outer.left(), title, outer.right() - inner.right(), outer.bottom() - inner.bottom()};
}

QRect Main::Room() const
{
    return screen()->availableGeometry().marginsRemoved(FrameMargins());
}

void Main::MViewToolbar_Click()
{
    Toolbar1->setVisible(Toolbar1->isHidden());
    Check("MViewToolbar", !Toolbar1->isHidden());
    Form_Resize();
}

void Main::MViewStatusBar_Click()
{
    StatusBar1->setVisible(StatusBar1->isHidden());
    Check("MViewStatusBar", !StatusBar1->isHidden());
    Form_Resize();
}

void Main::SetToolbarAtTop(bool top)
{
    toolbarAtTop = top;
    Form_Resize();
}

void Main::DragToolbar(QPoint globalPosition)
{
    const bool top = mapFromGlobal(globalPosition).y() < height() / 2;
    if (top != toolbarAtTop)
        SetToolbarAtTop(top);
}

void Main::MViewNormal_Click()
{
    if (isMaximized())
        showNormal();
    SetGridColours({systemWindow, true}, {systemWindowText, true});
    SetToolbarAtTop(true);
    Toolbar1->hide();
    MViewToolbar_Click();
    StatusBar1->hide();
    MViewStatusBar_Click();
}

void Main::MViewCompact_Click()
{
    constexpr ColourNumber darkRed = 64;
    constexpr ColourNumber pureRed = 255;
    if (isMaximized())
        showNormal();
    SetGridColours({darkRed, false}, {pureRed, false});
    StatusBar1->show();
    MViewStatusBar_Click();
    SetToolbarAtTop(false);
    Toolbar1->hide();
    MViewToolbar_Click();
}

void Main::MViewTransVal_Click(int index)
{
    // The alpha of the window, of 255: 242 for 5 % down to 127 for 50 %.
    const int alpha = index == 0 ? 255 : static_cast<int>(256 - 12.8 * index) - 1;
    setWindowOpacity(alpha / 255.0);
    transparency = index;
    Check(ElementName("MViewTransVal", index), true);
}

void Main::MViewRefresh_Click()
{
    if (ListView1.Count() == 0)
        return;
    DestroyFileArray();
    SaveFileArrayFromList(true);
    view->hide();
    const auto showAgain = qScopeGuard([this] {
        view->show();
        view->setFocus();
    });
    NameStep(u"Refresh"_s);
    std::vector<int> rows(static_cast<std::size_t>(ListView1.Count()));
    std::iota(rows.begin(), rows.end(), 1);
    ReadFileArray(1, CurrentDirectory(), Status::Ending::ByEscape,
                  [&](const RecordOf &recordOf) { ListView1.Replace(rows, recordOf, false); });
    ListView1.SetSortedColumn(0);
    for (int row = 1; row <= ListView1.Count(); ++row)
        PlaylistDirty |= ListView1.Item(row).FullPath() != FileArray[row - 1];
    MEditSelNone_Click();
    Answer(stopped.isEmpty() ? QString(u"Read "_s + CountedItems(ListView1.Count()) + u" again") : stopped);
}

void Main::AskAndSort(int column)
{
    if (ListView1.Count() == 0)
        return;
    const PromptAnswer answer = host.Prompts.Message(
        {u"Sort by "_s + Grid::Caption(column) + u'?', PromptIcon::Question, PromptButtons::YesNo});
    if (answer != PromptAnswer::Yes)
        return;
    const SortChoice choice = SortChoiceOf(column);
    msSortListview(ListView1, choice.Column, choice.Type);
    ListView1.SetSortedColumn(column);
    NameStep(u"Sort by "_s + Grid::Caption(column));
    ListView1_Click();
}

void Main::msSortListview(Grid &grid, int column, SortType dataType)
{
    SortGrid(grid, column, dataType);
}

void Main::MViewSortFilename_Click()
{
    AskAndSort(ColumnFileName);
}

void Main::MViewSortTime_Click()
{
    AskAndSort(ColumnTime);
}

void Main::MViewSortSize_Click()
{
    AskAndSort(ColumnSize);
}

void Main::MViewSortFolder_Click()
{
    AskAndSort(ColumnPath);
}

void Main::MViewSortID_Click()
{
    AskAndSort(ColumnID);
}

void Main::MViewSortLayer_Click()
{
    AskAndSort(ColumnLayer);
}

void Main::MViewSortBitrate_Click()
{
    AskAndSort(ColumnBitrate);
}

void Main::MViewSortSamplerate_Click()
{
    AskAndSort(ColumnSamplerate);
}

void Main::MViewSortMode_Click()
{
    AskAndSort(ColumnMode);
}

void Main::MViewSortOrig_Click()
{
    AskAndSort(ColumnOriginalOrder);
}
