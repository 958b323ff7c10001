#include "platform/MountPoint.h"

#include "tests/support/SmallDisk.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

#include <sys/mount.h>

namespace {

/// A disk of the test's own, whose folders may be mounted further times.
class MountPointTest : public testing::Test
{
protected:
    void SetUp() override { ASSERT_TRUE(disk.isMounted()); }

    static QString folder(const QString &path)
    {
        QDir().mkpath(path);
        return path;
    }

    static bool mountAgain(const QString &what, const QString &where)
    {
        return ::mount(QFile::encodeName(what).constData(), QFile::encodeName(where).constData(),
                       nullptr, MS_BIND, nullptr) == 0;
    }

    const QString home = QDir::homePath();
    const QString place = home + QString::fromUtf8("/a disk\\\t\xc3\xa8");
    SmallDisk disk{place};
    const QString inside = folder(place + QLatin1String("/one/two"));
};

TEST_F(MountPointTest, aPlaceThatIsMountedOnceHasNoOtherName)
{
    EXPECT_EQ(mountPoint(inside), place);
    EXPECT_EQ(otherMountsOf(inside), QStringList());
    EXPECT_EQ(otherMountsOf(place), QStringList());
    EXPECT_EQ(otherMountsOf(home + QLatin1String("/missing")), QStringList());
}

TEST_F(MountPointTest, anotherMountOfTheWholeOrAPartIsAnotherName)
{
    const QString whole = folder(home + QLatin1String("/whole"));
    const QString part = folder(home + QLatin1String("/a part"));
    ASSERT_TRUE(mountAgain(place, whole));
    ASSERT_TRUE(mountAgain(place + QLatin1String("/one"), part));
    EXPECT_EQ(otherMountsOf(inside),
              (QStringList{whole + QLatin1String("/one/two"), part + QLatin1String("/two")}));
    EXPECT_EQ(otherMountsOf(part + QLatin1String("/two")),
              (QStringList{inside, whole + QLatin1String("/one/two")}));
    EXPECT_EQ(otherMountsOf(place), QStringList{whole});
    EXPECT_EQ(otherMountsOf(place + QLatin1String("/one")),
              (QStringList{whole + QLatin1String("/one"), part}));
}

TEST_F(MountPointTest, aNameThatIsHiddenByAnotherMountIsNone)
{
    const QString whole = folder(home + QLatin1String("/whole"));
    ASSERT_TRUE(mountAgain(place, whole));
    const SmallDisk over(whole);
    ASSERT_TRUE(over.isMounted());
    EXPECT_EQ(otherMountsOf(inside), QStringList());
}

} // namespace
