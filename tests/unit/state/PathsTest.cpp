#include "state/Paths.h"

#include "tests/support/OrdinaryUser.h"
#include "tests/support/SmallDisk.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSysInfo>

#include <gtest/gtest.h>

#include <sys/stat.h>

namespace {

unsigned mode(const QString &path)
{
    struct stat info = {};
    return ::stat(QFile::encodeName(path).constData(), &info) == 0 ? info.st_mode & 07777U : 0;
}

} // namespace

TEST(Paths, theHomeIsTheUsers)
{
    EXPECT_EQ(Paths::home(), qEnvironmentVariable("HOME"));
}

TEST(Paths, theSupportFolderIsMadeWithMode700)
{
    const QString expected = Paths::home() + QLatin1String("/.local/share/Vellomar");
    ASSERT_FALSE(QFile::exists(expected));
    EXPECT_EQ(Paths::support(), expected);
    EXPECT_EQ(mode(expected), 0700U);
    EXPECT_EQ(Paths::supportFile(QStringLiteral("a.json")),
              QString(expected + QLatin1String("/a.json")));
}

TEST(Paths, anExistingSupportFolderGetsMode700AndKeepsItsFiles)
{
    const QString folder = Paths::home() + QLatin1String("/.local/share/Vellomar");
    ASSERT_TRUE(QDir().mkpath(folder + QLatin1String("/inside")));
    ASSERT_EQ(::chmod(QFile::encodeName(folder).constData(), 0755), 0);
    EXPECT_EQ(mode(Paths::support()), 0700U);
    EXPECT_TRUE(QFile::exists(folder + QLatin1String("/inside")));
}

TEST(Paths, theSupportFolderIsInTheDataFolderOfTheDesktop)
{
    const QString data = Paths::home() + QLatin1String("/elsewhere");
    qputenv("XDG_DATA_HOME", QFile::encodeName(data));
    EXPECT_EQ(Paths::support(), QString(data + QLatin1String("/Vellomar")));
    EXPECT_EQ(mode(Paths::support()), 0700U);
}

TEST(Paths, aSupportFolderThatCannotBeMadeIsNamedAllTheSame)
{
    ASSERT_TRUE(becomeOrdinaryUser());
    ASSERT_EQ(::chmod(QFile::encodeName(Paths::home()).constData(), 0500), 0);
    EXPECT_EQ(Paths::support(), QString(Paths::home() + QLatin1String("/.local/share/Vellomar")));
    EXPECT_FALSE(QFile::exists(Paths::support()));
    ASSERT_EQ(::chmod(QFile::encodeName(Paths::home()).constData(), 0700), 0);
}

TEST(Paths, theHostNameLosesEveryLocal)
{
    struct Row
    {
        const char *name;
        const char *expected;
    };
    for (const Row &row :
         {Row{"studio.local", "studio"}, Row{"a.local.lan", "a.lan"}, Row{"a.local.b.local", "a.b"},
          Row{"studio", "studio"}, Row{"local", "local"}, Row{"a.localdomain", "adomain"},
          Row{"Studio.LOCAL", "Studio.LOCAL"}, Row{"", ""}}) {
        EXPECT_EQ(Paths::withoutLocalDomain(QLatin1String(row.name)), QLatin1String(row.expected));
    }
    EXPECT_EQ(Paths::hostname(), Paths::withoutLocalDomain(QSysInfo::machineHostName()));
    EXPECT_FALSE(Paths::hostname().isEmpty());
}

TEST(Paths, theVolumeOfThePathIsWhereItsNearestExistingAncestorIs)
{
    const QString mount = Paths::home() + QLatin1String("/a disk è");
    const QString outside = Paths::volume(Paths::home()).value();
    EXPECT_TRUE(Paths::home().startsWith(outside));
    const SmallDisk disk(mount);
    ASSERT_TRUE(disk.isMounted());
    ASSERT_TRUE(QDir().mkpath(mount + QLatin1String("/there")));

    for (const char *below : {"", "/", "/there", "/there/", "/not there", "/there/not/at/all"}) {
        EXPECT_EQ(Paths::volume(mount + QLatin1String(below)), mount) << below;
    }
    EXPECT_EQ(Paths::volume(mount + QLatin1String("/there/../..")), outside);
    EXPECT_EQ(Paths::volume(Paths::home() + QLatin1String("/not/there")), outside);
    EXPECT_EQ(Paths::volume(mount + QLatin1String("2")), outside);
}

TEST(Paths, theVolumeOfARootOrOfNothingIsFoundToo)
{
    EXPECT_EQ(Paths::volume(QStringLiteral("/")), QStringLiteral("/"));
    EXPECT_EQ(Paths::volume(QStringLiteral("/nonexistent/a")), QStringLiteral("/"));
    const QString here = Paths::volume(QDir::currentPath()).value();
    EXPECT_EQ(Paths::volume(QString()), here);
    EXPECT_EQ(Paths::volume(QStringLiteral("not/there")), here);
}

TEST(Paths, aTildeInFrontIsTheHome)
{
    const QString &home = Paths::home();
    EXPECT_EQ(Paths::expandedHome(QStringLiteral("~/a/~b")),
              QString(home + QLatin1String("/a/~b")));
    EXPECT_EQ(Paths::expandedHome(QStringLiteral("~")), home);
    EXPECT_EQ(Paths::expandedHome(QStringLiteral("/a/~")), QStringLiteral("/a/~"));
    EXPECT_EQ(Paths::expandedHome(QStringLiteral(" ~/a")), QStringLiteral(" ~/a"));
    EXPECT_EQ(Paths::expandedHome(QString()), QString());
}

TEST(Paths, aFolderInFullBeginsAtTheRootOrAtTheHome)
{
    const QString &home = Paths::home();
    EXPECT_EQ(Paths::inFull(QStringLiteral("/a/b")), QStringLiteral("/a/b"));
    EXPECT_EQ(Paths::inFull(QStringLiteral("/a//b/")), QStringLiteral("/a/b"));
    EXPECT_EQ(Paths::inFull(QStringLiteral("/")), QStringLiteral("/"));
    EXPECT_EQ(Paths::inFull(QStringLiteral("--dry-run")),
              QString(home + QLatin1String("/--dry-run")));
    EXPECT_EQ(Paths::inFull(QStringLiteral("a/../b")), QString(home + QLatin1String("/b")));
    EXPECT_EQ(Paths::inFull(QStringLiteral("~/a")), QString(home + QLatin1String("/a")));
    EXPECT_EQ(Paths::inFull(QStringLiteral("~")), home);
    EXPECT_EQ(Paths::inFull(QString()), QString());
}

TEST(Paths, theHomeInFrontIsReadAsATilde)
{
    const QString &home = Paths::home();
    EXPECT_EQ(Paths::abbreviatedHome(home), QStringLiteral("~"));
    EXPECT_EQ(Paths::abbreviatedHome(home + QLatin1String("/a")), QStringLiteral("~/a"));
    EXPECT_EQ(Paths::abbreviatedHome(home + QLatin1String("2/a")),
              QString(home + QLatin1String("2/a")));
    EXPECT_EQ(Paths::abbreviatedHome(QLatin1String("/media") + home),
              QString(QLatin1String("/media") + home));
}
