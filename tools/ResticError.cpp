#include "tools/ResticError.h"

#include "state/JSONFile.h"
#include "state/Texts.h"

#include <QJsonObject>
#include <QRegularExpression>

#include <utility>

namespace {

// Below some errors restic prints where they came from: the name of a function and, on a line of
// its own, the place in its source. These lines go.
void dropTrace(QStringList &lines)
{
    static const QRegularExpression place(QStringLiteral(R"(\A\t\S+:\d+\z)"));
    for (qsizetype i = lines.size() - 1; i > 0; --i) {
        if (place.match(lines.at(i)).hasMatch()) {
            lines.remove(i - 1, 2);
            --i;
        }
    }
}

/// Why restic crashed, from the many lines that it prints then; absent when it didn't crash.
std::optional<QString> crash(const QString &standardError)
{
    static const QRegularExpression reason(
        QStringLiteral(R"(^(?:(?:panic|fatal error): (.+)|(SIG[A-Z]+: .+))$)"),
        QRegularExpression::MultilineOption);
    static const QRegularExpression trace(QStringLiteral(R"(^(?:goroutine \d+ |runtime stack:))"),
                                          QRegularExpression::MultilineOption);
    const auto match = reason.match(standardError);
    if (!match.hasMatch() || !trace.match(standardError).hasMatch()) {
        return std::nullopt;
    }
    return match.captured(match.lastCapturedIndex());
}

/// Why the repository's config file can't be opened: restic's last line then only names the
/// repository. Absent when that isn't what failed.
std::optional<QString> openingFailure(const QString &standardError)
{
    static const QRegularExpression failure(
        QStringLiteral(R"(^Fatal: unable to open config file: (.*)$)"),
        QRegularExpression::MultilineOption);
    static const QRegularExpression refusal(
        QStringLiteral(R"(\Astat (.*)/config: permission denied\z)"));
    const auto match = failure.match(standardError);
    if (!match.hasMatch()) {
        return std::nullopt;
    }
    if (const auto refused = refusal.match(match.captured(1)); refused.hasMatch()) {
        return Texts::tr("Permesso negato: la cartella %1 non si può aprire")
            .arg(refused.captured(1));
    }
    return match.captured(0);
}

// restic's errors are plain lines, or objects with a message when it was called with --json.
QStringList messages(const QString &standardError)
{
    QStringList result;
    QStringList lines = standardError.split(u'\n', Qt::SkipEmptyParts);
    dropTrace(lines);
    for (const QString &line : std::as_const(lines)) {
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

ResticError ResticError::of(const ProcessResult &result)
{
    switch (result.status) {
    case ResticExit::wrongPassword:
        return {Texts::tr("Chiave di cifratura errata per questa destinazione")};
    case ResticExit::repositoryLocked:
        return {Texts::tr("Destinazione occupata da un'altra operazione")};
    case ResticExit::noRepository:
        return {Texts::tr("Nessun backup presente in questa destinazione")};
    default:
        break;
    }
    // rclone's SFTP client refusing a host key that has changed.
    if (result.standardError.contains(QLatin1String("knownhosts"))) {
        return {Texts::tr("Il server si presenta con una chiave diversa da quella registrata: "
                          "collegamento rifiutato")};
    }
    if (const auto reason = crash(result.standardError)) {
        return {Texts::tr("restic si è chiuso per un errore interno: %1").arg(*reason)};
    }
    if (const auto reason = openingFailure(result.standardError)) {
        return {*reason};
    }
    const QStringList said = messages(result.standardError);
    if (said.isEmpty()) {
        return {Texts::tr("Errore sconosciuto (codice %1)").arg(result.status)};
    }
    return {said.last()};
}
