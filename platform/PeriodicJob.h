#pragma once

#include <QDateTime>
#include <QMap>
#include <QString>
#include <QStringList>

#include <functional>
#include <optional>

/// What the system is to start again and again, with low priority.
struct PeriodicJobPlan
{
    QString executable; ///< full path
    QStringList arguments;
    qint64 intervalSeconds = 0; ///< from the start of one run to the start of the next
    QString errorLog;           ///< full path of the file that standard error is added to
    /// Variables that the job gets besides those of the system's own environment.
    QMap<QString, QString> environment = {};

    bool operator==(const PeriodicJobPlan &) const = default;
};

/// The one periodic job of this program and this user, kept by the operating system: it runs
/// whether or not the program does. Nothing is reported; what didn't work is tried again at the
/// next call.
class PeriodicJob
{
public:
    /// How a tool of the system ended and what it wrote to its standard output.
    struct Answer
    {
        int status = -1;
        QString output;
    };
    /// Runs a tool of the system, by its full path, to its end.
    using RunTool = std::function<Answer(const QString &path, const QStringList &arguments)>;

    PeriodicJob() = default;
    virtual ~PeriodicJob() = default;
    PeriodicJob(const PeriodicJob &) = delete;
    PeriodicJob &operator=(const PeriodicJob &) = delete;
    PeriodicJob(PeriodicJob &&) = delete;
    PeriodicJob &operator=(PeriodicJob &&) = delete;

    /// Sees to it that the job is there and is as planned. A new or changed one runs for the first
    /// time one interval from now; one that is there already is left alone.
    virtual void establish(const PeriodicJobPlan &plan) = 0;

    /// Sees to it that there is no job.
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
    /// `configHome` is the folder of the user's settings, in which systemd/user holds the units;
    /// `dataHome` that of the user's data, in which systemd keeps the date of a timer's last run.
    SystemdTimer(const QString &configHome, const QString &dataHome, const QString &name,
                 RunTool runTool);

    void establish(const PeriodicJobPlan &plan) override;
    void remove() override;

    /// The folder of settings in which the systemd that runs looks for units, which knows nothing
    /// of the environment of this process; absent when it doesn't say.
    static std::optional<QString> configHome(const RunTool &runTool);

private:
    [[nodiscard]] bool isLoaded() const;
    [[nodiscard]] bool isAsPlanned(const PeriodicJobPlan &plan) const;
    void systemctl(const QStringList &arguments) const;
    void setLastRun(const QDateTime &moment) const;

    QString m_folder;
    QString m_timer;   ///< name of the timer's unit
    QString m_service; ///< name of the service's unit
    QString m_lastRun; ///< file whose date is that of the timer's last run
    RunTool m_runTool;
};
