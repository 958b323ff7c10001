#include "ui/summary/ProtectionChecks.h"

#include "state/Fmt.h"
#include "state/Localized.h"

#include <algorithm>

namespace {

using ProtectionChecks::Check;
using ProtectionChecks::Remedy;

Check key(const Situation &situation)
{
    const QString id = QStringLiteral("key");
    if (situation.config.keySaved) {
        return {id, true, localized("Chiave al sicuro"), localized("Kit di recupero salvato")};
    }
    return {id, false, localized("Kit di recupero da salvare"),
            localized("Senza la chiave i backup sono persi"), Remedy::recoveryKit};
}

QString place(DestinationID destination)
{
    switch (destination) {
    case DestinationID::Local:
        return localized("Disco");
    case DestinationID::Drive:
        return localized("Drive");
    case DestinationID::Server:
        return localized("Server");
    }
    return {};
}

Check copies(const Situation &situation)
{
    const QString id = QStringLiteral("copies");
    const QList<DestinationID> enabled = situation.enabled();
    if (enabled.isEmpty()) {
        return {id, false, localized("Nessuna destinazione"),
                localized("I file stanno solo su questo Mac"), Remedy::destinations};
    }
    // Before the count: a second copy doesn't make up for the first one's place.
    if (situation.config.localEnabled && situation.localOnSystemDisk) {
        return {id, false, localized("Backup sul disco del Mac"),
                localized("Un guasto li porta via insieme ai file"), Remedy::destinations};
    }
    if (enabled.size() == 1) {
        return {id, false, localized("Una sola copia"),
                enabled.first() == DestinationID::Local
                    ? localized("Un furto porta via Mac e disco insieme")
                    : localized("Aggiungi un disco per ripristini rapidi"),
                Remedy::destinations};
    }
    QStringList places;
    std::transform(enabled.cbegin(), enabled.cend(), std::back_inserter(places), place);
    return {id, true, localized("Copie in %1 luoghi").arg(enabled.size()),
            places.join(QStringLiteral(", "))};
}

Check versions(const Situation &situation)
{
    const QString id = QStringLiteral("versions");
    const qint64 days = situation.config.keepDays;
    if (days < 0) {
        return {id, false, localized("Solo l'ultimo backup"),
                localized("Un file rovinato non si recupera più"), Remedy::settings};
    }
    return {id, true, localized("Versioni precedenti"),
            days == 0 ? localized("Conservate senza scadenza")
                      : localized("Conservate per %1").arg(situation.config.retentionLabel())};
}

Check access(const Situation &situation)
{
    const QString id = QStringLiteral("access");
    if (situation.fullDiskAccess) {
        return {id, true, localized("Accesso completo al disco"),
                localized("Salvati anche Mail, Safari e Messaggi")};
    }
    return {id, false, localized("Accesso al disco limitato"),
            localized("Mail, Safari e Messaggi restano fuori"), Remedy::access};
}

Check integrity(const RunRecord &record)
{
    const QString id = QStringLiteral("integrity");
    if (record.outcome == Outcome::Ok) {
        return {id, true, localized("Backup integro"),
                localized("Verificato %1").arg(Fmt::relative(record.date))};
    }
    return {id, false, localized("Verifica non riuscita"),
            localized("%1: %2").arg(title(record.destination), record.message), Remedy::activity};
}

} // namespace

QList<Check> ProtectionChecks::checks(const Situation &situation)
{
    QList<Check> list = {key(situation), copies(situation), versions(situation), access(situation)};
    if (situation.lastCheck) {
        list.append(integrity(*situation.lastCheck));
    }
    return list;
}

QString ProtectionChecks::badge(const QList<Check> &checks)
{
    const auto count =
        std::count_if(checks.cbegin(), checks.cend(), [](const Check &check) { return !check.ok; });
    return count == 0 ? localized("Tutto a posto") : localized("%1 da sistemare").arg(count);
}
