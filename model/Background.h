#pragma once

#include <QFutureWatcher>
#include <QPromise>
#include <QThreadPool>

#include <chrono>
#include <functional>
#include <memory>
#include <mutex>
#include <type_traits>
#include <utility>

/// Work that waits for tools, disks and networks, away from the thread of the window. A small value
/// that is copied freely.
///
/// What runs there takes copies of all that it needs and knows nothing of its owner. What comes of
/// it is handed over on the owner's thread, by the owner's event loop, and only while the owner
/// lives: an owner may be destroyed at any time, without waiting. Nothing here is ever interrupted;
/// a program that ends doesn't wait for it either.
class Background
{
public:
    /// How work is done. Whatever the program itself starts is done on threads.
    enum class Manner {
        OnThreads,
        AtOnce, ///< before the call returns, its result included
        Never,  ///< not at all, as if it took for ever
    };

    /// Work that must come in the order in which it was asked for: one thread for each.
    enum class Lane { Keys, Settings, Schedule };

    explicit Background(Manner manner = Manner::OnThreads)
        : m_manner(manner)
    {
    }

    /// To be called while there is one thread only: the children that this work starts get the
    /// environment as it is now.
    static void begin();

    /// Waits until all work on threads has ended, delivered or not. For tests and for orderly ends.
    static void waitForAll();

    /// For the program's end: waits until settings and schedule are as they should be, at most so
    /// long. False when any work is under way after that.
    static bool endsWithin(std::chrono::milliseconds patience);

    /// The threads. There are as many as there is work, which mostly waits.
    static QThreadPool &threads();

    /// Runs `work()` and forgets it.
    template <typename Work>
    void run(Work work) const
    {
        start(threads(), std::function<void()>(std::move(work)));
    }

    /// Runs `work()` when all that was handed to the lane before has ended, and forgets it.
    template <typename Work>
    void runInOrder(Lane lane, Work work) const
    {
        start(threadOf(lane), std::function<void()>(std::move(work)));
    }

    /// Runs `work(report)`. Each value that it passes to `report` comes to `receive`, in their
    /// order; `finish` is called after the last.
    template <typename Report, typename Work, typename Receive, typename Finish>
    void runReporting(QObject *owner, Work work, Receive receive, Finish finish) const
    {
        runReporting<Report>(threads(), owner, std::move(work), std::move(receive),
                             std::move(finish));
    }

    /// Runs `work()` and hands its result to `deliver`.
    template <typename Work, typename Deliver>
    void run(QObject *owner, Work work, Deliver deliver) const
    {
        run(threads(), owner, std::move(work), std::move(deliver));
    }

    /// The same when all that was handed to the lane before has ended.
    template <typename Work, typename Deliver>
    void runInOrder(Lane lane, QObject *owner, Work work, Deliver deliver) const
    {
        run(threadOf(lane), owner, std::move(work), std::move(deliver));
    }

    /// Waits until all that was handed to a lane has ended, at most so long.
    void waitFor(Lane lane, std::chrono::milliseconds patience) const;

private:
    /// What one thread has done under it, the next one sees. Qt's own locks see to that already;
    /// but the thread sanitizer can't know of them, as the system's Qt isn't built with it.
    class HandOver
    {
#ifdef __SANITIZE_THREAD__
    public:
        HandOver();

    private:
        std::unique_lock<std::mutex> m_lock;
#else
    public:
        HandOver() {} // NOLINT(modernize-use-equals-default): used for its life alone
#endif
    };

    class Job;

    static QThreadPool &threadOf(Lane lane);
    void start(QThreadPool &pool, std::function<void()> work) const;

    template <typename Work, typename Deliver>
    void run(QThreadPool &pool, QObject *owner, Work work, Deliver deliver) const
    {
        using Result = std::invoke_result_t<const Work &>;
        runReporting<Result>(
            pool, owner, [work = std::move(work)](const auto &report) { report(work()); },
            std::move(deliver), [] {});
    }

    template <typename Report, typename Work, typename Receive, typename Finish>
    void runReporting(QThreadPool &pool, QObject *owner, Work work, Receive receive,
                      Finish finish) const
    {
        if (m_manner != Manner::OnThreads) {
            start(pool, [work = std::move(work), receive = std::move(receive),
                         finish = std::move(finish)] {
                work([&receive](const Report &report) { receive(report); });
                finish();
            });
            return;
        }
        // With a watcher and not by QFuture::then(owner, …), which ends a debug build of Qt 6.4
        // when the owner has gone.
        const auto promise = std::make_shared<QPromise<Report>>();
        // Dies with the owner, and so does what follows.
        auto *watcher = new QFutureWatcher<Report>(owner);
        QObject::connect(watcher, &QFutureWatcherBase::resultReadyAt, owner,
                         [watcher, receive = std::move(receive)](int index) {
                             const Report report = [&] {
                                 const HandOver seen;
                                 return watcher->resultAt(index);
                             }();
                             receive(report);
                         });
        QObject::connect(watcher, &QFutureWatcherBase::finished, owner,
                         [watcher, finish = std::move(finish)] {
                             watcher->deleteLater();
                             finish();
                         });
        watcher->setFuture(promise->future());
        start(pool, [promise, work = std::move(work)] {
            promise->start();
            work([&promise](const Report &report) {
                const HandOver seen;
                promise->addResult(report);
            });
            promise->finish();
        });
    }

    Manner m_manner;
};
