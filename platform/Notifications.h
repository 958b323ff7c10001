#pragma once

#include <QString>

#include <chrono>

/// A notification of the system: plain texts, shown at once, without a sound.
struct Notification
{
    QString title;
    QString body;
    QString icon; ///< full path of a picture, empty for none
};

/// Hands a notification to the system, and waits for that at most `patience`. False when no service
/// took it.
bool postNotification(const Notification &notification, std::chrono::milliseconds patience);

/// Asks for the permission to notify. A freedesktop desktop has no such permission; there this
/// starts the notification service, so that it runs when it is needed.
void requestNotificationPermission(std::chrono::milliseconds patience);
