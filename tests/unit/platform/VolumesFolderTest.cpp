#include "platform/VolumesFolder.h"

#include <QDir>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

class VolumesFolder : public testing::Test
{
protected:
    [[nodiscard]] QString found(const QString &user = QStringLiteral("anna")) const
    {
        return volumesFolder(user, folder.path() + u'/').mid(folder.path().size());
    }
    void make(const char *path) const
    {
        ASSERT_TRUE(QDir(folder.path()).mkpath(QString::fromLatin1(path)));
    }

    QTemporaryDir folder;
};

TEST_F(VolumesFolder, isTheNearestThatIsThere)
{
    EXPECT_EQ(found(), QStringLiteral("/"));
    make("media");
    EXPECT_EQ(found(), QStringLiteral("/media"));
    make("media/bruno");
    EXPECT_EQ(found(), QStringLiteral("/media"));
    make("media/anna");
    EXPECT_EQ(found(), QStringLiteral("/media/anna"));
    make("run/media/anna");
    EXPECT_EQ(found(), QStringLiteral("/run/media/anna"));
    EXPECT_EQ(found(QString()), QStringLiteral("/media"));
}

TEST_F(VolumesFolder, isThereOnThisMachine)
{
    EXPECT_TRUE(QFileInfo(volumesFolder()).isDir());
}

} // namespace
