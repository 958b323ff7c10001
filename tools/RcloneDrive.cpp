#include "state/JSONFile.h"
#include "state/Texts.h"
#include "tools/JSONValues.h"
#include "tools/Rclone.h"
#include "tools/Tools.h"

namespace {

/// Ends the rclone of an interrupted sign-in, which may still hold the local port.
void endStaleSignIn()
{
    runProcess(QStringLiteral("/usr/bin/pkill"),
               {QStringLiteral("-f"), QStringLiteral("rclone config create vellomar drive")});
}

/// Why the sign-in failed, in the user's words.
QString failure(const QString &standardError)
{
    if (standardError.contains(QLatin1String("address already in use"))) {
        return Texts::tr("Un'altra autorizzazione è già in corso. Chiudi la pagina di accesso nel "
                         "browser e riprova.");
    }
    const QString sentence = Rclone::lastError(standardError).value_or(QString()).trimmed();
    // After a refusal in the browser rclone's last line is an empty "Help:".
    return sentence.isEmpty() || sentence == QLatin1String("Help:")
               ? Texts::tr("Autorizzazione non completata")
               : sentence;
}

} // namespace

std::optional<QString> Rclone::connect(const QString &clientID, const QString &clientSecret,
                                       ProcessHandle &handle)
{
    if (!Tools::find(QStringLiteral("rclone"))) {
        return Texts::tr("rclone non trovato");
    }
    endStaleSignIn();
    disconnect();
    if (!encrypted()) {
        return Texts::tr("Configurazione non riuscita"); // the token would not be encrypted
    }
    // With this scope the program sees only the files that it has made itself.
    QStringList arguments = {QStringLiteral("config"), QStringLiteral("create"), driveRemote,
                             QStringLiteral("drive"), QStringLiteral("scope=drive.file")};
    if (!clientID.isEmpty()) {
        arguments << QLatin1String("client_id=") + clientID
                  << QLatin1String("client_secret=") + clientSecret;
    }
    const ProcessResult result = run(arguments, &handle).value_or(ProcessResult());
    if (result.status == 0 && encrypted() && isConfigured()) {
        return std::nullopt;
    }
    disconnect();
    return handle.isCancelled() ? Texts::tr("Collegamento annullato")
                                : failure(result.standardError);
}

void Rclone::disconnect()
{
    run({QStringLiteral("config"), QStringLiteral("delete"), driveRemote});
}

std::optional<Rclone::Quota> Rclone::quota(const QString &remote)
{
    const auto result = query({QStringLiteral("about"), remote + u':', QStringLiteral("--json")});
    if (!result || result->status != 0) {
        return std::nullopt;
    }
    const auto document = JSONFile::decode(result->standardOutput.toUtf8());
    if (!document || !document->isObject() ||
        !document->object().contains(QLatin1String("total"))) {
        return std::nullopt;
    }
    const QJsonObject about = document->object();
    return Quota{int64(about, QLatin1String("used")), int64(about, QLatin1String("total"))};
}

QStringList Rclone::folders(const QString &path, const QString &remote)
{
    const auto result =
        query({QStringLiteral("lsf"), remote + u':' + path, QStringLiteral("--dirs-only")});
    if (!result || result->status != 0) {
        return {};
    }
    QStringList names = result->standardOutput.split(u'\n', Qt::SkipEmptyParts);
    for (QString &name : names) {
        while (name.startsWith(u'/')) {
            name.remove(0, 1);
        }
        while (name.endsWith(u'/')) {
            name.chop(1);
        }
    }
    return names;
}
