#include "tests/support/EngineFixture.h"

#include "platform/WeekOfYear.h"
#include "state/StatusStore.h"

namespace {

using namespace std::chrono_literals;

class Verification : public EngineFixture
{
protected:
    Verification() { setLastCheck({}); }

    static void setLastCheck(const QMap<QString, QDateTime> &dates)
    {
        EngineState state = StatusStore::loadState();
        state.lastCheck = dates;
        StatusStore::save(state);
    }

    static QMap<QString, QDateTime> lastCheck() { return StatusStore::loadState().lastCheck; }

    QList<ScriptedTools::Call> checks() { return tools.callsOf(QStringLiteral("check")); }

    /// The verification records of the history, newest first.
    static QList<RunRecord> records()
    {
        QList<RunRecord> history = StatusStore::loadHistory();
        history.removeIf([](const RunRecord &record) { return !record.kind; });
        return history;
    }
};

const QString local = QStringLiteral("local");

TEST_F(Verification, theFirstGoodBackupOfADestinationIsFollowedByACheck)
{
    EXPECT_EQ(run(), 0);
    ASSERT_EQ(checks().size(), 1);
    EXPECT_EQ(checks().first().handle, handle.get());
    EXPECT_FALSE(checks().first().isFollowed);
    ASSERT_EQ(records().size(), 1);
    const RunRecord record = records().first();
    EXPECT_EQ(record.kind, QStringLiteral("check"));
    EXPECT_EQ(record.outcome, Outcome::Ok);
    EXPECT_EQ(record.message, QStringLiteral("Nessun errore trovato"));
    EXPECT_EQ(record.destination, DestinationID::Local);
    EXPECT_EQ(record.date, clock.moment());
    EXPECT_EQ(record.filesNew, 0);
    EXPECT_EQ(record.filesChanged, 0);
    EXPECT_EQ(record.dataAdded, 0);
    EXPECT_EQ(lastCheck().value(local), clock.moment());
    EXPECT_TRUE(notifications.isEmpty());
}

TEST_F(Verification, exactlySevenDaysAfterACheckNoneIsDue)
{
    setLastCheck({{local, clock.moment().addDays(-7)}});
    EXPECT_EQ(run(), 0);
    EXPECT_TRUE(checks().isEmpty());
    EXPECT_TRUE(records().isEmpty());

    setLastCheck({{local, clock.moment().addDays(-7).addSecs(-1)}});
    EXPECT_EQ(run(), 0);
    EXPECT_EQ(checks().size(), 1);
}

TEST_F(Verification, aCheckUpToADayAheadIsNotDue)
{
    setLastCheck({{local, clock.moment().addDays(1)}});
    EXPECT_EQ(run(), 0);
    EXPECT_TRUE(checks().isEmpty());
}

TEST_F(Verification, aCheckMoreThanADayAheadCountsAsNone)
{
    setLastCheck({{local, clock.moment().addDays(1).addSecs(1)}});
    EXPECT_EQ(run(), 0);
    EXPECT_EQ(checks().size(), 1);
}

TEST_F(Verification, aDiskHasATwentiethOfItsDataRead)
{
    EXPECT_EQ(run(), 0);
    const int part = weekOfYear(clock.moment()) % 20 + 1;
    EXPECT_EQ(checks().value(0).arguments,
              (QStringList{QStringLiteral("check"), QStringLiteral("--read-data-subset"),
                           QStringLiteral("%1/20").arg(part)}));
}

TEST_F(Verification, twentyWeeksReadAllTwentyParts)
{
    QStringList parts;
    for (int week = 0; week < 20; ++week) {
        tools.calls.clear();
        EXPECT_EQ(run(), 0);
        parts.append(checks().value(0).arguments.value(2));
        clock.advance(7 * 24h + 1s);
    }
    parts.removeDuplicates();
    EXPECT_EQ(parts.size(), 20);
    EXPECT_TRUE(parts.contains(QStringLiteral("1/20")));
    EXPECT_TRUE(parts.contains(QStringLiteral("20/20")));
    EXPECT_FALSE(parts.contains(QStringLiteral("0/20")));
}

TEST_F(Verification, theNetworksHaveNoDataRead)
{
    useAllDestinations();
    EXPECT_EQ(run(), 0);
    ASSERT_EQ(checks().size(), 3);
    for (const ScriptedTools::Call &call : {checks().at(1), checks().at(2)}) {
        EXPECT_EQ(call.arguments.sliced(2), QStringList{QStringLiteral("check")});
    }
}

TEST_F(Verification, theStatusTellsOfIt)
{
    std::optional<RunStatus> status;
    tools.before = [&status](const ScriptedTools::Call &call) {
        if (call.command() == QLatin1String("check")) {
            status = StatusStore::loadStatus();
        }
    };
    tools.progress = {QStringLiteral(R"({"message_type":"status","percent_done":0.5,)"
                                     R"("files_done":3,"seconds_remaining":4})")};
    EXPECT_EQ(run(), 0);
    ASSERT_TRUE(status);
    EXPECT_EQ(status->phase, QStringLiteral("Verifica dell'integrità"));
    EXPECT_EQ(status->percent, 1.0);
    EXPECT_EQ(status->filesDone, 0);
    EXPECT_EQ(status->totalFiles, 0);
    EXPECT_EQ(status->bytesDone, 0);
    EXPECT_EQ(status->totalBytes, 0);
    EXPECT_EQ(status->secondsRemaining, std::nullopt);
    EXPECT_EQ(status->currentFile, std::nullopt);
    EXPECT_EQ(status->startedAt, clock.moment());
}

TEST_F(Verification, aWarningIsFollowedByOneToo)
{
    tools.backup = ScriptedTools::ended(3);
    EXPECT_EQ(run(), 0);
    EXPECT_EQ(checks().size(), 1);
}

TEST_F(Verification, aFailedAndASkippedBackupAreNot)
{
    tools.backup = ScriptedTools::ended(1);
    EXPECT_EQ(run(), 1);
    config.localFolder = QStringLiteral("/nonexistent/disk");
    EXPECT_EQ(run(), 0);
    EXPECT_TRUE(checks().isEmpty());
}

TEST_F(Verification, aStoppedBackupIsNot)
{
    tools.before = [this](const ScriptedTools::Call &call) {
        if (call.command() == QLatin1String("backup")) {
            handle->terminate();
        }
    };
    EXPECT_EQ(run(), 0);
    EXPECT_EQ(outcomes(), QStringList{QStringLiteral("local cancelled")});
    EXPECT_TRUE(checks().isEmpty());
}

TEST_F(Verification, damageIsToldInOurWords)
{
    tools.check = ScriptedTools::ended(1, QStringLiteral("pack 1234: not found\n"
                                                         "Fatal: repository contains errors\n"));
    EXPECT_EQ(run(), 0);
    ASSERT_EQ(records().size(), 1);
    EXPECT_EQ(records().first().outcome, Outcome::Failed);
    EXPECT_EQ(records().first().message, QStringLiteral("Il backup contiene dati danneggiati"));
    EXPECT_TRUE(lastCheck().isEmpty());
    ASSERT_EQ(notifications.size(), 1);
    EXPECT_EQ(notifications.first().first, QStringLiteral("Verifica del backup non riuscita"));
    EXPECT_EQ(notifications.first().second,
              QStringLiteral("Disco esterno: Il backup contiene dati danneggiati"));
    EXPECT_EQ(StatusStore::loadState().lastAlert, std::nullopt);
}

TEST_F(Verification, onlyStandardErrorIsSearchedForDamage)
{
    tools.check = {.status = 1,
                   .standardOutput = QStringLiteral("repository contains errors"),
                   .standardError = QStringLiteral("Fatal: something else")};
    EXPECT_EQ(run(), 0);
    EXPECT_EQ(records().value(0).message, QStringLiteral("Fatal: something else"));
}

TEST_F(Verification, aCheckThatCouldNotRunHasTheWordsOfTheTool)
{
    tools.check = ScriptedTools::ended(11);
    EXPECT_EQ(run(), 0);
    EXPECT_EQ(records().value(0).message,
              QStringLiteral("Destinazione occupata da un'altra operazione"));
}

TEST_F(Verification, aFailedCheckIsRepeatedWithANotificationEachTime)
{
    tools.check = ScriptedTools::ended(1, QStringLiteral("Fatal: repository contains errors"));
    EXPECT_EQ(run(), 0);
    clock.advance(1h);
    EXPECT_EQ(run(), 0);
    EXPECT_EQ(checks().size(), 2);
    EXPECT_EQ(notifications.size(), 2);
}

TEST_F(Verification, aFailedCheckDoesNotStopTheCycle)
{
    useAllDestinations();
    tools.check = ScriptedTools::ended(1, QStringLiteral("Fatal: repository contains errors"));
    EXPECT_EQ(run(), 0);
    EXPECT_EQ(tools.callsOf(QStringLiteral("backup")).size(), 3);
    EXPECT_EQ(checks().size(), 3);
}

TEST_F(Verification, aStoppedCheckLeavesNothing)
{
    tools.before = [this](const ScriptedTools::Call &call) {
        if (call.command() == QLatin1String("check")) {
            handle->terminate();
            tools.check = ScriptedTools::ended(130);
        }
    };
    EXPECT_EQ(run(), 0);
    EXPECT_EQ(checks().size(), 1);
    EXPECT_TRUE(records().isEmpty());
    EXPECT_TRUE(lastCheck().isEmpty());
    EXPECT_TRUE(notifications.isEmpty());
}

TEST_F(Verification, theDateKeptIsTheOneBeforeTheCheck)
{
    const QDateTime start = clock.moment();
    tools.before = [this](const ScriptedTools::Call &call) {
        if (call.command() == QLatin1String("check")) {
            clock.advance(90s);
        }
    };
    EXPECT_EQ(run(), 0);
    EXPECT_EQ(lastCheck().value(local), start);
    EXPECT_EQ(records().value(0).duration, 90.0);
}

} // namespace
