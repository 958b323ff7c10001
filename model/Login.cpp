#include "model/Login.h"

#include <utility>

namespace {

Desktop::Authentication authenticationOf(OwnerLogin login)
{
    switch (login) {
    case OwnerLogin::granted:
        return Desktop::Authentication::granted;
    case OwnerLogin::refused:
        return Desktop::Authentication::refused;
    case OwnerLogin::impossible:
        return Desktop::Authentication::impossible;
    }
    return Desktop::Authentication::refused;
}

} // namespace

Login::Login()
{
    connect(
        this, &Login::answered, this, [](const std::function<void()> &deliver) { deliver(); },
        Qt::QueuedConnection);
}

void Login::ask(OwnerReason reason, std::function<void(Desktop::Authentication)> answer)
{
    m_owner.ask(reason, [this, answer = std::move(answer)](OwnerLogin login) {
        // Runs on the thread that waits for the login, which ends before this object does.
        Q_EMIT answered([answer, login] { answer(authenticationOf(login)); });
    });
}
