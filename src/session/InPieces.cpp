#include "session/InPieces.h"

#include <algorithm>
#include <utility>

InPieces::InPieces(std::function<void(qsizetype)> workOn, std::function<void()> whenSome)
    : work(std::move(workOn)), someDone(std::move(whenSome))
{
    QObject::connect(&timer, &QTimer::timeout, &timer, [this] { WorkOnSome(); });
}

void InPieces::Start(qsizetype count)
{
    all = count;
    done = 0;
    timer.start();
    WorkOnSome();
}

void InPieces::WorkOnSome()
{
    // So many that a slow disk gives them in a moment.
    constexpr qsizetype atOnce = 16;
    for (const qsizetype end = std::min(done + atOnce, all); done < end; ++done)
        work(done);
    if (IsThrough())
        Stop();
    someDone();
}
