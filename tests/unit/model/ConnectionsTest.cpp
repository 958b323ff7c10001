#include "model/Connections.h"

#include "model/Delivery.h"
#include "tests/support/ModelFixture.h"

#include <condition_variable>
#include <mutex>

namespace {

/// Both remote places with an account, in memory; what is asked can be held up.
class RemotePlaces final : public ToolCalls
{
public:
    bool isAvailable(const Restic &) override { return true; }
    RepoInfo read(const Restic &) override { return {}; }
    bool refusesKey(const Restic &) override { return false; }
    Accounts accounts() override
    {
        const std::lock_guard lock(m_mutex);
        return m_accounts;
    }
    std::optional<Rclone::Quota> quota(const QString &) override
    {
        std::unique_lock lock(m_mutex);
        const qint64 used = m_used;
        ++m_held;
        m_released.wait(lock, [this] { return !m_isHolding; });
        --m_held;
        return Rclone::Quota{.used = used, .total = 15};
    }
    std::optional<QString> versioning(const QString &) override { return std::nullopt; }
    Attempt connectDrive(const QString &, const QString &, ProcessHandle &) override { return {}; }
    Attempt connectServer(const AppConfig &, const QString &) override { return {}; }
    void disconnect(DestinationID destination) override
    {
        std::unique_lock lock(m_mutex);
        ++m_held;
        m_released.wait(lock, [this] { return !m_isHoldingDisconnect; });
        --m_held;
        (destination == DestinationID::Drive ? m_accounts.drive : m_accounts.server) = false;
    }
    void removeAbandoned() override {}
    void pinServer() override {}
    void syncSchedule(const AppConfig &) override {}

    /// Makes the questions after the room wait.
    void hold()
    {
        const std::lock_guard lock(m_mutex);
        m_isHolding = true;
    }
    /// Makes giving up an account wait.
    void holdDisconnect()
    {
        const std::lock_guard lock(m_mutex);
        m_isHoldingDisconnect = true;
    }
    void letGo()
    {
        {
            const std::lock_guard lock(m_mutex);
            m_isHolding = false;
            m_isHoldingDisconnect = false;
        }
        m_released.notify_all();
    }
    int held()
    {
        const std::lock_guard lock(m_mutex);
        return m_held;
    }
    void use(qint64 bytes)
    {
        const std::lock_guard lock(m_mutex);
        m_used = bytes;
    }

private:
    std::mutex m_mutex;
    std::condition_variable m_released;
    Accounts m_accounts{.drive = true, .server = true};
    qint64 m_used = 5;
    bool m_isHolding = false;
    bool m_isHoldingDisconnect = false;
    int m_held = 0;
};

class ConnectionsTest : public testing::Test
{
protected:
    ConnectionsTest()
    {
        AppConfig config = settings.config();
        config.driveEnabled = true;
        settings.setConfig(config);
    }
    ~ConnectionsTest() override
    {
        places->letGo();
        Background::waitForAll();
        desktop->forget();
    }

    /// The places are known.
    void read()
    {
        connections.read();
        deliver();
        ASSERT_EQ(connections.drive().quota, room(5));
        ASSERT_EQ(connections.server().quota, room(5));
    }
    void deliver()
    {
        do {
            Background::waitForAll();
            QCoreApplication::sendPostedEvents();
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        } while (!connections.findChildren<Delivery *>().isEmpty());
    }
    static std::optional<Rclone::Quota> room(qint64 used)
    {
        return Rclone::Quota{.used = used, .total = 15};
    }

    /// Until after the settings, which hand over what isn't saved when they go.
    struct WaitAtEnd
    {
        WaitAtEnd() = default;
        ~WaitAtEnd() { Background::waitForAll(); }
        Q_DISABLE_COPY_MOVE(WaitAtEnd)
    };

    TestApplication application;
    WaitAtEnd waitAtEnd;
    MemorySecretBackend secrets;
    ScopedSecretBackend secretsInForce{secrets};
    std::shared_ptr<ScriptedDesktop> desktop = std::make_shared<ScriptedDesktop>();
    std::shared_ptr<RemotePlaces> places = std::make_shared<RemotePlaces>();
    World world = [this] {
        World made = World::real(desktop);
        made.tools = places;
        return made;
    }();
    Settings settings{world};
    EncryptionKey key{world, settings};
    Connections connections{world, settings, key};
};

TEST_F(ConnectionsTest, anAnswerBeforeADisconnectIsForgotten)
{
    read();
    connections.disconnect(DestinationID::Drive);
    EXPECT_EQ(connections.drive(), Connection());
    deliver();
    EXPECT_EQ(connections.drive(), Connection());
    EXPECT_EQ(connections.server().quota, room(5));
}

TEST_F(ConnectionsTest, anAnswerAfterADisconnectIsIgnored)
{
    read();
    places->hold();
    connections.refreshQuota();
    ASSERT_TRUE(eventuallyInLoop([this] { return places->held() == 1; }));
    connections.disconnect(DestinationID::Drive);
    places->letGo();
    deliver();
    EXPECT_EQ(connections.drive(), Connection());
    EXPECT_EQ(connections.server().quota, room(5));
}

TEST_F(ConnectionsTest, anAccountThatIsBeingGivenUpDoesNotComeBack)
{
    read();
    places->holdDisconnect();
    connections.disconnect(DestinationID::Drive);
    ASSERT_TRUE(eventuallyInLoop([this] { return places->held() == 1; }));
    int comebacks = 0;
    QObject::connect(&connections, &Connections::driveChanged, &connections,
                     [this, &comebacks] { comebacks += connections.drive().connected ? 1 : 0; });
    // rclone's file still has it.
    bool isRead = false;
    QObject::connect(&connections, &Connections::serverChanged, &connections,
                     [&isRead] { isRead = true; });
    places->use(6);
    connections.read();
    ASSERT_TRUE(eventuallyInLoop([&isRead] { return isRead; }));
    EXPECT_FALSE(connections.drive().connected);
    places->letGo();
    deliver();
    EXPECT_EQ(connections.drive(), Connection());
    EXPECT_EQ(comebacks, 0);
    EXPECT_EQ(connections.server().quota, room(6));
}

TEST_F(ConnectionsTest, aPlaceThatIsSwitchedOffMeanwhileIsAskedAgain)
{
    read();
    places->hold();
    connections.refreshQuota();
    ASSERT_TRUE(eventuallyInLoop([this] { return places->held() == 1; }));
    AppConfig config = settings.config();
    config.driveEnabled = false;
    settings.setConfig(config);
    places->use(6);
    places->letGo();
    deliver();
    EXPECT_EQ(connections.drive().quota, room(6));
}

TEST_F(ConnectionsTest, allPlacesAreAskedAgainWithANewKey)
{
    read();
    places->hold();
    connections.refreshQuota();
    ASSERT_TRUE(eventuallyInLoop([this] { return places->held() == 1; }));
    bool isDone = false;
    key.install(QStringLiteral("another key"), true, [&isDone](const auto &) { isDone = true; });
    ASSERT_TRUE(eventuallyInLoop([&isDone] { return isDone; }));
    places->use(6);
    places->letGo();
    deliver();
    EXPECT_EQ(connections.drive().quota, room(6));
    EXPECT_EQ(connections.server().quota, room(6));
}

} // namespace
