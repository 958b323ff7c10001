#pragma once

#include "tools/ProcessRunner.h"

#include <QList>
#include <QMap>
#include <QString>
#include <QStringList>

#include <condition_variable>
#include <mutex>

/// restic, rclone and the system's tools as a test of the model wants them to answer, from any
/// thread and without any child process. Calls are noted; those of restic can be held up.
class ModelTools
{
public:
    struct Call
    {
        QString tool;       ///< "restic", "rclone", "systemctl" …
        QString command;    ///< its first word, "snapshots"; of rclone the first two
        QString repository; ///< restic's
        QString key;        ///< restic's
    };

    ModelTools();
    ~ModelTools();
    ModelTools(const ModelTools &) = delete;
    ModelTools &operator=(const ModelTools &) = delete;
    ModelTools(ModelTools &&) = delete;
    ModelTools &operator=(ModelTools &&) = delete;

    /// What a command of restic answers where nothing else is told: no snapshots, a size of 1000,
    /// a repository that takes the key.
    void answer(const QString &command, const ProcessResult &result);
    /// The same for one repository alone.
    void answer(const QString &command, const QString &repository, const ProcessResult &result);
    /// What rclone answers to these three words, joined by blanks, where it would say nothing.
    void answerOfRclone(const QString &words, const ProcessResult &result);
    /// Lets rclone tell of these remotes; a JSON object.
    void setRemotes(const QString &dump);
    /// Both remotes, connected.
    void connectRemotes();

    /// Makes restic wait in each call from now on.
    void hold();
    /// Makes rclone wait likewise, but for what concerns its configuration.
    void holdRclone();
    /// Makes rclone wait also where it is asked for the connections.
    void holdConnections();
    /// Makes the system's tools for the schedule wait.
    void holdSchedule();
    /// Lets every call go on.
    void letGo();
    /// How many calls wait now.
    int held();

    QList<Call> calls();
    /// How often a tool was called.
    qsizetype count(const QString &tool, const QString &command = {});
    /// The repositories of a command of restic's, in the order of the calls.
    QStringList repositories(const QString &command);

    static ProcessResult ended(int status, const QString &output = {}, const QString &error = {});
    /// One snapshot as restic lists it.
    static QString snapshot(const QString &id, const QString &host,
                            const QString &time = QStringLiteral("2026-03-01T08:00:00Z"));

private:
    ProcessResult run(const QString &path, const QStringList &arguments,
                      const ProcessOptions &options);

    std::mutex m_mutex;
    std::condition_variable m_released;
    QList<Call> m_calls;
    QMap<QString, ProcessResult> m_answers; ///< by command, or command and repository
    QString m_remotes = QStringLiteral("{}");
    QMap<QString, ProcessResult> m_rcloneAnswers;
    bool m_isHolding = false;
    bool m_isHoldingRclone = false;
    bool m_isHoldingConnections = false;
    bool m_isHoldingSchedule = false;
    int m_held = 0;
    ScopedProcessRunner m_runner; // last: it uses all of the above
};
