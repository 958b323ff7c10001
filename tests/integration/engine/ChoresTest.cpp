#include "engine/BackupEngine.h"
#include "platform/WeekOfYear.h"
#include "state/Keychain.h"
#include "state/StatusStore.h"
#include "tests/support/CheapRepository.h"
#include "tests/support/ChoresDone.h"
#include "tests/support/Cycle.h"
#include "tests/support/Files.h"
#include "tests/support/ManualClock.h"
#include "tests/support/MemorySecretBackend.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QRandomGenerator>

#include <gtest/gtest.h>

#include <thread>

// Retention and verification on a real repository: what they find, and what a stop leaves behind.

namespace {

using namespace std::chrono_literals;

class Chores : public testing::Test
{
protected:
    Chores()
    {
        secrets.items[{QStringLiteral("it.vellomar.app"), Keychain::repositoryKey}] = "the key";
        config.sources = {folder("source")};
        config.excludes.clear();
        config.localEnabled = true;
        config.localFolder = folder("disk");
        writeLetter(1);
        EXPECT_TRUE(CheapRepository::make(repository(), QStringLiteral("the key")));
        StatusStore::save(choresDone(clock.moment()));
    }

    int run(const std::shared_ptr<ProcessHandle> &handle = std::make_shared<ProcessHandle>())
    {
        BackupEngine engine(
            true, config, handle, [] { return false; },
            [this](const QString &title, const QString &body) {
                notifications.append(title + u'|' + body);
            });
        return engine.runAll();
    }

    /// A prune would read the packs too.
    void postponePrune() const
    {
        EngineState state = StatusStore::loadState();
        state.lastPrune = choresDone(clock.moment()).lastPrune;
        StatusStore::save(state);
    }

    /// A run that is stopped as soon as it has entered a phase.
    int runStoppedIn(const QString &phase)
    {
        const auto handle = std::make_shared<ProcessHandle>();
        std::jthread stopper([&] {
            EXPECT_TRUE(eventually([&] {
                const auto status = StatusStore::loadStatus();
                return status && status->phase == phase;
            }));
            handle->terminate();
        });
        return run(handle);
    }

    /// Moves the clock to a week in which the check reads the part of the data that holds a pack,
    /// or, with `otherwise`, one in which it reads a different part.
    void goToWeekOf(const QString &pack, bool otherwise = false)
    {
        // restic shares packs out by the first byte of their names.
        const int part = pack.left(2).toInt(nullptr, 16) % 20;
        do {
            clock.advance(8 * 24h);
        } while ((weekOfYear(clock.moment()) % 20 == part) == otherwise);
    }

    static QString folder(const char *name)
    {
        const QString path = Paths::home() + u'/' + QString::fromUtf8(name);
        QDir().mkpath(path);
        return path;
    }

    /// Writes the one file of the source, of bytes that can't be compressed.
    void writeLetter(quint32 seed) const
    {
        QByteArray bytes(100'000, '\0');
        QRandomGenerator random(seed);
        for (char &byte : bytes) {
            byte = static_cast<char>(random.bounded(256));
        }
        writeFile(config.sources.first() + QLatin1String("/letter"), bytes);
    }

    /// The biggest file of the repository's data: the one with the letter in it.
    [[nodiscard]] QFileInfo biggestPack() const
    {
        QFileInfo biggest;
        QDirIterator packs(repository() + QLatin1String("/data"), QDir::Files,
                           QDirIterator::Subdirectories);
        while (packs.hasNext()) {
            packs.next();
            if (!biggest.isFile() || packs.fileInfo().size() > biggest.size()) {
                biggest = packs.fileInfo();
            }
        }
        return biggest;
    }

    [[nodiscard]] bool isLocked() const
    {
        return !QDir(repository() + QLatin1String("/locks")).entryList(QDir::Files).isEmpty();
    }

    [[nodiscard]] QString repository() const { return config.repository(DestinationID::Local); }

    static RunRecord newest() { return StatusStore::loadHistory().value(0); }

    ManualClock clock;
    ScopedClock clockInForce{clock};
    MemorySecretBackend secrets;
    ScopedSecretBackend secretsInForce{secrets};
    AppConfig config;
    QStringList notifications;
};

const QString local = QStringLiteral("local");

TEST_F(Chores, aDeletedPackIsFoundByTheNextCheckAndReported)
{
    ASSERT_EQ(run(), 0);
    ASSERT_TRUE(QFile::remove(biggestPack().filePath()));
    StatusStore::save(EngineState{choresDone(clock.moment()).lastPrune, {}, std::nullopt});
    EXPECT_EQ(run(), 0);
    EXPECT_EQ(newest().kind, QStringLiteral("check"));
    EXPECT_EQ(newest().outcome, Outcome::Failed);
    EXPECT_EQ(newest().message, QStringLiteral("Il backup contiene dati danneggiati"));
    EXPECT_EQ(notifications,
              QStringList{QStringLiteral("Verifica del backup non riuscita|"
                                         "Disco esterno: Il backup contiene dati danneggiati")});
    EXPECT_FALSE(StatusStore::loadState().lastCheck.contains(local));
}

TEST_F(Chores, aFlippedByteIsFoundWhenItsTwentiethIsRead)
{
    ASSERT_EQ(run(), 0);
    QFile pack(biggestPack().filePath());
    ASSERT_TRUE(pack.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner));
    ASSERT_TRUE(pack.open(QIODevice::ReadWrite));
    ASSERT_TRUE(pack.seek(100));
    char byte = 0;
    ASSERT_TRUE(pack.getChar(&byte));
    ASSERT_TRUE(pack.seek(100));
    ASSERT_TRUE(pack.putChar(static_cast<char>(~byte)));
    pack.close();
    const QString name = QFileInfo(pack).fileName();

    goToWeekOf(name, true);
    postponePrune();
    EXPECT_EQ(run(), 0);
    EXPECT_EQ(newest().message, QStringLiteral("Nessun errore trovato"));
    EXPECT_TRUE(notifications.isEmpty());

    goToWeekOf(name);
    postponePrune();
    EXPECT_EQ(run(), 0);
    EXPECT_EQ(newest().outcome, Outcome::Failed);
    EXPECT_EQ(newest().message, QStringLiteral("Il backup contiene dati danneggiati"));
    EXPECT_EQ(notifications.size(), 1);
}

TEST_F(Chores, aStopDuringTheCheckLeavesNothingAndTheNextRunChecksAgain)
{
    StatusStore::save(EngineState{choresDone(clock.moment()).lastPrune, {}, std::nullopt});
    EXPECT_EQ(runStoppedIn(QStringLiteral("Verifica dell'integrità")), 0);
    ASSERT_EQ(StatusStore::loadHistory().size(), 1);
    EXPECT_EQ(newest().outcome, Outcome::Ok);
    EXPECT_FALSE(newest().kind);
    EXPECT_FALSE(StatusStore::loadState().lastCheck.contains(local));
    EXPECT_FALSE(isLocked());

    EXPECT_EQ(run(), 0);
    EXPECT_EQ(newest().message, QStringLiteral("Nessun errore trovato"));
    EXPECT_TRUE(StatusStore::loadState().lastCheck.contains(local));
}

TEST_F(Chores, aStopDuringThePruneLeavesTheBackupGoodAndThePruneDue)
{
    StatusStore::save(EngineState{{}, choresDone(clock.moment()).lastCheck, std::nullopt});
    EXPECT_EQ(runStoppedIn(QStringLiteral("Pulizia delle versioni vecchie")), 0);
    EXPECT_EQ(newest().outcome, Outcome::Ok);
    EXPECT_FALSE(StatusStore::loadState().lastPrune.contains(local));
    EXPECT_FALSE(isLocked());

    EXPECT_EQ(run(), 0);
    EXPECT_TRUE(StatusStore::loadState().lastPrune.contains(local));
}

TEST_F(Chores, aVersionOfALaterDateDoesNotCostTheNewOne)
{
    ASSERT_EQ(run(), 0);
    const Restic restic{DestinationID::Local, config, QStringLiteral("the key"), std::nullopt};
    const ProcessResult ahead =
        restic.run({QStringLiteral("backup"), QStringLiteral("--tag"), QStringLiteral("vellomar"),
                    QStringLiteral("--host"), Paths::hostname(), QStringLiteral("--time"),
                    QStringLiteral("2100-01-01 00:00:00"), config.sources.first()});
    ASSERT_EQ(ahead.status, 0) << ahead.standardError.toStdString();
    config.keepDays = -1;
    for (int versions = 3; versions <= 4; ++versions) {
        clock.advance(8 * 24h); // a prune is due
        EXPECT_EQ(run(), 0);
        EXPECT_EQ(restic.snapshots()->size(), versions);
        const QList<RunRecord> history = StatusStore::loadHistory();
        const auto backup = std::find_if(history.cbegin(), history.cend(),
                                         [](const RunRecord &record) { return !record.kind; });
        EXPECT_EQ(backup->outcome, Outcome::Warning);
        EXPECT_TRUE(backup->message.contains(QLatin1String("data successiva")))
            << backup->message.toStdString();
    }
}

TEST_F(Chores, withASingleVersionTheOldOneGoesAndThePruneGivesItsRoomBack)
{
    ASSERT_EQ(run(), 0);
    const QString first = biggestPack().filePath();
    writeLetter(2);
    config.keepDays = -1;
    clock.advance(25h);
    ASSERT_EQ(run(), 0);
    const auto snaps =
        Restic{DestinationID::Local, config, QStringLiteral("the key"), std::nullopt}.snapshots();
    ASSERT_TRUE(snaps.has_value());
    EXPECT_EQ(snaps->size(), 1);
    EXPECT_FALSE(QFile::exists(first));
}

} // namespace
