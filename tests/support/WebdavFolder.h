#pragma once

#include "tests/support/Daemon.h"
#include "tests/support/Installation.h"

#include <utility>

/// A folder served by rclone's own WebDAV server, without encryption.
class WebdavFolder
{
public:
    explicit WebdavFolder(QString folder)
        : m_folder(std::move(folder))
    {
    }

    bool start()
    {
        return m_daemon.start(Installation::realTool(QStringLiteral("rclone")),
                              {QStringLiteral("serve"), QStringLiteral("webdav"),
                               QStringLiteral("--addr"), QLatin1String("127.0.0.1:") + portText(),
                               QStringLiteral("--user"), user(), QStringLiteral("--pass"),
                               password(), m_folder});
    }

    static QString user() { return QStringLiteral("anna"); }
    static QString password() { return QStringLiteral("well-hidden-word"); }

    [[nodiscard]] QString portText() const { return m_daemon.portText(); }
    [[nodiscard]] QString url() const { return QLatin1String("http://127.0.0.1:") + portText(); }
    [[nodiscard]] QString output() { return m_daemon.output(); }

private:
    QString m_folder;
    Daemon m_daemon;
};
