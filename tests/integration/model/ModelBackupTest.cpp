#include "model/AppModel.h"
#include "model/Background.h"
#include "state/StatusStore.h"
#include "tests/support/Cycle.h"
#include "tests/support/CycleHome.h"
#include "tests/support/ModelReady.h"

#include <QCoreApplication>
#include <QFile>
#include <QRandomGenerator>

#include <csignal>

#include <sys/file.h>
#include <unistd.h>

// The model beside the real engine, a child that is this same executable, with the real restic and
// keyring.

namespace {

/// Starts programs and lets time pass for real; the rest is scripted.
class LaunchingDesktop final : public Desktop
{
public:
    void askSavePath(const QString &, const QString &,
                     std::function<void(const std::optional<QString> &)> answer) override
    {
        answer(std::nullopt);
    }
    void askFolder(const FolderQuestion &,
                   std::function<void(const std::optional<QString> &)>) override
    {
    }
    void askFolders(const FolderQuestion &, std::function<void(const QStringList &)>) override {}
    void print(const QString &, std::function<void(const Printing &)>) override {}
    qint64 copyConcealed(const QString &) override { return 0; }
    qint64 clipboardChangeCount() override { return 0; }
    void clearClipboard() override {}
    void authenticate(OwnerReason, std::function<void(Authentication)> answer) override
    {
        answer(Authentication::granted);
    }
    void openPrivacySettings() override {}
    void quit() override {}
    void exitNow() override {}
};

class ModelBackup : public CycleHome
{
protected:
    ModelBackup()
    {
        qputenv("TMPDIR", QFile::encodeName(folder(QStringLiteral("tmp"))));
        makeRepository(repository);
        model = std::make_unique<AppModel>(World::real(std::make_shared<LaunchingDesktop>()));
        QObject::connect(model->run(), &RunWatch::statusChanged, model.get(), [this] {
            if (model->run()->status()) {
                phases.append(model->run()->status()->phase);
            }
        });
        EXPECT_TRUE(comesUp(*model));
    }
    ~ModelBackup() override
    {
        model.reset();
        Background::waitForAll();
        // What a failed test left running.
        if (const auto left = StatusStore::loadStatus(); left && left->isAlive()) {
            ::kill(left->pid, SIGKILL);
        }
    }

    /// Waits until the repository on the disk has been read.
    bool isRead()
    {
        return eventuallyInLoop([this] {
            const RepoInfo info = model->repositories()->all().value(DestinationID::Local);
            return model->repositories()->all().contains(DestinationID::Local) && !info.loading;
        });
    }

    [[nodiscard]] RepoInfo local() const
    {
        return model->repositories()->all().value(DestinationID::Local);
    }

    /// Makes a backup take a while.
    void addMuch() const
    {
        for (int i = 0; i < 6; ++i) {
            QByteArray bytes(20'000'000, Qt::Uninitialized);
            auto *const numbers = reinterpret_cast<quint32 *>(bytes.data());
            QRandomGenerator::global()->fillRange(numbers, bytes.size() / 4);
            writeFile(source + u'/' + QString::number(i), bytes);
        }
    }

    bool isSeenRunning()
    {
        return eventuallyInLoop([this] { return model->run()->status().has_value(); });
    }

    TestApplication application;
    std::unique_ptr<AppModel> model;
    QStringList phases;
};

TEST_F(ModelBackup, isStartedFollowedToItsEndAndListed)
{
    ASSERT_TRUE(isRead());
    EXPECT_TRUE(local().snapshots.isEmpty());
    addMuch();
    model->startBackup();
    ASSERT_TRUE(eventuallyInLoop([this] { return model->run()->isLaunching(); }));
    ASSERT_TRUE(isSeenRunning());
    EXPECT_FALSE(model->run()->isLaunching());
    EXPECT_NE(model->run()->status()->pid, ::getpid());
    ASSERT_TRUE(eventuallyInLoop([this] { return !model->run()->isBusy(); }));
    // The record may be seen a poll later than the end of the status.
    ASSERT_TRUE(eventuallyInLoop([this] { return !model->run()->history().isEmpty(); }));
    EXPECT_FALSE(phases.isEmpty());
    ASSERT_EQ(model->run()->history().size(), 1);
    EXPECT_EQ(model->run()->history().first().outcome, Outcome::Ok)
        << model->run()->history().first().message.toStdString();
    ASSERT_TRUE(eventuallyInLoop([this] { return local().snapshots.size() == 1; }));
    EXPECT_GT(local().size.value_or(0), 100'000'000);
    EXPECT_EQ(model->repositories()->stateText(DestinationID::Local),
              QStringLiteral("Backup adesso"));
    EXPECT_EQ(model->repositories()->stateTone(DestinationID::Local), Tone::Well);
    // Nothing has to reap the child: it was never ours.
    for (const pid_t child : childrenOf(::getpid())) {
        EXPECT_FALSE(hasEnded(child)) << child;
    }
}

TEST_F(ModelBackup, stopsWhenAsked)
{
    addMuch();
    model->startBackup();
    ASSERT_TRUE(isSeenRunning());
    const qint64 pid = model->run()->status()->pid;
    model->cancelBackup();
    ASSERT_TRUE(eventuallyInLoop([this] { return !model->run()->isBusy(); }));
    ASSERT_TRUE(eventuallyInLoop([this] { return !model->run()->history().isEmpty(); }));
    EXPECT_EQ(model->run()->history().first().outcome, Outcome::Cancelled);
    EXPECT_TRUE(eventuallyInLoop([pid] { return hasEnded(pid); }));
    EXPECT_EQ(model->repositories()->stateTone(DestinationID::Local), Tone::Well);
}

TEST_F(ModelBackup, aRunThatIsKilledIsOverAtTheNextLook)
{
    ASSERT_TRUE(isRead());
    addMuch();
    model->startBackup();
    ASSERT_TRUE(isSeenRunning());
    const pid_t pid = model->run()->status()->pid;
    const QList<pid_t> tools = childrenOf(pid);
    ASSERT_EQ(::kill(pid, SIGKILL), 0);
    for (const pid_t tool : tools) {
        ::kill(tool, SIGKILL);
    }
    ASSERT_TRUE(eventuallyInLoop([pid] { return hasEnded(pid); }));
    bool wasReadAgain = false;
    QObject::connect(model->repositories(), &Repositories::changed, model.get(),
                     [&] { wasReadAgain = wasReadAgain || local().loading; });
    model->run()->look();
    ASSERT_TRUE(eventuallyInLoop([this] { return !model->run()->isLooking(); }));
    EXPECT_FALSE(model->run()->isBusy());
    EXPECT_TRUE(wasReadAgain);
    EXPECT_TRUE(isThere("status.json"));
    ASSERT_TRUE(isRead());
    // The next one runs well.
    model->startBackup();
    ASSERT_TRUE(eventuallyInLoop([this] { return !model->run()->history().isEmpty(); }));
    EXPECT_EQ(model->run()->history().first().outcome, Outcome::Ok);
}

TEST_F(ModelBackup, aRunThatFindsAnotherAtWorkIsGivenUp)
{
    // The lock is held, so that the child ends at once and never leaves a status.
    QFile lock(Paths::supportFile(QStringLiteral("backup.lock")));
    ASSERT_TRUE(lock.open(QIODevice::ReadWrite));
    ASSERT_EQ(::flock(lock.handle(), LOCK_EX | LOCK_NB), 0);
    model->startBackup();
    ASSERT_TRUE(eventuallyInLoop([this] { return model->run()->isLaunching(); }));
    ASSERT_TRUE(eventuallyInLoop([this] { return !model->run()->isBusy(); }));
    EXPECT_TRUE(model->run()->history().isEmpty());
    EXPECT_TRUE(phases.isEmpty());
}

TEST_F(ModelBackup, theModelMayGoAndTheRunGoesOn)
{
    addMuch();
    model->startBackup();
    ASSERT_TRUE(isSeenRunning());
    const qint64 pid = model->run()->status()->pid;
    model.reset();
    EXPECT_FALSE(hasEnded(pid));
    // Another start of the window finds it.
    model = std::make_unique<AppModel>(World::real(std::make_shared<LaunchingDesktop>()));
    ASSERT_TRUE(comesUp(*model));
    EXPECT_TRUE(model->run()->isBusy());
    ASSERT_TRUE(eventuallyInLoop([this] { return !model->run()->isBusy(); }));
    ASSERT_TRUE(eventuallyInLoop([this] { return !model->run()->history().isEmpty(); }));
    EXPECT_EQ(model->run()->history().first().outcome, Outcome::Ok);
}

} // namespace
