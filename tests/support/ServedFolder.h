#pragma once

#include "tests/support/Daemon.h"

#include <QString>

/// A folder behind `rclone serve` on loopback, for one person with any password at all.
class ServedFolder
{
public:
    /// "webdav" or "sftp".
    ServedFolder(QString protocol, QString password);

    /// Whether it takes connections now; what it said is in output() when it doesn't.
    bool start();

    static QString user() { return QStringLiteral("anna"); }
    [[nodiscard]] QString password() const { return m_password; }
    /// What the settings have as the server's address.
    [[nodiscard]] QString host() const;
    /// What the settings have as its port.
    [[nodiscard]] QString port() const;
    [[nodiscard]] QString output() { return m_daemon.output(); }

private:
    [[nodiscard]] bool isWebdav() const { return m_protocol == QLatin1String("webdav"); }

    QString m_protocol;
    QString m_password;
    Daemon m_daemon;
};
