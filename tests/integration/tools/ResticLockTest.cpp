#include "platform/ExecutablePath.h"
#include "tests/integration/tools/SampleBackup.h"
#include "tests/support/CheapRepository.h"
#include "tests/support/Cycle.h"
#include "tests/support/Files.h"
#include "tests/support/Waiting.h"

#include <QRandomGenerator>

#include <algorithm>
#include <csignal>
#include <thread>

// What happens to a repository while, and after, another restic works on it.

namespace {

class ResticLockTest : public testing::Test
{
protected:
    ResticLockTest()
    {
        restic.config.localFolder = QDir::homePath();
        restic.password = QStringLiteral("key");
        EXPECT_TRUE(
            CheapRepository::make(restic.config.repository(DestinationID::Local), restic.password));
    }
    /// Whether another restic has its lock on the repository, whole.
    [[nodiscard]] bool isLocked() const
    {
        const QStringList locks =
            QDir(restic.config.repository(DestinationID::Local) + QLatin1String("/locks"))
                .entryList(QDir::Files);
        return std::any_of(locks.cbegin(), locks.cend(),
                           [](const QString &name) { return name.size() == 64; });
    }
    /// A backup that takes minutes to write what it has read.
    [[nodiscard]] ProcessResult slowBackup(ProcessHandle &handle) const
    {
        return restic.run({QStringLiteral("backup"), QStringLiteral("--limit-upload"),
                           QStringLiteral("1"), noise},
                          &handle);
    }
    static QString fileOfNoise()
    {
        QByteArray bytes(500000, '\0');
        QRandomGenerator random(1);
        std::generate(bytes.begin(), bytes.end(),
                      [&random] { return static_cast<char>(random.generate()); });
        QString path = QDir::homePath() + QLatin1String("/noise");
        writeFile(path, bytes);
        return path;
    }

    const QString noise = fileOfNoise();
    Restic restic;
};

/// The process id of the only child that the main thread has started.
pid_t onlyChild()
{
    const QString self = QString::number(::getpid());
    return readFile(QLatin1String("/proc/self/task/") + self + QLatin1String("/children"))
        .trimmed()
        .toInt();
}

TEST_F(ResticLockTest, aStopThroughTheHandleEndsResticWithItsOwnCode)
{
    ProcessHandle handle;
    std::jthread stopper([&] {
        EXPECT_TRUE(eventually([this] { return isLocked(); }));
        handle.terminate();
    });
    EXPECT_EQ(slowBackup(handle).status, 130);
    EXPECT_TRUE(handle.isCancelled());
    EXPECT_FALSE(isLocked()); // it has tidied up
}

TEST_F(ResticLockTest, theLockOfAKilledRunIsCleared)
{
    ProcessHandle handle;
    std::jthread killer([this] {
        EXPECT_TRUE(eventually([this] { return isLocked(); }));
        const pid_t pid = onlyChild();
        ASSERT_GT(pid, 0);
        ::kill(pid, SIGKILL);
    });
    EXPECT_EQ(slowBackup(handle).status, 128 + SIGKILL);
    killer.join();
    EXPECT_TRUE(isLocked());
    EXPECT_TRUE(restic.prepare().has_value());
    EXPECT_FALSE(isLocked());
}

/// Whether a child of this process waits for a repository's lock.
bool isChildWaiting()
{
    const QList<pid_t> children = childrenOf(::getpid());
    return std::any_of(children.cbegin(), children.cend(),
                       [](pid_t child) { return wasStartedWith(child, "--retry-lock"); });
}

TEST_F(ResticLockTest, aLockInUseThatIsGivenBackIsWaitedFor)
{
    ASSERT_EQ(restic.run({QStringLiteral("backup"), noise}).status, 0);
    ProcessHandle handle;
    std::jthread observer([&] {
        EXPECT_TRUE(eventually([this] { return isLocked(); }));
        std::jthread owner([&handle] {
            EXPECT_TRUE(eventually([] { return isChildWaiting(); }));
            handle.terminate();
        });
        EXPECT_TRUE(restic.prepare().has_value());
    });
    static_cast<void>(restic.run({QStringLiteral("check"), QStringLiteral("--read-data"),
                                  QStringLiteral("--no-cache"), QStringLiteral("--limit-download"),
                                  QStringLiteral("5")},
                                 &handle));
}

TEST_F(ResticLockTest, aRepositoryInUseByItsOwnerAloneIsReportedAsOccupied)
{
    restic.lockPatience = std::chrono::seconds(0);
    ASSERT_EQ(restic.run({QStringLiteral("backup"), noise}).status, 0);
    // A check holds the exclusive lock; this one takes its time to read everything.
    std::jthread observer([this] {
        EXPECT_TRUE(eventually([this] { return isLocked(); }));
        const ResticError occupied{QStringLiteral("Destinazione occupata da un'altra operazione")};
        const auto prepared = restic.prepare();
        const auto snaps = restic.snapshots();
        const pid_t pid = onlyChild();
        ASSERT_GT(pid, 0);
        ::kill(pid, SIGKILL);
        ASSERT_FALSE(prepared.has_value() || snaps.has_value());
        EXPECT_EQ(prepared.error(), occupied);
        EXPECT_EQ(snaps.error(), occupied);
    });
    const ProcessResult checked = restic.run(
        {QStringLiteral("check"), QStringLiteral("--read-data"), QStringLiteral("--no-cache"),
         QStringLiteral("--limit-download"), QStringLiteral("5")});
    EXPECT_EQ(checked.status, 128 + SIGKILL);
    observer.join();
    // Its lock stays, since its process is gone, and keeps every other run out.
    EXPECT_TRUE(isLocked());
    EXPECT_TRUE(restic.prepare().has_value());
    EXPECT_FALSE(isLocked());
}

} // namespace
