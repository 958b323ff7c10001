#include "engine/Retention.h"

#include "state/JSONFile.h"
#include "state/StatusStore.h"
#include "tests/support/EngineFixture.h"

namespace {

using namespace std::chrono_literals;

class RetentionTest : public EngineFixture
{
protected:
    RetentionTest() { config.keepDays = 7; }

    /// Applies it after a run that has just made a version; false where all versions stay.
    bool apply(DestinationID destination = DestinationID::Local,
               const char *version = "the new one")
    {
        const Restic restic{destination, config, QStringLiteral("the key"), std::nullopt};
        return Retention(restic, *handle).apply({QString::fromUtf8(version), clock.moment()});
    }

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

    /// The arguments of the one `restic forget`.
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

    /// Lets the versions of every repository be unknown.
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

TEST_F(RetentionTest, theArgumentsAreTheTagTheGroupingThePolicyAndThePrune)
{
    setLastPrune(local, clock.moment().addDays(-8));
    EXPECT_TRUE(apply());
    EXPECT_EQ(forgotten().join(u' '), QStringLiteral("forget --tag vellomar --group-by host "
                                                     "--keep-hourly 24 --keep-daily 7 --prune"));
}

TEST_F(RetentionTest, itCanBeStopped)
{
    EXPECT_TRUE(apply());
    const ScriptedTools::Call call = tools.callsOf(QStringLiteral("forget")).value(0);
    EXPECT_EQ(call.handle, handle.get());
    EXPECT_FALSE(call.isFollowed);
}

TEST_F(RetentionTest, theFirstRetentionOfADestinationPrunes)
{
    StatusStore::save(EngineState{{}, StatusStore::loadState().lastCheck, std::nullopt});
    EXPECT_TRUE(apply());
    EXPECT_TRUE(prunes());
    EXPECT_EQ(lastPrune(local), clock.moment());
}

TEST_F(RetentionTest, exactlySevenDaysAfterThePruneNoneIsDue)
{
    const QDateTime last = clock.moment().addDays(-7);
    setLastPrune(local, last);
    EXPECT_TRUE(apply());
    EXPECT_FALSE(prunes());
    EXPECT_EQ(lastPrune(local), last);
}

TEST_F(RetentionTest, aSecondAfterSevenDaysPruningIsDue)
{
    setLastPrune(local, clock.moment().addDays(-7).addSecs(-1));
    EXPECT_TRUE(apply());
    EXPECT_TRUE(prunes());
}

TEST_F(RetentionTest, withASingleVersionPruningIsDueAfterADay)
{
    config.keepDays = -1;
    setLastPrune(local, clock.moment().addDays(-1));
    EXPECT_TRUE(apply());
    EXPECT_FALSE(prunes());

    tools.calls.clear();
    setLastPrune(local, clock.moment().addDays(-1).addSecs(-1));
    EXPECT_TRUE(apply());
    EXPECT_TRUE(prunes());
}

TEST_F(RetentionTest, aPruneUpToADayAheadIsNotDue)
{
    setLastPrune(local, clock.moment().addDays(1));
    EXPECT_TRUE(apply());
    EXPECT_FALSE(prunes());
}

TEST_F(RetentionTest, aPruneMoreThanADayAheadCountsAsNone)
{
    setLastPrune(local, clock.moment().addDays(1).addSecs(1));
    EXPECT_TRUE(apply());
    EXPECT_TRUE(prunes());
    EXPECT_EQ(lastPrune(local), clock.moment());
}

TEST_F(RetentionTest, theDateIsTheOneAfterResticHasEnded)
{
    setLastPrune(local, clock.moment().addDays(-8));
    tools.before = [this](const ScriptedTools::Call &call) {
        if (call.command() == QLatin1String("forget")) {
            clock.advance(2h);
        }
    };
    EXPECT_TRUE(apply());
    EXPECT_EQ(lastPrune(local), clock.moment());
}

TEST_F(RetentionTest, aFailureLeavesThePruneDue)
{
    const QDateTime last = clock.moment().addDays(-8);
    setLastPrune(local, last);
    tools.forget = ScriptedTools::ended(11, QStringLiteral("locked"));
    EXPECT_TRUE(apply());
    EXPECT_EQ(lastPrune(local), last);
}

TEST_F(RetentionTest, eachDestinationHasAnEntryOfItsOwn)
{
    setLastPrune(local, clock.moment().addDays(-1));
    setLastPrune(QStringLiteral("drive"), clock.moment().addDays(-8));
    setLastPrune(QStringLiteral("server"), clock.moment().addDays(-8));
    for (const DestinationID destination : allDestinations) {
        EXPECT_TRUE(apply(destination));
    }
    const QList<ScriptedTools::Call> calls = tools.callsOf(QStringLiteral("forget"));
    ASSERT_EQ(calls.size(), 3);
    EXPECT_FALSE(calls[0].arguments.contains(QStringLiteral("--prune")));
    EXPECT_TRUE(calls[1].arguments.contains(QStringLiteral("--prune")));
    EXPECT_TRUE(calls[2].arguments.contains(QStringLiteral("--prune")));
    EXPECT_EQ(lastPrune(local), clock.moment().addDays(-1));
    EXPECT_EQ(lastPrune(QStringLiteral("drive")), clock.moment());
    EXPECT_EQ(lastPrune(QStringLiteral("server")), clock.moment());
}

TEST_F(RetentionTest, anOrdinaryRunAsksForNoForecast)
{
    EXPECT_TRUE(apply());
    clock.advance(1h);
    EXPECT_TRUE(apply());
    EXPECT_EQ(tools.callsOf(QStringLiteral("forget")).size(), 2);
    EXPECT_TRUE(forecasts().isEmpty());
}

TEST_F(RetentionTest, theForecastIsOfTheSameForgettingWithoutThePrune)
{
    forgetVersionsKnown();
    setLastPrune(local, clock.moment().addDays(-8));
    EXPECT_TRUE(apply());
    ASSERT_EQ(forecasts().size(), 1);
    EXPECT_EQ(forecasts().first().arguments.join(u' '),
              QStringLiteral("forget --tag vellomar --group-by host --keep-hourly 24 "
                             "--keep-daily 7 --dry-run --json"));
    EXPECT_EQ(forecasts().first().handle, handle.get());
    EXPECT_TRUE(prunes());
}

TEST_F(RetentionTest, aRepositoryWhoseVersionsAreNotKnownIsAskedForOnce)
{
    forgetVersionsKnown();
    EXPECT_TRUE(apply());
    EXPECT_EQ(forecasts().size(), 1);
    clock.advance(1h);
    EXPECT_TRUE(apply());
    EXPECT_EQ(forecasts().size(), 1);
    EXPECT_EQ(tools.callsOf(QStringLiteral("forget")).size(), 2);
}

TEST_F(RetentionTest, eachRepositoryIsKnownForItself)
{
    config.localFolder = folder("another disk");
    EXPECT_TRUE(apply());
    EXPECT_EQ(forecasts().size(), 1);
}

TEST_F(RetentionTest, whereTheNewVersionWouldGoAllStay)
{
    clock.set(clock.moment().addDays(-1)); // the versions before are of tomorrow
    tools.forgetForecast.standardOutput = letsGo("the new one");
    EXPECT_FALSE(apply());
    EXPECT_TRUE(tools.callsOf(QStringLiteral("forget")).isEmpty());
}

TEST_F(RetentionTest, whereOnlyOthersWouldGoItRuns)
{
    clock.set(clock.moment().addDays(-1));
    tools.forgetForecast.standardOutput = letsGo("a different one");
    EXPECT_TRUE(apply());
    EXPECT_EQ(tools.callsOf(QStringLiteral("forget")).size(), 1);
}

TEST_F(RetentionTest, asLongAsAVersionIsOfALaterDateEachRunAsks)
{
    forgetVersionsKnown();
    // The answer speaks of a version of the next day.
    tools.forgetForecast.standardOutput = letsGo("a different one");
    for (int i = 0; i < 3; ++i) {
        EXPECT_TRUE(apply());
    }
    EXPECT_EQ(forecasts().size(), 3);
    clock.advance(25h);
    EXPECT_TRUE(apply());
    EXPECT_EQ(forecasts().size(), 3);
}

TEST_F(RetentionTest, withoutAnAnswerNothingGoes)
{
    for (const auto &answer :
         {ScriptedTools::ended(11), ScriptedTools::ended(0), ScriptedTools::ended(130)}) {
        forgetVersionsKnown();
        tools.forgetForecast = answer;
        EXPECT_TRUE(apply());
        EXPECT_TRUE(tools.callsOf(QStringLiteral("forget")).isEmpty());
    }
    EXPECT_EQ(forecasts().size(), 3);
}

TEST_F(RetentionTest, aVersionThatResticDidNotNameIsNotRisked)
{
    forgetVersionsKnown();
    EXPECT_TRUE(apply(DestinationID::Local, ""));
    EXPECT_TRUE(tools.callsOf(QStringLiteral("forget")).isEmpty());
}

TEST_F(RetentionTest, aDamagedStateCountsAsNone)
{
    writeSupportFile("state.json", "{\"lastPrune\": 3");
    EXPECT_TRUE(apply());
    EXPECT_TRUE(prunes());
}

} // namespace
