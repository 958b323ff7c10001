#include "ui/summary/ProtectionChecks.h"
#include "tests/unit/summary/SummaryFixture.h"

namespace {

using ProtectionChecks::Check;
using ProtectionChecks::Remedy;

class ProtectionChecksTest : public SummaryFixture
{
protected:
    QStringList ids()
    {
        QStringList list;
        const QList<Check> checks = ProtectionChecks::checks(situation);
        for (const Check &check : checks) {
            list.append(check.id);
        }
        return list;
    }
    QString badge() { return ProtectionChecks::badge(ProtectionChecks::checks(situation)); }

    void expectRow(int index, bool ok, const char *title, const char *detail, Remedy remedy)
    {
        const QList<Check> checks = ProtectionChecks::checks(situation);
        ASSERT_GT(checks.size(), index);
        EXPECT_EQ(checks[index].ok, ok);
        EXPECT_EQ(checks[index].title, QString::fromUtf8(title));
        EXPECT_EQ(checks[index].detail, QString::fromUtf8(detail));
        EXPECT_EQ(checks[index].remedy, remedy);
    }
    void verify(Outcome outcome)
    {
        situation.lastCheck = RunRecord();
        situation.lastCheck->outcome = outcome;
        situation.lastCheck->destination = DestinationID::Local;
        situation.lastCheck->date = Clock::now().addSecs(-7200);
        situation.lastCheck->message = QStringLiteral("Dati danneggiati");
    }
    void expectCopies(bool ok, const char *title, const char *detail)
    {
        expectRow(1, ok, title, detail, ok ? Remedy::none : Remedy::destinations);
    }
};

TEST_F(ProtectionChecksTest, aFreshInstallationHasFourRows)
{
    EXPECT_EQ(ids(), QStringList({QStringLiteral("key"), QStringLiteral("copies"),
                                  QStringLiteral("versions"), QStringLiteral("access")}));
    EXPECT_EQ(badge(), QStringLiteral("2 da sistemare"));
    situation.fullDiskAccess = false;
    EXPECT_EQ(badge(), QStringLiteral("3 da sistemare"));
}

TEST_F(ProtectionChecksTest, theKeyMustBeSaved)
{
    expectRow(0, false, "Kit di recupero da salvare", "Senza la chiave i backup sono persi",
              Remedy::recoveryKit);
    situation.config.keySaved = true;
    expectRow(0, true, "Chiave al sicuro", "Kit di recupero salvato", Remedy::none);
}

TEST_F(ProtectionChecksTest, withoutADestinationThereAreNoCopies)
{
    expectCopies(false, "Nessuna destinazione", "I file stanno solo su questo Mac");
}

TEST_F(ProtectionChecksTest, aDiskAloneCanBeStolenWithTheMac)
{
    enable(DestinationID::Local);
    expectCopies(false, "Una sola copia", "Un furto porta via Mac e disco insieme");
}

TEST_F(ProtectionChecksTest, aRemotePlaceAloneIsSlow)
{
    enable(DestinationID::Drive);
    expectCopies(false, "Una sola copia", "Aggiungi un disco per ripristini rapidi");
    situation.config.driveEnabled = false;
    enable(DestinationID::Server);
    expectCopies(false, "Una sola copia", "Aggiungi un disco per ripristini rapidi");
}

TEST_F(ProtectionChecksTest, theSystemDiskComesBeforeTheCount)
{
    situation.localOnSystemDisk = true;
    enable(DestinationID::Local);
    const char *title = "Backup sul disco del Mac";
    const char *detail = "Un guasto li porta via insieme ai file";
    expectCopies(false, title, detail);
    enable(DestinationID::Drive);
    expectCopies(false, title, detail);
}

TEST_F(ProtectionChecksTest, aDiskNotInUseIsNoMatterWhereItIs)
{
    situation.localOnSystemDisk = true;
    enable(DestinationID::Drive);
    enable(DestinationID::Server);
    expectCopies(true, "Copie in 2 luoghi", "Drive, Server");
}

TEST_F(ProtectionChecksTest, severalPlacesAreNamedInTheirOrder)
{
    enable(DestinationID::Server);
    enable(DestinationID::Drive);
    enable(DestinationID::Local);
    expectCopies(true, "Copie in 3 luoghi", "Disco, Drive, Server");
}

TEST_F(ProtectionChecksTest, versionsGoByHowLongTheyAreKept)
{
    situation.config.keepDays = -1;
    expectRow(2, false, "Solo l'ultimo backup", "Un file rovinato non si recupera più",
              Remedy::settings);
    situation.config.keepDays = 0;
    expectRow(2, true, "Versioni precedenti", "Conservate senza scadenza", Remedy::none);
    situation.config.keepDays = 1;
    expectRow(2, true, "Versioni precedenti", "Conservate per 1 giorni", Remedy::none);
    situation.config.keepDays = 730;
    expectRow(2, true, "Versioni precedenti", "Conservate per 2 anni", Remedy::none);
}

TEST_F(ProtectionChecksTest, accessToTheDiskIsReported)
{
    expectRow(3, true, "Accesso completo al disco", "Salvati anche Mail, Safari e Messaggi",
              Remedy::none);
    situation.fullDiskAccess = false;
    expectRow(3, false, "Accesso al disco limitato", "Mail, Safari e Messaggi restano fuori",
              Remedy::access);
}

TEST_F(ProtectionChecksTest, aGoodVerificationIsReportedByItsAge)
{
    verify(Outcome::Ok);
    EXPECT_EQ(ids().last(), QStringLiteral("integrity"));
    expectRow(4, true, "Backup integro", "Verificato 2 ore fa", Remedy::none);
}

TEST_F(ProtectionChecksTest, anyOtherVerificationIsReportedByItsMessage)
{
    for (const Outcome outcome :
         {Outcome::Warning, Outcome::Failed, Outcome::Skipped, Outcome::Cancelled}) {
        verify(outcome);
        expectRow(4, false, "Verifica non riuscita", "Disco esterno: Dati danneggiati",
                  Remedy::activity);
    }
}

TEST_F(ProtectionChecksTest, oneProblemHasTheWordsOfMany)
{
    situation.config.keySaved = true;
    EXPECT_EQ(badge(), QStringLiteral("1 da sistemare"));
}

TEST_F(ProtectionChecksTest, withNothingToFixAllIsWell)
{
    situation.config.keySaved = true;
    enable(DestinationID::Local);
    enable(DestinationID::Drive);
    verify(Outcome::Ok);
    EXPECT_EQ(badge(), QStringLiteral("Tutto a posto"));
}

} // namespace
