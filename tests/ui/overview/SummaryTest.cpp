#include "ui/glance/Summary.h"
#include "tests/support/EventLoop.h"
#include "tests/support/ManualClock.h"
#include "tests/support/ModelFixture.h"
#include "ui/prepared/PreparedWorld.h"

#include <QCoreApplication>
#include <QPersistentModelIndex>

#include <gtest/gtest.h>

namespace {

/// Records the changes that a summary reports, in order.
class Reports
{
public:
    explicit Reports(Summary &summary)
    {
        note(summary, &Summary::modelChanged, "model");
        note(summary, &Summary::ticksChanged, "ticks");
        note(summary, &Summary::checksChanged, "checks");
        for (auto signal : {&KeyedListModel::rowsInserted, &KeyedListModel::rowsRemoved}) {
            QObject::connect(summary.panelRows(), signal, &m_context,
                             [this] { m_words.emplace_back("destinations"); });
        }
        note(summary, &Summary::changed, "rest");
    }

    std::vector<std::string> take() { return std::exchange(m_words, {}); }

private:
    template <typename Signal>
    void note(const Summary &summary, Signal signal, const char *word)
    {
        QObject::connect(&summary, signal, &m_context,
                         [this, word] { m_words.emplace_back(word); });
    }

    QObject m_context;
    std::vector<std::string> m_words;
};

using Words = std::vector<std::string>;

class SummaryTest : public testing::Test
{
protected:
    SummaryTest()
    {
        state.config.localEnabled = true;
        state.config.driveEnabled = true;
        state.config.keySaved = true;
        show();
        summary.setModel(model.get());
        reports.take();
    }

    /// Lets the model read all of the state again.
    void show()
    {
        desktop.fullDiskAccess = state.fullDiskAccess;
        model->setConfig(AppConfig(state.config));
        model->checkPermissions();
        model->run()->look();
        for (const DestinationID destination : allDestinations) {
            model->refresh(destination);
        }
        if (state.launching) {
            model->startBackup();
            desktop.asked.clear();
        }
    }

    /// Adds a version on the disk, made so many minutes ago.
    void store(qint64 minutesAgo)
    {
        Snap version;
        version.date = Clock::now().addSecs(-60 * minutesAgo);
        state.repos[DestinationID::Local].snapshots.append(version);
    }

    void run(double percent)
    {
        state.status = RunStatus();
        state.status->startedAt = Clock::now();
        state.status->destination = DestinationID::Drive;
        state.status->phase = QStringLiteral("Copia dei file");
        state.status->percent = percent;
    }

    void record(qint64 minutesAgo, Outcome outcome, const std::optional<QString> &kind = {})
    {
        RunRecord made;
        made.id = QUuid::createUuid();
        made.date = Clock::now().addSecs(-60 * minutesAgo);
        made.outcome = outcome;
        made.kind = kind;
        state.history.prepend(made);
    }

    [[nodiscard]] QList<qsizetype> litTicks() const
    {
        const QList<bool> ticks = summary.litTicks();
        QList<qsizetype> lit;
        for (qsizetype i = 0; i < ticks.size(); ++i) {
            if (ticks[i]) {
                lit.append(i);
            }
        }
        return lit;
    }

    [[nodiscard]] std::string detailOf(const QString &id) const
    {
        for (const ProtectionChecks::Check &check : summary.checks()) {
            if (check.id == id) {
                return check.detail.toStdString();
            }
        }
        return {};
    }

    TestApplication application;
    ManualClock clock{QDateTime(QDate(2026, 7, 15), QTime(12, 0)).toUTC()};
    ScopedClock clockInForce{clock};
    PreparedWorld world;
    PreparedState &state = world.state();
    NotedDesktop &desktop = world.desktop();
    std::unique_ptr<AppModel> model = world.model();
    Summary summary;
    Reports reports{summary};
};

TEST_F(SummaryTest, withoutAModelItSaysWhatAFreshInstallationIs)
{
    const Summary alone;
    EXPECT_EQ(alone.title().toStdString(), "Nessuna destinazione configurata");
    EXPECT_EQ(alone.dialValue().toStdString(), "--");
    EXPECT_EQ(alone.litTicks(), QList<bool>(48, false));
    EXPECT_EQ(alone.action(), OverviewTexts::Action::Choose);
    EXPECT_EQ(alone.checks().size(), 4);
}

TEST_F(SummaryTest, aFreshInstallationWithoutAccessHasThreeThingsToPutInOrder)
{
    state.config = AppConfig();
    state.fullDiskAccess = false;
    show();
    EXPECT_EQ(summary.title().toStdString(), "Nessuna destinazione configurata");
    EXPECT_EQ(summary.dialValue().toStdString(), "--");
    EXPECT_EQ(summary.dialCaption().toStdString(), "nessun backup");
    EXPECT_EQ(summary.actionLabel().toStdString(), "Scegli una destinazione");
    EXPECT_EQ(litTicks(), QList<qsizetype>());
    EXPECT_EQ(summary.checks().size(), 4);
    EXPECT_EQ(summary.badge().toStdString(), "3 da sistemare");
}

TEST_F(SummaryTest, aRunReachesIt)
{
    run(0.5);
    show();
    EXPECT_EQ(reports.take(), Words({"ticks", "rest"}));
    EXPECT_EQ(summary.dialValue().toStdString(), "50%");
    EXPECT_EQ(summary.dialCaption().toStdString(), "Copia dei file");
    EXPECT_EQ(summary.percent(), 0.5);
    EXPECT_TRUE(summary.isRunning());
    EXPECT_EQ(summary.actionLabel().toStdString(), "Interrompi");
}

TEST_F(SummaryTest, aLaunchReachesIt)
{
    state.launching = true;
    show();
    EXPECT_EQ(reports.take(), Words({"rest"}));
    EXPECT_EQ(summary.dialValue().toStdString(), "...");
    EXPECT_EQ(summary.actionLabel().toStdString(), "Avvio in corso...");
    EXPECT_FALSE(summary.isRunning());
}

TEST_F(SummaryTest, aChangedSettingReachesIt)
{
    AppConfig config = model->config();
    config.keepDays = -1;
    config.driveEnabled = false;
    model->setConfig(config);
    EXPECT_EQ(reports.take(), Words({"destinations", "checks"}));
    EXPECT_EQ(detailOf(QStringLiteral("versions")), "Un file rovinato non si recupera più");
    EXPECT_EQ(summary.panelRows()->count(), 1);
    EXPECT_EQ(summary.destinationRows()->count(), 3);
    EXPECT_EQ(summary.badge().toStdString(), "2 da sistemare");
    EXPECT_FALSE(summary.isProtectedWell());
}

TEST_F(SummaryTest, theRowsOfTheDestinationsStayThemselves)
{
    const auto stateOf = [this](const QModelIndex &row) {
        return row.data(summary.destinationRows()->roleNames().key("value"))
            .value<DestinationState>();
    };
    const QPersistentModelIndex drive = summary.panelRows()->index(1);
    AppConfig config = model->config();
    config.localEnabled = false;
    model->setConfig(config);
    EXPECT_EQ(drive.row(), 0);
    EXPECT_EQ(stateOf(drive), model->repositories()->destinations().at(1));
    for (int row = 0; row < 3; ++row) {
        EXPECT_EQ(stateOf(summary.destinationRows()->index(row)),
                  model->repositories()->destinations().at(row));
    }
    EXPECT_FALSE(stateOf(summary.destinationRows()->index(0)).enabled);
}

TEST_F(SummaryTest, theHistoryReachesIt)
{
    record(5, Outcome::Ok);
    show();
    EXPECT_EQ(reports.take(), Words({"rest"}));
    EXPECT_EQ(summary.dialValue().toStdString(), "5 min");
    record(3, Outcome::Ok, QStringLiteral("check"));
    show();
    EXPECT_EQ(reports.take(), Words({"checks"}));
    EXPECT_EQ(summary.checks().size(), 5);
}

TEST_F(SummaryTest, theVersionsReachIt)
{
    store(30);
    show();
    EXPECT_EQ(reports.take(), Words({"ticks"}));
    EXPECT_EQ(litTicks(), QList<qsizetype>({23}));
}

TEST_F(SummaryTest, accessToTheDiskReachesIt)
{
    state.fullDiskAccess = false;
    show();
    EXPECT_EQ(reports.take(), Words({"checks"}));
    EXPECT_EQ(detailOf(QStringLiteral("access")), "Mail, Safari e Messaggi restano fuori");
}

TEST_F(SummaryTest, nothingIsReportedWhenAllIsAsBefore)
{
    run(0.5);
    record(5, Outcome::Ok);
    store(30);
    show();
    reports.take();
    show();
    Q_EMIT model->run()->statusChanged();
    Q_EMIT model->summaryChanged();
    EXPECT_EQ(reports.take(), Words());
}

TEST_F(SummaryTest, aSecondOfARunReportsNothingElse)
{
    run(0.51);
    show();
    reports.take();
    state.status->percent = 0.52;
    show();
    EXPECT_EQ(reports.take(), Words({"rest"}));
    state.status->percent = 0.53;
    show();
    EXPECT_EQ(reports.take(), Words({"ticks", "rest"}));
}

TEST_F(SummaryTest, ticksChangeTogetherWithTheirPercent)
{
    double found = -1;
    QObject::connect(&summary, &Summary::ticksChanged, model.get(),
                     [&] { found = summary.percent(); });
    run(0.3);
    show();
    EXPECT_EQ(found, 0.3);
}

TEST_F(SummaryTest, aMinuteMovesTheMarker)
{
    EXPECT_EQ(summary.nowFraction(), 0.5);
    clock.advance(std::chrono::minutes(1));
    Q_EMIT model->summaryChanged();
    EXPECT_EQ(reports.take(), Words({"rest"}));
    EXPECT_EQ(summary.nowFraction(), 721.0 / 1440);
}

TEST_F(SummaryTest, theTickOfAVersionGoesOutAfterADay)
{
    store(0);
    show();
    reports.take();
    clock.advance(std::chrono::hours(24));
    Q_EMIT model->summaryChanged();
    EXPECT_EQ(reports.take(), Words({"ticks"}));
    EXPECT_EQ(litTicks(), QList<qsizetype>());
}

TEST_F(SummaryTest, theRingFillsWithTheRunWhateverVersionsThereAre)
{
    store(30);
    const auto lit = [this](double percent) {
        run(percent);
        show();
        return litTicks().size();
    };
    EXPECT_EQ(lit(-1), 0);
    EXPECT_EQ(lit(0), 0);
    EXPECT_EQ(lit(1e-9), 1);
    EXPECT_EQ(lit(0.5), 24);
    EXPECT_EQ(lit(1), 48);
    EXPECT_EQ(lit(7), 48);
    state.status.reset();
    show();
    EXPECT_EQ(litTicks(), QList<qsizetype>({23}));
}

TEST_F(SummaryTest, aModelThatGoesAwayLeavesNothingBehind)
{
    run(0.5);
    show();
    reports.take();
    model.reset();
    EXPECT_EQ(reports.take(), Words({"model", "destinations", "ticks", "checks", "rest"}));
    EXPECT_EQ(summary.model(), nullptr);
    EXPECT_EQ(summary.title().toStdString(), "Nessuna destinazione configurata");
    summary.act();
    summary.remedy(QStringLiteral("copies"));
    EXPECT_EQ(reports.take(), Words());
}

TEST_F(SummaryTest, aFormerModelIsIgnored)
{
    AppModel other(PreparedWorld().world());
    summary.setModel(&other);
    EXPECT_EQ(summary.title().toStdString(), "Nessuna destinazione configurata");
    reports.take();
    run(0.5);
    show();
    model.reset();
    EXPECT_EQ(reports.take(), Words());
    summary.setModel(&other);
    EXPECT_EQ(reports.take(), Words());
}

TEST_F(SummaryTest, withNoDestinationTheButtonLeadsToThem)
{
    state.config = AppConfig();
    show();
    EXPECT_EQ(summary.actionLabel().toStdString(), "Scegli una destinazione");
    summary.act();
    EXPECT_EQ(model->section(), AppModel::Section::Destinations);
    EXPECT_EQ(desktop.asked, QStringList());
}

TEST_F(SummaryTest, withADestinationTheButtonStartsABackup)
{
    EXPECT_EQ(summary.actionLabel().toStdString(), "Esegui backup ora");
    summary.act();
    EXPECT_TRUE(desktop.asked.contains(QStringLiteral("start")));
    EXPECT_EQ(summary.action(), OverviewTexts::Action::Starting);
    EXPECT_EQ(model->section(), AppModel::Section::Overview);
}

TEST_F(SummaryTest, whileABackupStartsTheButtonDoesNothing)
{
    state.launching = true;
    show();
    summary.act();
    EXPECT_EQ(desktop.asked, QStringList());
}

TEST_F(SummaryTest, duringABackupTheButtonStopsIt)
{
    run(0.5);
    show();
    summary.act();
    EXPECT_EQ(desktop.asked, QStringList{QStringLiteral("stop")});
}

TEST_F(SummaryTest, theRemedyForAnUnsavedKeyIsTheKit)
{
    state.config.keySaved = false;
    show();
    summary.remedy(QStringLiteral("key"));
    EXPECT_TRUE(model->kit()->isShowing());
    EXPECT_EQ(model->section(), AppModel::Section::Overview);
}

TEST_F(SummaryTest, theRemedyForMissingCopiesIsAmongTheDestinations)
{
    state.config.driveEnabled = false;
    show();
    summary.remedy(QStringLiteral("copies"));
    EXPECT_EQ(model->section(), AppModel::Section::Destinations);
}

TEST_F(SummaryTest, theRemedyForMissingVersionsIsInTheSettings)
{
    state.config.keepDays = -1;
    show();
    summary.remedy(QStringLiteral("versions"));
    EXPECT_EQ(model->section(), AppModel::Section::Settings);
}

TEST_F(SummaryTest, theRemedyForMissingAccessIsInTheSystemsSettings)
{
    state.fullDiskAccess = false;
    show();
    summary.remedy(QStringLiteral("access"));
    EXPECT_EQ(desktop.asked, QStringList({QStringLiteral("settings")}));
    EXPECT_EQ(model->section(), AppModel::Section::Overview);
}

TEST_F(SummaryTest, aFailedVerificationLeadsToTheActivity)
{
    record(3, Outcome::Failed, QStringLiteral("check"));
    show();
    summary.remedy(QStringLiteral("integrity"));
    EXPECT_EQ(model->section(), AppModel::Section::Activity);
}

TEST_F(SummaryTest, checksThatAreOkOrUnknownHaveNoRemedy)
{
    for (const char *id : {"key", "copies", "versions", "access", "integrity", "", "other"}) {
        summary.remedy(QString::fromLatin1(id));
    }
    EXPECT_EQ(model->section(), AppModel::Section::Overview);
    EXPECT_FALSE(model->kit()->isShowing());
    EXPECT_EQ(desktop.asked, QStringList());
}

TEST_F(SummaryTest, whatAPreparedModelHasStartedDoesNotEndByItselfLater)
{
    bool came = false;
    desktop.after(std::chrono::milliseconds(0), [&came] { came = true; });
    QCoreApplication::processEvents();
    EXPECT_FALSE(came);
}

} // namespace
