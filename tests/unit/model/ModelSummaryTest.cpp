#include "tests/support/ModelFixture.h"

#include <limits>

namespace {

class ModelSummary : public ModelFixture
{
protected:
    /// The stale text after one good backup of this age.
    std::optional<QString> stale(double hoursAgo, qint64 interval, qint64 alertAfter)
    {
        writeHistory({record(hoursAgo)});
        tick();
        change([=](AppConfig &settings) {
            settings.intervalHours = interval;
            settings.alertAfterHours = alertAfter;
        });
        return model->run()->staleText();
    }

    void see(const QList<RunRecord> &records)
    {
        writeHistory(records);
        tick();
    }

    RunRecord check(double hoursAgo, Outcome outcome)
    {
        RunRecord made = record(hoursAgo, outcome);
        made.kind = QStringLiteral("check");
        return made;
    }
};

TEST_F(ModelSummary, anOldBackupIsStaleFromTheLimitOn)
{
    start();
    EXPECT_EQ(stale(47.9, 24, 36), std::nullopt);
    EXPECT_EQ(stale(48, 24, 36), QStringLiteral("2 giorni"));
    EXPECT_EQ(stale(40, 6, 36), QStringLiteral("40 ore"));
    EXPECT_EQ(stale(35.99, 6, 36), std::nullopt);
    EXPECT_EQ(stale(36, 6, 36), QStringLiteral("36 ore"));
    EXPECT_EQ(stale(47.99, 1, 24), QStringLiteral("47 ore"));
    EXPECT_EQ(stale(71.99, 1, 24), QStringLiteral("2 giorni"));
    EXPECT_EQ(stale(72, 1, 24), QStringLiteral("3 giorni"));
    EXPECT_EQ(stale(24 * 400, 1, 24), QStringLiteral("400 giorni"));
    EXPECT_EQ(stale(1.99, 1, 0), std::nullopt);
    EXPECT_EQ(stale(2, 1, 0), QStringLiteral("2 ore"));
    EXPECT_EQ(stale(0, 0, 0), QStringLiteral("0 ore"));
}

TEST_F(ModelSummary, nothingIsStaleWhereNothingIsExpected)
{
    start();
    EXPECT_EQ(stale(1000, 1, -1), std::nullopt);
    EXPECT_EQ(stale(1000, 1, 24), QStringLiteral("41 giorni"));
    EXPECT_EQ(stale(-5, 1, 0), std::nullopt);
    EXPECT_EQ(stale(1000, std::numeric_limits<qint64>::max(), 24), std::nullopt);
    ASSERT_TRUE(stale(1000, 1, 24));
    see({});
    EXPECT_EQ(model->run()->staleText(), std::nullopt);
    see({record(1000, Outcome::Failed), check(1000, Outcome::Ok)});
    EXPECT_EQ(model->run()->staleText(), std::nullopt);
    ASSERT_TRUE(stale(1000, 1, 24));
    change([](AppConfig &settings) { settings.localEnabled = false; });
    EXPECT_EQ(model->run()->staleText(), std::nullopt);
    change([](AppConfig &settings) { settings.serverEnabled = true; });
    EXPECT_EQ(model->run()->staleText(), QStringLiteral("41 giorni"));
}

TEST_F(ModelSummary, aBackupGrowsStaleWithTime)
{
    start();
    ASSERT_EQ(stale(23, 1, 24), std::nullopt);
    clock.advance(std::chrono::hours(1));
    EXPECT_EQ(model->run()->staleText(), QStringLiteral("24 ore"));
}

TEST_F(ModelSummary, theLastSuccessIsABackupThatLeftAVersion)
{
    start();
    EXPECT_EQ(model->run()->lastSuccess(), std::nullopt);
    const RunRecord good = record(9, Outcome::Warning);
    see({check(1, Outcome::Ok), record(2, Outcome::Failed), record(3, Outcome::Skipped),
         record(4, Outcome::Cancelled), good, record(10)});
    EXPECT_EQ(model->run()->lastSuccess(), good);
    const RunRecord better = record(5);
    see({record(1, Outcome::Failed), better, good});
    EXPECT_EQ(model->run()->lastSuccess(), better);
}

TEST_F(ModelSummary, theLastRecordIsTheDestinationsOwnWhateverItsOutcome)
{
    start();
    const RunRecord drive = record(2, Outcome::Failed, DestinationID::Drive);
    const RunRecord local = record(3, Outcome::Cancelled);
    const RunRecord check = this->check(0.5, Outcome::Failed);
    see({check, drive, local, record(4), record(5, Outcome::Ok, DestinationID::Drive)});
    EXPECT_EQ(model->run()->lastRecord(DestinationID::Local), local);
    EXPECT_EQ(model->run()->lastRecord(DestinationID::Drive), drive);
    EXPECT_EQ(model->run()->lastRecord(DestinationID::Server), std::nullopt);
    EXPECT_EQ(model->run()->lastCheck(), check);
}

TEST_F(ModelSummary, aStateIsTheFirstThatApplies)
{
    tools.answer(QStringLiteral("snapshots"), ScriptedTools::ended(12));
    start();
    settle();
    const auto state = [this] {
        return std::pair(model->repositories()->stateText(DestinationID::Local),
                         model->repositories()->stateTone(DestinationID::Local));
    };
    see({record(1, Outcome::Failed)});
    settle();
    change([](AppConfig &settings) { settings.localEnabled = false; });
    EXPECT_EQ(state(), std::pair(QStringLiteral("Non attiva"), Tone::Off));
    change([](AppConfig &settings) { settings.localEnabled = true; });
    EXPECT_EQ(state(),
              std::pair(QStringLiteral("Chiave di cifratura errata per questa destinazione"),
                        Tone::Attention));
    tools.answer(QStringLiteral("snapshots"), ScriptedTools::ended(0, QStringLiteral("[]")));
    model->refresh(DestinationID::Local);
    settle();
    EXPECT_EQ(state(), std::pair(QStringLiteral("Ultimo backup non riuscito"), Tone::Wrong));
    for (const Outcome outcome :
         {Outcome::Ok, Outcome::Warning, Outcome::Cancelled, Outcome::Skipped}) {
        see({record(2, outcome)});
        EXPECT_EQ(state(), std::pair(QStringLiteral("Backup 2 ore fa"), Tone::Well));
    }
    see({record(0)});
    EXPECT_EQ(state(), std::pair(QStringLiteral("Backup adesso"), Tone::Well));
    see({});
    EXPECT_EQ(state(), std::pair(QStringLiteral("In attesa del primo backup"), Tone::Attention));
    see({check(1, Outcome::Failed)});
    EXPECT_EQ(state(), std::pair(QStringLiteral("In attesa del primo backup"), Tone::Attention));
}

TEST_F(ModelSummary, everyPageHasItsTitle)
{
    using Section = AppModel::Section;
    EXPECT_EQ(AppModel::title(Section::Overview), QStringLiteral("Panoramica"));
    EXPECT_EQ(AppModel::title(Section::Restore), QStringLiteral("Ripristina"));
    EXPECT_EQ(AppModel::title(Section::Sources), QStringLiteral("Cartelle"));
    EXPECT_EQ(AppModel::title(Section::Destinations), QStringLiteral("Destinazioni"));
    EXPECT_EQ(AppModel::title(Section::Activity), QStringLiteral("Attività"));
    EXPECT_EQ(AppModel::title(Section::Settings), QStringLiteral("Impostazioni"));
}

} // namespace
