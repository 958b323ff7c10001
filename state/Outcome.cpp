#include "state/Outcome.h"

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

bool isGood(Outcome outcome)
{
    return outcome == Outcome::ok || outcome == Outcome::warning;
}
