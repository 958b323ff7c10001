#include "model/UserDefaults.h"
#include "state/StatusStore.h"
#include "tests/support/AccessibleTree.h"
#include "tests/support/ScriptedRestic.h"
#include "tests/support/WindowSession.h"

#include <QDateTime>

#include <csignal>
#include <functional>

// A backup under way when the window's program ends.

namespace {

class RunningBackup : public ScriptedRestic
{
protected:
    RunningBackup() { installation.addWindow(); }
    void SetUp() override { ASSERT_TRUE(screen.isRunning()); }

    void TearDown() override
    {
        for (const QByteArray &process : notedProcesses().split('\n')) {
            if (process.toInt() > 0) {
                ::kill(process.toInt(), SIGKILL);
            }
        }
    }

    /// Lets the window start a backup as soon as it is there.
    static void haveBackupPending()
    {
        UserDefaults::set(UserDefaults::pendingAction, QStringLiteral("backup"));
        UserDefaults::set(UserDefaults::pendingActionDate, QDateTime::currentDateTimeUtc());
    }
    /// Opens the window, which starts a backup, and waits for its status; ends the window by a
    /// signal, lets the backup go on, and expects it to succeed.
    void expectItSurvives(int signal, const std::function<void(pid_t window, pid_t backup)> &look)
    {
        script("await");
        haveBackupPending();
        ShownProgram program(installation.program());
        program.start();
        ASSERT_TRUE(program.shows());
        ASSERT_TRUE(isAwaiting());
        const auto status = StatusStore::loadStatus();
        ASSERT_TRUE(status);
        look(static_cast<pid_t>(program.processId()), status->pid);
        program.send(signal);
        EXPECT_EQ(program.finish(), 0);
        EXPECT_FALSE(hasEnded(status->pid));
        EXPECT_EQ(recordCount(), 0);
        letGo();
        EXPECT_TRUE(eventually([] { return recordCount() == 1; }));
        EXPECT_EQ(newestRecord().outcome, Outcome::Ok);
        EXPECT_EQ(signalsNoted(), "");
        EXPECT_TRUE(eventually([&] { return hasEnded(status->pid); }));
    }
    static QByteArray notedProcesses() { return readFile(home() + QLatin1String("/processes")); }

    ManagedScreen screen;
};

TEST_F(RunningBackup, goesOnWhenTheWindowEnds)
{
    expectItSurvives(SIGTERM, [](pid_t window, pid_t backup) { EXPECT_NE(window, backup); });
}

TEST_F(RunningBackup, goesOnWhenAKeyInTheTerminalEndsTheWindow)
{
    // A terminal's Ctrl-C goes to the whole group of the window's process; the backup isn't in it.
    expectItSurvives(SIGINT, [](pid_t window, pid_t backup) {
        EXPECT_NE(::getpgid(window), ::getpgid(backup));
    });
}

TEST_F(RunningBackup, beginsWhenTheUserComesBackToTheWindow)
{
    script("await");
    AccessibleTree reader;
    ASSERT_TRUE(reader.isRunning());
    ShownProgram program(installation.program());
    program.start();
    ASSERT_TRUE(program.shows());
    const QString window = program.windows().value(0);
    const auto knowsThatItIsActive = [&](bool active) {
        return eventually([&] {
            const auto frame = reader.find(program.processId(), QStringLiteral("frame"),
                                           ShownProgram::mainTitle());
            return frame && frame->is("active") == active;
        });
    };
    ASSERT_TRUE(knowsThatItIsActive(true));
    haveBackupPending();
    EXPECT_FALSE(StatusStore::loadStatus());
    // The user can't come back before the program has seen them leave.
    ASSERT_TRUE(
        ManagedScreen::run(QStringLiteral("xdotool"), {QStringLiteral("windowminimize"), window}));
    ASSERT_TRUE(knowsThatItIsActive(false));
    ASSERT_TRUE(
        ManagedScreen::run(QStringLiteral("xdotool"), {QStringLiteral("windowactivate"), window}));
    EXPECT_TRUE(eventually([] { return StatusStore::loadStatus().has_value(); }));
    EXPECT_TRUE(isAwaiting());
    letGo();
    EXPECT_TRUE(eventually([] { return recordCount() == 1; }));
}

TEST_F(RunningBackup, anRcloneThatHangsHoldsUpNeitherTheWindowNorTheEnd)
{
    installation.addScript(QStringLiteral("rclone"),
                           "#!/bin/sh\necho $$ >>\"$HOME/processes\"\nexec sleep 100000\n");
    haveBackupPending();
    script("await");
    ShownProgram program(installation.program());
    program.start();
    ASSERT_TRUE(program.shows());
    ASSERT_TRUE(eventually([] { return notedProcesses().endsWith('\n'); }));
    // The start-up continues to its end, where it takes up the pending action.
    EXPECT_TRUE(isAwaiting());
    program.send(SIGTERM);
    EXPECT_EQ(program.finish(), 0);
    letGo();
}

TEST_F(RunningBackup, aRepositoryThatDoesNotAnswerDoesNotHinderTheEnd)
{
    installation.addScript(QStringLiteral("restic"),
                           "#!/bin/sh\necho $$ >>\"$HOME/processes\"\nexec sleep 100000\n");
    ShownProgram program(installation.program());
    program.start();
    ASSERT_TRUE(program.shows());
    ASSERT_TRUE(eventually([] { return notedProcesses().endsWith('\n'); }));
    program.send(SIGTERM);
    EXPECT_EQ(program.finish(), 0);
}

} // namespace
