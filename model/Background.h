#pragma once

#include <QFutureWatcher>
#include <QPromise>
#include <QThreadPool>

#include <functional>
#include <memory>
#include <type_traits>
#include <utility>

/// Work that waits for tools, disks and networks, away from the thread of the window.
///
/// What runs there takes copies of all that it needs and knows nothing of its owner. What comes of
/// it is handed over on the owner's thread, by the owner's event loop, and only while the owner
/// lives: an owner may be destroyed at any time, without waiting. Nothing here is ever interrupted;
/// a program that ends doesn't wait for it either.
namespace Background {

/// To be called while there is one thread only: the children that this work starts get the
/// environment as it is now.
void begin();

/// Waits until all work has ended, delivered or not. For tests and for orderly ends.
void waitForAll();

/// The threads. There are as many as there is work, which mostly waits.
QThreadPool &threads();

/// One thread more, for what must come in the order in which it was asked for.
QThreadPool &orderly();

/// Runs `work()` and forgets it.
template <typename Work>
void run(Work work)
{
    threads().start(std::function<void()>(std::move(work)));
}

/// Runs `work()` when all that was handed over here before has ended, and forgets it.
template <typename Work>
void runInOrder(Work work)
{
    orderly().start(std::function<void()>(std::move(work)));
}

/// Runs `work(report)`, with a watcher and not by QFuture::then(owner, …), which ends a debug build
/// of Qt 6.4 when the owner has gone. Each value that it passes to `report` comes to `receive`, in
/// their order; `finish` is called after the last.
template <typename Report, typename Work, typename Receive, typename Finish>
void runReporting(QObject *owner, Work work, Receive receive, Finish finish)
{
    const auto promise = std::make_shared<QPromise<Report>>();
    auto *watcher = new QFutureWatcher<Report>(owner); // dies with the owner, and so does the rest
    QObject::connect(
        watcher, &QFutureWatcherBase::resultReadyAt, owner,
        [watcher, receive = std::move(receive)](int index) { receive(watcher->resultAt(index)); });
    QObject::connect(watcher, &QFutureWatcherBase::finished, owner,
                     [watcher, finish = std::move(finish)] {
                         watcher->deleteLater();
                         finish();
                     });
    watcher->setFuture(promise->future());
    run([promise, work = std::move(work)] {
        promise->start();
        work([&promise](const Report &report) { promise->addResult(report); });
        promise->finish();
    });
}

/// Runs `work()` and hands its result to `deliver`.
template <typename Work, typename Deliver>
void run(QObject *owner, Work work, Deliver deliver)
{
    using Result = std::invoke_result_t<const Work &>;
    runReporting<Result>(
        owner, [work = std::move(work)](const auto &report) { report(work()); }, std::move(deliver),
        [] {});
}

} // namespace Background
