#pragma once

#include "tests/support/Daemon.h"

#include <QString>

/// A real OpenSSH server on 127.0.0.1 and ::1 with one user, who has a password and keys. The user
/// is listed in an account file of its own, mounted over the machine's in a mount namespace, and
/// has the id of the user who runs the test. A login starts in data().
class SftpServer
{
public:
    explicit SftpServer(const QString &secret = password());

    /// Starts the server on its port; false, with its words in output(), when it doesn't come up.
    bool start();
    void stop() { m_daemon.stop(); }
    /// Restarts it on the same port with a different host key.
    bool restartWithAnotherHostKey();

    /// Makes a private key without a passphrase at this path, and lets its owner in.
    bool makeKey(const QString &path) const;
    /// As makeKey(), but the server knows nothing of the key.
    static bool makeStrangeKey(const QString &path);

    static QString user() { return QStringLiteral("anna"); }
    /// The user's password, if no other is given.
    static QString password() { return QStringLiteral("a \"key\" = 100%; caff\u00e8 # `x`"); }

    [[nodiscard]] QString portText() const { return m_daemon.portText(); }
    [[nodiscard]] QString data() const { return m_daemon.path(QStringLiteral("data")); }
    /// The host key as known_hosts has it after the host name: type and key.
    [[nodiscard]] QByteArray hostKey() const;
    [[nodiscard]] QString output() { return m_daemon.output(); }

private:
    [[nodiscard]] QString hostKeyFile() const { return m_daemon.path(QStringLiteral("host_key")); }
    void writeAccounts(const QString &secret) const;

    Daemon m_daemon;
};
