#include "ui/summary/ShellTexts.h"

#include "state/Fmt.h"
#include "state/Texts.h"
#include "ui/summary/DialContent.h"

QString ShellTexts::sidebarState(const Situation &situation)
{
    if (situation.isBusy()) {
        return Texts::tr("Backup in corso");
    }
    if (situation.starting) {
        return Texts::tr("In attesa del Portachiavi");
    }
    if (!situation.config.hasDestination()) {
        return Texts::tr("Da configurare");
    }
    if (situation.staleText) {
        return Texts::tr("Fermo da %1").arg(*situation.staleText);
    }
    return situation.lastSuccess ? Texts::tr("Backup aggiornato") : Texts::tr("Nessun backup");
}

Tone ShellTexts::sidebarTone(const Situation &situation)
{
    if (situation.isBusy() || situation.starting) {
        return Tone::Attention;
    }
    const bool isWell =
        !situation.staleText && situation.config.hasDestination() && situation.lastSuccess;
    return isWell ? Tone::Well : Tone::Wrong;
}

QString ShellTexts::panelEyebrow(const Situation &situation)
{
    return situation.status ? Texts::tr("Backup in corso") : Texts::tr("Ultimo backup");
}

QString ShellTexts::panelHeadline(const Situation &situation)
{
    if (situation.status) {
        return Texts::tr("%1% su %2")
            .arg(QString::number(DialContent::wholePercent(situation.status->percent)),
                 title(situation.status->destination));
    }
    return situation.lastSuccess ? Fmt::relative(situation.lastSuccess->date)
                                 : Texts::tr("Nessuno");
}

QString ShellTexts::panelDetail(const Situation &situation)
{
    if (situation.status) {
        return situation.status->phase;
    }
    if (situation.starting) {
        return Texts::tr("In attesa del Portachiavi.");
    }
    if (!situation.config.hasDestination()) {
        return Texts::tr("Nessuna destinazione configurata.");
    }
    if (!situation.config.keySaved) {
        return Texts::tr("Salva il kit di recupero per avviare i backup.");
    }
    if (!situation.config.autoBackup) {
        return Texts::tr("Backup automatico disattivato.");
    }
    return Texts::tr("Backup automatico ogni %n ore.", nullptr,
                     Texts::count(situation.config.intervalHours));
}

QList<DestinationID> ShellTexts::panelDestinations(const Situation &situation)
{
    const QList<DestinationID> enabled = situation.config.enabledDestinations();
    // Without any destination in use, the server isn't listed.
    return enabled.isEmpty() ? QList{DestinationID::Local, DestinationID::Drive} : enabled;
}
