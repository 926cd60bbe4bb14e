#include "platform/PlatformTests.h"

#include "platform/RebuiltFile.h"

#include <QTest>

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

private Q_SLOTS:
    void EveryShape()
    {
        const std::pair<const char *, std::vector<FilePiece>> cases[] = {
            {"front grows", {New(5000), Old(1000, Size)}},
            {"front grows by more than a block", {New(700'001), Old(1000, Size)}},
            {"front shrinks by more than a block", {New(10), Old(900'000, Size)}},
            {"front vanishes", {Old(1000, Size)}},
            {"front stays", {New(1000), Old(1000, Size)}},
            {"tail appended", {Old(0, Size), New(128)}},
            {"tail replaced", {Old(0, Size - 128), New(128)}},
            {"both ends, longer", {New(9000), Old(10, Size - 128), New(50'000)}},
            {"both ends, shorter", {New(90), Old(9000, Size - 128), New(5)}},
            {"stretches apart", {Old(9, 1'000'000), New(900'000), Old(1'200'000, Size)}},
            {"stretches together", {New(99), Old(0, 1'000'000), Old(2'000'000, Size)}},
            {"all forward", {New(9), Old(0, 900'000), New(9), Old(900'000, Size), FilePiece()}},
            {"nothing old", {New(100)}},
            {"nothing at all", {}},
            {"the same", {Old(0, Size)}},
        };
        const QByteArray old = Sample(Size, 1);
        for (const auto &[shape, pieces] : cases) {
            QByteArray wanted;
            for (const FilePiece &piece : pieces)
                wanted += piece.Bytes.isEmpty() ? old.mid(piece.From, piece.Count) : piece.Bytes;
            QVERIFY(Write(u"single"_s, old) && Write(u"linked"_s, old));
            DeleteFile(In(u"other"_s));
            QVERIFY(LinkFile(u"linked"_s, u"other"_s));
            for (const QString &name : {u"single"_s, u"linked"_s})
                QVERIFY2(RebuildFile(In(name), DiskFactsOf(In(name)), pieces) == RebuildState::Done, shape);
            for (const QString &name : {u"single"_s, u"linked"_s, u"other"_s})
                QVERIFY2(Content(name) == wanted, qPrintable(name + u": "_s + QLatin1StringView(shape)));
            QCOMPARE(Listed(), (QStringList{u"linked"_s, u"other"_s, u"single"_s}));
        }
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
        for (const auto &[name, size, pieces, state] : cases) {
            DiskFacts planned = DiskFactsOf(In(name));
            planned.Size = size;
            QCOMPARE(static_cast<int>(RebuildFile(In(name), planned, pieces)), static_cast<int>(state));
        }
        QVERIFY(RebuildFile(QString(), {}, {}) == RebuildState::CannotOpen);
        // Written to meanwhile, with as many bytes.
        DiskFacts planned = DiskFactsOf(In(u"a"_s));
        --planned.Modified;
        QVERIFY(RebuildFile(In(u"a"_s), planned, std::vector{New(3), Old(0, 6)}) == RebuildState::Changed);
        QCOMPARE(Content(u"a"_s), QByteArray("content"));
        QCOMPARE(Content(u"fixed"_s), QByteArray("content"));
        QCOMPARE(Listed(), (QStringList{u"a"_s, u"fixed"_s, u"folder"_s}));
        QVERIFY(SetFileAttributes(In(u"fixed"_s), AttributeNormal));
    }
};

static const RegisterTest<RebuildFileTest> registered;

#include "RebuildFileTest.moc"
