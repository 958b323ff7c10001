#include "ui/shell/Licenses.h"

#include <gtest/gtest.h>

namespace {

const QString missing = QStringLiteral("Licenza non trovata.");

TEST(Licenses, theToolsComeFirstWithTheirRealNotices)
{
    ASSERT_GE(Licenses::names().size(), 2);
    EXPECT_EQ(Licenses::names().first(2),
              QStringList({QStringLiteral("restic"), QStringLiteral("rclone")}));
    EXPECT_TRUE(Licenses::text(QStringLiteral("restic")).contains(QLatin1String("Neumann")));
    EXPECT_TRUE(Licenses::text(QStringLiteral("rclone")).contains(QLatin1String("Craig-Wood")));
}

TEST(Licenses, everyPartThatAsksForOneHasItsNotice)
{
    for (const QString &name :
         {QStringLiteral("Qt"), QStringLiteral("Qt Quick"), QStringLiteral("Qt SVG"),
          QStringLiteral("GLib"), QStringLiteral("ICU"), QStringLiteral("libsecret"),
          QStringLiteral("Bootstrap Icons"), QStringLiteral("Inter"),
          QStringLiteral("Quicksand")}) {
        EXPECT_TRUE(Licenses::names().contains(name)) << name.toStdString();
        const QString text = Licenses::text(name);
        EXPECT_NE(text, missing) << name.toStdString();
        EXPECT_TRUE(text.contains(QLatin1String("opyright"))) << name.toStdString();
    }
    EXPECT_TRUE(
        Licenses::text(QStringLiteral("Inter")).contains(QLatin1String("Open Font License")));
    EXPECT_TRUE(Licenses::text(QStringLiteral("Qt")).contains(QLatin1String("LGPL-3")));
}

TEST(Licenses, whatTheNoticesOnlyNameIsThereInFull)
{
    EXPECT_TRUE(Licenses::text(QStringLiteral("LGPL-3"))
                    .contains(QLatin1String("GNU LESSER GENERAL PUBLIC LICENSE")));
    EXPECT_TRUE(Licenses::text(QStringLiteral("GPL-3"))
                    .contains(QLatin1String("GNU GENERAL PUBLIC LICENSE")));
    EXPECT_TRUE(
        Licenses::text(QStringLiteral("Apache-2.0")).contains(QLatin1String("Apache License")));
}

TEST(Licenses, everyNameHasAText)
{
    for (const QString &name : Licenses::names()) {
        EXPECT_NE(Licenses::text(name), missing) << name.toStdString();
    }
}

TEST(Licenses, oneThatIsMissingIsNotFound)
{
    EXPECT_EQ(Licenses::text(QStringLiteral("no such thing")), missing);
    EXPECT_EQ(Licenses::text(QString()), missing);
    EXPECT_EQ(Licenses::text(QStringLiteral("../licenses/restic")), missing);
}

} // namespace
