#include "engine/Scheduler.h"
#include "platform/Clock.h"
#include "platform/PeriodicJob.h"
#include "tests/support/Files.h"
#include "tests/support/ReadySettings.h"
#include "tests/support/UserManager.h"
#include "tests/support/Waiting.h"
#include "tools/ProcessRunner.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>

namespace {

const QString name = QStringLiteral("it.vellomar.backup");
const QString timerUnit = name + QLatin1String(".timer");
const QString serviceUnit = name + QLatin1String(".service");
constexpr qint64 hour = 3600;

qsizetype linesOf(const QString &path)
{
    return readFile(path).count('\n');
}

class SystemdTimerIntegration : public testing::Test
{
protected:
    void SetUp() override { ASSERT_TRUE(manager.isRunning()) << manager.reason().constData(); }

    SystemdTimer job()
    {
        return {home + u"/.config", home + u"/.local/share", name, manager.runTool()};
    }

    [[nodiscard]] PeriodicJobPlan planOf(const QString &program, qint64 seconds) const
    {
        return {.executable = program,
                .arguments = {QStringLiteral("--backup")},
                .intervalSeconds = seconds,
                .errorLog = home + QLatin1String("/backup.log")};
    }

    /// A program with this text in a folder of the home.
    [[nodiscard]] QString script(const QString &path, const QByteArray &text) const
    {
        QString full = home + u'/' + path;
        writeProgram(full, "#!/bin/sh\n" + text);
        return full;
    }

    /// A program that adds one line to the file "runs" each time.
    [[nodiscard]] QString counter() const
    {
        return script(QStringLiteral("count"), "echo run >>~/runs\n");
    }
    [[nodiscard]] qsizetype runs() const { return linesOf(home + QLatin1String("/runs")); }

    /// Waits for the next whole second, the resolution of a unit's count.
    static bool comesNextSecond()
    {
        const QDateTime then = Clock::now();
        return eventually([&then] { return then.msecsTo(Clock::now()) > 1000; });
    }
    void startService() const
    {
        manager.systemctl({QStringLiteral("start"), QStringLiteral("--no-block"), serviceUnit});
    }
    [[nodiscard]] bool comesToState(const QString &state) const
    {
        return eventually(
            [&] { return manager.property(serviceUnit, QStringLiteral("ActiveState")) == state; });
    }
    /// Seconds from now to the timer's next run.
    [[nodiscard]] qint64 secondsToNextRun() const
    {
        const QString next = manager.property(timerUnit, QStringLiteral("NextElapseUSecRealtime"));
        const auto answer = manager.run(QStringLiteral("/usr/bin/date"),
                                        {QStringLiteral("--date"), next, QStringLiteral("+%s")});
        return answer.output.toLongLong() - QDateTime::currentSecsSinceEpoch();
    }
    /// Makes systemd believe that the timer's last run was this long ago.
    void setLastRun(qint64 secondsAgo) const
    {
        const QByteArray path = stamp().toUtf8();
        const timespec moment{QDateTime::currentSecsSinceEpoch() - secondsAgo, 0};
        const timespec times[] = {moment, moment};
        ASSERT_EQ(::utimensat(AT_FDCWD, path.constData(), times, 0), 0) << path.constData();
    }
    [[nodiscard]] QString stamp() const
    {
        return home + QLatin1String("/.local/share/systemd/timers/stamp-") + timerUnit;
    }

    /// A tool of the system run beside the manager, as the program's runner gives its result.
    [[nodiscard]] ProcessResult ran(const QString &path, const QStringList &arguments) const
    {
        const PeriodicJob::Answer answer = manager.run(path, arguments);
        return {.status = answer.status, .standardOutput = answer.output, .standardError = {}};
    }

    const QString home = QDir::homePath();
    const QString units = home + QLatin1String("/.config/systemd/user/");
    UserManager manager;
};

TEST_F(SystemdTimerIntegration, theScheduleRunsTheProgramByItselfAgainAndAgain)
{
    static constexpr qint64 interval = 5;
    const QDateTime established = Clock::now();
    job().establish(planOf(counter(), interval));
    EXPECT_GT(secondsToNextRun(), 0);
    ASSERT_TRUE(eventually([this] { return runs() >= 1; }));
    // Whole seconds are counted, so the first may come up to one earlier.
    EXPECT_GE(established.secsTo(Clock::now()), interval - 1);
    ASSERT_TRUE(eventually([this] { return runs() >= 2; }));
    EXPECT_EQ(manager.property(serviceUnit, QStringLiteral("Result")), QStringLiteral("success"));
}

TEST_F(SystemdTimerIntegration, aRunHasLowPriorityAndItsErrorsGoToTheLog)
{
    const QString program =
        script(QStringLiteral("a b/100%/\"q\" 'r'/$HOME/c\\d/è備"),
               "echo \"error of $*\" >&2\necho output\ncut -d' ' -f19 /proc/self/stat >~/nice\n"
               "ionice -p $$ >~/ionice\nprintf '%s' \"$0\" >~/name\nenv >~/environment\necho run "
               ">>~/runs\n");
    PeriodicJobPlan plan = planOf(program, 5);
    plan.errorLog = home + QLatin1String("/a b/100%/\"q\" 'r'/backup.log");
    writeFile(plan.errorLog, "a line from before\n");
    job().establish(plan);
    ASSERT_TRUE(eventually([this] { return runs() >= 1; }));
    EXPECT_EQ(readFile(home + QLatin1String("/name")), program.toUtf8());
    EXPECT_EQ(readFile(home + QLatin1String("/nice")), QByteArray("10\n"));
    EXPECT_EQ(readFile(home + QLatin1String("/ionice")).trimmed().left(4), QByteArray("idle"));
    EXPECT_TRUE(readFile(plan.errorLog).startsWith("a line from before\nerror of --backup\n"))
        << readFile(plan.errorLog).constData();
    EXPECT_FALSE(readFile(plan.errorLog).contains("output"));
    EXPECT_FALSE(readFile(home + QLatin1String("/environment")).contains("DISPLAY="));
}

TEST_F(SystemdTimerIntegration, aSecondCallChangesAndRestartsNothing)
{
    const QString program = counter();
    job().establish(planOf(program, hour));
    const auto state = [this] {
        QStringList all{
            manager.property(timerUnit, QStringLiteral("ActiveEnterTimestampMonotonic")),
            manager.property(timerUnit, QStringLiteral("NextElapseUSecRealtime")),
            manager.property(timerUnit, QStringLiteral("UnitFileState"))};
        for (const QString &unit : {timerUnit, serviceUnit}) {
            all.append(QFileInfo(units + unit).lastModified().toString(Qt::ISODateWithMs));
        }
        return all;
    };
    const QStringList before = state();
    EXPECT_EQ(before.at(2), QStringLiteral("enabled"));
    ASSERT_TRUE(comesNextSecond());
    job().establish(planOf(program, hour));
    EXPECT_EQ(state(), before);
}

TEST_F(SystemdTimerIntegration, theFirstRunComesOneIntervalAfterLoading)
{
    const QString program = counter();
    for (const qint64 hours : {1, 2, 4, 6, 12, 24}) {
        job().establish(planOf(program, hours * hour));
        EXPECT_NEAR(static_cast<double>(secondsToNextRun()), static_cast<double>(hours * hour), 60)
            << hours;
    }
    // A calendar can't say every five hours; the interval runs from the loading.
    job().establish(planOf(program, 5 * hour));
    EXPECT_EQ(manager.property(timerUnit, QStringLiteral("ActiveState")), QStringLiteral("active"));
    EXPECT_TRUE(manager.property(timerUnit, QStringLiteral("TimersMonotonic"))
                    .contains(QLatin1String("OnActiveUSec=5h")));
    EXPECT_EQ(runs(), 0);
}

TEST_F(SystemdTimerIntegration, runsMissedWhileItWasOffAreOneRunSoonAfter)
{
    const QString program = counter();
    job().establish(planOf(program, hour));
    manager.stop();
    setLastRun(5 * hour + hour / 2);
    manager.start();
    ASSERT_TRUE(manager.isRunning()) << manager.reason().constData();
    ASSERT_TRUE(eventually([this] { return runs() >= 1; }));
    ASSERT_TRUE(comesToState(QStringLiteral("inactive")));
    EXPECT_EQ(runs(), 1);
    const qint64 next = secondsToNextRun();
    EXPECT_GT(next, 0);
    EXPECT_LE(next, hour);
    // And the schedule is still as planned.
    job().establish(planOf(program, hour));
    EXPECT_EQ(runs(), 1);
}

TEST_F(SystemdTimerIntegration, nothingIsMadeUpForWhenNothingWasMissed)
{
    job().establish(planOf(counter(), hour));
    const qint64 next = secondsToNextRun();
    manager.stop();
    manager.start();
    ASSERT_TRUE(manager.isRunning()) << manager.reason().constData();
    EXPECT_EQ(manager.property(timerUnit, QStringLiteral("ActiveState")), QStringLiteral("active"));
    EXPECT_NEAR(static_cast<double>(secondsToNextRun()), static_cast<double>(next), 60);
    EXPECT_EQ(runs(), 0);
}

TEST_F(SystemdTimerIntegration, anotherIntervalDoesNotRunAtOnce)
{
    const QString program = counter();
    job().establish(planOf(program, hour));
    setLastRun(30 * hour);
    ASSERT_TRUE(comesNextSecond());
    job().establish(planOf(program, 2 * hour));
    EXPECT_NEAR(static_cast<double>(secondsToNextRun()), 2.0 * hour, 60);
    EXPECT_EQ(manager.property(serviceUnit, QStringLiteral("ActiveState")),
              QStringLiteral("inactive"));
    EXPECT_EQ(runs(), 0);
}

TEST_F(SystemdTimerIntegration, aLastRunOfUnitsThatSomebodyDeletedDoesNotCount)
{
    const QString program = counter();
    job().establish(planOf(program, hour));
    manager.stop();
    setLastRun(30 * hour);
    ASSERT_TRUE(QDir(units).removeRecursively());
    manager.start();
    ASSERT_TRUE(manager.isRunning()) << manager.reason().constData();
    job().establish(planOf(program, hour));
    EXPECT_NEAR(static_cast<double>(secondsToNextRun()), 1.0 * hour, 60);
    EXPECT_EQ(runs(), 0);
}

TEST_F(SystemdTimerIntegration, removalLeavesNothingButTheRunThatGoesOn)
{
    const QString program = script(QStringLiteral("wait"),
                                   "echo run >>~/runs\n"
                                   "until [ -e ~/go ]; do sleep 0.05; done\necho end >>~/runs\n");
    job().establish(planOf(program, hour));
    startService();
    ASSERT_TRUE(eventually([this] { return runs() == 1; }));
    job().remove();
    EXPECT_EQ(manager.property(timerUnit, QStringLiteral("LoadState")),
              QStringLiteral("not-found"));
    EXPECT_EQ(manager.property(serviceUnit, QStringLiteral("ActiveState")),
              QStringLiteral("activating"));
    EXPECT_FALSE(QFile::exists(stamp()));
    EXPECT_FALSE(QFile::exists(units + timerUnit));
    EXPECT_FALSE(QFile::exists(units + serviceUnit));
    EXPECT_TRUE(QDir(units + QLatin1String("timers.target.wants")).isEmpty());

    writeFile(home + QLatin1String("/go"));
    EXPECT_TRUE(eventually([this] { return runs() == 2; }));
    EXPECT_TRUE(comesToState(QStringLiteral("inactive")));
}

TEST_F(SystemdTimerIntegration, aProgramThatWasMovedIsFollowedAtTheNextCall)
{
    const QString program = counter();
    job().establish(planOf(program, hour));
    const QString moved = home + QLatin1String("/another place");
    ASSERT_TRUE(QFile::rename(program, moved));
    startService();
    ASSERT_TRUE(comesToState(QStringLiteral("failed")));
    job().establish(planOf(moved, hour));
    startService();
    EXPECT_TRUE(eventually([this] { return runs() == 1; }));
    EXPECT_TRUE(comesToState(QStringLiteral("inactive")));
}

TEST_F(SystemdTimerIntegration, aStoppedTimerIsStartedAgainAtTheNextCall)
{
    const QString program = counter();
    job().establish(planOf(program, hour));
    manager.systemctl({QStringLiteral("disable"), QStringLiteral("--now"), timerUnit});
    ASSERT_EQ(manager.property(timerUnit, QStringLiteral("ActiveState")),
              QStringLiteral("inactive"));
    job().establish(planOf(program, hour));
    EXPECT_EQ(manager.property(timerUnit, QStringLiteral("ActiveState")), QStringLiteral("active"));
    EXPECT_EQ(manager.property(timerUnit, QStringLiteral("UnitFileState")),
              QStringLiteral("enabled"));
    EXPECT_EQ(runs(), 0);
}

TEST_F(SystemdTimerIntegration, aRunGetsTheVariablesOfThePlanAsTheyAre)
{
    const QString odd = QStringLiteral("/a b/100%h/\"q\" 'r'/$HOME/${HOME}/c\\d/è");
    PeriodicJobPlan plan =
        planOf(script(QStringLiteral("tell"), "printf %s \"$XDG_DATA_HOME\" >~/told\n"), hour);
    plan.environment = {{QStringLiteral("XDG_DATA_HOME"), odd}};
    job().establish(plan);
    manager.systemctl({QStringLiteral("start"), serviceUnit});
    EXPECT_EQ(QString::fromUtf8(readFile(home + QLatin1String("/told"))), odd);
}

TEST_F(SystemdTimerIntegration, aShellWithFoldersOfItsOwnMakesATimerThatRunsAmongThem)
{
    const ScopedProcessRunner runner(
        [this](const QString &path, const QStringList &arguments, const ProcessOptions &) {
            return ran(path, arguments);
        });
    // The manager was started without them.
    qputenv("XDG_CONFIG_HOME", QFile::encodeName(home) + "/my settings");
    qputenv("XDG_DATA_HOME", QFile::encodeName(home) + "/my data");
    AppConfig config = readySettings();
    Scheduler::sync(config);
    EXPECT_EQ(manager.property(timerUnit, QStringLiteral("ActiveState")), QStringLiteral("active"));
    const QString environment = manager.property(serviceUnit, QStringLiteral("Environment"));
    EXPECT_TRUE(environment.contains(home + QLatin1String("/my settings")))
        << environment.toStdString();
    EXPECT_TRUE(environment.contains(home + QLatin1String("/my data")));

    config.autoBackup = false;
    Scheduler::sync(config);
    EXPECT_EQ(manager.property(timerUnit, QStringLiteral("LoadState")),
              QStringLiteral("not-found"));
    EXPECT_TRUE(QDir(units).entryList(QDir::Files).isEmpty());
}

TEST_F(SystemdTimerIntegration, theSettingsAloneMakeAndRemoveTheRealTimer)
{
    const ScopedProcessRunner runner(
        [this](const QString &path, const QStringList &arguments, const ProcessOptions &) {
            return ran(path, arguments);
        });
    AppConfig config = readySettings();
    config.intervalHours = 4;
    Scheduler::sync(config);
    EXPECT_NEAR(static_cast<double>(secondsToNextRun()), 4.0 * hour, 60);
    EXPECT_TRUE(manager.property(serviceUnit, QStringLiteral("ExecStart"))
                    .contains(QFileInfo(QStringLiteral("/proc/self/exe")).symLinkTarget()));
    config.autoBackup = false;
    Scheduler::sync(config);
    EXPECT_EQ(manager.property(timerUnit, QStringLiteral("LoadState")),
              QStringLiteral("not-found"));
}

} // namespace
