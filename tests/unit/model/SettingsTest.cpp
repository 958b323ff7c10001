#include "model/Settings.h"

#include "model/Delivery.h"
#include "tests/support/ModelFixture.h"

#include <atomic>
#include <condition_variable>
#include <mutex>

namespace {

/// A store in memory, which can fail and can be made to wait.
class NotedStore final : public SettingsStore
{
public:
    AppConfig load() override
    {
        const std::lock_guard lock(m_mutex);
        return m_saved;
    }
    bool save(const AppConfig &config) override
    {
        std::unique_lock lock(m_mutex);
        m_released.wait(lock, [this] { return !m_isHolding; });
        intervals.append(config.intervalHours);
        if (fails) {
            return false;
        }
        m_saved = config;
        return true;
    }
    void removeAbandoned() override {}

    void hold()
    {
        const std::lock_guard lock(m_mutex);
        m_isHolding = true;
    }
    void letGo()
    {
        {
            const std::lock_guard lock(m_mutex);
            m_isHolding = false;
        }
        m_released.notify_all();
    }

    /// Of the settings to save, in order. To be read when nothing is under way.
    QList<qint64> intervals;
    std::atomic_bool fails = false;

private:
    std::mutex m_mutex;
    std::condition_variable m_released;
    bool m_isHolding = false;
    AppConfig m_saved;
};

class SettingsTest : public testing::Test
{
protected:
    SettingsTest()
    {
        World world = World::real(desktop);
        world.settings = store;
        settings = std::make_unique<Settings>(world);
    }
    ~SettingsTest() override
    {
        store->letGo();
        tools.letGo();
        settings.reset();
        Background::waitForAll();
        desktop->forget();
    }

    void setInterval(qint64 hours)
    {
        AppConfig config = settings->config();
        config.intervalHours = hours;
        settings->setConfig(config);
    }
    /// Settings for which there is a schedule.
    void wantSchedule()
    {
        AppConfig config = settings->config();
        config.localEnabled = true;
        config.keySaved = true;
        settings->setConfig(config);
    }
    void deliver()
    {
        do {
            Background::waitForAll();
            QCoreApplication::sendPostedEvents();
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        } while (!settings->findChildren<Delivery *>().isEmpty());
    }
    void pass(int milliseconds)
    {
        desktop->pass(std::chrono::milliseconds(milliseconds));
        deliver();
    }

    TestApplication application;
    ScriptedTools tools;
    std::shared_ptr<ScriptedDesktop> desktop = std::make_shared<ScriptedDesktop>();
    std::shared_ptr<NotedStore> store = std::make_shared<NotedStore>();
    std::unique_ptr<Settings> settings;
};

TEST_F(SettingsTest, changesOfAMomentAreSavedTogether)
{
    for (const qint64 hours : {2, 3, 4, 5}) {
        setInterval(hours);
    }
    pass(299);
    EXPECT_EQ(store->intervals, QList<qint64>());
    pass(1);
    EXPECT_EQ(store->intervals, QList<qint64>{5});
    setInterval(6);
    pass(300);
    EXPECT_EQ(store->intervals, QList<qint64>({5, 6}));
}

TEST_F(SettingsTest, changesThatNeverEndAreSavedAllTheSame)
{
    for (int i = 0; i < 10; ++i) {
        setInterval(100 + i);
        pass(100);
    }
    EXPECT_EQ(store->intervals, QList<qint64>({102, 105, 108}));
}

TEST_F(SettingsTest, aSaveThatFailsIsTriedAgainAtTheNextChange)
{
    store->fails = true;
    setInterval(2);
    pass(300);
    pass(3000);
    EXPECT_EQ(store->intervals, QList<qint64>{2});
    EXPECT_EQ(settings->config().intervalHours, 2);
    store->fails = false;
    AppConfig config = settings->config();
    config.skipOnBattery = !config.skipOnBattery;
    settings->setConfig(config);
    pass(300);
    EXPECT_EQ(store->intervals, QList<qint64>({2, 2}));
    EXPECT_EQ(store->load(), config);
}

TEST_F(SettingsTest, flushTriesAFailedSaveAgain)
{
    store->fails = true;
    setInterval(2);
    pass(300);
    store->fails = false;
    std::optional<AppConfig> onDisk;
    settings->flush([&onDisk](const AppConfig &config) { onDisk = config; });
    deliver();
    ASSERT_TRUE(onDisk);
    EXPECT_EQ(onDisk->intervalHours, 2);
}

TEST_F(SettingsTest, flushSavesWithoutDelay)
{
    setInterval(2);
    std::optional<AppConfig> onDisk;
    settings->flush([&onDisk](const AppConfig &config) { onDisk = config; });
    EXPECT_FALSE(onDisk);
    deliver();
    ASSERT_TRUE(onDisk);
    EXPECT_EQ(onDisk->intervalHours, 2);
    // The delay is over, and there is nothing left to save.
    pass(300);
    EXPECT_EQ(store->intervals, QList<qint64>{2});
}

TEST_F(SettingsTest, flushReportsTheSettingsOnTheDisk)
{
    store->fails = true;
    setInterval(2);
    std::optional<AppConfig> onDisk;
    settings->flush([&onDisk](const AppConfig &config) { onDisk = config; });
    deliver();
    ASSERT_TRUE(onDisk);
    EXPECT_EQ(onDisk->intervalHours, AppConfig().intervalHours);
}

TEST_F(SettingsTest, aDiskThatHangsHoldsNobodyUpAndGetsTheChangesInTheirOrder)
{
    store->hold();
    for (const qint64 hours : {2, 3, 4}) {
        setInterval(hours);
        desktop->pass(std::chrono::milliseconds(300));
        QCoreApplication::processEvents();
    }
    EXPECT_EQ(settings->config().intervalHours, 4);
    store->letGo();
    deliver();
    EXPECT_EQ(store->intervals, QList<qint64>({2, 3, 4}));
}

TEST_F(SettingsTest, theEndSavesWhatIsLeft)
{
    setInterval(2);
    settings->finish(std::chrono::minutes(2));
    EXPECT_EQ(store->load().intervalHours, 2);
    setInterval(3);
    settings.reset();
    Background::waitForAll();
    EXPECT_EQ(store->load().intervalHours, 3);
}

TEST_F(SettingsTest, theEndDoesNotWaitForEverForADiskThatHangs)
{
    store->hold();
    setInterval(2);
    settings->finish(std::chrono::milliseconds(1));
    EXPECT_EQ(store->load().intervalHours, AppConfig().intervalHours);
}

TEST_F(SettingsTest, theScheduleFollowsTheSave)
{
    wantSchedule();
    EXPECT_EQ(tools.count(QStringLiteral("systemctl")), 0);
    pass(300);
    const qsizetype calls = tools.count(QStringLiteral("systemctl"));
    EXPECT_GT(calls, 0);
    AppConfig config = settings->config();
    config.skipOnBattery = !config.skipOnBattery;
    settings->setConfig(config);
    pass(300);
    EXPECT_EQ(tools.count(QStringLiteral("systemctl")), calls);
    setInterval(5);
    pass(300);
    EXPECT_GT(tools.count(QStringLiteral("systemctl")), calls);
}

TEST_F(SettingsTest, aScheduleThatHangsHoldsUpNoSave)
{
    tools.holdSchedule();
    wantSchedule();
    desktop->pass(std::chrono::milliseconds(300));
    setInterval(3);
    settings->finish(std::chrono::minutes(2));
    EXPECT_EQ(store->load().intervalHours, 3);
}

} // namespace
