#include "state/SupportFolder.h"

#include "state/Paths.h"
#include "tests/support/Files.h"
#include "tests/support/OrdinaryUser.h"
#include "tests/support/SmallDisk.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

#include <cerrno>

#include <sys/stat.h>

namespace {

QString folder()
{
    return Paths::home() + QLatin1String("/.local/share/Vellomar");
}

} // namespace

TEST(SupportFolder, aGoodOneHasNoFaultAndNothingIsLeftInIt)
{
    EXPECT_EQ(SupportFolder::fault(), std::nullopt);
    EXPECT_TRUE(QDir(folder()).isEmpty());
}

TEST(SupportFolder, oneThatIsAFileIsNoFolder)
{
    ASSERT_TRUE(writeFile(folder()));
    EXPECT_EQ(SupportFolder::fault(), QStringLiteral("non è una cartella"));
}

TEST(SupportFolder, oneThatCannotBeMadeIsReported)
{
    ASSERT_TRUE(writeFile(Paths::home() + QLatin1String("/.local")));
    EXPECT_EQ(SupportFolder::fault(), QStringLiteral("non è una cartella"));
}

TEST(SupportFolder, oneThatMayNotBeEnteredOrMadeIsReported)
{
    const QByteArray parent = QFile::encodeName(Paths::home() + QLatin1String("/.local/share"));
    ASSERT_TRUE(QDir().mkpath(folder()));
    ASSERT_TRUE(becomeOrdinaryUser());
    ASSERT_EQ(::chmod(parent.constData(), 0), 0);
    EXPECT_EQ(SupportFolder::fault(), QStringLiteral("permesso negato"));
    ASSERT_EQ(::chmod(parent.constData(), 0700), 0);
    ASSERT_TRUE(QDir().rmdir(folder()));
    ASSERT_EQ(::chmod(parent.constData(), 0500), 0);
    EXPECT_EQ(SupportFolder::fault(), QStringLiteral("non si può creare"));
    ASSERT_EQ(::chmod(parent.constData(), 0700), 0);
}

TEST(SupportFolder, oneOnADiskThatLetsNobodyWriteIsReported)
{
    const SmallDisk disk(folder());
    ASSERT_TRUE(disk.isMounted());
    ASSERT_TRUE(disk.makeReadOnly());
    EXPECT_EQ(SupportFolder::fault(), QStringLiteral("il disco è in sola lettura"));
}

TEST(SupportFolder, errorsWithoutWordsOfOursKeepTheSystems)
{
    EXPECT_EQ(SupportFolder::words(EPERM), QStringLiteral("permesso negato"));
    EXPECT_EQ(SupportFolder::words(ENOSPC), QStringLiteral("il disco è pieno"));
    EXPECT_EQ(SupportFolder::words(EIO), qt_error_string(EIO));
}
