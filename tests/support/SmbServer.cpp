#include "tests/support/SmbServer.h"

#include "tests/support/Cycle.h"

#include <QDir>
#include <QFile>
#include <QProcess>

#include <csignal>
#include <utility>

#include <pwd.h>
#include <unistd.h>

namespace {

constexpr int patienceMilliseconds = 60000;

QString currentUser()
{
    const passwd *user = ::getpwuid(::geteuid());
    return user == nullptr ? QString() : QString::fromUtf8(user->pw_name);
}

} // namespace

SmbServer::SmbServer(QString password)
    : m_user(currentUser())
    , m_password(std::move(password))
{
    for (const char *name : {"private", "lock", "pid", "state", "cache", "rpc", "files"}) {
        QDir().mkpath(m_daemon.path(QString::fromUtf8(name)));
    }
    m_settings = m_daemon.write(QStringLiteral("smb.conf"), configuration());
    m_isReady = addUser();
}

SmbServer::~SmbServer()
{
    stop();
}

bool SmbServer::start()
{
    return m_isReady &&
           m_daemon.start(QStringLiteral("/usr/sbin/smbd"),
                          {QStringLiteral("--foreground"), QStringLiteral("--no-process-group"),
                           QStringLiteral("--debug-stdout"),
                           QStringLiteral("--configfile=") + m_settings});
}

void SmbServer::stop()
{
    m_daemon.stop();
    // The helpers that list the shares have a session of their own and outlive smbd.
    QFile file(m_daemon.path(QStringLiteral("pid/samba-dcerpcd.pid")));
    const pid_t helpers = file.open(QIODevice::ReadOnly) ? file.readAll().trimmed().toInt() : 0;
    if (helpers > 1 && ::getsid(helpers) == helpers) {
        ::kill(-helpers, SIGKILL);
        eventually([helpers] { return hasEnded(helpers); });
        file.remove();
    }
}

QByteArray SmbServer::configuration() const
{
    const QByteArray root = m_daemon.path({}).toUtf8();
    return "[global]\nserver role = standalone server\ninterfaces = 127.0.0.1\n"
           "bind interfaces only = yes\nsmb ports = " +
           portText().toUtf8() + "\nprivate dir = " + root + "/private\nlock directory = " + root +
           "/lock\npid directory = " + root + "/pid\nstate directory = " + root +
           "/state\ncache directory = " + root + "/cache\nncalrpc dir = " + root +
           "/rpc\npassdb backend = tdbsam:" + root + "/private/users.tdb\nlog file = " + root +
           "/log\ndisable netbios = yes\nmulticast dns register = no\ndisable spoolss = yes\n"
           "load printers = no\nprinting = bsd\nprintcap name = /dev/null\nmap to guest = never\n" +
           "[" + share().toUtf8() + "]\npath = " + root + "/files\nread only = no\n";
}

bool SmbServer::addUser() const
{
    QProcess pdbedit;
    pdbedit.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    pdbedit.start(QStringLiteral("pdbedit"),
                  {QStringLiteral("--configfile=") + m_settings, QStringLiteral("--create"),
                   QStringLiteral("--password-from-stdin"), QStringLiteral("--user=") + m_user});
    pdbedit.write((m_password + u'\n' + m_password + u'\n').toUtf8());
    pdbedit.closeWriteChannel();
    return pdbedit.waitForFinished(patienceMilliseconds) && pdbedit.exitCode() == 0;
}
