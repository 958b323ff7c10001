#include "tests/support/ServedFolder.h"

#include "tests/support/Installation.h"

#include <utility>

ServedFolder::ServedFolder(QString protocol, QString password)
    : m_protocol(std::move(protocol))
    , m_password(std::move(password))
{
}

bool ServedFolder::start()
{
    return m_daemon.start(Installation::realTool(QStringLiteral("rclone")),
                          {QStringLiteral("serve"), m_protocol,
                           QLatin1String("--addr=127.0.0.1:") + m_daemon.portText(),
                           QLatin1String("--user=") + user(), QLatin1String("--pass=") + m_password,
                           m_daemon.makeFolder(QStringLiteral("files"))});
}

QString ServedFolder::host() const
{
    return isWebdav() ? QString(QLatin1String("http://127.0.0.1:") + m_daemon.portText())
                      : QStringLiteral("127.0.0.1");
}

QString ServedFolder::port() const
{
    return isWebdav() ? QString() : m_daemon.portText();
}
