#include "tests/support/KeyringSession.h"

#include <QDir>

namespace {

constexpr int patienceMilliseconds = 20000;

void endProcess(QProcess &process)
{
    if (process.state() != QProcess::NotRunning) {
        process.terminate();
        if (!process.waitForFinished(patienceMilliseconds)) {
            process.kill();
            process.waitForFinished(patienceMilliseconds);
        }
    }
}

} // namespace

KeyringSession::KeyringSession(Keyring keyring)
{
    const QString runtime = QDir::homePath() + QLatin1String("/run");
    QDir().mkpath(runtime);
    QFile::setPermissions(runtime,
                          QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
    qputenv("XDG_RUNTIME_DIR", runtime.toUtf8());
    m_bus.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_bus.start(QStringLiteral("dbus-daemon"),
                {QStringLiteral("--session"), QStringLiteral("--nofork"),
                 QStringLiteral("--print-address=1")});
    if (!m_bus.waitForStarted(patienceMilliseconds) ||
        !m_bus.waitForReadyRead(patienceMilliseconds)) {
        return;
    }
    qputenv("DBUS_SESSION_BUS_ADDRESS", m_bus.readLine().trimmed());
    m_isRunning = keyring == Keyring::none || startKeyring(true);
}

KeyringSession::~KeyringSession()
{
    stopKeyring();
    endProcess(m_bus);
    qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent");
}

void KeyringSession::restartLocked()
{
    stopKeyring();
    m_isRunning = startKeyring(false);
}

bool KeyringSession::startKeyring(bool unlock)
{
    QStringList arguments{QStringLiteral("--foreground"), QStringLiteral("--components=secrets")};
    if (unlock) {
        arguments.append(QStringLiteral("--unlock"));
    }
    m_keyring.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_keyring.start(QStringLiteral("gnome-keyring-daemon"), arguments);
    if (!m_keyring.waitForStarted(patienceMilliseconds)) {
        return false;
    }
    if (unlock) {
        m_keyring.write("password of the test's keyring");
    }
    m_keyring.closeWriteChannel();
    // It is ready when its name is on the bus.
    QProcess wait;
    wait.start(QStringLiteral("gdbus"),
               {QStringLiteral("wait"), QStringLiteral("--session"), QStringLiteral("--timeout=20"),
                QStringLiteral("org.freedesktop.secrets")});
    return wait.waitForFinished(patienceMilliseconds) && wait.exitCode() == 0;
}

void KeyringSession::stopKeyring()
{
    endProcess(m_keyring);
}
