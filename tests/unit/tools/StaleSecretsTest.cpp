#include "tools/OneShotSecret.h"

#include "state/Paths.h"
#include "tests/support/Files.h"
#include "tests/support/ManualClock.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

#include <sys/stat.h>

namespace {

QString make(const char *name)
{
    writeSupportFile(name);
    return Paths::supportFile(QString::fromUtf8(name));
}

bool isThere(const char *name)
{
    struct stat status = {};
    return ::lstat(Paths::supportFile(QString::fromUtf8(name)).toUtf8().constData(), &status) == 0;
}

/// Tidies up as if so many seconds had passed.
void tidyAfter(int seconds)
{
    const ManualClock clock(QDateTime::currentDateTimeUtc().addSecs(seconds));
    const ScopedClock inForce(clock);
    OneShotSecret::removeStale();
}

TEST(StaleSecrets, areRemovedWhenMoreThanAMinuteOld)
{
    make("rclone-X.conf");
    ASSERT_EQ(::mkfifo(Paths::supportFile(QStringLiteral("k-X")).toUtf8().constData(), 0600), 0);
    tidyAfter(0);
    tidyAfter(59);
    EXPECT_TRUE(isThere("rclone-X.conf"));
    EXPECT_TRUE(isThere("k-X"));
    tidyAfter(61);
    EXPECT_FALSE(isThere("rclone-X.conf"));
    EXPECT_FALSE(isThere("k-X"));
}

TEST(StaleSecrets, countFromTheirCreationNotFromTheirLastChange)
{
    QFile file(make("rclone-X.conf"));
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    ASSERT_TRUE(file.setFileTime(QDateTime::currentDateTimeUtc().addDays(-1),
                                 QFileDevice::FileModificationTime));
    file.close();
    tidyAfter(30);
    EXPECT_TRUE(isThere("rclone-X.conf"));
}

TEST(StaleSecrets, aClockThatWentBackRemovesNothing)
{
    make("k-X");
    tidyAfter(-100000);
    EXPECT_TRUE(isThere("k-X"));
}

TEST(StaleSecrets, everythingElseIsLeftAlone)
{
    const QList<const char *> others{"rclone.conf",
                                     "rclone-X.conf.bak",
                                     "rclone.conf.old",
                                     "rclone-X.conf.old",
                                     "rclone.conf1x",
                                     "rclone.conf2",
                                     "rclone.conf.old2",
                                     "rclone.conf.old20261121",
                                     "rclone.conf20261121",
                                     "rclone.conf.old01874598159",
                                     "rclone.conf4294967296",
                                     "rclone.conf.old18745981590",
                                     "rclone.conf.bak1874598159",
                                     "rclone.conf1874598159x",
                                     "rclone-X.conf2",
                                     "rclone-X.conf.old20261121",
                                     "rclone-X1874598159",
                                     "1874598159",
                                     "rclone.confidence",
                                     "rclone-",
                                     "xrclone-X.conf",
                                     "k",
                                     "K-X",
                                     ".k-X",
                                     "config.json",
                                     "rclone-X"};
    for (const char *name : others) {
        make(name);
    }
    const QString inside = Paths::supportFile(QStringLiteral("k-folder"));
    ASSERT_TRUE(QDir().mkpath(inside));
    make("k-folder/k-inside");
    tidyAfter(100000);
    for (const char *name : others) {
        EXPECT_TRUE(isThere(name)) << name;
    }
    EXPECT_TRUE(isThere("k-folder/k-inside"));
}

TEST(StaleSecrets, whatRcloneHadBesideACopyCountsToo)
{
    const QList<const char *> names{"rclone-X.conf1874598159", "rclone-X.conf.old3824617222",
                                    "rclone-.conf1000000", "rclone-\n.conf.old4294967295"};
    for (const char *name : names) {
        make(name);
    }
    tidyAfter(59);
    for (const char *name : names) {
        EXPECT_TRUE(isThere(name)) << name;
    }
    tidyAfter(61);
    for (const char *name : names) {
        EXPECT_FALSE(isThere(name)) << name;
    }
}

TEST(StaleSecrets, whatRcloneHadBesideItsFileGoesWhenTheFileIsThere)
{
    const QList<const char *> names{"rclone.conf1874598159", "rclone.conf.old3824617222"};
    for (const char *name : names) {
        make(name);
    }
    tidyAfter(61);
    for (const char *name : names) {
        EXPECT_TRUE(isThere(name)) << name; // perhaps all that is left
    }
    make("rclone.conf");
    tidyAfter(61);
    for (const char *name : names) {
        EXPECT_FALSE(isThere(name)) << name;
    }
    EXPECT_TRUE(isThere("rclone.conf"));
}

TEST(StaleSecrets, theShortestNamesCountToo)
{
    make("k-");
    make("rclone-.conf");
    tidyAfter(61);
    EXPECT_FALSE(isThere("k-"));
    EXPECT_FALSE(isThere("rclone-.conf"));
}

TEST(StaleSecrets, linksAreRemovedAndNotFollowed)
{
    const QString kept = make("config.json");
    const QString folder = Paths::home() + QLatin1String("/folder");
    ASSERT_TRUE(QDir().mkpath(folder));
    ASSERT_TRUE(QFile::link(kept, Paths::supportFile(QStringLiteral("k-link"))));
    ASSERT_TRUE(QFile::link(folder, Paths::supportFile(QStringLiteral("k-tofolder"))));
    ASSERT_TRUE(QFile::link(QStringLiteral("/nonexistent"),
                            Paths::supportFile(QStringLiteral("rclone-dead.conf"))));
    tidyAfter(61);
    EXPECT_FALSE(isThere("k-link"));
    EXPECT_FALSE(isThere("k-tofolder"));
    EXPECT_FALSE(isThere("rclone-dead.conf"));
    EXPECT_TRUE(isThere("config.json"));
    EXPECT_TRUE(QDir(folder).exists());
}

TEST(StaleSecrets, aLiveChannelIsLeftAlone)
{
    const auto channel = OneShotSecret::create(QStringLiteral("key"));
    ASSERT_TRUE(channel);
    OneShotSecret::removeStale();
    EXPECT_TRUE(QFile::exists(channel->path()));
}

TEST(StaleSecrets, aSupportFolderThatIsGoneIsNoMatter)
{
    ASSERT_TRUE(QDir(Paths::support()).removeRecursively());
    OneShotSecret::removeStale();
    EXPECT_FALSE(QDir(Paths::support()).exists());
}

} // namespace
