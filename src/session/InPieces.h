#pragma once

#include <QTimer>

#include <functional>

/// Work on many things that is done a few at a time, between the events, so that the window stays at hand.
class InPieces
{
public:
    /// Works on the n-th thing, from 0; each time that some are done, and when there are none, whenSome is called.
    InPieces(std::function<void(qsizetype n)> workOn, std::function<void()> whenSome);

    /// Starts anew with so many things, and works on the first ones at once.
    void Start(qsizetype count);
    /// Leaves the others.
    void Stop() { timer.stop(); }
    bool IsThrough() const { return done == all; }

private:
    void WorkOnSome();

    std::function<void(qsizetype)> work;
    std::function<void()> someDone;
    qsizetype all = 0;
    qsizetype done = 0;
    QTimer timer;
};
