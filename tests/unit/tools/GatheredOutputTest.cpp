#include "tools/GatheredOutput.h"

#include <QList>

#include <gtest/gtest.h>

namespace {

// What is kept of standard error, with a limit of twice four bytes.
QString endsOf(const QList<QByteArray> &blocks)
{
    EndsOfOutput errors(4);
    for (const QByteArray &block : blocks) {
        errors.add(block);
    }
    return errors.text();
}

} // namespace

TEST(GatheredOutput, anAnswerIsWhole)
{
    WholeOutput answer;
    EXPECT_EQ(answer.text(), QString());
    answer.add("a\xc3");
    answer.add("\xa8\n");
    EXPECT_EQ(answer.text(), QStringLiteral("aè\n"));
    EXPECT_FALSE(answer.isTooLong());
}

TEST(GatheredOutput, errorsThatFitAreWholeWhereverTheBlocksEnd)
{
    EXPECT_EQ(endsOf({}), QString());
    EXPECT_EQ(endsOf({"abcdefgh"}), QStringLiteral("abcdefgh"));
    EXPECT_EQ(endsOf({"ab", "cde", "fg", "h"}), QStringLiteral("abcdefgh"));
    EXPECT_EQ(endsOf({"abc\xc3", "\xa8"}), QStringLiteral("abcè"));
}

TEST(GatheredOutput, ofMoreErrorsTheMiddleIsLeftOutAndALineFeedStandsForIt)
{
    EXPECT_EQ(endsOf({"abcdefghi"}), QStringLiteral("abcd\nfghi"));
    EXPECT_EQ(endsOf({"abcdefghijklmnopqrstuvwxyz"}), QStringLiteral("abcd\nwxyz"));
    QList<QByteArray> letters;
    for (char letter = 'a'; letter <= 'z'; ++letter) {
        letters.append(QByteArray(1, letter));
    }
    EXPECT_EQ(endsOf(letters), QStringLiteral("abcd\nwxyz"));
}
