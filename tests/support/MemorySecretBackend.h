#pragma once

#include "platform/SecretBackend.h"

#include <QMap>

#include <atomic>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <utility>

/// A secret store in memory that can be made to refuse.
class MemorySecretBackend final : public SecretBackend
{
public:
    QMap<std::pair<QString, QString>, QByteArray> items; ///< by service and account
    std::int32_t readFailure = 0;                        ///< unless 0, what copyMatching gives
    std::int32_t writeFailure = 0;                       ///< unless 0, what update and add give
    QString failingAccount;                              ///< one that can't be written; gives 22
    std::function<void()> onRead;                        ///< called before copyMatching
    std::function<void()> onWrite;                       ///< called before update and add
    std::atomic_int reads = 0;
    int updates = 0;
    int adds = 0;

    /// Makes the next read wait, as while the user is asked.
    void holdNext();
    /// Lets it go on.
    void letGo();

    Match copyMatching(const QString &service, const QString &account) override;
    std::int32_t update(const QString &service, const QString &account,
                        const QByteArray &value) override;
    std::int32_t add(const QString &service, const QString &account,
                     const QByteArray &value) override;

private:
    void noteWrite() const;
    std::mutex m_mutex;
    std::condition_variable m_released;
    bool m_holdsNext = false;
    bool m_isHolding = false;
};
