#include "engine/Sources.h"

#include "state/Paths.h"
#include "tests/support/Files.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

namespace {

class SourcesTest : public testing::Test
{
protected:
    static QString folder(const char *name)
    {
        QString path = Paths::home() + u'/' + QString::fromUtf8(name);
        QDir().mkpath(path);
        return path;
    }

    AppConfig config;
};

TEST_F(SourcesTest, whatIsMissingIsLeftOut)
{
    config.sources = {QStringLiteral("/no such folder"), folder("a"), QString(), folder("b")};
    EXPECT_EQ(Sources::existing(config), (QStringList{folder("a"), folder("b")}));
}

TEST_F(SourcesTest, sourcesKeepTheirOrderAndMayBeFilesAndLinks)
{
    const QString file = folder("source") + QLatin1String("/file");
    ASSERT_TRUE(writeFile(file));
    const QString link = Paths::home() + QLatin1String("/link");
    const QString dangling = Paths::home() + QLatin1String("/dangling");
    ASSERT_TRUE(QFile::link(folder("z"), link));
    ASSERT_TRUE(QFile::link(QStringLiteral("/no such target"), dangling));
    config.sources = {folder("z"), dangling, link, folder("a"), file};
    EXPECT_EQ(Sources::existing(config), (QStringList{folder("z"), link, folder("a"), file}));
}

TEST_F(SourcesTest, aSourceIsAFullPathHoweverItIsWritten)
{
    folder("source");
    folder("--dry-run");
    folder("-r");
    folder("plain/inside");
    config.sources = {QStringLiteral("--dry-run"), QStringLiteral("-r"),
                      QStringLiteral("plain/inside"), QStringLiteral("~/source"),
                      QStringLiteral("~")};
    const QString &home = Paths::home();
    EXPECT_EQ(Sources::existing(config),
              (QStringList{home + QLatin1String("/--dry-run"), home + QLatin1String("/-r"),
                           home + QLatin1String("/plain/inside"), home + QLatin1String("/source"),
                           home}));
}

TEST_F(SourcesTest, behindASourceThatIsALinkStandsWhatItLeadsTo)
{
    const QString target = folder("target");
    const QString near = Paths::home() + QLatin1String("/near");
    const QString far = folder("links") + QLatin1String("/far");
    ASSERT_TRUE(QFile::link(QStringLiteral("../target"), far));
    ASSERT_TRUE(QFile::link(QStringLiteral("links/far"), near));
    config.sources = {near, folder("a")};
    EXPECT_EQ(Sources::existing(config), (QStringList{near, far, target, folder("a")}));
}

TEST_F(SourcesTest, aPlaceThatTwoSourcesLeadToStandsThereOnce)
{
    const QString target = folder("target");
    const QString one = Paths::home() + QLatin1String("/one");
    const QString two = Paths::home() + QLatin1String("/two");
    ASSERT_TRUE(QFile::link(target, one));
    ASSERT_TRUE(QFile::link(target, two));
    config.sources = {one, target, two, one + QLatin1Char('/')};
    EXPECT_EQ(Sources::existing(config), (QStringList{one, target, two}));
}

TEST_F(SourcesTest, linksInACircleAreAsMissing)
{
    const QString one = Paths::home() + QLatin1String("/one");
    const QString two = Paths::home() + QLatin1String("/two");
    ASSERT_TRUE(QFile::link(one, two));
    ASSERT_TRUE(QFile::link(two, one));
    config.sources = {one, folder("a")};
    EXPECT_EQ(Sources::existing(config), QStringList{folder("a")});
}

} // namespace
