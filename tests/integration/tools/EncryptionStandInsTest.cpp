#include "state/Paths.h"
#include "tests/support/Files.h"
#include "tests/support/Installation.h"
#include "tests/support/RcloneEnvelope.h"
#include "tests/support/SmallDisk.h"
#include "tools/Rclone.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <gtest/gtest.h>

#include <functional>

// What the program must know of `rclone config encryption set`: that its exit code says nothing of
// its success. The real one, and those that stand in for it in tests, in the same situations.

namespace {

struct Situation
{
    const char *description;
    std::optional<QString> command = QStringLiteral("echo key"); ///< RCLONE_PASSWORD_COMMAND
    bool isDiskFull = false;
    bool isConfigThere = true;
};

/// What is to be seen of it afterwards.
struct Seen
{
    bool isSuccess = false;
    bool isEncrypted = false;

    bool operator==(const Seen &) const = default;
};

using Encryption = std::function<ProcessResult(const ChildProcess::Environment &)>;

class EncryptionStandIns : public testing::Test
{
protected:
    static Seen outcome(const Situation &situation, const Encryption &encryption)
    {
        const SmallDisk disk(QDir::homePath() + QLatin1String("/small"));
        EXPECT_TRUE(disk.isMounted());
        const QString config = QDir::homePath() + QLatin1String("/small/rclone.conf");
        if (situation.isConfigThere) {
            writeFile(config, "[vellomar]\ntoken = t\n");
        }
        if (situation.isDiskFull) {
            disk.fill();
        }
        ChildProcess::Environment environment{{QStringLiteral("RCLONE_CONFIG"), config}};
        if (situation.command) {
            environment.insert(QStringLiteral("RCLONE_PASSWORD_COMMAND"), *situation.command);
        }
        const ProcessResult result = encryption(environment);
        return {result.status == 0, Rclone::isEncrypted(config)};
    }

    static Encryption byProgram(const QString &path)
    {
        return [path](const ChildProcess::Environment &environment) {
            return runProcess(
                path,
                {QStringLiteral("config"), QStringLiteral("encryption"), QStringLiteral("set")},
                {.env = environment});
        };
    }
};

TEST_F(EncryptionStandIns, doAsTheRealOneDoes)
{
    const QString log = QDir::homePath() + QLatin1String("/log");
    ASSERT_TRUE(QDir().mkpath(log));
    qputenv("STANDIN_LOG", log.toUtf8());
    const Encryption real = byProgram(Installation::realTool(QStringLiteral("rclone")));
    const Encryption script =
        byProgram(QStringLiteral(VELLOMAR_SOURCE_DIR "/tests/standins/rclone"));
    const QList<std::pair<Situation, Seen>> situations{
        {{.description = "a file in plain"}, {true, true}},
        {{.description = "no file", .isConfigThere = false}, {true, true}},
        {{.description = "a full disk", .isDiskFull = true}, {true, false}},
        {{.description = "no file on a full disk", .isDiskFull = true, .isConfigThere = false},
         {true, false}},
        {{.description = "a command that fails", .command = QStringLiteral("false")},
         {true, false}},
        {{.description = "a command that gives nothing", .command = QStringLiteral("true")},
         {true, false}},
        {{.description = "no command", .command = std::nullopt}, {false, false}},
    };
    for (const auto &[situation, expected] : situations) {
        EXPECT_EQ(outcome(situation, real), expected) << situation.description;
        EXPECT_EQ(outcome(situation, script), expected) << situation.description;
    }
    // The one within the tests' own process has a command that is always good.
    for (const qsizetype index : {0, 1, 2, 3, 6}) {
        const auto &[situation, expected] = situations.at(index);
        EXPECT_EQ(outcome(situation, encryptAsRcloneDoes), expected) << situation.description;
    }
}

} // namespace
