#pragma once

#include "session/PaintPace.h"
#include "text/Progress.h"

#include <QObject>

class QLabel;
class QProgressBar;

/// A long run of a window while it lives: shows its progress, painted at most 30 times a second and the limits
/// always, keeps the window system served, and is ended by Escape. All other keys and clicks are dropped meanwhile.
class LongRun : public QObject
{
    Q_OBJECT

public:
    /// The controls that show the value and the text; each may be none.
    LongRun(QProgressBar *valueShownBy, QLabel *textShownBy);
    /// A run within which this one was has been ended with it.
    ~LongRun() override;

    /// For the routine that does the work; not to be used after this object.
    Progress AsProgress();
    bool Stopped() const { return stopped; }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void SetLimits(int minimum, int maximum);
    void SetValue(int value);
    void SetText(const QString &newText);
    void Paint();

    inline static LongRun *innermost = nullptr;

    LongRun *outer;
    QProgressBar *bar;
    QLabel *label;
    PaintPace pace;
    int current = 0;
    QString text;
    bool stopped = false;
};
