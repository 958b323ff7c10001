#include "state/Outcome.h"

#include "state/Texts.h"

QString Outcomes::label(Outcome outcome)
{
    switch (outcome) {
    case Outcome::Ok:
        return Texts::tr("Completato");
    case Outcome::Warning:
        return Texts::tr("Con avvisi");
    case Outcome::Failed:
        return Texts::tr("Non riuscito");
    case Outcome::Skipped:
        return Texts::tr("Saltato");
    case Outcome::Cancelled:
        return Texts::tr("Interrotto");
    }
    Q_UNREACHABLE();
}

bool Outcomes::isGood(Outcome outcome)
{
    return outcome == Outcome::Ok || outcome == Outcome::Warning;
}
