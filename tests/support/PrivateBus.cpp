#include "tests/support/PrivateBus.h"

#include <QDir>
#include <QFile>

#include <csignal>

#include <sys/prctl.h>

namespace {

constexpr int patienceMilliseconds = 20000;
constexpr const char *address[] = {"DBUS_SESSION_BUS_ADDRESS", "DBUS_SYSTEM_BUS_ADDRESS"};

// No <servicedir>: nothing is started but what a test starts.
constexpr const char *configuration = R"(<busconfig>
  <type>session</type>
  <listen>unix:tmpdir=/tmp</listen>
  <policy context="default">
    <allow user="*"/>
    <allow send_destination="*"/>
    <allow eavesdrop="true"/>
    <allow own="*"/>
  </policy>
</busconfig>
)";

} // namespace

PrivateBus::PrivateBus(Kind kind)
    : m_kind(kind)
{
    // By itself: a benchmark without the tests' library has a bus, too.
    QFile file(QDir::homePath() + QLatin1String("/bus.conf"));
    if (!file.open(QIODevice::WriteOnly) || file.write(configuration) < 0) {
        return;
    }
    file.close();
    startWithTest(m_process, QStringLiteral("dbus-daemon"),
                  {QLatin1String("--config-file=") + file.fileName(), QStringLiteral("--nofork"),
                   QStringLiteral("--print-address=1")});
    if (m_process.waitForStarted(patienceMilliseconds) &&
        m_process.waitForReadyRead(patienceMilliseconds)) {
        qputenv(address[static_cast<int>(kind)], m_process.readLine().trimmed());
        m_isRunning = true;
    }
}

PrivateBus::~PrivateBus()
{
    stop();
    qputenv(address[static_cast<int>(m_kind)], "unix:path=/nonexistent");
}

bool PrivateBus::waitForName(const QString &name) const
{
    return QProcess::execute(
               QStringLiteral("gdbus"),
               {QStringLiteral("wait"),
                m_kind == Kind::session ? QStringLiteral("--session") : QStringLiteral("--system"),
                QStringLiteral("--timeout=20"), name}) == 0;
}

void PrivateBus::stop()
{
    endProcess(m_process);
}

void startWithTest(QProcess &process, const QString &program, const QStringList &arguments)
{
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGKILL); });
    process.start(program, arguments);
}

void endProcess(QProcess &process)
{
    if (process.state() == QProcess::NotRunning) {
        return;
    }
    ::kill(static_cast<pid_t>(process.processId()), SIGCONT); // it may be paused
    process.terminate();
    if (!process.waitForFinished(patienceMilliseconds)) {
        process.kill();
        process.waitForFinished(patienceMilliseconds);
    }
}
