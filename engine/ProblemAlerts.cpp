#include "engine/ProblemAlerts.h"

#include "platform/Clock.h"
#include "state/StatusStore.h"
#include "state/Texts.h"

#include <algorithm>
#include <utility>

namespace {

using namespace std::chrono_literals;

constexpr std::chrono::milliseconds silenceAfterAlert = 24h;

const RunRecord *firstWith(Outcome outcome, const QList<RunRecord> &records)
{
    const auto found =
        std::find_if(records.cbegin(), records.cend(),
                     [outcome](const RunRecord &record) { return record.outcome == outcome; });
    return found == records.cend() ? nullptr : &*found;
}

bool anyIsGood(const QList<RunRecord> &records)
{
    return std::any_of(records.cbegin(), records.cend(),
                       [](const RunRecord &record) { return isGood(record.outcome); });
}

/// How long there has been no good backup.
struct TimeSinceGood
{
    bool hadGoodBackup = false; ///< otherwise the time is that since the oldest backup
    qint64 hours = 0;
};

TimeSinceGood timeSinceGood()
{
    QList<RunRecord> backups = StatusStore::loadHistory();
    const QDateTime now = Clock::now();
    backups.removeIf([&now](const RunRecord &record) {
        return record.kind.has_value() || !EngineState::isCredible(record.date, now);
    });
    if (backups.isEmpty()) {
        return {};
    }
    const auto lastGood =
        std::find_if(backups.cbegin(), backups.cend(),
                     [](const RunRecord &record) { return isGood(record.outcome); });
    const bool hadGoodBackup = lastGood != backups.cend();
    const QDateTime reference = hadGoodBackup ? lastGood->date : backups.last().date;
    return {hadGoodBackup, reference.msecsTo(now) / 3'600'000};
}

QString skipTitle(const TimeSinceGood &since)
{
    if (!since.hadGoodBackup) {
        return Texts::tr("Backup non eseguito");
    }
    const qint64 days = since.hours / 24;
    const qint64 hours = qMax(since.hours, qint64{1});
    const QString age = since.hours > 47
                            ? Texts::tr("%1 giorni", nullptr, Texts::count(days)).arg(days)
                            : Texts::tr("%1 ore", nullptr, Texts::count(hours)).arg(hours);
    return Texts::tr("Nessun backup da %1").arg(age);
}

struct Alert
{
    QString title;
    const RunRecord &record; ///< what it is about
};

/// What is to be reported of a cycle's records; absent when nothing is.
std::optional<Alert> alertFor(const QList<RunRecord> &records, qint64 alertAfterHours)
{
    if (const RunRecord *failed = firstWith(Outcome::Failed, records)) {
        return Alert{Texts::tr("Backup non riuscito"), *failed};
    }
    const RunRecord *skipped = firstWith(Outcome::Skipped, records);
    if (anyIsGood(records) || skipped == nullptr) {
        return std::nullopt;
    }
    const TimeSinceGood since = timeSinceGood();
    if (alertAfterHours > since.hours) {
        return std::nullopt;
    }
    return Alert{skipTitle(since), *skipped};
}

} // namespace

ProblemAlerts::ProblemAlerts(qint64 alertAfterHours, Notifier::Send notify)
    : m_alertAfterHours(alertAfterHours)
    , m_notify(std::move(notify))
{
}

void ProblemAlerts::report(const QList<RunRecord> &records) const
{
    EngineState state = StatusStore::loadState();
    if (m_alertAfterHours < 0 ||
        !EngineState::isDue(state.lastAlert, Clock::now(), silenceAfterAlert)) {
        return;
    }
    const std::optional<Alert> alert = alertFor(records, m_alertAfterHours);
    if (!alert) {
        return;
    }
    m_notify(alert->title,
             title(alert->record.destination) + QLatin1String(": ") + alert->record.message);
    state.lastAlert = Clock::now();
    StatusStore::save(state);
}
