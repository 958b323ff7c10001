#include "engine/BackupEngine.h"

#include "engine/RetentionPolicy.h"
#include "platform/Clock.h"
#include "state/JSONFile.h"
#include "state/StatusStore.h"

#include <QJsonArray>
#include <QJsonObject>

namespace {

using namespace std::chrono_literals;

// Pruning rewrites much of a repository, so it isn't for every run; where a single version is kept,
// each day leaves a whole one behind.
std::chrono::milliseconds pruneInterval(qint64 keepDays)
{
    return keepDays < 0 ? 24h : 7 * 24h;
}

/// What retention would do, asked of restic without doing it.
struct Forecast
{
    QStringList removed;                  ///< full ids
    std::optional<QDateTime> newest = {}; ///< date of the newest version of all
};

void note(const QJsonValue &versions, Forecast &forecast, bool isRemoved)
{
    const QJsonArray list = versions.toArray();
    for (const auto entry : list) {
        const QJsonObject version = entry.toObject();
        forecast.newest =
            qMax(forecast.newest, parseResticDate(version.value(QLatin1String("time")).toString()));
        if (isRemoved) {
            forecast.removed.append(version.value(QLatin1String("id")).toString());
        }
    }
}

// restic's answer is a list of groups, each with the versions that it would keep and remove.
std::optional<Forecast> parsedForecast(const ProcessResult &result)
{
    const auto document = JSONFile::decode(result.standardOutput.toUtf8());
    if (result.status != 0 || !document || !document->isArray()) {
        return std::nullopt;
    }
    Forecast forecast;
    const QJsonArray groups = document->array();
    for (const auto group : groups) {
        note(group.toObject().value(QLatin1String("keep")), forecast, false);
        note(group.toObject().value(QLatin1String("remove")), forecast, true);
    }
    return forecast;
}

} // namespace

bool BackupEngine::applyRetention(const Restic &restic, const QString &version,
                                  const QDateTime &begun)
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
    // The newest version is kept by any policy. Asking restic takes as long as forgetting, so it is
    // asked only where one may have a later date than this, or where nothing could be brought back.
    QDateTime &newest = state.newestVersion[restic.config.repository(restic.dest)];
    if (pruneIsDue || !newest.isValid() || newest > begun) {
        const auto forecast = parsedForecast(restic.run(
            arguments + QStringList{QStringLiteral("--dry-run"), QStringLiteral("--json")},
            m_handle.get()));
        if (!forecast || version.isEmpty()) {
            return true;
        }
        newest = qMax(newest, forecast->newest.value_or(newest));
        if (forecast->removed.contains(version)) {
            StatusStore::save(state);
            return false;
        }
    }
    newest = qMax(newest, Clock::now());
    if (pruneIsDue) {
        arguments.append(QStringLiteral("--prune"));
    }
    const ProcessResult result = restic.run(arguments, m_handle.get());
    if (result.status == 0 && pruneIsDue) {
        state.lastPrune.insert(destination, Clock::now());
    }
    StatusStore::save(state);
    return true;
}
