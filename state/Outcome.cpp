#include "state/Outcome.h"

#include "state/Texts.h"

QString rawValue(Outcome outcome)
{
    switch (outcome) {
    case Outcome::Ok:
        return QStringLiteral("ok");
    case Outcome::Warning:
        return QStringLiteral("warning");
    case Outcome::Failed:
        return QStringLiteral("failed");
    case Outcome::Skipped:
        return QStringLiteral("skipped");
    case Outcome::Cancelled:
        return QStringLiteral("cancelled");
    }
    Q_UNREACHABLE();
}

std::optional<Outcome> outcome(const QString &raw)
{
    for (const Outcome value : allOutcomes) {
        if (rawValue(value) == raw) {
            return value;
        }
    }
    return std::nullopt;
}

QString label(Outcome outcome)
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

bool isGood(Outcome outcome)
{
    return outcome == Outcome::Ok || outcome == Outcome::Warning;
}
