#include "state/Paths.h"
#include "tests/support/Files.h"
#include "tests/support/MemorySecretBackend.h"
#include "tests/support/SignInPage.h"
#include "tests/support/SmallDisk.h"
#include "tests/support/WebdavFolder.h"
#include "tools/Rclone.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

#include <sys/mount.h>

// The real rclone where a configuration can't be encrypted: rclone ends with success all the same,
// and no credentials may stand in plain.
namespace {

class FullDiskConnection : public testing::Test
{
protected:
    void SetUp() override
    {
        secrets.items[{QStringLiteral("it.vellomar.app"), QStringLiteral("rclone-config-key")}] =
            "key of this machine";
        ASSERT_TRUE(disk.isMounted());
    }

    static QString configFile() { return Paths::supportFile(QStringLiteral("rclone.conf")); }
    static QByteArray config() { return readFile(configFile()); }
    static bool storeServer()
    {
        return Rclone::store(Rclone::serverRemote,
                             {{QStringLiteral("type"), QStringLiteral("alias")},
                              {QStringLiteral("pass"), QStringLiteral("well-hidden")}});
    }
    /// Leaves room for so many more files.
    static void leaveInodes(int count)
    {
        const int there = static_cast<int>(supportFiles().size());
        // The folder itself counts, too.
        const QByteArray options = "nr_inodes=" + QByteArray::number(there + 1 + count);
        ASSERT_EQ(::mount("none", Paths::support().toUtf8().constData(), nullptr, MS_REMOUNT,
                          options.constData()),
                  0);
    }

    SmallDisk disk{Paths::support()};
    MemorySecretBackend secrets;
    ScopedSecretBackend secretsInForce{secrets};
};

TEST_F(FullDiskConnection, aConfigurationThatCannotBeEncryptedIsReportedAndEncryptedLater)
{
    writeFile(configFile(), "[vellomar]\ntype = drive\ntoken = old-token\n");
    disk.fill();
    EXPECT_FALSE(Rclone::encrypted());
    disk.makeRoom();
    EXPECT_TRUE(Rclone::encrypted());
    EXPECT_FALSE(isInAnyFile(Paths::support(), "old-token"));
    EXPECT_TRUE(Rclone::isConfigured());
}

TEST_F(FullDiskConnection, theSecretOfAServerNeverTakesItsPlaceInPlain)
{
    ASSERT_TRUE(Rclone::encrypted());
    const QByteArray before = config();
    // The plain copy and the pipe of the key fit; rclone's own file doesn't, or not the one that
    // it sets aside.
    for (const int files : {2, 3}) {
        leaveInodes(files);
        EXPECT_FALSE(storeServer()) << files;
        EXPECT_EQ(config(), before) << files;
        EXPECT_FALSE(isInAnyFile(Paths::support(), "well-hidden")) << files;
    }
    leaveInodes(4);
    EXPECT_TRUE(storeServer());
    EXPECT_FALSE(isInAnyFile(Paths::support(), "well-hidden"));
}

TEST_F(FullDiskConnection, aSignInToDriveLeavesNoTokenInPlain)
{
    SignInPage page;
    ASSERT_TRUE(page.isRunning());
    disk.fill();
    ProcessHandle handle;
    EXPECT_EQ(Rclone::connect({}, {}, handle), QStringLiteral("Configurazione non riuscita"));
    EXPECT_FALSE(page.isOpened());
    EXPECT_FALSE(isInAnyFile(Paths::support(), SignInPage::accessToken()));

    disk.makeRoom();
    EXPECT_EQ(Rclone::connect({}, {}, handle), std::nullopt);
    EXPECT_TRUE(config().startsWith("# Encrypted"));
    EXPECT_FALSE(isInAnyFile(Paths::support(), SignInPage::accessToken()));
}

} // namespace
