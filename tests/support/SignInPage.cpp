#include "tests/support/SignInPage.h"

#include <QFile>

#include <unistd.h>

namespace {

constexpr auto pathVariable = "PATH";
constexpr auto pageVariable = "RCLONE_DRIVE_AUTH_URL";
constexpr auto tokenVariable = "RCLONE_DRIVE_TOKEN_URL";

QString words(SignInPage::Answer answer)
{
    switch (answer) {
    case SignInPage::Answer::grant:
        return QStringLiteral("grant");
    case SignInPage::Answer::refuse:
        return QStringLiteral("refuse");
    case SignInPage::Answer::deny:
        return QStringLiteral("deny");
    case SignInPage::Answer::empty:
        return QStringLiteral("empty");
    case SignInPage::Answer::stall:
        return QStringLiteral("stall");
    }
    return {};
}

QByteArray script(SignInPage::Browser browser)
{
    switch (browser) {
    case SignInPage::Browser::follows:
        return "exec /usr/bin/python3 -c 'import sys, urllib.request\n"
               "urllib.request.urlopen(sys.argv[1])' \"$1\"\n";
    case SignInPage::Browser::unattended:
        return "exit 0\n";
    case SignInPage::Browser::broken:
        return "exit 4\n";
    }
    return {};
}

} // namespace

SignInPage::SignInPage(Answer answer, Browser browser)
    : m_path(qgetenv(pathVariable))
{
    putBrowser(browser);
    const QByteArray address = "http://127.0.0.1:" + m_server.portText().toUtf8();
    qputenv(pageVariable, address + "/page");
    qputenv(tokenVariable, address + "/token");
    m_isRunning = m_server.start(
        QStringLiteral("/usr/bin/python3"),
        {QStringLiteral(VELLOMAR_SOURCE_DIR "/tests/support/authorisation_server.py"),
         m_server.portText(), words(answer)});
}

bool SignInPage::isApart()
{
    return ::getppid() == 1;
}

SignInPage::~SignInPage()
{
    qunsetenv(tokenVariable);
    qunsetenv(pageVariable);
    qputenv(pathVariable, m_path);
}

bool SignInPage::isOpened() const
{
    return QFile::exists(m_server.path(QStringLiteral("opened")));
}

QStringList SignInPage::questions()
{
    return m_server.output().split(u'\n', Qt::SkipEmptyParts);
}

QStringList SignInPage::questions(const char *kind)
{
    QStringList result = questions();
    result.removeIf(
        [kind](const QString &line) { return !line.startsWith(QLatin1String(kind) + u' '); });
    return result;
}

// rclone opens a page by the name of the desktop's own program for that.
void SignInPage::putBrowser(Browser browser)
{
    const QString folder = m_server.makeFolder(QStringLiteral("browser"));
    const QString program =
        m_server.write(QStringLiteral("browser/xdg-open"),
                       "#!/bin/sh\n: > '" + m_server.path(QStringLiteral("opened")).toUtf8() +
                           "'\n" + script(browser));
    QFile::setPermissions(program,
                          QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
    qputenv(pathVariable, folder.toUtf8() + ':' + m_path);
}
