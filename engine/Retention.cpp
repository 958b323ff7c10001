#include "engine/BackupEngine.h"

#include "engine/RetentionPolicy.h"
#include "platform/Clock.h"
#include "state/StatusStore.h"

namespace {

using namespace std::chrono_literals;

// Pruning rewrites much of a repository, so it isn't for every run; where a single version is kept,
// each day leaves a whole one behind.
std::chrono::milliseconds pruneInterval(qint64 keepDays)
{
    return keepDays < 0 ? 24h : 7 * 24h;
}

} // namespace

void BackupEngine::applyRetention(const Restic &restic)
{
    // By host alone: a change in the list of sources doesn't begin a new series of versions.
    QStringList arguments{QStringLiteral("forget"), QStringLiteral("--tag"),
                          QStringLiteral("vellomar"), QStringLiteral("--group-by"),
                          QStringLiteral("host")};
    arguments += retentionPolicy(m_config.keepDays, m_config.intervalHours);

    EngineState state = StatusStore::loadState();
    const QString destination = rawValue(restic.dest);
    const bool pruneIsDue = EngineState::isDue(state.lastPrune, destination, Clock::now(),
                                               pruneInterval(m_config.keepDays));
    if (pruneIsDue) {
        arguments.append(QStringLiteral("--prune"));
    }
    const ProcessResult result = restic.run(arguments, m_handle.get());
    if (result.status == 0 && pruneIsDue) {
        state.lastPrune.insert(destination, Clock::now());
        StatusStore::save(state);
    }
}
