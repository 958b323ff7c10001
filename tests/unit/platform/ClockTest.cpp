#include "platform/Clock.h"

#include "tests/support/ManualClock.h"

#include <QFile>

#include <gtest/gtest.h>

#include <cstdlib>

#include <sched.h>
#include <sys/wait.h>
#include <unistd.h>

TEST(Clock, givesTheSystemsTimeInUTC)
{
    const QDateTime before = QDateTime::currentDateTimeUtc();
    const QDateTime now = Clock::now();
    EXPECT_EQ(now.timeSpec(), Qt::UTC);
    EXPECT_LE(before, now);
    EXPECT_LE(now, QDateTime::currentDateTimeUtc());
    const auto reading = Clock::steady();
    EXPECT_LE(reading, Clock::steady());
}

namespace {

constexpr int night = 8 * 3600;

// A process in a time namespace whose machine has been up for a night longer than the other clocks
// know of, as after suspend. The exit code says whether the reading includes it.
void readAfterANight()
{
    const auto before = Clock::steady();
    // Who isn't root may do so in a name space of users of its own.
    const int users = ::geteuid() == 0 ? 0 : CLONE_NEWUSER;
    if (::unshare(CLONE_NEWTIME | users) != 0) {
        std::_Exit(EXIT_FAILURE);
    }
    QFile offsets(QStringLiteral("/proc/self/timens_offsets"));
    offsets.open(QIODevice::WriteOnly);
    offsets.write("boottime " + QByteArray::number(night) + " 0");
    offsets.close();
    // The namespace holds for children alone.
    const pid_t child = ::fork();
    if (child == 0) {
        std::_Exit(Clock::steady() - before >= std::chrono::seconds(night) ? 42 : EXIT_FAILURE);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    std::_Exit(WEXITSTATUS(status));
}

} // namespace

TEST(Clock, itsReadingCountsTheTimeAsleep)
{
    EXPECT_EXIT(readAfterANight(), testing::ExitedWithCode(42), "");
}

TEST(Clock, anotherIsInForceForItsLifeAlone)
{
    ManualClock manual;
    {
        const ScopedClock inForce(manual);
        const auto reading = Clock::steady();
        EXPECT_EQ(Clock::now(), manual.moment());
        manual.advance(std::chrono::seconds(5));
        EXPECT_EQ(Clock::now(), manual.moment());
        EXPECT_EQ(Clock::steady() - reading, std::chrono::seconds(5));
    }
    EXPECT_NE(Clock::now(), manual.moment());
}
