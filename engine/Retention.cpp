#include "engine/Retention.h"

#include "engine/RetentionPolicy.h"
#include "platform/Clock.h"
#include "state/StatusStore.h"

namespace {

using namespace std::chrono_literals;
using ResticForget::Prune;

// Pruning rewrites much of a repository, so not every run does it. Where a single version is kept,
// each day leaves a whole one behind.
std::chrono::milliseconds pruneInterval(qint64 keepDays)
{
    return keepDays < 0 ? 24h : 7 * 24h;
}

} // namespace

Retention::Retention(const Restic &restic, ProcessHandle &handle)
    : m_restic(restic)
    , m_handle(handle)
{
}

bool Retention::apply(const NewVersion &version) const
{
    const AppConfig &config = m_restic.config;
    const auto policy = retentionPolicy(config.keepDays, config.intervalHours);
    EngineState state = StatusStore::loadState();
    const QString destination = rawValue(m_restic.dest);
    const bool pruneIsDue = EngineState::isDue(state.lastPrune, destination, Clock::now(),
                                               pruneInterval(config.keepDays));

    // Any policy keeps the newest version, so this one is safe where no other has a later date. To
    // ask restic takes as long as to forget: so only where that isn't known, or before a prune,
    // which nothing brings back.
    QDateTime &newest = state.newestVersion[config.repository(m_restic.dest)];
    if (pruneIsDue || !newest.isValid() || newest > version.begun) {
        const auto forecast = ResticForget::forecast(m_restic, policy, &m_handle);
        if (!forecast || version.id.isEmpty()) {
            return true;
        }
        newest = qMax(newest, forecast->newest.value_or(newest));
        if (forecast->removed.contains(version.id)) {
            StatusStore::save(state);
            return false;
        }
    }
    newest = qMax(newest, Clock::now());

    const bool done =
        ResticForget::run(m_restic, policy, pruneIsDue ? Prune::yes : Prune::no, &m_handle);
    if (done && pruneIsDue) {
        state.lastPrune.insert(destination, Clock::now());
    }
    StatusStore::save(state);
    return true;
}
