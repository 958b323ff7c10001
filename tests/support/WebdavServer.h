#pragma once

#include "tests/support/Daemon.h"

#include <QString>

/// Apache httpd with WebDAV on loopback, for one user with a password.
class WebdavServer
{
public:
    struct Manner
    {
        bool isEncrypted = false; ///< https, with a certificate signed by itself
        bool isGuarded = true;    ///< whether it asks for user and password
    };

    explicit WebdavServer(Manner manner);
    WebdavServer();

    /// Whether it takes connections now; what it said is in output() when it doesn't.
    bool start();
    /// Ends it; start() may follow.
    void stop() { m_daemon.stop(); }

    static QString user() { return QStringLiteral("anna"); }
    static QString password() { return QStringLiteral("p\u00e4ss:word 1"); }

    /// Address of the server's whole tree.
    [[nodiscard]] QString url() const;
    /// Address of a folder that exists and that no user may enter.
    [[nodiscard]] QString closedUrl() const { return url() + QLatin1String("/closed"); }
    [[nodiscard]] QString portText() const { return m_daemon.portText(); }
    /// The served folder itself.
    [[nodiscard]] QString folder() const { return m_daemon.path(QStringLiteral("tree")); }
    /// File with the server's certificate.
    [[nodiscard]] QString certificate() const;
    [[nodiscard]] QString output() { return m_daemon.output(); }

private:
    [[nodiscard]] QByteArray configuration() const;
    [[nodiscard]] bool makeCertificate() const;

    Manner m_manner;
    Daemon m_daemon;
    bool m_isReady = false;
};
