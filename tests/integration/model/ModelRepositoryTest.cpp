#include "model/AppModel.h"
#include "model/Background.h"
#include "state/ConfigStore.h"
#include "state/Keychain.h"
#include "tests/support/CycleHome.h"
#include "tests/support/ModelReady.h"
#include "tests/support/ScriptedDesktop.h"
#include "tests/support/SmallDisk.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>

// The model with real repositories and the real keyring.

namespace {

class ModelRepository : public CycleHome
{
protected:
    ModelRepository() { qputenv("TMPDIR", QFile::encodeName(folder(QStringLiteral("tmp")))); }
    ~ModelRepository() override
    {
        model.reset();
        Background::waitForAll();
    }

    void start()
    {
        model = std::make_unique<AppModel>(World::real(desktop));
        ASSERT_TRUE(comesUp(*model));
    }

    void settle() { ::settle(model.get()); }

    [[nodiscard]] RepoInfo local() const
    {
        return model->repositories()->all().value(DestinationID::Local);
    }

    std::optional<QString> replacedBy(const QString &other)
    {
        std::optional<QString> answer = QStringLiteral("no answer");
        model->replaceKey(other,
                          [&answer](const std::optional<QString> &message) { answer = message; });
        settle();
        return answer;
    }

    static QString stored(const QString &account)
    {
        const auto value = Keychain::read(account);
        return value && *value ? **value : QString();
    }

    const QString key = QStringLiteral("key of the test's repositories");
    TestApplication application;
    std::shared_ptr<ScriptedDesktop> desktop = std::make_shared<ScriptedDesktop>();
    std::unique_ptr<AppModel> model;
};

TEST_F(ModelRepository, listsOnlyTheVersionsOfThisMachine)
{
    makeRepository(repository);
    for (const QString &host : {Paths::hostname(), QStringLiteral("un-altro-mac")}) {
        restic(repository, {QStringLiteral("backup"), QStringLiteral("--host"), host, source});
    }
    start();
    EXPECT_TRUE(local().loading);
    settle();
    ASSERT_EQ(local().snapshots.size(), 1) << local().error.value_or(QString()).toStdString();
    EXPECT_EQ(local().snapshots.first().host, Paths::hostname());
    EXPECT_GT(local().size.value_or(0), 0);
    EXPECT_EQ(snapshotCount(repository), 2);
}

TEST_F(ModelRepository, anotherKeyIsRefusedAndNothingChanges)
{
    makeRepository(repository);
    start();
    settle();
    EXPECT_EQ(replacedBy(QStringLiteral("another key")),
              QStringLiteral("Questa chiave non apre il backup su %1. La chiave in uso non è stata "
                             "cambiata.")
                  .arg(title(DestinationID::Local)));
    EXPECT_EQ(model->key()->value(), key);
    EXPECT_EQ(stored(Keychain::repositoryKey), key);
    EXPECT_EQ(stored(Keychain::previousRepositoryKey), QString());
    EXPECT_FALSE(model->key()->hasPrevious());
}

TEST_F(ModelRepository, theKeyOfTheRepositoryIsAcceptedAndTheSwapGoesBack)
{
    makeRepository(repository);
    ASSERT_TRUE(storeSecret(Keychain::repositoryKey, "a key that was made here"));
    config.keySaved = false;
    saveSettings();
    start();
    settle();
    EXPECT_EQ(local().error, QStringLiteral("Chiave di cifratura errata per questa destinazione"));
    EXPECT_EQ(replacedBy(key), std::nullopt);
    settle();
    EXPECT_EQ(stored(Keychain::repositoryKey), key);
    EXPECT_EQ(stored(Keychain::previousRepositoryKey), QStringLiteral("a key that was made here"));
    EXPECT_TRUE(ConfigStore::load().keySaved);
    settle();
    EXPECT_EQ(local().error, std::nullopt);
    model->requestPreviousKey();
    settle();
    EXPECT_EQ(stored(Keychain::repositoryKey), QStringLiteral("a key that was made here"));
    EXPECT_EQ(stored(Keychain::previousRepositoryKey), key);
    EXPECT_FALSE(ConfigStore::load().keySaved);
    EXPECT_EQ(model->key()->error(), std::nullopt);
}

TEST_F(ModelRepository, aRepositoryThatIsNotThereYetTakesAnyKey)
{
    start();
    settle();
    EXPECT_EQ(local().error, std::nullopt);
    EXPECT_EQ(replacedBy(QStringLiteral("another key")), std::nullopt);
    EXPECT_EQ(stored(Keychain::repositoryKey), QStringLiteral("another key"));
}

TEST_F(ModelRepository, aFirstStartMakesAKeyInTheKeyring)
{
    ASSERT_TRUE(removeSecret(Keychain::repositoryKey));
    start();
    EXPECT_EQ(model->key()->error(), std::nullopt);
    EXPECT_EQ(stored(Keychain::repositoryKey), model->key()->value());
    EXPECT_EQ(model->key()->value().size(), 32);
    EXPECT_FALSE(ConfigStore::load().keySaved);
}

TEST_F(ModelRepository, withoutAKeyringItComesUpAndSaysSo)
{
    keyring.stopKeyring();
    start();
    ASSERT_TRUE(model->key()->error());
    EXPECT_TRUE(model->key()->error()->startsWith(
        QLatin1String("Impossibile accedere alla chiave nel Portachiavi (errore ")));
    EXPECT_EQ(model->key()->value(), QString());
    settle();
    EXPECT_FALSE(local().loading);
}

TEST_F(ModelRepository, aKeyringThatGoesInBetweenFailsTheReplacementAlone)
{
    start();
    settle();
    keyring.stopKeyring();
    const std::optional<QString> answer = replacedBy(QStringLiteral("another key"));
    ASSERT_TRUE(answer);
    EXPECT_TRUE(answer->startsWith(
        QLatin1String("Impossibile accedere alla chiave nel Portachiavi (errore ")));
    EXPECT_EQ(model->key()->value(), key);
    EXPECT_TRUE(model->config().keySaved);
}

TEST_F(ModelRepository, aDiskThatIsPulledOutIsReported)
{
    makeRepository(repository);
    start();
    settle();
    ASSERT_TRUE(QDir().rename(disk, disk + QLatin1String(".away")));
    model->refresh(DestinationID::Local);
    settle();
    EXPECT_EQ(local().error, QStringLiteral("Disco non collegato"));
    // A key can't be tried there.
    EXPECT_EQ(replacedBy(QStringLiteral("another key")), std::nullopt);
}

TEST_F(ModelRepository, aKitOnAFullDiskIsReportedAndLeavesNothing)
{
    const QString stick = folder(QStringLiteral("stick"));
    const SmallDisk small(stick);
    ASSERT_TRUE(small.isMounted());
    start();
    desktop->savePath = stick + QLatin1String("/kit.txt");
    model->saveRecoveryKit();
    settle();
    EXPECT_EQ(model->kit()->notice(),
              (Notice{QStringLiteral("Kit salvato in ~/stick/kit.txt."), false}));
    EXPECT_EQ(readFile(*desktop->savePath), model->kit()->text().toUtf8());
    ASSERT_TRUE(QFile::remove(*desktop->savePath));
    small.fill();
    model->saveRecoveryKit();
    settle();
    EXPECT_EQ(model->kit()->notice(),
              (Notice{QStringLiteral("Kit non salvato: No space left on device"), true}));
    EXPECT_FALSE(QFile::exists(*desktop->savePath));
    small.makeRoom();
    EXPECT_TRUE(QDir(stick).isEmpty());
}

} // namespace
