#include "tests/support/Files.h"
#include "tools/GatheredOutput.h"
#include "tools/ProcessRunner.h"

#include <QDir>
#include <QFile>
#include <QProcess>

#include <gtest/gtest.h>

#include <chrono>
#include <thread>

namespace {

struct Followed
{
    ProcessResult result;
    QStringList lines;
};

Followed follow(const QString &script)
{
    Followed followed;
    followed.result =
        runProcess(QStringLiteral("/bin/sh"), {QStringLiteral("-c"), script},
                   {.onLine = [&followed](const QString &line) { followed.lines.append(line); }});
    return followed;
}

ProcessResult shell(const QString &script)
{
    return runProcess(QStringLiteral("/bin/sh"), {QStringLiteral("-c"), script});
}

TEST(ProcessStreams, linesGoToTheReceiverAndTheOutputStaysEmpty)
{
    const Followed followed = follow(QStringLiteral("printf 'a\\nb'; echo why >&2; exit 2"));
    EXPECT_EQ(followed.lines, QStringList({QStringLiteral("a"), QStringLiteral("b")}));
    EXPECT_EQ(followed.result.standardOutput, QString());
    EXPECT_EQ(followed.result.standardError, QStringLiteral("why\n"));
    EXPECT_EQ(followed.result.status, 2);
}

TEST(ProcessStreams, emptyLinesAreDelivered)
{
    EXPECT_EQ(follow(QStringLiteral("printf 'a\\n\\nb\\n'")).lines,
              QStringList({QStringLiteral("a"), QString(), QStringLiteral("b")}));
}

TEST(ProcessStreams, aLineOverTwoReadsIsWholeAndOnce)
{
    // The second half is written only when the first line has been delivered, hence read.
    const QString sign = QDir::homePath() + QLatin1String("/sign");
    QStringList lines;
    runProcess(QStringLiteral("/bin/sh"),
               {QStringLiteral("-c"),
                QStringLiteral("printf 'first\\nsec'; until [ -e \"$0\" ]; do sleep 0.01; done; "
                               "printf 'ond\\n'"),
                sign},
               {.onLine = [&](const QString &line) {
                   lines.append(line);
                   writeFile(sign);
               }});
    EXPECT_EQ(lines, QStringList({QStringLiteral("first"), QStringLiteral("second")}));
}

TEST(ProcessStreams, linesComeWhileTheChildRunsAndNeverOnTheCallersThread)
{
    const std::thread::id caller = std::this_thread::get_id();
    std::thread::id reader;
    bool isOneThread = true;
    runProcess(QStringLiteral("/bin/sh"), {QStringLiteral("-c"), QStringLiteral("seq 1000")},
               {.onLine = [&](const QString &) {
                   if (reader == std::thread::id()) {
                       reader = std::this_thread::get_id();
                   }
                   isOneThread = isOneThread && reader == std::this_thread::get_id();
               }});
    EXPECT_NE(reader, std::thread::id());
    EXPECT_NE(reader, caller);
    EXPECT_TRUE(isOneThread);
}

TEST(ProcessStreams, aSlowReceiverGetsEveryLineBeforeTheRunReturns)
{
    int count = 0;
    runProcess(QStringLiteral("/usr/bin/seq"), {QStringLiteral("50")},
               {.onLine = [&count](const QString &) {
                   std::this_thread::sleep_for(std::chrono::milliseconds(2));
                   ++count;
               }});
    EXPECT_EQ(count, 50);
}

TEST(ProcessStreams, aFloodOfLinesKeepsItsOrderAndLosesNothing)
{
    qint64 expected = 0;
    bool isInOrder = true;
    runProcess(QStringLiteral("/usr/bin/seq"), {QStringLiteral("300000")},
               {.onLine = [&](const QString &line) {
                   isInOrder = isInOrder && line.toLongLong() == ++expected;
               }});
    EXPECT_TRUE(isInOrder);
    EXPECT_EQ(expected, 300000);
}

TEST(ProcessStreams, linesOfOneAndOfTwentyMegabytesAreWhole)
{
    const Followed followed =
        follow(QStringLiteral("head -c 1000000 /dev/zero | tr '\\0' x; echo; "
                              "head -c 20000000 /dev/zero | tr '\\0' y; echo; echo end"));
    ASSERT_EQ(followed.lines.size(), 3);
    EXPECT_EQ(followed.lines.at(0), QString(1000000, u'x'));
    EXPECT_EQ(followed.lines.at(1), QString(20000000, u'y'));
    EXPECT_EQ(followed.lines.at(2), QStringLiteral("end"));
}

TEST(ProcessStreams, tenMegabytesOnBothStreamsAtOnceDoNotBlock)
{
    const QString script = QStringLiteral("head -c 10000000 /dev/zero | tr '\\0' e >&2 & "
                                          "head -c 10000000 /dev/zero | tr '\\0' o; wait");
    const ProcessResult result = shell(script);
    EXPECT_EQ(result.standardOutput, QString(10000000, u'o'));
    EXPECT_EQ(result.standardError, QString(10000000, u'e'));
    const Followed followed = follow(script);
    EXPECT_EQ(followed.lines, QStringList({QString(10000000, u'o')}));
    EXPECT_EQ(followed.result.standardError.size(), 10000000);
}

TEST(ProcessStreams, anAnswerThatIsFarTooLongIsAFailure)
{
    const ProcessResult result =
        shell(QStringLiteral("head -c 300000000 /dev/zero; echo words >&2"));
    EXPECT_EQ(result.status, -1);
    EXPECT_EQ(result.standardOutput, QString());
    EXPECT_EQ(result.standardError, QStringLiteral("Risposta troppo lunga"));
}

TEST(ProcessStreams, ofEndlessErrorsTheFirstAndTheLastAreKept)
{
    const ProcessResult result =
        shell(QStringLiteral("{ echo first; head -c 150000000 /dev/zero | tr '\\0' e; "
                             "echo; echo last; } >&2; exit 2"));
    EXPECT_EQ(result.status, 2);
    EXPECT_TRUE(result.standardError.startsWith(QLatin1String("first\neee")));
    EXPECT_TRUE(result.standardError.endsWith(QLatin1String("eee\nlast\n")));
    EXPECT_EQ(result.standardError.size(), 2 * EndsOfOutput::most + 1);
}

TEST(ProcessStreams, bytesThatAreNotUTF8AreRepairedEverywhere)
{
    const QChar replacement(QChar::ReplacementCharacter);
    const QString repaired = QLatin1String("caf") + replacement + QLatin1String("!\n");
    const QString script = QStringLiteral("printf 'caf\\351!\\n'; printf 'caf\\351!\\n' >&2");
    const ProcessResult result = shell(script);
    EXPECT_EQ(result.standardOutput, repaired);
    EXPECT_EQ(result.standardError, repaired);
    EXPECT_EQ(follow(script).lines, QStringList({repaired.chopped(1)}));
}

TEST(ProcessStreams, nulBytesAndMarksOfByteOrderStay)
{
    const ProcessResult result = shell(QStringLiteral("printf '\\357\\273\\277a\\0b'"));
    EXPECT_EQ(result.standardOutput,
              QChar(QChar::ByteOrderMark) + QLatin1String("a") + QChar(u'\0') + QLatin1String("b"));
}

TEST(ProcessStreams, aCarriageReturnIsNotTreated)
{
    EXPECT_EQ(follow(QStringLiteral("printf 'a\\r\\nb\\r'")).lines,
              QStringList({QStringLiteral("a\r"), QStringLiteral("b\r")}));
}

TEST(ProcessStreams, aGrandchildThatKeepsAPipeOpenKeepsTheRunWaiting)
{
    // The grandchild writes after it has seen the child end.
    const QString script =
        QStringLiteral("(until grep -q 'State:.Z' /proc/$$/status; do sleep 0.01; done; "
                       "echo late) & echo early; exit 6");
    const Followed followed = follow(script);
    EXPECT_EQ(followed.result.status, 6);
    EXPECT_EQ(followed.lines, QStringList({QStringLiteral("early"), QStringLiteral("late")}));
}

TEST(ProcessStreams, aChildThatClosesItsStreamsIsWaitedFor)
{
    const ProcessResult result = shell(QStringLiteral("exec >&- 2>&-; sleep 0.2; exit 9"));
    EXPECT_EQ(result.status, 9);
}

TEST(ProcessStreams, aStoppedAndContinuedChildHasNotEnded)
{
    const ProcessResult result = shell(QStringLiteral(
        "(sleep 0.2; kill -CONT $$) >/dev/null 2>&1 & kill -STOP $$; echo went on; exit 8"));
    EXPECT_EQ(result.status, 8);
    EXPECT_EQ(result.standardOutput, QStringLiteral("went on\n"));
}

} // namespace
