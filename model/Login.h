#pragma once

#include "model/Desktop.h"

#include <QObject>

/// Asks the user to log in again, by the system's own dialog. The answer comes on this object's
/// thread. Destroying this object cancels an open question.
class Login : public QObject
{
    Q_OBJECT

public:
    Login();

    /// Returns at once. A question that is still open is cancelled first, and answered as refused.
    void ask(OwnerReason reason, std::function<void(Desktop::Authentication)> answer);

Q_SIGNALS:
    /// Private: carries an answer from the thread that waited for the login to this object's.
    void answered(const std::function<void()> &deliver);

private:
    // Declared last and so destroyed first: its thread hands answers to this object.
    OwnerAuthentication m_owner;
};
