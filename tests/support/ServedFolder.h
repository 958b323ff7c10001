#pragma once

#include "tests/support/Daemon.h"

#include <QString>

/// A folder behind `rclone serve` on loopback, for one user with any password at all.
class ServedFolder
{
public:
    /// "webdav" or "sftp".
    ServedFolder(QString protocol, QString password);

    /// Whether it takes connections now; what it said is in output() when it doesn't.
    bool start();

    static QString user() { return QStringLiteral("anna"); }
    [[nodiscard]] QString password() const { return m_password; }
    /// The server's address, as the settings have it.
    [[nodiscard]] QString host() const;
    /// Its port, as the settings have it.
    [[nodiscard]] QString port() const;
    [[nodiscard]] QString output() { return m_daemon.output(); }

private:
    [[nodiscard]] bool isWebdav() const { return m_protocol == QLatin1String("webdav"); }

    QString m_protocol;
    QString m_password;
    Daemon m_daemon;
};
