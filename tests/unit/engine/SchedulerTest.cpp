#include "engine/Scheduler.h"

#include "tests/support/ScriptedTools.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

#include <limits>

namespace {

/// What the job was asked for last.
class RecordedJob final : public PeriodicJob
{
public:
    std::optional<PeriodicJobPlan> plan;
    int calls = 0;

    void establish(const PeriodicJobPlan &wanted) override
    {
        plan = wanted;
        ++calls;
    }
    void remove() override
    {
        plan.reset();
        ++calls;
    }
};

const std::optional<QString> program = QStringLiteral("/opt/vellomar/bin/vellomar");

AppConfig wanted()
{
    AppConfig config;
    config.autoBackup = true;
    config.localEnabled = true;
    config.keySaved = true;
    config.intervalHours = 1;
    return config;
}

bool isScheduled(const AppConfig &config, const std::optional<QString> &executable = program)
{
    RecordedJob job;
    Scheduler::sync(config, job, executable);
    EXPECT_EQ(job.calls, 1);
    return job.plan.has_value();
}

qint64 secondsFor(qint64 hours)
{
    RecordedJob job;
    AppConfig config = wanted();
    config.intervalHours = hours;
    Scheduler::sync(config, job, program);
    return job.plan ? job.plan->intervalSeconds : -1;
}

TEST(Scheduler, theJobStartsThisProgramWithoutAWindow)
{
    RecordedJob job;
    Scheduler::sync(wanted(), job, program);
    ASSERT_TRUE(job.plan);
    EXPECT_EQ(*job.plan,
              (PeriodicJobPlan{.executable = *program,
                               .arguments = {QStringLiteral("--backup")},
                               .intervalSeconds = 3600,
                               .errorLog = Paths::supportFile(QStringLiteral("backup.log"))}));
}

TEST(Scheduler, theJobHasTheFoldersOfThisProcessWhereTheyAreNotTheUsualOnes)
{
    const QString data = QDir::homePath() + QLatin1String("/my data");
    const QString settings = QDir::homePath() + QLatin1String("/my settings");
    qputenv("XDG_DATA_HOME", QFile::encodeName(data));
    RecordedJob job;
    Scheduler::sync(wanted(), job, program);
    ASSERT_TRUE(job.plan);
    EXPECT_EQ(job.plan->environment,
              (QMap<QString, QString>{{QStringLiteral("XDG_DATA_HOME"), data}}));

    qputenv("XDG_CONFIG_HOME", QFile::encodeName(settings));
    qputenv("XDG_DATA_HOME", QFile::encodeName(QDir::homePath()) + "/.local/share");
    Scheduler::sync(wanted(), job, program);
    EXPECT_EQ(job.plan->environment,
              (QMap<QString, QString>{{QStringLiteral("XDG_CONFIG_HOME"), settings}}));
}

TEST(Scheduler, anyOneDestinationIsEnough)
{
    for (const auto destination :
         {&AppConfig::localEnabled, &AppConfig::driveEnabled, &AppConfig::serverEnabled}) {
        AppConfig config = wanted();
        config.localEnabled = false;
        EXPECT_FALSE(isScheduled(config));
        config.*destination = true;
        EXPECT_TRUE(isScheduled(config));
    }
}

TEST(Scheduler, withoutAutomaticBackupsThereIsNoJob)
{
    AppConfig config = wanted();
    config.autoBackup = false;
    EXPECT_FALSE(isScheduled(config));
}

TEST(Scheduler, withoutASavedKeyThereIsNoJob)
{
    AppConfig config = wanted();
    config.keySaved = false;
    EXPECT_FALSE(isScheduled(config));
}

TEST(Scheduler, withoutAProgramThereIsNoJob)
{
    EXPECT_FALSE(isScheduled(wanted(), std::nullopt));
}

TEST(Scheduler, aNewConfigurationHasNoJob)
{
    EXPECT_FALSE(isScheduled(AppConfig()));
}

TEST(Scheduler, theIntervalIsOneHourAtLeast)
{
    EXPECT_EQ(secondsFor(1), 3600);
    EXPECT_EQ(secondsFor(0), 3600);
    EXPECT_EQ(secondsFor(-1), 3600);
    EXPECT_EQ(secondsFor(std::numeric_limits<qint64>::min()), 3600);
    EXPECT_EQ(secondsFor(2), 7200);
    EXPECT_EQ(secondsFor(24), 86400);
}

TEST(Scheduler, anEnormousIntervalStaysANumberOfSeconds)
{
    EXPECT_EQ(secondsFor(1'000'000), 3'600'000'000);
    EXPECT_EQ(secondsFor(std::numeric_limits<qint64>::max()),
              std::numeric_limits<qint64>::max() / 3600 * 3600);
}

TEST(Scheduler, theRealJobIsATimerInTheUsersSettings)
{
    QStringList commands;
    ScriptedTools tools;
    tools.before = [&commands](const ScriptedTools::Call &call) {
        EXPECT_EQ(call.path, QStringLiteral("/usr/bin/systemctl"));
        EXPECT_TRUE(call.env.empty());
        EXPECT_EQ(call.input, std::nullopt);
        EXPECT_EQ(call.handle, nullptr);
        EXPECT_FALSE(call.isFollowed);
        commands.append(call.arguments.value(1));
    };
    const QString folder = QDir::homePath() + QLatin1String("/.config/systemd/user");
    Scheduler::sync(wanted());
    EXPECT_EQ(QDir(folder).entryList(QDir::Files),
              QStringList({QStringLiteral("it.vellomar.backup.service"),
                           QStringLiteral("it.vellomar.backup.timer")}));
    EXPECT_TRUE(commands.contains(QStringLiteral("enable")));

    AppConfig config = wanted();
    config.keySaved = false;
    Scheduler::sync(config);
    EXPECT_TRUE(QDir(folder).isEmpty());
    EXPECT_TRUE(commands.contains(QStringLiteral("disable")));
}

} // namespace
