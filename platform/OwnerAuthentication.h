#pragma once

#include <functional>
#include <thread>

/// What the user at the machine is asked to log in for once more.
enum class OwnerReason {
    showKey,
    copyKey,
    replaceKey,
};

/// How the question to the person at the machine was answered, whether they can log in once more as
/// who they are.
enum class OwnerLogin {
    granted,
    refused,    ///< or cancelled, or taken back, or never answered
    impossible, ///< this machine says that it has no way to ask
};

/// Asks the person at the machine to log in once more, in a dialog of the system's own. One
/// question is open at a time, for as long as the person takes.
///
/// The end of this object takes an open question back, dialog and all, and waits until its answer
/// has been given.
class OwnerAuthentication
{
public:
    using Answer = std::function<void(OwnerLogin)>;

    /// Returns at once. `answer` is called once, on a thread of its own, on which it mustn't stay.
    /// A question that is still open is taken back first.
    void ask(OwnerReason reason, Answer answer);

private:
    std::jthread m_question;
};

namespace Polkit {

/// The action of ours that stands for a reason. Its texts are in resources/it.vellomar.policy,
/// because polkit takes none from an ordinary program.
const char *action(OwnerReason reason);

} // namespace Polkit
