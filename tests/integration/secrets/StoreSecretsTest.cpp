#include "state/Paths.h"
#include "tests/support/BackupHome.h"
#include "tests/support/Files.h"
#include "tests/support/SecretWitness.h"

#include <QDir>
#include <QFile>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sys/stat.h>

// Only while a remote is added, a secret is in a file in plain: rclone encrypts that file then.
// Only its owner may read it, from its first byte to its last.
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

constexpr auto newPassword = "AnotherPasswordForTheRemote4321";

class StoreSecrets : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(home.isReady());
        // Not the remote's own section: a second one of the same name must not be there.
        ASSERT_TRUE(QFile::remove(Paths::supportFile(QStringLiteral("rclone.conf"))));
    }

    BackupHome home;
    const QByteArray support = QFile::encodeName(Paths::support());
};

TEST_F(StoreSecrets, thePlainCopyIsForItsOwnerAloneAtEveryMoment)
{
    const SecretWitness witness(QStringLiteral(STORE_REMOTE), {}, newPassword);
    ASSERT_EQ(witness.exitCode(), 0);

    // Made by us, with the mode that it keeps, and never made over an existing file.
    const QByteArrayList made = witness.calls("openat", support + "/rclone-");
    QByteArrayList creations;
    for (const QByteArray &call : made) {
        if (call.contains("O_CREAT")) {
            creations.append(call);
        }
    }
    EXPECT_THAT(creations, Not(IsEmpty()));
    for (const QByteArray &call : creations) {
        EXPECT_THAT(call.toStdString(), HasSubstr("O_EXCL"));
        EXPECT_THAT(call.toStdString(), HasSubstr(", 0600)"));
    }
    for (const char *name : {"chmod", "fchmod", "fchmodat"}) {
        for (const QByteArray &call : witness.calls(name, support + "/rclone")) {
            EXPECT_THAT(call.toStdString(), HasSubstr(", 0600"));
        }
    }
    struct stat folder = {};
    ASSERT_EQ(::stat(support.constData(), &folder), 0);
    EXPECT_EQ(folder.st_mode & 0777U, 0700U);
}

TEST_F(StoreSecrets, aPasswordIsWrittenInPlainOnlyToThatCopyAndIsGoneAtTheEnd)
{
    const SecretWitness witness(QStringLiteral(STORE_REMOTE), {}, newPassword);
    ASSERT_EQ(witness.exitCode(), 0);

    const QByteArrayList leaks = witness.leaks({newPassword});
    ASSERT_THAT(leaks, SizeIs(1));
    EXPECT_THAT(leaks.first().toStdString(), HasSubstr(support.toStdString() + "/rclone-"));
    EXPECT_THAT(witness.calls("write", newPassword), testing::Contains(leaks.first()));
    EXPECT_THAT(witness.leaks(BackupHome::secrets()), IsEmpty());

    EXPECT_EQ(supportFiles(),
              QStringList({QStringLiteral("config.json"), QStringLiteral("rclone.conf"),
                           QStringLiteral("state.json")}));
    const QByteArray content = readFile(Paths::supportFile(QStringLiteral("rclone.conf")));
    EXPECT_TRUE(content.startsWith("# Encrypted"));
    EXPECT_FALSE(content.contains(newPassword));
}

} // namespace
