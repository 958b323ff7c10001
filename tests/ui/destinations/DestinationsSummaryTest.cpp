#include "ui/destinations/DestinationsSummary.h"
#include "tests/support/EventLoop.h"
#include "tests/support/ManualClock.h"
#include "ui/prepared/PreparedStates.h"
#include "ui/prepared/PreparedWorld.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

/// A summary of a disk with versions, and what it reports.
class DestinationsSummaryTest : public testing::Test
{
protected:
    DestinationsSummaryTest()
    {
        note(&DestinationsSummary::modelChanged, "model");
        note(&DestinationsSummary::spaceChanged, "space");
        note(&DestinationsSummary::localChanged, "local");
        note(&DestinationsSummary::driveChanged, "drive");
        note(&DestinationsSummary::serverChanged, "server");
        note(&DestinationsSummary::formChanged, "form");
        summary.setModel(model.get());
        reported.clear();
    }

    template <typename Signal>
    void note(Signal signal, const char *word)
    {
        QObject::connect(&summary, signal, &context, [this, word] { reported.emplace_back(word); });
    }

    template <typename Change>
    void change(Change make)
    {
        AppConfig config = model->config();
        make(config);
        model->setConfig(config);
    }

    std::vector<std::string> take() { return std::exchange(reported, {}); }

    using Words = std::vector<std::string>;

    TestApplication application;
    QObject context;
    Words reported;
    PreparedWorld world{PreparedStates::state(QStringLiteral("fits"))};
    std::unique_ptr<AppModel> model = world.model();
    DestinationsSummary summary;
};

TEST_F(DestinationsSummaryTest, withoutAModelItSaysWhatAFreshInstallationIs)
{
    const DestinationsSummary alone;
    EXPECT_EQ(alone.firstBackup().value, QStringLiteral("Da misurare"));
    EXPECT_FALSE(alone.hasVersions());
    EXPECT_EQ(alone.versions(), DestinationsTexts::Figure());
    EXPECT_EQ(alone.local().subtitle, QStringLiteral("Nessun disco scelto"));
    EXPECT_EQ(alone.bucketVersioning(), Notice());
    EXPECT_FALSE(alone.isDiskAway());
}

TEST_F(DestinationsSummaryTest, itHasWhatTheModelHas)
{
    EXPECT_EQ(summary.model(), model.get());
    EXPECT_TRUE(summary.hasVersions());
    EXPECT_TRUE(summary.local().hasUsage);
    EXPECT_FALSE(summary.local().forecast.text.isEmpty());
    EXPECT_EQ(summary.measureLabel(), QStringLiteral("Misura di nuovo"));
}

TEST_F(DestinationsSummaryTest, aSettingOfTheServerDisturbsItsFormAlone)
{
    change([](AppConfig &config) { config.serverHost = QStringLiteral("nas"); });
    EXPECT_EQ(take(), Words{"form"});
    change([](AppConfig &config) { config.serverHost = QStringLiteral("nas.example.org"); });
    EXPECT_EQ(take(), Words());
}

TEST_F(DestinationsSummaryTest, howLongVersionsAreKeptDisturbsTheFiguresAlone)
{
    change([](AppConfig &config) { config.keepDays = 30; });
    EXPECT_EQ(take(), Words{"space"});
    EXPECT_EQ(summary.versions().label, QStringLiteral("Con 1 mese di versioni"));
    change([](AppConfig &config) { config.keepDays = -1; });
    EXPECT_FALSE(summary.hasVersions());
}

TEST_F(DestinationsSummaryTest, aDiskThatGoesAwayDisturbsItsPanelAlone)
{
    world.state().localPlace.volume.reset();
    model->localFolder()->look();
    EXPECT_EQ(take(), Words{"local"});
    EXPECT_TRUE(summary.isDiskAway());
}

TEST_F(DestinationsSummaryTest, aSettingOfADifferentPageDisturbsNothing)
{
    change([](AppConfig &config) { config.skipOnBattery = true; });
    EXPECT_EQ(take(), Words());
}

TEST_F(DestinationsSummaryTest, aConnectionDisturbsItsPanel)
{
    model->connectDrive();
    EXPECT_TRUE(summary.drive().canEnable);
    const Words words = take();
    EXPECT_NE(std::find(words.begin(), words.end(), "drive"), words.end());
    EXPECT_EQ(std::find(words.begin(), words.end(), "server"), words.end());
}

TEST_F(DestinationsSummaryTest, itOutlivesItsModel)
{
    model.reset();
    EXPECT_EQ(summary.model(), nullptr);
    EXPECT_EQ(summary.local().subtitle, QStringLiteral("Nessun disco scelto"));
}

TEST_F(DestinationsSummaryTest, aFormerModelIsNotHeardAnyMore)
{
    summary.setModel(nullptr);
    take();
    change([](AppConfig &config) { config.serverHost = QStringLiteral("nas"); });
    EXPECT_EQ(take(), Words());
}

} // namespace
