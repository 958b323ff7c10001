#pragma once

#include <QString>

/// Tells the person of a problem by a notification of the system, window or no window. Nothing is
/// reported back: where notifications aren't wanted or can't be shown, they are dropped.
namespace Notifier {

/// Posts a notification at once. Waits for the hand-over, at most three seconds.
void send(const QString &title, const QString &body);

/// Asks the system for the right to notify, where it has such a thing. Only from the window's
/// process.
void requestPermission();

} // namespace Notifier
