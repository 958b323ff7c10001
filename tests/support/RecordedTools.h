#pragma once

#include "platform/PeriodicJob.h"

#include <QFile>
#include <QStringList>

#include <utility>

/// launchctl as far as one agent is concerned: what it was called with, and whether the agent is
/// loaded.
class RecordedLaunchctl
{
public:
    bool isLoaded = false;
    QList<QStringList> calls; ///< path and arguments

    PeriodicJob::RunTool runTool()
    {
        return [this](const QString &path, const QStringList &arguments) {
            calls.append(QStringList{path} + arguments);
            return answer(arguments);
        };
    }

private:
    // The codes are those of the real one.
    PeriodicJob::Answer answer(const QStringList &arguments)
    {
        const QString &command = arguments.value(0);
        if (command == QLatin1String("print")) {
            return {isLoaded ? 0 : 113, {}};
        }
        if (command == QLatin1String("bootout")) {
            return {std::exchange(isLoaded, false) ? 0 : 3, {}};
        }
        if (command == QLatin1String("bootstrap") && !isLoaded &&
            QFile::exists(arguments.value(2))) {
            isLoaded = true;
            return {0, {}};
        }
        return {5, {}};
    }
};

/// systemctl as far as one timer is concerned.
class RecordedSystemctl
{
public:
    bool isActive = false;
    bool isEnabled = false;
    bool isInstalled = true; ///< whether there is such a program
    QList<QStringList> calls;

    PeriodicJob::RunTool runTool()
    {
        return [this](const QString &path, const QStringList &arguments) -> PeriodicJob::Answer {
            calls.append(QStringList{path} + arguments);
            if (!isInstalled) {
                return {-1, {}};
            }
            return answer(arguments);
        };
    }

private:
    PeriodicJob::Answer answer(const QStringList &arguments)
    {
        const QString &command = arguments.value(1);
        if (command == QLatin1String("show")) {
            return {0, QStringLiteral("ActiveState=%1\nUnitFileState=%2\n")
                           .arg(isActive ? QLatin1String("active") : QLatin1String("inactive"),
                                isEnabled ? QLatin1String("enabled") : QLatin1String("disabled"))};
        }
        if (command == QLatin1String("enable") || command == QLatin1String("disable")) {
            isActive = isEnabled = command == QLatin1String("enable");
        } else if (command == QLatin1String("stop")) {
            isActive = false;
        }
        return {0, {}};
    }
};
