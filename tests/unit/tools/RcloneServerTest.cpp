#include "tests/unit/tools/ServerFixture.h"

namespace {

class RcloneServer : public ServerFixture
{
protected:
    /// Connects, expects success, and gives the section that was stored.
    QByteArray section(const QString &secret = {})
    {
        EXPECT_EQ(Rclone::connectServer(server, secret), std::nullopt);
        return stored;
    }
    static QByteArray knownHostsLine() { return "known_hosts_file = " + knownHosts().toUtf8(); }

    /// Expects an outcome after which neither section nor host keys are there.
    void expectFailure(const QString &message)
    {
        EXPECT_EQ(Rclone::connectServer(server, QStringLiteral("secret")), message);
        EXPECT_FALSE(isKnown());
    }
    const QString notConfigured = QStringLiteral("Configurazione non riuscita");
    const QString unreachable =
        QStringLiteral("Server non raggiungibile: controlla indirizzo e porta.");
};

TEST_F(RcloneServer, anSFTPServerHasItsKeysInOrder)
{
    server.serverPort = QStringLiteral("2222");
    server.serverKeyFile = QStringLiteral("/keys/id");
    EXPECT_EQ(section(QStringLiteral("secret")),
              "\n[vellomar-server]\ntype = sftp\nhost = host\nuser = anna\nport = 2222\n"
              "pass = scrambled\nkey_file = /keys/id\n" +
                  knownHostsLine() + '\n');
}

TEST_F(RcloneServer, anSFTPServerHasNoKeyForWhatIsNotGiven)
{
    EXPECT_EQ(section(), "\n[vellomar-server]\ntype = sftp\nhost = host\nuser = anna\n" +
                             knownHostsLine() + '\n');
}

TEST_F(RcloneServer, anSFTPServerMayHaveAKeyFileAlone)
{
    server.serverKeyFile = QStringLiteral("/keys/id");
    EXPECT_EQ(section(), "\n[vellomar-server]\ntype = sftp\nhost = host\nuser = anna\n"
                         "key_file = /keys/id\n" +
                             knownHostsLine() + '\n');
}

TEST_F(RcloneServer, anAddressOfIPv6HasBracketsForRcloneAndNoneForSsh)
{
    for (const char *host : {"fe80::1%eth0", "[fe80::1%eth0]"}) {
        server.serverHost = QString::fromUtf8(host);
        EXPECT_EQ(section(),
                  "\n[vellomar-server]\ntype = sftp\nhost = [fe80::1%eth0]\nuser = anna\n" +
                      knownHostsLine() + '\n');
        EXPECT_TRUE(
            commands().contains(QStringLiteral("/usr/bin/ssh-keyscan -T 10 -- fe80::1%eth0")));
    }
    server.serverKind = ServerKind::Smb;
    EXPECT_EQ(section(), "\n[vellomar-server]\ntype = smb\nhost = [fe80::1%eth0]\nuser = anna\n");
    server.serverHost = QStringLiteral("host:1"); // no address
    EXPECT_EQ(section(), "\n[vellomar-server]\ntype = smb\nhost = host:1\nuser = anna\n");
}

TEST_F(RcloneServer, anSMBServerHasItsKeysInOrderAndNoHostKeys)
{
    server.serverKind = ServerKind::Smb;
    server.serverPort = QStringLiteral("4455");
    server.serverKeyFile = QStringLiteral("/keys/id");
    EXPECT_EQ(section(QStringLiteral("secret")),
              "\n[vellomar-server]\ntype = smb\nhost = host\nuser = anna\nport = 4455\n"
              "pass = scrambled\n");
    EXPECT_FALSE(commands().contains(scan));
    EXPECT_FALSE(isKnown());
}

TEST_F(RcloneServer, anSMBServerHasNoKeyForWhatIsNotGiven)
{
    server.serverKind = ServerKind::Smb;
    EXPECT_EQ(section(), "\n[vellomar-server]\ntype = smb\nhost = host\nuser = anna\n");
    EXPECT_EQ(commands(), QStringList({deletion, show, encryption, trial}));
}

TEST_F(RcloneServer, aWebDAVServerHasItsKeysInOrder)
{
    server.serverKind = ServerKind::Webdav;
    server.serverHost = QStringLiteral("https://host/dav");
    server.serverPort = QStringLiteral("8080");
    server.serverKeyFile = QStringLiteral("/keys/id");
    EXPECT_EQ(section(QStringLiteral("secret")),
              "\n[vellomar-server]\ntype = webdav\nurl = https://host/dav\nvendor = other\n"
              "user = anna\npass = scrambled\n");
    EXPECT_EQ(commands(), QStringList({deletion, scrambling, show, encryption, trial}));
}

TEST_F(RcloneServer, aWebDAVServerWithoutASecretHasAnEmptyPassword)
{
    server.serverKind = ServerKind::Webdav;
    EXPECT_EQ(section(), "\n[vellomar-server]\ntype = webdav\nurl = host\nvendor = other\n"
                         "user = anna\npass = \n");
    EXPECT_FALSE(commands().contains(scrambling));
}

TEST_F(RcloneServer, anS3ServerHasItsKeysInOrderAndItsSecretAsTyped)
{
    server.serverKind = ServerKind::S3;
    server.serverPort = QStringLiteral("9000");
    server.serverKeyFile = QStringLiteral("/keys/id");
    EXPECT_EQ(section(QStringLiteral(" the+secret/= ")),
              "\n[vellomar-server]\ntype = s3\nprovider = Other\nendpoint = host\n"
              "access_key_id = anna\nsecret_access_key =  the+secret/= \n");
    EXPECT_EQ(commands(), QStringList({deletion, show, encryption, trial}));
}

TEST_F(RcloneServer, anS3ServerWithoutASecretHasAnEmptyOne)
{
    server.serverKind = ServerKind::S3;
    EXPECT_EQ(section(), "\n[vellomar-server]\ntype = s3\nprovider = Other\nendpoint = host\n"
                         "access_key_id = anna\nsecret_access_key = \n");
}

TEST_F(RcloneServer, blanksAroundHostUserAndPortDoNotCount)
{
    server.serverHost = QStringLiteral(" \thost  ");
    server.serverUser = QStringLiteral("  anna maria\t");
    server.serverPort = QStringLiteral(" 22 ");
    EXPECT_EQ(section(), "\n[vellomar-server]\ntype = sftp\nhost = host\nuser = anna maria\n"
                         "port = 22\n" +
                             knownHostsLine() + '\n');
    EXPECT_TRUE(commands().contains(QStringLiteral("/usr/bin/ssh-keyscan -T 10 -p 22 -- host")));
}

TEST_F(RcloneServer, aPortOfBlanksIsNone)
{
    server.serverPort = QStringLiteral("  ");
    EXPECT_FALSE(section().contains("port"));
    EXPECT_TRUE(commands().contains(scan));
}

TEST_F(RcloneServer, blanksAroundTheAddressOfOtherKindsDoNotCountEither)
{
    server.serverHost = QStringLiteral(" host ");
    server.serverUser = QStringLiteral(" anna ");
    for (const ServerKind kind : {ServerKind::Smb, ServerKind::Webdav, ServerKind::S3}) {
        server.serverKind = kind;
        const QByteArray content = section();
        EXPECT_TRUE(content.contains(" = host\n")) << content.constData();
        EXPECT_TRUE(content.contains(" = anna\n")) << content.constData();
    }
}

TEST_F(RcloneServer, aTildeInFrontOfTheKeyFileIsTheHome)
{
    const QByteArray home = Paths::home().toUtf8();
    const QList<std::pair<const char *, QByteArray>> rows{
        {"~/.ssh/id_ed25519", home + "/.ssh/id_ed25519"},
        {"~", home},
        {"/a/~/b", "/a/~/b"},
        {" ~/id ", " ~/id "},
        {"~/a b ", home + "/a b "},
    };
    for (const auto &[typed, expected] : rows) {
        server.serverKeyFile = QString::fromUtf8(typed);
        EXPECT_TRUE(section().contains(QByteArray("\nkey_file = " + expected + '\n')))
            << stored.constData();
    }
}

TEST_F(RcloneServer, connectsInThisOrder)
{
    section(QStringLiteral("secret"));
    EXPECT_EQ(commands(), QStringList({deletion, scrambling, scan, show, encryption, trial}));
}

TEST_F(RcloneServer, everyCallWithTheFileHasAPipeOfItsOwnAndTheOthersNoEnvironment)
{
    section(QStringLiteral("secret"));
    QStringList pipes;
    for (const Call &call : calls) {
        if (call.words() == scan || call.words() == scrambling) {
            EXPECT_TRUE(call.env.isEmpty()) << qPrintable(call.words());
            continue;
        }
        EXPECT_EQ(call.env.size(), 2) << qPrintable(call.words());
        EXPECT_EQ(call.config() == configFile(), call.words() != encryption);
        EXPECT_FALSE(pipes.contains(call.passwordCommand()));
        pipes.append(call.passwordCommand());
    }
    EXPECT_EQ(pipes.size(), 4);
}

TEST_F(RcloneServer, theSecretGoesToStandardInputAloneAndNowhereElse)
{
    for (const ServerKind kind :
         {ServerKind::Sftp, ServerKind::Smb, ServerKind::Webdav, ServerKind::S3}) {
        server.serverKind = kind;
        section(QStringLiteral("well hidden"));
    }
    for (const Call &call : calls) {
        EXPECT_EQ(call.input.has_value(), call.words() == scrambling) << qPrintable(call.words());
        EXPECT_EQ(call.input.value_or(QStringLiteral("well hidden")),
                  QStringLiteral("well hidden"));
        EXPECT_FALSE(QStringList(call.arguments + call.env.values())
                         .join(u' ')
                         .contains(QLatin1String("hidden")));
    }
}

TEST_F(RcloneServer, aSecretThatCannotBeObscuredIsNoConfiguration)
{
    for (const ServerKind kind : {ServerKind::Sftp, ServerKind::Smb, ServerKind::Webdav}) {
        server.serverKind = kind;
        for (const ProcessResult &failing :
             {said(QStringLiteral("x"), 1), said(QStringLiteral(" \n"))}) {
            calls.clear();
            obscured = failing;
            expectFailure(notConfigured);
            EXPECT_EQ(commands(), QStringList({deletion, scrambling}));
        }
    }
    EXPECT_EQ(config(), envelope);
}

TEST_F(RcloneServer, anSFTPServerThatShowsNoKeyIsUnreachableAndNotTried)
{
    scanned = said(QStringLiteral("# host:22 SSH-2.0\n\n"));
    expectFailure(unreachable);
    EXPECT_EQ(commands(), QStringList({deletion, scrambling, scan}));
    EXPECT_EQ(config(), envelope);
}

TEST_F(RcloneServer, aStoreThatFailsIsTakenBack)
{
    shown = said(QString(), 1);
    expectFailure(notConfigured);
    EXPECT_EQ(commands(), QStringList({deletion, scrambling, scan, show, deletion}));
    calls.clear();
    shown = said(QString());
    encryptedCopy = said(QString(), 1);
    expectFailure(notConfigured);
    EXPECT_EQ(commands(), QStringList({deletion, scrambling, scan, show, encryption, deletion}));
    EXPECT_EQ(config(), envelope);
}

TEST_F(RcloneServer, anS3SecretWithALineFeedIsRefused)
{
    server.serverKind = ServerKind::S3;
    EXPECT_EQ(Rclone::connectServer(server, QStringLiteral("a\nb")), notConfigured);
    EXPECT_EQ(commands(), QStringList({deletion, deletion}));
    EXPECT_EQ(config(), envelope);
}

TEST_F(RcloneServer, aTrialThatFailsIsTakenBack)
{
    tested = {1, QString(), QStringLiteral("dial tcp: connection refused")};
    expectFailure(unreachable);
    EXPECT_EQ(commands(),
              QStringList({deletion, scrambling, scan, show, encryption, trial, deletion}));
}

TEST_F(RcloneServer, numbersInTheServersAddressRefuseNobody)
{
    server.serverHost = QStringLiteral("nas401.lan");
    for (const char *words :
         {"dial tcp 127.0.0.1:44010: connect: connection refused",
          "read tcp 10.0.40.3:54031->10.4.0.1:403: i/o timeout",
          "dial tcp [fe80::4030]:24031: connect: no route to host",
          "Propfind \"http://127.0.0.1:40100/dav403/\": dial tcp 127.0.0.1:40100: connect: "
          "connection refused",
          "dial tcp: lookup nas401.lan on 127.0.0.53:53: no such host",
          "dial tcp: lookup NAS401.LAN: i/o timeout", "dial nas401.lan:403: connection refused"}) {
        tested = {1, QString(), QString::fromUtf8(words)};
        expectFailure(unreachable);
    }
    tested = {1, QString(), QStringLiteral("Get \"http://nas401.lan/\": 403 Forbidden")};
    expectFailure(QStringLiteral("Accesso rifiutato: controlla utente e password."));
}

TEST_F(RcloneServer, aTrialThatFailsWithoutAWordIsUnreachable)
{
    for (const int status : {1, 3, 137, -1}) {
        tested = {status, QStringLiteral("403"), QString()};
        expectFailure(QStringLiteral("Server non raggiungibile"));
    }
}

TEST_F(RcloneServer, whatATrialSaysDoesNotCountWhenItEndsWell)
{
    tested = {0, QString(), QStringLiteral("NOTICE: 403 knownhosts timeout")};
    EXPECT_EQ(Rclone::connectServer(server, QStringLiteral("secret")), std::nullopt);
    EXPECT_TRUE(isKnown());
}

TEST_F(RcloneServer, anAttemptBeginsWithoutTheKeysOfTheOneBefore)
{
    writeKeys("old key\n");
    server.serverKind = ServerKind::Smb;
    section();
    EXPECT_FALSE(isKnown());
    EXPECT_EQ(commands().first(), deletion);
}

TEST_F(RcloneServer, disconnectingDeletesTheSectionAndTheHostKeys)
{
    writeKeys("key\n");
    Rclone::disconnectServer();
    EXPECT_EQ(commands(), QStringList({deletion}));
    EXPECT_EQ(calls.first().config(), configFile());
    EXPECT_FALSE(calls.first().passwordCommand().isEmpty());
    EXPECT_FALSE(isKnown());
}

TEST_F(RcloneServer, disconnectingDoesNotLookAtHowRcloneEnds)
{
    rclone = [](const Call &) { return ProcessResult{1, {}, {}}; };
    writeKeys("key\n");
    Rclone::disconnectServer();
    EXPECT_FALSE(isKnown());
    Rclone::disconnectServer(); // with nothing there
    EXPECT_EQ(commands(), QStringList({deletion, deletion}));
}

TEST_F(RcloneServer, disconnectingLivesWithKeysThatCannotBeRemoved)
{
    ASSERT_TRUE(QDir().mkpath(knownHosts() + QLatin1String("/in the way")));
    Rclone::disconnectServer();
    EXPECT_EQ(commands(), QStringList({deletion}));
}

TEST_F(RcloneServer, versioningIsRclonesWordForTheBucket)
{
    for (const char *word : {"Enabled", "Suspended", "Unversioned"}) {
        calls.clear();
        versioned = said(QLatin1String(" \n") + QLatin1String(word) + QLatin1String("\r\n\t"));
        EXPECT_EQ(Rclone::versioning(QStringLiteral("a bucket")), QLatin1String(word));
        ASSERT_EQ(calls.size(), 1);
        EXPECT_EQ(
            calls.first().arguments,
            QStringList({QStringLiteral("backend"), QStringLiteral("versioning"),
                         QStringLiteral("vellomar-server:a bucket"), QStringLiteral("--contimeout"),
                         QStringLiteral("10s"), QStringLiteral("--timeout"), QStringLiteral("20s"),
                         QStringLiteral("--retries"), QStringLiteral("1")}));
        EXPECT_EQ(calls.first().config(), configFile());
        EXPECT_FALSE(calls.first().passwordCommand().isEmpty());
    }
}

TEST_F(RcloneServer, versioningOfNoBucketRunsNothing)
{
    EXPECT_EQ(Rclone::versioning(QString()), std::nullopt);
    EXPECT_TRUE(calls.isEmpty());
}

TEST_F(RcloneServer, versioningThatFailsIsAbsent)
{
    for (const int status : {1, 3, -1}) {
        versioned = said(QStringLiteral("Enabled\n"), status);
        EXPECT_EQ(Rclone::versioning(QStringLiteral("bucket")), std::nullopt);
    }
}

TEST_F(RcloneServer, versioningWithoutAWordIsAnEmptyOne)
{
    versioned = said(QStringLiteral("\n"));
    EXPECT_EQ(Rclone::versioning(QStringLiteral("bucket")), QString());
}

} // namespace
