#include "state/ConfigStore.h"
#include "state/Keychain.h"
#include "tests/support/ModelFixture.h"
#include "tests/support/Waiting.h"

#include <QDir>

namespace {

using std::chrono::milliseconds;

/// The answer of a key operation.
struct Answer
{
    int count = 0;
    std::optional<QString> message;
};

class EncryptionKey : public ModelFixture
{
protected:
    AppModel::KeyResult receive()
    {
        return [this](const std::optional<QString> &message) {
            ++answer.count;
            answer.message = message;
        };
    }

    void replaceBy(const QString &key)
    {
        model->replaceKey(key, receive());
        settle();
    }

    [[nodiscard]] QString current() const { return storedKey(Keychain::repositoryKey); }
    [[nodiscard]] QString previous() const { return storedKey(Keychain::previousRepositoryKey); }

    Answer answer;
    QString refused = QStringLiteral("Questa chiave non apre il backup su %1. La chiave in uso non "
                                     "è stata cambiata.");
};

TEST_F(EncryptionKey, aCopyIsConcealedAndClearedAfterAMinute)
{
    start();
    model->copyKey();
    EXPECT_EQ(desktop->clipboard, QStringLiteral("the key in use"));
    EXPECT_TRUE(desktop->isConcealed);
    EXPECT_TRUE(model->key()->isCopied());
    desktop->pass(milliseconds(59999));
    settle();
    EXPECT_EQ(desktop->clipboard, QStringLiteral("the key in use"));
    EXPECT_TRUE(model->key()->isCopied());
    desktop->pass(milliseconds(1));
    settle();
    EXPECT_EQ(desktop->clipboard, QString());
    EXPECT_FALSE(model->key()->isCopied());
}

TEST_F(EncryptionKey, whatTheUserCopiedMeanwhileStays)
{
    start();
    model->copyKey();
    desktop->copy(QStringLiteral("a recipe"));
    desktop->pass(milliseconds(60000));
    settle();
    EXPECT_EQ(desktop->clipboard, QStringLiteral("a recipe"));
    EXPECT_FALSE(model->key()->isCopied());
}

TEST_F(EncryptionKey, ofTwoCopiesTheFirstOnesTimeLeavesTheSecond)
{
    start();
    model->copyKey();
    desktop->pass(milliseconds(30000));
    settle();
    model->copyKey();
    desktop->pass(milliseconds(30000));
    settle();
    EXPECT_EQ(desktop->clipboard, QStringLiteral("the key in use"));
    EXPECT_FALSE(model->key()->isCopied());
    desktop->pass(milliseconds(30000));
    settle();
    EXPECT_EQ(desktop->clipboard, QString());
}

TEST_F(EncryptionKey, theClipboardIsClearedWithoutTheModelToo)
{
    start();
    model->copyKey();
    model.reset();
    desktop->pass(milliseconds(60000));
    settle();
    EXPECT_EQ(desktop->clipboard, QString());
}

TEST_F(EncryptionKey, copyingFromTheSettingsTakesALogin)
{
    start();
    desktop->authentication = Desktop::Authentication::refused;
    model->requestKeyCopy();
    EXPECT_EQ(desktop->reasons, QList{OwnerReason::copyKey});
    EXPECT_FALSE(model->key()->isCopied());
    desktop->authentication = Desktop::Authentication::granted;
    model->requestKeyCopy();
    EXPECT_TRUE(model->key()->isCopied());
}

TEST_F(EncryptionKey, installingMovesTheOldKeyAside)
{
    config.keySaved = false;
    start();
    settle();
    const SignalCount changes(model->key(), &::EncryptionKey::changed);
    EXPECT_EQ(install(QStringLiteral("new"), true), std::nullopt);
    EXPECT_EQ(model->key()->value(), QStringLiteral("new"));
    EXPECT_EQ(current(), QStringLiteral("new"));
    EXPECT_EQ(previous(), QStringLiteral("the key in use"));
    EXPECT_TRUE(model->key()->hasPrevious());
    EXPECT_EQ(changes.count(), 1);
    EXPECT_TRUE(model->repositories()->of(DestinationID::Local).loading);
    settle();
    EXPECT_TRUE(ConfigStore::load().keySaved);
    EXPECT_EQ(tools.calls.last().input, QStringLiteral("new"));
}

TEST_F(EncryptionKey, withNoKeyInUseThePreviousOneStays)
{
    storeKey(QStringLiteral("older"), Keychain::previousRepositoryKey);
    secrets.readFailure = 1;
    start();
    secrets.readFailure = 0;
    ASSERT_EQ(model->key()->value(), QString());
    ASSERT_TRUE(model->key()->error());
    EXPECT_EQ(install(QStringLiteral("new"), false), std::nullopt);
    EXPECT_EQ(previous(), QStringLiteral("older"));
    EXPECT_EQ(current(), QStringLiteral("new"));
    // The key that couldn't be read at the start may be needed for every version.
    EXPECT_EQ(storedKey(QStringLiteral("repository-key-earlier-1")),
              QStringLiteral("the key in use"));
    EXPECT_EQ(model->key()->error(), std::nullopt);
    EXPECT_FALSE(model->config().keySaved);
}

TEST_F(EncryptionKey, anInstallationThatFailsAtOnceChangesNothing)
{
    start();
    secrets.writeFailure = 21;
    EXPECT_EQ(install(QStringLiteral("new"), false),
              QStringLiteral("Impossibile accedere alla chiave nel Portachiavi (errore 21)"));
    EXPECT_EQ(model->key()->value(), QStringLiteral("the key in use"));
    EXPECT_EQ(current(), QStringLiteral("the key in use"));
    EXPECT_FALSE(model->key()->hasPrevious());
    EXPECT_TRUE(model->config().keySaved);
}

TEST_F(EncryptionKey, anInstallationThatFailsHalfwayKeepsTheKeyInUse)
{
    start();
    secrets.failingAccount = Keychain::repositoryKey;
    EXPECT_EQ(install(QStringLiteral("new"), false),
              QStringLiteral("Impossibile accedere alla chiave nel Portachiavi (errore 22)"));
    EXPECT_EQ(model->key()->value(), QStringLiteral("the key in use"));
    EXPECT_EQ(current(), QStringLiteral("the key in use"));
    EXPECT_EQ(previous(), QStringLiteral("the key in use"));
    EXPECT_TRUE(model->key()->hasPrevious());
    EXPECT_TRUE(model->config().keySaved);
}

TEST_F(EncryptionKey, aStoreThatCannotBeReadIsNotWrittenTo)
{
    start();
    secrets.readFailure = 26;
    EXPECT_EQ(install(QStringLiteral("new"), true),
              QStringLiteral("Impossibile accedere alla chiave nel Portachiavi (errore 26)"));
    EXPECT_EQ(model->key()->value(), QStringLiteral("the key in use"));
    EXPECT_EQ(current(), QStringLiteral("the key in use"));
    EXPECT_EQ(secrets.updates, 0);
    EXPECT_EQ(secrets.adds, 0);
}

TEST_F(EncryptionKey, theNoticeAboutTheFormerKeysKitIsCleared)
{
    start();
    desktop->savePath = folder("stick") + QLatin1String("/kit.txt");
    model->saveRecoveryKit();
    settle();
    ASSERT_TRUE(model->kit()->notice());
    secrets.writeFailure = 27;
    EXPECT_TRUE(install(QStringLiteral("new"), true));
    EXPECT_TRUE(model->kit()->notice());
    secrets.writeFailure = 0;
    EXPECT_EQ(install(QStringLiteral("new"), true), std::nullopt);
    EXPECT_EQ(model->kit()->notice(), std::nullopt);
}

TEST_F(EncryptionKey, aReplacementThatNobodyRefusesIsInstalled)
{
    useAllDestinations();
    config.keySaved = false;
    start();
    settle();
    const qsizetype before = tools.calls.size();
    tools.hold();
    model->replaceKey(QStringLiteral("new"), receive());
    EXPECT_TRUE(model->key()->isChecking());
    EXPECT_EQ(answer.count, 0);
    tools.letGo();
    settle();
    EXPECT_FALSE(model->key()->isChecking());
    EXPECT_EQ(answer.count, 1);
    EXPECT_EQ(answer.message, std::nullopt);
    EXPECT_EQ(model->key()->value(), QStringLiteral("new"));
    EXPECT_TRUE(model->config().keySaved);
    EXPECT_EQ(tools.repositories(QStringLiteral("cat")),
              QStringList({config.repository(DestinationID::Local),
                           config.repository(DestinationID::Drive),
                           config.repository(DestinationID::Server)}));
    EXPECT_EQ(tools.calls.at(before).input, QStringLiteral("new"));
}

TEST_F(EncryptionKey, theFirstRefusalEndsTheReplacement)
{
    useAllDestinations();
    config.keySaved = false;
    start();
    settle();
    tools.answer(QStringLiteral("cat"), config.repository(DestinationID::Drive),
                 ScriptedTools::ended(12));
    replaceBy(QStringLiteral("new"));
    EXPECT_EQ(answer.message, refused.arg(title(DestinationID::Drive)));
    EXPECT_EQ(tools.count(QStringLiteral("restic"), QStringLiteral("cat")), 2);
    EXPECT_EQ(model->key()->value(), QStringLiteral("the key in use"));
    EXPECT_EQ(current(), QStringLiteral("the key in use"));
    EXPECT_EQ(previous(), QString());
    EXPECT_FALSE(model->key()->hasPrevious());
    EXPECT_FALSE(model->config().keySaved);
    EXPECT_FALSE(model->key()->isChecking());
}

TEST_F(EncryptionKey, onlyAWrongKeyRefuses)
{
    start();
    for (const int status : {-1, 1, 3, 10, 11, 13, 130, 137}) {
        tools.answer(QStringLiteral("cat"), ScriptedTools::ended(status));
        replaceBy(QStringLiteral("key %1").arg(status));
        EXPECT_EQ(answer.message, std::nullopt) << status;
        EXPECT_EQ(model->key()->value(), QStringLiteral("key %1").arg(status));
    }
}

TEST_F(EncryptionKey, withoutADestinationAKeyIsInstalledAtOnce)
{
    config.localEnabled = false;
    start();
    replaceBy(QStringLiteral("new"));
    EXPECT_EQ(answer.message, std::nullopt);
    EXPECT_EQ(model->key()->value(), QStringLiteral("new"));
    EXPECT_EQ(tools.count(QStringLiteral("restic")), 0);
}

TEST_F(EncryptionKey, whatIsNotThereIsNotAsked)
{
    config.driveEnabled = true;
    config.serverEnabled = true;
    config.localFolder = QDir::homePath() + QLatin1String("/unplugged");
    tools.setRemotes(QStringLiteral(R"({"vellomar": {"type": "drive"}})"));
    tools.answer(QStringLiteral("cat"), ScriptedTools::ended(12));
    start();
    replaceBy(QStringLiteral("wrong"));
    EXPECT_EQ(answer.message, std::nullopt);
    EXPECT_EQ(model->key()->value(), QStringLiteral("wrong"));
    EXPECT_EQ(tools.count(QStringLiteral("restic"), QStringLiteral("cat")), 0);
}

TEST_F(EncryptionKey, aReplacementThatCannotBeStoredReportsWhy)
{
    start();
    settle();
    secrets.writeFailure = 23;
    replaceBy(QStringLiteral("new"));
    EXPECT_EQ(answer.message,
              QStringLiteral("Impossibile accedere alla chiave nel Portachiavi (errore 23)"));
    EXPECT_EQ(model->key()->value(), QStringLiteral("the key in use"));
    EXPECT_FALSE(model->key()->isChecking());
}

TEST_F(EncryptionKey, theTrialIsOnTheSettingsThatItBeganWith)
{
    start();
    settle();
    tools.hold();
    model->replaceKey(QStringLiteral("new"), receive());
    ASSERT_TRUE(eventually([this] { return tools.held() == 1; }));
    tools.answer(QStringLiteral("cat"), ScriptedTools::ended(12));
    change([](AppConfig &settings) { settings.localEnabled = false; });
    tools.letGo();
    settle();
    EXPECT_EQ(answer.message, refused.arg(title(DestinationID::Local)));
}

TEST_F(EncryptionKey, aModelMayGoWhileAKeyIsTried)
{
    start();
    settle();
    tools.hold();
    model->replaceKey(QStringLiteral("new"), receive());
    ASSERT_TRUE(eventually([this] { return tools.held() == 1; }));
    model.reset();
    tools.letGo();
    settle();
    EXPECT_EQ(answer.count, 0);
    EXPECT_EQ(current(), QStringLiteral("the key in use"));
}

TEST_F(EncryptionKey, aTypedKeyIsTrimmedAndAnEmptyTextIsNone)
{
    config.localEnabled = false;
    start();
    model->useKey(QStringLiteral(" \n\t "), receive());
    EXPECT_EQ(answer.count, 0);
    EXPECT_FALSE(model->key()->isChecking());
    model->useKey(QStringLiteral("\n the key in use \t"), receive());
    EXPECT_EQ(answer.count, 1);
    EXPECT_EQ(answer.message, std::nullopt);
    EXPECT_EQ(secrets.updates, 0);
    model->useKey(QStringLiteral("  a new one\n"), receive());
    // A second one while the first is being tried.
    model->useKey(QStringLiteral("another"), receive());
    settle();
    EXPECT_EQ(answer.count, 2);
    EXPECT_EQ(model->key()->value(), QStringLiteral("a new one"));
}

TEST_F(EncryptionKey, goingBackTwiceReturnsToTheBeginning)
{
    storeKey(QStringLiteral("older"), Keychain::previousRepositoryKey);
    start();
    model->requestPreviousKey();
    settle();
    EXPECT_EQ(desktop->reasons, QList{OwnerReason::replaceKey});
    EXPECT_EQ(model->key()->value(), QStringLiteral("older"));
    EXPECT_EQ(previous(), QStringLiteral("the key in use"));
    EXPECT_FALSE(model->config().keySaved);
    EXPECT_EQ(model->key()->error(), std::nullopt);
    EXPECT_EQ(tools.count(QStringLiteral("restic"), QStringLiteral("cat")), 0);
    model->requestPreviousKey();
    settle();
    EXPECT_EQ(model->key()->value(), QStringLiteral("the key in use"));
    EXPECT_EQ(current(), QStringLiteral("the key in use"));
    EXPECT_EQ(previous(), QStringLiteral("older"));
    EXPECT_FALSE(model->config().keySaved);
    model->startBackup();
    settle();
    EXPECT_TRUE(model->kit()->isShowing());
}

TEST_F(EncryptionKey, goingBackCountsAsUnconfirmedBeforeTheKeyIsThere)
{
    // A scheduled run at one of the writes must not find the unconfirmed key as a saved one.
    storeKey(QStringLiteral("older"), Keychain::previousRepositoryKey);
    start();
    QList<bool> savedAtWrite;
    secrets.onWrite = [&savedAtWrite] { savedAtWrite.append(ConfigStore::load().keySaved); };
    model->requestPreviousKey();
    settle();
    EXPECT_GE(savedAtWrite.size(), 2);
    EXPECT_FALSE(savedAtWrite.contains(true));
    EXPECT_EQ(model->key()->value(), QStringLiteral("older"));
}

TEST_F(EncryptionKey, aConfirmationWhileAnotherKeyIsOnItsWayIsOfTheOldOne)
{
    storeKey(QStringLiteral("older"), Keychain::previousRepositoryKey);
    config.keySaved = false;
    start();
    settle();
    secrets.holdNext();
    model->requestPreviousKey();
    ASSERT_TRUE(model->key()->isChanging());
    model->confirmKeySaved();
    change([](AppConfig &settings) { settings.keySaved = true; });
    EXPECT_FALSE(model->config().keySaved);
    secrets.letGo();
    settle();
    EXPECT_EQ(model->key()->value(), QStringLiteral("older"));
    EXPECT_FALSE(ConfigStore::load().keySaved);
}

TEST_F(EncryptionKey, ofTwoChangesAtOnceTheSecondDoesNothing)
{
    storeKey(QStringLiteral("older"), Keychain::previousRepositoryKey);
    config.localEnabled = false;
    start();
    settle();
    secrets.holdNext();
    model->requestPreviousKey();
    model->replaceKey(QStringLiteral("new"), receive());
    model->install(QStringLiteral("newer"), true, receive());
    secrets.letGo();
    settle();
    EXPECT_EQ(answer.count, 0);
    EXPECT_EQ(model->key()->value(), QStringLiteral("older"));
    EXPECT_EQ(previous(), QStringLiteral("the key in use"));
}

TEST_F(EncryptionKey, aReplacementCountsAsConfirmedOnlyOnceItIsThere)
{
    config.keySaved = false;
    start();
    QList<bool> savedAtWrite;
    secrets.onWrite = [&savedAtWrite] { savedAtWrite.append(ConfigStore::load().keySaved); };
    EXPECT_EQ(install(QStringLiteral("new"), true), std::nullopt);
    EXPECT_FALSE(savedAtWrite.contains(true));
    settle();
    EXPECT_TRUE(ConfigStore::load().keySaved);
}

TEST_F(EncryptionKey, withoutAPreviousKeyThereIsNoGoingBack)
{
    start();
    model->requestPreviousKey();
    settle();
    EXPECT_EQ(model->key()->value(), QStringLiteral("the key in use"));
    EXPECT_TRUE(model->config().keySaved);
    EXPECT_EQ(secrets.updates, 0);
}

TEST_F(EncryptionKey, aRefusedLoginDoesNotGoBack)
{
    storeKey(QStringLiteral("older"), Keychain::previousRepositoryKey);
    desktop->authentication = Desktop::Authentication::refused;
    start();
    model->requestPreviousKey();
    settle();
    EXPECT_EQ(model->key()->value(), QStringLiteral("the key in use"));
}

TEST_F(EncryptionKey, goingBackThatFailsIsReported)
{
    storeKey(QStringLiteral("older"), Keychain::previousRepositoryKey);
    start();
    secrets.writeFailure = 24;
    model->requestPreviousKey();
    settle();
    EXPECT_EQ(model->key()->error(),
              QStringLiteral("Impossibile accedere alla chiave nel Portachiavi (errore 24)"));
    EXPECT_EQ(model->key()->value(), QStringLiteral("the key in use"));
    EXPECT_TRUE(ConfigStore::load().keySaved);
    EXPECT_EQ(previous(), QStringLiteral("older"));
    secrets.writeFailure = 0;
    secrets.readFailure = 25;
    model->requestPreviousKey();
    settle();
    EXPECT_EQ(model->key()->error(),
              QStringLiteral("Impossibile accedere alla chiave nel Portachiavi (errore 25)"));
    secrets.readFailure = 0;
    model->requestPreviousKey();
    settle();
    EXPECT_EQ(model->key()->error(), std::nullopt);
    EXPECT_EQ(model->key()->value(), QStringLiteral("older"));
}

} // namespace
