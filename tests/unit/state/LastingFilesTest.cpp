#include "platform/AtomicFile.h"
#include "state/ConfigStore.h"
#include "state/StatusStore.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

#include <set>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

std::set<ino_t> filesOnDisk;           ///< those that were synchronised
std::set<ino_t> onDiskBeforeTheirName; ///< those that were synchronised before they were renamed

ino_t fileOf(const char *path)
{
    struct stat file = {};
    return ::stat(path, &file) == 0 ? file.st_ino : 0;
}

} // namespace

// The program's calls come here instead of to the system's library.
extern "C" int fsync(int descriptor)
{
    struct stat file = {};
    if (::fstat(descriptor, &file) == 0) {
        filesOnDisk.insert(file.st_ino);
    }
    return static_cast<int>(::syscall(SYS_fsync, descriptor));
}

extern "C" int rename(const char *from, const char *to) noexcept
{
    if (filesOnDisk.contains(fileOf(from))) {
        onDiskBeforeTheirName.insert(fileOf(from));
    }
    return static_cast<int>(::syscall(SYS_renameat2, AT_FDCWD, from, AT_FDCWD, to, 0));
}

namespace {

bool wasOnDiskBeforeItsName(const QString &path)
{
    const ino_t file = fileOf(QFile::encodeName(path).constData());
    EXPECT_NE(file, 0U) << path.toStdString();
    return onDiskBeforeTheirName.contains(file);
}

bool wasOnDiskBeforeItsName(const char *supportFile)
{
    return wasOnDiskBeforeItsName(Paths::supportFile(QString::fromUtf8(supportFile)));
}

TEST(LastingFiles, aContentIsOnTheDiskBeforeItTakesItsName)
{
    const QString path = QDir::homePath() + QLatin1String("/file");
    ASSERT_TRUE(AtomicFile::write(path, "content"));
    EXPECT_TRUE(wasOnDiskBeforeItsName(path));
}

TEST(LastingFiles, settingsHistoryAndMemoryOutliveACrashOfTheMachine)
{
    ConfigStore::save(AppConfig());
    StatusStore::append(RunRecord::starting(DestinationID::Local));
    StatusStore::save(EngineState());
    EXPECT_TRUE(wasOnDiskBeforeItsName("config.json"));
    EXPECT_TRUE(wasOnDiskBeforeItsName("history.json"));
    EXPECT_TRUE(wasOnDiskBeforeItsName("state.json"));
}

TEST(LastingFiles, theStatusOfARunNeverWaitsForTheDisk)
{
    RunStatus status;
    status.phase = QStringLiteral("Copia dei file");
    status.startedAt = QDateTime::currentDateTimeUtc();
    StatusStore::write(status);
    EXPECT_EQ(StatusStore::loadStatus()->phase, status.phase);
    EXPECT_TRUE(filesOnDisk.empty());
}

} // namespace
