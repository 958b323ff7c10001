#include "state/Paths.h"
#include "tests/support/Files.h"
#include "tests/support/MemorySecretBackend.h"
#include "tests/support/ScriptedTools.h"
#include "tools/Rclone.h"
#include "tools/Restic.h"
#include "tools/Tools.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

// What everything does on a machine that has neither restic nor rclone.

namespace {

TEST(NoTools, areReallyThere)
{
    EXPECT_EQ(Tools::find(QStringLiteral("restic")), std::nullopt);
    EXPECT_EQ(Tools::find(QStringLiteral("rclone")), std::nullopt);
}

TEST(NoTools, resticsAbsenceIsReported)
{
    for (const DestinationID dest :
         {DestinationID::Local, DestinationID::Drive, DestinationID::Server}) {
        Restic restic;
        restic.dest = dest;
        const ProcessResult result = restic.run({QStringLiteral("snapshots")});
        EXPECT_EQ(result.status, -1);
        EXPECT_EQ(result.standardOutput, QString());
        EXPECT_EQ(result.standardError, QStringLiteral("restic non trovato"));
        EXPECT_EQ(Restic::describe(result).message, QStringLiteral("restic non trovato"));
    }
}

TEST(NoTools, everyOperationOfResticFailsWithThoseWords)
{
    const Restic restic;
    const ResticError absent{QStringLiteral("restic non trovato")};
    EXPECT_EQ(restic.snapshots().error(), absent);
    EXPECT_EQ(restic.prepare().error(), absent);
    EXPECT_EQ(restic.list(QStringLiteral("x"), QStringLiteral("/")).error(), absent);
    EXPECT_EQ(restic.find(QStringLiteral("x"), QStringLiteral("y")).error(), absent);
    EXPECT_EQ(restic.repositorySize(), std::nullopt);
}

TEST(NoTools, noServerCanBeConnectedAndItsFilesAreLeftAlone)
{
    MemorySecretBackend secrets;
    const ScopedSecretBackend inForce(secrets);
    ASSERT_TRUE(writeSupportFile("known_hosts"));
    AppConfig config;
    config.serverHost = QStringLiteral("host");
    EXPECT_EQ(Rclone::connectServer(config, QStringLiteral("x")),
              QStringLiteral("rclone non trovato"));
    Rclone::disconnectServer();
    Rclone::pinServerIfNeeded();
    EXPECT_EQ(Rclone::versioning(QStringLiteral("bucket")), std::nullopt);
    EXPECT_TRUE(QFile::exists(Paths::supportFile(QStringLiteral("known_hosts"))));
    EXPECT_EQ(QDir(Paths::support()).count(), 3U); // this file alone, and the folders' own entries
    EXPECT_EQ(secrets.adds, 0);
}

TEST(NoTools, driveCannotBeConnectedNorAskedAndNothingIsRun)
{
    const ScriptedTools tools;
    ProcessHandle handle;
    EXPECT_EQ(Rclone::connect({}, {}, handle), QStringLiteral("rclone non trovato"));
    handle.terminate();
    EXPECT_EQ(Rclone::connect({}, {}, handle), QStringLiteral("rclone non trovato"));
    EXPECT_EQ(Rclone::quota(Rclone::driveRemote), std::nullopt);
    EXPECT_EQ(Rclone::folders(QStringLiteral("Vellomar"), Rclone::driveRemote), QStringList());
    EXPECT_EQ(tools.commands(), QStringList());
}

TEST(NoTools, everyOperationOfRcloneIsANo)
{
    MemorySecretBackend secrets;
    const ScopedSecretBackend inForce(secrets);
    EXPECT_TRUE(Rclone::remotes().isEmpty());
    EXPECT_FALSE(Rclone::isConfigured());
    EXPECT_FALSE(Rclone::store(QStringLiteral("vellomar"), {}));
    EXPECT_EQ(Rclone::obscure(QStringLiteral("x")), std::nullopt);
    Rclone::disconnect();
    Rclone::encrypted();
    EXPECT_TRUE(QDir(Paths::support()).isEmpty());
    EXPECT_EQ(secrets.adds, 0); // and no key is made for nothing
}

TEST(NoTools, aPlainConfigurationStaysAsItIs)
{
    const QByteArray plain = "[vellomar]\ntype = drive\n";
    ASSERT_TRUE(writeSupportFile("rclone.conf", plain));
    Rclone::encrypted();
    EXPECT_EQ(readFile(Paths::supportFile(QStringLiteral("rclone.conf"))), plain);
}

} // namespace
