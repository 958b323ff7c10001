#pragma once

#include "tests/support/Daemon.h"

#include <QString>

/// A real OpenSSH server on loopback with one user of its own, who has a password and keys. The
/// user stands in an account file of the server's own, laid over the machine's in a mount
/// namespace, and is really the one who runs the test. Who logs in begins in data(), and what they
/// write goes there.
class SftpServer
{
public:
    SftpServer();

    /// Starts the server on its port; false, with its words in output(), when it doesn't come up.
    bool start();
    void stop() { m_daemon.stop(); }
    /// Starts it anew on the same port with another host key.
    bool restartWithAnotherHostKey();

    /// Makes a private key without a passphrase at this path, and lets its owner in.
    bool makeKey(const QString &path) const;
    /// As makeKey(), but the server knows nothing of the key.
    static bool makeStrangeKey(const QString &path);

    static QString user() { return QStringLiteral("anna"); }
    static QString password() { return QStringLiteral("a \"key\" = 100%; caff\u00e8 # `x`"); }

    [[nodiscard]] QString portText() const { return m_daemon.portText(); }
    [[nodiscard]] QString data() const { return m_daemon.path(QStringLiteral("data")); }
    /// The host key as a line of known_hosts has it behind the host: its kind and the key.
    [[nodiscard]] QByteArray hostKey() const;
    [[nodiscard]] QString output() { return m_daemon.output(); }

private:
    [[nodiscard]] QString hostKeyFile() const { return m_daemon.path(QStringLiteral("host_key")); }
    void writeAccounts() const;

    Daemon m_daemon;
};
