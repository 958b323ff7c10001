#include "state/LocalDisk.h"

#include "state/Paths.h"
#include "state/StatusStore.h"
#include "tests/support/Files.h"
#include "tests/support/SmallDisk.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

#include <optional>

namespace {

class LocalDiskTest : public testing::Test
{
protected:
    void SetUp() override
    {
        disk.emplace(mount);
        ASSERT_TRUE(disk->isMounted());
    }

    static QString folder(const QString &name)
    {
        const QString path = Paths::home() + u'/' + name;
        QDir().mkpath(path);
        return path;
    }

    const QString mount = folder(QStringLiteral("media/disk"));
    const QString repository = mount + QLatin1String("/Vellomar.backup");
    std::optional<SmallDisk> disk;
};

TEST_F(LocalDiskTest, aMountPointThatStaysIsAwayUntilItsDiskIsBack)
{
    LocalDisk::remember(repository);
    EXPECT_FALSE(LocalDisk::isAway(repository));
    disk.reset();
    ASSERT_TRUE(QDir(mount).exists());
    EXPECT_TRUE(LocalDisk::isAway(repository));
    ASSERT_TRUE(QDir().mkpath(repository)); // its content doesn't matter
    EXPECT_TRUE(LocalDisk::isAway(repository));
    // A different device number, the same mount point.
    disk.emplace(mount);
    EXPECT_FALSE(LocalDisk::isAway(repository));
}

TEST_F(LocalDiskTest, whatWasNeverSeenOnADiskOfItsOwnIsNotAway)
{
    disk.reset();
    EXPECT_FALSE(LocalDisk::isAway(repository));
    LocalDisk::remember(repository);
    EXPECT_FALSE(StatusStore::loadState().localDisk);
    EXPECT_FALSE(LocalDisk::isAway(repository));
}

TEST_F(LocalDiskTest, aFolderDeepInTheDiskGoesWithIt)
{
    const QString deep = mount + QLatin1String("/backups/of anna/Vellomar.backup");
    ASSERT_TRUE(QDir().mkpath(deep));
    LocalDisk::remember(deep);
    EXPECT_FALSE(LocalDisk::isAway(deep));
    disk.reset();
    EXPECT_TRUE(LocalDisk::isAway(deep));
    ASSERT_TRUE(QDir().mkpath(deep));
    EXPECT_TRUE(LocalDisk::isAway(deep));
}

TEST_F(LocalDiskTest, aMountPointOnAThirdVolumeIsAwayToo)
{
    const SmallDisk run(folder(QStringLiteral("run")));
    const QString inside = folder(QStringLiteral("run/disk"));
    std::optional<SmallDisk> removable;
    removable.emplace(inside);
    ASSERT_TRUE(removable->isMounted());
    LocalDisk::remember(inside);
    EXPECT_FALSE(LocalDisk::isAway(inside));
    removable.reset();
    ASSERT_NE(Paths::volume(inside), Paths::volume(Paths::home()));
    EXPECT_TRUE(LocalDisk::isAway(inside));
}

TEST_F(LocalDiskTest, anotherFolderInTheSettingsForgetsIt)
{
    LocalDisk::remember(repository);
    disk.reset();
    const QString chosen = folder(QStringLiteral("on purpose")) + QLatin1String("/Vellomar.backup");
    EXPECT_FALSE(LocalDisk::isAway(chosen));
    LocalDisk::remember(chosen);
    EXPECT_FALSE(StatusStore::loadState().localDisk);
    EXPECT_FALSE(LocalDisk::isAway(repository));
}

TEST_F(LocalDiskTest, aLinkMayLeadToTheDiskWhereverThatIsMounted)
{
    const QString link = Paths::home() + QLatin1String("/backups");
    ASSERT_TRUE(QFile::link(mount, link));
    const QString named = link + QLatin1String("/Vellomar.backup");
    LocalDisk::remember(named);
    EXPECT_EQ(StatusStore::loadState().localDisk->mountPoint, mount);
    disk.reset();
    EXPECT_TRUE(LocalDisk::isAway(named));
    const SmallDisk elsewhere(folder(QStringLiteral("media/disk1")));
    ASSERT_TRUE(QFile::remove(link));
    ASSERT_TRUE(QFile::link(folder(QStringLiteral("media/disk1")), link));
    EXPECT_FALSE(LocalDisk::isAway(named));
}

TEST_F(LocalDiskTest, whatIsKnownAlreadyIsNotWrittenAgain)
{
    LocalDisk::remember(repository);
    QFile file(Paths::supportFile(QStringLiteral("state.json")));
    ASSERT_TRUE(file.open(QIODevice::Append));
    file.write("\n");
    file.close();
    LocalDisk::remember(repository);
    EXPECT_TRUE(readFile(file.fileName()).endsWith("\n\n"));
}

} // namespace
