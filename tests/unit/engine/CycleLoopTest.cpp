#include "tests/support/EngineFixture.h"

#include "state/StatusStore.h"

#include <QDir>
#include <QFile>

namespace {

using namespace std::chrono_literals;

class CycleLoop : public EngineFixture
{
protected:
    CycleLoop() { useAllDestinations(); }

    /// Lets `restic backup` end with a code of its own for each destination.
    void endBackupsWith(int local, int drive, int server)
    {
        tools.before = [=, this](const ScriptedTools::Call &call) {
            const QString repository = call.repository();
            int status = local;
            if (repository.startsWith(QLatin1String("rclone:vellomar:"))) {
                status = drive;
            } else if (repository.startsWith(QLatin1String("rclone:vellomar-server:"))) {
                status = server;
            }
            tools.backup = ScriptedTools::ended(status, QStringLiteral("Fatal: no"));
        };
    }

    static QStringList list(std::initializer_list<const char *> texts)
    {
        QStringList result;
        for (const char *text : texts) {
            result.append(QString::fromUtf8(text));
        }
        return result;
    }
};

TEST_F(CycleLoop, theOrderIsDiskDriveServer)
{
    EXPECT_EQ(run(), 0);
    EXPECT_EQ(outcomes(), list({"local ok", "drive ok", "server ok"}));
    EXPECT_EQ(content("backup.log"), "2026-03-01T10:00:00Z [local] ok: Completato\n"
                                     "2026-03-01T10:00:00Z [drive] ok: Completato\n"
                                     "2026-03-01T10:00:00Z [server] ok: Completato\n");
    QStringList repositories;
    for (const ScriptedTools::Call &call : tools.callsOf(QStringLiteral("backup"))) {
        repositories.append(call.repository());
    }
    EXPECT_EQ(repositories, (QStringList{config.localFolder + QLatin1String("/Vellomar.backup"),
                                         QStringLiteral("rclone:vellomar:Vellomar/mac"),
                                         QStringLiteral("rclone:vellomar-server:backups/mac")}));
}

TEST_F(CycleLoop, aDestinationThatIsNotInUseIsLeftOut)
{
    config.driveEnabled = false;
    EXPECT_EQ(run(), 0);
    EXPECT_EQ(outcomes(), list({"local ok", "server ok"}));
}

TEST_F(CycleLoop, eachRecordHasAnIdOfItsOwn)
{
    EXPECT_EQ(run(), 0);
    const QList<RunRecord> history = StatusStore::loadHistory();
    ASSERT_EQ(history.size(), 3);
    EXPECT_NE(history[0].id, history[1].id);
    EXPECT_NE(history[1].id, history[2].id);
    EXPECT_NE(history[0].id, history[2].id);
}

TEST_F(CycleLoop, aFailureDoesNotStopTheOthers)
{
    endBackupsWith(1, 0, 3);
    EXPECT_EQ(run(), 1);
    EXPECT_EQ(outcomes(), list({"local failed", "drive ok", "server warning"}));
}

TEST_F(CycleLoop, aFailureOfTheLastDestinationCounts)
{
    endBackupsWith(0, 3, 1);
    EXPECT_EQ(run(), 1);
    EXPECT_EQ(outcomes(), list({"local ok", "drive warning", "server failed"}));
}

TEST_F(CycleLoop, aFailureInTheMiddleCounts)
{
    endBackupsWith(0, 1, 0);
    EXPECT_EQ(run(), 1);
    EXPECT_EQ(outcomes(), list({"local ok", "drive failed", "server ok"}));
}

TEST_F(CycleLoop, warningsDoNotCountAsFailure)
{
    endBackupsWith(3, 3, 3);
    EXPECT_EQ(run(), 0);
}

TEST_F(CycleLoop, allDestinationsOutOfReachGiveOneSkipEach)
{
    ASSERT_TRUE(QDir().rmdir(config.localFolder));
    tools.dump.standardOutput = QStringLiteral("{}");
    EXPECT_EQ(run(false), 0);
    EXPECT_EQ(outcomes(), list({"local skipped", "drive skipped", "server skipped"}));
    const QList<RunRecord> history = StatusStore::loadHistory();
    ASSERT_EQ(history.size(), 3);
    EXPECT_EQ(history[2].message, QStringLiteral("Disco non collegato"));
    EXPECT_EQ(history[1].message, QStringLiteral("Google Drive non collegato"));
    EXPECT_EQ(history[0].message, QStringLiteral("Server non collegato"));
    for (const ScriptedTools::Call &call : tools.calls) {
        EXPECT_EQ(call.tool(), QStringLiteral("rclone"));
    }
    EXPECT_FALSE(content("status.json"));
}

TEST_F(CycleLoop, aDriveWithoutATokenIsNotConnected)
{
    config.localEnabled = false;
    tools.dump.standardOutput =
        QStringLiteral(R"({"vellomar": {"type": "drive"}, "vellomar-server": {}})");
    EXPECT_EQ(run(), 0);
    EXPECT_EQ(outcomes(), list({"drive skipped", "server ok"}));
}

TEST_F(CycleLoop, anUnreachableDestinationDoesNotStopTheOthers)
{
    ASSERT_TRUE(QDir().rmdir(config.localFolder));
    EXPECT_EQ(run(), 0);
    EXPECT_EQ(outcomes(), list({"local skipped", "drive ok", "server ok"}));
}

TEST_F(CycleLoop, theLastStatusStaysUntilTheNextDestinationBegins)
{
    tools.progress = {QStringLiteral(
        R"({"message_type":"status","percent_done":0.5,"files_done":7,"seconds_remaining":3,)"
        R"("current_files":["/a"]})")};
    std::optional<RunStatus> afterFirst;
    tools.before = [&afterFirst](const ScriptedTools::Call &call) {
        if (!afterFirst && call.command() == QLatin1String("cat config") &&
            call.repository().startsWith(QLatin1String("rclone:"))) {
            afterFirst = StatusStore::loadStatus();
        }
    };
    EXPECT_EQ(run(), 0);
    // The next cycle begins with nothing of the one before it.
    RunStatus fresh;
    fresh.pid = ::getpid();
    fresh.startedAt = clock.moment();
    fresh.destination = DestinationID::Drive;
    fresh.phase = QStringLiteral("Connessione");
    ASSERT_TRUE(afterFirst);
    EXPECT_EQ(*afterFirst, fresh);
}

TEST_F(CycleLoop, theSettingsAreThoseOfTheStart)
{
    tools.before = [this](const ScriptedTools::Call &) { config.driveEnabled = false; };
    EXPECT_EQ(run(), 0);
    EXPECT_EQ(outcomes().size(), 3);
}

TEST_F(CycleLoop, theKeyIsReadOnceAndGivenToEveryRun)
{
    EXPECT_EQ(run(), 0);
    for (const ScriptedTools::Call &call : tools.calls) {
        if (call.tool() == QLatin1String("restic")) {
            EXPECT_EQ(call.input, QStringLiteral("the key"));
        }
    }
    // The other read is for the key of rclone's configuration.
    EXPECT_EQ(secrets.reads, 2);
}

TEST_F(CycleLoop, manualAndScheduledRunsDoTheSame)
{
    EXPECT_EQ(run(false), 0);
    const QStringList scheduled = tools.commands();
    tools.calls.clear();
    EXPECT_EQ(run(true), 0);
    QStringList manual = tools.commands();
    EXPECT_EQ(manual.filter(QStringLiteral("config encryption")), QStringList());
    // What is looked up once a process isn't looked up again.
    QStringList expected = scheduled;
    expected.removeAll(QStringLiteral("config encryption"));
    expected.removeAll(QStringLiteral("config dump"));
    manual.removeAll(QStringLiteral("config dump"));
    EXPECT_EQ(manual, expected);
}

TEST_F(CycleLoop, oneCycleSharesThePauseAmongItsDestinations)
{
    tools.progress = {QStringLiteral(R"({"message_type":"status","files_done":1})"),
                      QStringLiteral(R"({"message_type":"status","files_done":2})")};
    // What is on disk when the next destination's run has begun doesn't show it; the file's state
    // when the backup ends can, and a run that fails writes nothing more.
    tools.backup = ScriptedTools::ended(1);
    class LastStatus final : public Clock
    {
    public:
        [[nodiscard]] QDateTime moment() const override { return QDateTime::currentDateTimeUtc(); }
        [[nodiscard]] std::chrono::steady_clock::time_point reading() const override
        {
            if (const auto status = StatusStore::loadStatus()) {
                phases.append(rawValue(status->destination) + u' ' + status->phase);
            }
            return std::chrono::steady_clock::time_point(1h);
        }
        mutable QStringList phases;
    };
    const LastStatus watching;
    const ScopedClock inForce(watching);
    EXPECT_EQ(run(), 1);
    EXPECT_TRUE(watching.phases.contains(QStringLiteral("local Copia dei file")));
    EXPECT_FALSE(watching.phases.contains(QStringLiteral("drive Copia dei file")));
    EXPECT_FALSE(watching.phases.contains(QStringLiteral("server Copia dei file")));
    EXPECT_TRUE(watching.phases.contains(QStringLiteral("drive Scansione dei file")));
}

TEST_F(CycleLoop, aProblemIsNotifiedAtTheEnd)
{
    config.alertAfterHours = 0;
    endBackupsWith(0, 1, 1);
    EXPECT_EQ(run(), 1);
    ASSERT_EQ(notifications.size(), 1);
    EXPECT_EQ(notifications.first().first, QStringLiteral("Backup non riuscito"));
    EXPECT_EQ(notifications.first().second, QStringLiteral("Google Drive: Fatal: no"));
}

TEST_F(CycleLoop, aStoppedOneIsNoProblemToReport)
{
    config.alertAfterHours = 0;
    config.localFolder = QStringLiteral("/nonexistent/disk");
    tools.before = [this](const ScriptedTools::Call &call) {
        if (call.command() == QLatin1String("backup")) {
            handle->terminate();
        }
    };
    EXPECT_EQ(run(), 0);
    EXPECT_EQ(outcomes(),
              (QStringList{QStringLiteral("local skipped"), QStringLiteral("drive cancelled")}));
    EXPECT_TRUE(notifications.isEmpty());
}

TEST_F(CycleLoop, theGatesBeforeTheDestinationsNotifyOfNothing)
{
    config.alertAfterHours = 0;
    secrets.items.clear();
    EXPECT_EQ(run(), 1);
    config.skipOnBattery = true;
    onBattery = true;
    EXPECT_EQ(run(false), 0);
    EXPECT_TRUE(notifications.isEmpty());
}

TEST_F(CycleLoop, aFailedCheckIsNoProblemOfTheCycle)
{
    config.alertAfterHours = 0;
    EngineState state = StatusStore::loadState();
    state.lastCheck.clear();
    StatusStore::save(state);
    tools.check = ScriptedTools::ended(1);
    EXPECT_EQ(run(), 0);
    ASSERT_EQ(notifications.size(), 3);
    for (const auto &[title, body] : notifications) {
        EXPECT_EQ(title, QStringLiteral("Verifica del backup non riuscita"));
    }
    EXPECT_EQ(StatusStore::loadState().lastAlert, std::nullopt);
}

/// Each good backup of a destination is followed by its check.
class ChecksInTheCycle : public CycleLoop
{
protected:
    ChecksInTheCycle()
    {
        EngineState state = StatusStore::loadState();
        state.lastCheck.clear();
        StatusStore::save(state);
    }

    [[nodiscard]] qsizetype checkCount() const
    {
        return tools.callsOf(QStringLiteral("check")).size();
    }
};

TEST_F(ChecksInTheCycle, aGoodBackupAndOneWithAWarningAreFollowedByOne)
{
    endBackupsWith(0, 3, 1);
    EXPECT_EQ(run(), 1);
    EXPECT_EQ(outcomes(),
              list({"local ok", "local ok", "drive warning", "drive ok", "server failed"}));
    EXPECT_EQ(checkCount(), 2);
}

TEST_F(ChecksInTheCycle, aSkippedBackupIsNot)
{
    config.localFolder = QStringLiteral("/nonexistent/disk");
    config.driveEnabled = config.serverEnabled = false;
    EXPECT_EQ(run(), 0);
    EXPECT_EQ(checkCount(), 0);
}

TEST_F(ChecksInTheCycle, aStoppedBackupIsNot)
{
    tools.before = [this](const ScriptedTools::Call &call) {
        if (call.command() == QLatin1String("backup")) {
            handle->terminate();
        }
    };
    EXPECT_EQ(run(), 0);
    EXPECT_EQ(outcomes(), list({"local cancelled"}));
    EXPECT_EQ(checkCount(), 0);
}

TEST_F(ChecksInTheCycle, aFailedOneDoesNotStopTheCycle)
{
    tools.check = ScriptedTools::ended(1, QStringLiteral("Fatal: repository contains errors"));
    EXPECT_EQ(run(), 0);
    EXPECT_EQ(tools.callsOf(QStringLiteral("backup")).size(), 3);
    EXPECT_EQ(checkCount(), 3);
}

} // namespace
