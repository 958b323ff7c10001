#pragma once

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QThread>

#include <array>

/// The application object of a test that needs an event loop.
class TestApplication
{
private:
    int m_count = 1;
    std::array<char, 5> m_name = {'t', 'e', 's', 't', '\0'};
    std::array<char *, 2> m_arguments = {m_name.data(), nullptr};
    QCoreApplication m_application{m_count, m_arguments.data()};
};

/// Runs the event loop of this thread until a condition holds, for as long as a busy machine may
/// need; false when it never did.
template <typename Condition>
bool eventuallyInLoop(Condition condition)
{
    static constexpr int patienceMilliseconds = 120000;
    static constexpr int pauseMilliseconds = 10;
    QElapsedTimer timer;
    timer.start();
    while (!condition()) {
        if (timer.elapsed() > patienceMilliseconds) {
            return false;
        }
        QCoreApplication::processEvents(QEventLoop::AllEvents, pauseMilliseconds);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QThread::msleep(1);
    }
    return true;
}
