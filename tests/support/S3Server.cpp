#include "tests/support/S3Server.h"

#include <QJsonDocument>

S3Server::S3Server()
{
    addUser(QStringLiteral("anna"), secret());
}

bool S3Server::start()
{
    // Debian's own Python is the one that has Swift.
    return m_daemon.start(
        QStringLiteral("/usr/bin/python3"),
        {QStringLiteral(VELLOMAR_SOURCE_DIR "/tests/support/swift_server.py"), m_daemon.portText(),
         m_daemon.makeFolder(QStringLiteral("swift")),
         m_daemon.write(QStringLiteral("secrets.json"), QJsonDocument(m_secrets).toJson())});
}

QString S3Server::accessKey(const QString &user)
{
    return QLatin1String("vellomar:") + user;
}

QString S3Server::endpoint() const
{
    return QLatin1String("http://127.0.0.1:") + m_daemon.portText();
}
