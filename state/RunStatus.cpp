#include "state/RunStatus.h"

#include "platform/ExecutablePath.h"
#include "state/JSONFile.h"
#include "state/JSONReader.h"

#include <QFileInfo>

#include <csignal>

#include <unistd.h>

RunStatus RunStatus::starting(DestinationID destination, const QDateTime &startedAt)
{
    RunStatus status;
    status.pid = ::getpid();
    status.startedAt = startedAt;
    status.destination = destination;
    return status;
}

bool RunStatus::isAlive() const
{
    // Ids from 0 down name groups of processes, not one.
    if (pid <= 0 || pid == ::getpid() || ::kill(pid, 0) != 0) {
        return false;
    }
    const std::optional<QString> theirs = executablePath(pid);
    const std::optional<QString> ours = ownExecutablePath();
    // A status that a power cut has left may name a window, or a secret's delivery.
    return theirs && ours && QFileInfo(*theirs).fileName() == QFileInfo(*ours).fileName() &&
           wasStartedWith(pid, "--backup");
}

QJsonObject RunStatus::toJSON() const
{
    QJsonObject object{
        {QStringLiteral("pid"), pid},
        {QStringLiteral("startedAt"), JSONFile::dateText(startedAt)},
        {QStringLiteral("destination"), rawValue(destination)},
        {QStringLiteral("phase"), phase},
        {QStringLiteral("percent"), percent},
        {QStringLiteral("filesDone"), filesDone},
        {QStringLiteral("totalFiles"), totalFiles},
        {QStringLiteral("bytesDone"), bytesDone},
        {QStringLiteral("totalBytes"), totalBytes},
    };
    if (secondsRemaining) {
        object.insert(QStringLiteral("secondsRemaining"), *secondsRemaining);
    }
    if (currentFile) {
        object.insert(QStringLiteral("currentFile"), *currentFile);
    }
    return object;
}

std::optional<RunStatus> RunStatus::fromJSON(const QJsonObject &object)
{
    JSONReader reader(object);
    RunStatus status;
    status.pid = reader.integer<std::int32_t>("pid");
    status.startedAt = reader.date("startedAt");
    status.destination = reader.named("destination", destinationID);
    status.phase = reader.text("phase");
    status.percent = reader.real("percent");
    status.filesDone = reader.integer("filesDone");
    status.totalFiles = reader.integer("totalFiles");
    status.bytesDone = reader.integer("bytesDone");
    status.totalBytes = reader.integer("totalBytes");
    status.secondsRemaining = reader.optionalInteger("secondsRemaining");
    status.currentFile = reader.optionalText("currentFile");
    if (!reader.isGood()) {
        return std::nullopt;
    }
    return status;
}
