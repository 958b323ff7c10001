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

/// Hands a notification over, and waits for that at most `patience`. False when nobody took it.
bool postNotification(const Notification &notification, std::chrono::milliseconds patience);

/// Asks for the right to notify. A freedesktop desktop has no such right to give: there, this wakes
/// the notification service, so that it is up when it is needed.
void requestNotificationPermission(std::chrono::milliseconds patience);
