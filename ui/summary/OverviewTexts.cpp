#include "ui/summary/OverviewTexts.h"

#include "state/Fmt.h"
#include "state/Localized.h"

namespace {

// Counts and sizes come one after the other in a sentence whose order a translation may change.
QString progress(const RunStatus &status)
{
    if (status.totalFiles < 1) {
        return status.phase;
    }
    QStringList parts = {
        localized("%1 di %2 file")
            .arg(Fmt::number(status.filesDone), Fmt::number(status.totalFiles)),
        localized("%1 di %2")
            .arg(Fmt::byteCount(status.bytesDone), Fmt::byteCount(status.totalBytes))};
    if (status.secondsRemaining.value_or(0) >= 1) {
        parts.append(localized("circa %1")
                         .arg(Fmt::duration(static_cast<double>(*status.secondsRemaining))));
    }
    return parts.join(QStringLiteral(" · "));
}

} // namespace

QString OverviewTexts::title(const Situation &situation)
{
    if (situation.status) {
        return localized("Backup su %1").arg(title(situation.status->destination));
    }
    if (situation.starting) {
        return localized("In attesa del Portachiavi");
    }
    if (situation.enabled().isEmpty()) {
        return localized("Nessuna destinazione configurata");
    }
    if (situation.staleText) {
        return localized("Nessun backup da %1").arg(*situation.staleText);
    }
    return situation.lastSuccess ? localized("Backup aggiornato")
                                 : localized("Nessun backup eseguito");
}

QString OverviewTexts::detail(const Situation &situation)
{
    if (situation.status) {
        return progress(*situation.status);
    }
    if (situation.starting) {
        return localized("Se il sistema chiede di sbloccarlo, inserisci la password.");
    }
    if (situation.enabled().isEmpty()) {
        return localized("Collega un disco esterno, Google Drive o un server privato.");
    }
    if (!situation.config.keySaved) {
        return localized("I backup automatici partono dopo aver salvato il kit di recupero.");
    }
    if (!situation.config.autoBackup) {
        return localized("Backup automatico disattivato.");
    }
    if (situation.config.intervalHours == 1) {
        return localized("Prossimo backup automatico entro un'ora.");
    }
    return localized("Prossimo backup automatico entro %1 ore.")
        .arg(situation.config.intervalHours);
}

QString OverviewTexts::currentFile(const Situation &situation)
{
    const QString path =
        situation.status ? situation.status->currentFile.value_or(QString()) : QString();
    return path.isEmpty() ? QStringLiteral(" ") : Paths::abbreviatedHome(path);
}

QString OverviewTexts::notice(const Situation &situation)
{
    // Without the folder nothing works, whatever the key.
    return situation.supportError ? *situation.supportError
                                  : situation.keyError.value_or(QString());
}

OverviewTexts::Action OverviewTexts::action(const Situation &situation)
{
    if (situation.enabled().isEmpty()) {
        return Action::choose;
    }
    if (situation.status) {
        return Action::stop;
    }
    return situation.launching || situation.starting ? Action::starting : Action::start;
}

QString OverviewTexts::label(Action action)
{
    switch (action) {
    case Action::choose:
        return localized("Scegli una destinazione");
    case Action::start:
        return localized("Esegui backup ora");
    case Action::starting:
        return localized("Avvio in corso...");
    case Action::stop:
        return localized("Interrompi");
    }
    return {};
}
