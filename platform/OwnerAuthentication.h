#pragma once

#include <QString>

#include <functional>
#include <thread>

/// How the question to the person at the machine was answered, whether they can log in once more as
/// who they are.
enum class OwnerLogin {
    granted,
    refused,    ///< or cancelled, or taken back
    impossible, ///< this machine has no way to ask
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
    /// The reason is what is to be done, as a part of a sentence: "copiare la chiave di cifratura".
    /// A question that is still open is taken back first.
    void ask(const QString &reason, Answer answer);

private:
    std::jthread m_question;
};

namespace Polkit {

/// The action of ours that stands for a reason. Its texts are in resources/it.vellomar.policy,
/// because polkit takes none from an ordinary program.
const char *action(const QString &reason);

} // namespace Polkit
