#pragma once

#include "model/Desktop.h"

#include <QObject>

/// The system's question whether the user at the machine can log in once more, with its answer on
/// this object's thread. The end of this object takes an open question back.
class Login : public QObject
{
    Q_OBJECT

public:
    Login();

    /// Returns at once. A question that is still open is taken back first; its answer comes too,
    /// as refused.
    void ask(OwnerReason reason, std::function<void(Desktop::Authentication)> answer);

Q_SIGNALS:
    /// Private: from the thread on which the login was waited for to this object's.
    void answered(const std::function<void()> &deliver);

private:
    // Last, and so ended first: its thread hands answers to this object.
    OwnerAuthentication m_owner;
};
