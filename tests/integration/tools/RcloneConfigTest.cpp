#include "state/Paths.h"
#include "tests/support/Files.h"
#include "tests/support/Installation.h"
#include "tests/support/MemorySecretBackend.h"
#include "tools/Rclone.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

#include <sched.h>
#include <sys/mount.h>
#include <unistd.h>

// The configuration as the real rclone keeps it.

namespace {

using Pairs = QList<std::pair<QString, QString>>;

class RcloneConfigTest : public testing::Test
{
protected:
    RcloneConfigTest()
    {
        secrets.items[{QStringLiteral("it.vellomar.app"), QStringLiteral("rclone-config-key")}] =
            "kEy of the configuration";
    }

    static QString configFile() { return Paths::supportFile(QStringLiteral("rclone.conf")); }
    static QByteArray config() { return readFile(configFile()); }
    static bool isInEnvelope() { return config().startsWith("# Encrypted"); }

    /// rclone as another program runs it, with a key of its own.
    static ProcessResult rclone(const QStringList &arguments, const char *key)
    {
        return runProcess(Installation::realTool(QStringLiteral("rclone")), arguments,
                          {.env = {{QStringLiteral("RCLONE_CONFIG"), configFile()},
                                   {QStringLiteral("RCLONE_PASSWORD_COMMAND"),
                                    QLatin1String("echo ") + QString::fromUtf8(key)}}});
    }
    static QString setting(const QString &remote, const char *key)
    {
        return Rclone::remotes().value(remote).value(QLatin1String(key)).toString();
    }
    static bool storeDrive()
    {
        return Rclone::store(Rclone::driveRemote,
                             {{QStringLiteral("type"), QStringLiteral("drive")},
                              {QStringLiteral("token"), QStringLiteral(R"({"a":"t0ken"})")}});
    }

    MemorySecretBackend secrets;
    ScopedSecretBackend secretsInForce{secrets};
};

TEST_F(RcloneConfigTest, whatIsStoredIsReadBackAndStandsInNoFile)
{
    const Pairs pairs{{QStringLiteral("type"), QStringLiteral("sftp")},
                      {QStringLiteral("quotes"), QStringLiteral("\"a\" 'b'")},
                      {QStringLiteral("percent"), QStringLiteral("100% %s")},
                      {QStringLiteral("equals"), QStringLiteral("a=b = c")},
                      {QStringLiteral("comment"), QStringLiteral("#a;b#c")},
                      {QStringLiteral("backslash"), QStringLiteral("a\\b\\n")},
                      {QStringLiteral("brackets"), QStringLiteral("[a]")},
                      {QStringLiteral("dollar"), QStringLiteral("${HOME} $x")},
                      {QStringLiteral("long"), QString(1000, u'l')},
                      {QStringLiteral("letters"), QString::fromUtf8("citt\xc3\xa0 \xe6\x97\xa5")},
                      {QStringLiteral("pass"), QStringLiteral("well-hidden-value")}};
    ASSERT_TRUE(Rclone::store(Rclone::serverRemote, pairs));
    ASSERT_TRUE(storeDrive());
    for (const auto &[key, value] : pairs) {
        EXPECT_EQ(setting(Rclone::serverRemote, key.toUtf8().constData()), value);
    }
    EXPECT_TRUE(Rclone::isConfigured());
    EXPECT_EQ(Rclone::remotes().size(), 2);

    EXPECT_TRUE(isInEnvelope());
    EXPECT_EQ(QFile::permissions(configFile()) & ~QFileDevice::Permissions(0x7000),
              QFileDevice::ReadUser | QFileDevice::WriteUser);
    EXPECT_FALSE(isInAnyFile(Paths::home(), "well-hidden-value"));
    EXPECT_FALSE(isInAnyFile(Paths::home(), "t0ken"));
    EXPECT_FALSE(isInAnyFile(Paths::home(), "kEy of the configuration"));
    EXPECT_EQ(supportFiles(), QStringList({QStringLiteral("rclone.conf")}));
}

TEST_F(RcloneConfigTest, aHomeWithBlanksAndQuotesIsNoHindrance)
{
    const QString home = QDir::homePath() + QLatin1String("/a \"quoted\"  home");
    ASSERT_TRUE(QDir().mkpath(home));
    qputenv("HOME", home.toUtf8());
    ASSERT_TRUE(storeDrive());
    ASSERT_TRUE(configFile().startsWith(home));
    EXPECT_TRUE(Rclone::isConfigured());
    EXPECT_TRUE(isInEnvelope());
}

TEST_F(RcloneConfigTest, aPlainFileOfAnOlderVersionMovesIntoTheEnvelope)
{
    writeFile(configFile(), "[vellomar]\ntype = drive\ntoken = old-token\n");
    EXPECT_TRUE(Rclone::isConfigured());
    EXPECT_TRUE(isInEnvelope());
    EXPECT_FALSE(isInAnyFile(Paths::home(), "old-token"));
    EXPECT_EQ(setting(Rclone::driveRemote, "token"), QStringLiteral("old-token"));
}

TEST_F(RcloneConfigTest, noFileBecomesAnEmptyEnvelope)
{
    EXPECT_TRUE(Rclone::remotes().isEmpty());
    EXPECT_TRUE(isInEnvelope());
}

TEST_F(RcloneConfigTest, anEnvelopeWithAnotherKeyHasNoRemotesAndIsNotTouched)
{
    writeFile(configFile(), "[vellomar]\ntype = drive\ntoken = t\n");
    ASSERT_EQ(
        rclone({QStringLiteral("config"), QStringLiteral("encryption"), QStringLiteral("set")},
               "another")
            .status,
        0);
    const QByteArray before = config();
    ASSERT_TRUE(before.startsWith("# Encrypted"));
    EXPECT_TRUE(Rclone::remotes().isEmpty());
    EXPECT_FALSE(storeDrive());
    EXPECT_EQ(config(), before);
    EXPECT_EQ(supportFiles(), QStringList({QStringLiteral("rclone.conf")}));
    EXPECT_NE(rclone({QStringLiteral("config"), QStringLiteral("dump")}, "another")
                  .standardOutput.indexOf(QLatin1String("vellomar")),
              -1);
}

TEST_F(RcloneConfigTest, disconnectRemovesTheDriveRemoteAlone)
{
    ASSERT_TRUE(
        Rclone::store(Rclone::serverRemote, {{QStringLiteral("type"), QStringLiteral("alias")}}));
    ASSERT_TRUE(storeDrive());
    EXPECT_EQ(Rclone::remotes().size(), 2);
    Rclone::disconnect();
    EXPECT_EQ(Rclone::remotes().keys(), QStringList({Rclone::serverRemote}));
    EXPECT_TRUE(isInEnvelope());
    Rclone::disconnect();
    EXPECT_EQ(Rclone::remotes().size(), 1);
}

TEST_F(RcloneConfigTest, aChangeByAnotherProcessIsSeen)
{
    ASSERT_TRUE(storeDrive());
    EXPECT_TRUE(Rclone::isConfigured());
    ASSERT_EQ(runProcess(QStringLiteral("/bin/sh"),
                         {QStringLiteral("-c"), QStringLiteral("rm \"$0\""), configFile()})
                  .status,
              0);
    EXPECT_FALSE(Rclone::isConfigured());
}

TEST_F(RcloneConfigTest, obscuredTextsAreRevealedAsTheyWere)
{
    for (const QString &text :
         {QStringLiteral("x"), QStringLiteral("pass word"), QStringLiteral(" blanks "),
          QStringLiteral("-n \"'$\\%"),
          QString::fromUtf8("citt\xc3\xa0 \xe6\x97\xa5\xf0\x9f\x98\x80"), QString(1000, u'p')}) {
        const auto obscured = Rclone::obscure(text);
        ASSERT_TRUE(obscured) << qPrintable(text);
        EXPECT_NE(*obscured, text);
        const ProcessResult revealed =
            runProcess(Installation::realTool(QStringLiteral("rclone")),
                       {QStringLiteral("reveal"), QStringLiteral("--"), *obscured});
        EXPECT_EQ(revealed.standardOutput, QString(text + u'\n'));
    }
    EXPECT_TRUE(supportFiles().isEmpty()); // it needs no configuration
}

TEST_F(RcloneConfigTest, aFolderThatCannotBeWrittenIsANoAndNothingMore)
{
    ASSERT_TRUE(storeDrive());
    const QByteArray before = config();
    const int flags = ::geteuid() == 0 ? CLONE_NEWNS : CLONE_NEWNS | CLONE_NEWUSER;
    ASSERT_EQ(::unshare(flags), 0);
    ASSERT_EQ(::mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr), 0);
    const QByteArray folder = Paths::support().toUtf8();
    ASSERT_EQ(::mount(folder.constData(), folder.constData(), nullptr, MS_BIND, nullptr), 0);
    ASSERT_EQ(
        ::mount(nullptr, folder.constData(), nullptr, MS_BIND | MS_REMOUNT | MS_RDONLY, nullptr),
        0);
    EXPECT_FALSE(OneShotSecret::create(QStringLiteral("x")));
    EXPECT_FALSE(storeDrive());
    EXPECT_TRUE(Rclone::remotes().isEmpty()); // no way to hand over the key
    EXPECT_EQ(config(), before);
}

} // namespace
