#include "tests/support/MemorySecretBackend.h"

#include <utility>

void MemorySecretBackend::holdNext()
{
    const std::lock_guard lock(m_mutex);
    m_holdsNext = true;
    m_isHolding = true;
}

void MemorySecretBackend::letGo()
{
    {
        const std::lock_guard lock(m_mutex);
        m_isHolding = false;
    }
    m_released.notify_all();
}

SecretBackend::Match MemorySecretBackend::copyMatching(const QString &service,
                                                       const QString &account)
{
    ++reads;
    if (onRead) {
        onRead();
    }
    std::unique_lock lock(m_mutex);
    if (std::exchange(m_holdsNext, false)) {
        m_released.wait(lock, [this] { return !m_isHolding; });
    }
    if (readFailure != 0) {
        return {readFailure, std::nullopt};
    }
    const auto item = items.constFind({service, account});
    if (item == items.constEnd()) {
        return {itemNotFound, std::nullopt};
    }
    return {0, *item};
}

void MemorySecretBackend::noteWrite() const
{
    if (onWrite) {
        onWrite();
    }
}

std::int32_t MemorySecretBackend::update(const QString &service, const QString &account,
                                         const QByteArray &value)
{
    ++updates;
    noteWrite();
    if (writeFailure != 0) {
        return writeFailure;
    }
    if (account == failingAccount) {
        return 22;
    }
    if (!items.contains({service, account})) {
        return itemNotFound;
    }
    items[{service, account}] = value;
    return 0;
}

std::int32_t MemorySecretBackend::add(const QString &service, const QString &account,
                                      const QByteArray &value)
{
    ++adds;
    noteWrite();
    if (writeFailure != 0) {
        return writeFailure;
    }
    if (account == failingAccount) {
        return 22;
    }
    items[{service, account}] = value;
    return 0;
}
