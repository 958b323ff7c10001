#include "tests/support/EngineFixture.h"

#include "state/JSONFile.h"
#include "state/StatusStore.h"

namespace {

using namespace std::chrono_literals;

class Retention : public EngineFixture
{
protected:
    Retention() { config.keepDays = 7; }

    void setLastPrune(const QString &destination, const QDateTime &date)
    {
        EngineState state = StatusStore::loadState();
        state.lastPrune.insert(destination, date);
        StatusStore::save(state);
    }

    static std::optional<QDateTime> lastPrune(const QString &destination)
    {
        const QMap<QString, QDateTime> dates = StatusStore::loadState().lastPrune;
        return dates.contains(destination) ? std::optional(dates.value(destination)) : std::nullopt;
    }

    /// The arguments of the one `restic forget` of the last run.
    QStringList forgotten()
    {
        const QList<ScriptedTools::Call> calls = tools.callsOf(QStringLiteral("forget"));
        EXPECT_EQ(calls.size(), 1);
        return calls.value(0).arguments;
    }

    [[nodiscard]] QList<ScriptedTools::Call> forecasts() const
    {
        return tools.callsOf(QStringLiteral("forget --dry-run"));
    }

    /// Makes the engine a stranger to every repository.
    static void forgetVersionsKnown()
    {
        EngineState state = StatusStore::loadState();
        state.newestVersion.clear();
        StatusStore::save(state);
    }

    /// restic's forecast: a version of the next day stays, and this one goes.
    [[nodiscard]] QString letsGo(const char *version) const
    {
        return QStringLiteral(R"([{"keep":[{"id":"later","time":"%1"}],)"
                              R"("remove":[{"id":"%2","time":"%3"}]}])")
            .arg(JSONFile::dateText(clock.moment().addDays(1)), QString::fromUtf8(version),
                 JSONFile::dateText(clock.moment()));
    }

    bool prunes() { return forgotten().contains(QStringLiteral("--prune")); }
};

const QString local = QStringLiteral("local");

TEST_F(Retention, theArgumentsAreTheTagTheGroupingThePolicyAndThePrune)
{
    setLastPrune(local, clock.moment().addDays(-8));
    EXPECT_EQ(run(), 0);
    EXPECT_EQ(forgotten().join(u' '), QStringLiteral("forget --tag vellomar --group-by host "
                                                     "--keep-hourly 24 --keep-daily 7 --prune"));
}

TEST_F(Retention, itFollowsTheBackupAndCanBeStopped)
{
    EXPECT_EQ(run(), 0);
    const QStringList commands = tools.commands();
    EXPECT_EQ(commands.indexOf(QStringLiteral("forget")),
              commands.indexOf(QStringLiteral("backup")) + 1);
    const ScriptedTools::Call call = tools.callsOf(QStringLiteral("forget")).value(0);
    EXPECT_EQ(call.handle, handle.get());
    EXPECT_FALSE(call.isFollowed);
}

TEST_F(Retention, theFirstRetentionOfADestinationPrunes)
{
    StatusStore::save(EngineState{{}, StatusStore::loadState().lastCheck, std::nullopt});
    EXPECT_EQ(run(), 0);
    EXPECT_TRUE(prunes());
    EXPECT_EQ(lastPrune(local), clock.moment());
}

TEST_F(Retention, exactlySevenDaysAfterThePruneNoneIsDue)
{
    const QDateTime last = clock.moment().addDays(-7);
    setLastPrune(local, last);
    EXPECT_EQ(run(), 0);
    EXPECT_FALSE(prunes());
    EXPECT_EQ(lastPrune(local), last);
}

TEST_F(Retention, aSecondAfterSevenDaysPruningIsDue)
{
    setLastPrune(local, clock.moment().addDays(-7).addSecs(-1));
    EXPECT_EQ(run(), 0);
    EXPECT_TRUE(prunes());
}

TEST_F(Retention, withASingleVersionPruningIsDueAfterADay)
{
    config.keepDays = -1;
    setLastPrune(local, clock.moment().addDays(-1));
    EXPECT_EQ(run(), 0);
    EXPECT_FALSE(prunes());

    tools.calls.clear();
    setLastPrune(local, clock.moment().addDays(-1).addSecs(-1));
    EXPECT_EQ(run(), 0);
    EXPECT_TRUE(prunes());
}

TEST_F(Retention, aPruneUpToADayAheadIsNotDue)
{
    setLastPrune(local, clock.moment().addDays(1));
    EXPECT_EQ(run(), 0);
    EXPECT_FALSE(prunes());
}

TEST_F(Retention, aPruneMoreThanADayAheadCountsAsNone)
{
    setLastPrune(local, clock.moment().addDays(1).addSecs(1));
    EXPECT_EQ(run(), 0);
    EXPECT_TRUE(prunes());
    EXPECT_EQ(lastPrune(local), clock.moment());
}

TEST_F(Retention, theDateIsTheOneAfterResticHasEnded)
{
    setLastPrune(local, clock.moment().addDays(-8));
    tools.before = [this](const ScriptedTools::Call &call) {
        if (call.command() == QLatin1String("forget")) {
            clock.advance(2h);
        }
    };
    EXPECT_EQ(run(), 0);
    EXPECT_EQ(lastPrune(local), clock.moment());
}

TEST_F(Retention, aFailureChangesNeitherTheRecordNorTheState)
{
    const QDateTime last = clock.moment().addDays(-8);
    setLastPrune(local, last);
    tools.forget = ScriptedTools::ended(11, QStringLiteral("locked"));
    EXPECT_EQ(run(), 0);
    EXPECT_EQ(onlyRecord().outcome, Outcome::Ok);
    EXPECT_EQ(onlyRecord().message, QStringLiteral("Completato"));
    EXPECT_EQ(lastPrune(local), last);
    EXPECT_TRUE(notifications.isEmpty());
}

TEST_F(Retention, aStopDuringThePruneLeavesTheRunGoodAndThePruneDue)
{
    const QDateTime last = clock.moment().addDays(-8);
    setLastPrune(local, last);
    tools.before = [this](const ScriptedTools::Call &call) {
        if (call.command() == QLatin1String("forget")) {
            handle->terminate();
            tools.forget = ScriptedTools::ended(130);
        }
    };
    EXPECT_EQ(run(), 0);
    EXPECT_EQ(onlyRecord().outcome, Outcome::Ok);
    EXPECT_EQ(lastPrune(local), last);
}

TEST_F(Retention, aWarningIsFollowedByItToo)
{
    tools.backup = ScriptedTools::ended(3);
    EXPECT_EQ(run(), 0);
    EXPECT_EQ(tools.callsOf(QStringLiteral("forget")).size(), 1);
}

TEST_F(Retention, aFailedAndAStoppedBackupAreNot)
{
    tools.backup = ScriptedTools::ended(1);
    EXPECT_EQ(run(), 1);
    EXPECT_TRUE(tools.callsOf(QStringLiteral("forget")).isEmpty());

    tools.backup = ScriptedTools::ended(0);
    handle->terminate();
    run();
    EXPECT_TRUE(tools.callsOf(QStringLiteral("forget")).isEmpty());
}

TEST_F(Retention, eachDestinationHasAnEntryOfItsOwn)
{
    useAllDestinations();
    setLastPrune(local, clock.moment().addDays(-1));
    setLastPrune(QStringLiteral("drive"), clock.moment().addDays(-8));
    setLastPrune(QStringLiteral("server"), clock.moment().addDays(-8));
    EXPECT_EQ(run(), 0);
    const QList<ScriptedTools::Call> calls = tools.callsOf(QStringLiteral("forget"));
    ASSERT_EQ(calls.size(), 3);
    EXPECT_FALSE(calls[0].arguments.contains(QStringLiteral("--prune")));
    EXPECT_TRUE(calls[1].arguments.contains(QStringLiteral("--prune")));
    EXPECT_TRUE(calls[2].arguments.contains(QStringLiteral("--prune")));
    EXPECT_EQ(lastPrune(local), clock.moment().addDays(-1));
    EXPECT_EQ(lastPrune(QStringLiteral("drive")), clock.moment());
    EXPECT_EQ(lastPrune(QStringLiteral("server")), clock.moment());
}

TEST_F(Retention, forgettingAloneIsNoPrune)
{
    const QDateTime last = clock.moment().addDays(-2);
    setLastPrune(local, last);
    EXPECT_EQ(run(), 0);
    EXPECT_EQ(lastPrune(local), last);
}

TEST_F(Retention, anOrdinaryRunAsksForNoForecast)
{
    EXPECT_EQ(run(), 0);
    clock.advance(1h);
    EXPECT_EQ(run(), 0);
    EXPECT_EQ(tools.callsOf(QStringLiteral("forget")).size(), 2);
    EXPECT_TRUE(forecasts().isEmpty());
}

TEST_F(Retention, theForecastIsOfTheSameForgettingWithoutThePrune)
{
    forgetVersionsKnown();
    setLastPrune(local, clock.moment().addDays(-8));
    EXPECT_EQ(run(), 0);
    ASSERT_EQ(forecasts().size(), 1);
    EXPECT_EQ(forecasts().first().arguments.join(u' '),
              QStringLiteral("forget --tag vellomar --group-by host --keep-hourly 24 "
                             "--keep-daily 7 --dry-run --json"));
    EXPECT_EQ(forecasts().first().handle, handle.get());
    EXPECT_TRUE(prunes());
}

TEST_F(Retention, aRepositoryWhoseVersionsAreNotKnownIsAskedForOnce)
{
    forgetVersionsKnown();
    EXPECT_EQ(run(), 0);
    EXPECT_EQ(forecasts().size(), 1);
    clock.advance(1h);
    EXPECT_EQ(run(), 0);
    EXPECT_EQ(forecasts().size(), 1);
    EXPECT_EQ(tools.callsOf(QStringLiteral("forget")).size(), 2);
}

TEST_F(Retention, eachRepositoryIsKnownForItself)
{
    config.localFolder = folder("another disk");
    EXPECT_EQ(run(), 0);
    EXPECT_EQ(forecasts().size(), 1);
}

TEST_F(Retention, whereTheNewVersionWouldGoAllStayAndTheRecordSaysWhy)
{
    clock.set(clock.moment().addDays(-1)); // the versions before are of tomorrow
    tools.forgetForecast.standardOutput = letsGo("the new one");
    EXPECT_EQ(run(), 0);
    EXPECT_TRUE(tools.callsOf(QStringLiteral("forget")).isEmpty());
    EXPECT_EQ(onlyRecord().outcome, Outcome::Warning);
    EXPECT_EQ(onlyRecord().message,
              QStringLiteral("Completato, ma le versioni vecchie restano: una di loro ha una data "
                             "successiva a questo backup"));
}

TEST_F(Retention, unreadableFilesAreToldOfBesides)
{
    clock.set(clock.moment().addDays(-1));
    tools.forgetForecast.standardOutput = letsGo("the new one");
    tools.backup = ScriptedTools::ended(3);
    EXPECT_EQ(run(), 0);
    EXPECT_EQ(onlyRecord().message,
              QStringLiteral("Completato, ma 1 elementi non erano leggibili e le versioni vecchie "
                             "restano: una di loro ha una data successiva a questo backup"));
}

TEST_F(Retention, whereOnlyOthersWouldGoItRuns)
{
    clock.set(clock.moment().addDays(-1));
    tools.forgetForecast.standardOutput = letsGo("another one");
    EXPECT_EQ(run(), 0);
    EXPECT_EQ(tools.callsOf(QStringLiteral("forget")).size(), 1);
    EXPECT_EQ(onlyRecord().outcome, Outcome::Ok);
}

TEST_F(Retention, asLongAsAVersionIsOfALaterDateEachRunAsks)
{
    forgetVersionsKnown();
    // The answer speaks of a version of the next day.
    tools.forgetForecast.standardOutput = letsGo("another one");
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(run(), 0);
    }
    EXPECT_EQ(forecasts().size(), 3);
    clock.advance(25h);
    EXPECT_EQ(run(), 0);
    EXPECT_EQ(forecasts().size(), 3);
}

TEST_F(Retention, withoutAnAnswerNothingGoes)
{
    for (const auto &answer :
         {ScriptedTools::ended(11), ScriptedTools::ended(0), ScriptedTools::ended(130)}) {
        forgetVersionsKnown();
        tools.forgetForecast = answer;
        EXPECT_EQ(run(), 0);
        EXPECT_TRUE(tools.callsOf(QStringLiteral("forget")).isEmpty());
    }
    EXPECT_EQ(forecasts().size(), 3);
    EXPECT_EQ(outcomes(), (QStringList{QStringLiteral("local ok"), QStringLiteral("local ok"),
                                       QStringLiteral("local ok")}));
}

TEST_F(Retention, aVersionThatResticDidNotNameIsNotRisked)
{
    forgetVersionsKnown();
    tools.progress.clear();
    EXPECT_EQ(run(), 0);
    EXPECT_TRUE(tools.callsOf(QStringLiteral("forget")).isEmpty());
    EXPECT_EQ(onlyRecord().outcome, Outcome::Ok);
}

TEST_F(Retention, aDamagedStateCountsAsNone)
{
    writeSupportFile("state.json", "{\"lastPrune\": 3");
    EXPECT_EQ(run(), 0);
    EXPECT_TRUE(prunes());
}

} // namespace
