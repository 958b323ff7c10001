#include "state/StatusStore.h"
#include "tests/support/ModelFixture.h"

#include <QDir>
#include <QFile>
#include <QTimer>

#include <unistd.h>

namespace {

class Polling : public ModelFixture
{
protected:
    /// Counts every signal of the model that reports a change.
    class AllSignals : public QObject
    {
    public:
        explicit AllSignals(AppModel *model)
        {
            const auto connect = [this](auto *part, auto signal) {
                QObject::connect(part, signal, this, [this] { ++count; });
            };
            connect(model, &AppModel::configChanged);
            connect(model, &AppModel::summaryChanged);
            connect(model->run(), &RunWatch::statusChanged);
            connect(model->run(), &RunWatch::launchingChanged);
            connect(model->run(), &RunWatch::busyChanged);
            connect(model->run(), &RunWatch::historyChanged);
            connect(model->run(), &RunWatch::staleTextChanged);
            connect(model->run(), &RunWatch::minutePassed);
            connect(model->repositories(), &Repositories::changed);
            connect(model->repositories(), &Repositories::destinationsChanged);
            connect(model->access(), &DiskAccess::grantedChanged);
        }
        int count = 0;
    };
};

TEST_F(Polling, aRunThatSomebodyElseStartedShowsAndIsFollowed)
{
    start();
    const SignalCount busy(model->run(), &RunWatch::busyChanged);
    const EngineLookalike engine;
    const RunStatus first = leaveStatus(engine.pid(), 0.1);
    tick();
    EXPECT_EQ(model->run()->status(), first);
    EXPECT_TRUE(model->run()->isBusy());
    const RunStatus second = leaveStatus(engine.pid(), 0.2);
    tick();
    EXPECT_EQ(model->run()->status(), second);
    EXPECT_EQ(busy.count(), 1);
}

TEST_F(Polling, nothingIsReportedWhileNothingChanges)
{
    const EngineLookalike engine;
    leaveStatus(engine.pid());
    writeHistory({record(1), record(2)});
    start();
    settle();
    const AllSignals all(model.get());
    for (int i = 0; i < 3; ++i) {
        tick();
    }
    EXPECT_EQ(all.count, 0);
    // The same content written again is no change either.
    leaveStatus(engine.pid());
    tick();
    EXPECT_EQ(all.count, 0);
}

TEST_F(Polling, theEndOfARunReadsEveryRepositoryInUseOnce)
{
    useAllDestinations();
    const EngineLookalike engine;
    leaveStatus(engine.pid());
    start();
    settle();
    EXPECT_EQ(tools.repositories(QStringLiteral("snapshots")).size(), 3);
    tick();
    settle();
    EXPECT_EQ(tools.repositories(QStringLiteral("snapshots")).size(), 3);
    StatusStore::clear();
    tick();
    EXPECT_EQ(model->run()->status(), std::nullopt);
    EXPECT_FALSE(model->run()->isBusy());
    settle();
    EXPECT_EQ(tools.repositories(QStringLiteral("snapshots")).size(), 6);
    tick();
    settle();
    EXPECT_EQ(tools.repositories(QStringLiteral("snapshots")).size(), 6);
}

TEST_F(Polling, aRunBetweenTwoLooksIsSeenByItsRecord)
{
    useAllDestinations();
    writeHistory({record(2)});
    start();
    settle();
    const qsizetype readings = tools.repositories(QStringLiteral("snapshots")).size();
    writeHistory({record(1), record(2)});
    tick();
    settle();
    EXPECT_EQ(tools.repositories(QStringLiteral("snapshots")).size(), readings + 3);
    tick();
    settle();
    EXPECT_EQ(tools.repositories(QStringLiteral("snapshots")).size(), readings + 3);
}

TEST_F(Polling, aRecordOfARunUnderWayReadsNothingYet)
{
    const EngineLookalike engine;
    leaveStatus(engine.pid());
    start();
    settle();
    const qsizetype readings = tools.repositories(QStringLiteral("snapshots")).size();
    writeHistory({record(1)});
    tick();
    settle();
    EXPECT_EQ(tools.repositories(QStringLiteral("snapshots")).size(), readings);
    writeHistory({record(0.5), record(1)});
    StatusStore::clear();
    tick();
    settle();
    EXPECT_EQ(tools.repositories(QStringLiteral("snapshots")).size(), readings + 1);
}

TEST_F(Polling, aHistoryThatVanishesIsNoRun)
{
    writeHistory({record(1)});
    start();
    settle();
    const qsizetype readings = tools.repositories(QStringLiteral("snapshots")).size();
    QFile::remove(supportFile("history.json"));
    tick();
    settle();
    EXPECT_EQ(tools.repositories(QStringLiteral("snapshots")).size(), readings);
}

TEST_F(Polling, aRunThatWasKilledIsOverAtTheNextLook)
{
    EngineLookalike engine;
    leaveStatus(engine.pid());
    start();
    settle();
    ASSERT_TRUE(model->run()->isBusy());
    const qsizetype readings = tools.repositories(QStringLiteral("snapshots")).size();
    engine.kill();
    tick();
    EXPECT_FALSE(model->run()->isBusy());
    settle();
    EXPECT_EQ(tools.repositories(QStringLiteral("snapshots")).size(), readings + 1);
}

TEST_F(Polling, aStatusOfADeadOrForeignProcessIsNoRun)
{
    start();
    EngineLookalike dead;
    const qint64 pid = dead.pid();
    dead.kill();
    const EngineLookalike foreign(QStringLiteral("something-else"));
    for (const qint64 process :
         {pid, foreign.pid(), qint64{1}, qint64{0}, qint64{-1}, static_cast<qint64>(::getpid())}) {
        leaveStatus(process);
        tick();
        EXPECT_EQ(model->run()->status(), std::nullopt) << process;
    }
    model->startBackup();
    settle();
    EXPECT_EQ(desktop->started.size(), 1);
}

TEST_F(Polling, aDamagedStatusIsNoRun)
{
    const EngineLookalike engine;
    for (const QByteArray &text :
         {QByteArray(), QByteArray("{"), QByteArray("{}"), QByteArray("[]"), QByteArray("null"),
          QByteArray("\xff\xfe"), QByteArray(10'000'000, ' ')}) {
        leaveStatus(engine.pid());
        if (!model) {
            start();
        }
        tick();
        EXPECT_TRUE(model->run()->isBusy());
        writeSupportFile("status.json", text);
        tick();
        EXPECT_FALSE(model->run()->isBusy()) << text.left(10).toStdString();
    }
}

TEST_F(Polling, aStatusCutAnywhereIsNoRun)
{
    const EngineLookalike engine;
    leaveStatus(engine.pid());
    const QByteArray whole = StatusStore::statusBytes();
    start();
    for (qsizetype length = 0; length < whole.trimmed().size(); length += 7) {
        writeSupportFile("status.json", whole.left(length));
        tick();
        EXPECT_FALSE(model->run()->isBusy()) << length;
    }
    writeSupportFile("status.json", whole);
    tick();
    EXPECT_TRUE(model->run()->isBusy());
}

TEST_F(Polling, aStatusWithOddFiguresIsShownAsItStands)
{
    const EngineLookalike engine;
    start();
    RunStatus odd = leaveStatus(engine.pid(), 7.5);
    odd.filesDone = -3;
    odd.totalBytes = -1;
    odd.currentFile = QString(4000, u'x') + QLatin1String("<b>");
    StatusStore::write(odd);
    tick();
    EXPECT_EQ(model->run()->status(), odd);
}

TEST_F(Polling, aNewRecordIsRead)
{
    const RunRecord old = record(2);
    writeHistory({old});
    start();
    const SignalCount changes(model->run(), &RunWatch::historyChanged);
    const RunRecord newer = record(1);
    writeHistory({newer, old});
    tick();
    EXPECT_EQ(model->run()->history(), QList({newer, old}));
    EXPECT_EQ(changes.count(), 1);
}

TEST_F(Polling, changesToOlderRecordsWaitForANewRecord)
{
    const RunRecord head = record(1);
    writeHistory({head, record(2)});
    start();
    const QList<RunRecord> before = model->run()->history();
    const RunRecord other = record(3, Outcome::Failed);
    writeHistory({head, other});
    tick();
    EXPECT_EQ(model->run()->history(), before);
    const RunRecord newer = record(0.5);
    writeHistory({newer, head, other});
    tick();
    EXPECT_EQ(model->run()->history(), QList({newer, head, other}));
}

TEST_F(Polling, aDamagedHistoryIsEmptyUntilTheNextGoodOne)
{
    const QList<RunRecord> records{record(1)};
    start();
    for (const QByteArray &text : {QByteArray("["), QByteArray("{}"), QByteArray("[{}]"),
                                   QByteArray(), QByteArray("[null]"), QByteArray("\xff")}) {
        writeHistory(records);
        tick();
        EXPECT_EQ(model->run()->history(), records);
        writeSupportFile("history.json", text);
        tick();
        EXPECT_TRUE(model->run()->history().isEmpty()) << text.toStdString();
    }
    writeHistory(records);
    tick();
    QFile::remove(supportFile("history.json"));
    tick();
    EXPECT_TRUE(model->run()->history().isEmpty());
    writeHistory(records);
    tick();
    EXPECT_EQ(model->run()->history(), records);
}

TEST_F(Polling, filesReplacedByFoldersAreNone)
{
    writeHistory({record(1)});
    start();
    for (const char *name : {"history.json", "status.json"}) {
        QFile::remove(supportFile(name));
        ASSERT_TRUE(QDir().mkdir(supportFile(name)));
    }
    tick();
    EXPECT_TRUE(model->run()->history().isEmpty());
    EXPECT_FALSE(model->run()->isBusy());
}

TEST_F(Polling, everyFileMissingChangesNothingElse)
{
    writeHistory({record(1)});
    start();
    settle();
    ASSERT_TRUE(QDir(Paths::support()).removeRecursively());
    tick();
    EXPECT_TRUE(model->run()->history().isEmpty());
    EXPECT_EQ(model->config(), config);
    // The folder isn't made again: what is saved now is lost, and nothing else happens.
    change([](AppConfig &settings) { settings.intervalHours = 5; });
    EXPECT_EQ(model->config().intervalHours, 5);
}

TEST_F(Polling, aMinuteThatPassesReportsTheAgesAgain)
{
    start();
    settle();
    const SignalCount minutes(model->run(), &RunWatch::minutePassed);
    const SignalCount summaries(model.get(), &AppModel::summaryChanged);
    clock.advance(std::chrono::seconds(59));
    tick();
    EXPECT_EQ(minutes.count(), 0);
    clock.advance(std::chrono::seconds(1));
    tick();
    EXPECT_EQ(minutes.count(), 1);
    EXPECT_EQ(summaries.count(), 1);
    // A clock that is set back gives a different minute too.
    clock.advance(std::chrono::hours(-5));
    tick();
    EXPECT_EQ(minutes.count(), 2);
}

TEST_F(Polling, aModelThatIsGoneIsNotPolledAnyMore)
{
    start();
    model.reset();
    settle();
    // The model's timer would have fired before this one.
    bool isOver = false;
    QTimer::singleShot(std::chrono::milliseconds(1500), [&isOver] { isOver = true; });
    EXPECT_TRUE(eventuallyInLoop([&isOver] { return isOver; }));
}

} // namespace
