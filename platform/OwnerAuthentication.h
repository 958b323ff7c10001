#pragma once

#include <functional>
#include <thread>

/// What the user is asked to log in again for.
enum class OwnerReason {
    showKey,
    copyKey,
    replaceKey,
};

/// How the user answered the request to log in again.
enum class OwnerLogin {
    granted,
    refused,    ///< or cancelled, or withdrawn, or never answered
    impossible, ///< this machine reports that it has no way to ask
};

/// Asks the user to log in again, in a dialog of the system. One request is open at a time, for as
/// long as the user takes.
///
/// The destructor withdraws an open request, closes its dialog and waits until it has been
/// answered.
class OwnerAuthentication
{
public:
    using Answer = std::function<void(OwnerLogin)>;

    /// Returns at once. `answer` is called once, on a thread of its own, and must return soon. A
    /// request that is still open is withdrawn first.
    void ask(OwnerReason reason, Answer answer);

private:
    std::jthread m_question;
};

namespace Polkit {

/// The name of polkit's action for a reason. Its texts are in resources/it.vellomar.policy, because
/// polkit accepts none from an ordinary program.
const char *action(OwnerReason reason);

} // namespace Polkit
