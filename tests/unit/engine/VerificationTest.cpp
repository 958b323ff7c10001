#include "engine/Verification.h"

#include "platform/WeekOfYear.h"
#include "state/StatusStore.h"
#include "tests/support/EngineFixture.h"

namespace {

using namespace std::chrono_literals;

class VerificationTest : public EngineFixture
{
protected:
    VerificationTest() { setLastCheck({}); }

    void runIfDue(DestinationID destination = DestinationID::Local)
    {
        const Restic restic{destination, config, QStringLiteral("the key"), std::nullopt};
        Verification(restic, *handle, [this](const QString &title, const QString &body) {
            notifications.append({title, body});
        }).runIfDue();
    }

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

TEST_F(VerificationTest, aDestinationThatWasNeverCheckedIsDue)
{
    runIfDue();
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

TEST_F(VerificationTest, exactlySevenDaysAfterACheckNoneIsDue)
{
    setLastCheck({{local, clock.moment().addDays(-7)}});
    runIfDue();
    EXPECT_TRUE(checks().isEmpty());
    EXPECT_TRUE(records().isEmpty());

    setLastCheck({{local, clock.moment().addDays(-7).addSecs(-1)}});
    runIfDue();
    EXPECT_EQ(checks().size(), 1);
}

TEST_F(VerificationTest, aCheckUpToADayAheadIsNotDue)
{
    setLastCheck({{local, clock.moment().addDays(1)}});
    runIfDue();
    EXPECT_TRUE(checks().isEmpty());
}

TEST_F(VerificationTest, aCheckMoreThanADayAheadCountsAsNone)
{
    setLastCheck({{local, clock.moment().addDays(1).addSecs(1)}});
    runIfDue();
    EXPECT_EQ(checks().size(), 1);
}

TEST_F(VerificationTest, aDiskHasATwentiethOfItsDataRead)
{
    runIfDue();
    const int part = weekOfYear(clock.moment()) % 20 + 1;
    EXPECT_EQ(checks().value(0).arguments,
              (QStringList{QStringLiteral("check"), QStringLiteral("--read-data-subset"),
                           QStringLiteral("%1/20").arg(part)}));
}

TEST_F(VerificationTest, twentyWeeksReadAllTwentyParts)
{
    QStringList parts;
    for (int week = 0; week < 20; ++week) {
        tools.calls.clear();
        runIfDue();
        parts.append(checks().value(0).arguments.value(2));
        clock.advance(7 * 24h + 1s);
    }
    parts.removeDuplicates();
    EXPECT_EQ(parts.size(), 20);
    EXPECT_TRUE(parts.contains(QStringLiteral("1/20")));
    EXPECT_TRUE(parts.contains(QStringLiteral("20/20")));
    EXPECT_FALSE(parts.contains(QStringLiteral("0/20")));
}

TEST_F(VerificationTest, theNetworksHaveNoDataRead)
{
    useAllDestinations();
    runIfDue(DestinationID::Drive);
    runIfDue(DestinationID::Server);
    ASSERT_EQ(checks().size(), 2);
    for (const ScriptedTools::Call &call : checks()) {
        EXPECT_EQ(call.arguments.sliced(2), QStringList{QStringLiteral("check")});
    }
}

TEST_F(VerificationTest, theStatusShowsIt)
{
    std::optional<RunStatus> status;
    tools.before = [&status](const ScriptedTools::Call &call) {
        if (call.command() == QLatin1String("check")) {
            status = StatusStore::loadStatus();
        }
    };
    runIfDue();
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

TEST_F(VerificationTest, damageIsReportedInOurWords)
{
    tools.check = ScriptedTools::ended(1, QStringLiteral("pack 1234: not found\n"
                                                         "Fatal: repository contains errors\n"));
    runIfDue();
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

TEST_F(VerificationTest, aCheckThatCouldNotRunHasTheWordsOfTheTool)
{
    tools.check = ScriptedTools::ended(11);
    runIfDue();
    EXPECT_EQ(records().value(0).message,
              QStringLiteral("Destinazione occupata da un'altra operazione"));
}

TEST_F(VerificationTest, aFailedCheckIsRepeatedWithANotificationEachTime)
{
    tools.check = ScriptedTools::ended(1, QStringLiteral("Fatal: repository contains errors"));
    runIfDue();
    clock.advance(1h);
    runIfDue();
    EXPECT_EQ(checks().size(), 2);
    EXPECT_EQ(notifications.size(), 2);
}

TEST_F(VerificationTest, aStoppedCheckLeavesNothing)
{
    tools.before = [this](const ScriptedTools::Call &call) {
        if (call.command() == QLatin1String("check")) {
            handle->terminate();
            tools.check = ScriptedTools::ended(130);
        }
    };
    runIfDue();
    EXPECT_EQ(checks().size(), 1);
    EXPECT_TRUE(records().isEmpty());
    EXPECT_TRUE(lastCheck().isEmpty());
    EXPECT_TRUE(notifications.isEmpty());
}

TEST_F(VerificationTest, theDateKeptIsTheOneBeforeTheCheck)
{
    const QDateTime start = clock.moment();
    tools.before = [this](const ScriptedTools::Call &call) {
        if (call.command() == QLatin1String("check")) {
            clock.advance(90s);
        }
    };
    runIfDue();
    EXPECT_EQ(lastCheck().value(local), start);
    EXPECT_EQ(records().value(0).duration, 90.0);
}

} // namespace
