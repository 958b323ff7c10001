#include "tools/ChildEnvironment.h"

#include "tests/support/Files.h"
#include "tools/ProcessRunner.h"

#include <QFile>
#include <QRegularExpression>

#include <gtest/gtest.h>

namespace {

/// What a child finds in its environment, entry by entry.
QStringList childsEnvironment(const ChildProcess::Environment &changes = {})
{
    return runProcess(QStringLiteral("/usr/bin/env"), {}, {.env = changes})
        .standardOutput.split(u'\n', Qt::SkipEmptyParts);
}

void expectInChild(const char *name, bool isThere)
{
    qputenv(name, "of the session");
    EXPECT_EQ(
        childsEnvironment().contains(QString::fromUtf8(name) + QLatin1String("=of the session")),
        isThere)
        << name;
    qunsetenv(name);
}

QString document()
{
    return QString::fromUtf8(readFile(QStringLiteral(VELLOMAR_SOURCE_DIR "/docs/environment.md")));
}

/// The names in the table below a heading of the document.
QStringList documented(const QString &heading)
{
    const QString section = document()
                                .section(QLatin1String("## ") + heading, 1)
                                .section(QStringLiteral("\n## "), 0, 0);
    static const QRegularExpression name(QStringLiteral("`([A-Z][A-Z0-9_]+)`"));
    QStringList names;
    for (auto match = name.globalMatch(section); match.hasNext();) {
        names.append(match.next().captured(1));
    }
    return names;
}

TEST(ChildEnvironment, whatWouldChangeTheMeaningOfACallIsLeftOut)
{
    for (const char *name : {"RESTIC_PASSWORD",
                             "RESTIC_PASSWORD_FILE",
                             "RESTIC_PASSWORD_COMMAND",
                             "RESTIC_KEY_HINT",
                             "RESTIC_REPOSITORY",
                             "RESTIC_REPOSITORY_FILE",
                             "RESTIC_FROM_REPOSITORY",
                             "RESTIC_HOST",
                             "RESTIC_COMPRESSION",
                             "RESTIC_PACK_SIZE",
                             "RESTIC_READ_CONCURRENCY",
                             "RESTIC_FEATURES",
                             "RESTIC_PROGRESS_FPS",
                             "RESTIC_CACERT",
                             "RESTIC_TLS_CLIENT_CERT",
                             "RESTIC_OF_TOMORROW",
                             "RCLONE_PASSWORD_COMMAND",
                             "RCLONE_CONFIG",
                             "RCLONE_CONFIG_PASS",
                             "RCLONE_CONFIG_DIR",
                             "RCLONE_CONFIG_VELLOMAR_TOKEN",
                             "RCLONE_CONFIG_VELLOMAR_SERVER_HOST",
                             "RCLONE_DRY_RUN",
                             "RCLONE_EXCLUDE",
                             "RCLONE_MAX_DEPTH",
                             "RCLONE_LOG_FILE",
                             "RCLONE_DRIVE_TOKEN",
                             "RCLONE_DRIVE_ROOT_FOLDER_ID",
                             "RCLONE_S3_ENDPOINT",
                             "RCLONE_SFTP_HOST",
                             "RCLONE_NO_CHECK_CERTIFICATE",
                             "RCLONE_OF_TOMORROW",
                             "SYSTEMD_OFFLINE",
                             "SYSTEMCTL_SKIP_SYSV",
                             "XDG_ACTIVATION_TOKEN",
                             "DESKTOP_STARTUP_ID"}) {
        expectInChild(name, false);
    }
}

TEST(ChildEnvironment, whatSaysHowThisMachineReachesTheWorldStays)
{
    const QStringList names = documented(QStringLiteral("What stays of restic's and rclone's"));
    EXPECT_GE(names.size(), 10);
    for (const QString &name : names) {
        expectInChild(qPrintable(name), true);
    }
}

TEST(ChildEnvironment, everythingElseStays)
{
    for (const char *name :
         {"HTTP_PROXY", "https_proxy", "NO_PROXY", "TMPDIR", "SSL_CERT_FILE", "SSL_CERT_DIR",
          "SSH_AUTH_SOCK", "XDG_CACHE_HOME", "AWS_PROFILE", "RESTIC", "RCLONE", "SYSTEMD",
          "MY_RESTIC_PASSWORD", "RESTICK_X", "restic_password"}) {
        expectInChild(name, true);
    }
}

TEST(ChildEnvironment, anEntryWithoutANameIsNoHindrance)
{
    char entry[] = "no pair";
    ASSERT_EQ(::putenv(entry), 0);
    qputenv("RESTIC_PASSWORD", "x");
    EXPECT_FALSE(childsEnvironment().contains(QLatin1String("RESTIC_PASSWORD=x")));
}

TEST(ChildEnvironment, oursAreThereWhateverTheSessionHas)
{
    qputenv("RESTIC_REPOSITORY", "theirs");
    const QStringList entries =
        childsEnvironment({{QStringLiteral("RESTIC_REPOSITORY"), QStringLiteral("ours")},
                           {QStringLiteral("RCLONE_CONFIG"), QStringLiteral("ours")}});
    EXPECT_EQ(entries.filter(QStringLiteral("RESTIC_")),
              QStringList(QStringLiteral("RESTIC_REPOSITORY=ours")));
    EXPECT_EQ(entries.filter(QStringLiteral("RCLONE_")),
              QStringList(QStringLiteral("RCLONE_CONFIG=ours")));
}

TEST(ChildEnvironment, aCopyThatWasTakenHoldsWhateverChangesLater)
{
    qputenv("STAYING", "as it was");
    qputenv("GOING", "as it was");
    ChildEnvironment::keep();
    qputenv("STAYING", "changed");
    qunsetenv("GOING");
    qputenv("COMING", "late");
    const QStringList entries =
        childsEnvironment({{QStringLiteral("ADDED"), QStringLiteral("for this child")}});
    EXPECT_TRUE(entries.contains(QLatin1String("STAYING=as it was")));
    EXPECT_TRUE(entries.contains(QLatin1String("GOING=as it was")));
    EXPECT_TRUE(entries.filter(QStringLiteral("COMING=")).isEmpty());
    EXPECT_TRUE(entries.contains(QLatin1String("ADDED=for this child")));
    EXPECT_FALSE(childsEnvironment().contains(QLatin1String("ADDED=for this child")));
}

} // namespace
