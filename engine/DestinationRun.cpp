#include "engine/BackupEngine.h"

#include "engine/ExcludeFile.h"
#include "engine/RepositoryVolume.h"
#include "engine/Retention.h"
#include "engine/Sources.h"
#include "platform/Clock.h"
#include "state/Texts.h"
#include "tools/ResticBackup.h"

namespace {

void end(RunRecord &record, Outcome outcome, const QString &message)
{
    record.outcome = outcome;
    record.message = message;
}

QString lostDisk()
{
    return Texts::tr("Il disco è stato scollegato durante il backup");
}

/// What the user reads of a backup that made a version.
QString goodMessage(int unreadable, bool isRetained)
{
    if (unreadable > 0 && !isRetained) {
        return Texts::tr("Completato, ma %1 elementi non erano leggibili e le versioni vecchie "
                         "restano: una di loro ha una data successiva a questo backup")
            .arg(unreadable);
    }
    if (unreadable > 0) {
        return Texts::tr("Completato, ma %1 elementi non erano leggibili").arg(unreadable);
    }
    return isRetained ? Texts::tr("Completato")
                      : Texts::tr("Completato, ma le versioni vecchie restano: una di loro ha una "
                                  "data successiva a questo backup");
}

} // namespace

RunRecord BackupEngine::runOne(DestinationID destination, const QString &password)
{
    const auto start = Clock::steady();
    RunRecord record = RunRecord::starting(destination);
    BackupProgress progress(destination, record.date, m_statusThrottle);
    progress.enter(Texts::tr("Connessione"));

    const Restic restic{destination, m_config, password, std::nullopt};
    backUp(restic, progress, record);
    if (m_handle->isCancelled() && !isGood(record.outcome)) {
        // What a step of a stopped run comes to comes of the stop.
        end(record, Outcome::Cancelled, Texts::tr("Interrotto"));
    }
    record.duration = std::chrono::duration<double>(Clock::steady() - start).count();
    return record;
}

void BackupEngine::backUp(const Restic &restic, BackupProgress &progress, RunRecord &record)
{
    if (!restic.isAvailable()) {
        end(record, Outcome::Skipped, restic.unavailableMessage());
        return;
    }
    const RepositoryVolume volume(restic);
    if (const auto prepared = restic.prepare(); !prepared) {
        end(record, Outcome::Failed, prepared.error().message);
        return;
    }
    const QStringList sources = Sources::existing(m_config);
    if (sources.isEmpty()) {
        end(record, Outcome::Failed, Texts::tr("Nessuna cartella da salvare"));
        return;
    }
    ExcludeFile::write(m_config);

    progress.enter(Texts::tr("Scansione dei file"));
    ResticBackup backup(
        [&progress](const ResticBackup::Status &status) { progress.report(status); });
    const auto made = backup.run(restic, sources, ExcludeFile::path(), m_handle.get());
    if (m_handle->isCancelled()) {
        end(record, Outcome::Cancelled, Texts::tr("Interrotto"));
        return;
    }
    if (!volume.isStillThere()) {
        end(record, Outcome::Failed, lostDisk());
        return;
    }
    if (!made) {
        end(record, Outcome::Failed, made.error().message);
        return;
    }
    record.filesNew = made->filesNew;
    record.filesChanged = made->filesChanged;
    record.dataAdded = made->dataAdded;
    progress.enterWhole(Texts::tr("Pulizia delle versioni vecchie"));
    const bool isRetained = Retention(restic, *m_handle).apply({made->version, record.date});
    if (!volume.isStillThere()) {
        end(record, Outcome::Failed, lostDisk());
        return;
    }
    end(record, made->unreadable == 0 && isRetained ? Outcome::Ok : Outcome::Warning,
        goodMessage(made->unreadable, isRetained));
}
