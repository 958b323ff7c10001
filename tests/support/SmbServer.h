#pragma once

#include "tests/support/Daemon.h"

#include <QString>

/// Samba on loopback with one share, for the user who runs the test.
class SmbServer
{
public:
    /// An empty password lets the user in without one.
    explicit SmbServer(QString password = QStringLiteral("p\u00e4ss=word 1"));
    ~SmbServer();
    SmbServer(const SmbServer &) = delete;
    SmbServer &operator=(const SmbServer &) = delete;
    SmbServer(SmbServer &&) = delete;
    SmbServer &operator=(SmbServer &&) = delete;

    /// Whether it takes connections now; what it said is in output() when it doesn't.
    bool start();
    void stop();

    /// Name of the user who runs the test, the only one it knows.
    [[nodiscard]] QString user() const { return m_user; }
    [[nodiscard]] QString password() const { return m_password; }
    static QString share() { return QStringLiteral("backups"); }
    [[nodiscard]] QString portText() const { return m_daemon.portText(); }
    /// The shared folder itself.
    [[nodiscard]] QString folder() const { return m_daemon.path(QStringLiteral("files")); }
    [[nodiscard]] QString output() { return m_daemon.output(); }

private:
    [[nodiscard]] QByteArray configuration() const;
    [[nodiscard]] bool addUser() const;

    QString m_user;
    QString m_password;
    Daemon m_daemon;
    QString m_settings;
    bool m_isReady = false;
};
