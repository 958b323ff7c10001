#include "engine/BackupEngine.h"

#include "engine/CycleLock.h"
#include "engine/DestinationRun.h"
#include "engine/ExcludeFile.h"
#include "engine/ProblemAlerts.h"
#include "engine/Verification.h"
#include "platform/AtomicFile.h"
#include "state/ConfigStore.h"
#include "state/Keychain.h"
#include "state/Paths.h"
#include "state/StatusStore.h"
#include "state/Texts.h"

#include <cstdio>
#include <utility>

namespace {

constexpr int exitGood = 0;
constexpr int exitFailed = 1;

/// One record for the whole cycle, from a gate that ends it.
void recordGate(DestinationID destination, Outcome outcome, const QString &message)
{
    RunRecord record = RunRecord::starting(destination);
    record.outcome = outcome;
    record.message = message;
    StatusStore::append(record);
}

void complain(const QString &line)
{
    static_cast<void>(std::fprintf(stderr, "%s\n", qUtf8Printable(line)));
}

} // namespace

BackupEngine::BackupEngine(bool manual, AppConfig config, std::shared_ptr<ProcessHandle> handle,
                           std::function<bool()> onBattery, Notifier::Send notify)
    : m_manual(manual)
    , m_config(std::move(config))
    , m_handle(std::move(handle))
    , m_onBattery(std::move(onBattery))
    , m_notify(std::move(notify))
{
}

int BackupEngine::runAll()
{
    const auto lock = CycleLock::acquire();
    if (!lock) {
        // Where the lock file can't be written no record can, so this line is the only report.
        if (lock.error()) {
            complain(Texts::tr("Vellomar: impossibile scrivere nella cartella %1 (%2)")
                         .arg(Paths::support(), *lock.error()));
        }
        return exitGood;
    }
    // Only the holder of the lock writes these files: what lies beside them, a dead writer left.
    StatusStore::removeAbandoned();
    AtomicFile::removeAbandoned(ExcludeFile::path());

    const StoppableSteps steps(*m_handle);
    const int result = runGated();
    StatusStore::clear();
    return result;
}

int BackupEngine::runGated()
{
    const QList<DestinationID> destinations = m_config.enabledDestinations();
    if (destinations.empty()) {
        return exitGood;
    }
    // No scheduled run until the user has put the key in safety.
    if (!m_manual && !m_config.keySaved) {
        return exitGood;
    }
    if (!m_manual && m_config.skipOnBattery && m_onBattery()) {
        recordGate(destinations.front(), Outcome::Skipped,
                   Texts::tr("Rimandato: il Mac è alimentato a batteria"));
        return exitGood;
    }
    const auto password = Keychain::read(Keychain::repositoryKey);
    if (!password) {
        recordGate(destinations.front(), Outcome::Failed, password.error().message());
        return exitFailed;
    }
    if (!*password) {
        recordGate(destinations.front(), Outcome::Failed,
                   Texts::tr("Chiave di cifratura non trovata nel Portachiavi: apri Vellomar"));
        return exitFailed;
    }
    // The settings are read once more, after the key: the window takes the confirmation back before
    // it puts a new key in place.
    if (!m_manual && !ConfigStore::load().keySaved) {
        return exitGood;
    }
    return runDestinations(destinations, **password);
}

int BackupEngine::runDestinations(const QList<DestinationID> &destinations, const QString &password)
{
    int result = exitGood;
    QList<RunRecord> records;
    for (const DestinationID destination : destinations) {
        if (m_handle->isCancelled()) {
            continue;
        }
        const RunRecord record = runOne(destination, password);
        records.append(record);
        StatusStore::append(record);
        if (isGood(record.outcome)) {
            verifyIfDue(destination, password);
        }
        if (record.outcome == Outcome::Failed) {
            result = exitFailed;
        }
    }
    notifyProblems(records);
    return result;
}

RunRecord BackupEngine::runOne(DestinationID destination, const QString &password)
{
    const Restic restic{destination, m_config, password, std::nullopt};
    return DestinationRun(restic, *m_handle, m_statusThrottle).run();
}

void BackupEngine::verifyIfDue(DestinationID destination, const QString &password)
{
    const Restic restic{destination, m_config, password, std::nullopt};
    Verification(restic, *m_handle, m_notify).runIfDue();
}

void BackupEngine::notifyProblems(const QList<RunRecord> &records)
{
    if (!m_handle->isCancelled()) {
        ProblemAlerts(m_config.alertAfterHours, m_notify).report(records);
    }
}
