#include "platform/PeriodicJob.h"
#include "tests/support/Files.h"
#include "tests/support/ManualClock.h"
#include "tests/support/OrdinaryUser.h"
#include "tests/support/RecordedTools.h"
#include "tests/support/SmallDisk.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::ElementsAre;

namespace {

QStringList call(const QString &words)
{
    return QStringList{QStringLiteral("/usr/bin/systemctl"), QStringLiteral("--user")} +
           words.split(u' ');
}

const QStringList asked =
    call(QStringLiteral("show --property=ActiveState,UnitFileState job.timer"));
const QStringList stopped = call(QStringLiteral("stop job.timer"));
const QStringList reloaded = call(QStringLiteral("daemon-reload"));
const QStringList enabled = call(QStringLiteral("enable --now job.timer"));
const QStringList disabled = call(QStringLiteral("disable --now job.timer"));

PeriodicJobPlan every(qint64 seconds)
{
    return {.executable = QStringLiteral("/opt/vellomar/bin/vellomar"),
            .arguments = {QStringLiteral("--backup")},
            .intervalSeconds = seconds,
            .errorLog = QStringLiteral("/home/anna/backup.log")};
}

class SystemdTimerTest : public testing::Test
{
protected:
    SystemdTimer job()
    {
        return {home + u"/settings", home + u"/data", QStringLiteral("job"), systemctl.runTool()};
    }
    [[nodiscard]] QByteArray timer() const { return readFile(folder + u"/job.timer"); }
    [[nodiscard]] QByteArray service() const { return readFile(folder + u"/job.service"); }

    /// The lines of the timer between its accuracy and its section's beginning.
    [[nodiscard]] QString schedule() const
    {
        static const QRegularExpression lines(QStringLiteral("\\[Timer\\]\n(.*)\nAccuracySec="),
                                              QRegularExpression::DotMatchesEverythingOption);
        return lines.match(QString::fromUtf8(timer())).captured(1);
    }

    /// What a setting of the service says.
    [[nodiscard]] QString setting(const QString &name) const
    {
        const QStringList lines = QString::fromUtf8(service()).split(u'\n');
        const QStringList found = lines.filter(QRegularExpression(u'^' + name + u'='));
        return found.size() == 1 ? found.first().mid(name.size() + 1) : QString();
    }

    const QString home = QDir::homePath();
    const QString folder = home + u"/settings/systemd/user";
    ManualClock clock{QDateTime::fromString(QStringLiteral("2026-03-01T10:12:44Z"), Qt::ISODate)};
    ScopedClock scope{clock};
    RecordedSystemctl systemctl;
};

TEST_F(SystemdTimerTest, theUnitsSayAllThatTheJobNeeds)
{
    job().establish(every(3600));
    EXPECT_EQ(timer(), QByteArray("# Counted from 2026-03-01T10:12:44Z\n"
                                  "[Unit]\n"
                                  "Description=Vellomar: backup pianificato\n"
                                  "\n"
                                  "[Timer]\n"
                                  "OnCalendar=*-*-* 00/1:12:44 UTC\n"
                                  "Persistent=true\n"
                                  "AccuracySec=60\n"
                                  "\n"
                                  "[Install]\n"
                                  "WantedBy=timers.target\n"));
    EXPECT_EQ(service(), QByteArray("[Unit]\n"
                                    "Description=Vellomar: backup pianificato\n"
                                    "\n"
                                    "[Service]\n"
                                    "Type=oneshot\n"
                                    "ExecStart=:/bin/sh -c \"exec \\\"$0\\\" \\\"$@\\\"\" "
                                    "\"/opt/vellomar/bin/vellomar\" \"--backup\"\n"
                                    "StandardError=append:/home/anna/backup.log\n"
                                    "Nice=10\n"
                                    "IOSchedulingClass=idle\n"
                                    "KillMode=mixed\n"));
    EXPECT_EQ(QDir(folder).entryList(QDir::Files),
              QStringList({QStringLiteral("job.service"), QStringLiteral("job.timer")}));
}

struct Schedule
{
    qint64 seconds;
    const char *lines;
};

class SystemdTimerSchedule : public SystemdTimerTest, public testing::WithParamInterface<Schedule>
{
};

TEST_P(SystemdTimerSchedule, liesWholeIntervalsFromTheStart)
{
    job().establish(every(GetParam().seconds));
    EXPECT_EQ(schedule(), QString::fromLatin1(GetParam().lines));
}

INSTANTIATE_TEST_SUITE_P(
    hoursThatDivideTheDay, SystemdTimerSchedule,
    testing::Values(Schedule{3600, "OnCalendar=*-*-* 00/1:12:44 UTC\nPersistent=true"},
                    Schedule{7200, "OnCalendar=*-*-* 00/2:12:44 UTC\nPersistent=true"},
                    Schedule{10800, "OnCalendar=*-*-* 01/3:12:44 UTC\nPersistent=true"},
                    Schedule{14400, "OnCalendar=*-*-* 02/4:12:44 UTC\nPersistent=true"},
                    Schedule{21600, "OnCalendar=*-*-* 04/6:12:44 UTC\nPersistent=true"},
                    Schedule{43200, "OnCalendar=*-*-* 10/12:12:44 UTC\nPersistent=true"},
                    Schedule{86400, "OnCalendar=*-*-* 10:12:44 UTC\nPersistent=true"}));

INSTANTIATE_TEST_SUITE_P(
    minutesAndSeconds, SystemdTimerSchedule,
    testing::Values(Schedule{1800, "OnCalendar=*-*-* *:12/30:44 UTC\nPersistent=true"},
                    Schedule{60, "OnCalendar=*-*-* *:00/1:44 UTC\nPersistent=true"},
                    Schedule{10, "OnCalendar=*-*-* *:*:04/10 UTC\nPersistent=true"},
                    Schedule{5, "OnCalendar=*-*-* *:*:04/5 UTC\nPersistent=true"}));

// A calendar can't express them, so a timer relative to the last run does.
INSTANTIATE_TEST_SUITE_P(
    intervalsThatDivideNothing, SystemdTimerSchedule,
    testing::Values(Schedule{18000, "OnActiveSec=18000\nOnUnitActiveSec=18000"},
                    Schedule{172800, "OnActiveSec=172800\nOnUnitActiveSec=172800"},
                    Schedule{90, "OnActiveSec=90\nOnUnitActiveSec=90"},
                    Schedule{7, "OnActiveSec=7\nOnUnitActiveSec=7"}));

TEST_F(SystemdTimerTest, aRunMayBeASixtiethOfItsIntervalLateButNoMoreThanAMinute)
{
    for (const auto &[interval, accuracy] : QList<std::pair<int, int>>{
             {30, 1}, {120, 2}, {600, 10}, {3600, 60}, {3660, 60}, {86400, 60}}) {
        job().establish(every(interval));
        const QByteArray line = "\nAccuracySec=" + QByteArray::number(accuracy) + '\n';
        EXPECT_TRUE(timer().contains(line)) << timer().constData();
    }
}

TEST_F(SystemdTimerTest, oddCharactersAreQuotedAsSystemdReadsThem)
{
    PeriodicJobPlan plan = every(3600);
    plan.executable = QStringLiteral("/a b/100%/\"q\" 'r'/$HOME/c\\d/è備/n\nt\t");
    plan.errorLog = QStringLiteral("/a b/100%/\"q\"/è備/backup.log");
    job().establish(plan);
    EXPECT_EQ(
        setting(QStringLiteral("ExecStart")),
        QStringLiteral(":/bin/sh -c \"exec \\\"$0\\\" \\\"$@\\\"\" "
                       "\"/a b/100%%/\\\"q\\\" 'r'/$HOME/c\\\\d/è備/n\\nt\\t\" \"--backup\""));
    EXPECT_EQ(setting(QStringLiteral("StandardError")),
              QStringLiteral("append:/a b/100%%/\"q\"/è備/backup.log"));
}

TEST_F(SystemdTimerTest, variablesAreQuotedToo)
{
    PeriodicJobPlan plan = every(3600);
    plan.environment = {
        {QStringLiteral("XDG_CONFIG_HOME"), QStringLiteral("/a b/100%/\"q\"/$HOME")},
        {QStringLiteral("XDG_DATA_HOME"), QStringLiteral("/c\\d/'r'/è")}};
    job().establish(plan);
    EXPECT_TRUE(service().contains("Type=oneshot\n"
                                   "Environment=\"XDG_CONFIG_HOME=/a b/100%%/\\\"q\\\"/$HOME\"\n"
                                   "Environment=\"XDG_DATA_HOME=/c\\\\d/'r'/\xc3\xa8\"\n"
                                   "ExecStart="))
        << service().toStdString();
    systemctl.calls.clear();
    plan.environment.clear();
    job().establish(plan);
    EXPECT_FALSE(service().contains("Environment"));
    EXPECT_THAT(systemctl.calls, ElementsAre(stopped, reloaded, enabled));
}

TEST_F(SystemdTimerTest, theFolderOfSystemdItselfIsTheFirstThatItLooksIn)
{
    QString output;
    const auto tool = [&output](const QString &, const QStringList &) {
        return PeriodicJob::Answer{0, output};
    };
    output =
        QStringLiteral("/home/anna/.config/systemd/user.control /run/user/1/systemd/user.control "
                       "/home/anna/.config/systemd/user /etc/systemd/user\n");
    EXPECT_EQ(SystemdTimer::configHome(tool), QStringLiteral("/home/anna/.config"));
    output = QStringLiteral("\"/home/anna b/.config/systemd/user.control\" /etc/systemd/user\n");
    EXPECT_EQ(SystemdTimer::configHome(tool), std::nullopt);
    output.clear();
    EXPECT_EQ(SystemdTimer::configHome(tool), std::nullopt);
}

TEST_F(SystemdTimerTest, aFirstCallWritesLoadsAndStarts)
{
    job().establish(every(3600));
    EXPECT_THAT(systemctl.calls, ElementsAre(stopped, reloaded, enabled));
}

TEST_F(SystemdTimerTest, aSecondCallOnlyAsksWhetherItIsLoaded)
{
    job().establish(every(3600));
    const QByteArray before = timer();
    const QDateTime timerWritten = QFileInfo(folder + u"/job.timer").lastModified();
    const QDateTime serviceWritten = QFileInfo(folder + u"/job.service").lastModified();
    systemctl.calls.clear();
    clock.advance(std::chrono::minutes(17));
    job().establish(every(3600));
    EXPECT_THAT(systemctl.calls, ElementsAre(asked));
    EXPECT_EQ(timer(), before);
    EXPECT_EQ(QFileInfo(folder + u"/job.timer").lastModified(), timerWritten);
    EXPECT_EQ(QFileInfo(folder + u"/job.service").lastModified(), serviceWritten);
}

TEST_F(SystemdTimerTest, aTimerThatIsNotActiveOrNotEnabledIsLoadedAsItWas)
{
    job().establish(every(3600));
    const QByteArray before = timer();
    for (bool *state : {&systemctl.isActive, &systemctl.isEnabled}) {
        *state = false;
        systemctl.calls.clear();
        clock.advance(std::chrono::minutes(17));
        job().establish(every(3600));
        EXPECT_THAT(systemctl.calls, ElementsAre(asked, reloaded, enabled));
        EXPECT_EQ(timer(), before);
    }
}

TEST_F(SystemdTimerTest, anotherIntervalIsCountedFromTheChange)
{
    job().establish(every(3600));
    systemctl.calls.clear();
    clock.advance(std::chrono::minutes(17));
    job().establish(every(7200));
    EXPECT_THAT(systemctl.calls, ElementsAre(stopped, reloaded, enabled));
    EXPECT_EQ(schedule(), QStringLiteral("OnCalendar=*-*-* 00/2:29:44 UTC\nPersistent=true"));
}

TEST_F(SystemdTimerTest, aProgramThatWasMovedIsFollowed)
{
    job().establish(every(3600));
    systemctl.calls.clear();
    PeriodicJobPlan plan = every(3600);
    plan.executable = QStringLiteral("/home/anna/vellomar");
    job().establish(plan);
    EXPECT_THAT(systemctl.calls, ElementsAre(stopped, reloaded, enabled));
    EXPECT_TRUE(
        setting(QStringLiteral("ExecStart")).contains(QLatin1String("/home/anna/vellomar")));
}

TEST_F(SystemdTimerTest, damagedOrMissingUnitsAreWrittenAnew)
{
    job().establish(every(3600));
    const QByteArray goodTimer = timer();
    const QByteArray goodService = service();
    const QList<std::pair<QString, QByteArray>> damages = {
        {QStringLiteral("/job.timer"), ""},
        {QStringLiteral("/job.timer"), "\xff\xfe\x00 no unit"},
        {QStringLiteral("/job.timer"), "# Counted from yesterday\n[Timer]\n"},
        {QStringLiteral("/job.timer"), goodTimer.left(goodTimer.size() / 2)},
        {QStringLiteral("/job.timer"), goodTimer + "OnBootSec=1\n"},
        {QStringLiteral("/job.service"), goodService.left(10)}};
    for (const auto &[name, content] : damages) {
        ASSERT_TRUE(writeFile(folder + name, content));
        systemctl.calls.clear();
        job().establish(every(3600));
        EXPECT_THAT(systemctl.calls, ElementsAre(stopped, reloaded, enabled));
        EXPECT_EQ(timer(), goodTimer);
        EXPECT_EQ(service(), goodService);
    }
    for (const QString &name : {QStringLiteral("/job.timer"), QStringLiteral("/job.service")}) {
        ASSERT_TRUE(QFile::remove(folder + name));
        job().establish(every(3600));
        EXPECT_EQ(timer(), goodTimer);
        EXPECT_EQ(service(), goodService);
    }
}

TEST_F(SystemdTimerTest, removalLeavesNothing)
{
    job().establish(every(3600));
    systemctl.calls.clear();
    job().remove();
    EXPECT_THAT(systemctl.calls, ElementsAre(disabled, reloaded));
    EXPECT_TRUE(QDir(folder).isEmpty());
    EXPECT_FALSE(systemctl.isActive);
}

TEST_F(SystemdTimerTest, aNewTimerCountsAsHavingJustRun)
{
    const QString lastRun = home + u"/data/systemd/timers/stamp-job.timer";
    job().establish(every(3600));
    EXPECT_EQ(QFileInfo(lastRun).lastModified(), clock.moment());

    // The timer that stays keeps the date of its last run.
    const QDateTime then = clock.moment();
    clock.advance(std::chrono::hours(5));
    job().establish(every(3600));
    systemctl.isActive = false;
    job().establish(every(3600));
    EXPECT_EQ(QFileInfo(lastRun).lastModified(), then);

    job().establish(every(7200));
    EXPECT_EQ(QFileInfo(lastRun).lastModified(), clock.moment());
    job().remove();
    EXPECT_FALSE(QFile::exists(lastRun));
}

TEST_F(SystemdTimerTest, removalOfNothingDoesNothing)
{
    job().remove();
    EXPECT_TRUE(systemctl.calls.isEmpty());
    EXPECT_FALSE(QFile::exists(home + u"/settings"));
}

TEST_F(SystemdTimerTest, aFolderThatCannotBeWrittenIsPassedOver)
{
    ASSERT_TRUE(becomeOrdinaryUser());
    ASSERT_TRUE(QDir().mkpath(folder));
    QFile::setPermissions(folder, QFileDevice::ReadOwner | QFileDevice::ExeOwner);
    job().establish(every(3600));
    EXPECT_TRUE(QDir(folder).isEmpty());

    // The next call tries again.
    QFile::setPermissions(folder,
                          QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
    job().establish(every(3600));
    EXPECT_EQ(schedule(), QStringLiteral("OnCalendar=*-*-* 00/1:12:44 UTC\nPersistent=true"));
}

TEST_F(SystemdTimerTest, onAFullDiskTheUnitsStayAsTheyWereAndTheNextCallMakesUpForIt)
{
    const SmallDisk disk(home + u"/settings");
    ASSERT_TRUE(disk.isMounted());
    job().establish(every(3600));
    const QByteArray goodTimer = timer();
    const QByteArray goodService = service();
    disk.fill();
    PeriodicJobPlan plan = every(7200);
    plan.executable = QStringLiteral("/home/anna/vellomar");
    job().establish(plan);
    EXPECT_EQ(timer(), goodTimer);
    EXPECT_EQ(service(), goodService);
    EXPECT_EQ(QDir(folder).entryList(QDir::Files).size(), 2);

    disk.makeRoom();
    job().establish(plan);
    EXPECT_EQ(schedule(), QStringLiteral("OnCalendar=*-*-* 00/2:12:44 UTC\nPersistent=true"));
    EXPECT_TRUE(setting(QStringLiteral("ExecStart")).contains(plan.executable));
}

TEST_F(SystemdTimerTest, whatAKilledWriterLeftGoesWithTheNextChange)
{
    ASSERT_TRUE(QDir().mkpath(folder));
    for (const QString &name : {QStringLiteral("/job.timer.AbCdEf.vellomar-partial"),
                                QStringLiteral("/job.service.AbCdEf.vellomar-partial")}) {
        ASSERT_TRUE(writeFile(folder + name));
    }
    job().establish(every(3600));
    EXPECT_EQ(QDir(folder).entryList(QDir::Files),
              QStringList({QStringLiteral("job.service"), QStringLiteral("job.timer")}));
}

TEST_F(SystemdTimerTest, aMissingSystemctlIsPassedOver)
{
    systemctl.isInstalled = false;
    job().establish(every(3600));
    const QByteArray before = timer();
    EXPECT_FALSE(before.isEmpty());

    // Once it is there, the timer is loaded.
    systemctl.isInstalled = true;
    systemctl.calls.clear();
    job().establish(every(3600));
    EXPECT_THAT(systemctl.calls, ElementsAre(asked, reloaded, enabled));
    EXPECT_EQ(timer(), before);

    systemctl.isInstalled = false;
    job().remove();
    EXPECT_TRUE(QDir(folder).isEmpty());
}

} // namespace
