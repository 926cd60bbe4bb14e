#pragma once

#include <QElapsedTimer>

/// Holds a long loop to 30 paintings a second.
class PaintPace
{
public:
    /// True when the next painting is due; the first call always is.
    bool Due()
    {
        if (timer.isValid() && timer.elapsed() < 33)
            return false;
        timer.start();
        return true;
    }

private:
    QElapsedTimer timer;
};
