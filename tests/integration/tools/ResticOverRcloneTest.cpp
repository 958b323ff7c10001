#include "tests/integration/tools/SampleBackup.h"
#include "tests/support/Files.h"
#include "tests/support/MemorySecretBackend.h"
#include "tools/Rclone.h"
#include "tools/Tools.h"

// The real restic and rclone, from a folder whose path holds blanks, with a repository behind an
// encrypted configuration.

namespace {

class ResticOverRcloneTest : public testing::Test
{
protected:
    ResticOverRcloneTest()
    {
        secrets.items[{QStringLiteral("it.vellomar.app"), QStringLiteral("rclone-config-key")}] =
            "key-of-the-configuration";
        EXPECT_TRUE(QDir().mkpath(remoteFolder()));
        restic.password = QStringLiteral("key-of-the-repository");
        restic.config.serverPath = QStringLiteral("backups/of this machine");
        restic.config.driveFolder = QStringLiteral("backups");
    }

    static QString remoteFolder() { return QDir::homePath() + QLatin1String("/the remote"); }

    static bool storeRemote(const QString &name)
    {
        return Rclone::store(name, {{QStringLiteral("type"), QStringLiteral("alias")},
                                    {QStringLiteral("remote"), remoteFolder()},
                                    {QStringLiteral("token"), QStringLiteral("t")}});
    }
    SampleBackup sample;
    Restic restic;
    MemorySecretBackend secrets;
    ScopedSecretBackend secretsInForce{secrets};
};

TEST_F(ResticOverRcloneTest, theToolsReallyStandInAPlaceWithBlanks)
{
    EXPECT_TRUE(Tools::find(QStringLiteral("rclone")).value_or(QString()).contains(u' '));
    EXPECT_TRUE(Tools::find(QStringLiteral("restic")).value_or(QString()).contains(u' '));
}

TEST_F(ResticOverRcloneTest, aServerServesAsADiskDoes)
{
    restic.dest = DestinationID::Server;
    EXPECT_FALSE(restic.isAvailable());
    ASSERT_TRUE(storeRemote(Rclone::serverRemote));
    EXPECT_TRUE(restic.isAvailable());
    EXPECT_EQ(restic.snapshots().value(), QList<Snap>());

    const Snap snap = SampleBackup::backUp(restic);
    EXPECT_TRUE(
        QFileInfo::exists(remoteFolder() + QLatin1String("/backups/of this machine/config")));
    const auto nodes = restic.list(snap.id, SampleBackup::sources()).value();
    EXPECT_EQ(nodes.size(), SampleBackup::oddNames().size() + 1);
    const auto found = restic.find(snap.id, QStringLiteral("a*B")).value();
    ASSERT_EQ(found.size(), 1);

    const QString target = QDir::homePath() + QLatin1String("/target");
    EXPECT_EQ(restic.run(restic.restoreArguments(snap.id, found.first(), target)).status, 0);
    EXPECT_EQ(SampleBackup::content(target, "a*b.txt"), QByteArray("a*b.txt"));

    EXPECT_FALSE(isInAnyFile(QDir::homePath(), "key-of-the-configuration"));
    EXPECT_FALSE(isInAnyFile(QDir::homePath(), "key-of-the-repository"));
    EXPECT_EQ(
        QDir(Paths::support()).entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot),
        QStringList({QStringLiteral("rclone.conf")}));
}

TEST_F(ResticOverRcloneTest, aMakingThatWasCutShortIsMadeGoodWhereNothingButKeysIsThere)
{
    restic.dest = DestinationID::Server;
    ASSERT_TRUE(storeRemote(Rclone::serverRemote));
    const QString repository = remoteFolder() + QLatin1String("/backups/of this machine/");
    ASSERT_TRUE(restic.prepare().has_value());
    ASSERT_TRUE(QFile::remove(repository + QLatin1String("config")));
    EXPECT_EQ(restic.run({QStringLiteral("init")}).status, 1);
    ASSERT_TRUE(restic.prepare().has_value());
    EXPECT_EQ(QDir(repository + QLatin1String("keys")).entryList(QDir::Files).size(), 1);
    EXPECT_EQ(restic.snapshots().value(), QList<Snap>());

    SampleBackup::backUp(restic);
    ASSERT_TRUE(QFile::remove(repository + QLatin1String("config")));
    const auto prepared = restic.prepare();
    ASSERT_FALSE(prepared.has_value());
    EXPECT_EQ(prepared.error().message,
              QStringLiteral("Nella destinazione manca il file «config» del backup. I dati ci sono "
                             "ancora e non sono stati toccati."));
    EXPECT_EQ(QDir(repository + QLatin1String("keys")).entryList(QDir::Files).size(), 1);
}

TEST_F(ResticOverRcloneTest, driveGetsARepositoryOnceAndReportsAWrongKey)
{
    restic.dest = DestinationID::Drive;
    ASSERT_TRUE(storeRemote(Rclone::driveRemote));
    EXPECT_TRUE(restic.isAvailable());
    ASSERT_TRUE(restic.prepare().has_value());
    ASSERT_TRUE(restic.prepare().has_value());
    restic.password = QStringLiteral("another");
    EXPECT_EQ(restic.prepare().error().message,
              QStringLiteral("Chiave di cifratura errata per questa destinazione"));
}

TEST_F(ResticOverRcloneTest, aRemoteThatIsNotThereIsAFailureThatIsReported)
{
    restic.dest = DestinationID::Server;
    const auto prepared = restic.prepare();
    ASSERT_FALSE(prepared.has_value());
    EXPECT_FALSE(prepared.error().message.isEmpty());
    EXPECT_FALSE(restic.snapshots().has_value());
}

} // namespace
