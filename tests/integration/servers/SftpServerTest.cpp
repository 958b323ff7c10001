#include "tests/support/SftpServer.h"
#include "tests/support/ServerStory.h"
#include "tools/FileDescriptor.h"
#include "tools/ProcessRunner.h"
#include "tools/Rclone.h"

#include <QProcess>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>

// A real OpenSSH server: logging in, being refused, and whole backups.

namespace {

// Runs every program for real, and notes it.
class NotedTools
{
public:
    [[nodiscard]] const QList<QStringList> &calls() const { return m_calls; }

private:
    ProcessResult run(const QString &path, const QStringList &arguments,
                      const ProcessOptions &options)
    {
        m_calls.append(QStringList{path} + arguments);
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        for (auto entry = options.env.cbegin(); entry != options.env.cend(); ++entry) {
            environment.insert(entry.key(), entry.value());
        }
        QProcess process;
        process.setProcessEnvironment(environment);
        process.start(path, arguments);
        process.write(options.input.value_or(QString()).toUtf8() + '\n');
        process.closeWriteChannel();
        process.waitForFinished(120000);
        return {process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()),
                QString::fromUtf8(process.readAllStandardError())};
    }

    QList<QStringList> m_calls;
    ScopedProcessRunner m_runner{
        [this](const QString &path, const QStringList &arguments, const ProcessOptions &options) {
            return run(path, arguments, options);
        }};
};

// The kernel accepts connections to it; it never answers.
class SilentServer
{
public:
    SilentServer()
        : m_socket(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0))
    {
        sockaddr_in address = {};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t length = sizeof(address);
        auto *const name = reinterpret_cast<sockaddr *>(&address);
        EXPECT_EQ(::bind(m_socket.get(), name, length), 0);
        EXPECT_EQ(::listen(m_socket.get(), 16), 0);
        EXPECT_EQ(::getsockname(m_socket.get(), name, &length), 0);
        m_port = ntohs(address.sin_port);
    }

    [[nodiscard]] QString portText() const { return QString::number(m_port); }

private:
    FileDescriptor m_socket;
    quint16 m_port = 0;
};

class SftpServerTest : public ServerStory
{
protected:
    SftpServerTest()
    {
        EXPECT_TRUE(server.start()) << qPrintable(server.output());
        config.serverKind = ServerKind::Sftp;
        config.serverHost = QStringLiteral("127.0.0.1");
        config.serverPort = server.portText();
        config.serverUser = SftpServer::user();
    }

    static QString refused() { return QString::fromLatin1(accessText); }
    static QString unreachable() { return QString::fromLatin1(unreachableText); }

    SftpServer server;
};

TEST_F(SftpServerTest, aPasswordServesForAWholeLife)
{
    expectWholeLife(SftpServer::password());
    EXPECT_EQ(snapshotCount(server.data() + QLatin1String("/backups/a mac")), 1);
}

TEST_F(SftpServerTest, anAddressOfIPv6ConnectsWithAndWithoutBrackets)
{
    for (const char *host : {"::1", "[::1]", " [::1] "}) {
        config.serverHost = QString::fromUtf8(host);
        EXPECT_EQ(connect(SftpServer::password()), std::nullopt) << host;
        EXPECT_EQ(section().value(QLatin1String("host")), QStringLiteral("[::1]"));
        EXPECT_EQ(section().value(QLatin1String("port")), server.portText());
    }
    EXPECT_EQ(connect(QStringLiteral("not the password")), refused());
    expectNothingLeft();
}

TEST_F(SftpServerTest, anAddressOfIPv6ServesForAWholeLife)
{
    config.serverHost = QStringLiteral("::1");
    expectWholeLife(SftpServer::password());
}

TEST_F(SftpServerTest, aKeyUnderTheHomeServesForAWholeLife)
{
    ASSERT_TRUE(server.makeKey(folder(QStringLiteral(".ssh")) + QLatin1String("/id_ed25519")));
    config.serverKeyFile = QStringLiteral("~/.ssh/id_ed25519");
    expectWholeLife({});
    EXPECT_EQ(snapshotCount(server.data() + QLatin1String("/backups/a mac")), 1);
}

TEST_F(SftpServerTest, theSectionHoldsWhatWasTypedWithoutTheBlanksAround)
{
    const QString key = folder(QStringLiteral("keys")) + QLatin1String("/a key");
    ASSERT_TRUE(server.makeKey(key));
    config.serverHost = QStringLiteral(" 127.0.0.1\t");
    config.serverPort = u' ' + server.portText() + u' ';
    config.serverUser = QStringLiteral("  anna ");
    config.serverKeyFile = key;
    ASSERT_EQ(connect(), std::nullopt);
    EXPECT_EQ(section().value(QLatin1String("host")), QStringLiteral("127.0.0.1"));
    EXPECT_EQ(section().value(QLatin1String("port")), server.portText());
    EXPECT_EQ(section().value(QLatin1String("user")), QStringLiteral("anna"));
    EXPECT_EQ(section().value(QLatin1String("key_file")), key);
    EXPECT_EQ(section().value(QLatin1String("known_hosts_file")),
              Paths::supportFile(QStringLiteral("known_hosts")));
    EXPECT_FALSE(section().contains(QLatin1String("pass")));
}

TEST_F(SftpServerTest, aWrongPasswordIsRefusedAndLeavesNothing)
{
    EXPECT_EQ(connect(QStringLiteral("not the password")), refused());
    expectNothingLeft();
}

TEST_F(SftpServerTest, aWrongUserIsRefusedAndLeavesNothing)
{
    config.serverUser = QStringLiteral("bruno");
    EXPECT_EQ(connect(SftpServer::password()), refused());
    expectNothingLeft();
}

TEST_F(SftpServerTest, aKeyThatTheServerDoesNotKnowIsRefusedAndLeavesNothing)
{
    const QString key = home() + QLatin1String("/strange");
    ASSERT_TRUE(SftpServer::makeStrangeKey(key));
    config.serverKeyFile = key;
    EXPECT_EQ(connect(), refused());
    expectNothingLeft();
}

TEST_F(SftpServerTest, aKeyFileThatIsNotThereIsReportedInRclonesWordsAndLeavesNothing)
{
    config.serverKeyFile = QStringLiteral("~/.ssh/no such key");
    const std::optional<QString> failure = connect();
    ASSERT_TRUE(failure.has_value());
    EXPECT_TRUE(failure->contains(home() + QLatin1String("/.ssh/no such key")))
        << qPrintable(*failure);
    expectNothingLeft();
}

TEST_F(SftpServerTest, aFailedAttemptTakesTheEarlierConnectionAway)
{
    ASSERT_EQ(connect(SftpServer::password()), std::nullopt);
    EXPECT_TRUE(isThere("known_hosts"));
    EXPECT_EQ(connect(QStringLiteral("not the password")), refused());
    expectNothingLeft();
}

TEST_F(SftpServerTest, aPortThatNobodyListensOnIsUnreachable)
{
    config.serverPort = QString::number(Daemon::freePort());
    EXPECT_EQ(connect(SftpServer::password()), unreachable());
    expectNothingLeft();
}

TEST_F(SftpServerTest, aServerThatNeverAnswersIsUnreachableWithoutRcloneTryingIt)
{
    const SilentServer silent;
    config.serverPort = silent.portText();
    const NotedTools tools;
    EXPECT_EQ(connect(SftpServer::password()), unreachable());
    ASSERT_FALSE(tools.calls().isEmpty());
    EXPECT_EQ(tools.calls().last(),
              QStringList({QStringLiteral("/usr/bin/ssh-keyscan"), QStringLiteral("-T"),
                           QStringLiteral("10"), QStringLiteral("-p"), silent.portText(),
                           QStringLiteral("--"), QStringLiteral("127.0.0.1")}));
    for (const QStringList &call : tools.calls()) {
        EXPECT_FALSE(call.contains(QLatin1String("lsd"))) << qPrintable(call.join(u' '));
        EXPECT_FALSE(call.contains(QLatin1String("show"))) << qPrintable(call.join(u' '));
    }
    expectNothingLeft();
}

TEST_F(SftpServerTest, aPortThatIsNoNumberIsUnreachable)
{
    config.serverPort = QStringLiteral("-v");
    EXPECT_EQ(connect(SftpServer::password()), unreachable());
    expectNothingLeft();
}

TEST_F(SftpServerTest, aHostThatIsNoneIsUnreachable)
{
    for (const char *host : {"", "host with blanks", "::1::", "[]", "[::1", "no.such.host.invalid",
                             "127.0.0.1/path", "sftp://127.0.0.1"}) {
        config.serverHost = QString::fromUtf8(host);
        EXPECT_EQ(connect(SftpServer::password()), unreachable()) << host;
        expectNothingLeft();
    }
}

// Read as an option it would name a file of hosts to ask, and this one would answer.
TEST_F(SftpServerTest, aHostThatBeginsWithAHyphenIsNoOption)
{
    const QString hosts = home() + QLatin1String("/hosts");
    writeFile(hosts, "127.0.0.1\n");
    config.serverHost = QLatin1String("-f") + hosts;
    EXPECT_EQ(connect(SftpServer::password()), unreachable());
    expectNothingLeft();
}

} // namespace
