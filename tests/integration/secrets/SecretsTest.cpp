#include "state/StatusStore.h"
#include "tests/support/BackupHome.h"
#include "tests/support/Installation.h"
#include "tests/support/SecretWitness.h"

#include <QDir>
#include <QFile>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

// No secret in an argument, an environment or a file: the system calls of a whole
// cycle are watched.
namespace {

using testing::IsEmpty;
using testing::Not;

SecretWitness watchedCycle(const QString &program = Installation::builtProgram())
{
    return {program, {QStringLiteral("--backup"), QStringLiteral("--manual")}};
}

void expectGoodCycle()
{
    const QList<RunRecord> history = StatusStore::loadHistory();
    ASSERT_GE(history.size(), 2);
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(history.at(i).outcome, Outcome::Ok) << qPrintable(history.at(i).message);
    }
}

// The witness saw what it had to look at: both tools, the face that hands the key over, and each
// secret on its way through a pipe.
void expectSeen(const SecretWitness &witness)
{
    EXPECT_THAT(witness.calls("execve", "\"backup\", \"--json\""), Not(IsEmpty()));
    EXPECT_THAT(witness.calls("execve", "\"config\", \"dump\""), Not(IsEmpty()));
    EXPECT_THAT(witness.calls("execve", "\"--secret\""), Not(IsEmpty()));
    EXPECT_THAT(witness.calls("execve", "RCLONE_PASSWORD_COMMAND="), Not(IsEmpty()));
    for (const QByteArray &secret : BackupHome::secrets()) {
        EXPECT_THAT(witness.handOvers(secret), Not(IsEmpty())) << secret.constData();
    }
}

TEST(Secrets, noneIsInAnArgumentAnEnvironmentOrAFileDuringAFirstCycleAndASecondOne)
{
    const BackupHome home;
    ASSERT_TRUE(home.isReady());
    for (const char *cycle : {"first", "second"}) {
        SCOPED_TRACE(cycle);
        const SecretWitness witness = watchedCycle();
        EXPECT_EQ(witness.exitCode(), 0);
        expectGoodCycle();
        expectSeen(witness);
        EXPECT_THAT(witness.leaks(BackupHome::secrets()), IsEmpty());
        EXPECT_EQ(home.filesWithSecrets().join(u' '), QString());
        EXPECT_TRUE(QDir(QDir::homePath() + QLatin1String("/tmp")).isEmpty());
    }
}

// The control: the same watch over a restic that is careless with its key.
class CarelessTool : public testing::TestWithParam<const char *>
{
};

TEST_P(CarelessTool, isCaught)
{
    const BackupHome home;
    ASSERT_TRUE(home.isReady());
    Installation installation;
    installation.addReal(QStringLiteral("rclone"));
    installation.addScript(QStringLiteral("restic"),
                           QByteArray("#!/bin/bash\nread -r key\n") + GetParam() + "\n");
    const SecretWitness witness = watchedCycle(installation.program());
    EXPECT_EQ(witness.exitCode(), 0);
    EXPECT_THAT(witness.leaks({BackupHome::repositoryKey().toUtf8()}), Not(IsEmpty()));
}

INSTANTIATE_TEST_SUITE_P(Ways, CarelessTool,
                         testing::Values("/bin/true --password \"$key\"",        //
                                         "RESTIC_PASSWORD=$key /bin/true",       //
                                         "echo \"$key\" >\"$HOME/x\"; rm ~/x",   //
                                         "echo \"key: $key\" >>\"$TMPDIR/log\"", //
                                         ": >\"$TMPDIR/$key\"; rm \"$TMPDIR/$key\""));

TEST(Secrets, aFileThatHoldsOneIsFound)
{
    const BackupHome home;
    ASSERT_TRUE(home.isReady());
    // Before the first cycle rclone's file is in plain.
    EXPECT_EQ(home.filesWithSecrets(),
              QStringList(Paths::supportFile(QStringLiteral("rclone.conf"))));
}

TEST(Secrets, oneThatGoesThroughAPipeIsNoLeak)
{
    const BackupHome home;
    ASSERT_TRUE(home.isReady());
    Installation installation;
    installation.addReal(QStringLiteral("rclone"));
    installation.addScript(QStringLiteral("restic"),
                           "#!/bin/bash\nread -r key\necho \"$key\" | /usr/bin/wc -c >/dev/null\n");
    const SecretWitness witness = watchedCycle(installation.program());
    EXPECT_EQ(witness.exitCode(), 0);
    const QByteArray key = BackupHome::repositoryKey().toUtf8();
    EXPECT_THAT(witness.handOvers(key), Not(IsEmpty()));
    EXPECT_THAT(witness.leaks({key}), IsEmpty());
}

} // namespace
