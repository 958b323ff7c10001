#include "ui/summary/ProtectionChecks.h"

#include "state/Fmt.h"
#include "state/Texts.h"

#include <algorithm>

namespace {

using ProtectionChecks::Check;
using ProtectionChecks::Remedy;

Check key(const Situation &situation)
{
    const QString id = QStringLiteral("key");
    if (situation.config.keySaved) {
        return {id, true, Texts::tr("Chiave al sicuro"), Texts::tr("Kit di recupero salvato")};
    }
    return {id, false, Texts::tr("Kit di recupero da salvare"),
            Texts::tr("Senza la chiave i backup sono persi"), Remedy::recoveryKit};
}

QString place(DestinationID destination)
{
    switch (destination) {
    case DestinationID::Local:
        return Texts::tr("Disco");
    case DestinationID::Drive:
        return Texts::tr("Drive");
    case DestinationID::Server:
        return Texts::tr("Server");
    }
    return {};
}

Check copies(const Situation &situation)
{
    const QString id = QStringLiteral("copies");
    const QList<DestinationID> enabled = situation.config.enabledDestinations();
    if (enabled.isEmpty()) {
        return {id, false, Texts::tr("Nessuna destinazione"),
                Texts::tr("I file stanno solo su questo Mac"), Remedy::destinations};
    }
    // Checked before the count: a second copy doesn't make a copy on the Mac's own disk safe.
    if (situation.config.localEnabled && situation.localOnSystemDisk) {
        return {id, false, Texts::tr("Backup sul disco del Mac"),
                Texts::tr("Un guasto li porta via insieme ai file"), Remedy::destinations};
    }
    if (enabled.size() == 1) {
        return {id, false, Texts::tr("Una sola copia"),
                enabled.first() == DestinationID::Local
                    ? Texts::tr("Un furto porta via Mac e disco insieme")
                    : Texts::tr("Aggiungi un disco per ripristini rapidi"),
                Remedy::destinations};
    }
    QStringList places;
    std::transform(enabled.cbegin(), enabled.cend(), std::back_inserter(places), place);
    return {id, true, Texts::tr("Copie in %n luoghi", nullptr, Texts::count(enabled.size())),
            places.join(QStringLiteral(", "))};
}

Check versions(const Situation &situation)
{
    const QString id = QStringLiteral("versions");
    const qint64 days = situation.config.keepDays;
    if (days < 0) {
        return {id, false, Texts::tr("Solo l'ultimo backup"),
                Texts::tr("Un file rovinato non si recupera più"), Remedy::settings};
    }
    return {id, true, Texts::tr("Versioni precedenti"),
            days == 0 ? Texts::tr("Conservate senza scadenza")
                      : Texts::tr("Conservate per %1").arg(situation.config.retentionLabel())};
}

Check access(const Situation &situation)
{
    const QString id = QStringLiteral("access");
    if (situation.fullDiskAccess) {
        return {id, true, Texts::tr("Accesso completo al disco"),
                Texts::tr("Salvati anche Mail, Safari e Messaggi")};
    }
    return {id, false, Texts::tr("Accesso al disco limitato"),
            Texts::tr("Mail, Safari e Messaggi restano fuori"), Remedy::access};
}

Check integrity(const RunRecord &record)
{
    const QString id = QStringLiteral("integrity");
    if (record.outcome == Outcome::Ok) {
        return {id, true, Texts::tr("Backup integro"),
                Texts::tr("Verificato %1").arg(Fmt::relative(record.date))};
    }
    return {id, false, Texts::tr("Verifica non riuscita"),
            Texts::tr("%1: %2").arg(title(record.destination), record.message), Remedy::activity};
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
    return count == 0 ? Texts::tr("Tutto a posto")
                      : Texts::tr("%n da sistemare", nullptr, Texts::count(count));
}
