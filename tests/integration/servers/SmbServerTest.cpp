#include "tests/support/SmbServer.h"
#include "tests/support/Cycle.h"
#include "tests/support/ServerStory.h"
#include "tools/Rclone.h"

#include "state/StatusStore.h"

#include <gmock/gmock.h>

#include <QFileInfo>
#include <QProcess>

namespace {

using testing::Contains;
using testing::Each;
using testing::HasSubstr;

constexpr int patienceMilliseconds = 60000;

/// Runs the real programs in place of the runner for its own life, and notes what they were and
/// what they said.
class NotedRuns
{
public:
    [[nodiscard]] const QStringList &programs() const { return m_programs; }
    [[nodiscard]] const QString &errors() const { return m_errors; }

private:
    ProcessResult run(const QString &path, const QStringList &arguments,
                      const ProcessOptions &options)
    {
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        for (auto variable = options.env.cbegin(); variable != options.env.cend(); ++variable) {
            environment.insert(variable.key(), variable.value());
        }
        process.setProcessEnvironment(environment);
        process.start(path, arguments);
        process.write((options.input.value_or(QString()) + u'\n').toUtf8());
        process.closeWriteChannel();
        process.waitForFinished(patienceMilliseconds);
        const QString error = QString::fromUtf8(process.readAllStandardError());
        m_programs.append(QFileInfo(path).fileName());
        m_errors += error;
        return {.status = process.exitCode(),
                .standardOutput = QString::fromUtf8(process.readAllStandardOutput()),
                .standardError = error};
    }

    QStringList m_programs;
    QString m_errors;
    ScopedProcessRunner m_runner{
        [this](const QString &path, const QStringList &arguments, const ProcessOptions &options) {
            return run(path, arguments, options);
        }};
};

class Smb : public ServerStory
{
protected:
    Smb()
    {
        config.serverKind = ServerKind::Smb;
        config.serverHost = QStringLiteral("127.0.0.1");
        config.serverPath = SmbServer::share() + QLatin1String("/a mac");
    }

    void start(SmbServer &server)
    {
        ASSERT_TRUE(server.start()) << qPrintable(server.output());
        config.serverPort = server.portText();
        config.serverUser = server.user();
    }
};

TEST_F(Smb, aWholeLife)
{
    SmbServer server;
    start(server);
    expectWholeLife(server.password());
    EXPECT_EQ(snapshotCount(server.folder() + QLatin1String("/a mac")), 1);
}

TEST_F(Smb, blanksAroundHostUserAndPortDoNotCount)
{
    SmbServer server;
    start(server);
    config.serverHost = QStringLiteral(" 127.0.0.1\t");
    config.serverUser = QLatin1String("  ") + server.user() + QLatin1String(" \n");
    config.serverPort = u' ' + server.portText() + u' ';
    ASSERT_EQ(connect(server.password()), std::nullopt);
    QJsonObject kept = section();
    EXPECT_FALSE(kept.take(QLatin1String("pass")).toString().isEmpty());
    EXPECT_EQ(kept, (QJsonObject{{QStringLiteral("type"), QStringLiteral("smb")},
                                 {QStringLiteral("host"), QStringLiteral("127.0.0.1")},
                                 {QStringLiteral("user"), server.user()},
                                 {QStringLiteral("port"), server.portText()}}));
}

TEST_F(Smb, aUserWithoutPasswordHasNoneInTheSection)
{
    SmbServer server{QString()};
    start(server);
    ASSERT_EQ(connect(), std::nullopt);
    EXPECT_EQ(section(), (QJsonObject{{QStringLiteral("type"), QStringLiteral("smb")},
                                      {QStringLiteral("host"), QStringLiteral("127.0.0.1")},
                                      {QStringLiteral("user"), server.user()},
                                      {QStringLiteral("port"), server.portText()}}));
}

TEST_F(Smb, noHostKeyIsAskedFor)
{
    SmbServer server;
    start(server);
    NotedRuns noted;
    ASSERT_EQ(connect(server.password()), std::nullopt);
    EXPECT_THAT(noted.programs(), Contains(QStringLiteral("rclone")));
    EXPECT_THAT(noted.programs(), Each(QStringLiteral("rclone")));
    EXPECT_TRUE(section().value(QLatin1String("known_hosts_file")).isUndefined());
    EXPECT_FALSE(isThere("known_hosts"));
}

TEST_F(Smb, aWrongPasswordIsRefused)
{
    SmbServer server;
    start(server);
    EXPECT_EQ(refusal(QStringLiteral("not the password")), accessText);
    EXPECT_EQ(refusal({}), accessText);
}

TEST_F(Smb, aWrongUserIsRefused)
{
    SmbServer server;
    start(server);
    config.serverUser = QStringLiteral("nobody knows me");
    EXPECT_EQ(refusal(server.password()), accessText);
}

TEST_F(Smb, aServerThatIsDownIsUnreachable)
{
    SmbServer server;
    start(server);
    server.stop();
    EXPECT_EQ(refusal(server.password()), unreachableText);
}

TEST_F(Smb, anotherPortThanTheServersIsUnreachable)
{
    SmbServer server;
    start(server);
    config.serverPort = QString::number(Daemon::freePort());
    EXPECT_EQ(refusal(server.password()), unreachableText);
}

TEST_F(Smb, withoutPortThePortOfTheProtocolIsTried)
{
    // An address of this machine on which nothing listens.
    config.serverHost = QStringLiteral("127.9.8.7");
    config.serverUser = QStringLiteral("anna");
    NotedRuns noted;
    EXPECT_EQ(refusal(QStringLiteral("secret")), unreachableText);
    EXPECT_THAT(noted.errors().toStdString(), HasSubstr("127.9.8.7:445:"));
}

TEST_F(Smb, aPortThatIsNoNumberIsReportedAsByRclone)
{
    SmbServer server;
    start(server);
    config.serverPort = QStringLiteral("abc");
    EXPECT_THAT(refusal(server.password()), HasSubstr("unknown port"));
}

TEST_F(Smb, aShareThatIsNotThereFailsInTheCycleAndTheDiskIsDone)
{
    SmbServer server;
    start(server);
    config.localEnabled = true;
    config.serverPath = QStringLiteral("no such share/a mac");
    saveSettings();
    // The list of shares is all that the connection needs.
    ASSERT_EQ(connect(server.password()), std::nullopt);
    EXPECT_EQ(Cycle().run(), 1);
    const QList<RunRecord> history = StatusStore::loadHistory();
    ASSERT_EQ(history.size(), 2);
    EXPECT_EQ(history[1].destination, DestinationID::Local);
    EXPECT_EQ(history[1].outcome, Outcome::Ok);
    EXPECT_EQ(history[0].destination, DestinationID::Server);
    EXPECT_EQ(history[0].outcome, Outcome::Failed);
    EXPECT_THAT(
        history[0].message.toStdString(),
        HasSubstr("unable to open repository at rclone:vellomar-server:no such share/a mac"));
    EXPECT_EQ(snapshotCount(repository), 1);
}

} // namespace
