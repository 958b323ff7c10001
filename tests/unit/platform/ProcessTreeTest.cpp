#include "platform/ProcessTree.h"

#include "tests/support/Waiting.h"

#include <QProcess>

#include <gtest/gtest.h>

#include <unistd.h>

namespace {

// How many processes run under a name.
qsizetype running(const QByteArray &name)
{
    QProcess list;
    list.start(QStringLiteral("/bin/ps"), {QStringLiteral("-eo"), QStringLiteral("args")});
    list.waitForFinished();
    return list.readAllStandardOutput().split('\n').count(name + " 600");
}

} // namespace

TEST(ProcessTree, aProcessThatStartedNothingHasNoDescendants)
{
    EXPECT_EQ(descendants(::getpid()), QList<pid_t>());
    EXPECT_EQ(descendants(-1), QList<pid_t>());
}

TEST(ProcessTree, childrenAndTheirChildrenAreFoundWhateverTheirNameAndGroup)
{
    QProcess shell;
    // The name of the second has brackets, which /proc puts around names.
    shell.start(QStringLiteral("/bin/bash"),
                {QStringLiteral("-c"),
                 QStringLiteral("set -m; (printf ') S 1 (' >/proc/self/comm; sleep 600 & "
                                "echo $BASHPID $!; wait) & wait")});
    ASSERT_TRUE(shell.waitForReadyRead());
    QList<pid_t> expected{static_cast<pid_t>(shell.processId())};
    const QByteArrayList ids = shell.readLine().trimmed().split(' ');
    for (const QByteArray &process : ids) {
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

TEST(ProcessTree, nothingIsLeftOfAProcessThatKeepsStartingOthers)
{
    const QByteArray name = "started-by-" + QByteArray::number(::getpid());
    QProcess shell;
    // Each in a group of its own, and two deep.
    shell.start(
        QStringLiteral("/bin/bash"),
        {QStringLiteral("-c"),
         QStringLiteral("set -m; (for i in {1..1000}; do "
                        "(sleep 0; (exec -a \"$0\" sleep 600); :) & echo; done; wait) & wait"),
         QString::fromLatin1(name)});
    ASSERT_TRUE(eventually([&] { return running(name) > 5; }));
    killTree(static_cast<pid_t>(shell.processId()));
    shell.waitForFinished();
    // A killed one is listed until it is reaped.
    EXPECT_TRUE(eventually([&] { return running(name) == 0; }));
}
