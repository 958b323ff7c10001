#include "ui/summary/OverviewTexts.h"
#include "tests/unit/summary/SummaryFixture.h"

namespace {

class OverviewTextsTest : public SummaryFixture
{
protected:
    QString overviewTitle() { return OverviewTexts::title(situation); }
    QString detail() { return OverviewTexts::detail(situation); }
    QString button() { return OverviewTexts::label(OverviewTexts::action(situation)); }
};

TEST_F(OverviewTextsTest, aFreshInstallationAsksForADestination)
{
    EXPECT_EQ(overviewTitle(), QStringLiteral("Nessuna destinazione configurata"));
    EXPECT_EQ(detail(),
              QStringLiteral("Collega un disco esterno, Google Drive o un server privato."));
    EXPECT_EQ(OverviewTexts::currentFile(situation), QStringLiteral(" "));
    EXPECT_EQ(button(), QStringLiteral("Scegli una destinazione"));
}

TEST_F(OverviewTextsTest, withoutABackupItSaysSo)
{
    enable(DestinationID::Server);
    EXPECT_EQ(overviewTitle(), QStringLiteral("Nessun backup eseguito"));
    EXPECT_EQ(button(), QStringLiteral("Esegui backup ora"));
}

TEST_F(OverviewTextsTest, afterAGoodBackupAllIsWell)
{
    enable(DestinationID::Local);
    succeed(10);
    EXPECT_EQ(overviewTitle(), QStringLiteral("Backup aggiornato"));
}

TEST_F(OverviewTextsTest, aStaleBackupIsReportedByItsAge)
{
    enable(DestinationID::Local);
    succeed(10);
    situation.staleText = QStringLiteral("3 giorni");
    EXPECT_EQ(overviewTitle(), QStringLiteral("Nessun backup da 3 giorni"));
}

TEST_F(OverviewTextsTest, withoutADestinationAStaleBackupDoesntCount)
{
    situation.staleText = QStringLiteral("3 giorni");
    EXPECT_EQ(overviewTitle(), QStringLiteral("Nessuna destinazione configurata"));
}

TEST_F(OverviewTextsTest, aRunIsNamedByItsDestination)
{
    enable(DestinationID::Local);
    situation.staleText = QStringLiteral("3 giorni");
    run();
    EXPECT_EQ(overviewTitle(), QStringLiteral("Backup su Google Drive"));
    EXPECT_EQ(button(), QStringLiteral("Interrompi"));
}

TEST_F(OverviewTextsTest, withoutADestinationTheButtonGoesThereEvenDuringARun)
{
    run();
    EXPECT_EQ(button(), QStringLiteral("Scegli una destinazione"));
}

TEST_F(OverviewTextsTest, aLaunchHoldsTheButton)
{
    enable(DestinationID::Local);
    situation.launching = true;
    EXPECT_EQ(OverviewTexts::action(situation), OverviewTexts::Action::Starting);
    EXPECT_EQ(button(), QStringLiteral("Avvio in corso..."));
}

TEST_F(OverviewTextsTest, aRunThatIsStillScanningShowsItsPhase)
{
    RunStatus &status = run();
    EXPECT_EQ(detail(), QStringLiteral("Analisi dei file"));
    status.totalFiles = -4;
    EXPECT_EQ(detail(), QStringLiteral("Analisi dei file"));
}

TEST_F(OverviewTextsTest, aRunShowsItsCountsSizesAndTheTimeLeft)
{
    RunStatus &status = run();
    status.filesDone = 1234;
    status.totalFiles = 50000;
    status.bytesDone = 1200000;
    status.totalBytes = 3070000000;
    status.secondsRemaining = 125;
    EXPECT_EQ(detail(), QStringLiteral("1.234 di 50.000 file · 1,2 MB di 3,07 GB · circa 2 min"));
}

TEST_F(OverviewTextsTest, noTimeLeftLeavesNoSeparatorBehind)
{
    RunStatus &status = run();
    status.totalFiles = 2;
    status.totalBytes = 2000000;
    const QString expected = QStringLiteral("0 di 2 file · Zero kB di 2 MB");
    EXPECT_EQ(detail(), expected);
    status.secondsRemaining = 0;
    EXPECT_EQ(detail(), expected);
    status.secondsRemaining = 1;
    EXPECT_EQ(detail(), expected + QStringLiteral(" · circa 1 s"));
}

TEST_F(OverviewTextsTest, withoutTheKitBackupsDontStartByThemselves)
{
    enable(DestinationID::Local);
    situation.config.autoBackup = false;
    EXPECT_EQ(detail(),
              QStringLiteral("I backup automatici partono dopo aver salvato il kit di recupero."));
}

TEST_F(OverviewTextsTest, theNextBackupIsReportedByTheInterval)
{
    enable(DestinationID::Local);
    situation.config.keySaved = true;
    EXPECT_EQ(detail(), QStringLiteral("Prossimo backup automatico entro un'ora."));
    situation.config.intervalHours = 6;
    EXPECT_EQ(detail(), QStringLiteral("Prossimo backup automatico entro 6 ore."));
    situation.config.autoBackup = false;
    EXPECT_EQ(detail(), QStringLiteral("Backup automatico disattivato."));
}

TEST_F(OverviewTextsTest, aFileInTheHomeIsShownFromThere)
{
    RunStatus &status = run();
    EXPECT_EQ(OverviewTexts::currentFile(situation), QStringLiteral(" "));
    status.currentFile = Paths::home() + QStringLiteral("/Documenti/a.txt");
    EXPECT_EQ(OverviewTexts::currentFile(situation), QStringLiteral("~/Documenti/a.txt"));
    status.currentFile = Paths::home();
    EXPECT_EQ(OverviewTexts::currentFile(situation), QStringLiteral("~"));
}

TEST_F(OverviewTextsTest, aFileElsewhereIsShownWhole)
{
    RunStatus &status = run();
    status.currentFile = QStringLiteral("/media/disk/a.txt");
    EXPECT_EQ(OverviewTexts::currentFile(situation), QStringLiteral("/media/disk/a.txt"));
    // The home of a user whose name begins with this user's name.
    status.currentFile = Paths::home() + QStringLiteral("2/a.txt");
    EXPECT_EQ(OverviewTexts::currentFile(situation), *status.currentFile);
}

TEST_F(OverviewTextsTest, aFileWithoutANameKeepsItsLine)
{
    run().currentFile = QString();
    EXPECT_EQ(OverviewTexts::currentFile(situation), QStringLiteral(" "));
}

TEST_F(OverviewTextsTest, signsInAFileNameStayAsTheyAre)
{
    run().currentFile = QStringLiteral("/a/%1 <b>%2</b>");
    EXPECT_EQ(OverviewTexts::currentFile(situation), QStringLiteral("/a/%1 <b>%2</b>"));
}

TEST_F(OverviewTextsTest, waitingForTheKeyringIsReported)
{
    situation.starting = true;
    for (const bool isReady : {false, true}) {
        if (isReady) {
            enable(DestinationID::Local);
            succeed(120);
        }
        EXPECT_EQ(OverviewTexts::title(situation), QStringLiteral("In attesa del Portachiavi"));
        EXPECT_EQ(OverviewTexts::detail(situation),
                  QStringLiteral("Se il sistema chiede di sbloccarlo, inserisci la password."));
    }
}

TEST_F(OverviewTextsTest, nothingStartsWhileTheKeyringIsWaitedFor)
{
    situation.starting = true;
    EXPECT_EQ(OverviewTexts::action(situation), OverviewTexts::Action::Choose);
    enable(DestinationID::Local);
    EXPECT_EQ(OverviewTexts::action(situation), OverviewTexts::Action::Starting);
}

TEST_F(OverviewTextsTest, theFolderThatCannotBeWrittenIsReportedBeforeTheKey)
{
    EXPECT_EQ(OverviewTexts::notice(situation), QString());
    situation.keyError = QStringLiteral("the key");
    EXPECT_EQ(OverviewTexts::notice(situation), QStringLiteral("the key"));
    situation.supportError = QStringLiteral("the folder");
    EXPECT_EQ(OverviewTexts::notice(situation), QStringLiteral("the folder"));
}

} // namespace
