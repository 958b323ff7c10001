#include "platform/AtomicFile.h"
#include "tests/support/Files.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

namespace {

QString path(const QString &name = QStringLiteral("file.json"))
{
    return QDir::homePath() + u'/' + name;
}

QStringList names()
{
    return QDir(QDir::homePath()).entryList(QDir::Files | QDir::Hidden | QDir::System);
}

} // namespace

TEST(AtomicFile, makesAndReplacesAFileAndLeavesNothingBeside)
{
    EXPECT_TRUE(AtomicFile::write(path(), "first and longer"));
    EXPECT_EQ(readFile(path()), "first and longer");
    EXPECT_TRUE(AtomicFile::write(path(), "second"));
    EXPECT_EQ(readFile(path()), "second");
    EXPECT_TRUE(AtomicFile::write(path(), QByteArray()));
    EXPECT_EQ(readFile(path()), "");
    EXPECT_TRUE(QFile::exists(path()));
    EXPECT_EQ(names(), QStringList{QStringLiteral("file.json")});
}

TEST(AtomicFile, aReaderNeverSeesAPart)
{
    const QByteArray one(300000, '1');
    const QByteArray two(100, '2');
    ASSERT_TRUE(AtomicFile::write(path(), one));
    std::atomic<bool> done = false;
    std::atomic<int> reads = 0;
    int broken = 0;
    std::thread reader([&] {
        while (!done) {
            const QByteArray seen = readFile(path());
            broken += seen == one || seen == two ? 0 : 1;
            ++reads;
        }
    });
    for (int i = 0; i < 50 || reads < 50; ++i) {
        AtomicFile::write(path(), i % 2 == 0 ? two : one);
    }
    done = true;
    reader.join();
    EXPECT_EQ(broken, 0);
}

TEST(AtomicFile, aPathThatCannotBeWrittenFailsAndLeavesNothing)
{
    EXPECT_FALSE(AtomicFile::write(path(QStringLiteral("missing/file")), "text"));
    ASSERT_TRUE(QDir().mkpath(path(QStringLiteral("folder/inside"))));
    EXPECT_FALSE(AtomicFile::write(path(QStringLiteral("folder")), "text"));
    EXPECT_TRUE(QFileInfo(path(QStringLiteral("folder/inside"))).isDir());
    EXPECT_EQ(names(), QStringList());
}

TEST(AtomicFile, aLinkStaysALink)
{
    ASSERT_TRUE(QDir().mkpath(path(QStringLiteral("elsewhere"))));
    const QString target = path(QStringLiteral("elsewhere/real.json"));
    writeFile(target, "old");
    ASSERT_TRUE(QFile::link(target, path()));
    EXPECT_TRUE(AtomicFile::write(path(), "new"));
    EXPECT_TRUE(QFileInfo(path()).isSymLink());
    EXPECT_EQ(readFile(target), "new");
}

TEST(AtomicFile, removesWhatAKilledWriterLeftAndNothingElse)
{
    const QStringList kept = {
        QStringLiteral("file.json"),
        QStringLiteral("file.json.backup"),
        QStringLiteral("file.json.AbCdEf"),
        QStringLiteral("file.json.AbCdE.vellomar-partial"),
        QStringLiteral("file.json.AbCdEfG.vellomar-partial"),
        QStringLiteral("file.json.vellomar-partial"),
        QStringLiteral("fileXjson.AbCdEf.vellomar-partial"),
        QStringLiteral("other.json.AbCdEf.vellomar-partial"),
    };
    for (const QString &name : kept) {
        writeFile(path(name), "text");
    }
    writeFile(path(QStringLiteral("file.json.AbCdEf.vellomar-partial")), "text");
    writeFile(path(QStringLiteral("file.json.zyxwvu.vellomar-partial")), "text");
    ASSERT_TRUE(QDir().mkpath(path(QStringLiteral("file.json.folder.vellomar-partial"))));

    AtomicFile::removeAbandoned(path());
    QStringList left = names();
    QStringList expected = kept;
    left.sort();
    expected.sort();
    EXPECT_EQ(left, expected);
    EXPECT_TRUE(QFileInfo(path(QStringLiteral("file.json.folder.vellomar-partial"))).isDir());
    AtomicFile::removeAbandoned(path(QStringLiteral("missing/file.json")));
}
