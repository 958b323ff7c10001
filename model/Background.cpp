#include "model/Background.h"

#include "tools/ChildEnvironment.h"

#include <QDeadlineTimer>
#include <QRunnable>

#include <algorithm>
#include <array>
#include <mutex>

namespace {

constexpr std::array lanes{Background::Lane::Keys, Background::Lane::Settings,
                           Background::Lane::Schedule, Background::Lane::Drive,
                           Background::Lane::Server};

// Never destroyed, as that would wait for networks that don't answer.
QThreadPool *madePool(int threads)
{
    auto *made = new QThreadPool;
    made->setMaxThreadCount(threads);
    return made;
}

} // namespace

/// Work on its way to a thread.
class Background::Job final : public QRunnable
{
public:
    explicit Job(std::function<void()> work)
        : m_work(std::move(work))
    {
        handOver();
    }

    void run() override
    {
        handOver();
        m_work();
        handOver();
    }

    /// Orders what comes after it on this thread behind what came before it on all others. The pool
    /// does so, too, but the thread sanitizer doesn't see it: the system's Qt isn't built with it.
    static void handOver()
    {
        static std::mutex mutex;
        const std::lock_guard lock(mutex);
    }

private:
    std::function<void()> m_work;
};

void Background::begin()
{
    ChildEnvironment::keep();
}

QThreadPool &Background::threads()
{
    static constexpr int enough = 32;
    static QThreadPool *const pool = madePool(enough);
    return *pool;
}

QThreadPool &Background::threadOf(Lane lane)
{
    static const std::array<QThreadPool *, lanes.size()> pools{
        madePool(1), madePool(1), madePool(1), madePool(1), madePool(1)};
    return *pools.at(static_cast<std::size_t>(lane));
}

void Background::start(QThreadPool &pool, std::function<void()> work) const
{
    if (m_doer) {
        m_doer(std::move(work));
        return;
    }
    pool.start(new Job(std::move(work))); // owned by the pool
}

void Background::waitFor(Lane lane, std::chrono::milliseconds patience) const
{
    if (!m_doer) {
        threadOf(lane).waitForDone(static_cast<int>(patience.count()));
    }
}

bool Background::endsWithin(std::chrono::milliseconds patience)
{
    QDeadlineTimer deadline(patience);
    for (const Lane lane : {Lane::Settings, Lane::Schedule}) {
        threadOf(lane).waitForDone(static_cast<int>(deadline.remainingTime()));
    }
    return threads().activeThreadCount() == 0 &&
           std::all_of(lanes.begin(), lanes.end(),
                       [](Lane lane) { return threadOf(lane).activeThreadCount() == 0; });
}

void Background::waitForAll()
{
    threads().waitForDone();
    for (const Lane lane : lanes) {
        threadOf(lane).waitForDone();
    }
    Job::handOver();
}
