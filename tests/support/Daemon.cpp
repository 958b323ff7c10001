#include "tests/support/Daemon.h"

#include "tests/support/Files.h"
#include "tests/support/Waiting.h"

#include <QDir>
#include <QFile>

#include <csignal>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {

sockaddr_in loopback(quint16 port)
{
    sockaddr_in address = {};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    return address;
}

bool isTaken(quint16 port)
{
    const int socket = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const sockaddr_in address = loopback(port);
    const bool answers =
        ::connect(socket, reinterpret_cast<const sockaddr *>(&address), sizeof(address)) == 0;
    ::close(socket);
    return answers;
}

} // namespace

Daemon::Daemon()
{
    m_process.setProcessChannelMode(QProcess::MergedChannels);
    // A group of its own, so that what it starts ends with it; and a test that is killed leaves
    // none behind.
    m_process.setChildProcessModifier([] {
        ::setpgid(0, 0);
        ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    });
}

Daemon::~Daemon()
{
    stop();
}

quint16 Daemon::freePort()
{
    const int socket = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address = loopback(0);
    socklen_t length = sizeof(address);
    ::bind(socket, reinterpret_cast<sockaddr *>(&address), length);
    ::getsockname(socket, reinterpret_cast<sockaddr *>(&address), &length);
    ::close(socket);
    return ntohs(address.sin_port);
}

bool Daemon::start(const QString &program, const QStringList &arguments)
{
    m_process.start(program, arguments);
    return m_process.waitForStarted() &&
           eventually([this] { return isTaken(m_port) || m_process.waitForFinished(0); }) &&
           m_process.state() == QProcess::Running;
}

void Daemon::stop()
{
    if (m_process.state() == QProcess::NotRunning) {
        return;
    }
    const auto group = static_cast<pid_t>(m_process.processId());
    ::kill(-group, SIGTERM);
    m_process.waitForFinished(5000);
    ::kill(-group, SIGKILL);
    m_process.waitForFinished();
}

QString Daemon::path(const QString &name) const
{
    return m_folder.filePath(name);
}

QString Daemon::makeFolder(const QString &name) const
{
    QDir(m_folder.path()).mkpath(name);
    return path(name);
}

QString Daemon::write(const QString &name, const QByteArray &content) const
{
    QString file = path(name);
    writeFile(file, content);
    QFile::setPermissions(file, QFileDevice::ReadOwner | QFileDevice::WriteOwner);
    return file;
}

QString Daemon::output()
{
    m_process.waitForReadyRead(0);
    m_output += m_process.readAll();
    return QString::fromUtf8(m_output);
}
