#pragma once

#include "ui/summary/Situation.h"

/// The sentences of the overview for a situation.
namespace OverviewTexts {
Q_NAMESPACE

/// What the large button does.
enum class Action {
    Choose,   ///< opens the page of the destinations, as none is in use
    Start,    ///< starts a backup
    Starting, ///< nothing, while a backup or the program itself is starting
    Stop,     ///< stops the backup
};
Q_ENUM_NS(Action)

QString title(const Situation &situation);
QString detail(const Situation &situation);

/// The file that is being stored, the home folder as "~"; a blank when there is none, so that the
/// line keeps its height.
QString currentFile(const Situation &situation);

/// A failure that is reported nowhere else; empty when there is none.
QString notice(const Situation &situation);

Action action(const Situation &situation);
QString label(Action action);

} // namespace OverviewTexts
