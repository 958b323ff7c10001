#pragma once

#include "platform/SecretBackend.h"

#include <chrono>

/// The freedesktop Secret Service of the session bus (gnome-keyring, KWallet …). Each operation
/// speaks to the service anew, so that one which was restarted meanwhile serves the next operation.
/// Result codes of failures: libsecret's own from 1, GIO's from 1000, D-Bus's from 2000.
class FreedesktopSecretBackend final : public SecretBackend
{
public:
    /// `patience` bounds a whole operation, a question to the person included: one that nobody
    /// answers must not hold a windowless run for ever.
    explicit FreedesktopSecretBackend(std::chrono::milliseconds patience = std::chrono::minutes(2));

    Match copyMatching(const QString &service, const QString &account) override;
    std::int32_t update(const QString &service, const QString &account,
                        const QByteArray &value) override;
    std::int32_t add(const QString &service, const QString &account,
                     const QByteArray &value) override;

private:
    std::chrono::milliseconds m_patience;
};
