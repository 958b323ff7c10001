#include "tests/support/Screen.h"

#include <QDir>
#include <QFile>

#include <csignal>

#include <sys/prctl.h>

namespace {

constexpr int patienceMilliseconds = 60000;

} // namespace

void makeRuntimeFolder()
{
    if (qEnvironmentVariableIsEmpty("XDG_RUNTIME_DIR")) {
        const QString folder = QDir::homePath() + QLatin1String("/run");
        QDir().mkpath(folder);
        QFile::setPermissions(folder, QFileDevice::ReadOwner | QFileDevice::WriteOwner |
                                          QFileDevice::ExeOwner);
        qputenv("XDG_RUNTIME_DIR", folder.toUtf8());
    }
}

Screen::Screen(QSize size, const QStringList &options)
{
    makeRuntimeFolder();
    m_server.setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGKILL); });
    // It finds a free number by itself.
    m_server.start(QStringLiteral("Xvfb"),
                   QStringList{QStringLiteral("-displayfd"), QStringLiteral("1"),
                               QStringLiteral("-screen"), QStringLiteral("0"),
                               QStringLiteral("%1x%2x24").arg(size.width()).arg(size.height()),
                               QStringLiteral("-nolisten"), QStringLiteral("tcp"),
                               QStringLiteral("-noreset")} +
                       options);
    if (!m_server.waitForReadyRead(patienceMilliseconds)) {
        return;
    }
    qputenv("DISPLAY", ':' + m_server.readLine().trimmed());
    qputenv("QT_QPA_PLATFORM", "xcb");
    m_isRunning = true;
}

Screen::~Screen()
{
    m_server.terminate();
    if (!m_server.waitForFinished(patienceMilliseconds)) {
        m_server.kill();
        m_server.waitForFinished(patienceMilliseconds);
    }
    qunsetenv("DISPLAY");
}
