#pragma once

#include "model/Settings.h"
#include "model/World.h"
#include "state/RunRecord.h"
#include "state/RunStatus.h"

#include <QByteArray>
#include <QList>
#include <QObject>
#include <QString>

#include <functional>
#include <optional>

/// The run under way and the history. A run is a process of its own: all that is known of it is
/// read from the files that it writes, away from the window's thread.
class RunWatch final : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool running READ isRunning NOTIFY statusChanged FINAL)
    Q_PROPERTY(RunStatus status READ statusOrNone NOTIFY statusChanged FINAL)
    Q_PROPERTY(bool launching READ isLaunching NOTIFY launchingChanged FINAL)
    Q_PROPERTY(bool busy READ isBusy NOTIFY busyChanged FINAL)
    Q_PROPERTY(QList<RunRecord> history READ history NOTIFY historyChanged FINAL)
    Q_PROPERTY(bool hasLastSuccess READ hasLastSuccess NOTIFY historyChanged FINAL)
    Q_PROPERTY(RunRecord lastSuccess READ lastSuccessOrNone NOTIFY historyChanged FINAL)
    Q_PROPERTY(bool hasLastCheck READ hasLastCheck NOTIFY historyChanged FINAL)
    Q_PROPERTY(RunRecord lastCheck READ lastCheckOrNone NOTIFY historyChanged FINAL)
    Q_PROPERTY(QString staleText READ staleTextOrNone NOTIFY staleTextChanged FINAL)
    Q_PROPERTY(QString supportError READ supportErrorText NOTIFY supportErrorChanged FINAL)

public:
    /// Reads the history before it returns. `settings` outlives this.
    RunWatch(World world, Settings &settings, QObject *parent = nullptr);

    /// The run in progress; absent when nothing runs.
    [[nodiscard]] const std::optional<RunStatus> &status() const { return m_status; }
    /// Whether a run was started from here and hasn't been seen yet.
    [[nodiscard]] bool isLaunching() const { return m_launching; }
    /// Whether a run is under way or about to be.
    [[nodiscard]] bool isBusy() const { return m_status || m_launching; }
    /// Newest first.
    [[nodiscard]] const QList<RunRecord> &history() const { return m_history; }
    /// The newest backup that left a version behind.
    [[nodiscard]] std::optional<RunRecord> lastSuccess() const;
    /// The newest backup of a destination, however it ended.
    [[nodiscard]] std::optional<RunRecord> lastRecord(DestinationID destination) const;
    /// The newest verification.
    [[nodiscard]] std::optional<RunRecord> lastCheck() const;
    /// The age of the last good backup; absent while that isn't too old.
    [[nodiscard]] std::optional<QString> staleText() const;
    /// Why no backup can run: the support folder can't be written.
    [[nodiscard]] const std::optional<QString> &supportError() const { return m_supportError; }

    /// Reads the files of the engine, unless that is under way. `done` is called when the values
    /// above are those of the files.
    void look(const std::function<void()> &done = {});
    [[nodiscard]] bool isLooking() const { return m_isLooking; }

    /// A last check before a start: calls `start` if nothing prevents it.
    using Gate = std::function<void(const std::function<void()> &start)>;

    /// Starts a backup, unless one is under way: this program again, as a process that outlives
    /// this one. The settings are saved and the gate is passed before that. It counts as launching
    /// from now on, unless the support folder couldn't be written at the last check.
    void launch(const Gate &gate = {});
    /// Ends the launch under way.
    void giveUp() { setLaunching(false); }
    /// Asks the run under way to stop.
    void stop();
    /// Checks whether the support folder can be written. `done` is called when that is known.
    void checkSupportFolder(const std::function<void()> &done = {});

Q_SIGNALS:
    void statusChanged();
    void launchingChanged();
    void busyChanged();
    void historyChanged();
    void staleTextChanged();
    void supportErrorChanged();
    /// A launch failed, as the process couldn't be started.
    void launchFailed();
    /// A run has ended.
    void ended();
    /// A new minute has begun: texts with ages are to be made again.
    void minutePassed();

private:
    struct Look;

    void take(const Look &look);
    [[nodiscard]] bool takeHistory(const QList<RunRecord> &found);
    void lookAtTheClock();
    void setStatus(const std::optional<RunStatus> &status);
    void setLaunching(bool launching);
    void launchNow(const Gate &gate);
    void startEngine(quint64 launch);

    [[nodiscard]] bool isRunning() const { return m_status.has_value(); }
    [[nodiscard]] RunStatus statusOrNone() const { return m_status.value_or(RunStatus()); }
    [[nodiscard]] bool hasLastSuccess() const { return lastSuccess().has_value(); }
    [[nodiscard]] RunRecord lastSuccessOrNone() const
    {
        return lastSuccess().value_or(RunRecord());
    }
    [[nodiscard]] bool hasLastCheck() const { return lastCheck().has_value(); }
    [[nodiscard]] RunRecord lastCheckOrNone() const { return lastCheck().value_or(RunRecord()); }
    [[nodiscard]] QString staleTextOrNone() const { return staleText().value_or(QString()); }
    [[nodiscard]] QString supportErrorText() const { return m_supportError.value_or(QString()); }

    const World m_world;
    Settings &m_settings;
    std::optional<RunStatus> m_status;
    bool m_launching = false;
    quint64 m_launch = 0; ///< number of the last launch from here
    bool m_isLooking = false;
    QByteArray m_statusBytes;               ///< status.json when it was last read
    std::optional<RunStatus> m_foundStatus; ///< the status in those bytes
    QByteArray m_historyBytes;              ///< history.json when it was last read
    QList<RunRecord> m_history;
    qint64 m_minute = 0; ///< minutes since the epoch when the files were last read
    std::optional<QString> m_supportError;
};
