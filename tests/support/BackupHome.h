#pragma once

#include "state/AppConfig.h"
#include "tests/support/Installation.h"
#include "tests/support/KeyringSession.h"

#include <QByteArrayList>
#include <QString>
#include <QStringList>

/// The home of the test as that of a user who backs up one folder to a disk and to a server, with
/// the real keyring, restic and rclone. The server is a folder behind an rclone remote. Everything
/// of it lies in the home, temporary files and restic's cache too.
class BackupHome
{
public:
    BackupHome();

    /// Whether all of it could be made; a test must fail otherwise.
    [[nodiscard]] bool isReady() const { return m_isReady; }

    [[nodiscard]] QString source() const { return m_root + QLatin1String("/source"); }
    [[nodiscard]] QString localRepository() const;
    [[nodiscard]] QString serverRepository() const;

    /// Makes both repositories, so that they open at once; the first backup does it otherwise.
    [[nodiscard]] bool makeRepositories() const;

    /// What must stand in no file, argument or environment: the repositories' key, the key of
    /// rclone's configuration, and the password in the remote's section of that.
    static const QByteArrayList &secrets();
    static QString repositoryKey();
    static QString remotePassword();

    /// Adds a file of random bytes to the source.
    bool addToSource(const QString &name, qint64 size) const;

    /// Every regular file under the home that holds one of the secrets.
    [[nodiscard]] QStringList filesWithSecrets() const;

private:
    bool writeSettings() const;

    QString m_root;
    KeyringSession m_session;
    bool m_isReady = false;
};
