#include "ui/shell/TextPrinter.h"

#include "tests/support/Screen.h"

#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QPdfWriter>
#include <QProcess>
#include <QRegularExpression>

#include <gtest/gtest.h>

#include <array>

namespace {

/// A word on paper: its place in points.
struct Word
{
    QString text;
    QRectF place;
};

/// Prints to a PDF file and reads it as a program that shows it would.
class TextPrinterTest : public testing::Test
{
protected:
    static QList<QList<Word>> pagesOf(const QString &file)
    {
        static const QRegularExpression wordLine(QStringLiteral(
            "<word xMin=\"(.*?)\" yMin=\"(.*?)\" xMax=\"(.*?)\" yMax=\"(.*?)\">(.*?)</word>"));
        QList<QList<Word>> pages;
        for (const QString &line :
             run(QStringLiteral("pdftotext"), {QStringLiteral("-bbox"), file, QStringLiteral("-")})
                 .split(u'\n')) {
            if (line.contains(QLatin1String("<page "))) {
                pages.append(QList<Word>());
            }
            const QRegularExpressionMatch match = wordLine.match(line);
            if (match.hasMatch()) {
                const QPointF topLeft(match.captured(1).toDouble(), match.captured(2).toDouble());
                const QPointF end(match.captured(3).toDouble(), match.captured(4).toDouble());
                pages.last().append({.text = match.captured(5), .place = QRectF(topLeft, end)});
            }
        }
        return pages;
    }
    static QString run(const QString &program, const QStringList &arguments)
    {
        QProcess process;
        process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        process.start(program, arguments);
        EXPECT_TRUE(process.waitForFinished(60000)) << program.toStdString();
        EXPECT_EQ(process.exitCode(), 0);
        return QString::fromUtf8(process.readAllStandardOutput());
    }
    QList<QList<Word>> printed(const QString &text, const QPageSize &paper)
    {
        QPdfWriter writer(file);
        writer.setPageSize(paper);
        writer.setPageMargins(QMarginsF());
        EXPECT_TRUE(TextPrinter::print(text, writer));
        return pagesOf(file);
    }

    struct RuntimeFolder
    {
        RuntimeFolder() { makeRuntimeFolder(); }
    };

    const RuntimeFolder runtime;
    int argc = 3;
    QByteArray name{"test"};
    QByteArray option{"-platform"};
    QByteArray platform{"offscreen"};
    std::array<char *, 4> argv{name.data(), option.data(), platform.data(), nullptr};
    QGuiApplication app{argc, argv.data()};
    const QString file = QDir::homePath() + QLatin1String("/paper.pdf");
};

constexpr qreal a4Width = 595;
constexpr qreal a4Height = 842;

TEST_F(TextPrinterTest, aShortTextIsOnOnePageInTheMiddleOfItsWidth)
{
    const QList<QList<Word>> pages =
        printed(QStringLiteral("first\n\nthird \u00e8 \"quoted\""), QPageSize(QPageSize::A4));
    ASSERT_EQ(pages.size(), 1);
    ASSERT_EQ(pages.first().size(), 4);
    const QRectF first = pages.first().first().place;
    EXPECT_NEAR(first.left(), (a4Width - 480) / 2, 1);
    EXPECT_GE(first.top(), (a4Height - 640) / 2 - 2);
    EXPECT_LT(first.top(), (a4Height - 640) / 2 + 12);
    EXPECT_EQ(pages.first().at(2).text, QStringLiteral("\u00e8"));
    EXPECT_EQ(pages.first().at(3).text, QStringLiteral("&quot;quoted&quot;"));
    // The empty line is there.
    EXPECT_GT(pages.first().at(1).place.top() - first.top(), 24);
}

TEST_F(TextPrinterTest, itsFontIsMonospacedAnd12PointsHigh)
{
    const QList<QList<Word>> pages =
        printed(QStringLiteral("iiiiiiiiii\nMMMMMMMMMM"), QPageSize(QPageSize::A4));
    ASSERT_EQ(pages.size(), 1);
    ASSERT_EQ(pages.first().size(), 2);
    const QRectF narrow = pages.first().first().place;
    const QRectF wide = pages.first().last().place;
    EXPECT_NEAR(narrow.width(), wide.width(), 0.5);
    // Monospaced fonts are about six tenths as wide as high.
    EXPECT_NEAR(wide.width(), 10 * 12 * 0.6, 4);
}

TEST_F(TextPrinterTest, aKeyTooLongForALineGoesOnInTheNext)
{
    const QString key(200, u'k');
    const QList<QList<Word>> pages = printed(key, QPageSize(QPageSize::A4));
    ASSERT_EQ(pages.size(), 1);
    QString found;
    for (const Word &word : pages.first()) {
        found += word.text;
        EXPECT_LE(word.place.right(), (a4Width + 480) / 2 + 1);
    }
    EXPECT_EQ(found, key);
    EXPECT_GT(pages.first().size(), 2);
}

TEST_F(TextPrinterTest, whatDoesNotFitIsOnFurtherPages)
{
    QStringList lines;
    for (int line = 1; line <= 100; ++line) {
        lines.append(QStringLiteral("line%1").arg(line));
    }
    const QList<QList<Word>> pages = printed(lines.join(u'\n'), QPageSize(QPageSize::A4));
    ASSERT_GE(pages.size(), 2);
    QStringList found;
    for (const QList<Word> &page : pages) {
        for (const Word &word : page) {
            found.append(word.text);
            EXPECT_GE(word.place.top(), (a4Height - 640) / 2 - 2);
            EXPECT_LE(word.place.bottom(), (a4Height + 640) / 2 + 2);
        }
    }
    // Each once.
    EXPECT_EQ(found, lines);
}

TEST_F(TextPrinterTest, onSmallPaperItIsSmaller)
{
    const QList<QList<Word>> pages =
        printed(QString(60, u'm'), QPageSize(QPageSize::A6)); // 298 by 420 points
    ASSERT_EQ(pages.size(), 1);
    ASSERT_EQ(pages.first().size(), 1);
    EXPECT_GE(pages.first().first().place.left(), 0);
    EXPECT_LE(pages.first().first().place.right(), 298);
}

TEST_F(TextPrinterTest, aFileThatCannotBeWrittenIsReported)
{
    QPdfWriter writer(QDir::homePath() + QLatin1String("/no such folder/paper.pdf"));
    EXPECT_FALSE(TextPrinter::print(QStringLiteral("text"), writer));
}

} // namespace
