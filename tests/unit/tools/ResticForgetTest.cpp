#include "tools/ResticForget.h"

#include "tests/support/ScriptedTools.h"

#include <gtest/gtest.h>

namespace {

using ResticForget::Forecast;
using ResticForget::Prune;

class ResticForgetTest : public testing::Test
{
protected:
    QString onlyCall()
    {
        EXPECT_EQ(tools.calls.size(), 1);
        EXPECT_EQ(tools.calls.value(0).handle, &handle);
        EXPECT_FALSE(tools.calls.value(0).isFollowed);
        return tools.calls.value(0).arguments.join(u' ');
    }

    std::optional<Forecast> forecast(const QString &answer)
    {
        tools.forgetForecast.standardOutput = answer;
        return ResticForget::forecast(restic, policy, &handle);
    }

    ScriptedTools tools;
    ProcessHandle handle;
    Restic restic;
    const ResticForget::Policy policy{.hourly = 24, .daily = 7};
};

TEST_F(ResticForgetTest, theArgumentsAreTheTagTheGroupingAndThePolicy)
{
    EXPECT_TRUE(ResticForget::run(restic, policy, Prune::no, &handle));
    EXPECT_EQ(onlyCall(), QStringLiteral("forget --tag vellomar --group-by host "
                                         "--keep-hourly 24 --keep-daily 7"));
}

TEST_F(ResticForgetTest, eachUnitOfThePolicyHasAnOption)
{
    EXPECT_TRUE(ResticForget::run(restic, {.last = 1, .hourly = 2, .daily = 3, .weekly = 5200},
                                  Prune::no, &handle));
    EXPECT_EQ(onlyCall(), QStringLiteral("forget --tag vellomar --group-by host --keep-last 1 "
                                         "--keep-hourly 2 --keep-daily 3 --keep-weekly 5200"));
}

TEST_F(ResticForgetTest, aPruneStandsBehindThePolicy)
{
    EXPECT_TRUE(ResticForget::run(restic, policy, Prune::yes, &handle));
    EXPECT_EQ(onlyCall(), QStringLiteral("forget --tag vellomar --group-by host "
                                         "--keep-hourly 24 --keep-daily 7 --prune"));
}

TEST_F(ResticForgetTest, aForecastDoesNothing)
{
    EXPECT_EQ(forecast(QStringLiteral("[]")), Forecast());
    EXPECT_EQ(onlyCall(), QStringLiteral("forget --tag vellomar --group-by host "
                                         "--keep-hourly 24 --keep-daily 7 --dry-run --json"));
}

TEST_F(ResticForgetTest, anyOtherCodeThanZeroIsAFailure)
{
    tools.forget = tools.forgetForecast = ScriptedTools::ended(11);
    tools.forgetForecast.standardOutput = QStringLiteral("[]");
    EXPECT_FALSE(ResticForget::run(restic, policy, Prune::no, &handle));
    EXPECT_FALSE(ResticForget::forecast(restic, policy, &handle));
}

TEST_F(ResticForgetTest, theVersionsOfAllGroupsCount)
{
    const auto known = forecast(QStringLiteral(
        R"([{"keep":[{"id":"a","time":"2026-03-01T10:00:00.123456789Z"}],)"
        R"("remove":[{"id":"b","time":"2026-02-01T10:00:00Z"}]},)"
        R"({"keep":null,"remove":[{"id":"c","time":"2026-04-01T12:00:00+02:00"}]}])"));
    ASSERT_TRUE(known);
    EXPECT_EQ(known->removed, (QStringList{QStringLiteral("b"), QStringLiteral("c")}));
    EXPECT_EQ(known->newest,
              QDateTime::fromString(QStringLiteral("2026-04-01T10:00:00Z"), Qt::ISODate));
}

TEST_F(ResticForgetTest, whatIsNoListIsNoForecast)
{
    for (const char *answer : {"", "words", "{}", "null", "[", "7"}) {
        EXPECT_FALSE(forecast(QString::fromUtf8(answer))) << answer;
    }
}

} // namespace
