#include "model/Connections.h"
#include "model/Delivery.h"
#include "tests/support/ModelFixture.h"

#include <condition_variable>
#include <mutex>

// How an account on a remote place is set up and given up, with answers that come when the test
// wants them.

namespace {

/// Remote places that answer when the test lets them. What is asked of them is listed in its order.
class AnsweringPlaces final : public ToolCalls
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
    std::optional<Rclone::Quota> quota(const QString &remote) override
    {
        note(QLatin1String("quota ") + remote);
        return Rclone::Quota{.used = 5, .total = 15};
    }
    std::optional<QString> versioning(const QString &bucket) override
    {
        note(QLatin1String("versioning ") + bucket);
        return QStringLiteral("Enabled");
    }
    Attempt connectDrive(const QString &clientID, const QString &clientSecret,
                         ProcessHandle &handle) override
    {
        note(QStringLiteral("connect drive <%1> <%2>").arg(clientID, clientSecret));
        const std::optional<Attempt> given =
            wait(m_drive, [&handle] { return handle.isCancelled(); });
        Attempt attempt = given.value_or(failure(QStringLiteral("Collegamento annullato")));
        const std::lock_guard lock(m_mutex);
        m_accounts.drive = attempt.isConnected;
        return attempt;
    }
    Attempt connectServer(const AppConfig &config, const QString &secret) override
    {
        note(QStringLiteral("connect server %1 <%2>").arg(config.serverHost, secret));
        Attempt attempt = wait(m_server, [] { return false; }).value_or(Attempt());
        const std::lock_guard lock(m_mutex);
        m_accounts.server = attempt.isConnected;
        return attempt;
    }
    void disconnect(DestinationID destination) override
    {
        note(QLatin1String("disconnect ") + rawValue(destination));
        const std::lock_guard lock(m_mutex);
        (destination == DestinationID::Drive ? m_accounts.drive : m_accounts.server) = false;
    }
    void removeAbandoned() override {}
    void pinServer() override {}
    void syncSchedule(const AppConfig &) override {}

    static Attempt success()
    {
        return {.error = {}, .isConnected = true, .quota = Rclone::Quota{.used = 7, .total = 70}};
    }
    static Attempt failure(const QString &error)
    {
        return {.error = error, .isConnected = false, .quota = {}};
    }
    void answerDrive(const Attempt &attempt) { answer(m_drive, attempt); }
    void answerServer(const Attempt &attempt) { answer(m_server, attempt); }
    void have(Accounts accounts)
    {
        const std::lock_guard lock(m_mutex);
        m_accounts = accounts;
    }
    /// What was asked that begins like this.
    QStringList asked(const QString &beginning)
    {
        const std::lock_guard lock(m_mutex);
        QStringList found = m_asked;
        found.removeIf([&](const QString &line) { return !line.startsWith(beginning); });
        return found;
    }
    /// What was asked that changes an account.
    QStringList changes()
    {
        const std::lock_guard lock(m_mutex);
        QStringList found = m_asked;
        found.removeIf([](const QString &line) {
            return !line.startsWith(QLatin1String("connect")) &&
                   !line.startsWith(QLatin1String("disconnect"));
        });
        return found;
    }

private:
    void note(const QString &line)
    {
        const std::lock_guard lock(m_mutex);
        m_asked.append(line);
    }
    void answer(QList<Attempt> &answers, const Attempt &attempt)
    {
        {
            const std::lock_guard lock(m_mutex);
            answers.append(attempt);
        }
        m_answered.notify_all();
    }
    /// The next answer; absent when it is cancelled before.
    template <typename IsCancelled>
    std::optional<Attempt> wait(QList<Attempt> &answers, IsCancelled isCancelled)
    {
        std::unique_lock lock(m_mutex);
        while (answers.isEmpty()) {
            if (isCancelled()) {
                return std::nullopt;
            }
            m_answered.wait_for(lock, std::chrono::milliseconds(1));
        }
        return answers.takeFirst();
    }

    std::mutex m_mutex;
    std::condition_variable m_answered;
    Accounts m_accounts;
    QStringList m_asked;
    QList<Attempt> m_drive;
    QList<Attempt> m_server;
};

class Connecting : public testing::Test
{
protected:
    ~Connecting() override
    {
        connections.reset();
        places->answerServer({}); // for what may still wait
        Background::waitForAll();
        desktop->forget();
    }

    void deliver()
    {
        do {
            Background::waitForAll();
            QCoreApplication::sendPostedEvents();
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        } while (!connections->findChildren<Delivery *>().isEmpty());
    }
    template <typename Change>
    void change(Change change)
    {
        AppConfig config = settings.config();
        change(config);
        settings.setConfig(config);
    }
    [[nodiscard]] bool begins(qsizetype count)
    {
        return eventuallyInLoop(
            [this, count] { return places->asked(QStringLiteral("connect")).size() == count; });
    }
    void connectDriveNow()
    {
        connections->connectDrive();
        places->answerDrive(AnsweringPlaces::success());
        deliver();
        ASSERT_TRUE(connections->drive().connected);
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
    std::shared_ptr<AnsweringPlaces> places = std::make_shared<AnsweringPlaces>();
    World world = [this] {
        World made = World::real(desktop);
        made.tools = places;
        return made;
    }();
    Settings settings{world};
    EncryptionKey key{world, settings};
    std::unique_ptr<Connections> connections = std::make_unique<Connections>(world, settings, key);
};

TEST_F(Connecting, aSecondSignInDuringTheFirstDoesNothing)
{
    connections->connectDrive();
    EXPECT_TRUE(connections->drive().connecting);
    connections->connectDrive();
    places->answerDrive(AnsweringPlaces::success());
    deliver();
    EXPECT_FALSE(connections->drive().connecting);
    EXPECT_TRUE(connections->drive().connected);
    EXPECT_EQ(places->changes().size(), 1);
}

TEST_F(Connecting, aClientOfOnesOwnLosesTheSpacesAndTabsAroundIt)
{
    change([](AppConfig &config) {
        config.driveClientID = QStringLiteral(" \t an id\t ");
        config.driveClientSecret = QStringLiteral("\ta secret\u00a0 ");
    });
    connections->connectDrive();
    places->answerDrive(AnsweringPlaces::success());
    deliver();
    EXPECT_EQ(places->changes(),
              QStringList{QStringLiteral("connect drive <an id> <a secret\u00a0>")});
}

TEST_F(Connecting, aSuccessPutsDriveInUseAndKeepsNoSecret)
{
    change([](AppConfig &config) {
        config.driveClientID = QStringLiteral("id");
        config.driveClientSecret = QStringLiteral("secret");
    });
    QList<AppConfig> seen;
    QObject::connect(connections.get(), &Connections::connected, connections.get(),
                     [this, &seen](DestinationID destination) {
                         EXPECT_EQ(destination, DestinationID::Drive);
                         seen.append(settings.config());
                     });
    connectDriveNow();
    ASSERT_EQ(seen.size(), 1);
    EXPECT_TRUE(seen.first().driveEnabled);
    EXPECT_EQ(seen.first().driveClientSecret, QString());
    EXPECT_EQ(seen.first().driveClientID, QStringLiteral("id"));
    EXPECT_EQ(places->asked(QStringLiteral("quota")),
              QStringList{QStringLiteral("quota vellomar")});
    EXPECT_EQ(connections->drive().quota, std::optional(Rclone::Quota{.used = 5, .total = 15}));
}

TEST_F(Connecting, aFailureIsShownAndLeavesTheSettings)
{
    change([](AppConfig &config) { config.driveClientSecret = QStringLiteral("secret"); });
    const AppConfig before = settings.config();
    int reports = 0;
    QObject::connect(connections.get(), &Connections::connected, connections.get(),
                     [&reports] { ++reports; });
    connections->connectDrive();
    places->answerDrive(AnsweringPlaces::failure(QStringLiteral("Autorizzazione non completata")));
    deliver();
    EXPECT_EQ(connections->drive().error, QStringLiteral("Autorizzazione non completata"));
    EXPECT_FALSE(connections->drive().connecting);
    EXPECT_FALSE(connections->drive().connected);
    EXPECT_EQ(settings.config(), before);
    EXPECT_EQ(reports, 0);
    connections->connectDrive();
    EXPECT_EQ(connections->drive().error, QString()); // that of the former one
}

TEST_F(Connecting, aRefusalAfterASuccessLeavesNoAccountAndNoRoom)
{
    connectDriveNow();
    connections->connectDrive();
    EXPECT_TRUE(connections->drive().connected); // until that ends
    places->answerDrive(AnsweringPlaces::failure(QStringLiteral("rifiutato")));
    deliver();
    EXPECT_FALSE(connections->drive().connected);
    EXPECT_EQ(connections->drive().quota, std::nullopt);
    EXPECT_EQ(connections->drive().error, QStringLiteral("rifiutato"));
    EXPECT_TRUE(settings.config().driveEnabled);
}

TEST_F(Connecting, aSignInThatIsCancelledHasFailed)
{
    connections->connectDrive();
    ASSERT_TRUE(begins(1));
    connections->cancelDrive();
    deliver();
    EXPECT_EQ(connections->drive().error, QStringLiteral("Collegamento annullato"));
    EXPECT_FALSE(connections->drive().connecting);
    EXPECT_FALSE(settings.config().driveEnabled);
}

TEST_F(Connecting, cancellingCountsForTheSignInUnderWayAlone)
{
    connections->cancelDrive();
    connections->connectDrive();
    connections->cancelDrive();
    deliver();
    EXPECT_EQ(connections->drive().error, QStringLiteral("Collegamento annullato"));
    connections->cancelDrive();
    connectDriveNow();
    EXPECT_EQ(connections->drive().error, QString());
}

TEST_F(Connecting, whatIsKnownOfTheAccountsMeanwhileChangesNothing)
{
    connections->connectDrive();
    ASSERT_TRUE(begins(1));
    places->have({.drive = true, .server = true});
    connections->read();
    ASSERT_TRUE(eventuallyInLoop([this] { return connections->server().connected; }));
    EXPECT_FALSE(connections->drive().connected);
    EXPECT_TRUE(connections->drive().connecting);
    EXPECT_EQ(
        places->asked(QStringLiteral("quota vellomar")).count(QStringLiteral("quota vellomar")), 0);
    places->answerDrive(AnsweringPlaces::success());
    deliver();
    EXPECT_TRUE(connections->drive().connected);
}

TEST_F(Connecting, aNewKeyMeanwhileChangesNothing)
{
    connections->connectDrive();
    ASSERT_TRUE(begins(1));
    bool isDone = false;
    key.install(QStringLiteral("another key"), true, [&isDone](const auto &) { isDone = true; });
    ASSERT_TRUE(eventuallyInLoop([&isDone] { return isDone; }));
    places->answerDrive(AnsweringPlaces::success());
    deliver();
    EXPECT_TRUE(connections->drive().connected);
    EXPECT_TRUE(settings.config().driveEnabled);
}

TEST_F(Connecting, aDisconnectEndsASignInUnderWay)
{
    connections->connectDrive();
    ASSERT_TRUE(begins(1));
    connections->disconnect(DestinationID::Drive);
    deliver();
    EXPECT_EQ(connections->drive(), Connection());
    EXPECT_EQ(places->changes(), (QStringList{QStringLiteral("connect drive <> <>"),
                                              QStringLiteral("disconnect drive")}));
}

TEST_F(Connecting, aSignInThatSucceedsAfterADisconnectCountsForNothing)
{
    connections->connectDrive();
    places->answerDrive(AnsweringPlaces::success());
    Background::waitForAll(); // done, and not delivered
    connections->disconnect(DestinationID::Drive);
    deliver();
    EXPECT_EQ(connections->drive(), Connection());
    EXPECT_FALSE(settings.config().driveEnabled);
}

TEST_F(Connecting, connectingAfterADisconnectWaitsForIt)
{
    connectDriveNow();
    connections->disconnect(DestinationID::Drive);
    EXPECT_FALSE(settings.config().driveEnabled);
    EXPECT_FALSE(connections->drive().connected);
    connections->connectDrive();
    EXPECT_TRUE(connections->drive().connecting);
    places->answerDrive(AnsweringPlaces::success());
    deliver();
    EXPECT_TRUE(connections->drive().connected);
    EXPECT_TRUE(settings.config().driveEnabled);
    EXPECT_EQ(places->changes(), (QStringList{QStringLiteral("connect drive <> <>"),
                                              QStringLiteral("disconnect drive"),
                                              QStringLiteral("connect drive <> <>")}));
}

TEST_F(Connecting, eachOfTwoDisconnectsKeepsTheAccountAway)
{
    connectDriveNow();
    connections->disconnect(DestinationID::Drive);
    connections->disconnect(DestinationID::Drive);
    deliver();
    EXPECT_EQ(connections->drive(), Connection());
}

TEST_F(Connecting, aSecretOfAnAccountThatIsThereIsNotKept)
{
    // The program ended before it heard of the success.
    change([](AppConfig &config) { config.driveClientSecret = QStringLiteral("secret"); });
    connections->read();
    deliver();
    EXPECT_EQ(settings.config().driveClientSecret, QStringLiteral("secret"));
    places->have({.drive = true, .server = false});
    connections->read();
    deliver();
    EXPECT_EQ(settings.config().driveClientSecret, QString());
    EXPECT_FALSE(settings.config().driveEnabled);
}

TEST_F(Connecting, theEndOfTheModelCancelsASignIn)
{
    connections->connectDrive();
    ASSERT_TRUE(begins(1));
    connections.reset();
    Background::waitForAll(); // ends, though nobody signs in
    EXPECT_FALSE(places->accounts().drive);
}

TEST_F(Connecting, theEndOfTheProgramWaitsForTheEndOfASignIn)
{
    connections->connectDrive();
    ASSERT_TRUE(begins(1));
    connections->endSignIn(std::chrono::seconds(60));
    EXPECT_TRUE(connections->drive().connecting); // which nobody has heard of
    deliver();
    EXPECT_EQ(connections->drive().error, QStringLiteral("Collegamento annullato"));
}

TEST_F(Connecting, aServerGetsTheSecretAsTyped)
{
    change([](AppConfig &config) { config.serverHost = QStringLiteral("nas"); });
    connections->connectServer(QStringLiteral(" a secret\t"));
    EXPECT_TRUE(connections->server().connecting);
    change([](AppConfig &config) { config.serverHost = QStringLiteral("different"); });
    connections->connectServer(QStringLiteral("a second one"));
    places->answerServer(AnsweringPlaces::success());
    deliver();
    EXPECT_EQ(places->changes(), QStringList{QStringLiteral("connect server nas < a secret\t>")});
    EXPECT_TRUE(connections->server().connected);
    EXPECT_TRUE(settings.config().serverEnabled);
}

TEST_F(Connecting, aServerHasItsRoomAtOnceAndItsVersioningAfterThat)
{
    change([](AppConfig &config) {
        config.serverKind = ServerKind::S3;
        config.serverPath = QStringLiteral("/bucket/folder");
    });
    QList<Connection> seen;
    QObject::connect(connections.get(), &Connections::serverChanged, connections.get(),
                     [this, &seen] { seen.append(connections->server()); });
    connections->connectServer(QStringLiteral("secret"));
    places->answerServer(AnsweringPlaces::success());
    deliver();
    ASSERT_EQ(seen.size(), 3);
    EXPECT_EQ(seen.at(1).quota, std::optional(Rclone::Quota{.used = 7, .total = 70}));
    EXPECT_EQ(seen.at(1).versioning, QString());
    EXPECT_EQ(seen.at(2).versioning, QStringLiteral("Enabled"));
    EXPECT_EQ(places->asked(QStringLiteral("versioning")),
              QStringList{QStringLiteral("versioning bucket")});
}

TEST_F(Connecting, aFailedServerIsNotInUse)
{
    const AppConfig before = settings.config();
    connections->connectServer(QStringLiteral("secret"));
    places->answerServer(AnsweringPlaces::failure(QStringLiteral("Server non raggiungibile")));
    deliver();
    EXPECT_EQ(connections->server().error, QStringLiteral("Server non raggiungibile"));
    EXPECT_FALSE(connections->server().connected);
    EXPECT_FALSE(connections->server().connecting);
    EXPECT_EQ(settings.config(), before);
}

TEST_F(Connecting, aServerThatIsDisconnectedMeanwhileIsDisconnectedAfterwards)
{
    connections->connectServer(QStringLiteral("secret"));
    ASSERT_TRUE(begins(1));
    connections->disconnect(DestinationID::Server);
    EXPECT_EQ(connections->server(), Connection());
    places->answerServer(AnsweringPlaces::success());
    deliver();
    EXPECT_EQ(connections->server(), Connection());
    EXPECT_FALSE(settings.config().serverEnabled);
    EXPECT_FALSE(places->accounts().server);
}

TEST_F(Connecting, aServerIsConnectedWhileASignInWaits)
{
    connections->connectDrive();
    ASSERT_TRUE(begins(1));
    connections->connectServer(QStringLiteral("secret"));
    places->answerServer(AnsweringPlaces::success());
    ASSERT_TRUE(eventuallyInLoop([this] { return connections->server().connected; }));
    EXPECT_TRUE(connections->drive().connecting);
    places->answerDrive(AnsweringPlaces::success());
    deliver();
    EXPECT_TRUE(connections->drive().connected);
    EXPECT_TRUE(connections->server().connected);
}

} // namespace
