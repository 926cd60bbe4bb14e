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
    void TextInAPage()
    {
        const std::tuple<unsigned, QString, QByteArray> cases[] = {
            {1252U, u"caf\u00E9 \u20AC"_s, "caf\xE9 \x80"},
            {1251U, u"\u041C\u0438\u0440"_s, "\xCC\xE8\xF0"},
            {1253U, u"\u03A9"_s, "\xD9"},
            {932U, u"\u65E5\u672C a"_s, "\x93\xFA\x96\x7B a"},
            {1252U, QString(), ""},
        };
        for (const auto &[page, text, bytes] : cases) {
            QCOMPARE(EncodeInPage(page, text), std::optional(bytes));
            QCOMPARE(DecodeFromPage(page, bytes), text);
        }
        // An A with a macron would be fitted as an A, and the path would point elsewhere.
        QVERIFY(!EncodeInPage(1252, u"\u0100.mp3"_s));
        QVERIFY(!EncodeInPage(1251, u"caf\u00E9"_s) && !EncodeInPage(1252, u"\u041C\u0438\u0440"_s));
        QCOMPARE(DecodeFromPage(CP_UTF8, QByteArrayView("caf\xE9")), u"caf\u00E9"_s);
    }

    void RecordBytesSurvive()
    {
        // The character of byte CC: the Greek page has gaps, pages of several bytes fall back on the western one.
        const std::pair<unsigned, char16_t> cases[] = {
            {1252U, u'\u00CC'}, {1251U, u'\u041C'}, {1253U, u'\u039C'}, {932U, u'\u00CC'}, {65001U, u'\u00CC'},
        };
        for (const auto &[page, character] : cases) {
            const RecordPage characters = RecordPageOf(page);
            QCOMPARE(QSet<char16_t>(characters.begin(), characters.end()).size(), 256);
            QCOMPARE(QString(QChar(characters[0xCC])), QString(QChar(character)));
            QCOMPARE(characters[u'A'], u'A');
        }
    }

    void PlaylistsAreInTheSystemsPage()
    {
        if (GetACP() != 1252)
            QSKIP("The code page of this system is another one");
        QCOMPARE(EncodeText(u"c:\\caf\u00E9\r\n"_s), QByteArray("c:\\caf\xE9\r\n"));
        QCOMPARE(EncodeText(u"c:\\\u4E2D"_s), QByteArray("\xEF\xBB\xBF"
                                                         "c:\\\xE4\xB8\xAD"));
    }
};

static const RegisterTest<AnsiPageTest> registered;

#include "AnsiPageTest.moc"
