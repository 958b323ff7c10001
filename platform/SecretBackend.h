#pragma once

#include <QByteArray>
#include <QString>

#include <cstdint>
#include <optional>

/// The platform's store of small secrets, which are found by service and account.
///
/// Every operation gives a result code: 0 is success, SecretBackend::itemNotFound means that there
/// is no such item, anything else is the platform's own code for a failure. The current store is
/// the platform's, unless a ScopedSecretBackend is alive.
class SecretBackend
{
public:
    /// The code for an item that doesn't exist (the number is that of the macOS keychain).
    static constexpr std::int32_t itemNotFound = -25300;

    struct Match
    {
        std::int32_t status = 0;
        std::optional<QByteArray> data; ///< absent unless status is 0
    };

    SecretBackend() = default;
    virtual ~SecretBackend() = default;
    SecretBackend(const SecretBackend &) = delete;
    SecretBackend &operator=(const SecretBackend &) = delete;
    SecretBackend(SecretBackend &&) = delete;
    SecretBackend &operator=(SecretBackend &&) = delete;

    /// The value of one item. A locked store is unlocked first, which may ask the user.
    virtual Match copyMatching(const QString &service, const QString &account) = 0;
    /// Replaces the value of an existing item; itemNotFound when there is none.
    virtual std::int32_t update(const QString &service, const QString &account,
                                const QByteArray &value) = 0;
    /// Adds an item that doesn't exist yet.
    virtual std::int32_t add(const QString &service, const QString &account,
                             const QByteArray &value) = 0;

    /// The current store.
    static SecretBackend &current();
};

/// Replaces the current store while this object lives, for tests. Not to be nested.
class ScopedSecretBackend
{
public:
    explicit ScopedSecretBackend(SecretBackend &backend);
    ~ScopedSecretBackend();
    ScopedSecretBackend(const ScopedSecretBackend &) = delete;
    ScopedSecretBackend &operator=(const ScopedSecretBackend &) = delete;
    ScopedSecretBackend(ScopedSecretBackend &&) = delete;
    ScopedSecretBackend &operator=(ScopedSecretBackend &&) = delete;
};
