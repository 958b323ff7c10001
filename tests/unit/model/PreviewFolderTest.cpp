#include "model/PreviewFolder.h"
#include "tests/support/Files.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <gtest/gtest.h>

#include <unistd.h>

namespace {

class PreviewFolderTest : public testing::Test
{
protected:
    PreviewFolderTest()
    {
        QDir().mkpath(QDir::homePath() + QLatin1String("/tmp"));
        qputenv("TMPDIR", QFile::encodeName(QDir::homePath() + QLatin1String("/tmp")));
    }
};

TEST_F(PreviewFolderTest, standsInTheTemporaryFolder)
{
    EXPECT_EQ(PreviewFolder::path(),
              QString(QDir::homePath() + QLatin1String("/tmp/Vellomar-Anteprima")));
}

TEST_F(PreviewFolderTest, goesWithAllThatItHolds)
{
    PreviewFolder::remove();
    writeFile(PreviewFolder::path() + QLatin1String("/a/.b/c"));
    PreviewFolder::remove();
    EXPECT_FALSE(QFileInfo::exists(PreviewFolder::path()));
}

TEST_F(PreviewFolderTest, whatALinkInItPointsToStays)
{
    const QString kept = QDir::homePath() + QLatin1String("/kept/file");
    writeFile(kept);
    writeFile(PreviewFolder::path() + QLatin1String("/a"));
    ASSERT_TRUE(QFile::link(QFileInfo(kept).path(), PreviewFolder::path() + QLatin1String("/l")));
    PreviewFolder::remove();
    EXPECT_FALSE(QFileInfo::exists(PreviewFolder::path()));
    EXPECT_TRUE(QFileInfo::exists(kept));
}

TEST_F(PreviewFolderTest, aLinkInItsPlaceIsLeftAlone)
{
    const QString kept = QDir::homePath() + QLatin1String("/kept/file");
    writeFile(kept);
    ASSERT_TRUE(QFile::link(QFileInfo(kept).path(), PreviewFolder::path()));
    PreviewFolder::remove();
    EXPECT_TRUE(QFileInfo::exists(kept));
    EXPECT_TRUE(QFileInfo(PreviewFolder::path()).isSymLink());
}

TEST_F(PreviewFolderTest, aPlainFileInItsPlaceIsLeftAlone)
{
    writeFile(PreviewFolder::path());
    PreviewFolder::remove();
    EXPECT_TRUE(QFileInfo::exists(PreviewFolder::path()));
}

} // namespace
