#include "engine/Scheduler.h"

#include "platform/ExecutablePath.h"
#include "state/Paths.h"
#include "tools/ProcessRunner.h"

#include <QStandardPaths>

#include <algorithm>
#include <limits>

#include <unistd.h>

namespace {

QString label()
{
    return QStringLiteral("it.vellomar.backup");
}

PeriodicJob::Answer runTool(const QString &path, const QStringList &arguments)
{
    const ProcessResult result = runProcess(path, arguments);
    return {result.status, result.standardOutput};
}

// At least one hour, and at most what fits a number of seconds.
qint64 intervalSeconds(qint64 hours)
{
    static constexpr qint64 most = std::numeric_limits<qint64>::max() / 3600;
    return qBound(qint64{1}, hours, most) * 3600;
}

[[maybe_unused]] QString usualFolder(const char *name)
{
    return Paths::home() + u'/' + QLatin1String(name);
}

// The folders of the user's files as this process has them. The job isn't started from a shell, so
// it wouldn't get what the user has set there.
QMap<QString, QString> environment()
{
    QMap<QString, QString> variables;
#ifndef Q_OS_MACOS
    const QString config = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
    const QString data = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    if (config != usualFolder(".config")) {
        variables.insert(QStringLiteral("XDG_CONFIG_HOME"), config);
    }
    if (data != usualFolder(".local/share")) {
        variables.insert(QStringLiteral("XDG_DATA_HOME"), data);
    }
#endif
    return variables;
}

bool isWanted(const AppConfig &config)
{
    return config.autoBackup && config.keySaved &&
           std::any_of(allDestinations.begin(), allDestinations.end(),
                       [&config](DestinationID id) { return config.isEnabled(id); });
}

} // namespace

void Scheduler::sync(const AppConfig &config)
{
#ifdef Q_OS_MACOS
    LaunchAgent job(Paths::home(), label(), ::getuid(), runTool);
#else
    QString settings = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
    if (settings != usualFolder(".config")) {
        settings = SystemdTimer::configHome(runTool).value_or(settings);
    }
    SystemdTimer job(settings,
                     QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation), label(),
                     runTool);
#endif
    sync(config, job, ownExecutablePath());
}

void Scheduler::sync(const AppConfig &config, PeriodicJob &job,
                     const std::optional<QString> &executable)
{
    if (!isWanted(config) || !executable) {
        job.remove();
        return;
    }
    job.establish({.executable = *executable,
                   .arguments = {QStringLiteral("--backup")},
                   .intervalSeconds = intervalSeconds(config.intervalHours),
                   .errorLog = Paths::supportFile(QStringLiteral("backup.log")),
                   .environment = environment()});
}
