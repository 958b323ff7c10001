#include "tests/support/SftpServer.h"

#include "tests/support/Files.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <crypt.h>
#include <unistd.h>

namespace {

// Its folder is $1. The server wants a folder of root's in /run, and later versions shut out for
// a while who has failed to log in, which earlier ones have no word for.
constexpr const char *script = R"(
mount --bind "$1/passwd" /etc/passwd && mount --bind "$1/shadow" /etc/shadow &&
mount -t tmpfs tmpfs /run && mkdir -m 755 /run/sshd || exit 1
penalties=
if /usr/sbin/sshd -t -f "$1/settings" -o PerSourcePenalties=no 2>/dev/null; then
  penalties='-o PerSourcePenalties=no'
fi
exec /usr/sbin/sshd -D -e -f "$1/settings" $penalties
)";

bool generateKey(const QString &path)
{
    return QProcess::execute(QStringLiteral("ssh-keygen"),
                             {QStringLiteral("-q"), QStringLiteral("-t"), QStringLiteral("ed25519"),
                              QStringLiteral("-N"), QString(), QStringLiteral("-C"), QString(),
                              QStringLiteral("-f"), path}) == 0;
}

// An ordinary user gets the right to mount in a user namespace of their own.
QStringList namespaces()
{
    QStringList options = {QStringLiteral("--mount"), QStringLiteral("--pid"),
                           QStringLiteral("--fork"), QStringLiteral("--kill-child")};
    if (::geteuid() != 0) {
        options << QStringLiteral("--user") << QStringLiteral("--map-current-user")
                << QStringLiteral("--keep-caps");
    }
    return options;
}

} // namespace

SftpServer::SftpServer(const QString &secret)
{
    QDir().mkpath(data());
    m_daemon.write(QStringLiteral("authorized_keys"), {});
    m_daemon.write(QStringLiteral("settings"),
                   "ListenAddress 127.0.0.1\nListenAddress ::1\nPort " +
                       m_daemon.portText().toUtf8() + "\nHostKey " + hostKeyFile().toUtf8() +
                       "\nAuthorizedKeysFile " +
                       m_daemon.path(QStringLiteral("authorized_keys")).toUtf8() +
                       "\nStrictModes no\nUsePAM no\nPermitRootLogin yes\nPidFile none\n"
                       "PasswordAuthentication yes\nKbdInteractiveAuthentication no\n"
                       "Subsystem sftp internal-sftp\n");
    writeAccounts(secret);
    generateKey(hostKeyFile());
}

bool SftpServer::start()
{
    return m_daemon.start(QStringLiteral("unshare"),
                          namespaces() + QStringList{QStringLiteral("sh"), QStringLiteral("-c"),
                                                     QString::fromUtf8(script),
                                                     QStringLiteral("sh"),
                                                     QFileInfo(hostKeyFile()).path()});
}

bool SftpServer::restartWithAnotherHostKey()
{
    stop();
    return QFile::remove(hostKeyFile()) && QFile::remove(hostKeyFile() + QLatin1String(".pub")) &&
           generateKey(hostKeyFile()) && start();
}

bool SftpServer::makeKey(const QString &path) const
{
    if (!generateKey(path)) {
        return false;
    }
    QFile allowed(m_daemon.path(QStringLiteral("authorized_keys")));
    return allowed.open(QIODevice::Append) &&
           allowed.write(readFile(path + QLatin1String(".pub"))) > 0;
}

bool SftpServer::makeStrangeKey(const QString &path)
{
    return generateKey(path);
}

QByteArray SftpServer::hostKey() const
{
    return readFile(hostKeyFile() + QLatin1String(".pub")).trimmed();
}

void SftpServer::writeAccounts(const QString &secret) const
{
    const QByteArray anna = user().toUtf8();
    const QByteArray ids = QByteArray::number(::geteuid()) + ':' + QByteArray::number(::getegid());
    m_daemon.write(QStringLiteral("passwd"),
                   "root:x:0:0::/:/bin/sh\nsshd:x:65534:65534::/run/sshd:/bin/false\n" + anna +
                       ":x:" + ids + "::" + data().toUtf8() + ":/bin/sh\n");
    crypt_data hashing = {};
    const QByteArray hash = ::crypt_r(secret.toUtf8().constData(), "$6$saltOfTheTest", &hashing);
    m_daemon.write(QStringLiteral("shadow"),
                   "sshd:*:1:0:99999:7:::\n" + anna + ':' + hash + ":1:0:99999:7:::\n");
}
