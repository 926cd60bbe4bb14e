#include "platform/PlatformTests.h"

#include "platform/CodePage.h"

#include <QTest>

using namespace Qt::StringLiterals;

class CodePageTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void RecordTextIsWindows1252()
    {
        QByteArray bytes;
        for (int i = 0; i < 256; ++i)
            bytes.append(static_cast<char>(i));
        QCOMPARE(EncodeRecordText(DecodeRecordText(bytes)), bytes);
        QCOMPARE(DecodeRecordText("A\x80\x9F\xE9"), u"A\u20AC\u0178\u00E9"_s);
        QCOMPARE(EncodeRecordText(u"\u2013\u4E2D!\u0080"_s), QByteArray("\x96?!?"));
    }

    void TextSurvives()
    {
        QCOMPARE(DecodeText("\xEF\xBB\xBF\xEF\xBB\xBF\xC3\xA9"), u"\uFEFF\u00E9"_s);
        QCOMPARE(DecodeText(QByteArray("\xFF\xFE\xE9\0x\0", 6)), u"\u00E9x"_s);
        QCOMPARE(DecodeText(QByteArray("\xFE\xFF\0\xE9\0x", 6)), u"\u00E9x"_s);
        QCOMPARE(DecodeText("ok \xC3\xA9 \x80 \xC3"), u"ok \u00C3\u00A9 \u20AC \u00C3"_s);
        // A line in another form spoils no other one; where most are in that form, all are.
        QCOMPARE(DecodeText("\xC3\xA9\n\xE9\n\xC3\xA4\nz"), u"\u00E9\n\u00E9\n\u00E4\nz"_s);
        QCOMPARE(DecodeText("\xC3\xA9\n\xE9\nz"), u"\u00C3\u00A9\n\u00E9\nz"_s);
        // Among them what looks in single bytes like UTF-8 or like a mark.
        for (const QString &text : {u"/a.mp3\r\n"_s, u"caf\u00E9"_s, u"\u00C3\u00A9"_s, u"\u00EF\u00BB\u00BFx"_s,
                                    u"\u4E2D \U0001F3B5 e\u0301"_s, u"a\uF05Cb\uF0E9"_s, u"\uFEFFx"_s, QString()})
            QCOMPARE(DecodeText(EncodeText(text)), text);
    }
};

static const RegisterTest<CodePageTest> registered;

#include "CodePageTest.moc"
