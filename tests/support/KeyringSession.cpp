#include "tests/support/KeyringSession.h"

#include <QDir>
#include <QFile>

#include <csignal>

namespace {

constexpr int patienceMilliseconds = 20000;

QString askedMark()
{
    return QDir::homePath() + QLatin1String("/prompter-was-asked");
}

} // namespace

KeyringSession::KeyringSession(Keyring keyring)
    : m_bus(PrivateBus::Kind::session)
{
    const QString runtime = QDir::homePath() + QLatin1String("/run");
    QDir().mkpath(runtime);
    QFile::setPermissions(runtime,
                          QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
    qputenv("XDG_RUNTIME_DIR", runtime.toUtf8());
    if (!m_bus.isRunning()) {
        return;
    }
    m_isRunning = keyring == Keyring::none || startKeyring(true);
}

KeyringSession::~KeyringSession()
{
    endProcess(m_prompter);
    stopKeyring();
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
        startWithTest(m_prompter, QStringLiteral("/usr/libexec/gcr-prompter"), {});
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
    endProcess(m_keyring);
}

void KeyringSession::stopBus()
{
    m_bus.stop();
}

bool KeyringSession::startKeyring(bool unlock)
{
    QStringList arguments{QStringLiteral("--foreground"), QStringLiteral("--components=secrets")};
    if (unlock) {
        arguments.append(QStringLiteral("--unlock"));
    }
    startWithTest(m_keyring, QStringLiteral("gnome-keyring-daemon"), arguments);
    if (!m_keyring.waitForStarted(patienceMilliseconds)) {
        return false;
    }
    if (unlock) {
        m_keyring.write("password of the test's keyring");
        // Without a wait it would only go out when this process's event loop runs.
        m_keyring.waitForBytesWritten(patienceMilliseconds);
    }
    m_keyring.closeWriteChannel();
    return m_bus.waitForName(QStringLiteral("org.freedesktop.secrets"));
}

bool KeyringSession::startScript(QProcess &process, const QString &script,
                                 const QStringList &arguments)
{
    // Debian's own Python is the one that has its D-Bus packages.
    startWithTest(process, QStringLiteral("/usr/bin/python3"),
                  QStringList{QLatin1String(VELLOMAR_SOURCE_DIR "/tests/support/") + script} +
                      arguments);
    // It writes one line when it is ready.
    return process.waitForStarted(patienceMilliseconds) &&
           process.waitForReadyRead(patienceMilliseconds);
}
