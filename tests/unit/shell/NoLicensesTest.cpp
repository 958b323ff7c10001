#include "ui/shell/Licenses.h"

#include <gtest/gtest.h>

namespace {

// This program's resources have no notices.
TEST(LicensesWithoutAFolder, areNotFound)
{
    for (const QString &name : {QStringLiteral("restic"), QStringLiteral("rclone")}) {
        EXPECT_EQ(Licenses::text(name), QStringLiteral("Licenza non trovata."));
    }
    EXPECT_EQ(Licenses::names(), QStringList({QStringLiteral("restic"), QStringLiteral("rclone")}));
}

} // namespace
