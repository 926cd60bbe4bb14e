#pragma once

#include <QElapsedTimer>

#include <algorithm>

/// Holds a long loop to 30 paintings a second.
class PaintPace
{
public:
    /// True when the next painting is due; the first call always is.
    bool Due()
    {
        // The clock is a call of the system on some hosts: while steps are quick, only every few of them ask it.
        constexpr int mostSteps = 16;
        if (timer.isValid() && ++steps < stride)
            return false;
        steps = 0;
        const qint64 now = timer.isValid() ? timer.elapsed() : interval;
        stride = now == asked ? std::min(2 * stride, mostSteps) : 1;
        asked = now;
        if (now < interval)
            return false;
        timer.start();
        asked = 0;
        return true;
    }

private:
    /// Milliseconds.
    static constexpr qint64 interval = 33;

    QElapsedTimer timer;
    qint64 asked = 0;
    int steps = 0;
    int stride = 1;
};
