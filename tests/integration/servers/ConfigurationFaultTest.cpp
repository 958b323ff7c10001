#include "state/Paths.h"
#include "tests/support/Files.h"
#include "tests/support/MemorySecretBackend.h"
#include "tests/support/WebdavFolder.h"
#include "tools/Rclone.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

// A configuration that isn't as this version of the program would have left it, and real rclone.
namespace {

class ConfigurationFault : public testing::Test
{
protected:
    ConfigurationFault()
    {
        secrets.items[{QStringLiteral("it.vellomar.app"), QStringLiteral("rclone-config-key")}] =
            "key of this machine";
        QDir().mkpath(folder + QLatin1String("/pictures"));
    }

    static QString configFile() { return Paths::supportFile(QStringLiteral("rclone.conf")); }
    static QByteArray config() { return readFile(configFile()); }
    /// Both remotes in plain, as an older version wrote them.
    void writePlainConfig()
    {
        const QByteArray password = Rclone::obscure(WebdavFolder::password()).value().toUtf8();
        writeFile(configFile(),
                  "[vellomar]\ntype = drive\ntoken = {\"access_token\":\"old-token\"}\n\n"
                  "[vellomar-server]\ntype = webdav\nurl = " +
                      server.url().toUtf8() + "\nvendor = other\nuser = anna\npass = " + password +
                      '\n');
    }
    static ProcessResult rcloneWithAnotherKey(const QStringList &arguments)
    {
        return runProcess(
            Installation::realTool(QStringLiteral("rclone")), arguments,
            {.env = {{QStringLiteral("RCLONE_CONFIG"), configFile()},
                     {QStringLiteral("RCLONE_PASSWORD_COMMAND"), QStringLiteral("echo another")}}});
    }

    MemorySecretBackend secrets;
    ScopedSecretBackend secretsInForce{secrets};
    QString folder = QDir::homePath() + QLatin1String("/served");
    WebdavFolder server{folder};
    const QStringList configAlone{QStringLiteral("rclone.conf")};
};

TEST_F(ConfigurationFault, aServerOfAnOlderPlainFileGoesOnWorkingFromTheEnvelope)
{
    ASSERT_TRUE(server.start()) << qPrintable(server.output());
    writePlainConfig();
    const QStringList pictures{QStringLiteral("pictures")};
    EXPECT_EQ(Rclone::folders(QString(), Rclone::serverRemote), pictures);
    EXPECT_TRUE(config().startsWith("# Encrypted"));
    EXPECT_FALSE(config().contains("old-token"));
    EXPECT_EQ(supportFiles(), configAlone);
    EXPECT_TRUE(Rclone::isConfigured());
    EXPECT_EQ(Rclone::folders(QString(), Rclone::serverRemote), pictures);
}

TEST_F(ConfigurationFault, anOlderPlainFileKeepsItsOtherRemoteWhenTheServerIsConnectedAnew)
{
    ASSERT_TRUE(server.start()) << qPrintable(server.output());
    writePlainConfig();
    AppConfig settings;
    settings.serverKind = ServerKind::Webdav;
    settings.serverHost = server.url();
    settings.serverUser = WebdavFolder::user();
    EXPECT_EQ(Rclone::connectServer(settings, WebdavFolder::password()), std::nullopt);
    EXPECT_TRUE(Rclone::isConfigured());
    EXPECT_EQ(Rclone::remotes().size(), 2);
    Rclone::disconnectServer();
    EXPECT_EQ(Rclone::remotes().keys(), QStringList{Rclone::driveRemote});
    EXPECT_TRUE(config().startsWith("# Encrypted"));
    EXPECT_EQ(supportFiles(), configAlone);
}

TEST_F(ConfigurationFault, anEnvelopeWithAnotherKeyLosesNothing)
{
    ASSERT_TRUE(server.start()) << qPrintable(server.output());
    writePlainConfig();
    ASSERT_EQ(rcloneWithAnotherKey(
                  {QStringLiteral("config"), QStringLiteral("encryption"), QStringLiteral("set")})
                  .status,
              0);
    const QByteArray before = config();
    ASSERT_TRUE(before.startsWith("# Encrypted"));

    EXPECT_TRUE(Rclone::remotes().isEmpty());
    AppConfig settings;
    settings.serverHost = server.url();
    settings.serverUser = WebdavFolder::user();
    for (const ServerKind kind : {ServerKind::Webdav, ServerKind::S3, ServerKind::Smb}) {
        settings.serverKind = kind;
        EXPECT_EQ(Rclone::connectServer(settings, WebdavFolder::password()),
                  QStringLiteral("Configurazione non riuscita"));
        EXPECT_EQ(config(), before);
    }
    Rclone::disconnectServer();
    Rclone::disconnect();
    Rclone::pinServerIfNeeded();
    EXPECT_EQ(Rclone::versioning(QStringLiteral("bucket")), std::nullopt);
    EXPECT_EQ(Rclone::quota(Rclone::serverRemote), std::nullopt);
    EXPECT_TRUE(Rclone::folders(QString(), Rclone::serverRemote).isEmpty());
    EXPECT_EQ(config(), before);
    EXPECT_EQ(supportFiles(), configAlone);

    const ProcessResult listed =
        rcloneWithAnotherKey({QStringLiteral("lsf"), QStringLiteral("vellomar-server:")});
    EXPECT_EQ(listed.standardOutput, QStringLiteral("pictures/\n"));
}

} // namespace
