#include "engine/BackupEngine.h"

#include "engine/RepositoryVolume.h"
#include "platform/Clock.h"
#include "platform/WeekOfYear.h"
#include "state/StatusStore.h"
#include "state/Texts.h"

namespace {

using namespace std::chrono_literals;

constexpr auto checkInterval = 7 * 24h;

// A different twentieth of the data each week, so that all of it is read in twenty weeks.
QString twentieth(const QDateTime &start)
{
    return QString::number(weekOfYear(start) % 20 + 1) + QLatin1String("/20");
}

QStringList checkArguments(DestinationID destination, const QDateTime &start)
{
    QStringList arguments{QStringLiteral("check")};
    // Only a disk's data are read back; over a network that would be a download.
    if (destination == DestinationID::Local) {
        arguments << QStringLiteral("--read-data-subset") << twentieth(start);
    }
    return arguments;
}

QString failureMessage(const ProcessResult &result, const RepositoryVolume &volume)
{
    if (!volume.isStillThere()) {
        return Texts::tr("Il disco è stato scollegato durante la verifica");
    }
    if (result.standardError.contains(QLatin1String("repository contains errors"))) {
        return Texts::tr("Il backup contiene dati danneggiati");
    }
    return Restic::describe(result).message;
}

} // namespace

void BackupEngine::verifyIfDue(DestinationID destination, const QString &password)
{
    EngineState state = StatusStore::loadState();
    const QDateTime now = Clock::now();
    if (!EngineState::isDue(state.lastCheck, rawValue(destination), now, checkInterval)) {
        return;
    }
    const auto start = Clock::steady();
    RunRecord record = RunRecord::starting(destination);
    record.kind = QStringLiteral("check");
    // The check tells no progress, so this stands until its end.
    BackupProgress progress(destination, record.date, m_statusThrottle);
    progress.enterWhole(Texts::tr("Verifica dell'integrità"));

    const Restic restic{destination, m_config, password, std::nullopt};
    const RepositoryVolume volume(restic);
    const ProcessResult result =
        restic.run(checkArguments(destination, record.date), m_handle.get());
    if (m_handle->isCancelled()) {
        return;
    }
    const bool isSound = result.status == 0 && volume.isStillThere();
    record.outcome = isSound ? Outcome::Ok : Outcome::Failed;
    record.message = isSound ? Texts::tr("Nessun errore trovato") : failureMessage(result, volume);
    record.duration = std::chrono::duration<double>(Clock::steady() - start).count();
    StatusStore::append(record);
    if (isSound) {
        state.lastCheck.insert(rawValue(destination), now);
        StatusStore::save(state);
    } else {
        m_notify(Texts::tr("Verifica del backup non riuscita"),
                 title(destination) + QLatin1String(": ") + record.message);
    }
}
