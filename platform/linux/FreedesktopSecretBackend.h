#pragma once

#include "platform/SecretBackend.h"

#include <chrono>

/// The freedesktop Secret Service of the session bus (gnome-keyring, KWallet …). Each operation
/// connects anew, so that a service that was restarted meanwhile can serve it. Result codes of
/// failures: libsecret's from 1, GIO's from 1000, D-Bus's from 2000.
class FreedesktopSecretBackend final : public SecretBackend
{
public:
    /// `patience` limits a whole operation, including a question to the user: an unanswered one
    /// must not hold up a run without a window for ever.
    explicit FreedesktopSecretBackend(std::chrono::milliseconds patience = std::chrono::minutes(2));

    Match copyMatching(const QString &service, const QString &account) override;
    std::int32_t update(const QString &service, const QString &account,
                        const QByteArray &value) override;
    std::int32_t add(const QString &service, const QString &account,
                     const QByteArray &value) override;

private:
    std::chrono::milliseconds m_patience;
};
