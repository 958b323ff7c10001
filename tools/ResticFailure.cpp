#include "state/JSONFile.h"
#include "state/Localized.h"
#include "tools/Restic.h"

#include <QJsonObject>

namespace {

// restic's errors are plain lines, or objects with a message when it was called with --json.
QStringList messages(const QString &standardError)
{
    QStringList result;
    const QStringList lines = standardError.split(u'\n', Qt::SkipEmptyParts);
    for (const QString &line : lines) {
        const auto document = JSONFile::decode(line.toUtf8());
        if (!document || !document->isObject()) {
            result.append(line);
            continue;
        }
        const QJsonValue message = document->object().value(QLatin1String("message"));
        if (message.isString()) {
            result.append(message.toString());
        }
    }
    return result;
}

} // namespace

ResticError Restic::describe(const ProcessResult &result)
{
    switch (result.status) {
    case ResticExit::wrongPassword:
        return {localized("Chiave di cifratura errata per questa destinazione")};
    case ResticExit::repositoryLocked:
        return {localized("Destinazione occupata da un'altra operazione")};
    case ResticExit::noRepository:
        return {localized("Nessun backup presente in questa destinazione")};
    default:
        break;
    }
    // rclone's SFTP client refusing a host key that has changed.
    if (result.standardError.contains(QLatin1String("knownhosts"))) {
        return {localized("Il server si presenta con una chiave diversa da quella registrata: "
                          "collegamento rifiutato")};
    }
    const QStringList said = messages(result.standardError);
    if (said.isEmpty()) {
        return {localized("Errore sconosciuto (codice %1)").arg(result.status)};
    }
    return {said.last()};
}
