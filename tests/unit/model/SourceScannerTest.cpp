#include "model/SourceScanner.h"

#include "state/Paths.h"
#include "tests/support/Files.h"
#include "tests/support/OrdinaryUser.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <gtest/gtest.h>

#include <cstdio>

#include <unistd.h>

namespace {

class SourceScannerTest : public testing::Test
{
protected:
    void write(const QString &name, qint64 size = 1) const
    {
        writeFile(root + u'/' + name, QByteArray(size, 'x'));
    }

    qint64 size(const QStringList &excludes = {})
    {
        reports.clear();
        return SourceScanner::size(root, excludes, [this](qint64 sum) { reports.append(sum); });
    }

    // Asked to stop by the first report.
    qint64 sizeUntilReport()
    {
        std::stop_source stop;
        return SourceScanner::size(
            root, {}, [&stop](qint64) { stop.request_stop(); }, stop.get_token());
    }

    void writeMany(int count) const
    {
        ASSERT_TRUE(QDir().mkpath(root));
        for (int i = 0; i < count; ++i) {
            ASSERT_TRUE(writeFile(root + u'/' + QString::number(i), "xx"));
        }
    }

    QString root = Paths::home() + QLatin1String("/root");
    QList<qint64> reports;
};

TEST_F(SourceScannerTest, addsUpRegularFilesHiddenOnesToo)
{
    write(QStringLiteral("a"), 1);
    write(QStringLiteral(".b"), 10);
    write(QStringLiteral("c/.d/e f"), 100);
    ASSERT_TRUE(QDir().mkpath(root + QLatin1String("/empty")));
    EXPECT_EQ(size(), 111);
    EXPECT_TRUE(reports.isEmpty());
}

TEST_F(SourceScannerTest, aFolderThatIsNotThereIsNothing)
{
    EXPECT_EQ(size(), 0);
    root.clear();
    EXPECT_EQ(size(), 0);
}

TEST_F(SourceScannerTest, linksAreNeitherFollowedNorCounted)
{
    write(QStringLiteral("a"), 5);
    write(QStringLiteral("../elsewhere/b"), 50);
    ASSERT_TRUE(QFile::link(QStringLiteral("a"), root + QLatin1String("/file")));
    ASSERT_TRUE(QFile::link(QStringLiteral("../elsewhere"), root + QLatin1String("/folder")));
    ASSERT_TRUE(QFile::link(QStringLiteral("."), root + QLatin1String("/loop")));
    EXPECT_EQ(size(), 5);
}

TEST_F(SourceScannerTest, aSourceThatIsALinkIsWhatItLeadsTo)
{
    write(QStringLiteral("../elsewhere/b"), 50);
    write(QStringLiteral("../elsewhere/out/c"), 500);
    ASSERT_TRUE(QFile::link(QStringLiteral("elsewhere"), Paths::home() + QLatin1String("/far")));
    root = Paths::home() + QLatin1String("/near");
    ASSERT_TRUE(QFile::link(QStringLiteral("far"), root));
    EXPECT_EQ(size(), 550);
    // By either of its names.
    EXPECT_EQ(size({root + QLatin1String("/out")}), 50);
    EXPECT_EQ(size({QStringLiteral("~/elsewhere/out")}), 50);
    ASSERT_TRUE(QFile::remove(Paths::home() + QLatin1String("/far")));
    EXPECT_EQ(size(), 0);
}

TEST_F(SourceScannerTest, aFolderIsLeftOutUnderEachOfItsNames)
{
    write(QStringLiteral("disk/repository/c"), 100);
    write(QStringLiteral("a"), 1);
    const QString link = Paths::home() + QLatin1String("/link");
    ASSERT_TRUE(QFile::link(root + QLatin1String("/disk"), link));
    EXPECT_EQ(size({link + QLatin1String("/repository")}), 1);
    // Excluding a link excludes the link, not its target.
    EXPECT_EQ(size({link}), 101);
}

TEST_F(SourceScannerTest, aFileWithASecondNameIsLeftOutUnderTheOneAlone)
{
    write(QStringLiteral("a"), 10);
    ASSERT_EQ(::link(QFile::encodeName(root + QLatin1String("/a")).constData(),
                     QFile::encodeName(root + QLatin1String("/b")).constData()),
              0);
    EXPECT_EQ(size({root + QLatin1String("/a")}), 10);
}

TEST_F(SourceScannerTest, aSourceThatIsNotAFullPathBeginsAtTheHome)
{
    write(QStringLiteral("-r/a"), 10);
    root = QStringLiteral("root/-r");
    EXPECT_EQ(size(), 10);
    root = QStringLiteral("~/root");
    EXPECT_EQ(size(), 10);
}

TEST_F(SourceScannerTest, anExactPathIsLeftOutWhole)
{
    write(QStringLiteral("a"), 1);
    write(QStringLiteral("out/b/c"), 10);
    write(QStringLiteral("in/out/c"), 100);
    EXPECT_EQ(size({root + QLatin1String("/out")}), 101);
    EXPECT_EQ(size({root + QLatin1String("/a")}), 110);
    EXPECT_EQ(size({root + QLatin1String("/o*")}), 111);
    EXPECT_EQ(size({root + QLatin1String("/out/")}), 111);
}

TEST_F(SourceScannerTest, theTildeIsTheHome)
{
    write(QStringLiteral("Library/Caches/x"), 10);
    write(QStringLiteral("y"), 1);
    EXPECT_EQ(size({QStringLiteral("~/root/Library/Caches")}), 1);
    EXPECT_EQ(size({QStringLiteral("~root/Library/Caches")}), 11);
}

TEST_F(SourceScannerTest, aNameIsLeftOutAtAnyDepth)
{
    write(QStringLiteral("node_modules/a"), 1);
    write(QStringLiteral("x/y/node_modules/b/c"), 10);
    write(QStringLiteral("x/node_modules.txt"), 100);
    write(QStringLiteral("z/node_modules"), 1000);
    EXPECT_EQ(size({QStringLiteral("node_modules")}), 100);
}

TEST_F(SourceScannerTest, wildcardsMatchTheNameAlone)
{
    write(QStringLiteral("a.tmp"), 1);
    write(QStringLiteral("x/.b.tmp"), 10);
    write(QStringLiteral("x.tmp/c"), 100);
    write(QStringLiteral("d1"), 1000);
    EXPECT_EQ(size({QStringLiteral("*.tmp")}), 1000);
    EXPECT_EQ(size({QStringLiteral("d[0-9]")}), 111);
    EXPECT_EQ(size({QStringLiteral("?1")}), 111);
    EXPECT_EQ(size({QStringLiteral("*.TMP")}), 1111);
}

TEST_F(SourceScannerTest, aPatternWithASlashInsideMatchesNothing)
{
    write(QStringLiteral("x/y"), 7);
    EXPECT_EQ(size({QStringLiteral("x/y")}), 7);
    EXPECT_EQ(size({QStringLiteral("x/")}), 7);
    EXPECT_EQ(size({QStringLiteral("**/y")}), 7);
    EXPECT_EQ(size({QString()}), 7);
}

TEST_F(SourceScannerTest, theFolderItselfIsNoEntry)
{
    write(QStringLiteral("a"), 3);
    EXPECT_EQ(size({QStringLiteral("root")}), 3);
}

TEST_F(SourceScannerTest, reportsEachTwentyThousandEntries)
{
    writeMany(19999);
    EXPECT_EQ(size(), 2 * 19999);
    EXPECT_TRUE(reports.isEmpty());
    write(QStringLiteral("one more"), 2);
    EXPECT_EQ(size(), 40000);
    EXPECT_EQ(reports, QList<qint64>{40000});
}

TEST_F(SourceScannerTest, askedToStopItEndsWithWhatItHas)
{
    writeMany(20007);
    EXPECT_EQ(sizeUntilReport(), 40000);
}

TEST_F(SourceScannerTest, foldersCountAmongTheEntries)
{
    writeMany(19998);
    ASSERT_TRUE(QDir().mkpath(root + QLatin1String("/p/q")));
    size();
    EXPECT_EQ(reports.size(), 1);
    // What is left out doesn't.
    EXPECT_EQ(size({QStringLiteral("q")}), 2 * 19998);
    EXPECT_TRUE(reports.isEmpty());
}

TEST_F(SourceScannerTest, whatCannotBeReadIsPassedOver)
{
    ASSERT_TRUE(becomeOrdinaryUser());
    write(QStringLiteral("shut/a"), 1);
    write(QStringLiteral("z"), 10);
    ASSERT_TRUE(QFile::setPermissions(root + QLatin1String("/shut"), QFile::Permissions()));
    EXPECT_EQ(size(), 10);
    QFile::setPermissions(root + QLatin1String("/shut"),
                          QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    ASSERT_TRUE(QFile::setPermissions(root + QLatin1String("/z"), QFile::Permissions()));
    EXPECT_EQ(size(), 11);
}

TEST_F(SourceScannerTest, namesThatAreNotTextAreCounted)
{
    ASSERT_TRUE(QDir().mkpath(root));
    const QByteArray path = QFile::encodeName(root) + "/\xff\xfe\n";
    FILE *const made = std::fopen(path.constData(), "w");
    ASSERT_NE(made, nullptr);
    std::fputs("12345", made);
    std::fclose(made);
    EXPECT_EQ(size(), 5);
}

} // namespace
