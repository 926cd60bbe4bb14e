#include "platform/PlatformTests.h"

#include "platform/RebuiltFile.h"

#include <QTest>

#include <filesystem>

using namespace Qt::StringLiterals;

namespace
{

constexpr std::int64_t Size = 3'000'001;

/// Bytes that no shift maps onto themselves.
QByteArray Sample(std::int64_t size, quint32 seed)
{
    QByteArray bytes(size, Qt::Uninitialized);
    for (char &byte : bytes) {
        seed = seed * 1664525 + 1013904223;
        byte = static_cast<char>(seed >> 24);
    }
    return bytes;
}

FilePiece New(std::int64_t size)
{
    return {Sample(size, 7)};
}

FilePiece Old(std::int64_t from, std::int64_t end)
{
    return {{}, from, end - from};
}

} // namespace

class RebuildFileTest : public FolderTest
{
    Q_OBJECT

    RebuildState Rebuild(const QString &name, std::int64_t oldSize, const std::vector<FilePiece> &pieces) const
    {
        return RebuildFile(In(name), oldSize, pieces);
    }
    void LinkFile(const QString &from, const QString &to) const
    {
        const auto host = [](const QString &path) { return std::filesystem::path(ToHostPath(path).toStdU16String()); };
        std::filesystem::create_hard_link(host(In(from)), host(In(to)));
    }

private Q_SLOTS:
    void EveryShape_data()
    {
        QTest::addColumn<std::vector<FilePiece>>("pieces");
        QTest::addRow("front grows") << std::vector{New(5000), Old(1000, Size)};
        QTest::addRow("front grows by more than a block") << std::vector{New(700'001), Old(1000, Size)};
        QTest::addRow("front shrinks") << std::vector{New(10), Old(1000, Size)};
        QTest::addRow("front shrinks by more than a block") << std::vector{New(10), Old(900'000, Size)};
        QTest::addRow("front vanishes") << std::vector{Old(1000, Size)};
        QTest::addRow("front stays") << std::vector{New(1000), Old(1000, Size)};
        QTest::addRow("tail appended") << std::vector{Old(0, Size), New(128)};
        QTest::addRow("tail cut") << std::vector{Old(0, Size - 128)};
        QTest::addRow("tail replaced") << std::vector{Old(0, Size - 128), New(128)};
        QTest::addRow("both ends, longer") << std::vector{New(9000), Old(10, Size - 128), New(50'000)};
        QTest::addRow("both ends, shorter") << std::vector{New(90), Old(9000, Size - 128), New(5)};
        QTest::addRow("stretches apart") << std::vector{Old(9, 1'000'000), New(900'000), Old(1'200'000, Size)};
        QTest::addRow("stretches together") << std::vector{New(99), Old(0, 1'000'000), Old(2'000'000, Size)};
        QTest::addRow("all forward") << std::vector{New(9), Old(0, 900'000), New(9), Old(900'000, Size), FilePiece()};
        QTest::addRow("nothing old") << std::vector{New(100)};
        QTest::addRow("nothing at all") << std::vector<FilePiece>();
        QTest::addRow("the same") << std::vector{Old(0, Size)};
    }

    void EveryShape()
    {
        QFETCH(const std::vector<FilePiece>, pieces);
        const QByteArray old = Sample(Size, 1);
        QByteArray wanted;
        for (const FilePiece &piece : pieces)
            wanted += piece.Bytes.isEmpty() ? old.mid(piece.From, piece.Count) : piece.Bytes;
        QVERIFY(Write(u"single"_s, old) && Write(u"linked"_s, old));
        LinkFile(u"linked"_s, u"other"_s);
        for (const QString &name : {u"single"_s, u"linked"_s})
            QVERIFY(Rebuild(name, Size, pieces) == RebuildState::Done);
        for (const QString &name : {u"single"_s, u"linked"_s, u"other"_s})
            QVERIFY2(Content(name) == wanted, qPrintable(name));
        QCOMPARE(Listed(), (QStringList{u"linked"_s, u"other"_s, u"single"_s}));
    }

    void RefusedFilesStay()
    {
        QVERIFY(Write(u"a"_s, "content") && Write(u"fixed"_s, "content") && EnsureFolder(In(u"folder"_s)));
        QVERIFY(SetFileAttributes(In(u"fixed"_s), AttributeReadOnly));
        const std::tuple<QString, std::int64_t, std::vector<FilePiece>, RebuildState> cases[] = {
            {u"gone"_s, 7, {New(3)}, RebuildState::CannotOpen},
            {u"folder"_s, 0, {New(3)}, RebuildState::CannotOpen},
            {u"gone\\a"_s, 7, {New(3)}, RebuildState::CannotOpen},
            {u"fixed"_s, 7, {New(3)}, RebuildState::ReadOnly},
            {u"a"_s, 6, {New(3), Old(0, 6)}, RebuildState::Changed},
            {u"a"_s, 8, {New(3), Old(0, 6)}, RebuildState::Changed},
            {u"a"_s, 7, {Old(4, 7), Old(0, 4)}, RebuildState::Failed},
            {u"a"_s, 7, {Old(0, 4), Old(3, 7)}, RebuildState::Failed},
            {u"a"_s, 7, {Old(2, 8)}, RebuildState::Failed},
            {u"a"_s, 7, {Old(-1, 7)}, RebuildState::Failed},
            {u"a"_s, 7, {Old(5, 4)}, RebuildState::Failed},
        };
        for (const auto &[name, size, pieces, state] : cases)
            QCOMPARE(static_cast<int>(Rebuild(name, size, pieces)), static_cast<int>(state));
        QVERIFY(RebuildFile(QString(), 0, {}) == RebuildState::CannotOpen);
        QCOMPARE(Content(u"a"_s), QByteArray("content"));
        QCOMPARE(Content(u"fixed"_s), QByteArray("content"));
        QCOMPARE(Listed(), (QStringList{u"a"_s, u"fixed"_s, u"folder"_s}));
        QVERIFY(SetFileAttributes(In(u"fixed"_s), AttributeNormal));
    }
};

static const RegisterTest<RebuildFileTest> registered;

#include "RebuildFileTest.moc"
