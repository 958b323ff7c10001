#include "tests/support/Cycle.h"
#include "tests/support/ServerStory.h"
#include "tests/support/SftpServer.h"
#include "tools/Rclone.h"
#include "tools/RcloneLimits.h"

#include "state/StatusStore.h"

#include <QFileInfo>

// The host key of a real OpenSSH server: taken at first contact, and the only one from then on.

namespace {

class SftpHostKey : public ServerStory
{
protected:
    SftpHostKey()
    {
        EXPECT_TRUE(server.start()) << qPrintable(server.output());
        config.serverKind = ServerKind::Sftp;
        config.serverHost = QStringLiteral("127.0.0.1");
        config.serverPort = server.portText();
        config.serverUser = SftpServer::user();
    }

    static QString knownHosts() { return Paths::supportFile(QStringLiteral("known_hosts")); }

    /// What known_hosts must be with the server's present key.
    [[nodiscard]] QByteArray expectedHosts() const
    {
        return "[127.0.0.1]:" + server.portText().toUtf8() + ' ' + server.hostKey() + '\n';
    }

    /// Stores a connection as it was before host keys were kept.
    void storeOldSection() const
    {
        const auto password = Rclone::obscure(SftpServer::password());
        ASSERT_TRUE(password.has_value());
        ASSERT_TRUE(
            Rclone::store(Rclone::serverRemote, {{QStringLiteral("type"), QStringLiteral("sftp")},
                                                 {QStringLiteral("host"), config.serverHost},
                                                 {QStringLiteral("user"), config.serverUser},
                                                 {QStringLiteral("port"), config.serverPort},
                                                 {QStringLiteral("pass"), *password}}));
    }

    /// Looks into the server by the connection that is there; absent on success.
    static std::optional<QString> look()
    {
        const auto result =
            Rclone::run(QStringList{QStringLiteral("lsd"), Rclone::serverRemote + u':'} +
                        RcloneLimits::shortQuery());
        if (result && result->status == 0) {
            return std::nullopt;
        }
        return Rclone::serverError(result ? result->standardError : QString());
    }

    static QString otherKey()
    {
        return QStringLiteral("Il server si presenta con una chiave diversa da quella registrata. "
                              "Se non l'hai cambiato tu, non collegarti da questa rete; altrimenti "
                              "scollega e ricollega il server.");
    }

    SftpServer server;
};

TEST_F(SftpHostKey, knownHostsIsForItsOwnerAloneAndReplacedWhole)
{
    writeSupportFile("known_hosts", "another.host ssh-ed25519 AAAA\n");
    ASSERT_TRUE(
        QFile::setPermissions(knownHosts(), QFileDevice::ReadOwner | QFileDevice::ReadGroup |
                                                QFileDevice::ReadOther | QFileDevice::WriteOwner));
    ASSERT_TRUE(Rclone::trustHost(config.serverHost, config.serverPort));
    EXPECT_EQ(readFile(knownHosts()), expectedHosts());
    EXPECT_EQ(QFileInfo(knownHosts()).permissions() &
                  (QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner |
                   QFileDevice::ReadGroup | QFileDevice::WriteGroup | QFileDevice::ExeGroup |
                   QFileDevice::ReadOther | QFileDevice::WriteOther | QFileDevice::ExeOther),
              QFileDevice::ReadOwner | QFileDevice::WriteOwner);
}

TEST_F(SftpHostKey, aServerThatIsOffLeavesTheKnownOneAsItWas)
{
    ASSERT_EQ(connect(SftpServer::password()), std::nullopt);
    server.stop();
    EXPECT_FALSE(Rclone::trustHost(config.serverHost, config.serverPort));
    EXPECT_EQ(readFile(knownHosts()), expectedHosts());
}

TEST_F(SftpHostKey, anotherKeyIsRefusedUntilTheUserConnectsAnew)
{
    ASSERT_EQ(connect(SftpServer::password()), std::nullopt);
    EXPECT_EQ(readFile(knownHosts()), expectedHosts());
    EXPECT_EQ(look(), std::nullopt);
    const QByteArray before = readFile(knownHosts());

    ASSERT_TRUE(server.restartWithAnotherHostKey()) << qPrintable(server.output());
    EXPECT_EQ(look(), otherKey());
    EXPECT_EQ(look(), otherKey());
    EXPECT_EQ(readFile(knownHosts()), before);

    Rclone::disconnectServer();
    expectNothingLeft();
    ASSERT_EQ(connect(SftpServer::password()), std::nullopt);
    EXPECT_EQ(readFile(knownHosts()), expectedHosts());
    EXPECT_EQ(look(), std::nullopt);
}

TEST_F(SftpHostKey, anAddressOfIPv6RefusesAnotherKeyToo)
{
    config.serverHost = QStringLiteral("::1");
    ASSERT_EQ(connect(SftpServer::password()), std::nullopt);
    EXPECT_EQ(readFile(knownHosts()),
              "[::1]:" + server.portText().toUtf8() + ' ' + server.hostKey() + '\n');
    ASSERT_TRUE(server.restartWithAnotherHostKey()) << qPrintable(server.output());
    EXPECT_EQ(look(), otherKey());
}

TEST_F(SftpHostKey, aCycleRefusesAnotherKeyAndTheOtherDestinationsRun)
{
    ASSERT_EQ(connect(SftpServer::password()), std::nullopt);
    config.localEnabled = true;
    saveSettings();
    ASSERT_TRUE(server.restartWithAnotherHostKey()) << qPrintable(server.output());

    EXPECT_EQ(Cycle().run(), 1);
    const QList<RunRecord> history = StatusStore::loadHistory();
    ASSERT_EQ(history.size(), 2);
    EXPECT_EQ(history[1].destination, DestinationID::Local);
    EXPECT_EQ(history[1].outcome, Outcome::Ok);
    EXPECT_EQ(history[0].destination, DestinationID::Server);
    EXPECT_EQ(history[0].outcome, Outcome::Failed);
    EXPECT_EQ(history[0].message, QStringLiteral("Il server si presenta con una chiave diversa da "
                                                 "quella registrata: collegamento rifiutato"));
    EXPECT_EQ(contents(server.data()).size(), 0);
}

TEST_F(SftpHostKey, anOldConnectionIsPinnedAndThenRefusesAnotherKey)
{
    storeOldSection();
    ASSERT_EQ(look(), std::nullopt);
    const QJsonObject before = section();
    ASSERT_FALSE(before.contains(QLatin1String("known_hosts_file")));

    Rclone::pinServerIfNeeded();
    EXPECT_EQ(readFile(knownHosts()), expectedHosts());
    EXPECT_EQ(section().value(QLatin1String("known_hosts_file")), knownHosts());
    for (const char *key : {"type", "host", "user", "port", "pass"}) {
        EXPECT_EQ(section().value(QLatin1String(key)), before.value(QLatin1String(key))) << key;
    }
    EXPECT_EQ(look(), std::nullopt);
    EXPECT_TRUE(
        readFile(Paths::supportFile(QStringLiteral("rclone.conf"))).startsWith("# Encrypted"));

    ASSERT_TRUE(server.restartWithAnotherHostKey()) << qPrintable(server.output());
    EXPECT_EQ(look(), otherKey());
    // It is pinned already, so the next start takes no other key.
    Rclone::pinServerIfNeeded();
    EXPECT_EQ(look(), otherKey());
}

TEST_F(SftpHostKey, anOldConnectionWithAnEmptyFileOfHostsIsPinnedToo)
{
    storeOldSection();
    const auto emptied = Rclone::run({QStringLiteral("config"), QStringLiteral("update"),
                                      Rclone::serverRemote, QStringLiteral("known_hosts_file=")});
    ASSERT_TRUE(emptied && emptied->status == 0);
    Rclone::pinServerIfNeeded();
    EXPECT_EQ(section().value(QLatin1String("known_hosts_file")), knownHosts());
    EXPECT_EQ(look(), std::nullopt);
}

TEST_F(SftpHostKey, aServerThatIsOffIsPinnedAtALaterStart)
{
    storeOldSection();
    server.stop();
    Rclone::pinServerIfNeeded();
    EXPECT_FALSE(isThere("known_hosts"));
    EXPECT_FALSE(section().contains(QLatin1String("known_hosts_file")));

    ASSERT_TRUE(server.start()) << qPrintable(server.output());
    Rclone::pinServerIfNeeded();
    EXPECT_EQ(readFile(knownHosts()), expectedHosts());
    EXPECT_EQ(section().value(QLatin1String("known_hosts_file")), knownHosts());
}

TEST_F(SftpHostKey, whatIsPinnedOrNoSftpRunsNothing)
{
    QStringList calls;
    const auto callsOfPinning = [&calls] {
        calls.clear();
        // The state of the connections is at hand by then, in a file that is encrypted already.
        Rclone::encrypted();
        static_cast<void>(Rclone::remotes());
        const ScopedProcessRunner runner(
            [&calls](const QString &path, const QStringList &arguments, const ProcessOptions &) {
                calls.append(path + u' ' + arguments.join(u' '));
                return ProcessResult();
            });
        Rclone::pinServerIfNeeded();
        return calls;
    };
    EXPECT_EQ(callsOfPinning(), QStringList());
    ASSERT_EQ(connect(SftpServer::password()), std::nullopt);
    EXPECT_EQ(callsOfPinning(), QStringList());
    Rclone::disconnectServer();
    ASSERT_TRUE(
        Rclone::store(Rclone::serverRemote, {{QStringLiteral("type"), QStringLiteral("smb")},
                                             {QStringLiteral("host"), config.serverHost}}));
    EXPECT_EQ(callsOfPinning(), QStringList());
    Rclone::disconnectServer();
    ASSERT_TRUE(
        Rclone::store(Rclone::serverRemote, {{QStringLiteral("type"), QStringLiteral("sftp")}}));
    EXPECT_EQ(callsOfPinning(), QStringList());
}

} // namespace
