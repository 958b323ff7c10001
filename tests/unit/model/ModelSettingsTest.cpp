#include "model/UserDefaults.h"
#include "state/ConfigStore.h"
#include "tests/support/ModelFixture.h"

#include <QDir>
#include <QFile>

namespace {

class ModelSettings : public ModelFixture
{
protected:
    ModelSettings()
    {
        start();
        settle();
    }

    /// Whether a change led to an update of the schedule.
    template <typename Change>
    bool touchesSchedule(Change made)
    {
        settle();
        const qsizetype before = tools.count(QStringLiteral("systemctl"));
        change(made);
        settle();
        EXPECT_EQ(ConfigStore::load(), model->config());
        return tools.count(QStringLiteral("systemctl")) != before;
    }

    static QVariantMap kept() { return UserDefaults::value(UserDefaults::sourceSizes).toMap(); }

    /// A size for the one source, as after a measurement.
    void measure()
    {
        model->runMeasure();
        settle();
        ASSERT_EQ(model->measurement()->sizes().size(), 1);
        ASSERT_EQ(kept().size(), 1);
    }
};

TEST_F(ModelSettings, aChangeIsSavedAndReported)
{
    const SignalCount changes(model.get(), &AppModel::configChanged);
    change([](AppConfig &settings) { settings.serverHost = QStringLiteral("nas"); });
    EXPECT_EQ(changes.count(), 1);
    settle();
    EXPECT_EQ(ConfigStore::load().serverHost, QStringLiteral("nas"));
    EXPECT_EQ(model->config().serverHost, QStringLiteral("nas"));
}

TEST_F(ModelSettings, theSameSettingsAreNotSavedAgain)
{
    const SignalCount changes(model.get(), &AppModel::configChanged);
    ASSERT_TRUE(QFile::remove(supportFile("config.json")));
    model->setConfig(AppConfig(model->config()));
    EXPECT_EQ(changes.count(), 0);
    settle();
    EXPECT_FALSE(QFile::exists(supportFile("config.json")));
}

TEST_F(ModelSettings, theScheduleFollowsWhatItDependsOn)
{
    EXPECT_TRUE(touchesSchedule([](AppConfig &settings) { settings.autoBackup = false; }));
    EXPECT_TRUE(touchesSchedule([](AppConfig &settings) { settings.autoBackup = true; }));
    EXPECT_TRUE(touchesSchedule([](AppConfig &settings) { settings.intervalHours = 6; }));
    EXPECT_TRUE(touchesSchedule([](AppConfig &settings) { settings.keySaved = false; }));
    EXPECT_TRUE(touchesSchedule([](AppConfig &settings) { settings.keySaved = true; }));
    EXPECT_TRUE(touchesSchedule([](AppConfig &settings) { settings.localEnabled = false; }));
    EXPECT_TRUE(touchesSchedule([](AppConfig &settings) { settings.serverEnabled = true; }));
}

TEST_F(ModelSettings, theScheduleOfTheLastChangeStands)
{
    tools.holdSchedule();
    for (const bool isWanted : {false, true, false, true, false}) {
        change([isWanted](AppConfig &settings) { settings.autoBackup = isWanted; });
    }
    // The program may end meanwhile.
    model.reset();
    tools.letGo();
    settle();
    EXPECT_FALSE(QFile::exists(QDir::homePath() +
                               QLatin1String("/.config/systemd/user/it.vellomar.backup.timer")));
    restart();
    change([](AppConfig &settings) { settings.autoBackup = true; });
    settle();
    EXPECT_TRUE(QFile::exists(QDir::homePath() +
                              QLatin1String("/.config/systemd/user/it.vellomar.backup.timer")));
}

TEST_F(ModelSettings, nothingElseTouchesTheSchedule)
{
    EXPECT_FALSE(touchesSchedule([](AppConfig &settings) { settings.driveEnabled = true; }));
    EXPECT_FALSE(touchesSchedule([](AppConfig &settings) { settings.localEnabled = false; }));
    EXPECT_FALSE(touchesSchedule([](AppConfig &settings) { settings.skipOnBattery = true; }));
    EXPECT_FALSE(touchesSchedule([](AppConfig &settings) { settings.alertAfterHours = 99; }));
    EXPECT_FALSE(touchesSchedule([](AppConfig &settings) { settings.keepDays = 0; }));
    EXPECT_FALSE(touchesSchedule([](AppConfig &settings) { settings.sources.clear(); }));
    EXPECT_FALSE(touchesSchedule(
        [](AppConfig &settings) { settings.localFolder = QStringLiteral("/elsewhere"); }));
}

TEST_F(ModelSettings, anotherSelectionForgetsTheMeasuredSizes)
{
    measure();
    change([](AppConfig &settings) { settings.excludes.append(QStringLiteral("*.o")); });
    settle();
    EXPECT_TRUE(model->measurement()->sizes().isEmpty());
    EXPECT_TRUE(kept().isEmpty());
    measure();
    change([](AppConfig &settings) { settings.sources.append(QStringLiteral("/x")); });
    settle();
    EXPECT_TRUE(model->measurement()->sizes().isEmpty());
    EXPECT_TRUE(kept().isEmpty());
}

TEST_F(ModelSettings, otherChangesKeepTheMeasuredSizes)
{
    measure();
    change([](AppConfig &settings) {
        settings.excludeCaches = false;
        settings.intervalHours = 9;
    });
    EXPECT_EQ(model->measurement()->sizes().size(), 1);
    EXPECT_EQ(kept().size(), 1);
}

} // namespace
