#include "state/ConfigStore.h"
#include "state/Keychain.h"
#include "state/Paths.h"
#include "tests/support/Files.h"
#include "tests/support/ModelFixture.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace {

class RecoveryKit : public ModelFixture
{
protected:
    Notice saveTo(const QString &path)
    {
        desktop->savePath = path;
        model->saveRecoveryKit();
        settle();
        return model->kit()->notice().value_or(Notice());
    }
};

TEST_F(RecoveryKit, isThisTextLetterByLetter)
{
    start();
    EXPECT_EQ(model->kit()->text(),
              QStringLiteral("Vellomar - Kit di recupero\n"
                             "\n"
                             "Mac: %1\n"
                             "Creato il: 1 marzo 2026\n"
                             "\n"
                             "Chiave di cifratura:\n"
                             "the key in use\n"
                             "\n"
                             "Come ripristinare su un altro Mac:\n"
                             "1. Installa Vellomar.\n"
                             "2. Apri Ripristina e scegli \"Da un altro Mac\".\n"
                             "3. Indica dove si trova il backup e inserisci questa chiave.\n"
                             "\n"
                             "Conserva questo foglio lontano dal Mac. Chi lo possiede può leggere "
                             "i tuoi backup.")
                  .arg(Paths::hostname()));
}

TEST_F(RecoveryKit, holdsTheKeyAsItStands)
{
    storeKey(QStringLiteral(" %1 %2 <b>&\tè "), Keychain::repositoryKey);
    start();
    EXPECT_EQ(model->kit()->text().split(u'\n').at(6), QStringLiteral(" %1 %2 <b>&\tè "));
}

TEST_F(RecoveryKit, opensWithoutALoginUntilTheKeyIsSaved)
{
    config.keySaved = false;
    start();
    model->openRecoveryKit();
    settle();
    EXPECT_TRUE(model->kit()->isShowing());
    EXPECT_TRUE(desktop->reasons.isEmpty());
    model->confirmKeySaved();
    settle();
    EXPECT_FALSE(model->kit()->isShowing());
    EXPECT_TRUE(ConfigStore::load().keySaved);
    desktop->answersLater = true;
    model->openRecoveryKit();
    settle();
    EXPECT_EQ(desktop->reasons, QList{OwnerReason::showKey});
    EXPECT_FALSE(model->kit()->isShowing());
    desktop->answer();
    EXPECT_TRUE(model->kit()->isShowing());
}

TEST_F(RecoveryKit, aRefusedLoginShowsNothing)
{
    desktop->authentication = Desktop::Authentication::refused;
    start();
    model->openRecoveryKit();
    settle();
    EXPECT_FALSE(model->kit()->isShowing());
    EXPECT_EQ(model->key()->error(), std::nullopt);
}

TEST_F(RecoveryKit, whereNobodyCanLogInItOpens)
{
    desktop->authentication = Desktop::Authentication::impossible;
    start();
    model->openRecoveryKit();
    settle();
    EXPECT_TRUE(model->kit()->isShowing());
}

TEST_F(RecoveryKit, isSavedForItsOwnerAlone)
{
    start();
    const QString path = folder("stick") + QLatin1String("/kit.txt");
    saveTo(path);
    EXPECT_EQ(desktop->savePanels,
              QStringList{QStringLiteral("Kit di recupero Vellomar.txt\nScegli una chiavetta o un "
                                         "disco diverso da quello dei backup")});
    EXPECT_EQ(readFile(path), model->kit()->text().toUtf8());
    EXPECT_EQ(QFileInfo(path).permissions() & ~(QFile::ReadUser | QFile::WriteUser),
              QFile::ReadOwner | QFile::WriteOwner);
    EXPECT_EQ(QDir(folder("stick")).entryList(QDir::Files | QDir::Hidden),
              QStringList{QStringLiteral("kit.txt")});
}

TEST_F(RecoveryKit, replacesAnEarlierFileThatOthersCouldRead)
{
    start();
    const QString path = folder("stick") + QLatin1String("/kit.txt");
    ASSERT_TRUE(writeFile(path, QByteArray(5000, 'x')));
    ASSERT_TRUE(
        QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ReadOther));
    saveTo(path);
    EXPECT_EQ(readFile(path), model->kit()->text().toUtf8());
    EXPECT_FALSE(QFileInfo(path).permissions() & QFile::ReadOther);
}

TEST_F(RecoveryKit, aCancelledPanelChangesNothing)
{
    start();
    model->saveRecoveryKit();
    settle();
    EXPECT_EQ(model->kit()->notice(), std::nullopt);
    desktop->savePath = QString();
    model->saveRecoveryKit();
    settle();
    EXPECT_EQ(model->kit()->notice(), std::nullopt);
}

TEST_F(RecoveryKit, onTheDiskOfTheBackupsItWarns)
{
    // Here that is this machine's disk too, but the first rule wins.
    start();
    EXPECT_EQ(saveTo(folder("disk") + QLatin1String("/kit.txt")),
              (Notice{QStringLiteral("Il kit è sullo stesso disco dei backup: chi trova il disco "
                                     "può leggerli. Spostalo altrove."),
                      true}));
    EXPECT_TRUE(QFile::exists(folder("disk") + QLatin1String("/kit.txt")));
}

TEST_F(RecoveryKit, onThisMachineItWarns)
{
    config.localFolder.clear();
    config.localEnabled = false;
    start();
    EXPECT_EQ(saveTo(folder("documents") + QLatin1String("/kit.txt")),
              (Notice{QStringLiteral("Il kit è salvato su questo Mac: se il Mac si rompe o viene "
                                     "rubato va perso con lui. Copialo su una chiavetta o "
                                     "stampalo."),
                      true}));
}

TEST_F(RecoveryKit, onAnotherVolumeAllIsWell)
{
    // /dev/shm is a volume of its own, as a stick is.
    const QString path =
        QStringLiteral("/dev/shm/vellomar-kit-%1.txt").arg(QCoreApplication::applicationPid());
    ASSERT_NE(Paths::volume(path), Paths::volume(Paths::home()));
    start();
    const Notice notice = saveTo(path);
    QFile::remove(path);
    EXPECT_EQ(notice, (Notice{QStringLiteral("Kit salvato in %1.").arg(path), false}));
}

TEST_F(RecoveryKit, savingDoesNotCountAsHavingIt)
{
    config.keySaved = false;
    start();
    saveTo(folder("stick") + QLatin1String("/kit.txt"));
    EXPECT_FALSE(model->config().keySaved);
}

TEST_F(RecoveryKit, aFailureIsReportedInTheSystemsWords)
{
    start();
    EXPECT_EQ(saveTo(Paths::home() + QLatin1String("/nowhere/kit.txt")),
              (Notice{QStringLiteral("Kit non salvato: No such file or directory"), true}));
    EXPECT_TRUE(model->config().keySaved);
    // A later success replaces the notice.
    EXPECT_NE(saveTo(folder("stick") + QLatin1String("/kit.txt")).text.left(15),
              QStringLiteral("Kit non salvato"));
}

TEST_F(RecoveryKit, aPanelThatOutlivesTheModelSavesNothing)
{
    desktop->answersLater = true;
    const QString path = folder("stick") + QLatin1String("/kit.txt");
    start();
    desktop->savePath = path;
    model->saveRecoveryKit();
    settle();
    model->openRecoveryKit();
    settle();
    model.reset();
    desktop->answer();
    EXPECT_FALSE(QFile::exists(path));
}

TEST_F(RecoveryKit, withoutAKeyThereIsNothingToHandOutOrToConfirm)
{
    secrets.readFailure = 1;
    config.keySaved = false;
    start();
    desktop->savePath = folder("stick") + QLatin1String("/kit.txt");
    desktop->clipboard = QStringLiteral("a recipe");
    model->startBackup();
    settle();
    ASSERT_TRUE(model->kit()->isShowing());
    ASSERT_FALSE(model->key()->hasKey());
    model->saveRecoveryKit();
    settle();
    model->printRecoveryKit();
    settle();
    model->copyKey();
    model->requestKeyCopy();
    model->confirmKeySaved();
    settle();
    EXPECT_TRUE(desktop->savePanels.isEmpty());
    EXPECT_FALSE(QFile::exists(*desktop->savePath));
    EXPECT_TRUE(desktop->printed.isEmpty());
    EXPECT_EQ(desktop->clipboard, QStringLiteral("a recipe"));
    EXPECT_FALSE(model->key()->isCopied());
    EXPECT_TRUE(desktop->reasons.isEmpty());
    EXPECT_FALSE(ConfigStore::load().keySaved);
    EXPECT_TRUE(model->kit()->isShowing());
    EXPECT_TRUE(desktop->started.isEmpty());
    EXPECT_EQ(model->key()->error(),
              QStringLiteral("Impossibile accedere alla chiave nel Portachiavi (errore 1)"));
}

TEST_F(RecoveryKit, theKeyIsTriedAgainWhenItOpens)
{
    secrets.readFailure = 1;
    config.keySaved = false;
    start();
    settle();
    secrets.readFailure = 2;
    model->openRecoveryKit();
    settle();
    EXPECT_EQ(model->key()->error(),
              QStringLiteral("Impossibile accedere alla chiave nel Portachiavi (errore 2)"));
    model->kit()->setShowing(false);
    secrets.readFailure = 0;
    const SignalCount changes(model->key(), &EncryptionKey::changed);
    model->openRecoveryKit();
    settle();
    EXPECT_EQ(changes.count(), 1);
    EXPECT_EQ(model->key()->value(), QStringLiteral("the key in use"));
    EXPECT_EQ(model->key()->error(), std::nullopt);
    EXPECT_EQ(tools.calls.last().input, QStringLiteral("the key in use"));
    model->confirmKeySaved();
    settle();
    EXPECT_TRUE(ConfigStore::load().keySaved);
    // A key that is known isn't asked for again.
    const int reads = secrets.reads;
    model->openRecoveryKit();
    settle();
    EXPECT_EQ(secrets.reads, reads);
}

TEST_F(RecoveryKit, aKeyringThatTurnsOutToBeEmptyGetsAKeyThatNobodyHasConfirmed)
{
    // A different keyring has replaced the one with the confirmed key.
    secrets.readFailure = 1;
    start();
    settle();
    ASSERT_TRUE(model->config().keySaved);
    secrets.items.remove({QStringLiteral("it.vellomar.app"), Keychain::repositoryKey});
    secrets.readFailure = 0;
    QList<bool> savedAtWrite;
    secrets.onWrite = [&savedAtWrite] { savedAtWrite.append(ConfigStore::load().keySaved); };
    model->openRecoveryKit();
    settle();
    EXPECT_TRUE(model->key()->hasKey());
    EXPECT_EQ(storedKey(Keychain::repositoryKey), model->key()->value());
    EXPECT_FALSE(model->config().keySaved);
    EXPECT_FALSE(savedAtWrite.isEmpty());
    EXPECT_FALSE(savedAtWrite.contains(true));
}

TEST_F(RecoveryKit, itGoesWithTheWindow)
{
    start();
    model->openRecoveryKit();
    settle();
    ASSERT_TRUE(model->kit()->isShowing());
    model->becomeHidden();
    EXPECT_FALSE(model->kit()->isShowing());
    EXPECT_EQ(desktop->reasons.size(), 1);
    model->openRecoveryKit();
    settle();
    EXPECT_EQ(desktop->reasons.size(), 2);
}

TEST_F(RecoveryKit, aLoginThatTheWindowDidNotWaitForShowsNothing)
{
    desktop->answersLater = true;
    start();
    model->openRecoveryKit();
    settle();
    model->becomeHidden();
    desktop->answer();
    EXPECT_FALSE(model->kit()->isShowing());
}

TEST_F(RecoveryKit, isPrintedAsItIsSaved)
{
    start();
    model->printRecoveryKit();
    settle();
    EXPECT_EQ(desktop->printed, QStringList{model->kit()->text()});
    EXPECT_EQ(model->kit()->notice(), (Notice{QStringLiteral("Kit stampato."), false}));
}

TEST_F(RecoveryKit, aPrintThatFailedIsReportedUntilOneSucceeds)
{
    start();
    desktop->printing.failure = QStringLiteral("No space left on device");
    desktop->printing.file = QStringLiteral("/stick/kit.pdf");
    model->printRecoveryKit();
    settle();
    EXPECT_EQ(model->kit()->notice(),
              (Notice{QStringLiteral("Kit non stampato: No space left on device"), true}));
    desktop->printing = {};
    model->printRecoveryKit();
    settle();
    EXPECT_EQ(model->kit()->notice(), (Notice{QStringLiteral("Kit stampato."), false}));
}

TEST_F(RecoveryKit, aKitPrintedToAFileIsASavedOne)
{
    start();
    desktop->printing.file = folder("disk") + QLatin1String("/kit.pdf");
    model->printRecoveryKit();
    settle();
    EXPECT_EQ(model->kit()->notice(),
              (Notice{QStringLiteral("Il kit è sullo stesso disco dei backup: chi trova il disco "
                                     "può leggerli. Spostalo altrove."),
                      true}));
    EXPECT_TRUE(model->config().keySaved); // as it was
}

TEST_F(RecoveryKit, aPrintMayOutliveTheModel)
{
    desktop->answersLater = true;
    start();
    model->printRecoveryKit();
    settle();
    model.reset();
    desktop->answer();
}

TEST_F(RecoveryKit, theConfirmationStartsABackupThatWaited)
{
    config.keySaved = false;
    start();
    model->startBackup();
    settle();
    model->kit()->setShowing(false);
    EXPECT_TRUE(desktop->started.isEmpty());
    // The sheet was closed; the backup still waits for a confirmation.
    model->openRecoveryKit();
    settle();
    model->confirmKeySaved();
    settle();
    EXPECT_EQ(desktop->started.size(), 1);
    EXPECT_EQ(desktop->permissionRequests, 1);
    EXPECT_FALSE(model->kit()->isShowing());
    desktop->pass(std::chrono::seconds(6));
    settle();
    model->confirmKeySaved();
    settle();
    EXPECT_EQ(desktop->started.size(), 1);
}

TEST_F(RecoveryKit, theConfirmationSetsTheScheduleGoing)
{
    config.keySaved = false;
    start();
    const QString timer =
        QDir::homePath() + QLatin1String("/.config/systemd/user/it.vellomar.backup.timer");
    EXPECT_FALSE(QFile::exists(timer));
    model->confirmKeySaved();
    settle();
    EXPECT_TRUE(QFile::exists(timer));
    EXPECT_TRUE(desktop->started.isEmpty());
}

} // namespace
