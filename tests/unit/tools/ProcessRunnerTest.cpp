#include "tools/ProcessRunner.h"
#include "tests/support/Files.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

#include <csignal>
#include <thread>
#include <vector>

namespace {

ProcessResult shell(const QString &script, const ProcessOptions &options = {})
{
    return runProcess(QStringLiteral("/bin/sh"), {QStringLiteral("-c"), script}, options);
}

QString fileWith(const QByteArray &content, QFileDevice::Permissions permissions)
{
    const QString path = QDir::homePath() + QLatin1String("/a tool");
    writeFile(path, content);
    QFile::setPermissions(path, permissions);
    return path;
}

void expectNotStarted(const ProcessResult &result)
{
    EXPECT_EQ(result.status, -1);
    EXPECT_EQ(result.standardOutput, QString());
    EXPECT_FALSE(result.standardError.isEmpty());
}

constexpr auto owner = QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner;

TEST(ProcessRunner, bothStreamsAndTheStatusComeBack)
{
    const ProcessResult result = shell(QStringLiteral("echo out; echo err >&2; exit 3"));
    EXPECT_EQ(result.status, 3);
    EXPECT_EQ(result.standardOutput, QStringLiteral("out\n"));
    EXPECT_EQ(result.standardError, QStringLiteral("err\n"));
}

TEST(ProcessRunner, argumentsArriveAsTheyAre)
{
    const QStringList words{QString(),
                            QStringLiteral(" "),
                            QStringLiteral("a b"),
                            QStringLiteral("\"'\\$HOME*`x`"),
                            QStringLiteral("line\nfeed"),
                            QStringLiteral("-n"),
                            QString::fromUtf8("\xe6\x97\xa5\xf0\x9f\x98\x80")};
    const ProcessResult result =
        runProcess(QStringLiteral("/bin/sh"),
                   QStringList{QStringLiteral("-c"), QStringLiteral("printf '[%s]' \"$@\""),
                               QStringLiteral("sh")} +
                       words);
    EXPECT_EQ(result.standardOutput, u'[' + words.join(QLatin1String("][")) + u']');
}

TEST(ProcessRunner, theProgramsNameIsItsPath)
{
    EXPECT_EQ(shell(QStringLiteral("printf %s \"$0\"")).standardOutput, QStringLiteral("/bin/sh"));
}

TEST(ProcessRunner, theInputIsFollowedByOneLineFeedAndTheEnd)
{
    const ProcessResult result =
        runProcess(QStringLiteral("/bin/cat"), {}, {.input = QStringLiteral("x")});
    EXPECT_EQ(result.standardOutput, QStringLiteral("x\n"));
}

TEST(ProcessRunner, anEmptyInputIsOneLineFeed)
{
    const ProcessResult result =
        runProcess(QStringLiteral("/bin/cat"), {}, {.input = QStringLiteral("")});
    EXPECT_EQ(result.standardOutput, QStringLiteral("\n"));
}

TEST(ProcessRunner, theInputIsUTF8)
{
    const QString text = QString::fromUtf8("\xc3\xa8 \xe6\x97\xa5 \xf0\x9f\x98\x80");
    EXPECT_EQ(runProcess(QStringLiteral("/bin/cat"), {}, {.input = text}).standardOutput,
              QString(text + u'\n'));
}

TEST(ProcessRunner, withoutInputTheStreamEndsAtOnce)
{
    const ProcessResult result = shell(QStringLiteral("cat; readlink /proc/$$/fd/0"));
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.standardOutput, QStringLiteral("/dev/null\n"));
}

TEST(ProcessRunner, anInputThatFillsThePipeToItsLastByteArrives)
{
    const QString text(65535, u'k');
    const ProcessResult result = runProcess(QStringLiteral("/bin/cat"), {}, {.input = text});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.standardOutput, QString(text + u'\n'));
}

TEST(ProcessRunner, anInputLongerThanThePipeIsAFailureAndNoChildRuns)
{
    const QString witness = QDir::homePath() + QLatin1String("/witness");
    for (const int length : {65536, 65537, 1000000}) {
        expectNotStarted(runProcess(QStringLiteral("/usr/bin/touch"), {witness},
                                    {.input = QString(length, u'k')}));
    }
    EXPECT_FALSE(QFile::exists(witness));
}

TEST(ProcessRunner, aChildNeedNotReadItsInput)
{
    const ProcessResult result = shell(QStringLiteral("exit 4"), {.input = QString(10000, u'k')});
    EXPECT_EQ(result.status, 4);
}

TEST(ProcessRunner, anEndBySignalIs128AndItsNumber)
{
    EXPECT_EQ(shell(QStringLiteral("kill -KILL $$")).status, 128 + SIGKILL);
    EXPECT_EQ(shell(QStringLiteral("kill -INT $$")).status, 128 + SIGINT);
    EXPECT_EQ(shell(QStringLiteral("kill -TERM $$")).status, 128 + SIGTERM);
}

TEST(ProcessRunner, everyExitCodeComesBack)
{
    for (const int code : {0, 1, 10, 11, 12, 127, 130, 255}) {
        EXPECT_EQ(shell(QStringLiteral("exit %1").arg(code)).status, code);
    }
}

TEST(ProcessRunner, aPathThatDoesNotExistIsReported)
{
    expectNotStarted(runProcess(QStringLiteral("/nonexistent/tool"), {}));
    expectNotStarted(runProcess(QString(), {}));
}

TEST(ProcessRunner, aFileThatIsNotExecutableIsReported)
{
    expectNotStarted(
        runProcess(fileWith("#!/bin/sh\n", QFileDevice::ReadOwner | QFileDevice::WriteOwner), {}));
}

TEST(ProcessRunner, aFolderIsReported)
{
    expectNotStarted(runProcess(QDir::homePath(), {}));
}

TEST(ProcessRunner, aScriptWithAMissingInterpreterIsReported)
{
    expectNotStarted(runProcess(fileWith("#!/nonexistent/interpreter\n", owner), {}));
}

TEST(ProcessRunner, aFileThatIsNoProgramIsReported)
{
    expectNotStarted(runProcess(fileWith(QByteArray("\0\1\2\3 nothing", 12), owner), {}));
}

TEST(ProcessRunner, aPathWithBlanksAndOtherLettersWorks)
{
    const QString folder = QDir::homePath() + QString::fromUtf8("/una citt\xc3\xa0 \"'$");
    ASSERT_TRUE(QDir().mkpath(folder));
    ASSERT_TRUE(QFile::link(QStringLiteral("/bin/echo"), folder + QLatin1String("/echo")));
    EXPECT_EQ(runProcess(folder + QLatin1String("/echo"), {QStringLiteral("hi")}).standardOutput,
              QStringLiteral("hi\n"));
}

TEST(ProcessRunner, aFailedStartLeavesTheHandleAsItWas)
{
    ProcessHandle handle;
    handle.terminate();
    expectNotStarted(runProcess(QStringLiteral("/nonexistent/tool"), {}, {.handle = &handle}));
}

TEST(ProcessRunner, manyThreadsRunChildrenAtOnce)
{
    std::vector<QString> outputs(8);
    {
        std::vector<std::jthread> threads;
        for (size_t i = 0; i < outputs.size(); ++i) {
            threads.emplace_back([i, &outputs] {
                for (int round = 0; round < 10; ++round) {
                    const QString text = QStringLiteral("%1.%2").arg(i).arg(round);
                    outputs[i] +=
                        runProcess(QStringLiteral("/bin/cat"), {}, {.input = text}).standardOutput;
                }
            });
        }
    }
    for (size_t i = 0; i < outputs.size(); ++i) {
        QString expected;
        for (int round = 0; round < 10; ++round) {
            expected += QStringLiteral("%1.%2\n").arg(i).arg(round);
        }
        EXPECT_EQ(outputs[i], expected);
    }
}

TEST(ScopedProcessRunner, answersInsteadOfTheRealOneAsLongAsItLives)
{
    {
        const ScopedProcessRunner scripted([](const QString &path, const QStringList &arguments,
                                              const ProcessOptions &options) {
            return ProcessResult{7, path + arguments.join(u','), options.input.value_or(QString())};
        });
        const ProcessResult result = runProcess(QStringLiteral("/x"), {QStringLiteral("a")},
                                                {.input = QStringLiteral("in")});
        EXPECT_EQ(result.status, 7);
        EXPECT_EQ(result.standardOutput, QStringLiteral("/xa"));
        EXPECT_EQ(result.standardError, QStringLiteral("in"));
    }
    EXPECT_EQ(shell(QStringLiteral("exit 5")).status, 5);
}

} // namespace
