#include "playlist/RowCommands.h"
#include "playlist/Preview.h"
#include "playlist/Sorting.h"

#include <QTest>

#include <random>

using namespace Qt::StringLiterals;

namespace
{
/// Rows named by the words; a word in capitals is selected.
void Fill(Grid &grid, const QString &words)
{
    std::vector<FileRecord> records;
    for (const QString &word : words.split(u' ')) {
        FileRecord record;
        record.FileName = word.toLower();
        record.Folder = u"c:\\"_s;
        record.Size = 1;
        records.push_back(record);
    }
    grid.Append(records);
    const QStringList names = words.split(u' ');
    grid.Reselect([&](int row, const PlaylistItem &) { return names[row - 1].front().isUpper(); });
}

QString Words(const Grid &grid)
{
    QStringList words;
    for (int row = 1; row <= grid.Count(); ++row)
        words.append(grid.Item(row).Selected ? grid.Item(row).Text.toUpper() : grid.Item(row).Text);
    return words.join(u' ');
}

Clock FixedClock(std::vector<double> draws)
{
    Clock clock;
    clock.Reseed = [] {};
    clock.Random = [draws = std::move(draws), next = std::size_t{0}]() mutable { return draws[next++ % draws.size()]; };
    return clock;
}

/// The shuffle as a person would do it with slips of paper: slow and plain.
std::vector<int> PlainShuffle(const std::vector<int> &positions, const std::vector<double> &draws)
{
    std::vector<int> picked = positions;
    const auto count = static_cast<int>(picked.size());
    std::size_t next = 0;
    int place = 0;
    int previous = 0;
    for (int round = 0; round < count; ++round) {
        for (int attempts = 0; (place == 0 || place == previous) && attempts < 10 * count; ++attempts)
            place = static_cast<int>(draws[next++ % draws.size()] * count);
        previous = picked[static_cast<std::size_t>(place - 1)];
        picked.erase(picked.begin() + place - 1);
        picked.push_back(previous);
        place = previous;
    }
    return picked;
}
} // namespace

class RowCommandsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void Moves_data();
    void Moves();
    void Selections_data();
    void Selections();
    void RandomSelectionStopsAboveHalf();
    void ShuffleExchangesInTurn();
    void ShuffleThatFailsChangesNothing();
    void MarksNeverReplaceMissing();
    void SelectionGrowsToItsFolders();
    void SortsNumbersAndTextStably();
    void SortsAnyTextAsQtCompares();
};

using Command = void (*)(Grid &);

void RowCommandsTest::Moves_data()
{
    QTest::addColumn<Command>("command");
    QTest::addColumn<QString>("before");
    QTest::addColumn<QString>("after");
    const Command up = [](Grid &grid) { MoveUp(grid); };
    const Command down = [](Grid &grid) { MoveDown(grid); };
    const Command top = [](Grid &grid) { MoveToTop(grid); };
    const Command bottom = [](Grid &grid) { MoveToBottom(grid); };
    QTest::newRow("up, as blocks") << up << u"a B C d E"_s << u"B C a E d"_s;
    QTest::newRow("up, nothing while row 1 is selected") << up << u"A b C"_s << u"A b C"_s;
    QTest::newRow("down, as blocks") << down << u"A B c D e"_s << u"c A B e D"_s;
    QTest::newRow("down, nothing while the last is selected") << down << u"A b C"_s << u"A b C"_s;
    QTest::newRow("top") << top << u"a B c D e"_s << u"B D a c e"_s;
    QTest::newRow("bottom") << bottom << u"a B c D e"_s << u"a c e B D"_s;
    QTest::newRow("top, nothing selected") << top << u"a b"_s << u"a b"_s;
}

void RowCommandsTest::Moves()
{
    QFETCH(Command, command);
    QFETCH(QString, before);
    Grid grid;
    Fill(grid, before);
    grid.SetFocusedRow(2);
    const QString focused = grid.Item(2).Text;
    command(grid);
    QTEST(Words(grid), "after");
    QCOMPARE(grid.Item(grid.FocusedRow()).Text, focused);
}

void RowCommandsTest::Selections_data()
{
    QTest::addColumn<Command>("command");
    QTest::addColumn<QString>("before");
    QTest::addColumn<QString>("after");
    QTest::newRow("all") << Command(SelectAll) << u"a B c"_s << u"A B C"_s;
    QTest::newRow("none") << Command(SelectNone) << u"a B c"_s << u"a b c"_s;
    QTest::newRow("invert") << Command(InvertSelection) << u"a B c"_s << u"A b C"_s;
    QTest::newRow("alternate drops from the bottom") << Command(AlternateSelection) << u"A B c D E"_s << u"A b c D e"_s;
    QTest::newRow("alternate of three") << Command(AlternateSelection) << u"A B C"_s << u"a B c"_s;
}

void RowCommandsTest::Selections()
{
    QFETCH(Command, command);
    QFETCH(QString, before);
    Grid grid;
    Fill(grid, before);
    command(grid);
    QTEST(Words(grid), "after");
}

void RowCommandsTest::RandomSelectionStopsAboveHalf()
{
    Grid grid;
    Fill(grid, u"a b c d e f g h i J"_s);
    RandomSelection(grid, FixedClock({0.9}));
    QCOMPARE(Words(grid), u"A B C D E F g h i j"_s);
    RandomSelection(grid, FixedClock({0.49, 0.5}));
    QCOMPARE(Words(grid), u"a B c D e F g H i J"_s);
}

void RowCommandsTest::ShuffleExchangesInTurn()
{
    std::mt19937 engine(7);
    std::uniform_real_distribution<double> draw(0, 1);
    for (const int count : {3, 10, 400, 3000}) {
        std::vector<double> draws(static_cast<std::size_t>(count) * 40);
        std::generate(draws.begin(), draws.end(), [&] { return draw(engine); });
        Grid grid;
        grid.Append(std::vector<FileRecord>(static_cast<std::size_t>(count) * 2));
        grid.Reselect([](int row, const PlaylistItem &) { return row % 2 == 0; });
        grid.UpdateIcons(
            [number = 0](PlaylistItem &item) mutable { item.OriginalOrder = static_cast<qint16>(++number); });
        std::vector<int> positions;
        std::vector<int> expected;
        for (int row = 1; row <= grid.Count(); ++row) {
            expected.push_back(row);
            if (row % 2 == 0)
                positions.push_back(row);
        }
        const std::vector<int> partners = PlainShuffle(positions, draws);
        for (std::size_t i = 0; i < positions.size(); ++i)
            std::swap(expected[static_cast<std::size_t>(positions[i] - 1)],
                      expected[static_cast<std::size_t>(partners[i] - 1)]);
        QVERIFY(ShuffleSelection(grid, FixedClock(draws)).Moved);
        for (int row = 1; row <= grid.Count(); ++row)
            QCOMPARE(int(grid.Item(row).OriginalOrder), expected[static_cast<std::size_t>(row - 1)]);
    }
}

void RowCommandsTest::ShuffleThatFailsChangesNothing()
{
    Grid grid;
    Fill(grid, u"A B c"_s);
    // Rows 1 and 2: after the first round place 1 is no valid draw, and the last draw is place 0.
    QVERIFY_THROWS_EXCEPTION(ShuffleFailed, ShuffleSelection(grid, FixedClock({0.6, 0.6, 0.1})));
    QCOMPARE(Words(grid), u"A B c"_s);
    QVERIFY(ShuffleSelection(grid, FixedClock({0.6})).Moved);
    grid.Reselect([](int row, const PlaylistItem &) { return row == 1; });
    QVERIFY(!ShuffleSelection(grid, FixedClock({0.6})).Moved);
}

void RowCommandsTest::MarksNeverReplaceMissing()
{
    Grid grid;
    Fill(grid, u"A B c"_s);
    FileRecord missing;
    missing.FileName = u"gone"_s;
    grid.Insert(missing);
    grid.Reselect([](int row, const PlaylistItem &) { return row != 3; });
    SetCheckMark(grid, IconGreen);
    QVERIFY(grid.Item(1).SmallIcon == IconGreen && grid.Item(3).SmallIcon == IconNormal);
    QCOMPARE(grid.Item(4).SmallIcon, IconMissing);
    grid.Reselect([](int row, const PlaylistItem &) { return row == 2; });
    SetCheckMark(grid, IconNormal);
    SelectCheckMarked(grid);
    QCOMPARE(Words(grid), u"A b c gone"_s);
}

void RowCommandsTest::SortsNumbersAndTextStably()
{
    Grid grid;
    std::vector<FileRecord> records(4);
    const QStringList names{u"b.mp3"_s, u"A.mp3"_s, u"a.mp3"_s, u"C.mp3"_s};
    const QList<int> lengths{9, 100, 0, 10};
    for (std::size_t i = 0; i < 4; ++i) {
        records[i].FileName = names[qsizetype(i)];
        records[i].Length = lengths[qsizetype(i)];
        records[i].Size = i == 2 ? 0 : 1; // The third is missing: its cells are empty and count as 0.
    }
    grid.Append(records);
    const auto sorted = [&](int clicked) {
        const SortChoice choice = SortChoiceOf(clicked);
        SortGrid(grid, choice.Column, choice.Type);
        return Words(grid).remove(u".mp3"_s);
    };
    QCOMPARE(sorted(ColumnTime), u"a b C A"_s);
    QCOMPARE(sorted(ColumnTime), u"A C b a"_s);
    QCOMPARE(sorted(ColumnFileName), u"A a b C"_s);
    QCOMPARE(sorted(ColumnFileName), u"C b A a"_s);
    QCOMPARE(sorted(ColumnOriginalOrder), u"a b A C"_s);
    QVERIFY_THROWS_EXCEPTION(NotSortable, SortGrid(grid, ColumnFileName, SortNumber));
    QCOMPARE(grid.SortKey, ColumnOriginalOrder - 1);
}

void RowCommandsTest::SelectionGrowsToItsFolders()
{
    Grid grid;
    std::vector<FileRecord> records;
    for (const QString &path : {u"c:\\x\\a"_s, u"c:\\y\\b"_s, u"c:\\X\\c"_s, u"c:\\x\\d"_s, u"c:\\z\\e"_s}) {
        FileRecord record;
        record.Folder = path.chopped(1);
        record.FileName = path.right(1);
        records.push_back(record);
    }
    grid.Append(records);
    grid.Reselect([](int row, const PlaylistItem &) { return row == 1 || row == 5; });
    SelectInFolder(grid);
    QCOMPARE(Words(grid), u"A b c D E"_s);
}

void RowCommandsTest::SortsAnyTextAsQtCompares()
{
    std::mt19937 engine(3);
    const QString letters = u"aAb\u00c4\u00e4\u0416\U0001f3b5 ."_s;
    QStringList names;
    for (int i = 0; i < 500; ++i) {
        QString name = QString(engine() % 3 == 0 ? 300 : 0, u'x');
        for (auto length = engine() % 9; length > 0; --length)
            name += letters[static_cast<qsizetype>(engine() % static_cast<unsigned>(letters.size()))];
        names.append(name);
    }
    Grid grid;
    std::vector<FileRecord> records(500);
    for (std::size_t i = 0; i < records.size(); ++i)
        records[i].FileName = names[static_cast<qsizetype>(i)];
    grid.Append(records);
    SortGrid(grid, ColumnFileName, SortText);
    std::stable_sort(names.begin(), names.end(),
                     [](const QString &a, const QString &b) { return a.compare(b, Qt::CaseInsensitive) < 0; });
    for (int row = 1; row <= grid.Count(); ++row)
        QCOMPARE(grid.Item(row).Text, names[row - 1]);
}

QTEST_GUILESS_MAIN(RowCommandsTest)
#include "RowCommandsTest.moc"
