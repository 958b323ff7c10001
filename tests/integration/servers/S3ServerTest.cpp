#include "tests/support/S3Server.h"
#include "tests/support/ServerStory.h"
#include "tools/Rclone.h"

#include <QElapsedTimer>

namespace {

class S3 : public ServerStory
{
protected:
    S3()
    {
        config.serverKind = ServerKind::S3;
        config.serverHost = server.endpoint();
        config.serverUser = S3Server::accessKey();
    }

    void start() { ASSERT_TRUE(server.start()) << qPrintable(server.output()); }
    void startConnected()
    {
        start();
        ASSERT_EQ(connect(S3Server::secret()), std::nullopt);
    }
    /// Runs rclone with words that must succeed on the connected server.
    static void rclone(const QStringList &arguments)
    {
        const auto result = Rclone::run(arguments);
        ASSERT_TRUE(result);
        ASSERT_EQ(result->status, 0) << qPrintable(result->standardError);
    }
    static QString bucket() { return Rclone::serverRemote + QLatin1String(":backups"); }

    S3Server server;
};

TEST_F(S3, aWholeLife)
{
    start();
    expectWholeLife(S3Server::secret());
}

TEST_F(S3, theSessionsOwnAccessToAnotherStoreIsNoHindrance)
{
    start();
    qputenv("AWS_ACCESS_KEY_ID", "theirs");
    qputenv("AWS_SECRET_ACCESS_KEY", "theirs");
    qputenv("AWS_PROFILE", "theirs");
    qputenv("AWS_SHARED_CREDENTIALS_FILE", "/nonexistent");
    qputenv("AWS_CA_BUNDLE", "/nonexistent");
    qputenv("AWS_ENDPOINT_URL", "http://127.0.0.1:1");
    qputenv("AWS_REGION", "theirs");
    qputenv("RCLONE_S3_ENDPOINT", "http://127.0.0.1:1");
    qputenv("RCLONE_S3_ENV_AUTH", "true");
    expectWholeLife(S3Server::secret());
}

TEST_F(S3, aWrongSecretIsRefused)
{
    start();
    EXPECT_EQ(refusal(QStringLiteral("not the secret")), accessText);
    EXPECT_EQ(refusal(S3Server::secret() + u'x'), accessText);
}

TEST_F(S3, aWrongAccessKeyIsRefused)
{
    start();
    config.serverUser = S3Server::accessKey(QStringLiteral("berta"));
    EXPECT_EQ(refusal(S3Server::secret()), accessText);
}

TEST_F(S3, aServerThatIsDownIsUnreachable)
{
    EXPECT_EQ(refusal(S3Server::secret()), unreachableText);
}

TEST_F(S3, aRefusedAttemptTakesTheEarlierConnectionAway)
{
    startConnected();
    ASSERT_TRUE(Rclone::remotes().contains(Rclone::serverRemote));
    EXPECT_EQ(refusal(QStringLiteral("not the secret")), accessText);
}

TEST_F(S3, theSecretIsKeptAsTypedAndOnlyInTheEnvelope)
{
    config.serverHost = QLatin1String(" \t") + server.endpoint() + QLatin1String(" ");
    config.serverUser = QLatin1String("  ") + S3Server::accessKey() + QLatin1String("\n");
    startConnected();
    EXPECT_EQ(Rclone::remotes().value(Rclone::serverRemote),
              (QJsonObject{{QStringLiteral("type"), QStringLiteral("s3")},
                           {QStringLiteral("provider"), QStringLiteral("Other")},
                           {QStringLiteral("endpoint"), server.endpoint()},
                           {QStringLiteral("access_key_id"), S3Server::accessKey()},
                           {QStringLiteral("secret_access_key"), S3Server::secret()}}));
    const QMap<QString, QByteArray> files = contents(Paths::support());
    EXPECT_TRUE(files.value(QStringLiteral("rclone.conf")).startsWith("# Encrypted"));
    for (auto file = files.cbegin(); file != files.cend(); ++file) {
        EXPECT_FALSE(file.value().contains(S3Server::secret().toUtf8())) << qPrintable(file.key());
    }
    EXPECT_FALSE(isThere("known_hosts"));
}

TEST_F(S3, theVersioningOfABucketIsItsWord)
{
    startConnected();
    rclone({QStringLiteral("mkdir"), bucket()});
    EXPECT_EQ(Rclone::versioning(QStringLiteral("backups")), QStringLiteral("Unversioned"));
    for (const QString &state : {QStringLiteral("Enabled"), QStringLiteral("Suspended")}) {
        rclone({QStringLiteral("backend"), QStringLiteral("versioning"), bucket(), state});
        EXPECT_EQ(Rclone::versioning(QStringLiteral("backups")), state);
    }
}

TEST_F(S3, theVersioningOfABucketThatIsNotThereIsAbsent)
{
    startConnected();
    EXPECT_EQ(Rclone::versioning(QStringLiteral("nowhere")), std::nullopt);
}

TEST_F(S3, theVersioningForSomebodyWithoutAccessIsAbsent)
{
    startConnected();
    rclone({QStringLiteral("mkdir"), bucket()});
    rclone({QStringLiteral("config"), QStringLiteral("update"), Rclone::serverRemote,
            QStringLiteral("access_key_id=vellomar:berta")});
    EXPECT_EQ(Rclone::versioning(QStringLiteral("backups")), std::nullopt);
}

TEST_F(S3, theVersioningOfNoBucketAsksNobody)
{
    EXPECT_EQ(Rclone::versioning({}), std::nullopt);
    EXPECT_FALSE(isThere("rclone.conf")); // any run of rclone would have made it
}

TEST_F(S3, theVersioningOnAServerThatIsDownIsUnknownAtOnce)
{
    startConnected();
    server.stop();
    QElapsedTimer timer;
    timer.start();
    EXPECT_EQ(Rclone::versioning(QStringLiteral("backups")), std::nullopt);
    EXPECT_EQ(Rclone::folders(QStringLiteral("backups"), Rclone::serverRemote), QStringList());
    // With rclone's own ten tries in every round it would take minutes.
    EXPECT_LT(timer.elapsed(), 60000);
}

} // namespace
