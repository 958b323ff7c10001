#include "tests/support/UserManager.h"

#include "tests/support/Files.h"
#include "tests/support/Waiting.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>

#include <unistd.h>

namespace {

constexpr int patienceMilliseconds = 20000;

} // namespace

UserManager::UserManager()
    : m_controlGroups(QDir::homePath() + QLatin1String("/control-groups"))
{
    const QString runtime = QDir::homePath() + QLatin1String("/run");
    QDir().mkpath(runtime);
    QFile::setPermissions(runtime,
                          QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
    qputenv("XDG_RUNTIME_DIR", runtime.toUtf8());
    start();
}

UserManager::~UserManager()
{
    stop();
}

void UserManager::start()
{
    // Should this process die early, the kernel ends the rest.
    QStringList arguments{QStringLiteral("--pdeathsig"),  QStringLiteral("KILL"),
                          QStringLiteral("unshare"),      QStringLiteral("--mount"),
                          QStringLiteral("--pid"),        QStringLiteral("--fork"),
                          QStringLiteral("--mount-proc"), QStringLiteral("--kill-child")};
    if (::geteuid() != 0) {
        arguments.append(QStringLiteral("--map-root-user"));
    }
    arguments.append({QStringLiteral("sh"),
                      QStringLiteral(VELLOMAR_SOURCE_DIR "/tests/support/user_manager.sh"),
                      QStringLiteral("vellomar-test-%1").arg(::getpid()), m_controlGroups});
    m_namespace.setProcessChannelMode(QProcess::MergedChannels);
    m_namespace.setStandardOutputFile(QDir::homePath() + QLatin1String("/user-manager.log"));
    m_namespace.start(QStringLiteral("setpriv"), arguments);
    m_isRunning = m_namespace.waitForStarted(patienceMilliseconds) && comesUp();
}

void UserManager::stop()
{
    m_isRunning = false;
    m_namespace.kill();
    m_namespace.waitForFinished(patienceMilliseconds);
    removeControlGroups();
}

QByteArray UserManager::reason() const
{
    return "no user manager of systemd could be started: it needs namespaces (unshare --mount "
           "--pid, for others than root --user too) and a control group that may be written to\n" +
           readFile(QDir::homePath() + QLatin1String("/user-manager.log"));
}

PeriodicJob::Answer UserManager::run(const QString &path, const QStringList &arguments) const
{
    QStringList words{QStringLiteral("--target"), QString::number(m_first),
                      QStringLiteral("--mount"), QStringLiteral("--pid")};
    if (::geteuid() != 0) {
        words.append({QStringLiteral("--user"), QStringLiteral("--preserve-credentials")});
    }
    QProcess process;
    process.start(QStringLiteral("nsenter"), words + QStringList{path} + arguments);
    if (!process.waitForFinished(patienceMilliseconds)) {
        return {};
    }
    return {process.exitCode(), QString::fromUtf8(process.readAllStandardOutput())};
}

PeriodicJob::RunTool UserManager::runTool() const
{
    return
        [this](const QString &path, const QStringList &arguments) { return run(path, arguments); };
}

QString UserManager::systemctl(const QStringList &arguments) const
{
    return run(QStringLiteral("/usr/bin/systemctl"),
               QStringList{QStringLiteral("--user")} + arguments)
        .output;
}

QString UserManager::property(const QString &unit, const QString &name) const
{
    return systemctl({QStringLiteral("show"), QLatin1String("--property=") + name,
                      QStringLiteral("--value"), unit})
        .trimmed();
}

bool UserManager::comesUp()
{
    const QString children =
        QStringLiteral("/proc/%1/task/%1/children").arg(m_namespace.processId());
    const bool hasFirst = eventually([this, &children] {
        m_first = readFile(children).trimmed().toLongLong();
        return m_first != 0 || !QFile::exists(children);
    });
    if (!hasFirst || m_first == 0) {
        return false;
    }
    const QString first = QStringLiteral("/proc/%1").arg(m_first);
    QString state;
    const bool isUp = eventually([this, &first, &state] {
        state = systemctl({QStringLiteral("is-system-running")}).trimmed();
        return state == QLatin1String("running") || state == QLatin1String("degraded") ||
               !QFile::exists(first);
    });
    if (!isUp || !QFile::exists(first)) {
        return false;
    }
    // Its own units may have named another bus.
    systemctl(
        {QStringLiteral("set-environment"), QLatin1String("DBUS_SESSION_BUS_ADDRESS=") +
                                                qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS")});
    return true;
}

void UserManager::removeControlGroups() const
{
    for (const QByteArray &line : readFile(m_controlGroups).split('\n')) {
        const QString top = QString::fromUtf8(line);
        if (top.isEmpty()) {
            continue;
        }
        // The dead are gone from them a moment later.
        eventually([&top] {
            QStringList folders{top};
            QDirIterator below(top, QDir::Dirs | QDir::NoDotAndDotDot,
                               QDirIterator::Subdirectories);
            while (below.hasNext()) {
                folders.prepend(below.next());
            }
            for (const QString &folder : folders) {
                QDir().rmdir(folder);
            }
            return !QFile::exists(top);
        });
    }
    QFile::remove(m_controlGroups);
}
