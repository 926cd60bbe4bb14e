#include "platform/PlatformTests.h"

#include "platform/Files.h"
#include "platform/Host.h"
#include "platform/PlaylistLines.h"

#include <QSettings>
#include <QTest>

#include <algorithm>

using namespace Qt::StringLiterals;

class HostTest : public QObject
{
    Q_OBJECT

    const QString name = u"Vantrel Test"_s;

private Q_SLOTS:
    void cleanupTestCase() { QSettings(QSettings::NativeFormat, QSettings::UserScope, u"Vantrel"_s, name).clear(); }

    void SettingsSurviveARestart()
    {
        // Section, key, value.
        const QList<QStringList> settings{{u"General"_s, u"x"_s, u"a, b;c"_s},
                                          {u"A"_s, u"B/C"_s, u"  two  "_s},
                                          {u"A/B"_s, u"C"_s, u"@Variant(x)"_s},
                                          {u"A"_s, u"B\\C"_s, u"\"a\"\r\nb\t=#;%41"_s},
                                          {u"%"_s, u"x"_s, u"\u4E2D \U0001F3B5 \uF05C\uF0FF"_s},
                                          {u""_s, u"x"_s, u""_s},
                                          {u"\u00E9"_s, u""_s, u"1"_s}};
        for (const QStringList &setting : settings) {
            const SettingsStore store = HeadlessHost(name).Settings;
            QCOMPARE(store.Read(setting[0], setting[1]), QString());
            store.Write(setting[0], setting[1], u"before"_s);
            store.Write(setting[0], setting[1], setting[2]);
        }
        for (const QStringList &setting : settings)
            QCOMPARE(HeadlessHost(name).Settings.Read(setting[0], setting[1]), setting[2]);
    }

    void NothingIsMadeAndNobodyAnswers()
    {
        const Host host = HeadlessHost(name);
        QVERIFY(ExamineFile(host.ProgramFolder).IsFolder);
        QVERIFY(host.ApplicationFolder.endsWith(u"\\vantrel-playlist-editor"_s));
        QCOMPARE(host.Prompts.Message({u"?"_s, PromptIcon::Question, PromptButtons::YesNo}), PromptAnswer::Cancel);
        QCOMPARE(host.Prompts.Message({u"!"_s, PromptIcon::Stop, PromptButtons::Ok}), PromptAnswer::Ok);
        QVERIFY(!host.Prompts.OpenFile({}) && !host.Prompts.Line({}) && !host.Shell.Open(u"z:\\"_s));
        QVERIFY(host.Prompts.OpenFiles({}).isEmpty());
    }

    void AddressesFromFilesOpenNoFiles()
    {
        for (const QString &address : {u"http://a"_s, u"view-source:http://a"_s, u"m2+a.b:x"_s})
            QVERIFY(IsForeignAddress(address));
        for (const QString &file : {u"a"_s, u"see http://a"_s, u"x:http://a"_s, u"File:///a?http://"_s, u"2a:b"_s})
            QVERIFY(!IsForeignAddress(file));
    }

    void RandomDraws()
    {
        const Clock clock = HeadlessHost(name).Clock;
        clock.Reseed();
        QList<double> draws(2000);
        std::generate(draws.begin(), draws.end(), clock.Random);
        const auto [least, most] = std::minmax_element(draws.cbegin(), draws.cend());
        QVERIFY(*least >= 0 && *least < 0.1 && *most < 1 && *most > 0.9);
    }
};

static const RegisterTest<HostTest> registered;

#include "HostTest.moc"
