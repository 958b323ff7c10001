#include "state/RunStatus.h"

#include "platform/ExecutablePath.h"
#include "state/FieldsJSON.h"

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
    // Ids of 0 and below mean process groups.
    if (pid <= 0 || pid == ::getpid() || ::kill(pid, 0) != 0) {
        return false;
    }
    const std::optional<QString> theirs = executablePath(pid);
    const std::optional<QString> ours = ownExecutablePath();
    // After a power cut the process id of an old status may be that of a window, or of this
    // program delivering a secret.
    return theirs && ours && QFileInfo(*theirs).fileName() == QFileInfo(*ours).fileName() &&
           wasStartedWith(pid, "--backup");
}

QJsonObject RunStatus::toJSON() const
{
    return FieldsJSON::encoded(*this);
}

std::optional<RunStatus> RunStatus::fromJSON(const QJsonObject &object)
{
    return FieldsJSON::decoded<RunStatus>(object);
}
