#include "playlist/RowCommands.h"
#include "playlist/RankList.h"
#include "playlist/Sorting.h"

#include <QTest>

#include <functional>
#include <numeric>
#include <random>

using namespace Qt::StringLiterals;

namespace
{
/// Rows by their paths; one whose name is in capitals is selected, one without a size is missing.
void Fill(Grid &grid, const QString &words, const QList<int> &lengths = {}, const QString &folder = u"c:\\"_s)
{
    const int before = grid.Count();
    const QStringList names = words.split(u' ');
    std::vector<FileRecord> records;
    for (const QString &name : names) {
        FileRecord record;
        record.FileName = name.toLower();
        record.Folder = folder;
        record.Length = lengths.value(static_cast<qsizetype>(records.size()));
        record.Size = lengths.isEmpty() || record.Length > 0 ? 1 : 0;
        records.push_back(record);
    }
    grid.Append(records);
    grid.Reselect([&](int row, const PlaylistItem &item) {
        return row > before ? names[row - 1 - before].front().isUpper() : item.Selected;
    });
}

QString Words(const Grid &grid)
{
    QStringList words;
    for (int row = 1; row <= grid.Count(); ++row)
        words.append(grid.Item(row).Selected ? grid.Item(row).Text.toUpper() : grid.Item(row).Text);
    return words.join(u' ');
}

/// Everything that a step of Undo brings back: names, selection, icons, focus, sorting.
QString Whole(const Grid &grid)
{
    QString whole = Words(grid) + u' ';
    for (int row = 1; row <= grid.Count(); ++row)
        whole += QString::number(grid.Item(row).SmallIcon);
    return whole +
           u" %1 %2 %3 %4"_s.arg(grid.FocusedRow()).arg(grid.SortKey).arg(grid.SortOrder).arg(grid.SortedColumn());
}

FileRecord Record(const QString &name, qint64 size)
{
    FileRecord record;
    record.FileName = name;
    record.Size = size;
    return record;
}

/// A few changes of every kind, one after the other.
void ChangeAtRandom(Grid &grid, std::mt19937 &draw)
{
    const auto row = [&] { return 1 + static_cast<int>(draw() % static_cast<unsigned>(grid.Count() + 1)); };
    const std::function<void()> changes[] = {
        [&] { MoveTo(grid, row()); },
        [&] { MoveDown(grid); },
        [&] { SortGrid(grid, ColumnFileName, SortText), grid.SetSortedColumn(ColumnFileName); },
        [&] { SetCheckMark(grid, draw() % 2 == 0 ? IconRed : IconNormal); },
        [&] { grid.RemoveIf([&](const PlaylistItem &) { return draw() % 3 == 0; }); },
        [&] { grid.AddSelectedAgain(row()); },
        [&] {
            Fill(grid, u"x Y z"_s, {1, 0, 2});
        },
        [&] { grid.Insert(Record(u"in"_s, 1), row()), grid.Insert(Record(u"side"_s, 0), row()); },
        [&] {
            const FileRecord records[] = {Record(u"p"_s, 0), Record(u"q"_s, 1), Record(u"r"_s, 1)};
            grid.Replace(
                {row(), row(), 2}, [&records](std::size_t i) { return records[i]; }, true);
        },
        [&] { grid.Clear(); },
    };
    for (auto count = draw() % 4; count > 0; --count)
        changes[draw() % std::size(changes)]();
    // What is selected between the commands is no step.
    grid.Reselect([&](int, const PlaylistItem &) { return draw() % 2 == 0; });
}

Clock FixedClock(std::vector<double> draws)
{
    Clock clock;
    clock.Reseed = [] {};
    clock.Random = [draws = std::move(draws), next = std::size_t{0}]() mutable { return draws[next++ % draws.size()]; };
    return clock;
}
} // namespace

class RowCommandsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void RowsMove()
    {
        // The command, the rows before and after, the row that the view follows.
        const std::tuple<RowMove (*)(Grid &), QString, QString, int> cases[] = {
            {MoveUp, u"a B C d E"_s, u"B C a E d"_s, 4},
            {MoveUp, u"A b C"_s, u"A b C"_s, 0},
            {MoveDown, u"A B c D e"_s, u"c A B e D"_s, 2},
            {MoveDown, u"A b C"_s, u"A b C"_s, 0},
            {MoveToTop, u"a B c D e"_s, u"B D a c e"_s, 2},
            {MoveToTop, u"a b"_s, u"a b"_s, 0},
            {MoveToBottom, u"a B c D e"_s, u"a c e B D"_s, 5},
            {MoveToBottom, u"a b"_s, u"a b"_s, 0},
            {[](Grid &grid) { return MoveTo(grid, 1 + std::min(grid.Count(), 3)); }, u"A b C d E"_s, u"b A C E d"_s, 4},
            {MoveUp, u"a b"_s, u"a b"_s, 0},
            {MoveDown, u"a b"_s, u"a b"_s, 0},
        };
        for (const auto &[command, before, after, lastRow] : cases) {
            Grid grid;
            QVERIFY(!command(grid).Moved);
            Fill(grid, before);
            grid.SetFocusedRow(2);
            const QString focused = grid.Item(2).Text;
            const RowMove move = command(grid);
            QCOMPARE(Words(grid), after);
            QCOMPARE(move.LastRow, lastRow);
            QCOMPARE(move.Moved, lastRow > 0);
            QCOMPARE(grid.Item(grid.FocusedRow()).Text, focused);
        }
    }

    void SelectionsChange()
    {
        const std::tuple<std::function<void(Grid &)>, QString, QString> cases[] = {
            {SelectAll, u"a B c"_s, u"A B C"_s},
            {SelectNone, u"a B c"_s, u"a b c"_s},
            {InvertSelection, u"a B c"_s, u"A b C"_s},
            {AlternateSelection, u"A B c D E"_s, u"A b c D e"_s},
            {AlternateSelection, u"A B C"_s, u"a B c"_s},
            {[](Grid &grid) { RandomSelection(grid, FixedClock({0.9})); }, u"a b c d e f g h i J"_s,
             u"A B C D E F g h i j"_s},
            {[](Grid &grid) {
                 RandomSelection(grid, FixedClock({0.49, 0.5}));
             },
             u"A b C d"_s, u"a B c D"_s},
        };
        for (const auto &[command, before, after] : cases) {
            Grid grid;
            Fill(grid, before);
            command(grid);
            QCOMPARE(Words(grid), after);
        }
        Grid grid;
        Fill(grid, u"A b"_s);
        Fill(grid, u"c d"_s, {}, u"c:\\x\\"_s);
        Fill(grid, u"e F"_s, {}, u"C:\\"_s);
        Fill(grid, u"g"_s);
        SelectInFolder(grid);
        QCOMPARE(Words(grid), u"A B c d E F G"_s);
    }

    void ShuffleExchangesInTurn()
    {
        // The rows before, the draws, the rows after, the row exchanged last.
        const std::tuple<QString, std::vector<double>, QString, int> cases[] = {
            {u"a B C d E"_s, {.4, .9, .7, .5}, u"a B C d E"_s, 5},
            {u"a B C D e F g H"_s, {.9, .3, .0, .5, .7}, u"a C B H e D g F"_s, 3},
            {u"a b C D E F G"_s, {.2, .9, .5, .61, .4}, u"a b F G E C D"_s, 6},
            {u"A B c"_s, {.6}, u"A B c"_s, 2},
            {u"A b"_s, {.6}, u"A b"_s, 0},
        };
        for (const auto &[before, draws, after, lastRow] : cases) {
            Grid grid;
            Fill(grid, before);
            QCOMPARE(ShuffleSelection(grid, FixedClock(draws)).LastRow, lastRow);
            QCOMPARE(Words(grid), after);
        }
        Grid grid;
        Fill(grid, u"A B c"_s);
        // Rows 1 and 2: after the first round place 1 is no valid draw, and the last draw is place 0.
        QVERIFY_THROWS_EXCEPTION(ShuffleFailed, ShuffleSelection(grid, FixedClock({.6, .6, .1})));
        QCOMPARE(Words(grid), u"A B c"_s);
    }

    void AnyPlaceMovesToTheEnd()
    {
        std::mt19937 engine(7);
        std::vector<int> plain(3000);
        std::iota(plain.begin(), plain.end(), 1);
        RankList ranks(plain);
        for (int i = 0; i < 5000; ++i) {
            const auto place = static_cast<int>(engine() % 3000);
            std::rotate(plain.begin() + place, plain.begin() + place + 1, plain.end());
            QCOMPARE(ranks.MoveToEnd(place + 1), plain.back());
        }
        QVERIFY(ranks.Values() == plain);
    }

    void RowsAreAddedAgain()
    {
        Grid grid;
        Fill(grid, u"a B GONE"_s, {1, 2, 0});
        SetCheckMark(grid, IconRed);
        grid.AddSelectedAgain(2);
        QCOMPARE(Whole(grid), u"a B GONE b gone 11252 3 -1 0 0"_s);
        QCOMPARE(grid.CellText(2, ColumnOriginalOrder) + grid.CellText(2, ColumnHiddenLen), u"22"_s);
        // What was not measured has no number.
        Grid sorted;
        Fill(sorted, u"a b GONE"_s, {1, 2, 0});
        sorted.AddSelectedAgain(2);
        SortGrid(sorted, ColumnOriginalOrder, SortNumber);
        QCOMPARE(Words(sorted), u"GONE gone a b"_s);
        grid.AddSelectedAgain(6);
        QCOMPARE(Words(grid), u"a b gone b gone B GONE"_s);
        // All of them, or none.
        grid.Append(std::vector<FileRecord>(Grid::MaxRows - 8));
        QByteArray told;
        try {
            grid.AddSelectedAgain(1);
        } catch (const PlaylistFull &full) {
            told = full.what();
        }
        QVERIFY(told.endsWith("None of them was added."));
        QVERIFY(grid.Count() == Grid::MaxRows - 1 && grid.Item(6).Selected);
        SelectNone(grid);
        grid.AddSelectedAgain(1);
        QCOMPARE(grid.Count(), Grid::MaxRows - 1);
        grid.Reselect([](int row, const PlaylistItem &) { return row == 7; });
        grid.AddSelectedAgain(1);
        QCOMPARE(grid.Count(), int(Grid::MaxRows));
    }

    void MarksNeverReplaceMissing()
    {
        Grid grid;
        Fill(grid, u"A B c GONE"_s, {1, 1, 1, 0});
        SetCheckMark(grid, IconGreen);
        QVERIFY(grid.Item(1).SmallIcon == IconGreen && grid.Item(3).SmallIcon == IconNormal);
        QCOMPARE(grid.Item(4).SmallIcon, IconMissing);
        grid.Reselect([](int row, const PlaylistItem &) { return row == 2; });
        SetCheckMark(grid, IconNormal);
        SelectCheckMarked(grid);
        QCOMPARE(Words(grid), u"A b c gone"_s);
        grid.UpdateIcons([](PlaylistItem &item) { item.SmallIcon = IconBlue; });
        SelectCheckMarked(grid);
        QCOMPARE(Words(grid), u"A B C GONE"_s);
    }

    void StepsLeadBackAndForth()
    {
        std::mt19937 draw(11);
        Grid grid;
        Fill(grid, u"a B c D e F g"_s);
        bool dirty = false;
        // What the list was before each step that can be undone, and after each that can be done again.
        QStringList undo;
        QStringList redo;
        for (int number = 0; number < 3000; ++number) {
            const QString before = Whole(grid) + (dirty ? u"*"_s : QString());
            const auto way = draw() % 4;
            if (way < 2) {
                const QString name = grid.Steps().Undoable() != nullptr ? grid.Steps().Undoable()->Name : QString();
                grid.Steps().Open();
                ChangeAtRandom(grid, draw);
                grid.CloseStep(QString::number(number), dirty);
                const HistoryStep *step = grid.Steps().Undoable();
                if (step == nullptr || step->Name == name)
                    continue;
                dirty = draw() % 2 == 0;
                undo.append(before);
                undo = undo.last(std::min<qsizetype>(undo.size(), History::MaxSteps));
                redo.clear();
                if (grid.Count() > 200) {
                    grid.Clear();
                    undo.clear();
                    QVERIFY(grid.Steps().Undoable() == nullptr);
                }
            } else {
                QStringList &from = way == 2 ? undo : redo;
                const QString name = way == 2 ? grid.Undo(dirty) : grid.Redo(dirty);
                QCOMPARE(name.isEmpty(), from.isEmpty());
                if (name.isEmpty())
                    continue;
                QCOMPARE(Whole(grid) + (dirty ? u"*"_s : QString()), from.takeLast());
                (way == 2 ? redo : undo).append(before);
            }
        }
    }

    void StepsAreForgottenBeforeTheMemoryIsFull()
    {
        Grid grid;
        std::vector<FileRecord> records(3);
        for (std::size_t i = 0; i < records.size(); ++i)
            records[i].FileName = QString(12'000'000, QChar(u'a' + char16_t(i)));
        const auto step = [&grid](auto change) {
            grid.Steps().Open();
            change();
            grid.CloseStep(u"step"_s, false);
        };
        step([&] { grid.Append(records); });
        bool dirty = false;
        for (const QChar letter : {u'a', u'b', u'c'})
            step([&] { grid.RemoveIf([&](const PlaylistItem &item) { return item.Text.startsWith(letter); }); });
        QVERIFY(grid.Steps().Bytes() > History::MaxBytes / 2 && grid.Steps().Bytes() <= History::MaxBytes);
        for (int back = 0; back < 2; ++back)
            QVERIFY(!grid.Undo(dirty).isEmpty());
        QVERIFY(grid.Undo(dirty).isEmpty() && grid.Count() == 2 && grid.Steps().Bytes() < 10'000);
        grid.Steps().End();
        QVERIFY(grid.Redo(dirty).isEmpty() && grid.Steps().Bytes() == 0);
    }

    void SortsNumbersAndTextStably()
    {
        Grid grid;
        Fill(grid, u"b a A C"_s, {9, 100, 0, 10}); // The third is missing: its cells are empty and count as 0.
        const auto sorted = [&](int clicked) {
            const SortChoice choice = SortChoiceOf(clicked);
            SortGrid(grid, choice.Column, choice.Type);
            return Words(grid);
        };
        QCOMPARE(sorted(ColumnTime), u"A b C a"_s);
        QCOMPARE(sorted(ColumnTime), u"a C b A"_s);
        QCOMPARE(sorted(ColumnFileName), u"a A b C"_s);
        QCOMPARE(sorted(ColumnFileName), u"C b a A"_s);
        QCOMPARE(sorted(ColumnOriginalOrder), u"A b a C"_s);
        for (const QString &rows : {u"A b a C"_s, u"b a C A"_s, u"A b a C"_s, u"b a C A"_s})
            QCOMPARE(sorted(ColumnSize), rows);
        QVERIFY_THROWS_EXCEPTION(NotSortable, SortGrid(grid, ColumnFileName, SortNumber));
        QVERIFY_THROWS_EXCEPTION(NotSortable, SortGrid(grid, ColumnFileName, SortDate));
        QCOMPARE(grid.SortKey, ColumnHiddenSize - 1);
    }

    void SortsAnyTextAsQtCompares()
    {
        std::mt19937 engine(3);
        const QString letters = u"aAb\u00c4\u00e4\u0416\U0001f3b5."_s;
        for (const bool plain : {true, false}) {
            QStringList names;
            for (int i = 0; i < 500; ++i) {
                QString name = QString(engine() % 3 == 0 ? 300 : 1, u'x');
                for (auto length = engine() % 9; length > 0; --length)
                    name += letters[static_cast<qsizetype>(engine() % (plain ? 6 : letters.size()))];
                names.append(name);
            }
            std::vector<FileRecord> records(500);
            for (std::size_t i = 0; i < records.size(); ++i)
                records[i].FileName = names[static_cast<qsizetype>(i)];
            Grid grid;
            grid.Append(records);
            SortGrid(grid, ColumnFileName, SortText);
            std::stable_sort(names.begin(), names.end(),
                             [](const QString &a, const QString &b) { return a.compare(b, Qt::CaseInsensitive) < 0; });
            for (int row = 1; row <= grid.Count(); ++row)
                QCOMPARE(grid.Item(row).Text, names[row - 1]);
        }
    }
};

QTEST_GUILESS_MAIN(RowCommandsTest)
#include "RowCommandsTest.moc"
