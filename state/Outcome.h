#pragma once

#include "state/RawValue.h"

#include <QObject>
#include <QString>

#include <array>

namespace Outcomes {
Q_NAMESPACE

/// How a run on one destination ended. Its raw values are "ok", "warning", "failed", "skipped" and
/// "cancelled".
enum class Outcome { Ok, Warning, Failed, Skipped, Cancelled };
Q_ENUM_NS(Outcome)

/// What the user reads for an outcome.
QString label(Outcome outcome);

/// Whether a run with this outcome has made a new version.
bool isGood(Outcome outcome);

} // namespace Outcomes

using Outcomes::Outcome;

inline constexpr std::array allOutcomes = {Outcome::Ok, Outcome::Warning, Outcome::Failed,
                                           Outcome::Skipped, Outcome::Cancelled};
