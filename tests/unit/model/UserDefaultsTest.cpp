#include "model/UserDefaults.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <gtest/gtest.h>

#include <sys/stat.h>

namespace {

class UserDefaultsTest : public testing::Test
{
protected:
    static unsigned permissions(const QString &path)
    {
        struct stat status = {};
        EXPECT_EQ(::stat(QFile::encodeName(path).constData(), &status), 0) << path.toStdString();
        return status.st_mode & 07777U;
    }
    static void write(int value)
    {
        UserDefaults::set(UserDefaults::pendingAction, value);
        ASSERT_EQ(UserDefaults::value(UserDefaults::pendingAction), QVariant(value));
    }

    const QString folder = QDir::homePath() + QLatin1String("/.config/Vellomar");
    const QString file = folder + QLatin1String("/Vellomar.ini");
};

TEST_F(UserDefaultsTest, areForNobodyElseToRead)
{
    write(1);
    EXPECT_EQ(permissions(file), 0600U);
    EXPECT_EQ(permissions(folder), 0700U);
    write(2);
    EXPECT_EQ(permissions(file), 0600U);
}

TEST_F(UserDefaultsTest, thatOthersCouldReadAreTakenFromThem)
{
    write(1);
    ASSERT_EQ(::chmod(QFile::encodeName(file).constData(), 0644), 0);
    write(2);
    EXPECT_EQ(permissions(file), 0600U);
}

TEST_F(UserDefaultsTest, leaveAFolderThatIsThereAsItIs)
{
    ASSERT_TRUE(QDir().mkpath(folder));
    ASSERT_EQ(::chmod(QFile::encodeName(folder).constData(), 0755), 0);
    write(1);
    EXPECT_EQ(permissions(folder), 0755U);
    EXPECT_EQ(permissions(file), 0600U);
}

} // namespace
