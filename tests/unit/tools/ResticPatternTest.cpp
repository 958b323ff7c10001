#include "tools/ResticPattern.h"

#include <gtest/gtest.h>

namespace {

TEST(EscapedPattern, takesTheMeaningFromEveryWildcard)
{
    EXPECT_EQ(escapedPattern(QStringLiteral("a\\b*c?d[e]f")),
              QStringLiteral("a\\\\b\\*c\\?d\\[e]f"));
    EXPECT_EQ(escapedPattern(QStringLiteral("**")), QStringLiteral("\\*\\*"));
    EXPECT_EQ(escapedPattern(QStringLiteral("plain {x} $1 \\1")),
              QStringLiteral("plain {x} $1 \\\\1"));
    EXPECT_EQ(escapedPattern(QString()), QString());
    EXPECT_EQ(escapedPattern(QString::fromUtf8("caf\xef\xbf\xbd")),
              QString::fromUtf8("caf[\xef\xbf\xbd]"));
}

TEST(ExcludeLine, isThePathAloneWhateverItsCharacters)
{
    EXPECT_EQ(excludeLine(QStringLiteral("/a b/c")), QStringLiteral("/a b/c"));
    EXPECT_EQ(excludeLine(QStringLiteral("/$HOME*\n")), QStringLiteral("/$$HOME\\*?"));
}

} // namespace
