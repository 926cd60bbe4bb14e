#include "platform/PlatformTests.h"

#include "platform/Files.h"
#include "platform/Host.h"

#include <QSettings>
#include <QTest>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace
{

QString Application()
{
    return u"Vantrel Test"_s;
}

} // namespace

class HostTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanupTestCase();
    void SettingsSurviveARestart_data();
    void SettingsSurviveARestart();
    void SettingsKeepSectionsApart();
    void FoldersAreNamedAndNotMade();
    void NobodyAnswersWithoutAWindow();
    void RandomDraws();
};

static const RegisterTest<HostTest> registered;

void HostTest::cleanupTestCase()
{
    QSettings(QSettings::NativeFormat, QSettings::UserScope, u"Vantrel"_s, Application()).clear();
}

void HostTest::SettingsSurviveARestart_data()
{
    QTest::addColumn<QString>("value");
    QTest::newRow("plain") << u"d:\\Music\\a.mp3"_s;
    QTest::newRow("list-like") << u"a, b;c"_s;
    QTest::newRow("blanks") << u"  two  "_s;
    QTest::newRow("sign of a typed value") << u"@Variant(x)"_s;
    QTest::newRow("lines and quotes") << u"\"a\"\r\nb\t=#;%41"_s;
    QTest::newRow("other scripts") << u"\u4E2D \U0001F3B5 \uF05C\uF0FF"_s;
    QTest::newRow("empty") << u""_s;
    QTest::newRow("null") << QString();
}

void HostTest::SettingsSurviveARestart()
{
    QFETCH(QString, value);
    HeadlessHost(Application()).Settings.Write(u"PS"_s, u"H"_s, u"before"_s);
    HeadlessHost(Application()).Settings.Write(u"PS"_s, u"H"_s, value);
    QCOMPARE(HeadlessHost(Application()).Settings.Read(u"PS"_s, u"H"_s), value);
}

void HostTest::SettingsKeepSectionsApart()
{
    const QList<std::pair<QString, QString>> addresses{
        {u"SH"_s, u"1"_s},      {u"TableB"_s, u"TX1"_s}, {u"A"_s, u"B/C"_s},    {u"A/B"_s, u"C"_s},
        {u"A"_s, u"B\\C"_s},    {u""_s, u"x"_s},         {u"x"_s, u""_s},       {u""_s, u""_s},
        {u"General"_s, u"x"_s}, {u"%"_s, u"x"_s},        {u"\u00E9"_s, u"k"_s}, {u"ToolB"_s, u"3D"_s},
    };
    {
        const Host host = HeadlessHost(Application());
        for (qsizetype i = 0; i < addresses.size(); ++i) {
            QCOMPARE(host.Settings.Read(addresses[i].first, addresses[i].second), QString());
            host.Settings.Write(addresses[i].first, addresses[i].second, QString::number(i + 1));
        }
    }
    const Host host = HeadlessHost(Application());
    for (qsizetype i = 0; i < addresses.size(); ++i)
        QCOMPARE(host.Settings.Read(addresses[i].first, addresses[i].second), QString::number(i + 1));
}

void HostTest::FoldersAreNamedAndNotMade()
{
    const Host host = HeadlessHost(Application());
    QVERIFY(ExamineFile(host.ProgramFolder).IsFolder);
    QVERIFY(host.ApplicationFolder.endsWith(u"\\vantrel-playlist-editor"_s));
    QVERIFY(!ExamineFile(host.ApplicationFolder).Exists);
    qputenv("VANTREL_TEST", "value");
    QCOMPARE(host.Environment(u"VANTREL_TEST"_s), u"value"_s);
    QCOMPARE(host.Environment(u"VANTREL_TEST_MISSING"_s), QString());
}

void HostTest::NobodyAnswersWithoutAWindow()
{
    const Host host = HeadlessHost(Application());
    QCOMPARE(host.Prompts.Message({u"?"_s, PromptIcon::Question, PromptButtons::YesNo}), PromptAnswer::Cancel);
    QCOMPARE(host.Prompts.Message({u"!"_s, PromptIcon::Stop, PromptButtons::Ok}), PromptAnswer::Ok);
    QVERIFY(!host.Prompts.OpenFile({}) && !host.Prompts.Line({}));
    QVERIFY(!host.Shell.Open(u"z:\\"_s) && host.Shell.AssociatedProgram(u"z:\\"_s).isEmpty());
}

void HostTest::RandomDraws()
{
    const Clock clock = HeadlessHost(Application()).Clock;
    clock.Reseed();
    double least = 1;
    double most = 0;
    for (int i = 0; i < 2000; ++i) {
        const double draw = clock.Random();
        least = std::min(least, draw);
        most = std::max(most, draw);
    }
    QVERIFY(least >= 0 && least < 0.1);
    QVERIFY(most < 1 && most > 0.9);
}

#include "HostTest.moc"
