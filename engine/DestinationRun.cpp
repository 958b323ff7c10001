#include "engine/DestinationRun.h"

#include "engine/ExcludeFile.h"
#include "engine/RepositoryVolume.h"
#include "engine/Retention.h"
#include "engine/Sources.h"
#include "platform/Clock.h"
#include "state/Texts.h"

namespace {

QString lostDisk()
{
    return Texts::tr("Il disco è stato scollegato durante il backup");
}

QString stopped()
{
    return Texts::tr("Interrotto");
}

/// What the user reads of a backup that made a version.
QString goodMessage(int unreadable, bool isRetained)
{
    if (unreadable > 0 && !isRetained) {
        return Texts::tr("Completato, ma %n elementi non erano leggibili e le versioni vecchie "
                         "restano: una di loro ha una data successiva a questo backup",
                         nullptr, unreadable);
    }
    if (unreadable > 0) {
        return Texts::tr("Completato, ma %n elementi non erano leggibili", nullptr, unreadable);
    }
    return isRetained ? Texts::tr("Completato")
                      : Texts::tr("Completato, ma le versioni vecchie restano: una di loro ha una "
                                  "data successiva a questo backup");
}

} // namespace

DestinationRun::DestinationRun(const Restic &restic, ProcessHandle &handle,
                               StatusThrottle &throttle)
    : m_restic(restic)
    , m_handle(handle)
    , m_record(RunRecord::starting(restic.dest))
    , m_progress(restic.dest, m_record.date, throttle)
{
}

RunRecord DestinationRun::run()
{
    const auto start = Clock::steady();
    m_progress.enter(Texts::tr("Connessione"));
    if (m_restic.isAvailable()) {
        backUp();
    } else {
        end(Outcome::Skipped, m_restic.unavailableMessage());
    }
    if (m_handle.isCancelled() && !isGood(m_record.outcome)) {
        // Whatever a step of a stopped run failed with, the stop is why.
        end(Outcome::Cancelled, stopped());
    }
    m_record.duration = std::chrono::duration<double>(Clock::steady() - start).count();
    return m_record;
}

void DestinationRun::backUp()
{
    const RepositoryVolume volume(m_restic);
    if (const auto prepared = m_restic.prepare(); !prepared) {
        return end(Outcome::Failed, prepared.error().message);
    }
    const QStringList sources = Sources::existing(m_restic.config);
    if (sources.isEmpty()) {
        return end(Outcome::Failed, Texts::tr("Nessuna cartella da salvare"));
    }
    ExcludeFile::write(m_restic.config);

    m_progress.enter(Texts::tr("Scansione dei file"));
    ResticBackup backup([this](const ResticBackup::Status &status) { m_progress.report(status); });
    const auto made = backup.run(m_restic, sources, ExcludeFile::path(), &m_handle);
    if (m_handle.isCancelled()) {
        return end(Outcome::Cancelled, stopped());
    }
    if (!volume.isStillThere()) {
        return end(Outcome::Failed, lostDisk());
    }
    if (!made) {
        return end(Outcome::Failed, made.error().message);
    }
    m_record.filesNew = made->filesNew;
    m_record.filesChanged = made->filesChanged;
    m_record.dataAdded = made->dataAdded;

    m_progress.enterWhole(Texts::tr("Pulizia delle versioni vecchie"));
    const bool isRetained = applyRetention(*made);
    if (!volume.isStillThere()) {
        return end(Outcome::Failed, lostDisk());
    }
    end(made->unreadable == 0 && isRetained ? Outcome::Ok : Outcome::Warning,
        goodMessage(made->unreadable, isRetained));
}

bool DestinationRun::applyRetention(const ResticBackup::Result &made) const
{
    return Retention(m_restic, m_handle).apply({made.version, m_record.date});
}

void DestinationRun::end(Outcome outcome, const QString &message)
{
    m_record.outcome = outcome;
    m_record.message = message;
}
