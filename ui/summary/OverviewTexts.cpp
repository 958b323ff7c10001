#include "ui/summary/OverviewTexts.h"

#include "state/Fmt.h"
#include "state/Texts.h"

namespace {

// The placeholders have numbers, so that a translation may change their order.
QString progress(const RunStatus &status)
{
    if (status.totalFiles < 1) {
        return status.phase;
    }
    QStringList parts = {
        Texts::tr("%1 di %2 file", nullptr, Texts::count(status.totalFiles))
            .arg(Fmt::number(status.filesDone), Fmt::number(status.totalFiles)),
        Texts::tr("%1 di %2")
            .arg(Fmt::byteCount(status.bytesDone), Fmt::byteCount(status.totalBytes))};
    if (status.secondsRemaining.value_or(0) >= 1) {
        parts.append(Texts::tr("circa %1")
                         .arg(Fmt::duration(static_cast<double>(*status.secondsRemaining))));
    }
    return parts.join(QStringLiteral(" · "));
}

} // namespace

QString OverviewTexts::title(const Situation &situation)
{
    if (situation.status) {
        return Texts::tr("Backup su %1").arg(title(situation.status->destination));
    }
    if (situation.starting) {
        return Texts::tr("In attesa del Portachiavi");
    }
    if (!situation.config.hasDestination()) {
        return Texts::tr("Nessuna destinazione configurata");
    }
    if (situation.staleText) {
        return Texts::tr("Nessun backup da %1").arg(*situation.staleText);
    }
    return situation.lastSuccess ? Texts::tr("Backup aggiornato")
                                 : Texts::tr("Nessun backup eseguito");
}

QString OverviewTexts::detail(const Situation &situation)
{
    if (situation.status) {
        return progress(*situation.status);
    }
    if (situation.starting) {
        return Texts::tr("Se il sistema chiede di sbloccarlo, inserisci la password.");
    }
    if (!situation.config.hasDestination()) {
        return Texts::tr("Collega un disco esterno, Google Drive o un server privato.");
    }
    if (!situation.config.keySaved) {
        return Texts::tr("I backup automatici partono dopo aver salvato il kit di recupero.");
    }
    if (!situation.config.autoBackup) {
        return Texts::tr("Backup automatico disattivato.");
    }
    return Texts::tr("Prossimo backup automatico entro %n ore.", nullptr,
                     Texts::count(situation.config.intervalHours));
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
    if (!situation.config.hasDestination()) {
        return Action::Choose;
    }
    if (situation.status) {
        return Action::Stop;
    }
    return situation.launching || situation.starting ? Action::Starting : Action::Start;
}

QString OverviewTexts::label(Action action)
{
    switch (action) {
    case Action::Choose:
        return Texts::tr("Scegli una destinazione");
    case Action::Start:
        return Texts::tr("Esegui backup ora");
    case Action::Starting:
        return Texts::tr("Avvio in corso...");
    case Action::Stop:
        return Texts::tr("Interrompi");
    }
    return {};
}
