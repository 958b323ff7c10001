#include "model/Background.h"
#include "state/Keychain.h"
#include "state/Paths.h"
#include "tests/support/ModelFixture.h"

#include <QDir>

namespace {

class Refresh : public ModelFixture
{
protected:
    [[nodiscard]] QString disk() const { return config.repository(DestinationID::Local); }
    [[nodiscard]] RepoInfo local() const
    {
        return model->repositories()->all().value(DestinationID::Local);
    }

    static QString listed(const QStringList &snapshots)
    {
        return u'[' + snapshots.join(u',') + u']';
    }
};

TEST_F(Refresh, listsThisMachinesVersionsAndTheSizeOfTheWhole)
{
    const QString own = Paths::hostname();
    tools.answer(
        QStringLiteral("snapshots"),
        ScriptedTools::ended(
            0, listed({ScriptedTools::snapshot(QStringLiteral("aa"), own,
                                               QStringLiteral("2026-03-01T07:00:00Z")),
                       ScriptedTools::snapshot(QStringLiteral("bb"), QStringLiteral("altro")),
                       ScriptedTools::snapshot(QStringLiteral("cc"), own),
                       ScriptedTools::snapshot(QStringLiteral("dd"), own.toUpper() + u'X'),
                       ScriptedTools::snapshot(QStringLiteral("ee"), own + u' ')})));
    start();
    settle();
    ASSERT_EQ(local().snapshots.size(), 2);
    EXPECT_EQ(local().snapshots.at(0).id, QStringLiteral("cc"));
    EXPECT_EQ(local().snapshots.at(1).id, QStringLiteral("aa"));
    EXPECT_EQ(local().size, 1000);
    EXPECT_EQ(local().error, std::nullopt);
    EXPECT_FALSE(local().loading);
}

TEST_F(Refresh, anEmptyRepositoryHasNoSizeAndIsNotAskedForIt)
{
    start();
    settle();
    EXPECT_TRUE(local().snapshots.isEmpty());
    EXPECT_EQ(local().size, std::nullopt);
    EXPECT_EQ(local().error, std::nullopt);
    EXPECT_EQ(tools.count(QStringLiteral("restic"), QStringLiteral("stats")), 0);
}

TEST_F(Refresh, aRepositoryOfOthersAloneShowsItsSize)
{
    tools.answer(QStringLiteral("snapshots"),
                 ScriptedTools::ended(0, listed({ScriptedTools::snapshot(
                                             QStringLiteral("bb"), QStringLiteral("altro"))})));
    start();
    settle();
    EXPECT_TRUE(local().snapshots.isEmpty());
    EXPECT_EQ(local().size, 1000);
}

TEST_F(Refresh, aSizeThatCannotBeHadIsAbsent)
{
    tools.answer(QStringLiteral("snapshots"),
                 ScriptedTools::ended(0, listed({ScriptedTools::snapshot(QStringLiteral("aa"),
                                                                         Paths::hostname())})));
    tools.answer(QStringLiteral("stats"), ScriptedTools::ended(1));
    start();
    settle();
    EXPECT_EQ(local().snapshots.size(), 1);
    EXPECT_EQ(local().size, std::nullopt);
    EXPECT_EQ(local().error, std::nullopt);
}

TEST_F(Refresh, aFailureEmptiesWhatWasThereAndIsReportedInItsWords)
{
    tools.answer(QStringLiteral("snapshots"),
                 ScriptedTools::ended(0, listed({ScriptedTools::snapshot(QStringLiteral("aa"),
                                                                         Paths::hostname())})));
    start();
    settle();
    ASSERT_EQ(local().snapshots.size(), 1);
    tools.answer(QStringLiteral("snapshots"),
                 ScriptedTools::ended(12, QStringLiteral("wrong password")));
    model->refresh(DestinationID::Local);
    settle();
    EXPECT_TRUE(local().snapshots.isEmpty());
    EXPECT_EQ(local().size, std::nullopt);
    EXPECT_EQ(local().error, QStringLiteral("Chiave di cifratura errata per questa destinazione"));
    EXPECT_FALSE(local().loading);
}

TEST_F(Refresh, whatIsOnShowStaysWhileItReloads)
{
    tools.answer(QStringLiteral("snapshots"),
                 ScriptedTools::ended(0, listed({ScriptedTools::snapshot(QStringLiteral("aa"),
                                                                         Paths::hostname())})));
    start();
    settle();
    tools.hold();
    model->refresh(DestinationID::Local);
    EXPECT_EQ(local().snapshots.size(), 1);
    EXPECT_EQ(local().size, 1000);
    EXPECT_TRUE(local().loading);
    EXPECT_EQ(local().error, std::nullopt);
    tools.letGo();
    settle();
    EXPECT_FALSE(local().loading);
}

TEST_F(Refresh, anErrorGoesWhenAReadingBegins)
{
    tools.answer(QStringLiteral("snapshots"), ScriptedTools::ended(12));
    start();
    settle();
    ASSERT_TRUE(local().error);
    tools.hold();
    model->refresh(DestinationID::Local);
    EXPECT_TRUE(local().loading);
    EXPECT_TRUE(eventuallyInLoop([this] { return !local().error; }));
    EXPECT_TRUE(local().loading);
}

TEST_F(Refresh, anErrorStaysUntilTheDestinationIsThere)
{
    config.localFolder = QDir::homePath() + QLatin1String("/unplugged");
    start();
    settle();
    ASSERT_TRUE(local().error);
    int changes = 0;
    QObject::connect(model->repositories(), &Repositories::changed, model.get(), [this, &changes] {
        ++changes;
        EXPECT_EQ(local().error, QStringLiteral("Disco non collegato"));
    });
    model->refresh(DestinationID::Local);
    settle();
    EXPECT_EQ(changes, 2); // it is being looked for, and isn't there
}

TEST_F(Refresh, aDestinationThatIsNotThereIsReportedWithoutAskingAnyTool)
{
    config.driveEnabled = true;
    config.serverEnabled = true;
    config.localFolder = QDir::homePath() + QLatin1String("/unplugged");
    start();
    settle();
    for (const auto &[destination, text] :
         {std::pair(DestinationID::Local, QStringLiteral("Disco non collegato")),
          std::pair(DestinationID::Drive, QStringLiteral("Google Drive non collegato")),
          std::pair(DestinationID::Server, QStringLiteral("Server non collegato"))}) {
        const RepoInfo info = model->repositories()->all().value(destination);
        EXPECT_EQ(info.error, text);
        EXPECT_FALSE(info.loading);
        EXPECT_TRUE(info.snapshots.isEmpty());
        EXPECT_EQ(info.size, std::nullopt);
        EXPECT_EQ(model->repositories()->stateText(destination), text);
        EXPECT_EQ(model->repositories()->stateTone(destination), Tone::Attention);
    }
    settle();
    EXPECT_EQ(tools.count(QStringLiteral("restic")), 0);
}

TEST_F(Refresh, aDestinationOutOfUseLosesItsEntry)
{
    start();
    settle();
    ASSERT_TRUE(model->repositories()->all().contains(DestinationID::Local));
    change([](AppConfig &settings) { settings.localEnabled = false; });
    EXPECT_EQ(model->repositories()->stateText(DestinationID::Local), QStringLiteral("Non attiva"));
    EXPECT_TRUE(model->repositories()->all().contains(DestinationID::Local));
    model->refresh(DestinationID::Local);
    EXPECT_FALSE(model->repositories()->all().contains(DestinationID::Local));
}

TEST_F(Refresh, aDestinationThatGoesOutOfUseMeanwhileIsNotActive)
{
    tools.hold();
    start();
    change([](AppConfig &settings) { settings.localEnabled = false; });
    tools.letGo();
    settle();
    EXPECT_EQ(model->repositories()->stateText(DestinationID::Local), QStringLiteral("Non attiva"));
    model->refresh(DestinationID::Local);
    EXPECT_FALSE(model->repositories()->all().contains(DestinationID::Local));
}

TEST_F(Refresh, aReadingUnderWayDoesNotPutBackWhatWentOutOfUse)
{
    tools.hold();
    start();
    ASSERT_TRUE(eventuallyInLoop([this] { return tools.held() == 1; }));
    change([](AppConfig &settings) { settings.localEnabled = false; });
    model->refresh(DestinationID::Local);
    ASSERT_FALSE(model->repositories()->all().contains(DestinationID::Local));
    tools.letGo();
    settle();
    EXPECT_FALSE(model->repositories()->all().contains(DestinationID::Local));
}

TEST_F(Refresh, aReadingOfAnEarlierUseDoesNotShowInALaterOne)
{
    tools.hold();
    start();
    ASSERT_TRUE(eventuallyInLoop([this] { return tools.held() == 1; }));
    tools.answer(QStringLiteral("snapshots"), disk(), ScriptedTools::ended(12));
    change([](AppConfig &settings) { settings.localEnabled = false; });
    change([](AppConfig &settings) {
        settings.localEnabled = true;
        settings.localFolder = folder("another");
    });
    model->refresh(DestinationID::Local);
    ASSERT_TRUE(eventuallyInLoop([this] { return tools.held() == 2; }));
    int errors = 0;
    QObject::connect(model->repositories(), &Repositories::changed, model.get(),
                     [this, &errors] { errors += local().error ? 1 : 0; });
    tools.letGo();
    settle();
    EXPECT_EQ(errors, 0);
    EXPECT_FALSE(local().loading);
}

TEST_F(Refresh, aPlaceThatIsBeingLookedForIsNotLookedForASecondTime)
{
    useAllDestinations();
    tools.holdConnections();
    start();
    for (int i = 0; i < 5; ++i) {
        model->refresh(DestinationID::Drive);
    }
    storeKey(QStringLiteral("another key"), Keychain::repositoryKey);
    ASSERT_EQ(install(QStringLiteral("another key"), true), std::nullopt);
    tools.letGo();
    settle();
    // Requests made meanwhile are served once, with the settings of that time.
    const QString drive = config.repository(DestinationID::Drive);
    EXPECT_EQ(tools.repositories(QStringLiteral("snapshots")).count(drive), 1);
    for (const ScriptedTools::Call &call : tools.calls) {
        if (call.repository() == drive) {
            EXPECT_EQ(call.input, QStringLiteral("another key"));
        }
    }
}

TEST_F(Refresh, aReadingUnderWayKeepsTheSettingsThatItBeganWith)
{
    tools.hold();
    start();
    ASSERT_TRUE(eventuallyInLoop([this] { return tools.held() == 1; }));
    const QString before = disk();
    change([](AppConfig &settings) { settings.localFolder = folder("another"); });
    tools.answer(QStringLiteral("snapshots"), before,
                 ScriptedTools::ended(0, listed({ScriptedTools::snapshot(QStringLiteral("aa"),
                                                                         Paths::hostname())})));
    tools.letGo();
    settle();
    EXPECT_EQ(tools.repositories(QStringLiteral("stats")), QStringList{before});
    EXPECT_EQ(local().snapshots.size(), 1);
}

TEST_F(Refresh, ofTwoAtOnceTheOneThatEndsLastCounts)
{
    tools.hold();
    start();
    ASSERT_TRUE(eventuallyInLoop([this] { return tools.held() == 1; }));
    model->refresh(DestinationID::Local);
    EXPECT_TRUE(eventuallyInLoop([this] { return tools.held() == 2; }));
    tools.letGo();
    settle();
    EXPECT_EQ(tools.count(QStringLiteral("restic"), QStringLiteral("snapshots")), 2);
    EXPECT_FALSE(local().loading);
}

TEST_F(Refresh, eachDestinationHasItsOwnRepositoryAndKey)
{
    useAllDestinations();
    start();
    settle();
    QStringList repositories = tools.repositories(QStringLiteral("snapshots"));
    repositories.sort();
    QStringList expected{disk(), config.repository(DestinationID::Drive),
                         config.repository(DestinationID::Server)};
    expected.sort();
    EXPECT_EQ(repositories, expected);
    for (const ScriptedTools::Call &call : tools.calls) {
        if (call.tool() == QLatin1String("restic")) {
            EXPECT_EQ(call.input, QStringLiteral("the key in use"));
        }
    }
}

TEST_F(Refresh, aModelMayGoWhileRepositoriesAreRead)
{
    useAllDestinations();
    tools.hold();
    start();
    ASSERT_TRUE(eventuallyInLoop([this] { return tools.held() == 3; }));
    model.reset();
    tools.letGo();
    settle();
    // The same when the results are already on their way.
    const auto readings = [this] {
        return tools.count(QStringLiteral("restic"), QStringLiteral("snapshots"));
    };
    start();
    ASSERT_TRUE(eventuallyInLoop([&] { return readings() == 6; }));
    Background::waitForAll();
    model.reset();
    settle();
    EXPECT_EQ(readings(), 6);
}

} // namespace
