#pragma once

#include <QDateTime>
#include <QMap>
#include <QString>
#include <QStringList>

#include <functional>
#include <optional>

/// What the system starts at regular intervals, with low priority.
struct PeriodicJobPlan
{
    QString executable; ///< full path
    QStringList arguments;
    qint64 intervalSeconds = 0; ///< from the start of one run to the start of the next
    QString errorLog;           ///< full path of the file to which standard error is appended
    /// Environment variables that the job gets besides those of the system.
    QMap<QString, QString> environment = {};

    bool operator==(const PeriodicJobPlan &) const = default;
};

/// The one periodic job of this program and this user. The operating system keeps it, whether the
/// program runs or not. No failure is reported; the next call tries again.
class PeriodicJob
{
public:
    /// How a tool of the system ended, and its standard output.
    struct Answer
    {
        int status = -1;
        QString output;
    };
    /// Runs a tool of the system, given by its full path, and waits for its end.
    using RunTool = std::function<Answer(const QString &path, const QStringList &arguments)>;

    PeriodicJob() = default;
    virtual ~PeriodicJob() = default;
    PeriodicJob(const PeriodicJob &) = delete;
    PeriodicJob &operator=(const PeriodicJob &) = delete;
    PeriodicJob(PeriodicJob &&) = delete;
    PeriodicJob &operator=(PeriodicJob &&) = delete;

    /// Makes sure that the job exists as planned. A new or changed one runs for the first time one
    /// interval from now; one that is already as planned is left alone.
    virtual void establish(const PeriodicJobPlan &plan) = 0;

    /// Makes sure that there is no job.
    virtual void remove() = 0;
};

/// The job as an agent of launchd: a property list in ~/Library/LaunchAgents.
class LaunchAgent final : public PeriodicJob
{
public:
    LaunchAgent(const QString &home, const QString &label, unsigned int userID, RunTool runTool);

    void establish(const PeriodicJobPlan &plan) override;
    void remove() override;

    /// The property list for a plan.
    [[nodiscard]] QByteArray propertyList(const PeriodicJobPlan &plan) const;

private:
    [[nodiscard]] bool isLoaded() const;
    void launchctl(const QStringList &arguments) const;

    QString m_label;
    QString m_path;    ///< of the property list
    QString m_domain;  ///< launchd's name of the user's session
    QString m_service; ///< launchd's name of the agent
    RunTool m_runTool;
};

/// The job as a timer and a service of the user's systemd.
class SystemdTimer final : public PeriodicJob
{
public:
    /// `configHome` is the folder of the user's settings, which has the units in systemd/user;
    /// `dataHome` is that of the user's data, where systemd stores when a timer last ran.
    SystemdTimer(const QString &configHome, const QString &dataHome, const QString &name,
                 RunTool runTool);

    void establish(const PeriodicJobPlan &plan) override;
    void remove() override;

    /// The folder of settings where the running systemd looks for units: its environment may differ
    /// from that of this process. Absent when it doesn't say.
    static std::optional<QString> configHome(const RunTool &runTool);

private:
    [[nodiscard]] bool isLoaded() const;
    [[nodiscard]] bool isAsPlanned(const PeriodicJobPlan &plan) const;
    void systemctl(const QStringList &arguments) const;
    void setLastRun(const QDateTime &moment) const;

    QString m_folder;
    QString m_timer;   ///< name of the timer's unit
    QString m_service; ///< name of the service's unit
    QString m_lastRun; ///< file whose date says when the timer last ran
    RunTool m_runTool;
};
