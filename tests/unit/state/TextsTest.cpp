#include "state/Texts.h"
#include "tests/support/EventLoop.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

QString every(int hours)
{
    return Texts::tr("Backup automatico ogni %n ore.", nullptr, hours);
}

TEST(Texts, withoutAnApplicationTheSourceTextComesOut)
{
    EXPECT_EQ(every(1), QStringLiteral("Backup automatico ogni 1 ore."));
    EXPECT_EQ(Texts::tr("Disco non collegato"), QStringLiteral("Disco non collegato"));
}

TEST(Texts, theCatalogueHasTheSingulars)
{
    const TestApplication application;
    Texts::load();
    EXPECT_EQ(every(1), QStringLiteral("Backup automatico ogni ora."));
    EXPECT_EQ(every(2), QStringLiteral("Backup automatico ogni 2 ore."));
    EXPECT_EQ(every(0), QStringLiteral("Backup automatico ogni 0 ore."));
    EXPECT_EQ(Texts::tr("%n versioni", nullptr, 1), QStringLiteral("1 versione"));
    EXPECT_EQ(Texts::tr("%n versioni", nullptr, 21), QStringLiteral("21 versioni"));
}

TEST(Texts, aTextWithoutASingularKeepsItsWords)
{
    const TestApplication application;
    Texts::load();
    EXPECT_EQ(Texts::tr("Completato, ma %n elementi non erano leggibili", nullptr, 1),
              QStringLiteral("Completato, ma 1 elementi non erano leggibili"));
    EXPECT_EQ(Texts::tr("%1 ore", nullptr, 1).arg(1), QStringLiteral("1 ore"));
}

TEST(Texts, aCountIsWhatATextCanTake)
{
    EXPECT_EQ(Texts::count(1), 1);
    EXPECT_EQ(Texts::count(-5), 0);
    EXPECT_EQ(Texts::count(std::numeric_limits<qint64>::max()), std::numeric_limits<int>::max());
}

} // namespace
