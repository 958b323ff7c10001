#pragma once

#include "model/Delivery.h"

#include <QPointer>
#include <QThreadPool>

#include <chrono>
#include <functional>
#include <type_traits>
#include <utility>

/// Work that waits for tools, disks and networks, away from the window's thread. A small value that
/// is copied freely.
///
/// The work takes copies of all that it needs and knows nothing of its owner. Its results are
/// delivered on the owner's thread, by the owner's event loop, and only while the owner exists: an
/// owner may be destroyed at any time, without waiting. Work is never interrupted; a program that
/// ends doesn't wait for it either.
class Background
{
public:
    /// Does what it is handed, on the same thread: now, later or never. In place of the threads,
    /// for what only shows a model.
    using Doer = std::function<void(std::function<void()>)>;

    /// Work that must be done in the order in which it was requested: one thread for each lane.
    enum class Lane { Keys, Settings, Schedule, Drive, Server };

    /// On threads, as the program does it.
    Background() = default;
    /// By a doer, which gets each piece of work, and each of its results when it is there.
    explicit Background(Doer doer)
        : m_doer(std::move(doer))
    {
    }

    /// To be called while there is only one thread: child processes get the environment of this
    /// moment.
    static void begin();

    /// Waits until all work on threads has ended, delivered or not. For tests.
    static void waitForAll();

    /// For the program's end: waits for the lanes of settings and schedule, at most so long. False
    /// when any work is still under way after that.
    static bool endsWithin(std::chrono::milliseconds patience);

    /// The threads outside of the lanes: one for each piece of work, as work mostly waits.
    static QThreadPool &threads();

    /// Runs `work()` and forgets it.
    template <typename Work>
    void run(Work work) const
    {
        start(threads(), std::function<void()>(std::move(work)));
    }

    /// Runs `work()` after all earlier work of the lane, and forgets it.
    template <typename Work>
    void runInOrder(Lane lane, Work work) const
    {
        start(threadOf(lane), std::function<void()>(std::move(work)));
    }

    /// Runs `work(report)`. `receive` gets each value that the work passes to `report`, in their
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

    /// The same after all earlier work of the lane.
    template <typename Work, typename Deliver>
    void runInOrder(Lane lane, QObject *owner, Work work, Deliver deliver) const
    {
        run(threadOf(lane), owner, std::move(work), std::move(deliver));
    }

    /// Waits until all work of a lane has ended, at most so long.
    void waitFor(Lane lane, std::chrono::milliseconds patience) const;

private:
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
        if (m_doer) {
            m_doer([deliver = m_doer, owner = QPointer(owner), work = std::move(work),
                    receive = std::move(receive), finish = std::move(finish)] {
                work([&](const Report &report) {
                    deliver([owner, receive, report] {
                        if (owner) {
                            receive(report);
                        }
                    });
                });
                deliver([owner, finish] {
                    if (owner) {
                        finish();
                    }
                });
            });
            return;
        }
        // Destroyed with the owner, which ends the delivery.
        const auto *delivery =
            new ReportDelivery<Report>(owner, std::move(receive), std::move(finish));
        start(pool, [way = delivery->way(), work = std::move(work)] {
            work([&way](const Report &report) { ReportDelivery<Report>::report(*way, report); });
            ReportDelivery<Report>::finish(*way);
        });
    }

    Doer m_doer; ///< none: on threads
};
