#include "tests/support/ScriptedRestic.h"
#include "tests/support/SmallDisk.h"

#include <QDir>

#include <optional>

namespace {

/// The disk is a real mount, whose folder stays and can be written to when it goes.
class DiskAway : public ScriptedRestic
{
protected:
    void SetUp() override
    {
        attached.emplace(disk, 60'000);
        ASSERT_TRUE(attached->isMounted());
    }

    std::optional<SmallDisk> attached;
};

TEST_F(DiskAway, nothingIsWrittenIntoTheFolderThatStays)
{
    installation.addReal(QStringLiteral("restic"));
    EXPECT_EQ(runCycle(), 0);
    EXPECT_EQ(newestRecord().outcome, Outcome::Ok);
    attached.reset();
    EXPECT_EQ(runCycle(), 0);
    EXPECT_EQ(newestRecord().outcome, Outcome::Skipped);
    EXPECT_EQ(newestRecord().message, QStringLiteral("Disco non collegato"));
    EXPECT_TRUE(QDir(disk).isEmpty());

    attached.emplace(disk, 60'000);
    EXPECT_EQ(runCycle(), 0);
    EXPECT_EQ(newestRecord().outcome, Outcome::Ok);
    EXPECT_EQ(snapshotCount(repository), 1);
}

TEST_F(DiskAway, aDiskThatGoesMidwayHasNoVersion)
{
    script("await\n"
           "echo '{\"message_type\":\"summary\",\"files_new\":3,\"snapshot_id\":\"a\"}'");
    Cycle cycle(installation.program());
    cycle.start();
    ASSERT_TRUE(isAwaiting());
    attached.reset();
    letGo();
    EXPECT_EQ(cycle.finish(), 1);
    EXPECT_EQ(newestRecord().outcome, Outcome::Failed);
    EXPECT_EQ(newestRecord().message,
              QStringLiteral("Il disco è stato scollegato durante il backup"));
    EXPECT_EQ(newestRecord().filesNew, 0);
    EXPECT_FALSE(commands().contains("forget"));
}

} // namespace
