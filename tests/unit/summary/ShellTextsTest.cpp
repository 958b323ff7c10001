#include "ui/summary/ShellTexts.h"
#include "tests/unit/summary/SummaryFixture.h"

namespace {

class ShellTextsTest : public SummaryFixture
{
protected:
    void expectSidebar(const char *text, Tone tone)
    {
        EXPECT_EQ(ShellTexts::sidebarState(situation), QString::fromUtf8(text));
        EXPECT_EQ(ShellTexts::sidebarTone(situation), tone);
    }
    QString detail() { return ShellTexts::panelDetail(situation); }
};

TEST_F(ShellTextsTest, theSidebarAsksForADestination)
{
    succeed(5);
    expectSidebar("Da configurare", Tone::Wrong);
}

TEST_F(ShellTextsTest, theSidebarSaysThatThereIsNoBackup)
{
    enable(DestinationID::Local);
    expectSidebar("Nessun backup", Tone::Wrong);
}

TEST_F(ShellTextsTest, theSidebarShowsAGoodBackup)
{
    enable(DestinationID::Local);
    succeed(5);
    expectSidebar("Backup aggiornato", Tone::Well);
}

TEST_F(ShellTextsTest, theSidebarShowsAStaleBackup)
{
    enable(DestinationID::Local);
    succeed(5);
    situation.staleText = QStringLiteral("40 ore");
    expectSidebar("Fermo da 40 ore", Tone::Wrong);
}

TEST_F(ShellTextsTest, aRunOrALaunchComesBeforeAll)
{
    situation.staleText = QStringLiteral("40 ore");
    situation.launching = true;
    expectSidebar("Backup in corso", Tone::Attention);
    situation.launching = false;
    run();
    expectSidebar("Backup in corso", Tone::Attention);
}

TEST_F(ShellTextsTest, thePanelOfAFreshInstallation)
{
    EXPECT_EQ(ShellTexts::panelEyebrow(situation), QStringLiteral("Ultimo backup"));
    EXPECT_EQ(ShellTexts::panelHeadline(situation), QStringLiteral("Nessuno"));
    EXPECT_EQ(detail(), QStringLiteral("Nessuna destinazione configurata."));
    EXPECT_EQ(ShellTexts::panelDestinations(situation),
              QList({DestinationID::Local, DestinationID::Drive}));
}

TEST_F(ShellTextsTest, thePanelShowsTheAgeOfTheLastGoodBackup)
{
    succeed(120);
    EXPECT_EQ(ShellTexts::panelHeadline(situation), QStringLiteral("2 ore fa"));
}

TEST_F(ShellTextsTest, thePanelFollowsARun)
{
    succeed(120);
    run(0.999);
    EXPECT_EQ(ShellTexts::panelEyebrow(situation), QStringLiteral("Backup in corso"));
    EXPECT_EQ(ShellTexts::panelHeadline(situation), QStringLiteral("99% su Google Drive"));
    EXPECT_EQ(detail(), QStringLiteral("Analisi dei file"));
}

TEST_F(ShellTextsTest, aLaunchIsNoRunYetForThePanel)
{
    situation.launching = true;
    EXPECT_EQ(ShellTexts::panelEyebrow(situation), QStringLiteral("Ultimo backup"));
}

TEST_F(ShellTextsTest, waitingForTheKeyringIsReportedBeforeWhatFollowsFromTheKey)
{
    situation.starting = true;
    EXPECT_EQ(ShellTexts::sidebarState(situation), QStringLiteral("In attesa del Portachiavi"));
    EXPECT_EQ(ShellTexts::sidebarTone(situation), Tone::Attention);
    EXPECT_EQ(detail(), QStringLiteral("In attesa del Portachiavi."));
    // Texts that depend on the files alone stay.
    succeed(120);
    EXPECT_EQ(ShellTexts::panelHeadline(situation), QStringLiteral("2 ore fa"));
}

TEST_F(ShellTextsTest, thePanelAsksForTheKit)
{
    enable(DestinationID::Local);
    situation.config.autoBackup = false;
    EXPECT_EQ(detail(), QStringLiteral("Salva il kit di recupero per avviare i backup."));
}

TEST_F(ShellTextsTest, thePanelShowsTheInterval)
{
    enable(DestinationID::Local);
    situation.config.keySaved = true;
    EXPECT_EQ(detail(), QStringLiteral("Backup automatico ogni ora."));
    situation.config.intervalHours = 12;
    EXPECT_EQ(detail(), QStringLiteral("Backup automatico ogni 12 ore."));
    situation.config.autoBackup = false;
    EXPECT_EQ(detail(), QStringLiteral("Backup automatico disattivato."));
}

TEST_F(ShellTextsTest, thePanelHasARowForEachPlaceInUse)
{
    enable(DestinationID::Server);
    EXPECT_EQ(ShellTexts::panelDestinations(situation), QList({DestinationID::Server}));
    enable(DestinationID::Local);
    EXPECT_EQ(ShellTexts::panelDestinations(situation),
              QList({DestinationID::Local, DestinationID::Server}));
}

} // namespace
