#pragma once

#include <QElapsedTimer>
#include <QThread>

/// Waits until a condition holds, for as long as a busy machine may need; false when it never did.
template <typename Condition>
bool eventually(Condition condition)
{
    static constexpr int patienceMilliseconds = 120000;
    static constexpr unsigned long pauseMilliseconds = 10;
    QElapsedTimer timer;
    timer.start();
    while (!condition()) {
        if (timer.elapsed() > patienceMilliseconds) {
            return false;
        }
        QThread::msleep(pauseMilliseconds);
    }
    return true;
}
