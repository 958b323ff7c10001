#include "model/PreviewFolder.h"
#include "model/UserDefaults.h"
#include "state/ConfigStore.h"
#include "state/Keychain.h"
#include "tests/support/ModelFixture.h"
#include "tests/support/OrdinaryUser.h"

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
    EXPECT_EQ(model->run()->status(), std::nullopt);
    EXPECT_FALSE(model->run()->isLaunching());
    EXPECT_FALSE(model->run()->isBusy());
    EXPECT_TRUE(model->run()->history().isEmpty());
    EXPECT_TRUE(model->repositories()->all().isEmpty());
    EXPECT_FALSE(model->connections()->drive().connected);
    EXPECT_FALSE(model->connections()->drive().connecting);
    EXPECT_EQ(model->connections()->drive().error, QString());
    EXPECT_EQ(model->connections()->drive().quota, std::nullopt);
    EXPECT_FALSE(model->connections()->server().connected);
    EXPECT_FALSE(model->connections()->server().connecting);
    EXPECT_EQ(model->connections()->server().error, QString());
    EXPECT_EQ(model->connections()->server().quota, std::nullopt);
    EXPECT_EQ(model->connections()->server().versioning, QString());
    EXPECT_TRUE(model->access()->isGranted());
    EXPECT_EQ(model->access()->request(), AppModel::GatedAction::None);
    EXPECT_FALSE(model->foreign());
    EXPECT_FALSE(model->isShowingForeignWizard());
    EXPECT_FALSE(model->kit()->isShowing());
    EXPECT_EQ(model->key()->error(), std::nullopt);
    EXPECT_FALSE(model->key()->isChecking());
    EXPECT_FALSE(model->key()->hasPrevious());
    EXPECT_FALSE(model->key()->isCopied());
    EXPECT_EQ(model->kit()->notice(), std::nullopt);
    EXPECT_TRUE(model->measurement()->sizes().isEmpty());
    EXPECT_FALSE(model->measurement()->isMeasuring());
    EXPECT_EQ(model->measurement()->soFar(), 0);
    EXPECT_EQ(model->key()->value(), QStringLiteral("the key in use"));
    EXPECT_TRUE(desktop->started.isEmpty());
}

TEST_F(StartUp, findsTheConnectionsOfRclone)
{
    tools.connectRemotes();
    start();
    settle();
    EXPECT_TRUE(model->connections()->drive().connected);
    EXPECT_TRUE(model->connections()->server().connected);
}

TEST_F(StartUp, aDriveWithoutATokenIsNotConnected)
{
    tools.setRemotes(QStringLiteral(R"({"vellomar": {"type": "drive"}})"));
    start();
    settle();
    EXPECT_FALSE(model->connections()->drive().connected);
    EXPECT_FALSE(model->connections()->server().connected);
}

TEST_F(StartUp, takesTheKeyThatIsThere)
{
    storeKey(QStringLiteral("an older one"), Keychain::previousRepositoryKey);
    start();
    EXPECT_EQ(model->key()->value(), QStringLiteral("the key in use"));
    EXPECT_TRUE(model->key()->hasPrevious());
    EXPECT_TRUE(model->config().keySaved);
    EXPECT_EQ(secrets.adds, 0);
    EXPECT_EQ(secrets.updates, 0);
}

TEST_F(StartUp, aMissingKeyIsMadeAndCountsAsUnsaved)
{
    secrets.items.remove({QStringLiteral("it.vellomar.app"), Keychain::repositoryKey});
    start();
    EXPECT_EQ(model->key()->value().size(), 32);
    EXPECT_EQ(storedKey(Keychain::repositoryKey), model->key()->value());
    EXPECT_FALSE(model->config().keySaved);
    EXPECT_FALSE(ConfigStore::load().keySaved);
    EXPECT_EQ(model->key()->error(), std::nullopt);
}

TEST_F(StartUp, aKeyIsMadeOnlyOnceItCountsAsUnsaved)
{
    secrets.items.remove({QStringLiteral("it.vellomar.app"), Keychain::repositoryKey});
    QList<bool> savedAtWrite;
    secrets.onWrite = [&savedAtWrite] { savedAtWrite.append(ConfigStore::load().keySaved); };
    start();
    EXPECT_FALSE(savedAtWrite.isEmpty());
    EXPECT_FALSE(savedAtWrite.contains(true));
    EXPECT_TRUE(model->key()->hasKey());
}

TEST_F(StartUp, noKeyIsMadeWhereThatCannotBeSaved)
{
    secrets.items.remove({QStringLiteral("it.vellomar.app"), Keychain::repositoryKey});
    ConfigStore::save(config);
    ASSERT_TRUE(becomeOrdinaryUser());
    ASSERT_TRUE(QFile::setPermissions(Paths::support(), QFile::ReadOwner | QFile::ExeOwner));
    start();
    settle();
    ASSERT_TRUE(QFile::setPermissions(Paths::support(),
                                      QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    EXPECT_EQ(model->key()->error(), QStringLiteral("Le impostazioni non si possono salvare: non è "
                                                    "stata creata nessuna chiave."));
    EXPECT_FALSE(model->key()->hasKey());
    EXPECT_EQ(secrets.adds, 0);
    EXPECT_TRUE(ConfigStore::load().keySaved);
}

TEST_F(StartUp, aKeyThatCannotBeReadIsReportedAndTheRestGoesOn)
{
    storeKey(QStringLiteral("an older one"), Keychain::previousRepositoryKey);
    secrets.readFailure = 13;
    start();
    EXPECT_EQ(model->key()->error(),
              QStringLiteral("Impossibile accedere alla chiave nel Portachiavi (errore 13)"));
    EXPECT_EQ(model->key()->value(), QString());
    EXPECT_FALSE(model->key()->hasPrevious());
    EXPECT_TRUE(model->config().keySaved);
    EXPECT_EQ(desktop->probes, 1);
    EXPECT_TRUE(model->repositories()->all().value(DestinationID::Local).loading);
}

TEST_F(StartUp, aNewKeyThatCannotBeStoredIsReportedAndNotUsed)
{
    secrets.items.remove({QStringLiteral("it.vellomar.app"), Keychain::repositoryKey});
    secrets.writeFailure = 14;
    start();
    EXPECT_EQ(model->key()->error(),
              QStringLiteral("Impossibile accedere alla chiave nel Portachiavi (errore 14)"));
    EXPECT_EQ(model->key()->value(), QString());
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
    settle();
    EXPECT_FALSE(QFileInfo::exists(PreviewFolder::path()));
    EXPECT_FALSE(QFileInfo::exists(supportFile("rclone-left.conf")));
    EXPECT_TRUE(QDir(Paths::support())
                    .entryList({QStringLiteral("*.vellomar-partial")}, QDir::Files)
                    .isEmpty());
}

TEST_F(StartUp, bringsTheScheduleInLineWithTheSettings)
{
    start();
    settle();
    EXPECT_GT(scheduleChanges(), 0);
    const QString timer =
        QDir::homePath() + QLatin1String("/.config/systemd/user/it.vellomar.backup.timer");
    EXPECT_TRUE(QFileInfo::exists(timer));
    config.autoBackup = false;
    ConfigStore::save(config);
    restart();
    settle();
    EXPECT_FALSE(QFileInfo::exists(timer));
}

TEST_F(StartUp, showsARunUnderWayAtOnce)
{
    const EngineLookalike engine;
    const RunStatus status = leaveStatus(engine.pid());
    start();
    EXPECT_EQ(model->run()->status(), status);
    EXPECT_TRUE(model->run()->isBusy());
}

TEST_F(StartUp, readsTheHistory)
{
    const QList<RunRecord> records{record(1), record(2)};
    writeHistory(records);
    start();
    EXPECT_EQ(model->run()->history(), records);
}

TEST_F(StartUp, readsTheRepositoriesInUse)
{
    useAllDestinations();
    config.driveEnabled = false;
    start();
    EXPECT_TRUE(model->repositories()->all().value(DestinationID::Local).loading);
    EXPECT_TRUE(model->repositories()->all().value(DestinationID::Server).loading);
    EXPECT_FALSE(model->repositories()->all().contains(DestinationID::Drive));
    settle();
    EXPECT_FALSE(model->repositories()->all().value(DestinationID::Local).loading);
    EXPECT_FALSE(model->repositories()->all().value(DestinationID::Server).loading);
}

TEST_F(StartUp, waitsForAKeyringWithoutHoldingAnybodyUp)
{
    secrets.holdNext();
    QDir().mkpath(PreviewFolder::path());
    writeHistory({record(1)});
    const EngineLookalike engine;
    leaveStatus(engine.pid());
    UserDefaults::set(UserDefaults::pendingAction, QStringLiteral("backup"));
    UserDefaults::set(UserDefaults::pendingActionDate, clock.moment());
    useAllDestinations();
    begin();
    ASSERT_TRUE(eventuallyInLoop([this] { return secrets.reads == 1; }));
    // The program comes to the front, and the user tries all actions.
    model->becomeActive();
    model->startBackup();
    model->refresh(DestinationID::Local);
    QCoreApplication::processEvents();
    EXPECT_TRUE(model->isStarting());
    // Settings and history have been read, and none of the later steps has been made.
    EXPECT_EQ(model->config(), config);
    EXPECT_EQ(model->run()->history().size(), 1);
    EXPECT_EQ(model->key()->value(), QString());
    EXPECT_EQ(model->key()->error(), std::nullopt);
    EXPECT_TRUE(QFileInfo::exists(PreviewFolder::path()));
    EXPECT_TRUE(tools.calls.isEmpty());
    EXPECT_EQ(desktop->probes, 0);
    EXPECT_EQ(model->run()->status(), std::nullopt);
    EXPECT_TRUE(model->repositories()->all().isEmpty());
    EXPECT_TRUE(desktop->started.isEmpty());
    EXPECT_EQ(secrets.reads, 1);
}

TEST_F(StartUp, goesOnInItsOrderWhenTheKeyringAnswersLate)
{
    secrets.holdNext();
    QDir().mkpath(PreviewFolder::path());
    UserDefaults::set(UserDefaults::pendingAction, QStringLiteral("backup"));
    UserDefaults::set(UserDefaults::pendingActionDate, clock.moment());
    useAllDestinations();
    begin();
    ASSERT_TRUE(eventuallyInLoop([this] { return secrets.reads == 1; }));
    QStringList order;
    const auto note = [this, &order](const char *step, auto *part, auto signal) {
        QObject::connect(part, signal, model.get(),
                         [&order, step] { order.append(QString::fromUtf8(step)); });
    };
    note("key", model->key(), &EncryptionKey::changed);
    note("access", model->access(), &DiskAccess::grantedChanged);
    note("started", model.get(), &AppModel::startingChanged);
    note("repositories", model->repositories(), &Repositories::changed);
    note("launch", model->run(), &RunWatch::launchingChanged);
    desktop->fullDiskAccess = false;
    tools.hold();
    secrets.letGo();
    ASSERT_TRUE(eventuallyInLoop([this] { return !model->isStarting(); }));
    EXPECT_FALSE(QFileInfo::exists(PreviewFolder::path()));
    EXPECT_EQ(order, QStringList({QStringLiteral("key"), QStringLiteral("access"),
                                  QStringLiteral("started"), QStringLiteral("repositories"),
                                  QStringLiteral("repositories"), QStringLiteral("repositories")}));
    // When the reading of the repositories has begun, the pending action is checked; without the
    // access it goes on waiting.
    EXPECT_EQ(model->repositories()->all().size(), 3);
    EXPECT_TRUE(eventuallyInLoop([this] { return desktop->probes == 2; }));
    EXPECT_TRUE(desktop->started.isEmpty());
    tools.letGo();
    settle();
    EXPECT_GT(scheduleChanges(), 0);
}

TEST_F(StartUp, takesUpWhatIsPendingAtItsEnd)
{
    UserDefaults::set(UserDefaults::pendingAction, QStringLiteral("backup"));
    UserDefaults::set(UserDefaults::pendingActionDate, clock.moment());
    start();
    settle();
    EXPECT_EQ(desktop->probes, 2);
    EXPECT_EQ(desktop->started.size(), 1);
    EXPECT_TRUE(model->run()->isLaunching());
}

TEST_F(StartUp, aModelMayGoWhileItWaitsForTheKeyring)
{
    secrets.holdNext();
    begin();
    ASSERT_TRUE(eventuallyInLoop([this] { return secrets.reads == 1; }));
    model.reset();
    secrets.letGo();
    settle();
    EXPECT_TRUE(tools.calls.isEmpty());
}

TEST_F(StartUp, aKeyThatWasInstalledMeanwhileStays)
{
    secrets.holdNext();
    begin();
    ASSERT_TRUE(eventuallyInLoop([this] { return secrets.reads == 1; }));
    // The store is asked one question at a time.
    model->install(QStringLiteral("a key that was typed in"), true, [](const auto &) {});
    secrets.letGo();
    ASSERT_TRUE(eventuallyInLoop([this] { return !model->isStarting(); }));
    settle();
    EXPECT_EQ(model->key()->value(), QStringLiteral("a key that was typed in"));
    EXPECT_TRUE(model->config().keySaved);
}

TEST_F(StartUp, settingsMadeWhileItWaitsAreKept)
{
    secrets.holdNext();
    secrets.items.remove({QStringLiteral("it.vellomar.app"), Keychain::repositoryKey});
    begin();
    ASSERT_TRUE(eventuallyInLoop([this] { return secrets.reads == 1; }));
    change([](AppConfig &settings) { settings.intervalHours = 7; });
    desktop->pass(std::chrono::milliseconds(300));
    EXPECT_TRUE(eventuallyInLoop([] { return ConfigStore::load().intervalHours == 7; }));
    secrets.letGo();
    ASSERT_TRUE(eventuallyInLoop([this] { return !model->isStarting(); }));
    // A new key withdraws the user's confirmation, and changes nothing else.
    EXPECT_FALSE(ConfigStore::load().keySaved);
    EXPECT_EQ(ConfigStore::load().intervalHours, 7);
}

TEST_F(StartUp, anRcloneThatHangsHoldsUpTheRemotePlacesAlone)
{
    useAllDestinations();
    tools.holdConnections();
    start();
    EXPECT_TRUE(eventuallyInLoop(
        [this] { return !model->repositories()->all().value(DestinationID::Local).loading; }));
    EXPECT_FALSE(model->connections()->drive().connected);
    EXPECT_TRUE(model->repositories()->all().value(DestinationID::Drive).loading);
    EXPECT_TRUE(model->repositories()->all().value(DestinationID::Server).loading);
    model->startBackup();
    EXPECT_TRUE(eventuallyInLoop([this] { return desktop->started.size() == 1; }));
    tools.letGo();
    settle();
    EXPECT_TRUE(model->connections()->drive().connected);
    EXPECT_TRUE(model->connections()->server().connected);
    EXPECT_FALSE(model->repositories()->all().value(DestinationID::Drive).loading);
    EXPECT_EQ(model->repositories()->all().value(DestinationID::Drive).error, std::nullopt);
}

TEST_F(StartUp, aScheduleThatHangsHoldsNothingUp)
{
    tools.holdSchedule();
    start();
    EXPECT_TRUE(eventuallyInLoop(
        [this] { return !model->repositories()->all().value(DestinationID::Local).loading; }));
    change([](AppConfig &settings) { settings.autoBackup = false; });
    const EngineLookalike engine;
    leaveStatus(engine.pid());
    tick();
    EXPECT_TRUE(model->run()->isBusy());
}

TEST_F(StartUp, looksAgainEachSecond)
{
    start();
    const EngineLookalike engine;
    const RunStatus status = leaveStatus(engine.pid());
    EXPECT_TRUE(eventuallyInLoop([this] { return model->run()->status().has_value(); }));
    EXPECT_EQ(model->run()->status(), status);
}

TEST_F(StartUp, remembersMeasuredSizes)
{
    UserDefaults::set(UserDefaults::sourceSizes,
                      QVariantMap{{QStringLiteral("/a"), 5}, {QStringLiteral("/b"), 7.0}});
    start();
    settle();
    EXPECT_EQ(model->measurement()->sizes(),
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
        settle();
        EXPECT_TRUE(model->measurement()->sizes().isEmpty()) << kept.typeName();
    }
}

} // namespace
