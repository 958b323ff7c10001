#include "model/Background.h"
#include "tests/support/Cycle.h"
#include "tests/support/EventLoop.h"
#include "tests/support/Files.h"
#include "tests/support/PlainDesktop.h"
#include "tests/support/Waiting.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <gtest/gtest.h>

#include <unistd.h>

// What a desktop does for real without a window.

namespace {

class DesktopTest : public testing::Test
{
protected:
    ~DesktopTest() override { Background::waitForAll(); }

    /// Runs a shell script as a program that goes on by itself.
    bool startScript(const QString &script)
    {
        return desktop.startDetached(QStringLiteral("/bin/sh"),
                                     {QStringLiteral("-c"), script, QStringLiteral("first word")});
    }

    static QByteArray content(const QString &name)
    {
        return readFile(QDir::homePath() + u'/' + name);
    }

    TestApplication application;
    PlainDesktop desktop;
};

TEST_F(DesktopTest, aDetachedProgramHasEnvironmentAndFolderButNoOutputOfOurs)
{
    qputenv("A_WORD", "of the environment");
    ASSERT_TRUE(startScript(QStringLiteral("echo noise; echo noise >&2; "
                                           "readlink /proc/$$/fd/0 /proc/$$/fd/1 /proc/$$/fd/2 "
                                           "| cat >\"$HOME/fds\"; pwd >\"$HOME/folder\"; "
                                           "echo \"$A_WORD, $0\" >\"$HOME/words.part\"; "
                                           "mv \"$HOME/words.part\" \"$HOME/words\"")));
    ASSERT_TRUE(
        eventually([] { return QFileInfo::exists(QDir::homePath() + QLatin1String("/words")); }));
    EXPECT_EQ(content(QStringLiteral("words")), "of the environment, first word\n");
    EXPECT_EQ(content(QStringLiteral("folder")), QFile::encodeName(QDir::currentPath()) + '\n');
    EXPECT_EQ(content(QStringLiteral("fds")), "/dev/null\n/dev/null\n/dev/null\n");
}

TEST_F(DesktopTest, aDetachedProgramLeavesNoDeadEntryBehind)
{
    ASSERT_TRUE(startScript(QStringLiteral("echo $$ >\"$HOME/pid\"")));
    ASSERT_TRUE(eventually([] { return !content(QStringLiteral("pid")).isEmpty(); }));
    const qint64 pid = content(QStringLiteral("pid")).trimmed().toLongLong();
    ASSERT_TRUE(eventually([pid] { return hasEnded(pid); }));
    EXPECT_TRUE(childrenOf(::getpid()).isEmpty());
}

TEST_F(DesktopTest, aProgramThatIsNotThereIsNotStarted)
{
    EXPECT_FALSE(desktop.startDetached(QStringLiteral("/no/such/program"), {}));
    EXPECT_TRUE(childrenOf(::getpid()).isEmpty());
}

TEST_F(DesktopTest, whatIsDueLaterIsDoneInItsOrder)
{
    QString order;
    desktop.after(std::chrono::milliseconds(60), [&order] { order += u'b'; });
    desktop.after(std::chrono::milliseconds(10), [&order] { order += u'a'; });
    EXPECT_TRUE(order.isEmpty());
    EXPECT_TRUE(eventuallyInLoop([&order] { return order.size() == 2; }));
    EXPECT_EQ(order, QStringLiteral("ab"));
}

TEST_F(DesktopTest, askingForNotificationsDoesNotWait)
{
    // There is no bus to answer; the asking goes on elsewhere.
    desktop.requestNotificationPermission();
    Background::waitForAll();
    EXPECT_TRUE(desktop.hasFullDiskAccess());
}

} // namespace
