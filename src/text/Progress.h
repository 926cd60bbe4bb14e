#pragma once

#include <QString>

#include <functional>

/// What a long run tells of itself and asks while it goes on. Every function is set; the ones of a plain record do
/// nothing.
struct Progress {
    std::function<void(int minimum, int maximum)> SetLimits = [](int, int) {};
    std::function<void(int value)> SetValue = [](int) {};
    /// What is in work, as a folder.
    std::function<void(const QString &text)> SetText = [](const QString &) {};
    /// True once the user has ended the run. What is finished stays.
    std::function<bool()> Stopped = [] { return false; };
};
