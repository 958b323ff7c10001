#include "state/LocalDisk.h"
#include "tests/support/ModelFixture.h"
#include "tests/support/OwnMounts.h"
#include "tests/support/SmallDisk.h"

#include <QDir>

#include <memory>

// The room on the disk of the local backups, on a disk that fills, goes and comes back.

namespace {

class LocalVolume : public ModelFixture
{
protected:
    // Before there is any other thread.
    void SetUp() override { ASSERT_TRUE(takeOwnMounts()); }

    void mount()
    {
        disk = std::make_unique<SmallDisk>(config.localFolder);
        ASSERT_TRUE(disk->isMounted());
    }

    /// As when the page of the destinations appears.
    void look()
    {
        model->refreshQuota();
        settle();
    }

    [[nodiscard]] const LocalFolder &local() const { return *model->localFolder(); }

    std::unique_ptr<SmallDisk> disk;
};

TEST_F(LocalVolume, isThatOfTheDiskAndFollowsWhatIsWrittenThere)
{
    mount();
    start();
    settle();
    ASSERT_TRUE(local().hasVolume());
    EXPECT_EQ(local().total(), 64 * 1024);
    EXPECT_GT(local().free(), 0);
    EXPECT_FALSE(local().isOnSystemDisk());
    disk->fill();
    look();
    EXPECT_TRUE(local().hasVolume());
    EXPECT_EQ(local().free(), 0);
    disk->makeRoom();
    look();
    EXPECT_GT(local().free(), 0);
}

TEST_F(LocalVolume, isAbsentWhereOnlyTheMountPointIsLeftOfTheDisk)
{
    mount();
    const QString repository = config.repository(DestinationID::Local);
    ASSERT_TRUE(QDir().mkpath(repository));
    LocalDisk::remember(repository);
    start();
    settle();
    ASSERT_TRUE(local().hasVolume());
    disk.reset();
    ASSERT_TRUE(QDir(config.localFolder).exists());
    look();
    EXPECT_TRUE(local().isKnown());
    EXPECT_FALSE(local().hasVolume());
    EXPECT_FALSE(local().isOnSystemDisk());
    mount();
    look();
    EXPECT_TRUE(local().hasVolume());
}

} // namespace
