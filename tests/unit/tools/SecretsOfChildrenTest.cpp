#include "state/Paths.h"
#include "tests/support/Files.h"
#include "tests/support/MemorySecretBackend.h"
#include "tools/Rclone.h"
#include "tools/Restic.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

// What the tools really get, recorded by scripts that run in their place.

namespace {

class SecretsOfChildren : public testing::Test
{
protected:
    SecretsOfChildren()
    {
        secrets.items[{QStringLiteral("it.vellomar.app"), QStringLiteral("rclone-config-key")}] =
            configKey;
        EXPECT_TRUE(QDir().mkpath(log));
        qputenv("STANDIN_LOG", log.toUtf8());
        restic.dest = DestinationID::Server;
        restic.password = QString::fromUtf8(repositoryKey);
    }

    void plan(const QByteArray &script)
    {
        const QString path = QDir::homePath() + QLatin1String("/plan");
        ASSERT_TRUE(writeFile(path, script));
        qputenv("STANDIN_PLAN", path.toUtf8());
    }
    /// Everything of one kind that the calls of a tool have left, in no order.
    [[nodiscard]] QList<QByteArray> logged(const char *tool, const char *kind) const
    {
        QList<QByteArray> contents;
        const QStringList names = QDir(log).entryList(
            {QString::fromUtf8(tool) + QLatin1String(".*.") + QString::fromUtf8(kind)});
        for (const QString &name : names) {
            contents.append(readFile(log + u'/' + name));
        }
        return contents;
    }
    void expectNoSecretIn(const char *kind) const
    {
        const QList<QByteArray> all = logged("*", kind);
        EXPECT_FALSE(all.isEmpty());
        for (const QByteArray &content : all) {
            EXPECT_FALSE(content.contains(configKey)) << kind;
            EXPECT_FALSE(content.contains(repositoryKey)) << kind;
            EXPECT_FALSE(content.contains("value-to-hide")) << kind;
        }
    }

    static constexpr const char *configKey = "configuration-key-to-hide";
    static constexpr const char *repositoryKey = "repository-key-to-hide";
    const QString log = QDir::homePath() + QLatin1String("/log");
    MemorySecretBackend secrets;
    ScopedSecretBackend secretsInForce{secrets};
    Restic restic;
};

TEST_F(SecretsOfChildren, resticReadsItsKeyFromStandardInputAlone)
{
    EXPECT_EQ(restic.run({QStringLiteral("snapshots")}).status, 0);
    EXPECT_EQ(logged("restic", "input"), QList<QByteArray>({QByteArray(repositoryKey) + '\n'}));
    expectNoSecretIn("arguments");
    expectNoSecretIn("environment");
}

TEST_F(SecretsOfChildren, rcloneGetsItsKeyByRunningTheCommandAndOnlyOnce)
{
    plan("if [ $tool = rclone ]; then eval \"$RCLONE_PASSWORD_COMMAND\" >\"$call.key\"\n"
         "eval \"$RCLONE_PASSWORD_COMMAND\" >\"$call.again\"; echo $? >\"$call.refused\"; fi\n");
    Rclone::remotes();
    EXPECT_EQ(logged("rclone", "key"), QList<QByteArray>({configKey, configKey}));
    EXPECT_EQ(logged("rclone", "again"), QList<QByteArray>({"", ""}));
    EXPECT_EQ(logged("rclone", "refused"), QList<QByteArray>({"1\n", "1\n"}));
    expectNoSecretIn("arguments");
    expectNoSecretIn("environment");
    EXPECT_EQ(supportFiles(), QStringList());
}

TEST_F(SecretsOfChildren, whatRcloneKeepsNeverStandsInAnArgument)
{
    plan("[ \"$*\" != 'config show' ] || echo '[old]'\n");
    EXPECT_TRUE(Rclone::store(Rclone::serverRemote,
                              {{QStringLiteral("pass"), QStringLiteral("value-to-hide")}}));
    EXPECT_EQ(Rclone::obscure(QStringLiteral("value-to-hide")), std::nullopt);
    EXPECT_TRUE(logged("rclone", "input").contains("value-to-hide\n"));
    expectNoSecretIn("arguments");
    expectNoSecretIn("environment");
}

} // namespace
