#include "tests/unit/tools/ServerFixture.h"

#include <sys/stat.h>

// The host keys of an SFTP server: how they are taken, and how an older connection gets them.
namespace {

class PinServer : public ServerFixture
{
protected:
    /// Makes rclone report one remote with these settings, and pins.
    void pin(const char *settings, const char *name = "vellomar-server")
    {
        writeConfig(envelope, age += 100);
        calls.clear();
        dumped = said(QStringLiteral("{\"%1\":%2}")
                          .arg(QString::fromUtf8(name), QString::fromUtf8(settings)));
        Rclone::pinServerIfNeeded();
    }

    const QString update =
        QLatin1String("config update vellomar-server known_hosts_file=") + knownHosts();
    const QString host = QStringLiteral("host");
    int age = 100;
};

TEST_F(PinServer, aServerWithoutHostKeysGetsThem)
{
    pin(R"({"type":"sftp","host":"host","user":"anna"})");
    EXPECT_EQ(commands(), QStringList({dump, scan, update}));
    EXPECT_EQ(calls.last().arguments.size(), 4); // the path may hold blanks
    EXPECT_EQ(calls.last().config(), configFile());
    EXPECT_FALSE(calls.last().passwordCommand().isEmpty());
    EXPECT_TRUE(calls.at(1).env.isEmpty());
    EXPECT_EQ(keys(), "host ssh-ed25519 AAAA\n");
}

TEST_F(PinServer, theServersPortIsAskedWhereItHasOne)
{
    pin(R"({"type":"sftp","host":"host","port":"2222","known_hosts_file":""})");
    EXPECT_EQ(
        commands(),
        QStringList({dump, QStringLiteral("/usr/bin/ssh-keyscan -T 10 -p 2222 -- host"), update}));
    pin(R"({"type":"sftp","host":"host","port":""})");
    EXPECT_EQ(commands(), QStringList({dump, scan, update}));
    pin(R"({"type":"sftp","host":"host","port":2222})"); // no text, so none
    EXPECT_EQ(commands(), QStringList({dump, scan, update}));
}

TEST_F(PinServer, whatNeedsNoPinningIsLeftAlone)
{
    for (const char *settings :
         {R"({"type":"sftp","host":"host","known_hosts_file":"/x"})", R"({"type":"sftp"})",
          R"({"type":"sftp","host":5})", R"({"type":"sftp","host":null})", R"({"host":"host"})",
          R"({"type":"smb","host":"host"})", R"({"type":"SFTP","host":"host"})",
          R"({"type":5,"host":"host"})", "{}"}) {
        pin(settings);
        EXPECT_EQ(commands(), QStringList({dump})) << settings;
        EXPECT_FALSE(isKnown()) << settings;
    }
}

TEST_F(PinServer, anotherRemoteIsNotTheServer)
{
    pin(R"({"type":"sftp","host":"host"})", "vellomar");
    EXPECT_EQ(commands(), QStringList({dump}));
}

TEST_F(PinServer, aServerThatIsOffIsAskedAgainTheNextTime)
{
    scanned = said(QString());
    pin(R"({"type":"sftp","host":"host"})");
    EXPECT_EQ(commands(), QStringList({dump, scan}));
    EXPECT_FALSE(isKnown());
    scanned = said(QStringLiteral("host ssh-rsa BBBB\n"));
    pin(R"({"type":"sftp","host":"host"})");
    EXPECT_EQ(commands(), QStringList({dump, scan, update}));
}

TEST_F(PinServer, aConfigurationThatCannotBeEncryptedIsNotChanged)
{
    encryptedCopy = said(QString());
    writeConfig("[vellomar-server]\n", 50);
    dumped = said(QStringLiteral(R"({"vellomar-server":{"type":"sftp","host":"host"}})"));
    Rclone::pinServerIfNeeded();
    EXPECT_FALSE(commands().contains(update));
    EXPECT_FALSE(isKnown());
    EXPECT_EQ(config(), QByteArray("[vellomar-server]\n"));
}

TEST_F(PinServer, keysAreKeptInOrderWithoutCommentsAndEmptyLines)
{
    scanned = said(QStringLiteral("# host:22 SSH-2.0-OpenSSH_9.2\n\nhost ssh-rsa C\n#x\n"
                                  "host ssh-ed25519 A\n\nhost ecdsa B #1"));
    EXPECT_TRUE(Rclone::trustHost(host, QString()));
    EXPECT_EQ(keys(), "host ssh-rsa C\nhost ssh-ed25519 A\nhost ecdsa B #1\n");
}

TEST_F(PinServer, onlyANumberSignInFrontMakesAComment)
{
    scanned = said(QStringLiteral(" # host\n"));
    EXPECT_TRUE(Rclone::trustHost(host, QString()));
    EXPECT_EQ(keys(), " # host\n");
}

TEST_F(PinServer, keysAreForTheOwnerAloneAndReplaceThoseBefore)
{
    writeKeys("an old key, longer than the new one and then some more of it\n");
    ASSERT_TRUE(QFile::setPermissions(knownHosts(), QFileDevice::Permissions(0x6644)));
    EXPECT_TRUE(Rclone::trustHost(host, QString()));
    EXPECT_EQ(keys(), "host ssh-ed25519 AAAA\n");
    struct stat status = {};
    ASSERT_EQ(::stat(knownHosts().toUtf8().constData(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777U, 0600U);
    EXPECT_EQ(supportFiles(),
              QStringList({QStringLiteral("known_hosts"), QStringLiteral("rclone.conf")}));
}

TEST_F(PinServer, onlyShownKeysCountAndNotHowTheScanEnded)
{
    scanned = {1, QStringLiteral("host ssh-rsa A\n"), QStringLiteral("an error")};
    EXPECT_TRUE(Rclone::trustHost(host, QString()));
    for (const char *nothing : {"", "\n\n", "# a\n", "#a\n#b\n\n"}) {
        scanned = {0, QString::fromUtf8(nothing), QStringLiteral("host ssh-rsa A\n")};
        EXPECT_FALSE(Rclone::trustHost(host, QString())) << nothing;
    }
    EXPECT_EQ(keys(), "host ssh-rsa A\n"); // those that were there stay
}

TEST_F(PinServer, aHostThatLooksLikeAnOptionStandsBehindTheEndOfTheOptions)
{
    EXPECT_TRUE(Rclone::trustHost(QStringLiteral("-f/etc/shadow"), QStringLiteral("22")));
    ASSERT_EQ(calls.size(), 1);
    EXPECT_EQ(calls.first().program, QStringLiteral("/usr/bin/ssh-keyscan"));
    EXPECT_EQ(
        calls.first().arguments,
        QStringList({QStringLiteral("-T"), QStringLiteral("10"), QStringLiteral("-p"),
                     QStringLiteral("22"), QStringLiteral("--"), QStringLiteral("-f/etc/shadow")}));
    EXPECT_TRUE(calls.first().env.isEmpty());
    EXPECT_EQ(calls.first().input, std::nullopt);
}

TEST_F(PinServer, keysThatCannotBeWrittenAreNotTrusted)
{
    ASSERT_TRUE(QDir().mkpath(knownHosts() + QLatin1String("/in the way")));
    EXPECT_FALSE(Rclone::trustHost(host, QString()));
    EXPECT_EQ(Rclone::connectServer(server, QString()),
              QStringLiteral("Server non raggiungibile: controlla indirizzo e porta."));
    EXPECT_EQ(config(), envelope);
    pin(R"({"type":"sftp","host":"host"})");
    EXPECT_EQ(commands(), QStringList({dump, scan}));
}

} // namespace
