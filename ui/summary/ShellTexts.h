#pragma once

#include "ui/summary/Situation.h"

/// The texts outside of the pages: the line at the foot of the sidebar, and the tray's panel.
namespace ShellTexts {

QString sidebarState(const Situation &situation);
Tone sidebarTone(const Situation &situation);

QString panelEyebrow(const Situation &situation);
QString panelHeadline(const Situation &situation);
QString panelDetail(const Situation &situation);

/// The destinations that the panel lists: those in use, or disk and Drive when none is.
QList<DestinationID> panelDestinations(const Situation &situation);

} // namespace ShellTexts
