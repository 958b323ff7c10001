#include "engine/BackupProgress.h"

#include "platform/Clock.h"
#include "state/StatusStore.h"
#include "state/Texts.h"

#include <unistd.h>

BackupProgress::BackupProgress(DestinationID destination, const QDateTime &startedAt,
                               WriteTime &lastWrite)
    : m_lastWrite(lastWrite)
{
    m_status.pid = ::getpid();
    m_status.startedAt = startedAt;
    m_status.destination = destination;
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
    writeThrottled();
}

void BackupProgress::writeThrottled()
{
    static constexpr auto pause = std::chrono::milliseconds(700);
    const auto now = Clock::steady();
    if (!m_lastWrite || now - *m_lastWrite > pause) {
        m_lastWrite = now;
        StatusStore::write(m_status);
    }
}
