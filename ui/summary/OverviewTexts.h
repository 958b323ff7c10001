#pragma once

#include "ui/summary/Situation.h"

/// The sentences of the overview, from the present situation.
namespace OverviewTexts {
Q_NAMESPACE

/// What the large button does.
enum class Action {
    Choose,   ///< goes to the destinations, there being none
    Start,    ///< starts a backup
    Starting, ///< nothing: a backup is on its way, or the program itself
    Stop,     ///< stops the backup
};
Q_ENUM_NS(Action)

QString title(const Situation &situation);
QString detail(const Situation &situation);

/// The file that is being stored, the home folder as "~"; a blank when there is none, so that the
/// line always stands.
QString currentFile(const Situation &situation);

/// What went wrong and nothing else reports; empty when nothing did.
QString notice(const Situation &situation);

Action action(const Situation &situation);
QString label(Action action);

} // namespace OverviewTexts
