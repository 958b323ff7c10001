#include "tests/support/WebdavServer.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QProcess>

#include <unistd.h>

namespace {

constexpr int patienceMilliseconds = 60000;
constexpr uid_t nobody = 65534;

QByteArray modules()
{
    QByteArray lines;
    for (const char *name : {"mpm_event", "authn_core", "authn_file", "authz_core", "authz_user",
                             "auth_basic", "dav", "dav_fs", "ssl"}) {
        lines += "LoadModule " + QByteArray(name) + "_module /usr/lib/apache2/modules/mod_" + name +
                 ".so\n";
    }
    return lines;
}

QByteArray passwordLine()
{
    return WebdavServer::user().toUtf8() + ":{SHA}" +
           QCryptographicHash::hash(WebdavServer::password().toUtf8(), QCryptographicHash::Sha1)
               .toBase64() +
           '\n';
}

} // namespace

WebdavServer::WebdavServer()
    : WebdavServer(Manner{})
{
}

WebdavServer::WebdavServer(Manner manner)
    : m_manner(manner)
{
    QDir().mkpath(m_daemon.path(QStringLiteral("tree/closed")));
    QDir().mkpath(m_daemon.path(QStringLiteral("locks")));
    m_daemon.write(QStringLiteral("users"), passwordLine());
    m_daemon.write(QStringLiteral("httpd.conf"), configuration());
    m_isReady = !manner.isEncrypted || makeCertificate();
    if (::geteuid() == 0) {
        // Apache serves nothing as root.
        for (const char *name : {"", "tree", "tree/closed", "locks", "users"}) {
            const QByteArray path = QFile::encodeName(m_daemon.path(QString::fromUtf8(name)));
            m_isReady = ::chown(path.constData(), nobody, nobody) == 0 && m_isReady;
        }
    }
}

bool WebdavServer::start()
{
    return m_isReady &&
           m_daemon.start(QStringLiteral("/usr/sbin/apache2"),
                          {QStringLiteral("-D"), QStringLiteral("FOREGROUND"), QStringLiteral("-f"),
                           m_daemon.path(QStringLiteral("httpd.conf"))});
}

QString WebdavServer::url() const
{
    return (m_manner.isEncrypted ? QLatin1String("https://127.0.0.1:")
                                 : QLatin1String("http://127.0.0.1:")) +
           portText();
}

QString WebdavServer::certificate() const
{
    return m_daemon.path(QStringLiteral("certificate.pem"));
}

QByteArray WebdavServer::configuration() const
{
    const QByteArray root = m_daemon.path({}).toUtf8();
    QByteArray lines = modules();
    lines += "ServerRoot " + root +
             "\nServerName localhost\nListen 127.0.0.1:" + portText().toUtf8() + "\nPidFile " +
             root + "/pid\nErrorLog /dev/stderr\nMutex file:" + root + "/locks\nDavLockDB " + root +
             "/locks/dav\n" +
             "StartServers 1\nServerLimit 2\nThreadsPerChild 16\nMaxRequestWorkers 32\n";
    if (::geteuid() == 0) {
        lines += "User #65534\nGroup #65534\n";
    }
    if (m_manner.isEncrypted) {
        lines += "SSLEngine on\nSSLSessionCache none\nSSLCertificateFile " + root +
                 "/certificate.pem\nSSLCertificateKeyFile " + root + "/key.pem\n";
    }
    lines += "DocumentRoot " + root + "/tree\n<Directory " + root + "/tree>\nDav On\n";
    lines += m_manner.isGuarded ? "AuthType Basic\nAuthName tree\nAuthUserFile " + root +
                                      "/users\nRequire valid-user\n"
                                : QByteArrayLiteral("Require all granted\n");
    lines += "</Directory>\n<Location /closed>\nRequire all denied\n</Location>\n";
    return lines;
}

bool WebdavServer::makeCertificate() const
{
    QProcess openssl;
    openssl.start(QStringLiteral("openssl"),
                  {QStringLiteral("req"), QStringLiteral("-x509"), QStringLiteral("-nodes"),
                   QStringLiteral("-newkey"), QStringLiteral("rsa:2048"), QStringLiteral("-days"),
                   QStringLiteral("2"), QStringLiteral("-subj"), QStringLiteral("/CN=localhost"),
                   QStringLiteral("-addext"), QStringLiteral("subjectAltName=IP:127.0.0.1"),
                   QStringLiteral("-keyout"), m_daemon.path(QStringLiteral("key.pem")),
                   QStringLiteral("-out"), certificate()});
    return openssl.waitForFinished(patienceMilliseconds) && openssl.exitCode() == 0;
}
