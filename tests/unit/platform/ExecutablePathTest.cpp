#include "platform/ExecutablePath.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>

#include <gtest/gtest.h>

#include <unistd.h>

TEST(ExecutablePath, ownPathIsThatOfThisProcess)
{
    const auto own = ownExecutablePath();
    ASSERT_TRUE(own);
    EXPECT_EQ(QFileInfo(*own).fileName(), QStringLiteral("ExecutablePathTest"));
    EXPECT_EQ(executablePath(::getpid()), own);
}

TEST(ExecutablePath, isTheFileThatRunsAlsoWhenItIsDeleted)
{
    const QString program =
        QFileInfo(QDir::homePath()).canonicalFilePath() + QLatin1String("/a program è");
    ASSERT_TRUE(QFile::copy(QFileInfo(QStringLiteral("/bin/sleep")).canonicalFilePath(), program));
    QProcess process;
    process.start(program, {QStringLiteral("600")});
    ASSERT_TRUE(process.waitForStarted());
    const auto pid = static_cast<pid_t>(process.processId());
    EXPECT_EQ(executablePath(pid), program);
    QFile::remove(program);
    EXPECT_EQ(executablePath(pid), program);
    process.kill();
    process.waitForFinished();
    EXPECT_FALSE(executablePath(pid));
}

TEST(ExecutablePath, isAbsentForWhatIsNoProcess)
{
    for (const pid_t pid : {0, -1, -::getpid(), 2147483647}) {
        EXPECT_FALSE(executablePath(pid)) << pid;
    }
}

TEST(WasStartedWith, knowsWholeWordsOfAProcessThatRuns)
{
    QProcess process;
    process.start(QStringLiteral("/bin/cat"), {QStringLiteral("--"), QStringLiteral("-"),
                                               QStringLiteral("a word"), QStringLiteral("-b")});
    ASSERT_TRUE(process.waitForStarted());
    const auto pid = static_cast<pid_t>(process.processId());
    EXPECT_TRUE(wasStartedWith(pid, "/bin/cat"));
    EXPECT_TRUE(wasStartedWith(pid, "a word"));
    EXPECT_TRUE(wasStartedWith(pid, "-b"));
    EXPECT_FALSE(wasStartedWith(pid, "a"));
    EXPECT_FALSE(wasStartedWith(pid, "--b"));
    process.kill();
    process.waitForFinished();
    EXPECT_FALSE(wasStartedWith(pid, "-b"));
    EXPECT_FALSE(wasStartedWith(-1, "-b"));
}
