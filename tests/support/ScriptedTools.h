#pragma once

#include "tools/ProcessRunner.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <functional>

/// restic and rclone as a test wants them to answer, without any child process. Every call is
/// noted; an answer may be changed from call to call.
class ScriptedTools
{
public:
    struct Call
    {
        QString tool;          ///< "restic" or "rclone"
        QStringList arguments; ///< all of them
        ChildProcess::Environment env;
        std::optional<QString> input;
        ProcessHandle *handle = nullptr;
        StopManner stop = StopManner::atOnce;
        bool isFollowed = false; ///< whether its lines go to a receiver

        /// restic's or rclone's own command, behind the options that stand before it; with
        /// " --dry-run" where it only reports what it would do.
        [[nodiscard]] QString command() const;
        [[nodiscard]] QString repository() const;
    };

    ScriptedTools();

    ProcessResult catConfig = ended(0); ///< a repository is there
    ProcessResult init = ended(0);
    ProcessResult unlock = ended(0);
    ProcessResult backup = ended(0);
    ProcessResult forget = ended(0);
    /// What retention would do, as restic reports it: nothing.
    ProcessResult forgetForecast = {
        .status = 0, .standardOutput = QStringLiteral("[]"), .standardError = {}};
    ProcessResult check = ended(0);
    ProcessResult dump = ended(0); ///< rclone's remotes
    /// What `restic backup` prints.
    QStringList progress = {
        QStringLiteral(R"({"message_type":"summary","snapshot_id":"the new one"})")};

    /// Called before each answer is given, when the call has been noted.
    std::function<void(const Call &)> before;

    QList<Call> calls;

    /// The commands in the order of their calls.
    [[nodiscard]] QStringList commands() const;
    [[nodiscard]] QList<Call> callsOf(const QString &command) const;

    /// Lets rclone tell of both remotes, connected.
    void connectRemotes();

    static ProcessResult ended(int status, const QString &standardError = {});

private:
    ProcessResult answer(const Call &call, const LineReceiver &onLine) const;

    ScopedProcessRunner m_runner;
};
