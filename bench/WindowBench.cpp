#include "BenchRows.h"
#include "BenchSupport.h"
#include "BenchWindow.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QHeaderView>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

// A full list in the window, every second row selected: the central refresh over one pass over the rows, and commands
// and gestures with the painting that follows over one painting of the whole window.

namespace
{
BenchWindow &FullWindow()
{
    static BenchWindow *const window = [] {
        auto *made = new BenchWindow;
        made->Window.ListView1.Append(BenchRecords(FullList));
        return made;
    }();
    return *window;
}

void Restore(BenchWindow &window)
{
    Grid &grid = window.Window.ListView1;
    grid.Reselect([](int row, const PlaylistItem &) { return row % 2 == 0; });
    grid.SetFocusedRow(1);
    window.Window.View()->MakeVisible(1);
    window.Window.ListView1_Click();
    window.Settle();
}

void SumRows(Grid &grid)
{
    qint64 length = 0;
    qint64 size = 0;
    int selected = 0;
    for (const PlaylistItem &item : grid.RowsForSelection()) {
        length += item.Length;
        size += item.Size;
        selected += item.Selected ? 1 : 0;
    }
    benchmark::DoNotOptimize(length);
    benchmark::DoNotOptimize(size);
    benchmark::DoNotOptimize(selected);
}

void CountTotalsOverBarePass(benchmark::State &state)
{
    Grid &grid = FullWindow().Window.ListView1;
    Restore(FullWindow());
    CompareInTurn(
        state, FullList, 2, [&] { SumRows(grid); }, [&] { benchmark::DoNotOptimize(CountTotals(grid)); });
}

void ListView1_ClickOverBarePass(benchmark::State &state)
{
    Main &window = FullWindow().Window;
    Restore(FullWindow());
    CompareInTurn(
        state, FullList, 2, [&] { SumRows(window.ListView1); }, [&] { window.ListView1_Click(); });
}

void OverRepaint(benchmark::State &state, const std::function<void()> &gesture, double bound = 1.2,
                 const std::function<void()> &prepare = {})
{
    BenchWindow &window = FullWindow();
    const auto restore = [&] { Restore(window); };
    const auto prepared = [&] {
        Restore(window);
        if (prepare)
            prepare();
    };
    const auto repaint = [&] {
        // What is opaque is not painted along with what lies behind it.
        for (QWidget *widget : {static_cast<QWidget *>(&window.Window), window.Window.View()->viewport(),
                                window.Window.View()->header()->viewport()})
            widget->update();
        window.Paint();
    };
    const auto act = [&] {
        gesture();
        window.Paint();
    };
    Compare(state, bound, {repaint, 1, restore}, {act, 1, prepared});
}

void CommandOverRepaint(benchmark::State &state, const char *name)
{
    QAction *command = FullWindow().Window.Command(name);
    OverRepaint(state, [command] { command->trigger(); });
}

/// All rows come back in the time of one painting, and are painted.
void UndoOverRepaint(benchmark::State &state)
{
    Main &window = FullWindow().Window;
    const auto removeAll = [&] {
        for (const char *name : {"MEditSelAll", "MEditRemove"})
            window.Command(name)->trigger();
        FullWindow().Settle();
    };
    OverRepaint(
        state, [&] { window.Command("MEditUndo")->trigger(); }, 2, removeAll);
}

void ClickOverRepaint(benchmark::State &state, Qt::KeyboardModifiers modifiers)
{
    GridView *view = FullWindow().Window.View();
    OverRepaint(state, [=] {
        const QPoint place = view->visualRect(view->model()->index(7, 0)).center();
        QTest::mouseClick(view->viewport(), Qt::LeftButton, modifiers, place);
    });
}

void KeyOverRepaint(benchmark::State &state, Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    OverRepaint(state, [=] { QTest::keyClick(FullWindow().Window.View(), key, modifiers); });
}

/// About half of the rows are found.
void SelectAllMatchesOverRepaint(benchmark::State &state)
{
    Main &window = FullWindow().Window;
    window.Command("MToolsSearch")->trigger();
    auto *search = window.findChild<QDialog *>(u"frmSearch"_s);
    for (const QString &entry : {u"MFilename"_s, u"Mfolder"_s, u"Mmode"_s})
        search->findChild<QAction *>(entry)->trigger();
    search->findChild<QComboBox *>(u"txtSearch"_s)->setEditText(u"Joint"_s);
    auto *selectAll = search->findChild<QAbstractButton *>(u"cmdSelAl"_s);
    selectAll->click();
    state.counters["matches"] = CountTotals(window.ListView1).SelectedCount;
    OverRepaint(state, [selectAll] { selectAll->click(); });
    search->close();
}

BENCHMARK(CountTotalsOverBarePass)->UseManualTime();
BENCHMARK(ListView1_ClickOverBarePass)->UseManualTime();
BENCHMARK_CAPTURE(CommandOverRepaint, SelectAll, "MEditSelAll")->UseManualTime();
BENCHMARK_CAPTURE(CommandOverRepaint, SelectNone, "MEditSelNone")->UseManualTime();
BENCHMARK_CAPTURE(CommandOverRepaint, Invert, "MEditSelInv")->UseManualTime();
BENCHMARK_CAPTURE(CommandOverRepaint, Alternate, "MEditSelAlt")->UseManualTime();
BENCHMARK_CAPTURE(CommandOverRepaint, Random, "MEditSelRnd")->UseManualTime();
BENCHMARK_CAPTURE(CommandOverRepaint, SelectInFolder, "MEditSelFol")->UseManualTime();
BENCHMARK_CAPTURE(CommandOverRepaint, SelectCheckMarked, "MEditSelectMark")->UseManualTime();
BENCHMARK_CAPTURE(CommandOverRepaint, MarkBlue, "MEditSeMarkBlue")->UseManualTime();
BENCHMARK_CAPTURE(CommandOverRepaint, UnMark, "MEditSeUnMark")->UseManualTime();
BENCHMARK(UndoOverRepaint)->UseManualTime();
BENCHMARK_CAPTURE(ClickOverRepaint, Plain, Qt::NoModifier)->UseManualTime();
BENCHMARK_CAPTURE(ClickOverRepaint, Ctrl, Qt::ControlModifier)->UseManualTime();
BENCHMARK_CAPTURE(KeyOverRepaint, ShiftEnd, Qt::Key_End, Qt::ShiftModifier)->UseManualTime();
BENCHMARK(SelectAllMatchesOverRepaint)->UseManualTime();
} // namespace

int main(int argc, char **argv)
{
    // A world of its own for this process and for those that it starts.
    const QTemporaryDir home;
    for (const char *name : {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME"})
        qputenv(name, home.path().toUtf8());
    qputenv("XDG_RUNTIME_DIR", "/nonexistent");
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
