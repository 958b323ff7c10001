#include "engine/BackupProgress.h"

#include "state/StatusStore.h"
#include "state/Texts.h"

BackupProgress::BackupProgress(DestinationID destination, const QDateTime &startedAt,
                               StatusThrottle &throttle)
    : m_status(RunStatus::starting(destination, startedAt))
    , m_throttle(throttle)
{
}

void BackupProgress::enter(const QString &phase)
{
    m_status.phase = phase;
    StatusStore::write(m_status);
}

void BackupProgress::enterWhole(const QString &phase)
{
    m_status.percent = 1.0;
    m_status.currentFile.reset();
    enter(phase);
}

void BackupProgress::report(const ResticBackup::Status &backup)
{
    m_status.phase = Texts::tr("Copia dei file");
    m_status.percent = backup.fractionDone;
    m_status.filesDone = backup.filesDone;
    m_status.totalFiles = backup.totalFiles;
    m_status.bytesDone = backup.bytesDone;
    m_status.totalBytes = backup.totalBytes;
    m_status.secondsRemaining = backup.secondsRemaining;
    m_status.currentFile = backup.currentFile;
    if (m_throttle.takeTurn()) {
        StatusStore::write(m_status);
    }
}
