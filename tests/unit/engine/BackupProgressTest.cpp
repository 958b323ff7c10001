#include "engine/BackupProgress.h"

#include "state/StatusStore.h"
#include "tests/support/ManualClock.h"

#include <gtest/gtest.h>

#include <unistd.h>

namespace {

using namespace std::chrono_literals;

class BackupProgressTest : public testing::Test
{
protected:
    const QDateTime start =
        QDateTime::fromString(QStringLiteral("2026-03-01T10:00:00Z"), Qt::ISODate);
    ManualClock clock;
    ScopedClock clockInForce{clock};
    StatusThrottle throttle;
    BackupProgress progress{DestinationID::Drive, start, throttle};

    const ResticBackup::Status halfWay{.fractionDone = 0.375,
                                       .filesDone = 11,
                                       .totalFiles = 22,
                                       .bytesDone = 9007199254740993,
                                       .totalBytes = 9007199254740995,
                                       .secondsRemaining = 44,
                                       .currentFile = QStringLiteral("/a/file")};
};

TEST_F(BackupProgressTest, aPhaseIsWrittenWithTheRunThatItBelongsTo)
{
    progress.enter(QStringLiteral("a phase"));
    RunStatus expected;
    expected.pid = ::getpid();
    expected.startedAt = start;
    expected.destination = DestinationID::Drive;
    expected.phase = QStringLiteral("a phase");
    EXPECT_EQ(StatusStore::loadStatus(), expected);
}

TEST_F(BackupProgressTest, aReportOfResticsIsTakenWholeAndBeginsTheCopying)
{
    progress.report(halfWay);
    const RunStatus status = progress.status();
    EXPECT_EQ(status.phase, QStringLiteral("Copia dei file"));
    EXPECT_EQ(status.percent, 0.375);
    EXPECT_EQ(status.filesDone, 11);
    EXPECT_EQ(status.totalFiles, 22);
    EXPECT_EQ(status.bytesDone, 9007199254740993);
    EXPECT_EQ(status.totalBytes, 9007199254740995);
    EXPECT_EQ(status.secondsRemaining, 44);
    EXPECT_EQ(status.currentFile, QStringLiteral("/a/file"));
    EXPECT_EQ(StatusStore::loadStatus(), status);
}

TEST_F(BackupProgressTest, nothingOfTheReportBeforeStays)
{
    progress.report(halfWay);
    progress.report({});
    RunStatus expected;
    expected.pid = ::getpid();
    expected.startedAt = start;
    expected.destination = DestinationID::Drive;
    expected.phase = QStringLiteral("Copia dei file");
    EXPECT_EQ(progress.status(), expected);
}

TEST_F(BackupProgressTest, aPhaseWithoutProgressIsAllDoneAndHasNoFile)
{
    progress.report(halfWay);
    progress.enterWhole(QStringLiteral("the last phase"));
    const auto written = StatusStore::loadStatus();
    ASSERT_TRUE(written);
    EXPECT_EQ(written->phase, QStringLiteral("the last phase"));
    EXPECT_EQ(written->percent, 1.0);
    EXPECT_EQ(written->currentFile, std::nullopt);
    // The rest is what was reported last.
    EXPECT_EQ(written->filesDone, 11);
    EXPECT_EQ(written->secondsRemaining, 44);
}

TEST_F(BackupProgressTest, messagesOfOtherTypesAreNeverWritten)
{
    ResticBackup backup([this](const ResticBackup::Status &status) { progress.report(status); });
    backup.handleLine(QStringLiteral(R"({"message_type":"error"})"));
    backup.handleLine(QStringLiteral(R"({"message_type":"summary"})"));
    backup.handleLine(QStringLiteral("words"));
    EXPECT_FALSE(StatusStore::loadStatus());
    // They don't use up the pause either.
    backup.handleLine(QStringLiteral(R"({"message_type":"status"})"));
    EXPECT_TRUE(StatusStore::loadStatus());
}

TEST_F(BackupProgressTest, aReportThatIsHeldBackComesWithALaterWrite)
{
    progress.report({});
    progress.report(halfWay);
    EXPECT_EQ(progress.status().totalFiles, 22);
    EXPECT_EQ(StatusStore::loadStatus()->totalFiles, 0);
    progress.enter(QStringLiteral("later"));
    EXPECT_EQ(StatusStore::loadStatus()->totalFiles, 22);
}

TEST_F(BackupProgressTest, aChangeOfPhaseIsNotHeldBackAndTakesNoTurn)
{
    progress.report({});
    clock.advance(600ms);
    progress.enter(QStringLiteral("a phase"));
    EXPECT_EQ(StatusStore::loadStatus()->phase, QStringLiteral("a phase"));
    progress.enterWhole(QStringLiteral("the last phase"));
    EXPECT_EQ(StatusStore::loadStatus()->phase, QStringLiteral("the last phase"));
    clock.advance(101ms);
    progress.report(halfWay);
    EXPECT_EQ(StatusStore::loadStatus()->filesDone, 11);
}

TEST_F(BackupProgressTest, thePauseGoesOnFromOneRunToTheNext)
{
    progress.report({});
    clock.advance(500ms);
    BackupProgress next(DestinationID::Server, start, throttle);
    next.report(halfWay);
    EXPECT_EQ(StatusStore::loadStatus()->destination, DestinationID::Drive);
    clock.advance(201ms);
    next.report(halfWay);
    EXPECT_EQ(StatusStore::loadStatus()->destination, DestinationID::Server);
}

} // namespace
