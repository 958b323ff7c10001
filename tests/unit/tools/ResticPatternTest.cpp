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

TEST(IsResticPattern, bracketsAreClosedAndHoldSomething)
{
    for (const char *right :
         {"[a]", "a]", "[a]]", "[[]", "[^a]", "[a-z]", "[^^]", "[\\]]", "[a-\\]]",
          "[é-\xF0\x9F\x98\x80]", "[*]", "a/[b]/c", "[z-a]", "[a\\-b]"}) {
        EXPECT_TRUE(isResticPattern(QString::fromUtf8(right))) << right;
    }
    for (const char *wrong : {"[", "[a", "[]", "[]a]", "[^]", "[a-]", "[-a]", "[a-b-c]", "[a/b]",
                              "photos [2019", "a/[b", "x/**/[", "***[", "[\\]", "[a-\\"}) {
        EXPECT_FALSE(isResticPattern(QString::fromUtf8(wrong))) << wrong;
    }
}

TEST(IsResticPattern, aBackslashStandsBeforeACharacter)
{
    EXPECT_TRUE(isResticPattern(QStringLiteral("\\[")));
    EXPECT_TRUE(isResticPattern(QStringLiteral("a\\*")));
    EXPECT_TRUE(isResticPattern(QString::fromUtf8("\\\xF0\x9F\x98\x80")));
    EXPECT_FALSE(isResticPattern(QStringLiteral("a\\")));
    EXPECT_FALSE(isResticPattern(QStringLiteral("a\\/b")));
}

TEST(IsResticPattern, anythingElseIsRight)
{
    for (const char *right : {"", " ", "!", "!x", "**", "a**b", "/", "//", ".", "..", "~/x", "-",
                              "{a,b", "(", "# [", "node_modules"}) {
        EXPECT_TRUE(isResticPattern(QString::fromUtf8(right))) << right;
    }
    EXPECT_FALSE(isResticPattern(QStringLiteral("![")));
}

TEST(IsResticPattern, thePathCountsAsResticSimplifiesIt)
{
    EXPECT_TRUE(isResticPattern(QStringLiteral("[/..")));
    EXPECT_FALSE(isResticPattern(QStringLiteral("a/../[")));
}

TEST(IsResticPattern, variablesCountAsWhatTheyHold)
{
    qputenv("VELLOMAR_TEST_BRACKET", "[");
    qunsetenv("VELLOMAR_TEST_NONE");
    EXPECT_FALSE(isResticPattern(QStringLiteral("$VELLOMAR_TEST_BRACKET")));
    EXPECT_FALSE(isResticPattern(QStringLiteral("x${VELLOMAR_TEST_BRACKET}y")));
    EXPECT_TRUE(isResticPattern(QStringLiteral("${VELLOMAR_TEST_BRACKET}a]")));
    EXPECT_FALSE(isResticPattern(QStringLiteral("[$VELLOMAR_TEST_NONE]")));
    EXPECT_TRUE(isResticPattern(QStringLiteral("[$$]")));
    EXPECT_TRUE(isResticPattern(QStringLiteral("[$]")));
}

TEST(IsResticPattern, eachLineCounts)
{
    EXPECT_TRUE(isResticPattern(QStringLiteral("a\n  [b]  ")));
    EXPECT_FALSE(isResticPattern(QStringLiteral("a\n[b")));
}

TEST(ExcludeLine, isThePathAloneWhateverItsCharacters)
{
    EXPECT_EQ(excludeLine(QStringLiteral("/a b/c")), QStringLiteral("/a b/c"));
    EXPECT_EQ(excludeLine(QStringLiteral("/$HOME*\n")), QStringLiteral("/$$HOME\\*?"));
}

} // namespace
