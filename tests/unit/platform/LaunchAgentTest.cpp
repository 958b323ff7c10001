#include "platform/PeriodicJob.h"
#include "tests/support/Files.h"
#include "tests/support/OrdinaryUser.h"
#include "tests/support/RecordedTools.h"
#include "tests/support/SmallDisk.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

using testing::ElementsAre;

namespace {

const QString label = QStringLiteral("it.vellomar.backup");
const QStringList printed = {QStringLiteral("/bin/launchctl"), QStringLiteral("print"),
                             QStringLiteral("gui/501/it.vellomar.backup")};
const QStringList bootedOut = {QStringLiteral("/bin/launchctl"), QStringLiteral("bootout"),
                               QStringLiteral("gui/501/it.vellomar.backup")};

PeriodicJobPlan everyHour()
{
    return {.executable = QStringLiteral("/Applications/Vellomar.app/Contents/MacOS/Vellomar"),
            .arguments = {QStringLiteral("--backup")},
            .intervalSeconds = 3600,
            .errorLog = QStringLiteral("/Users/anna/backup.log")};
}

// A property list as an independent reader understands it; empty when it doesn't.
QJsonObject parsed(const QByteArray &list)
{
    QProcess reader;
    reader.start(
        QStringLiteral("/usr/bin/python3"),
        {QStringLiteral("-c"), QStringLiteral("import json, plistlib, sys\n"
                                              "list = plistlib.loads(sys.stdin.buffer.read(),"
                                              " fmt=plistlib.FMT_XML)\n"
                                              "print(json.dumps(list))")});
    reader.write(list);
    reader.closeWriteChannel();
    reader.waitForFinished(20000);
    return QJsonDocument::fromJson(reader.readAllStandardOutput()).object();
}

class LaunchAgentTest : public testing::Test
{
protected:
    LaunchAgent agent() { return {home, label, 501, launchctl.runTool()}; }

    [[nodiscard]] QByteArray content() const { return readFile(path); }

    const QString home = QDir::homePath();
    const QString path = home + QLatin1String("/Library/LaunchAgents/it.vellomar.backup.plist");
    const QStringList bootstrapped = {QStringLiteral("/bin/launchctl"), QStringLiteral("bootstrap"),
                                      QStringLiteral("gui/501"), path};
    RecordedLaunchctl launchctl;
};

TEST_F(LaunchAgentTest, thePropertyListHoldsExactlySevenKeys)
{
    const QJsonObject expected{
        {QStringLiteral("Label"), label},
        {QStringLiteral("ProgramArguments"),
         QJsonArray{QStringLiteral("/Applications/Vellomar.app/Contents/MacOS/Vellomar"),
                    QStringLiteral("--backup")}},
        {QStringLiteral("StartInterval"), 3600},
        {QStringLiteral("ProcessType"), QStringLiteral("Background")},
        {QStringLiteral("LowPriorityIO"), true},
        {QStringLiteral("Nice"), 10},
        {QStringLiteral("StandardErrorPath"), QStringLiteral("/Users/anna/backup.log")}};
    EXPECT_EQ(parsed(agent().propertyList(everyHour())), expected);
}

TEST_F(LaunchAgentTest, pathsWithOddCharactersArriveAsTheyAre)
{
    const QString odd = QStringLiteral("/a & b/<c>/\"d' e/%s $HOME \\/è 備份/x  y ");
    PeriodicJobPlan plan = everyHour();
    plan.executable = odd;
    plan.errorLog = odd + QLatin1String("log");
    const QJsonObject list = parsed(agent().propertyList(plan));
    EXPECT_EQ(list.value(QLatin1String("ProgramArguments")),
              QJsonValue(QJsonArray({odd, QStringLiteral("--backup")})));
    EXPECT_EQ(list.value(QLatin1String("StandardErrorPath")), QJsonValue(plan.errorLog));
}

TEST_F(LaunchAgentTest, theLongestIntervalIsAWholeNumber)
{
    PeriodicJobPlan plan = everyHour();
    plan.intervalSeconds = std::numeric_limits<qint64>::max() / 3600 * 3600;
    const QByteArray list = agent().propertyList(plan);
    EXPECT_TRUE(list.contains(
        QByteArray("<integer>" + QByteArray::number(plan.intervalSeconds) + "</integer>")));
    EXPECT_EQ(parsed(list).size(), 7);
}

TEST_F(LaunchAgentTest, variablesOfThePlanAreAnEighthEntry)
{
    PeriodicJobPlan plan = everyHour();
    plan.environment = {{QStringLiteral("A"), QStringLiteral("<a> & \"b\" 100%")},
                        {QStringLiteral("B"), QStringLiteral("/c d/\\è")}};
    const QJsonObject list = parsed(agent().propertyList(plan));
    EXPECT_EQ(list.size(), 8);
    EXPECT_EQ(list.value(QLatin1String("EnvironmentVariables")).toObject(),
              (QJsonObject{{QStringLiteral("A"), QStringLiteral("<a> & \"b\" 100%")},
                           {QStringLiteral("B"), QStringLiteral("/c d/\\è")}}));
}

TEST_F(LaunchAgentTest, aFirstCallMakesTheFolderAndLoadsTheAgent)
{
    agent().establish(everyHour());
    EXPECT_EQ(content(), agent().propertyList(everyHour()));
    EXPECT_TRUE(launchctl.isLoaded);
    EXPECT_THAT(launchctl.calls, ElementsAre(bootedOut, bootstrapped));
}

TEST_F(LaunchAgentTest, aSecondCallOnlyAsksWhetherItIsLoaded)
{
    agent().establish(everyHour());
    launchctl.calls.clear();
    const QDateTime written = QFileInfo(path).lastModified();
    agent().establish(everyHour());
    EXPECT_THAT(launchctl.calls, ElementsAre(printed));
    EXPECT_EQ(QFileInfo(path).lastModified(), written);
}

TEST_F(LaunchAgentTest, anAgentThatIsNotLoadedIsLoadedAgainAsItWas)
{
    agent().establish(everyHour());
    const QByteArray before = content();
    launchctl.isLoaded = false;
    launchctl.calls.clear();
    agent().establish(everyHour());
    EXPECT_THAT(launchctl.calls, ElementsAre(printed, bootedOut, bootstrapped));
    EXPECT_EQ(content(), before);
    EXPECT_TRUE(launchctl.isLoaded);
}

TEST_F(LaunchAgentTest, anotherIntervalReplacesTheFileAndTheAgent)
{
    agent().establish(everyHour());
    launchctl.calls.clear();
    PeriodicJobPlan plan = everyHour();
    plan.intervalSeconds = 86400;
    agent().establish(plan);
    EXPECT_THAT(launchctl.calls, ElementsAre(bootedOut, bootstrapped));
    EXPECT_EQ(parsed(content()).value(QLatin1String("StartInterval")), 86400);
}

TEST_F(LaunchAgentTest, anApplicationThatWasMovedIsFollowed)
{
    agent().establish(everyHour());
    launchctl.calls.clear();
    PeriodicJobPlan plan = everyHour();
    plan.executable = QStringLiteral("/Users/anna/Applications/Vellomar");
    agent().establish(plan);
    EXPECT_THAT(launchctl.calls, ElementsAre(bootedOut, bootstrapped));
    EXPECT_EQ(parsed(content()).value(QLatin1String("ProgramArguments")).toArray().at(0),
              plan.executable);
}

TEST_F(LaunchAgentTest, onAFullDiskTheFileStaysAsItWas)
{
    const SmallDisk disk(home + QLatin1String("/Library"));
    ASSERT_TRUE(disk.isMounted());
    agent().establish(everyHour());
    const QByteArray before = content();
    disk.fill();
    PeriodicJobPlan plan = everyHour();
    plan.intervalSeconds = 86400;
    agent().establish(plan);
    EXPECT_EQ(content(), before);

    disk.makeRoom();
    agent().establish(plan);
    EXPECT_EQ(parsed(content()).value(QLatin1String("StartInterval")), 86400);
}

TEST_F(LaunchAgentTest, whatAKilledWriterLeftGoesWithTheNextChange)
{
    const QString left = path + QLatin1String(".AbCdEf.vellomar-partial");
    ASSERT_TRUE(writeFile(left));
    agent().establish(everyHour());
    EXPECT_FALSE(QFile::exists(left));
}

TEST_F(LaunchAgentTest, aDamagedFileIsReplaced)
{
    agent().establish(everyHour());
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::Append));
    file.write("\n");
    file.close();
    launchctl.calls.clear();
    agent().establish(everyHour());
    EXPECT_THAT(launchctl.calls, ElementsAre(bootedOut, bootstrapped));
    EXPECT_EQ(content(), agent().propertyList(everyHour()));
}

TEST_F(LaunchAgentTest, removalWithoutAFileDoesNothing)
{
    launchctl.isLoaded = true;
    agent().remove();
    EXPECT_TRUE(launchctl.calls.isEmpty());
    EXPECT_FALSE(QFile::exists(home + QLatin1String("/Library")));
}

TEST_F(LaunchAgentTest, removalUnloadsTheAgentAndDeletesItsFile)
{
    agent().establish(everyHour());
    launchctl.calls.clear();
    agent().remove();
    EXPECT_THAT(launchctl.calls, ElementsAre(bootedOut));
    EXPECT_FALSE(QFile::exists(path));
}

TEST_F(LaunchAgentTest, removalDeletesTheFileOfAnAgentThatIsNotLoadedToo)
{
    agent().establish(everyHour());
    launchctl.isLoaded = false;
    agent().remove();
    EXPECT_FALSE(QFile::exists(path));
}

TEST_F(LaunchAgentTest, aFolderThatCannotBeWrittenIsPassedOver)
{
    ASSERT_TRUE(becomeOrdinaryUser());
    const QString folder = QFileInfo(path).path();
    ASSERT_TRUE(QDir().mkpath(folder));
    QFile::setPermissions(folder, QFileDevice::ReadOwner | QFileDevice::ExeOwner);
    agent().establish(everyHour());
    EXPECT_FALSE(QFile::exists(path));
    EXPECT_THAT(launchctl.calls, ElementsAre(bootedOut, bootstrapped));

    // The next call tries again.
    QFile::setPermissions(folder,
                          QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
    agent().establish(everyHour());
    EXPECT_EQ(content(), agent().propertyList(everyHour()));
    EXPECT_TRUE(launchctl.isLoaded);
}

TEST_F(LaunchAgentTest, aFileThatCannotBeDeletedIsPassedOver)
{
    ASSERT_TRUE(becomeOrdinaryUser());
    agent().establish(everyHour());
    const QString folder = QFileInfo(path).path();
    QFile::setPermissions(folder, QFileDevice::ReadOwner | QFileDevice::ExeOwner);
    agent().remove();
    EXPECT_FALSE(launchctl.isLoaded);
    EXPECT_TRUE(QFile::exists(path));
    QFile::setPermissions(folder,
                          QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
}

TEST_F(LaunchAgentTest, aMissingLaunchctlIsPassedOver)
{
    int calls = 0;
    LaunchAgent agent(home, label, 501, [&calls](const QString &, const QStringList &) {
        ++calls;
        return PeriodicJob::Answer{};
    });
    agent.establish(everyHour());
    agent.establish(everyHour());
    EXPECT_EQ(calls, 5); // the second time it is asked as well
    EXPECT_EQ(content(), agent.propertyList(everyHour()));
    agent.remove();
    EXPECT_FALSE(QFile::exists(path));
}

} // namespace
