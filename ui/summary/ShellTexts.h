#pragma once

#include "ui/summary/Situation.h"

/// What stands around the pages: the line at the foot of the sidebar, and the tray's panel.
namespace ShellTexts {

QString sidebarState(const Situation &situation);
Tone sidebarTone(const Situation &situation);

QString panelEyebrow(const Situation &situation);
QString panelHeadline(const Situation &situation);
QString panelDetail(const Situation &situation);

/// The destinations that the panel has a row for: those in use, or disk and Drive when none is.
QList<DestinationID> panelDestinations(const Situation &situation);

} // namespace ShellTexts
