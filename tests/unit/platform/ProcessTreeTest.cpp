#include "platform/ProcessTree.h"

#include <QProcess>

#include <gtest/gtest.h>

#include <unistd.h>

TEST(ProcessTree, aProcessThatStartedNothingHasNoDescendants)
{
    EXPECT_EQ(descendants(::getpid()), QList<pid_t>());
    EXPECT_EQ(descendants(-1), QList<pid_t>());
}

TEST(ProcessTree, childrenAndTheirChildrenAreFoundWhateverTheirNameAndGroup)
{
    QProcess shell;
    // The name of the second holds what the system's listing puts around names.
    shell.start(QStringLiteral("/bin/bash"),
                {QStringLiteral("-c"),
                 QStringLiteral("set -m; (printf ') S 1 (' >/proc/self/comm; sleep 600 & "
                                "echo $BASHPID $!; wait) & wait")});
    ASSERT_TRUE(shell.waitForReadyRead());
    QList<pid_t> expected{static_cast<pid_t>(shell.processId())};
    const QByteArrayList told = shell.readLine().trimmed().split(' ');
    for (const QByteArray &process : told) {
        expected.append(process.toInt());
    }
    ASSERT_EQ(expected.size(), 3);
    EXPECT_EQ(descendants(::getpid()), expected);
    EXPECT_EQ(descendants(expected.first()), expected.sliced(1));
    for (const pid_t process : expected) {
        ::kill(process, SIGKILL);
    }
    shell.waitForFinished();
}
