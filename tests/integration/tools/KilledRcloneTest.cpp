#include "state/Paths.h"
#include "tests/support/Cycle.h"
#include "tests/support/Files.h"
#include "tests/support/Installation.h"
#include "tests/support/ManualClock.h"
#include "tests/support/MemorySecretBackend.h"
#include "tests/support/Waiting.h"
#include "tools/Rclone.h"

#include <QDir>
#include <QFile>
#include <QProcess>

#include <gtest/gtest.h>

#include <functional>

// The real rclone killed while it replaces its file, and how the program repairs what it leaves.

namespace {

class KilledRclone : public testing::Test
{
protected:
    void SetUp() override
    {
        secrets.items[{QStringLiteral("it.vellomar.app"), QStringLiteral("rclone-config-key")}] =
            "key";
        ASSERT_TRUE(Rclone::store(Rclone::serverRemote,
                                  {{QStringLiteral("type"), QStringLiteral("alias")}}));
        ASSERT_EQ(supportFiles(), onlyConfig);
    }

    static bool isConfigThere()
    {
        return QFile::exists(Paths::supportFile(QStringLiteral("rclone.conf")));
    }

    /// Has rclone save its file with a long pause around each renaming, and kills it in the pause
    /// in which the folder is in the state that is waited for.
    static void killRclone(const QString &pause, const std::function<bool()> &state)
    {
        QProcess strace;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("RCLONE_CONFIG"),
                           Paths::supportFile(QStringLiteral("rclone.conf")));
        environment.insert(QStringLiteral("RCLONE_PASSWORD_COMMAND"), QStringLiteral("echo key"));
        strace.setProcessEnvironment(environment);
        strace.start(QStringLiteral("strace"),
                     {QStringLiteral("-f"), QStringLiteral("-qqq"), QStringLiteral("-e"),
                      QStringLiteral("inject=/^rename:") + pause + QLatin1String("=600000000"),
                      QStringLiteral("-o"), QStringLiteral("/dev/null"),
                      Installation::realTool(QStringLiteral("rclone")), QStringLiteral("config"),
                      QStringLiteral("delete"), QStringLiteral("another")});
        ASSERT_TRUE(strace.waitForStarted());
        EXPECT_TRUE(eventually(state)) << qPrintable(supportFiles().join(u' '));
        killWithAllItStarted(strace.processId());
        EXPECT_TRUE(strace.waitForFinished());
    }
    static void tidyUpLater()
    {
        const ManualClock clock(QDateTime::currentDateTimeUtc().addSecs(61));
        const ScopedClock inForce(clock);
        OneShotSecret::removeStale();
    }

    const QStringList onlyConfig{QStringLiteral("rclone.conf")};
    MemorySecretBackend secrets;
    ScopedSecretBackend secretsInForce{secrets};
};

TEST_F(KilledRclone, beforeItSetTheFileAsideLeavesNothingForGood)
{
    killRclone(QStringLiteral("delay_enter"), [] { return supportFiles().size() == 3; });
    EXPECT_TRUE(isConfigThere());
    tidyUpLater();
    EXPECT_EQ(supportFiles(), onlyConfig);
    EXPECT_EQ(Rclone::remotes().keys(), QStringList(Rclone::serverRemote));
}

TEST_F(KilledRclone, withItsFileSetAsideHasItBackAtTheNextTouch)
{
    killRclone(QStringLiteral("delay_exit"), [] { return !isConfigThere(); });
    tidyUpLater();
    EXPECT_EQ(supportFiles().size(), 2); // all that there is of the connections
    EXPECT_EQ(Rclone::remotes().keys(), QStringList(Rclone::serverRemote));
    tidyUpLater();
    EXPECT_EQ(supportFiles(), onlyConfig);
}

} // namespace
