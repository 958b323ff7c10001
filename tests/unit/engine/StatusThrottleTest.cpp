#include "tests/support/EngineFixture.h"

#include "state/StatusStore.h"

#include <QDir>

namespace {

using namespace std::chrono_literals;

class StatusThrottle : public EngineFixture
{
protected:
    /// A report that differs from every other one.
    void handle(BackupProgress &progress)
    {
        ++m_lines;
        progress.report({.filesDone = m_lines});
        const auto status = StatusStore::loadStatus();
        if (status && status->filesDone == m_lines) {
            ++writes;
        }
    }

    [[nodiscard]] BackupProgress newProgress(DestinationID destination = DestinationID::Local)
    {
        return {destination, Clock::now(), m_lastWrite};
    }

    int writes = 0;

private:
    qint64 m_lines = 0;
    BackupProgress::WriteTime m_lastWrite;
};

TEST_F(StatusThrottle, theFirstLineIsWrittenAtOnce)
{
    BackupProgress progress = newProgress();
    handle(progress);
    EXPECT_EQ(writes, 1);
}

TEST_F(StatusThrottle, fiveHundredLinesInASecondAreOneOrTwoWrites)
{
    BackupProgress progress = newProgress();
    for (int line = 0; line < 500; ++line) {
        handle(progress);
        clock.advance(2ms);
    }
    EXPECT_EQ(writes, 2);
}

TEST_F(StatusThrottle, theNextWriteComesAfterMoreThanSevenTenths)
{
    BackupProgress progress = newProgress();
    handle(progress);
    clock.advance(700ms);
    handle(progress);
    EXPECT_EQ(writes, 1);
    clock.advance(1ms);
    handle(progress);
    EXPECT_EQ(writes, 2);
    // The pause is counted from the last write.
    clock.advance(700ms);
    handle(progress);
    EXPECT_EQ(writes, 2);
}

TEST_F(StatusThrottle, whatWasHeldBackComesWithALaterLine)
{
    BackupProgress progress = newProgress();
    handle(progress);
    progress.report({.totalFiles = 5});
    EXPECT_EQ(progress.status().totalFiles, 5);
    EXPECT_EQ(StatusStore::loadStatus()->totalFiles, 0);
    progress.enter(QStringLiteral("later"));
    EXPECT_EQ(StatusStore::loadStatus()->totalFiles, 5);
}

TEST_F(StatusThrottle, thePauseGoesOnFromOneDestinationToTheNext)
{
    BackupProgress first = newProgress();
    handle(first);
    clock.advance(500ms);
    BackupProgress second = newProgress(DestinationID::Drive);
    handle(second);
    EXPECT_EQ(writes, 1);
    clock.advance(201ms);
    handle(second);
    EXPECT_EQ(writes, 2);
}

TEST_F(StatusThrottle, changesOfPhaseAreNotHeldBackAndDoNotMoveThePause)
{
    BackupProgress progress = newProgress();
    handle(progress);
    clock.advance(600ms);
    progress.enter(QStringLiteral("a phase"));
    EXPECT_EQ(StatusStore::loadStatus()->phase, QStringLiteral("a phase"));
    progress.enterWhole(QStringLiteral("the last phase"));
    EXPECT_EQ(StatusStore::loadStatus()->phase, QStringLiteral("the last phase"));
    clock.advance(101ms);
    handle(progress);
    EXPECT_EQ(writes, 2);
}

TEST_F(StatusThrottle, aClockPutBackDoesNotStopTheWrites)
{
    BackupProgress progress = newProgress();
    handle(progress);
    clock.set(clock.moment().addYears(-3));
    clock.advance(701ms);
    handle(progress);
    EXPECT_EQ(writes, 2);
}

TEST_F(StatusThrottle, aClockPutForwardMakesNoWrite)
{
    BackupProgress progress = newProgress();
    handle(progress);
    clock.set(clock.moment().addYears(3));
    handle(progress);
    EXPECT_EQ(writes, 1);
}

TEST_F(StatusThrottle, oneCycleSharesThePauseAmongItsDestinations)
{
    useAllDestinations();
    tools.progress = {QStringLiteral(R"({"message_type":"status","files_done":1})"),
                      QStringLiteral(R"({"message_type":"status","files_done":2})")};
    // What is on disk when the next destination's run has begun can't tell; the file's state when
    // the backup ends can, and a run that fails writes nothing more.
    tools.backup = ScriptedTools::ended(1);
    class LastStatus final : public Clock
    {
    public:
        [[nodiscard]] QDateTime moment() const override { return QDateTime::currentDateTimeUtc(); }
        [[nodiscard]] std::chrono::steady_clock::time_point reading() const override
        {
            if (const auto status = StatusStore::loadStatus()) {
                phases.append(rawValue(status->destination) + u' ' + status->phase);
            }
            return std::chrono::steady_clock::time_point(1h);
        }
        mutable QStringList phases;
    };
    const LastStatus watching;
    const ScopedClock inForce(watching);
    EXPECT_EQ(run(), 1);
    EXPECT_TRUE(watching.phases.contains(QStringLiteral("local Copia dei file")));
    EXPECT_FALSE(watching.phases.contains(QStringLiteral("drive Copia dei file")));
    EXPECT_FALSE(watching.phases.contains(QStringLiteral("server Copia dei file")));
    EXPECT_TRUE(watching.phases.contains(QStringLiteral("drive Scansione dei file")));
}

} // namespace
