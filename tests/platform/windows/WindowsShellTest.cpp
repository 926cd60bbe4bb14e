#include "platform/PlatformTests.h"

#include "platform/DesktopShell.h"
#include "platform/Drives.h"
#include "platform/Files.h"

#include <QCoreApplication>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

/// The programs that Windows has for documents.
class WindowsShellTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void ProgramIsTheRegisteredOne();
    void NothingIsOpenedWhereNothingIs();

private:
    QSettings classes{u"HKEY_CLASSES_ROOT"_s, QSettings::NativeFormat};
    std::unique_ptr<QTemporaryDir> directory;
    QString folder;
};

static const RegisterTest<WindowsShellTest> registered;

void WindowsShellTest::init()
{
    directory = std::make_unique<QTemporaryDir>();
    folder = FromHostPath(directory->path());
}

void WindowsShellTest::cleanup()
{
    classes.remove(u".vantreltest"_s);
    classes.remove(u"Vantrel.Test"_s);
    classes.sync();
}

void WindowsShellTest::ProgramIsTheRegisteredOne()
{
    const QString document = folder + u"\\a b.vantreltest";
    const QString program = FromHostPath(QCoreApplication::applicationFilePath());
    QVERIFY(WriteWholeFile(document, "x"));
    QCOMPARE(DesktopShell().AssociatedProgram(document), QString());
    classes.setValue(u".vantreltest/."_s, u"Vantrel.Test"_s);
    classes.setValue(u"Vantrel.Test/shell/open/command/."_s, QString(u'"' + program + u"\" \"%1\""));
    classes.sync();
    if (classes.status() != QSettings::NoError)
        QSKIP("Only an administrator may register programs");
    QCOMPARE(DesktopShell().AssociatedProgram(document).toLower(), program.toLower());
    QCOMPARE(DesktopShell().AssociatedProgram(folder + u"\\gone.vantreltest"), QString());
}

void WindowsShellTest::NothingIsOpenedWhereNothingIs()
{
    const Shell shell = DesktopShell();
    const QString gone = folder + u"\\gone";
    QVERIFY(!shell.Open(gone) && !shell.Explore(gone) && !shell.Find(gone) && !shell.Properties(gone));
}

#include "WindowsShellTest.moc"
