#include "engine/DestinationRun.h"

#include "state/StatusStore.h"
#include "tests/support/EngineFixture.h"

#include <QDir>
#include <QFile>

namespace {

class DestinationRunTest : public EngineFixture
{
protected:
    RunRecord run(DestinationID destination = DestinationID::Local)
    {
        const StoppableSteps steps(*handle);
        StatusThrottle throttle;
        const Restic restic{destination, config, QStringLiteral("the key"), std::nullopt};
        return DestinationRun(restic, *handle, throttle).run();
    }

    /// Lets restic forecast that this run's version would go, as one of tomorrow stays.
    void letTheNewVersionBeForecastToGo()
    {
        EngineState state = StatusStore::loadState();
        state.newestVersion.clear();
        StatusStore::save(state);
        tools.forgetForecast.standardOutput =
            QStringLiteral(R"([{"keep":[{"id":"later","time":"2026-03-02T10:00:00Z"}],)"
                           R"("remove":[{"id":"the new one","time":"2026-03-01T10:00:00Z"}]}])");
    }
};

TEST_F(DestinationRunTest, everyStepCanBeStoppedAndTheBackupIsFollowed)
{
    tools.catConfig = ScriptedTools::ended(10);
    run();
    EXPECT_EQ(tools.commands(), (QStringList{QStringLiteral("cat config"), QStringLiteral("init"),
                                             QStringLiteral("backup"), QStringLiteral("forget")}));
    for (const ScriptedTools::Call &call : tools.calls) {
        const bool isBackup = call.command() == QLatin1String("backup");
        const bool isWork = isBackup || call.command() == QLatin1String("forget");
        EXPECT_EQ(call.handle, handle.get());
        EXPECT_EQ(call.stop, isWork ? StopManner::atOnce : StopManner::inTime);
        EXPECT_EQ(call.isFollowed, isBackup);
        EXPECT_EQ(call.input, QStringLiteral("the key"));
    }
}

TEST_F(DestinationRunTest, aRepositoryThatIsThereIsUnlockedFirst)
{
    tools.unlock = ScriptedTools::ended(1, QStringLiteral("Fatal: unlocking failed"));
    EXPECT_EQ(run().outcome, Outcome::Ok);
    EXPECT_EQ(tools.commands(), (QStringList{QStringLiteral("cat config"), QStringLiteral("unlock"),
                                             QStringLiteral("backup"), QStringLiteral("forget")}));
}

TEST_F(DestinationRunTest, aMissingSourceIsDroppedWithoutAWord)
{
    const QString second = folder("second");
    config.sources = {QStringLiteral("/no such folder"), config.sources.first(), QString(), second};
    const RunRecord record = run();
    const QStringList arguments = tools.callsOf(QStringLiteral("backup")).value(0).arguments;
    EXPECT_EQ(arguments.sliced(arguments.indexOf(QLatin1String("--")) + 1),
              (QStringList{config.sources[1], second}));
    EXPECT_EQ(record.outcome, Outcome::Ok);
    EXPECT_EQ(record.message, QStringLiteral("Completato"));
}

TEST_F(DestinationRunTest, theExclusionsAreWrittenForEveryDestination)
{
    config.excludes = {QStringLiteral("~/Library/Caches"), QStringLiteral("node_modules")};
    useAllDestinations();
    QStringList contents;
    tools.before = [&contents](const ScriptedTools::Call &call) {
        if (call.command() == QLatin1String("backup")) {
            contents.append(QString::fromUtf8(content("excludes.txt").value_or("none")));
            QFile::remove(supportFile("excludes.txt"));
        }
    };
    for (const DestinationID destination : allDestinations) {
        EXPECT_EQ(run(destination).outcome, Outcome::Ok);
    }
    const QString expected = Paths::home() + QLatin1String("/Library/Caches\nnode_modules\n") +
                             config.localFolder + QLatin1String("/Vellomar.backup");
    EXPECT_EQ(contents, (QStringList{expected, expected, expected}));
}

TEST_F(DestinationRunTest, anEmptyListOfExclusionsIsStillAFile)
{
    useAllDestinations();
    config.localEnabled = false;
    EXPECT_EQ(run(DestinationID::Drive).outcome, Outcome::Ok);
    EXPECT_EQ(content("excludes.txt"), QByteArray());
    EXPECT_TRUE(tools.callsOf(QStringLiteral("backup"))
                    .first()
                    .arguments.contains(QStringLiteral("--exclude-file")));
}

TEST_F(DestinationRunTest, exclusionsThatCannotBeWrittenDoNotStopTheRun)
{
    ASSERT_TRUE(QDir().mkdir(supportFile("excludes.txt")));
    EXPECT_EQ(run().outcome, Outcome::Ok);
    EXPECT_TRUE(tools.callsOf(QStringLiteral("backup"))
                    .first()
                    .arguments.contains(supportFile("excludes.txt")));
}

TEST_F(DestinationRunTest, theStatusBeginsWithNothingDone)
{
    std::optional<RunStatus> first;
    tools.before = [&first](const ScriptedTools::Call &) {
        if (!first) {
            first = StatusStore::loadStatus();
        }
    };
    run();
    RunStatus expected;
    expected.pid = ::getpid();
    expected.startedAt = clock.moment();
    expected.destination = DestinationID::Local;
    expected.phase = QStringLiteral("Connessione");
    ASSERT_TRUE(first);
    EXPECT_EQ(*first, expected);
    EXPECT_FALSE(first->secondsRemaining);
    EXPECT_FALSE(first->currentFile);
}

TEST_F(DestinationRunTest, thePhasesFollowOneAnotherForwards)
{
    QStringList phases;
    RunStatus last;
    tools.before = [&](const ScriptedTools::Call &call) {
        const auto status = StatusStore::loadStatus();
        last = status.value_or(RunStatus());
        phases.append(call.command() + QLatin1String(": ") +
                      (status ? status->phase : QStringLiteral("none")));
    };
    tools.progress = {
        QStringLiteral(R"({"message_type":"verbose_status"})"),
        QStringLiteral(R"({"message_type":"status","percent_done":0.25,"total_files":9,)"
                       R"("current_files":["/source/file"],"seconds_remaining":4})"),
        QStringLiteral(R"({"message_type":"summary"})")};
    EXPECT_EQ(run().outcome, Outcome::Ok);
    EXPECT_EQ(phases, (QStringList{QStringLiteral("cat config: Connessione"),
                                   QStringLiteral("unlock: Connessione"),
                                   QStringLiteral("backup: Scansione dei file"),
                                   QStringLiteral("forget: Pulizia delle versioni vecchie")}));
    EXPECT_EQ(last.percent, 1.0);
    EXPECT_FALSE(last.currentFile);
    // The other values of the last line stay.
    EXPECT_EQ(last.totalFiles, 9);
    EXPECT_EQ(last.secondsRemaining, 4);
}

TEST_F(DestinationRunTest, theCleaningPhaseOnlyFollowsABackupThatEndedWell)
{
    for (const int status : {1, 2, 10, 11, 12, 130, -1}) {
        tools.calls.clear();
        tools.backup = ScriptedTools::ended(status);
        EXPECT_EQ(run().outcome, Outcome::Failed);
        EXPECT_EQ(tools.commands().last(), QStringLiteral("backup")) << status;
    }
}

TEST_F(DestinationRunTest, aBackupWithUnreadableFilesEntersTheCleaningPhaseToo)
{
    std::optional<RunStatus> cleaning;
    tools.before = [&cleaning](const ScriptedTools::Call &call) {
        if (call.command() == QLatin1String("forget")) {
            cleaning = StatusStore::loadStatus();
        }
    };
    tools.backup = ScriptedTools::ended(3);
    EXPECT_EQ(run().outcome, Outcome::Warning);
    ASSERT_TRUE(cleaning);
    EXPECT_EQ(cleaning->phase, QStringLiteral("Pulizia delle versioni vecchie"));
    EXPECT_EQ(cleaning->percent, 1.0);
}

TEST_F(DestinationRunTest, aStoppedBackupIsNotFollowedByRetention)
{
    tools.before = [this](const ScriptedTools::Call &call) {
        if (call.command() == QLatin1String("backup")) {
            handle->terminate();
        }
    };
    EXPECT_EQ(run().outcome, Outcome::Cancelled);
    EXPECT_EQ(tools.commands().last(), QStringLiteral("backup"));
}

TEST_F(DestinationRunTest, aFailedRetentionLeavesTheRecordGood)
{
    tools.forget = ScriptedTools::ended(11, QStringLiteral("locked"));
    const RunRecord record = run();
    EXPECT_EQ(record.outcome, Outcome::Ok);
    EXPECT_EQ(record.message, QStringLiteral("Completato"));
}

TEST_F(DestinationRunTest, aStopDuringTheRetentionLeavesTheRecordGood)
{
    tools.before = [this](const ScriptedTools::Call &call) {
        if (call.command() == QLatin1String("forget")) {
            handle->terminate();
            tools.forget = ScriptedTools::ended(130);
        }
    };
    EXPECT_EQ(run().outcome, Outcome::Ok);
}

TEST_F(DestinationRunTest, whereAllVersionsStayTheRecordSaysWhy)
{
    letTheNewVersionBeForecastToGo();
    const RunRecord record = run();
    EXPECT_EQ(record.outcome, Outcome::Warning);
    EXPECT_EQ(record.message,
              QStringLiteral("Completato, ma le versioni vecchie restano: una di loro ha una data "
                             "successiva a questo backup"));
}

TEST_F(DestinationRunTest, unreadableFilesAreReportedBesides)
{
    letTheNewVersionBeForecastToGo();
    tools.backup = ScriptedTools::ended(3);
    EXPECT_EQ(run().message,
              QStringLiteral("Completato, ma 1 elementi non erano leggibili e le versioni vecchie "
                             "restano: una di loro ha una data successiva a questo backup"));
}

TEST_F(DestinationRunTest, aVersionThatResticDidNotNameIsNotRisked)
{
    letTheNewVersionBeForecastToGo();
    tools.progress.clear();
    EXPECT_EQ(run().outcome, Outcome::Ok);
    EXPECT_TRUE(tools.callsOf(QStringLiteral("forget")).isEmpty());
}

} // namespace
