#include "state/Outcome.h"

#include "state/Localized.h"

QString rawValue(Outcome outcome)
{
    switch (outcome) {
    case Outcome::ok:
        return QStringLiteral("ok");
    case Outcome::warning:
        return QStringLiteral("warning");
    case Outcome::failed:
        return QStringLiteral("failed");
    case Outcome::skipped:
        return QStringLiteral("skipped");
    case Outcome::cancelled:
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
    case Outcome::ok:
        return localized("Completato");
    case Outcome::warning:
        return localized("Con avvisi");
    case Outcome::failed:
        return localized("Non riuscito");
    case Outcome::skipped:
        return localized("Saltato");
    case Outcome::cancelled:
        return localized("Interrotto");
    }
    Q_UNREACHABLE();
}

bool isGood(Outcome outcome)
{
    return outcome == Outcome::ok || outcome == Outcome::warning;
}
