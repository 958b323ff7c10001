#include "tests/support/Cycle.h"
#include "tests/support/CycleHome.h"

#include "state/StatusStore.h"

#include <QRandomGenerator>

#include <unistd.h>

namespace {

using FullDisk = CycleHome;

QByteArray randomBytes(qsizetype count)
{
    QByteArray bytes(count, Qt::Uninitialized);
    QRandomGenerator::system()->fillRange(reinterpret_cast<quint32 *>(bytes.data()), count / 4);
    return bytes;
}

QStringList ownMounts()
{
    // Who isn't root may still mount in a name space of users of its own.
    QStringList options{QStringLiteral("--mount")};
    if (::geteuid() != 0) {
        options << QStringLiteral("--map-current-user") << QStringLiteral("--keep-caps");
    }
    return options;
}

TEST_F(FullDisk, theRunFailsWithResticsWordsAndTheNextOneWithRoomIsWell)
{
    writeFile(source + QLatin1String("/big"), randomBytes(40'000'000));
    qputenv("RESTIC_REPOSITORY", repository.toUtf8());
    qputenv("RESTIC_PASSWORD", "key of the test's repositories");
    QProcess shell;
    shell.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    shell.start(QStringLiteral("unshare"),
                ownMounts() +
                    QStringList{QStringLiteral("sh"), QStringLiteral("-c"),
                                QStringLiteral("mount -t tmpfs -o size=12m tmpfs \"$1\" || exit\n"
                                               "\"$2\" --backup --manual; echo $?\n"
                                               "cp \"$HOME/.local/share/Vellomar/history.json\" "
                                               "\"$HOME/first.json\"\n"
                                               "mount -o remount,size=300m \"$1\" || exit\n"
                                               "\"$2\" --backup --manual; echo $?\n"
                                               "\"$3\" check --quiet >&2; echo $?\n"),
                                QStringLiteral("sh"), disk, Installation::builtProgram(),
                                resticProgram});
    ASSERT_TRUE(shell.waitForFinished(240000));
    EXPECT_EQ(shell.readAllStandardOutput(), "1\n0\n0\n");

    const QList<RunRecord> history = StatusStore::loadHistory();
    ASSERT_EQ(history.size(), 2);
    EXPECT_EQ(history[1].outcome, Outcome::Failed);
    EXPECT_TRUE(history[1].message.contains(QLatin1String("no space left on device")))
        << history[1].message.toStdString();
    EXPECT_EQ(history[1].filesNew, 0);
    EXPECT_EQ(history[1].dataAdded, 0);
    EXPECT_EQ(history[0].outcome, Outcome::Ok);
    EXPECT_EQ(history[0].filesNew, 3);
    EXPECT_FALSE(isThere("status.json"));
    // The failed run had reported it to the window before the next one began.
    EXPECT_TRUE(readFile(home() + QLatin1String("/first.json")).contains("\"failed\""));
}

} // namespace
