#include "tests/integration/tools/SampleBackup.h"
#include "tests/support/Files.h"
#include "tests/support/Installation.h"
#include "tests/support/MemorySecretBackend.h"
#include "tools/Rclone.h"

// The real restic and rclone in the session of a user who works with them, too.

namespace {

constexpr const char *ourKey = "key-of-the-repository";

class SessionVariablesTest : public testing::Test
{
protected:
    SessionVariablesTest()
    {
        secrets.items[{QStringLiteral("it.vellomar.app"), QStringLiteral("rclone-config-key")}] =
            "key-of-the-configuration";
        restic.password = QString::fromUtf8(ourKey);
        restic.config.localFolder = folder("disk");
        restic.config.serverPath = QStringLiteral("backups");
        SampleBackup::write(sources() + u'/', "letter");
    }

    static QString folder(const char *name)
    {
        const QString path = QDir::homePath() + u'/' + QString::fromUtf8(name);
        EXPECT_TRUE(QDir().mkpath(path));
        return path;
    }
    static QString sources() { return folder("sources"); }
    static QString written(const char *name, const QByteArray &content)
    {
        QString path = QDir::homePath() + u'/' + QString::fromUtf8(name);
        writeFile(path, content);
        return path;
    }

    /// Opens a repository as the user would with the recovery kit: with the key and nothing else.
    static int openedWith(const char *key, const QString &repository)
    {
        return runProcess(Installation::realTool(QStringLiteral("restic")),
                          {QStringLiteral("cat"), QStringLiteral("config")},
                          {.env = {{QStringLiteral("RESTIC_REPOSITORY"), repository}},
                           .input = QString::fromUtf8(key)})
            .status;
    }
    [[nodiscard]] ProcessResult backUp() const
    {
        return restic.run({QStringLiteral("backup"), QStringLiteral("--json"), sources()});
    }
    static bool storeServer(const QString &remoteFolder)
    {
        return Rclone::store(Rclone::serverRemote,
                             {{QStringLiteral("type"), QStringLiteral("alias")},
                              {QStringLiteral("remote"), remoteFolder}});
    }
    static QByteArray rcloneConfig()
    {
        return readFile(Paths::supportFile(QStringLiteral("rclone.conf")));
    }

    Restic restic;
    MemorySecretBackend secrets;
    ScopedSecretBackend secretsInForce{secrets};
};

TEST_F(SessionVariablesTest, aRepositoryHasOurKeyWhateverPasswordTheSessionHas)
{
    const QByteArray file = written("password", "theirs\n").toUtf8();
    const QList<std::pair<const char *, QByteArray>> variables{
        {"RESTIC_PASSWORD", "theirs"},
        {"RESTIC_PASSWORD_FILE", file},
        {"RESTIC_PASSWORD_COMMAND", "echo theirs"}};
    for (const auto &[name, value] : variables) {
        restic.config.localFolder = folder(name);
        qputenv(name, value);
        EXPECT_TRUE(restic.prepare().has_value()) << name;
        qunsetenv(name);
        const QString repository = restic.config.repository(DestinationID::Local);
        EXPECT_EQ(openedWith(ourKey, repository), 0) << name;
        EXPECT_EQ(openedWith("theirs", repository), ResticExit::wrongPassword) << name;
    }
}

TEST_F(SessionVariablesTest, anotherKeyDoesNotPassForTheRepositorysBecauseTheSessionHasIt)
{
    ASSERT_TRUE(restic.prepare().has_value());
    qputenv("RESTIC_PASSWORD", ourKey);
    restic.password = QStringLiteral("a typed key");
    EXPECT_EQ(restic.snapshots().error().message,
              QStringLiteral("Chiave di cifratura errata per questa destinazione"));
}

TEST_F(SessionVariablesTest, aBackupIsMadeAndListedAsIfNoneOfThemWereThere)
{
    qputenv("RESTIC_REPOSITORY", folder("elsewhere").toUtf8());
    qputenv("RESTIC_REPOSITORY_FILE", written("repository", "/elsewhere\n").toUtf8());
    qputenv("RESTIC_HOST", "another-machine");
    qputenv("RESTIC_COMPRESSION", "of another version");
    qputenv("RESTIC_PACK_SIZE", "1");
    qputenv("RESTIC_READ_CONCURRENCY", "many");
    qputenv("RESTIC_FEATURES", "of-another-version=true");
    qputenv("RESTIC_CACERT", "/nonexistent");
    qputenv("RESTIC_TLS_CLIENT_CERT", "/nonexistent");

    const Snap snap = SampleBackup::backUp(restic);
    EXPECT_EQ(snap.host, QStringLiteral("macchina"));
    EXPECT_TRUE(QDir(folder("elsewhere")).isEmpty());
    EXPECT_EQ(restic.list(snap.id, sources()).value().size(), 1);
    const ProcessResult forgotten =
        restic.run({QStringLiteral("forget"), QStringLiteral("--json"), QStringLiteral("--dry-run"),
                    QStringLiteral("--keep-last"), QStringLiteral("1")});
    EXPECT_TRUE(forgotten.standardOutput.contains(QLatin1String("macchina")))
        << qPrintable(forgotten.standardError);
}

TEST_F(SessionVariablesTest, aBackupOverRcloneIsNoPretence)
{
    restic.dest = DestinationID::Server;
    ASSERT_TRUE(storeServer(folder("remote")));
    qputenv("RCLONE_DRY_RUN", "true");
    qputenv("RCLONE_EXCLUDE", "*");
    qputenv("RCLONE_MAX_DEPTH", "0");
    qputenv("RCLONE_CONFIG_VELLOMAR_SERVER_REMOTE", folder("elsewhere").toUtf8());
    qputenv("RCLONE_ALIAS_REMOTE", folder("elsewhere").toUtf8());
    ASSERT_TRUE(restic.prepare().has_value());
    EXPECT_EQ(backUp().status, 0);
    for (const char *name : {"RCLONE_DRY_RUN", "RCLONE_EXCLUDE", "RCLONE_MAX_DEPTH",
                             "RCLONE_CONFIG_VELLOMAR_SERVER_REMOTE", "RCLONE_ALIAS_REMOTE"}) {
        qunsetenv(name);
    }
    EXPECT_TRUE(QDir(folder("elsewhere")).isEmpty());
    EXPECT_EQ(openedWith(ourKey, folder("remote") + QLatin1String("/backups")), 0);
    EXPECT_EQ(restic.snapshots().value().size(), 1);
}

TEST_F(SessionVariablesTest, connectionsAreKeptWithOurKeyAndInOurFile)
{
    qputenv("RCLONE_CONFIG",
            written("their.conf", "[theirs]\ntype = alias\nremote = /\n").toUtf8());
    qputenv("RCLONE_CONFIG_PASS", "theirs");
    qputenv("RCLONE_PASSWORD_COMMAND", "echo theirs");
    qputenv("RCLONE_ASK_PASSWORD", "not a truth value");
    ASSERT_TRUE(storeServer(folder("remote")));
    EXPECT_EQ(Rclone::remotes().keys(), QStringList(Rclone::serverRemote));
    EXPECT_TRUE(rcloneConfig().startsWith("# Encrypted"));
}

TEST_F(SessionVariablesTest, whereOurKeyCannotBeHandedOverTheirsIsNotTakenInItsPlace)
{
    // More than a pipe takes.
    secrets.items[{QStringLiteral("it.vellomar.app"), QStringLiteral("rclone-config-key")}] =
        QByteArray(100000, 'k');
    qputenv("RCLONE_PASSWORD_COMMAND", "echo theirs");
    EXPECT_TRUE(Rclone::remotes().isEmpty());
    EXPECT_FALSE(rcloneConfig().startsWith("# Encrypted"));
}

} // namespace
