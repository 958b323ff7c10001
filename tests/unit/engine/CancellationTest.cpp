#include "tests/support/EngineFixture.h"

#include "state/StatusStore.h"

#include <QDir>

namespace {

class Cancellation : public EngineFixture
{
protected:
    /// Asks the cycle to stop when the tools are called with this command, for this destination.
    void stopAt(const char *command, const QString &repositoryStart = {})
    {
        tools.before = [=, this](const ScriptedTools::Call &call) {
            if (call.command() == QLatin1String(command) &&
                call.repository().startsWith(repositoryStart)) {
                handle->terminate();
            }
        };
    }

    static void expectStopped(const RunRecord &record)
    {
        EXPECT_EQ(record.outcome, Outcome::Cancelled);
        EXPECT_EQ(record.message, QStringLiteral("Interrotto"));
        EXPECT_EQ(record.filesNew, 0);
        EXPECT_EQ(record.filesChanged, 0);
        EXPECT_EQ(record.dataAdded, 0);
        EXPECT_FALSE(record.kind);
    }
};

TEST_F(Cancellation, aStopBeforeTheFirstDestinationLeavesNoRecord)
{
    useAllDestinations();
    handle->terminate();
    EXPECT_EQ(run(), 0);
    EXPECT_FALSE(content("history.json"));
    EXPECT_TRUE(tools.calls.isEmpty());
    EXPECT_FALSE(content("status.json"));
}

TEST_F(Cancellation, theGatesStillSpeakAfterAStop)
{
    handle->terminate();
    secrets.items.clear();
    EXPECT_EQ(run(), 1);
    EXPECT_EQ(onlyRecord().outcome, Outcome::Failed);
}

TEST_F(Cancellation, aStopDuringTheFirstOfThreeLeavesItsRecordAlone)
{
    useAllDestinations();
    stopAt("backup");
    tools.backup = ScriptedTools::ended(130);
    EXPECT_EQ(run(), 0);
    expectStopped(onlyRecord());
    EXPECT_EQ(tools.callsOf(QStringLiteral("backup")).size(), 1);
    EXPECT_FALSE(content("status.json"));
}

TEST_F(Cancellation, aStopBetweenTwoDestinationsIsSeenAtTheNext)
{
    useAllDestinations();
    stopAt("backup", QStringLiteral("rclone:vellomar:"));
    EXPECT_EQ(run(), 0);
    EXPECT_EQ(outcomes(),
              (QStringList{QStringLiteral("local ok"), QStringLiteral("drive cancelled")}));
}

TEST_F(Cancellation, anEarlierFailureStillFailsAStoppedCycle)
{
    useAllDestinations();
    tools.before = [this](const ScriptedTools::Call &call) {
        const bool isDisk = !call.repository().startsWith(QLatin1String("rclone:"));
        tools.backup = ScriptedTools::ended(isDisk ? 1 : 130, QStringLiteral("Fatal: no"));
        if (!isDisk && call.command() == QLatin1String("backup")) {
            handle->terminate();
        }
    };
    EXPECT_EQ(run(), 1);
    EXPECT_EQ(outcomes(),
              (QStringList{QStringLiteral("local failed"), QStringLiteral("drive cancelled")}));
}

TEST_F(Cancellation, theExitCodeOfAStoppedBackupDoesNotMatter)
{
    tools.progress = {QStringLiteral(R"({"message_type":"summary","files_new":5,)"
                                     R"("files_changed":6,"data_added_packed":7})")};
    for (const int status : {0, 1, 2, 3, 10, 11, 12, 130, 137, -1}) {
        handle = std::make_shared<ProcessHandle>();
        stopAt("backup");
        tools.backup = ScriptedTools::ended(status, QStringLiteral("Fatal: no"));
        EXPECT_EQ(run(), 0) << status;
        expectStopped(StatusStore::loadHistory().first());
    }
}

TEST_F(Cancellation, afterAStopWhileTheRepositoryIsOpenedNoFurtherStepIsStarted)
{
    const QList<std::pair<const char *, QStringList>> rows = {
        {"cat config", {QStringLiteral("cat config"), QStringLiteral("backup")}},
        {"unlock",
         {QStringLiteral("cat config"), QStringLiteral("unlock"), QStringLiteral("backup")}}};
    for (const auto &[command, commands] : rows) {
        handle = std::make_shared<ProcessHandle>();
        tools.calls.clear();
        stopAt(command);
        EXPECT_EQ(run(), 0) << command;
        // The backup is no such step: it is started and interrupted at once.
        EXPECT_EQ(tools.commands(), commands);
        EXPECT_EQ(tools.calls.last().handle, handle.get());
        EXPECT_EQ(tools.calls.last().stop, StopManner::atOnce);
        expectStopped(StatusStore::loadHistory().first());
    }
}

TEST_F(Cancellation, aStopWhileTheRepositoryIsMadeTakesEffectAtTheBackup)
{
    tools.catConfig = ScriptedTools::ended(10);
    stopAt("init");
    EXPECT_EQ(run(), 0);
    expectStopped(onlyRecord());
    EXPECT_EQ(tools.callsOf(QStringLiteral("backup")).size(), 1);
}

TEST_F(Cancellation, whatFailsBeforeTheBackupAfterAStopIsRecordedAsTheStop)
{
    useAllDestinations();
    stopAt("cat config");
    tools.catConfig = ScriptedTools::ended(12);
    EXPECT_EQ(run(), 0);
    expectStopped(onlyRecord());
    EXPECT_EQ(tools.commands(), QStringList({QStringLiteral("cat config")}));
}

TEST_F(Cancellation, anAccountIsNotRecordedAsNotConnectedWhenTheQuestionForItWasStopped)
{
    useAllDestinations();
    config.localEnabled = false;
    stopAt("config dump");
    tools.dump = ScriptedTools::ended(130);
    EXPECT_EQ(run(), 0);
    expectStopped(onlyRecord());
}

TEST_F(Cancellation, missingSourcesAfterAStopAreRecordedAsTheStop)
{
    stopAt("cat config");
    ASSERT_TRUE(QDir().rmdir(config.sources.first()));
    EXPECT_EQ(run(), 0);
    expectStopped(onlyRecord());
}

} // namespace
