#include "state/Paths.h"
#include "tests/support/Files.h"
#include "ui/shell/Licenses.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

namespace {

/// A folder of notices in this test's resources, which otherwise have none.
class DamagedLicense : public testing::Test
{
protected:
    void SetUp() override { ASSERT_TRUE(QDir().mkpath(folder)); }
    void TearDown() override { QDir(folder).removeRecursively(); }

    [[nodiscard]] bool write(const QByteArray &content) const
    {
        return writeFile(folder + QLatin1String("/restic.txt"), content);
    }

    const QString folder = *Paths::resources() + QLatin1String("/licenses");
};

TEST_F(DamagedLicense, isNotFoundWhenItIsNotUtf8)
{
    ASSERT_TRUE(write("caff\xc3\xa8\n"));
    EXPECT_EQ(Licenses::text(QStringLiteral("restic")), QStringLiteral("caff\u00e8\n"));
    ASSERT_TRUE(write("caff\xe8\n"));
    EXPECT_EQ(Licenses::text(QStringLiteral("restic")), QStringLiteral("Licenza non trovata."));
    // Nor when it is no file.
    ASSERT_TRUE(QFile::remove(folder + QLatin1String("/restic.txt")));
    ASSERT_TRUE(QDir(folder).mkdir(QStringLiteral("restic.txt")));
    EXPECT_EQ(Licenses::text(QStringLiteral("restic")), QStringLiteral("Licenza non trovata."));
}

} // namespace
