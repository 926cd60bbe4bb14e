#include "platform/PlatformTests.h"

#include <QApplication>
#include <QFile>
#include <QTest>

std::vector<TestMaker> &PlatformTests()
{
    static std::vector<TestMaker> tests;
    return tests;
}

int main(int argc, char **argv)
{
    // Nothing of the user's is read or written, and no program of the system's is started.
    const QTemporaryDir home;
    QFile::link(QStringLiteral("/usr/share/mime"), home.filePath(QStringLiteral("mime")));
    for (const char *variable : {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME", "XDG_DATA_DIRS"})
        qputenv(variable, home.path().toLocal8Bit());
    const QApplication application(argc, argv);
    int failures = 0;
    for (const TestMaker &make : PlatformTests())
        failures += QTest::qExec(make().get(), argc, argv);
    return failures;
}
