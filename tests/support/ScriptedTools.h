#pragma once

#include "tools/ProcessRunner.h"

#include <QList>
#include <QMap>
#include <QString>
#include <QStringList>

#include <condition_variable>
#include <functional>
#include <mutex>

/// Takes the place of every child process for its own life: restic, rclone and the system's tools
/// answer as a test wants, from any thread. Every call is noted; calls can be held up.
class ScriptedTools
{
public:
    struct Call
    {
        QString path;
        QStringList arguments; ///< all of them
        ChildProcess::Environment env;
        std::optional<QString> input; ///< restic's key
        ProcessHandle *handle = nullptr;
        StopManner stop = StopManner::atOnce;
        bool isFollowed = false; ///< whether its lines go to a receiver

        [[nodiscard]] QString tool() const; ///< "restic", "rclone", "systemctl" …
        /// The tool's own words, behind the options that stand before its command.
        [[nodiscard]] QStringList words() const;
        /// restic's or rclone's own command; with " --dry-run" where it only reports what it would
        /// do.
        [[nodiscard]] QString command() const;
        [[nodiscard]] QString repository() const; ///< restic's
    };

    ScriptedTools();
    ~ScriptedTools();
    ScriptedTools(const ScriptedTools &) = delete;
    ScriptedTools &operator=(const ScriptedTools &) = delete;
    ScriptedTools(ScriptedTools &&) = delete;
    ScriptedTools &operator=(ScriptedTools &&) = delete;

    ProcessResult catConfig = ended(0); ///< a repository is there and takes the key
    ProcessResult init = ended(0);
    ProcessResult unlock = ended(0);
    ProcessResult backup = ended(0);
    ProcessResult forget = ended(0);
    /// What retention would do, as restic reports it: nothing.
    ProcessResult forgetForecast = ended(0, QStringLiteral("[]"));
    ProcessResult check = ended(0);
    ProcessResult dump = ended(0, QStringLiteral("{}")); ///< rclone's remotes
    /// What `restic backup` prints.
    QStringList progress = {
        QStringLiteral(R"({"message_type":"summary","snapshot_id":"the new one"})")};

    /// The answer of calls whose words, joined by spaces, begin with `beginning`; the longest match
    /// counts. By default there are no snapshots, the size is 1000, and rclone and the system's
    /// tools succeed without output.
    void answer(const QString &beginning, const ProcessResult &result);
    /// The same for one repository only.
    void answer(const QString &beginning, const QString &repository, const ProcessResult &result);

    /// Called before each answer is given, when the call has been noted.
    std::function<void(const Call &)> before;

    /// To be read while nothing runs in the background.
    QList<Call> calls;

    /// The commands in the order of their calls.
    [[nodiscard]] QStringList commands() const;
    [[nodiscard]] QList<Call> callsOf(const QString &command) const;
    /// How often a tool was called with words that begin so.
    [[nodiscard]] qsizetype count(const QString &tool, const QString &beginning = {});
    /// The repositories of such calls of restic, in their order.
    [[nodiscard]] QStringList repositories(const QString &beginning);

    /// Makes rclone report both remotes, connected.
    void connectRemotes();
    /// Makes rclone report these remotes; a JSON object.
    void setRemotes(const QString &object);

    /// Makes restic wait in each call from now on.
    void hold();
    /// Makes rclone wait likewise, but for what concerns its configuration.
    void holdRclone();
    /// Makes rclone wait also where it is asked for the connections.
    void holdConnections();
    /// Makes the system's tools for the schedule wait.
    void holdSchedule();
    /// Releases all calls that wait.
    void letGo();
    /// How many calls of restic and rclone wait now.
    [[nodiscard]] int held();

    /// A result with this status; the text went to standard output, or to standard error when the
    /// status isn't 0.
    static ProcessResult ended(int status, const QString &text = {});
    /// One snapshot as restic lists it.
    static QString snapshot(const QString &id, const QString &host,
                            const QString &time = QStringLiteral("2026-03-01T08:00:00Z"));

private:
    enum Held { Restic = 1, Rclone = 2, Connections = 4, Schedule = 8 };

    void hold(Held which);
    ProcessResult run(const Call &call, const LineReceiver &onLine);
    /// Waits while calls of this kind are held.
    void waitFor(std::unique_lock<std::mutex> &lock, Held which, bool isCounted);
    [[nodiscard]] std::optional<ProcessResult> givenAnswer(const Call &call) const;
    [[nodiscard]] ProcessResult usualAnswer(const Call &call) const;

    std::mutex m_mutex;
    std::condition_variable m_released;
    QMap<std::pair<QString, QString>, ProcessResult> m_answers; ///< by beginning and repository
    int m_holding = 0;                                          ///< of Held
    int m_held = 0;
    ScopedProcessRunner m_runner; // last: it uses all of the above
};
