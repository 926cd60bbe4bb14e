#pragma once

#include <QObject>

#include <functional>
#include <memory>
#include <vector>

using TestMaker = std::function<std::unique_ptr<QObject>()>;

/// The test classes of this executable.
std::vector<TestMaker> &PlatformTests();

/// Put a static one beside a test class to have it run.
template <typename Test>
struct RegisterTest {
    RegisterTest()
    {
        PlatformTests().push_back([] { return std::make_unique<Test>(); });
    }
};
