#include "model/PreviewFolder.h"
#include "model/UserDefaults.h"
#include "state/ConfigStore.h"
#include "state/Keychain.h"
#include "tests/support/ModelFixture.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace {

class StartUp : public ModelFixture
{
protected:
    StartUp()
    {
        qputenv("TMPDIR", QFile::encodeName(folder("tmp")));
        secrets.items.remove({QStringLiteral("it.vellomar.app"), Keychain::previousRepositoryKey});
    }

    [[nodiscard]] qsizetype scheduleChanges() { return tools.count(QStringLiteral("systemctl")); }
};

TEST_F(StartUp, withNothingThereGivesTheStartValues)
{
    config.localEnabled = false;
    start();
    EXPECT_EQ(model->section(), AppModel::Section::Overview);
    EXPECT_EQ(model->config(), config);
    EXPECT_EQ(model->status(), std::nullopt);
    EXPECT_FALSE(model->isLaunching());
    EXPECT_FALSE(model->isBusy());
    EXPECT_TRUE(model->history().isEmpty());
    EXPECT_TRUE(model->repos().isEmpty());
    EXPECT_FALSE(model->isDriveConnected());
    EXPECT_FALSE(model->isDriveConnecting());
    EXPECT_EQ(model->driveError(), std::nullopt);
    EXPECT_EQ(model->driveQuota(), std::nullopt);
    EXPECT_FALSE(model->isServerConnected());
    EXPECT_FALSE(model->isServerConnecting());
    EXPECT_EQ(model->serverError(), std::nullopt);
    EXPECT_EQ(model->serverQuota(), std::nullopt);
    EXPECT_EQ(model->serverVersioning(), std::nullopt);
    EXPECT_TRUE(model->hasFullDiskAccess());
    EXPECT_EQ(model->accessRequest(), AppModel::GatedAction::None);
    EXPECT_FALSE(model->foreign());
    EXPECT_FALSE(model->isShowingForeignWizard());
    EXPECT_FALSE(model->isShowingRecoveryKit());
    EXPECT_EQ(model->keyError(), std::nullopt);
    EXPECT_FALSE(model->isKeyChecking());
    EXPECT_FALSE(model->hasPreviousKey());
    EXPECT_FALSE(model->isKeyCopied());
    EXPECT_EQ(model->kitNotice(), std::nullopt);
    EXPECT_TRUE(model->sourceSizes().isEmpty());
    EXPECT_FALSE(model->isMeasuring());
    EXPECT_EQ(model->measuredSoFar(), 0);
    EXPECT_EQ(model->password(), QStringLiteral("the key in use"));
    EXPECT_TRUE(desktop->started.isEmpty());
}

TEST_F(StartUp, findsTheConnectionsOfRclone)
{
    tools.connectRemotes();
    start();
    EXPECT_TRUE(model->isDriveConnected());
    EXPECT_TRUE(model->isServerConnected());
}

TEST_F(StartUp, aDriveWithoutATokenIsNotConnected)
{
    tools.setRemotes(QStringLiteral(R"({"vellomar": {"type": "drive"}})"));
    start();
    EXPECT_FALSE(model->isDriveConnected());
    EXPECT_FALSE(model->isServerConnected());
}

TEST_F(StartUp, takesTheKeyThatIsThere)
{
    storeKey(QStringLiteral("an older one"), Keychain::previousRepositoryKey);
    start();
    EXPECT_EQ(model->password(), QStringLiteral("the key in use"));
    EXPECT_TRUE(model->hasPreviousKey());
    EXPECT_TRUE(model->config().keySaved);
    EXPECT_EQ(secrets.adds, 0);
    EXPECT_EQ(secrets.updates, 0);
}

TEST_F(StartUp, aMissingKeyIsMadeAndCountsAsUnsaved)
{
    secrets.items.remove({QStringLiteral("it.vellomar.app"), Keychain::repositoryKey});
    start();
    EXPECT_EQ(model->password().size(), 32);
    EXPECT_EQ(storedKey(Keychain::repositoryKey), model->password());
    EXPECT_FALSE(model->config().keySaved);
    EXPECT_FALSE(ConfigStore::load().keySaved);
    EXPECT_EQ(model->keyError(), std::nullopt);
}

TEST_F(StartUp, aKeyThatCannotBeReadIsToldAndTheRestGoesOn)
{
    storeKey(QStringLiteral("an older one"), Keychain::previousRepositoryKey);
    secrets.readFailure = 13;
    start();
    EXPECT_EQ(model->keyError(),
              QStringLiteral("Impossibile accedere alla chiave nel Portachiavi (errore 13)"));
    EXPECT_EQ(model->password(), QString());
    EXPECT_FALSE(model->hasPreviousKey());
    EXPECT_TRUE(model->config().keySaved);
    EXPECT_EQ(desktop->probes, 1);
    EXPECT_TRUE(model->repos().value(DestinationID::local).loading);
}

TEST_F(StartUp, aNewKeyThatCannotBeStoredIsToldAndNotUsed)
{
    secrets.items.remove({QStringLiteral("it.vellomar.app"), Keychain::repositoryKey});
    secrets.writeFailure = 14;
    start();
    EXPECT_EQ(model->keyError(),
              QStringLiteral("Impossibile accedere alla chiave nel Portachiavi (errore 14)"));
    EXPECT_EQ(model->password(), QString());
    EXPECT_TRUE(model->config().keySaved);
}

TEST_F(StartUp, clearsAwayWhatAnEarlierStartLeft)
{
    QDir().mkpath(PreviewFolder::path() + QLatin1String("/inner"));
    writeSupportFile("rclone-left.conf", "[vellomar]");
    writeSupportFile("config.json.AbCdEf.vellomar-partial", "{");
    writeSupportFile("known_hosts.AbCdEf.vellomar-partial", "server ssh-");
    clock.set(QDateTime::currentDateTimeUtc().addSecs(120));
    start();
    EXPECT_FALSE(QFileInfo::exists(PreviewFolder::path()));
    EXPECT_FALSE(QFileInfo::exists(supportFile("rclone-left.conf")));
    EXPECT_TRUE(QDir(Paths::support())
                    .entryList({QStringLiteral("*.vellomar-partial")}, QDir::Files)
                    .isEmpty());
}

TEST_F(StartUp, bringsTheScheduleInLineWithTheSettings)
{
    start();
    EXPECT_GT(scheduleChanges(), 0);
    const QString timer =
        QDir::homePath() + QLatin1String("/.config/systemd/user/it.vellomar.backup.timer");
    EXPECT_TRUE(QFileInfo::exists(timer));
    config.autoBackup = false;
    ConfigStore::save(config);
    restart();
    EXPECT_FALSE(QFileInfo::exists(timer));
}

TEST_F(StartUp, showsARunUnderWayAtOnce)
{
    const EngineLookalike engine;
    const RunStatus status = leaveStatus(engine.pid());
    start();
    EXPECT_EQ(model->status(), status);
    EXPECT_TRUE(model->isBusy());
}

TEST_F(StartUp, readsTheHistory)
{
    const QList<RunRecord> records{record(1), record(2)};
    writeHistory(records);
    start();
    EXPECT_EQ(model->history(), records);
}

TEST_F(StartUp, readsTheRepositoriesInUse)
{
    useAllDestinations();
    config.driveEnabled = false;
    start();
    EXPECT_TRUE(model->repos().value(DestinationID::local).loading);
    EXPECT_TRUE(model->repos().value(DestinationID::server).loading);
    EXPECT_FALSE(model->repos().contains(DestinationID::drive));
    settle();
    EXPECT_FALSE(model->repos().value(DestinationID::local).loading);
    EXPECT_FALSE(model->repos().value(DestinationID::server).loading);
}

TEST_F(StartUp, goesInItsOrder)
{
    // Each step is caught at the moment of the next one that can be seen from outside.
    QDir().mkpath(PreviewFolder::path());
    UserDefaults::set(UserDefaults::pendingAction, QStringLiteral("backup"));
    UserDefaults::set(UserDefaults::pendingActionDate, clock.moment());
    useAllDestinations();
    tools.hold();
    start();
    QStringList order;
    for (const ModelTools::Call &call : tools.calls()) {
        if (order.isEmpty() || order.last() != call.tool) {
            order.append(call.tool);
        }
    }
    // The connections, the schedule, the repositories.
    ASSERT_GE(order.size(), 2);
    EXPECT_EQ(order.at(0), QStringLiteral("rclone"));
    EXPECT_EQ(order.at(1), QStringLiteral("systemctl"));
    // At the end of it all, with every repository being read, what was pending is taken up.
    EXPECT_EQ(model->repos().size(), 3);
    EXPECT_EQ(desktop->probes, 2);
    EXPECT_EQ(desktop->started.size(), 1);
    EXPECT_TRUE(model->isLaunching());
    tools.letGo();
}

TEST_F(StartUp, looksAgainEachSecond)
{
    start();
    const EngineLookalike engine;
    const RunStatus status = leaveStatus(engine.pid());
    EXPECT_TRUE(eventuallyInLoop([this] { return model->status().has_value(); }));
    EXPECT_EQ(model->status(), status);
}

TEST_F(StartUp, remembersMeasuredSizes)
{
    UserDefaults::set(UserDefaults::sourceSizes,
                      QVariantMap{{QStringLiteral("/a"), 5}, {QStringLiteral("/b"), 7.0}});
    start();
    EXPECT_EQ(model->sourceSizes(),
              (QMap<QString, qint64>{{QStringLiteral("/a"), 5}, {QStringLiteral("/b"), 7}}));
}

TEST_F(StartUp, sizesThatAreNotAllNumbersCountAsNone)
{
    for (const QVariant &kept :
         {QVariant(QVariantMap{{QStringLiteral("/a"), 5}, {QStringLiteral("/b"), true}}),
          QVariant(QVariantMap{{QStringLiteral("/a"), QStringLiteral("5")}}), QVariant(5),
          QVariant(QStringLiteral("/a"))}) {
        UserDefaults::set(UserDefaults::sourceSizes, kept);
        start();
        EXPECT_TRUE(model->sourceSizes().isEmpty()) << kept.typeName();
    }
}

} // namespace
