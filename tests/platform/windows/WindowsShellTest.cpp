#include "platform/PlatformTests.h"

#include "platform/DesktopShell.h"

#include <QCoreApplication>
#include <QSettings>
#include <QTest>

using namespace Qt::StringLiterals;

/// The programs that Windows has for documents.
class WindowsShellTest : public FolderTest
{
    Q_OBJECT

    QSettings classes{u"HKEY_CLASSES_ROOT"_s, QSettings::NativeFormat};

private Q_SLOTS:
    void cleanup()
    {
        classes.remove(u".vantreltest"_s);
        classes.remove(u"Vantrel.Test"_s);
        classes.sync();
    }

    void ProgramIsTheRegisteredOne()
    {
        const QString document = In(u"a b.vantreltest"_s);
        const QString program = FromHostPath(QCoreApplication::applicationFilePath());
        QVERIFY(WriteWholeFile(document, "x"));
        QCOMPARE(DesktopShell().AssociatedProgram(document), QString());
        classes.setValue(u".vantreltest/."_s, u"Vantrel.Test"_s);
        classes.setValue(u"Vantrel.Test/shell/open/command/."_s, QString(u'"' + program + u"\" \"%1\""));
        classes.sync();
        if (classes.status() != QSettings::NoError)
            QSKIP("Only an administrator may register programs");
        QCOMPARE(DesktopShell().AssociatedProgram(document).toLower(), program.toLower());
        QCOMPARE(DesktopShell().AssociatedProgram(In(u"gone.vantreltest"_s)), QString());
    }

    void NothingIsOpenedWhereNothingIs()
    {
        const Shell shell = DesktopShell();
        const QString gone = In(u"gone"_s);
        QVERIFY(!shell.Open(gone) && !shell.Browse(gone) && !shell.Explore(gone) && !shell.Properties(gone));
    }
};

static const RegisterTest<WindowsShellTest> registered;

#include "WindowsShellTest.moc"
