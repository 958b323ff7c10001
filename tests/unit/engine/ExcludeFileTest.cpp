#include "engine/ExcludeFile.h"

#include <gtest/gtest.h>

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

TEST(ExcludeFile, specialCharactersOfTheDisksPathMeanThemselves)
{
    AppConfig config = withoutExcludes();
    config.localEnabled = true;
    config.localFolder = QStringLiteral("/media/My [1] *disk? $HOME \\ a\nb");
    EXPECT_EQ(ExcludeFile::content(config),
              QStringLiteral("/media/My \\[1] \\*disk\\? $$HOME \\\\ a?b/Vellomar.backup"));
}

} // namespace
