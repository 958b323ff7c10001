#pragma once

#include "tests/support/Daemon.h"

#include <QJsonObject>
#include <QString>

/// OpenStack Swift with its S3 face on loopback: checks signatures, knows buckets with and without
/// versions. All its users see the same buckets.
class S3Server
{
public:
    /// With the user of accessKey() and secret().
    S3Server();

    /// One more user, before the start.
    void addUser(const QString &name, const QString &secret) { m_secrets.insert(name, secret); }

    /// Whether it takes connections now; what it said is in output() when it doesn't.
    bool start();
    void stop() { m_daemon.stop(); }

    static QString accessKey(const QString &user = QStringLiteral("anna"));
    static QString secret() { return QStringLiteral("Secret/of+the\u00e9=bucket 1"); }
    [[nodiscard]] QString endpoint() const;
    [[nodiscard]] QString output() { return m_daemon.output(); }

private:
    Daemon m_daemon;
    QJsonObject m_secrets; ///< by user
};
