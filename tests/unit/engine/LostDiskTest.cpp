#include "state/StatusStore.h"
#include "tests/support/EngineFixture.h"
#include "tests/support/SmallDisk.h"

#include <QDir>

#include <optional>

namespace {

/// The disk is a real mount, whose folder stays when it goes.
class LostDisk : public EngineFixture
{
protected:
    void SetUp() override
    {
        disk.emplace(config.localFolder);
        ASSERT_TRUE(disk->isMounted());
    }

    /// Takes the disk away as soon as restic is called by a command.
    void takeAwayAt(const QString &command)
    {
        tools.before = [this, command](const ScriptedTools::Call &call) {
            if (call.command() == command) {
                disk.reset();
            }
        };
    }

    /// Makes a check due with the next run.
    static void expectCheck()
    {
        EngineState state = StatusStore::loadState();
        state.lastCheck.clear();
        StatusStore::save(state);
    }

    static void expectLost(const RunRecord &record)
    {
        EXPECT_EQ(record.outcome, Outcome::Failed);
        EXPECT_EQ(record.message, QStringLiteral("Il disco è stato scollegato durante il backup"));
    }

    std::optional<SmallDisk> disk;
};

TEST_F(LostDisk, aFolderThatStaysInItsPlaceIsNotBackedUpTo)
{
    EXPECT_EQ(run(), 0);
    disk.reset();
    tools.calls.clear();
    ASSERT_TRUE(QDir(config.localFolder).exists());
    EXPECT_EQ(run(), 0);
    const RunRecord away = StatusStore::loadHistory().first();
    EXPECT_EQ(away.outcome, Outcome::Skipped);
    EXPECT_EQ(away.message, QStringLiteral("Disco non collegato"));
    EXPECT_TRUE(tools.calls.isEmpty());

    disk.emplace(config.localFolder);
    EXPECT_EQ(run(), 0);
    EXPECT_EQ(StatusStore::loadHistory().first().outcome, Outcome::Ok);
}

TEST_F(LostDisk, aRunThatFailedRemembersTheDiskToo)
{
    tools.backup = ScriptedTools::ended(1);
    EXPECT_EQ(run(), 1);
    disk.reset();
    EXPECT_EQ(run(), 0);
    EXPECT_EQ(StatusStore::loadHistory().first().outcome, Outcome::Skipped);
}

TEST_F(LostDisk, goneDuringTheBackupFailsTheRunWhateverResticSays)
{
    for (const int status : {0, 3, 1}) {
        SCOPED_TRACE(status);
        disk.emplace(config.localFolder);
        tools.calls.clear();
        tools.backup = ScriptedTools::ended(status, QStringLiteral("Fatal: odd words"));
        takeAwayAt(QStringLiteral("backup"));
        expectCheck();
        EXPECT_EQ(run(), 1);
        expectLost(StatusStore::loadHistory().first());
        EXPECT_EQ(tools.commands().last(), QStringLiteral("backup"));
    }
}

TEST_F(LostDisk, goneDuringTheRetentionFailsTheRun)
{
    takeAwayAt(QStringLiteral("forget"));
    EXPECT_EQ(run(), 1);
    expectLost(onlyRecord());
}

TEST_F(LostDisk, goneWhileTheRepositoryIsMadeFailsTheRun)
{
    tools.catConfig = ScriptedTools::ended(10);
    takeAwayAt(QStringLiteral("init"));
    EXPECT_EQ(run(), 1);
    expectLost(onlyRecord());
}

TEST_F(LostDisk, anotherOneInItsPlaceFailsTheRun)
{
    std::optional<SmallDisk> other;
    tools.before = [&](const ScriptedTools::Call &call) {
        if (call.command() == QLatin1String("backup")) {
            other.emplace(config.localFolder);
        }
    };
    EXPECT_EQ(run(), 1);
    expectLost(onlyRecord());
}

TEST_F(LostDisk, aStopStaysAStop)
{
    tools.before = [this](const ScriptedTools::Call &call) {
        if (call.command() == QLatin1String("backup")) {
            disk.reset();
            handle->terminate();
        }
    };
    EXPECT_EQ(run(), 0);
    EXPECT_EQ(onlyRecord().outcome, Outcome::Cancelled);
}

TEST_F(LostDisk, goneDuringTheCheckFailsTheCheckAndSaysWhy)
{
    expectCheck();
    takeAwayAt(QStringLiteral("check"));
    EXPECT_EQ(run(), 0);
    const RunRecord check = StatusStore::loadHistory().first();
    EXPECT_EQ(check.kind, QStringLiteral("check"));
    EXPECT_EQ(check.outcome, Outcome::Failed);
    EXPECT_EQ(check.message, QStringLiteral("Il disco è stato scollegato durante la verifica"));
    EXPECT_EQ(notifications.size(), 1);
    EXPECT_FALSE(StatusStore::loadState().lastCheck.contains(QStringLiteral("local")));
}

TEST_F(LostDisk, theOtherDestinationsGoOn)
{
    useAllDestinations();
    takeAwayAt(QStringLiteral("backup"));
    EXPECT_EQ(run(), 1);
    EXPECT_EQ(outcomes(), (QStringList{QStringLiteral("local failed"), QStringLiteral("drive ok"),
                                       QStringLiteral("server ok")}));
}

TEST_F(LostDisk, aFolderChosenInItsPlaceIsOneOnPurpose)
{
    EXPECT_EQ(run(), 0);
    disk.reset();
    config.localFolder = folder("on purpose");
    EXPECT_EQ(run(), 0);
    EXPECT_EQ(StatusStore::loadHistory().first().outcome, Outcome::Ok);
    // And the former one may be chosen again.
    config.localFolder = folder("disk");
    EXPECT_EQ(run(), 0);
    EXPECT_EQ(StatusStore::loadHistory().first().outcome, Outcome::Ok);
}

} // namespace
