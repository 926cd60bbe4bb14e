#include "platform/PlatformTests.h"

#include <QApplication>
#include <QTest>

std::vector<TestMaker> &PlatformTests()
{
    static std::vector<TestMaker> tests;
    return tests;
}

int main(int argc, char **argv)
{
    // Nothing of the user's is read or written.
    const QTemporaryDir home;
    for (const char *variable : {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME"})
        qputenv(variable, home.path().toLocal8Bit());
    const QApplication application(argc, argv);
    int failures = 0;
    for (const TestMaker &make : PlatformTests())
        failures += QTest::qExec(make().get(), argc, argv);
    return failures;
}
