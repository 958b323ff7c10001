// What happens to the files when the support folder can't be written or read, or the disk is full.

#include "platform/AtomicFile.h"
#include "state/ConfigStore.h"
#include "state/StatusStore.h"
#include "tests/support/Files.h"
#include "tests/support/OrdinaryUser.h"
#include "tests/support/SmallDisk.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

#include <sys/stat.h>

namespace {

AppConfig saved()
{
    AppConfig config;
    config.keepDays = 30;
    return config;
}

bool setMode(const QString &path, mode_t mode)
{
    return ::chmod(QFile::encodeName(path).constData(), mode) == 0;
}

RunRecord record()
{
    RunRecord made = RunRecord::starting(DestinationID::Local);
    made.date = QDateTime(QDate(2026, 3, 1), QTime(10, 0), Qt::UTC);
    return made;
}

// Every operation that writes.
void writeEverything()
{
    ConfigStore::save(AppConfig());
    StatusStore::append(record());
    StatusStore::write(RunStatus());
    EngineState state;
    state.lastAlert = record().date;
    StatusStore::save(state);
}

} // namespace

TEST(StoreFaults, aFolderThatCannotBeWrittenKeepsItsContent)
{
    ASSERT_TRUE(becomeOrdinaryUser());
    ConfigStore::save(saved());
    const RunRecord old = record();
    StatusStore::append(old);
    const QStringList before = supportFiles();
    ASSERT_TRUE(setMode(Paths::support(), 0500));

    writeEverything();
    StatusStore::clear();
    EXPECT_EQ(ConfigStore::load(), saved());
    EXPECT_EQ(StatusStore::loadHistory(), QList{old});
    EXPECT_FALSE(StatusStore::loadStatus());
    EXPECT_EQ(StatusStore::loadState(), EngineState());
    EXPECT_EQ(supportFiles(), before);
    ASSERT_TRUE(setMode(Paths::support(), 0700));
}

TEST(StoreFaults, filesThatCannotBeReadAreAsMissing)
{
    ASSERT_TRUE(becomeOrdinaryUser());
    writeEverything();
    ConfigStore::save(saved());
    for (const QString &name : supportFiles()) {
        ASSERT_TRUE(setMode(Paths::supportFile(name), 0));
    }
    EXPECT_EQ(ConfigStore::load(), AppConfig());
    EXPECT_FALSE(StatusStore::loadStatus());
    EXPECT_EQ(StatusStore::loadHistory(), QList<RunRecord>());
    EXPECT_EQ(StatusStore::loadState(), EngineState());

    // The next write replaces them, as that depends on the folder's mode alone.
    ConfigStore::save(saved());
    EXPECT_EQ(ConfigStore::load(), saved());
}

TEST(StoreFaults, aSupportFolderThatIsAFileDoesNoHarm)
{
    ASSERT_TRUE(writeFile(Paths::home() + QLatin1String("/.local/share/Vellomar")));
    writeEverything();
    StatusStore::clear();
    StatusStore::removeAbandoned();
    EXPECT_EQ(ConfigStore::load(), AppConfig());
    EXPECT_EQ(StatusStore::loadHistory(), QList<RunRecord>());
}

TEST(StoreFaults, aFullDiskKeepsTheOldContentWhole)
{
    const QString folder = Paths::home() + QLatin1String("/.local/share/Vellomar");
    const SmallDisk disk(folder);
    ASSERT_TRUE(disk.isMounted());
    ConfigStore::save(saved());
    const RunRecord old = record();
    StatusStore::append(old);
    disk.fill();

    writeEverything();
    EXPECT_FALSE(AtomicFile::write(Paths::supportFile(QStringLiteral("config.json")),
                                   QByteArray(1 << 20, 'x')));
    EXPECT_EQ(ConfigStore::load(), saved());
    EXPECT_EQ(StatusStore::loadHistory(), QList{old});
    EXPECT_FALSE(StatusStore::loadStatus());
    EXPECT_EQ(StatusStore::loadState(), EngineState());
    disk.makeRoom();
    for (const QString &name : supportFiles()) {
        EXPECT_FALSE(name.contains(QLatin1String("partial"))) << name.toStdString();
    }
    ConfigStore::save(AppConfig());
    EXPECT_EQ(ConfigStore::load(), AppConfig());
}
