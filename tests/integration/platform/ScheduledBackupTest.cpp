#include "platform/Clock.h"
#include "platform/PeriodicJob.h"
#include "state/ConfigStore.h"
#include "state/Keychain.h"
#include "state/StatusStore.h"
#include "tests/support/Files.h"
#include "tests/support/Installation.h"
#include "tests/support/KeyringSession.h"
#include "tests/support/ReadySettings.h"
#include "tests/support/UserManager.h"
#include "tests/support/Waiting.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

namespace {

constexpr qint64 hour = 3600;

qsizetype linesOf(const QString &path)
{
    return readFile(path).count('\n');
}

/// The schedule of the real program, and a keyring that holds its key.
class ScheduledBackup : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(keyring.isRunning());
        ASSERT_TRUE(Keychain::write(QStringLiteral("a key"), Keychain::repositoryKey));
        AppConfig config = readySettings();
        config.alertAfterHours = -1;
        ConfigStore::save(config);
    }

    [[nodiscard]] PeriodicJobPlan planOf(qint64 seconds) const
    {
        return {.executable = installation.program(),
                .arguments = {QStringLiteral("--backup")},
                .intervalSeconds = seconds,
                .errorLog = Paths::supportFile(QStringLiteral("backup.log"))};
    }

    static SystemdTimer jobOf(const UserManager &manager)
    {
        return {QDir::homePath() + QLatin1String("/.config"),
                QDir::homePath() + QLatin1String("/.local/share"),
                QStringLiteral("it.vellomar.backup"), manager.runTool()};
    }

    const QString service = QStringLiteral("it.vellomar.backup.service");
    KeyringSession keyring;
    Installation installation;
};

TEST_F(ScheduledBackup, comesByItselfWithNoWindowEverStarted)
{
    AppConfig config = ConfigStore::load();
    config.localFolder = QStringLiteral("/nonexistent/disk");
    ConfigStore::save(config);
    const UserManager manager;
    ASSERT_TRUE(manager.isRunning()) << manager.reason().constData();
    const QDateTime established = Clock::now();
    jobOf(manager).establish(planOf(5));
    ASSERT_TRUE(eventually([] { return !StatusStore::loadHistory().isEmpty(); }));
    const RunRecord record = StatusStore::loadHistory().first();
    EXPECT_EQ(record.destination, DestinationID::Local);
    EXPECT_EQ(record.outcome, Outcome::Skipped) << record.message.toStdString();
    EXPECT_GE(established.secsTo(record.date), 4);
    // Each run leaves a line beside the record.
    const QString log = Paths::supportFile(QStringLiteral("backup.log"));
    EXPECT_TRUE(eventually([&log] { return linesOf(log) >= 2; }));
}

TEST_F(ScheduledBackup, endsCleanlyWhenTheSystemStopsIt)
{
    // The tool notes which signal reached it.
    installation.addScript(QStringLiteral("restic"), "#!/bin/sh\n"
                                                     "[ \"$1\" = backup ] || exit 0\n"
                                                     "trap 'echo INT >>~/signals; exit 130' INT\n"
                                                     "trap 'echo TERM >>~/signals; exit 143' TERM\n"
                                                     "echo started >>~/signals\n"
                                                     "while :; do sleep 0.05; done\n");
    const UserManager manager;
    ASSERT_TRUE(manager.isRunning()) << manager.reason().constData();
    jobOf(manager).establish(planOf(hour));
    manager.systemctl({QStringLiteral("start"), QStringLiteral("--no-block"), service});
    const QString signalled = QDir::homePath() + QLatin1String("/signals");
    ASSERT_TRUE(eventually([&signalled] { return linesOf(signalled) == 1; }));
    manager.systemctl({QStringLiteral("stop"), service});
    EXPECT_EQ(readFile(signalled).toStdString(), "started\nINT\n");
    const QList<RunRecord> history = StatusStore::loadHistory();
    ASSERT_EQ(history.size(), 1);
    EXPECT_EQ(history.first().outcome, Outcome::Cancelled);
    EXPECT_FALSE(StatusStore::loadStatus());
    EXPECT_EQ(manager.property(service, QStringLiteral("Result")), QStringLiteral("success"));
}

} // namespace
