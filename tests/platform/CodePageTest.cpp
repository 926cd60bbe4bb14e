#include "platform/PlatformTests.h"

#include "platform/CodePage.h"

#include <QTest>

using namespace Qt::StringLiterals;

class CodePageTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void RecordTextKeepsEveryByte();
    void RecordTextKnowsWindows1252();
    void DecodesWhatOthersWrote_data();
    void DecodesWhatOthersWrote();
    void TextSurvives_data();
    void TextSurvives();
};

static const RegisterTest<CodePageTest> registered;

void CodePageTest::RecordTextKeepsEveryByte()
{
    QByteArray bytes;
    for (int i = 0; i < 256; ++i)
        bytes.append(static_cast<char>(i));
    const QString text = DecodeRecordText(bytes);
    QCOMPARE(text.size(), 256);
    QCOMPARE(EncodeRecordText(text), bytes);
}

void CodePageTest::RecordTextKnowsWindows1252()
{
    QCOMPARE(DecodeRecordText("A\x80\x9F\xE9"), u"A\u20AC\u0178\u00E9"_s);
    QCOMPARE(EncodeRecordText(u"\u2013\u4E2D!\u0080"_s), QByteArray("\x96?!?"));
}

void CodePageTest::DecodesWhatOthersWrote_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("text");
    QTest::newRow("utf-8") << QByteArray("caf\xC3\xA9 \xF0\x9F\x8E\xB5") << u"caf\u00E9 \U0001F3B5"_s;
    QTest::newRow("utf-8 mark") << QByteArray("\xEF\xBB\xBF\xC3\xA9") << u"\u00E9"_s;
    QTest::newRow("a second mark is text") << QByteArray("\xEF\xBB\xBF\xEF\xBB\xBFx") << u"\uFEFFx"_s;
    QTest::newRow("utf-16 little") << QByteArray("\xFF\xFE\xE9\0x\0", 6) << u"\u00E9x"_s;
    QTest::newRow("utf-16 big") << QByteArray("\xFE\xFF\0\xE9\0x", 6) << u"\u00E9x"_s;
    QTest::newRow("windows-1252") << QByteArray("caf\xE9 \x80") << u"caf\u00E9 \u20AC"_s;
    QTest::newRow("windows-1252 by its last byte") << QByteArray("ok \xC3\xA9 \xC3") << u"ok \u00C3\u00A9 \u00C3"_s;
    QTest::newRow("empty") << QByteArray() << QString();
}

void CodePageTest::DecodesWhatOthersWrote()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, text);
    QCOMPARE(DecodeText(bytes), text);
}

void CodePageTest::TextSurvives_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("ascii") << u"/home/a.mp3\r\n"_s;
    QTest::newRow("western") << u"caf\u00E9"_s;
    QTest::newRow("looks like utf-8 in bytes") << u"\u00C3\u00A9"_s;
    QTest::newRow("looks like a mark in bytes") << u"\u00EF\u00BB\u00BFx"_s;
    QTest::newRow("other scripts") << u"\u4E2D\u6587 \U0001F3B5 e\u0301"_s;
    QTest::newRow("carriers") << u"a\uF05Cb\uF0E9"_s;
    QTest::newRow("starts with a mark") << u"\uFEFFx"_s;
}

void CodePageTest::TextSurvives()
{
    QFETCH(QString, text);
    QCOMPARE(DecodeText(EncodeText(text)), text);
}

#include "CodePageTest.moc"
