#include "tests/support/KeyringSession.h"

#include <QDir>
#include <QFile>

#include <csignal>

#include <sys/prctl.h>

namespace {

constexpr int patienceMilliseconds = 20000;

// No <servicedir>: nothing is started but what a test starts.
constexpr const char *busConfiguration = R"(<busconfig>
  <type>session</type>
  <listen>unix:tmpdir=/tmp</listen>
  <policy context="default">
    <allow send_destination="*"/>
    <allow eavesdrop="true"/>
    <allow own="*"/>
  </policy>
</busconfig>
)";

// A test that crashes leaves no process behind either.
void start(QProcess &process, const QString &program, const QStringList &arguments)
{
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGKILL); });
    process.start(program, arguments);
}

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

QString askedMark()
{
    return QDir::homePath() + QLatin1String("/prompter-was-asked");
}

} // namespace

KeyringSession::KeyringSession(Keyring keyring)
{
    const QString runtime = QDir::homePath() + QLatin1String("/run");
    QDir().mkpath(runtime);
    QFile::setPermissions(runtime,
                          QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
    qputenv("XDG_RUNTIME_DIR", runtime.toUtf8());
    QFile configuration(runtime + QLatin1String("/bus.conf"));
    if (!configuration.open(QIODevice::WriteOnly) || configuration.write(busConfiguration) < 0) {
        return;
    }
    configuration.close();
    start(m_bus, QStringLiteral("dbus-daemon"),
          {QLatin1String("--config-file=") + configuration.fileName(), QStringLiteral("--nofork"),
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
    endProcess(m_prompter);
    stopKeyring();
    stopBus();
    qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent");
}

void KeyringSession::restartLocked()
{
    stopKeyring();
    m_isRunning = m_isRunning && startKeyring(false);
}

void KeyringSession::restartUnlocked()
{
    stopKeyring();
    m_isRunning = m_isRunning && startKeyring(true);
}

void KeyringSession::startPrompter(Prompter prompter)
{
    if (prompter == Prompter::system) {
        start(m_prompter, QStringLiteral("/usr/libexec/gcr-prompter"), {});
        // It ends at once where there is no screen, and that is an answer too.
        m_isRunning = m_isRunning && m_prompter.waitForStarted(patienceMilliseconds);
        return;
    }
    const QString manner =
        prompter == Prompter::refusing ? QStringLiteral("refuse") : QStringLiteral("silent");
    m_isRunning = m_isRunning &&
                  startScript(m_prompter, QStringLiteral("prompter.py"), {manner, askedMark()});
}

bool KeyringSession::wasAsked() const
{
    return QFile::exists(askedMark());
}

void KeyringSession::startHidingService(const QStringList &arguments)
{
    m_isRunning = m_isRunning &&
                  startScript(m_keyring, QStringLiteral("hiding_secret_service.py"), arguments);
}

void KeyringSession::pauseKeyring()
{
    ::kill(static_cast<pid_t>(m_keyring.processId()), SIGSTOP);
}

void KeyringSession::stopKeyring()
{
    if (m_keyring.state() != QProcess::NotRunning) {
        ::kill(static_cast<pid_t>(m_keyring.processId()), SIGCONT); // it may be paused
    }
    endProcess(m_keyring);
}

void KeyringSession::stopBus()
{
    endProcess(m_bus);
}

bool KeyringSession::startKeyring(bool unlock)
{
    QStringList arguments{QStringLiteral("--foreground"), QStringLiteral("--components=secrets")};
    if (unlock) {
        arguments.append(QStringLiteral("--unlock"));
    }
    start(m_keyring, QStringLiteral("gnome-keyring-daemon"), arguments);
    if (!m_keyring.waitForStarted(patienceMilliseconds)) {
        return false;
    }
    if (unlock) {
        m_keyring.write("password of the test's keyring");
        // Without a wait it would only go out when this process's event loop runs.
        m_keyring.waitForBytesWritten(patienceMilliseconds);
    }
    m_keyring.closeWriteChannel();
    return waitForName(QStringLiteral("org.freedesktop.secrets"));
}

bool KeyringSession::startScript(QProcess &process, const QString &script,
                                 const QStringList &arguments)
{
    // Debian's own Python is the one that has its D-Bus packages.
    start(process, QStringLiteral("/usr/bin/python3"),
          QStringList{QLatin1String(VELLOMAR_SOURCE_DIR "/tests/support/") + script} + arguments);
    // It writes one line when it is ready.
    return process.waitForStarted(patienceMilliseconds) &&
           process.waitForReadyRead(patienceMilliseconds);
}

bool KeyringSession::waitForName(const QString &name)
{
    QProcess wait;
    start(wait, QStringLiteral("gdbus"),
          {QStringLiteral("wait"), QStringLiteral("--session"), QStringLiteral("--timeout=20"),
           name});
    return wait.waitForFinished(patienceMilliseconds) && wait.exitCode() == 0;
}
