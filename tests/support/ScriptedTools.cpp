#include "tests/support/ScriptedTools.h"

#include "tests/support/RcloneEnvelope.h"

#include <QFileInfo>

QString ScriptedTools::Call::command() const
{
    // For a remote destination restic gets "-o rclone.program=…" in front.
    const qsizetype options = arguments.value(0) == QLatin1String("-o") ? 2 : 0;
    const QString first = arguments.value(options);
    const bool hasTwoWords = first == QLatin1String("cat") || first == QLatin1String("config");
    if (hasTwoWords) {
        return first + u' ' + arguments.value(options + 1);
    }
    return arguments.contains(QLatin1String("--dry-run")) ? first + QLatin1String(" --dry-run")
                                                          : first;
}

QString ScriptedTools::Call::repository() const
{
    return env.value(QStringLiteral("RESTIC_REPOSITORY"));
}

ScriptedTools::ScriptedTools()
    : m_runner(
          [this](const QString &path, const QStringList &arguments, const ProcessOptions &options) {
              const Call call{.tool = QFileInfo(path).fileName(),
                              .arguments = arguments,
                              .env = options.env,
                              .input = options.input,
                              .handle = options.handle,
                              .stop = options.stop,
                              .isFollowed = static_cast<bool>(options.onLine)};
              calls.append(call);
              if (before) {
                  before(call);
              }
              return answer(call, options.onLine);
          })
{
}

QStringList ScriptedTools::commands() const
{
    QStringList result;
    for (const Call &call : calls) {
        result.append(call.command());
    }
    return result;
}

QList<ScriptedTools::Call> ScriptedTools::callsOf(const QString &command) const
{
    QList<Call> result;
    for (const Call &call : calls) {
        if (call.command() == command) {
            result.append(call);
        }
    }
    return result;
}

void ScriptedTools::connectRemotes()
{
    dump.standardOutput = QStringLiteral(
        R"({"vellomar": {"type": "drive", "token": "t"}, "vellomar-server": {"type": "sftp"}})");
}

ProcessResult ScriptedTools::ended(int status, const QString &standardError)
{
    return {.status = status, .standardOutput = {}, .standardError = standardError};
}

ProcessResult ScriptedTools::answer(const Call &call, const LineReceiver &onLine) const
{
    const QString command = call.command();
    if (command == QLatin1String("cat config")) {
        return catConfig;
    }
    if (command == QLatin1String("init")) {
        return init;
    }
    if (command == QLatin1String("unlock")) {
        return unlock;
    }
    if (command == QLatin1String("forget")) {
        return forget;
    }
    if (command == QLatin1String("forget --dry-run")) {
        return forgetForecast;
    }
    if (command == QLatin1String("check")) {
        return check;
    }
    if (command == QLatin1String("config dump")) {
        return dump;
    }
    if (command == QLatin1String("config encryption")) {
        return encryptAsRcloneDoes(call.env);
    }
    if (command == QLatin1String("backup")) {
        for (const QString &line : progress) {
            onLine(line);
        }
        return backup;
    }
    return ended(99, QStringLiteral("no answer for ") + command);
}
