#pragma once

#include <QString>

#include <functional>

/// Reports a problem to the user by a notification of the system, window or no window. No failure
/// comes back: where notifications aren't wanted or can't be shown, they are dropped.
namespace Notifier {

/// What posts a notification, send() or a stand-in.
using Send = std::function<void(const QString &title, const QString &body)>;

/// Posts a notification at once. Waits until the system has taken it, at most three seconds.
void send(const QString &title, const QString &body);

/// Asks the system for the permission to notify, where there is such a permission. Only from the
/// window's process.
void requestPermission();

} // namespace Notifier
