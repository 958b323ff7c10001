#include "engine/ExcludeFile.h"

#include "tests/support/SmallDisk.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

#include <sys/mount.h>

namespace {

AppConfig withoutExcludes()
{
    AppConfig config;
    config.excludes.clear();
    return config;
}

TEST(ExcludeFile, noPatternsAndNoDiskGiveAnEmptyFile)
{
    EXPECT_EQ(ExcludeFile::content(withoutExcludes()), QString());
}

TEST(ExcludeFile, aLeadingTildeBecomesTheHomeWhateverFollows)
{
    AppConfig config = withoutExcludes();
    config.excludes = {QStringLiteral("~/Library/Caches"), QStringLiteral("~stuck"),
                       QStringLiteral("a~b")};
    EXPECT_EQ(ExcludeFile::content(config), Paths::home() + QLatin1String("/Library/Caches\n") +
                                                Paths::home() + QLatin1String("stuck\na~b"));
}

TEST(ExcludeFile, theRepositoryOnTheDiskStandsLast)
{
    AppConfig config = withoutExcludes();
    config.excludes = {QStringLiteral("node_modules")};
    config.localEnabled = true;
    config.localFolder = QStringLiteral("/media/disk");
    EXPECT_EQ(ExcludeFile::content(config),
              QStringLiteral("node_modules\n/media/disk/Vellomar.backup"));
}

QString made(const QString &name)
{
    const QString path = Paths::home() + u'/' + name;
    QDir().mkpath(path);
    return path;
}

QString linked(const QString &name, const QString &target)
{
    const QString path = Paths::home() + u'/' + name;
    QFile::link(target, path);
    return path;
}

TEST(ExcludeFile, aRepositoryOnADiskThatALinkNamesIsLeftOutWhereItIs)
{
    AppConfig config = withoutExcludes();
    const QString real = made(QStringLiteral("media/[disk]/Vellomar.backup"));
    config.localEnabled = true;
    config.localFolder = linked(QStringLiteral("disk"), made(QStringLiteral("media/[disk]")));
    config.sources = {Paths::home()};
    EXPECT_EQ(ExcludeFile::content(config).split(u'\n'),
              (QStringList{config.localFolder + QLatin1String("/Vellomar.backup"),
                           Paths::home() + QLatin1String("/media/\\[disk]/Vellomar.backup")}));
}

TEST(ExcludeFile, aRepositoryInASourceThatIsReachedThroughALinkIsLeftOutThere)
{
    AppConfig config = withoutExcludes();
    const QString real = made(QStringLiteral("media/disk"));
    made(QStringLiteral("media/disk/Vellomar.backup"));
    linked(QStringLiteral("link"), made(QStringLiteral("media")));
    config.localEnabled = true;
    config.localFolder = real;
    config.sources = {Paths::home() + QLatin1String("/link/disk")};
    EXPECT_EQ(ExcludeFile::content(config).split(u'\n'),
              (QStringList{real + QLatin1String("/Vellomar.backup"),
                           Paths::home() + QLatin1String("/link/disk/Vellomar.backup")}));
}

TEST(ExcludeFile, aRepositoryThatIsMountedASecondTimeIsLeftOutThereToo)
{
    const QString place = made(QStringLiteral("media/disk"));
    const SmallDisk disk(place);
    ASSERT_TRUE(disk.isMounted());
    made(QStringLiteral("media/disk/Vellomar.backup"));
    const QString second = made(QStringLiteral("second"));
    ASSERT_EQ(::mount(QFile::encodeName(place).constData(), QFile::encodeName(second).constData(),
                      nullptr, MS_BIND, nullptr),
              0);
    AppConfig config = withoutExcludes();
    config.localEnabled = true;
    config.localFolder = place;
    config.sources = {Paths::home()};
    EXPECT_EQ(ExcludeFile::content(config).split(u'\n'),
              (QStringList{place + QLatin1String("/Vellomar.backup"),
                           second + QLatin1String("/Vellomar.backup")}));
}

TEST(ExcludeFile, whatIsLeftOutOfASourceThatIsALinkIsLeftOutOfWhereItLeads)
{
    AppConfig config = withoutExcludes();
    const QString target = made(QStringLiteral("real *"));
    const QString link = linked(QStringLiteral("Documenti"), target);
    config.sources = {link};
    config.excludes = {QStringLiteral("~/Documenti/private"), QStringLiteral("~/Documenti2/a")};
    EXPECT_EQ(ExcludeFile::content(config).split(u'\n'),
              (QStringList{link + QLatin1String("/private"),
                           Paths::home() + QLatin1String("/real \\*/private"),
                           Paths::home() + QLatin1String("/Documenti2/a")}));
}

TEST(ExcludeFile, specialCharactersOfTheDisksPathMeanThemselves)
{
    AppConfig config = withoutExcludes();
    config.localEnabled = true;
    config.localFolder = QStringLiteral("/media/My [1] *disk? $HOME \\ a\nb");
    EXPECT_EQ(ExcludeFile::content(config),
              QStringLiteral("/media/My \\[1] \\*disk\\? $$HOME \\\\ a?b/Vellomar.backup"));
}

} // namespace
