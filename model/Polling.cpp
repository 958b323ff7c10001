#include "model/AppModel.h"

#include "platform/Clock.h"
#include "state/StatusStore.h"

#include <utility>

// How the window learns that a run began, went on and ended: there is no other channel between the
// processes. Both files are read at every look, and decoded only when their bytes have changed, so
// that a look at a long history costs next to nothing.

void AppModel::poll()
{
    const bool wasRunning = m_status.has_value();
    pollStatus();
    if (m_status) {
        // The launch is over: from here on the run itself is seen.
        setLaunching(false);
    }
    const bool hasNewRecord = pollHistory();
    // A run may have come and gone between two looks.
    if (!m_status && (wasRunning || hasNewRecord)) {
        refreshAll();
    }
    pollMinute();
}

void AppModel::pollStatus()
{
    QByteArray bytes = StatusStore::statusBytes();
    if (bytes != m_statusBytes) {
        m_foundStatus = StatusStore::decodedStatus(bytes);
        m_statusBytes = std::move(bytes);
    }
    // A file that a crashed engine left is no run.
    const bool isLive = m_foundStatus && m_foundStatus->isAlive();
    setStatus(isLive ? m_foundStatus : std::nullopt);
}

/// Whether the history has another newest record than before.
bool AppModel::pollHistory()
{
    QByteArray bytes = StatusStore::historyBytes();
    if (bytes == m_historyBytes) {
        return false;
    }
    const QList<RunRecord> found = StatusStore::decodedHistory(bytes);
    m_historyBytes = std::move(bytes);
    const auto head = [](const QList<RunRecord> &history) {
        return history.isEmpty() ? std::nullopt : std::optional(history.first().id);
    };
    if (head(found) == head(m_history)) {
        return false;
    }
    setHistory(found);
    return !found.isEmpty();
}

void AppModel::pollMinute()
{
    const qint64 minute = Clock::now().toSecsSinceEpoch() / 60;
    if (std::exchange(m_minute, minute) != minute) {
        lookAtLocalFolder();
        checkSupportFolder();
        Q_EMIT minutePassed();
        Q_EMIT summaryChanged();
    }
}

void AppModel::setStatus(const std::optional<RunStatus> &status)
{
    const bool wasBusy = isBusy();
    assign(m_status, status, &AppModel::statusChanged);
    if (isBusy() != wasBusy) {
        Q_EMIT busyChanged();
    }
}

void AppModel::setLaunching(bool launching)
{
    const bool wasBusy = isBusy();
    assign(m_launching, launching, &AppModel::launchingChanged);
    if (isBusy() != wasBusy) {
        Q_EMIT busyChanged();
    }
}

void AppModel::setHistory(const QList<RunRecord> &history)
{
    m_history = history;
    Q_EMIT historyChanged();
    Q_EMIT summaryChanged();
}
