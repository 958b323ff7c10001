#include "tests/support/BackupHome.h"

#include "state/ConfigStore.h"
#include "state/Keychain.h"
#include "state/StatusStore.h"
#include "tests/support/CheapRepository.h"
#include "tests/support/ChoresDone.h"
#include "tests/support/Files.h"
#include "tests/support/ReadySettings.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QRandomGenerator>

namespace {

constexpr int smallFiles = 300;

QByteArray randomBytes(qint64 size)
{
    QByteArray bytes(size, Qt::Uninitialized);
    QRandomGenerator *generator = QRandomGenerator::global();
    for (char &byte : bytes) {
        byte = static_cast<char>(generator->bounded(256));
    }
    return bytes;
}

bool holdsSecret(const QString &path)
{
    const QByteArray content = readFile(path); // nothing where it is gone again
    for (const QByteArray &secret : BackupHome::secrets()) {
        if (content.contains(secret)) {
            return true;
        }
    }
    return false;
}

} // namespace

BackupHome::BackupHome()
    : m_root(QDir::homePath())
{
    qputenv("TMPDIR", QFile::encodeName(m_root + QLatin1String("/tmp")));
    for (const char *folder : {"tmp", "disk", "server", "source/notes", "source/empty"}) {
        QDir(m_root).mkpath(QLatin1String(folder));
    }
    StatusStore::save(choresDone(QDateTime::currentDateTimeUtc()));
    bool written = true;
    for (int i = 0; i < smallFiles; ++i) {
        written = written && writeFile(source() + QStringLiteral("/notes/%1.txt").arg(i),
                                       "note " + QByteArray::number(i));
    }
    m_isReady = m_session.isRunning() && written &&
                addToSource(QStringLiteral("film"), 3'000'000) && writeSettings();
}

QString BackupHome::localRepository() const
{
    return m_root + QLatin1String("/disk/Vellomar.backup");
}

QString BackupHome::serverRepository() const
{
    return m_root + QLatin1String("/server/Backups/mine");
}

QString BackupHome::repositoryKey()
{
    return QStringLiteral("RepositoryKeyRepositoryKey23456x");
}

QString BackupHome::remotePassword()
{
    return QStringLiteral("PasswordOfTheRemote98765");
}

bool BackupHome::makeRepositories() const
{
    return CheapRepository::make(localRepository(), repositoryKey()) &&
           CheapRepository::make(serverRepository(), repositoryKey());
}

const QByteArrayList &BackupHome::secrets()
{
    static const QByteArrayList all{repositoryKey().toUtf8(), "ConfigKeyConfigKeyConfigKey7654x",
                                    remotePassword().toUtf8()};
    return all;
}

bool BackupHome::writeSettings() const
{
    if (!Keychain::write(repositoryKey(), Keychain::repositoryKey) ||
        !Keychain::write(QString::fromUtf8(secrets().at(1)), Keychain::rcloneConfigKey)) {
        return false;
    }
    AppConfig config = readySettings();
    config.serverEnabled = true;
    config.serverPath = QStringLiteral("Backups/mine");
    ConfigStore::save(config);
    // In plain, as rclone alone would have left it: the first cycle encrypts it.
    const QString remotes = QStringLiteral("[vellomar-server]\ntype = alias\nremote = %1/server\n"
                                           "pass = %2\n")
                                .arg(m_root, remotePassword());
    return writeFile(Paths::supportFile(QStringLiteral("rclone.conf")), remotes.toUtf8());
}

bool BackupHome::addToSource(const QString &name, qint64 size) const
{
    return writeFile(source() + u'/' + name, randomBytes(size));
}

QStringList BackupHome::filesWithSecrets() const
{
    QStringList found;
    QDirIterator files(m_root, QDir::Files | QDir::Hidden | QDir::NoSymLinks,
                       QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QString path = files.next();
        if (holdsSecret(path)) {
            found.append(path);
        }
    }
    return found;
}
