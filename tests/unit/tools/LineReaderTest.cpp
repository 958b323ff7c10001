#include "tools/LineReader.h"

#include <QStringList>

#include <gtest/gtest.h>

namespace {

class LineReaderTest : public testing::Test
{
protected:
    QStringList lines;
    LineReader reader{[this](const QString &line) { lines.append(line); }};

    QStringList ofBlocks(const QList<QByteArray> &blocks)
    {
        for (const QByteArray &block : blocks) {
            reader.add(block);
        }
        reader.finish();
        return lines;
    }
};

const QChar replacement(QChar::ReplacementCharacter);

TEST_F(LineReaderTest, nothingGivesNoLine)
{
    EXPECT_EQ(ofBlocks({}), QStringList());
    EXPECT_EQ(ofBlocks({""}), QStringList());
}

TEST_F(LineReaderTest, aRestWithoutLineFeedComesAtTheEnd)
{
    reader.add("a\nb");
    EXPECT_EQ(lines, QStringList({QStringLiteral("a")}));
    reader.finish();
    EXPECT_EQ(lines, QStringList({QStringLiteral("a"), QStringLiteral("b")}));
    reader.finish();
    EXPECT_EQ(lines.size(), 2);
}

TEST_F(LineReaderTest, emptyLinesAreDelivered)
{
    EXPECT_EQ(ofBlocks({"a\n\nb\n"}),
              QStringList({QStringLiteral("a"), QString(), QStringLiteral("b")}));
}

TEST_F(LineReaderTest, aLineFeedAloneIsAnEmptyLine)
{
    EXPECT_EQ(ofBlocks({"\n"}), QStringList({QString()}));
}

TEST_F(LineReaderTest, aLineOfManyBlocksComesWholeAndOnce)
{
    EXPECT_EQ(ofBlocks({"a", "bc", "", "d", "\n", "e", "\nf\ng", "h\n"}),
              QStringList({QStringLiteral("abcd"), QStringLiteral("e"), QStringLiteral("f"),
                           QStringLiteral("gh")}));
}

TEST_F(LineReaderTest, aCarriageReturnStaysWhereItIs)
{
    EXPECT_EQ(ofBlocks({"a\r\nb\rc\r", "\n\r\n"}),
              QStringList({QStringLiteral("a\r"), QStringLiteral("b\rc\r"), QStringLiteral("\r")}));
}

TEST_F(LineReaderTest, aCharacterCutBetweenBlocksIsWhole)
{
    EXPECT_EQ(ofBlocks({"caff\xc3", "\xa8 \xf0\x9f", "\x98", "\x80\n"}),
              QStringList({QString::fromUtf8("caff\xc3\xa8 \xf0\x9f\x98\x80")}));
}

TEST_F(LineReaderTest, bytesThatAreNotUTF8AreRepaired)
{
    EXPECT_EQ(ofBlocks({"caf\xe9.txt\n\xff\n"}),
              QStringList({QLatin1String("caf") + replacement + QLatin1String(".txt"),
                           QString(replacement)}));
}

TEST_F(LineReaderTest, aCharacterCutByTheLineFeedIsRepairedAndTheNextLineIsUntouched)
{
    EXPECT_EQ(ofBlocks({"a\xc3\nb\xe2\x82"}).size(), 2);
    EXPECT_TRUE(lines.at(0).startsWith(QLatin1String("a") + replacement));
    EXPECT_TRUE(lines.at(1).startsWith(QLatin1String("b") + replacement));
}

TEST_F(LineReaderTest, aByteOrderMarkIsACharacterOfTheLine)
{
    EXPECT_EQ(ofBlocks({"\xef\xbb\xbf"
                        "a\n"}),
              QStringList({QChar(QChar::ByteOrderMark) + QLatin1String("a")}));
}

TEST_F(LineReaderTest, nulBytesStay)
{
    const QByteArray bytes("a\0b\n\0\n", 6);
    ASSERT_EQ(ofBlocks({bytes}).size(), 2);
    EXPECT_EQ(lines.at(0), QString(u'a') + QChar(u'\0') + QLatin1String("b"));
    EXPECT_EQ(lines.at(1), QString(QChar(u'\0')));
}

TEST_F(LineReaderTest, everyCutOfAStreamGivesTheSameLines)
{
    const QByteArray stream("\xc3\xa8\n\n\xe2\x82\xac x\r\n\xff\xc3\nlast");
    reader.add(stream);
    reader.finish();
    const QStringList whole = lines;
    ASSERT_EQ(whole.size(), 5);
    for (qsizetype first = 0; first <= stream.size(); ++first) {
        for (qsizetype second = first; second <= stream.size(); ++second) {
            QStringList cut;
            LineReader other([&cut](const QString &line) { cut.append(line); });
            other.add(QByteArrayView(stream).first(first));
            other.add(QByteArrayView(stream).sliced(first, second - first));
            other.add(QByteArrayView(stream).sliced(second));
            other.finish();
            ASSERT_EQ(cut, whole) << first << ", " << second;
        }
    }
}

TEST_F(LineReaderTest, aLineOfTwentyMegabytesInSmallBlocksIsWhole)
{
    const QByteArray block(64 * 1024, 'x');
    for (int i = 0; i < 320; ++i) {
        reader.add(block);
    }
    EXPECT_TRUE(lines.isEmpty());
    reader.add("\nnext\n");
    ASSERT_EQ(lines.size(), 2);
    EXPECT_EQ(lines.at(0), QString(20 * 1024 * 1024, u'x'));
    EXPECT_EQ(lines.at(1), QStringLiteral("next"));
}

TEST_F(LineReaderTest, ofALineOfThreeHundredMegabytesTheBeginningComesAndTheNextLineIsWhole)
{
    const QByteArray block(1024 * 1024, 'x');
    for (int i = 0; i < 300; ++i) {
        reader.add(block);
    }
    reader.add("\nnext\n");
    ASSERT_EQ(lines.size(), 2);
    EXPECT_EQ(lines.at(0), QString(LineReader::longestLine, u'x'));
    EXPECT_EQ(lines.at(1), QStringLiteral("next"));
}

TEST_F(LineReaderTest, aLineIsCutAtItsLimitWhereverTheBlocksEnd)
{
    for (const QList<QByteArray> &blocks :
         {QList<QByteArray>{"abcdef\nabcd\nabc\nabcde"},
          {"abc", "def\na", "bcd\nabc\nabcd", "e"},
          {"abcd", "ef", "\nabcd", "\nab", "c\n", "abcd", "efgh"}}) {
        QStringList cut;
        LineReader other([&cut](const QString &line) { cut.append(line); }, 4);
        for (const QByteArray &block : blocks) {
            other.add(block);
        }
        other.finish();
        EXPECT_EQ(cut, QStringList({QStringLiteral("abcd"), QStringLiteral("abcd"),
                                    QStringLiteral("abc"), QStringLiteral("abcd")}));
    }
}

TEST(RepairedText, validTextIsUntouched)
{
    EXPECT_EQ(repairedText({}), QString());
    EXPECT_EQ(repairedText("\xe6\x97\xa5\xe6\x9c\xac \xf0\x9f\x98\x80"),
              QString::fromUtf8("\xe6\x97\xa5\xe6\x9c\xac \xf0\x9f\x98\x80"));
}

TEST(RepairedText, overlongFormsAndSurrogatesAreNoText)
{
    for (const QByteArray &bytes :
         {QByteArray("\xc0\xaf"), QByteArray("\xed\xa0\x80"), QByteArray("\xf8\x88\x80\x80\x80"),
          QByteArray("\xe2\x82"), QByteArray("\x80")}) {
        const QString text = repairedText(bytes);
        EXPECT_FALSE(text.isEmpty());
        EXPECT_EQ(text.count(replacement), text.size()) << bytes.toHex().constData();
    }
}

} // namespace
