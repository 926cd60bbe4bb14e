#include "platform/PlatformTests.h"

#include "platform/CodePage.h"
#include "platform/windows/AnsiPage.h"

#include <QSet>
#include <QTest>

#include <windows.h>

using namespace Qt::StringLiterals;

/// The ANSI code pages that a Windows may have.
class AnsiPageTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void TextInAPage_data();
    void TextInAPage();
    void NothingIsFittedOrLost();
    void RecordBytesSurvive_data();
    void RecordBytesSurvive();
    void PlaylistsAreInTheSystemsPage();
};

static const RegisterTest<AnsiPageTest> registered;

void AnsiPageTest::TextInAPage_data()
{
    QTest::addColumn<unsigned>("page");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("western") << 1252U << u"caf\u00E9 \u20AC"_s << QByteArray("caf\xE9 \x80");
    QTest::newRow("cyrillic") << 1251U << u"\u041C\u0438\u0440"_s << QByteArray("\xCC\xE8\xF0");
    QTest::newRow("greek") << 1253U << u"\u03A9"_s << QByteArray("\xD9");
    QTest::newRow("japanese") << 932U << u"\u65E5\u672C a"_s << QByteArray("\x93\xFA\x96\x7B a");
    QTest::newRow("empty") << 1252U << QString() << QByteArray();
}

void AnsiPageTest::TextInAPage()
{
    QFETCH(unsigned, page);
    QFETCH(QString, text);
    QFETCH(QByteArray, bytes);
    QCOMPARE(EncodeInPage(page, text), std::optional(bytes));
    QCOMPARE(DecodeFromPage(page, bytes), text);
}

void AnsiPageTest::NothingIsFittedOrLost()
{
    // An A with a macron would be fitted as an A, and the path would point elsewhere.
    QVERIFY(!EncodeInPage(1252, u"\u0100.mp3"_s));
    QVERIFY(!EncodeInPage(1251, u"caf\u00E9"_s) && !EncodeInPage(1252, u"\u041C\u0438\u0440"_s));
    QCOMPARE(DecodeFromPage(CP_UTF8, QByteArrayView("caf\xE9")), u"caf\u00E9"_s);
}

void AnsiPageTest::RecordBytesSurvive_data()
{
    QTest::addColumn<unsigned>("page");
    QTest::addColumn<char16_t>("character");
    QTest::newRow("western") << 1252U << u'\u00CC';
    QTest::newRow("cyrillic") << 1251U << u'\u041C';
    QTest::newRow("greek, with gaps") << 1253U << u'\u039C';
    QTest::newRow("japanese falls back on western") << 932U << u'\u00CC';
    QTest::newRow("utf-8 falls back on western") << 65001U << u'\u00CC';
}

void AnsiPageTest::RecordBytesSurvive()
{
    QFETCH(unsigned, page);
    const RecordPage characters = RecordPageOf(page);
    QCOMPARE(QSet<char16_t>(characters.begin(), characters.end()).size(), 256);
    QTEST(characters[0xCC], "character");
    QCOMPARE(characters[u'A'], u'A');
}

void AnsiPageTest::PlaylistsAreInTheSystemsPage()
{
    if (GetACP() != 1252)
        QSKIP("The code page of this system is another one");
    QCOMPARE(EncodeText(u"c:\\caf\u00E9\r\n"_s), QByteArray("c:\\caf\xE9\r\n"));
    QCOMPARE(EncodeText(u"c:\\\u4E2D"_s), QByteArray("\xEF\xBB\xBF"
                                                     "c:\\\xE4\xB8\xAD"));
}

#include "AnsiPageTest.moc"
