#include "tests/support/ScriptedTools.h"
#include "tools/ProcessRunner.h"
#include "tools/Restic.h"
#include "tools/Tools.h"

#include <gtest/gtest.h>

// What a remote destination does on a machine that has restic and no rclone.

namespace {

TEST(ResticAlone, isReallyThere)
{
    EXPECT_NE(Tools::find(QStringLiteral("restic")), std::nullopt);
    EXPECT_EQ(Tools::find(QStringLiteral("rclone")), std::nullopt);
}

TEST(ResticAlone, isStartedWithoutAWordOfRclone)
{
    for (const DestinationID dest : {DestinationID::Drive, DestinationID::Server}) {
        ScriptedTools tools;
        tools.answer({}, ScriptedTools::ended(1, QStringLiteral("no rclone here")));
        Restic restic;
        restic.dest = dest;
        EXPECT_EQ(restic.run({QStringLiteral("snapshots")}).standardError,
                  QStringLiteral("no rclone here"));
        EXPECT_EQ(tools.calls.last().arguments, QStringList{QStringLiteral("snapshots")});
        const ChildProcess::Environment &environment = tools.calls.last().env;
        EXPECT_EQ(environment.value(QStringLiteral("RESTIC_REPOSITORY")),
                  restic.config.repository(dest));
        EXPECT_FALSE(environment.contains(QStringLiteral("RCLONE_CONFIG")));
        EXPECT_FALSE(environment.contains(QStringLiteral("RCLONE_PASSWORD_COMMAND")));
    }
}

} // namespace
