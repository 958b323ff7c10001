#pragma once

#include <QString>

#include <array>
#include <optional>

/// How a run on one destination ended.
enum class Outcome { Ok, Warning, Failed, Skipped, Cancelled };

inline constexpr std::array allOutcomes = {Outcome::Ok, Outcome::Warning, Outcome::Failed,
                                           Outcome::Skipped, Outcome::Cancelled};

/// The text that stands for an outcome in our files.
QString rawValue(Outcome outcome);

/// The outcome of a raw value; absent for any other text.
std::optional<Outcome> outcome(const QString &rawValue);

/// What the person reads for an outcome.
QString label(Outcome outcome);

/// Whether a run with this outcome left a new version behind.
bool isGood(Outcome outcome);
