#include "tests/support/EngineFixture.h"

#include "engine/ExcludeFile.h"
#include "state/StatusStore.h"
#include "tools/Tools.h"

#include <QDir>
#include <QFile>

namespace {

// Shows the status on disk at every moment at which the engine asks for the time: the start of a
// run, each line of progress, and the end of a run.
class WatchingClock final : public Clock
{
public:
    [[nodiscard]] QDateTime moment() const override { return QDateTime::currentDateTimeUtc(); }
    [[nodiscard]] std::chrono::steady_clock::time_point reading() const override
    {
        if (const auto status = StatusStore::loadStatus()) {
            seen.append(*status);
        }
        return std::chrono::steady_clock::now();
    }

    mutable QList<RunStatus> seen;
};

class DestinationRun : public EngineFixture
{
protected:
    [[nodiscard]] QStringList backupArguments(DestinationID destination)
    {
        useAllDestinations();
        run();
        for (const ScriptedTools::Call &call : tools.callsOf(QStringLiteral("backup"))) {
            if (call.repository() == config.repository(destination)) {
                return call.arguments;
            }
        }
        return {};
    }

    [[nodiscard]] QStringList sourcesOfBackup()
    {
        run();
        const QList<ScriptedTools::Call> backups = tools.callsOf(QStringLiteral("backup"));
        // Eight words, and --exclude-caches, come before the sources.
        return backups.size() == 1 ? backups.first().arguments.sliced(9) : QStringList();
    }

    static QStringList rcloneOption()
    {
        return {QStringLiteral("-o"),
                QLatin1String("rclone.program=") +
                    Tools::find(QStringLiteral("rclone")).value_or(QString())};
    }

    static QStringList commonArguments()
    {
        return {QStringLiteral("backup"),         QStringLiteral("--json"),
                QStringLiteral("--tag"),          QStringLiteral("vellomar"),
                QStringLiteral("--host"),         Paths::hostname(),
                QStringLiteral("--exclude-file"), supportFile("excludes.txt")};
    }
};

TEST_F(DestinationRun, theArgumentsForTheDisk)
{
    config.sources.append(folder("second source"));
    EXPECT_EQ(backupArguments(DestinationID::local),
              commonArguments() + QStringList{QStringLiteral("--exclude-caches")} + config.sources);
}

TEST_F(DestinationRun, theArgumentsForDriveAskForBigPacks)
{
    const QStringList options{QStringLiteral("--exclude-caches"), QStringLiteral("--pack-size"),
                              QStringLiteral("64")};
    EXPECT_EQ(backupArguments(DestinationID::drive),
              rcloneOption() + commonArguments() + options + config.sources);
}

TEST_F(DestinationRun, theArgumentsForTheServerAskForBigPacks)
{
    config.excludeCaches = false;
    const QStringList options{QStringLiteral("--pack-size"), QStringLiteral("64")};
    EXPECT_EQ(backupArguments(DestinationID::server),
              rcloneOption() + commonArguments() + options + config.sources);
}

TEST_F(DestinationRun, cachesAreKeptWhenTheSettingSaysSo)
{
    config.excludeCaches = false;
    EXPECT_EQ(backupArguments(DestinationID::local), commonArguments() + config.sources);
}

TEST_F(DestinationRun, theBackupAloneCanBeStoppedAndFollowed)
{
    tools.catConfig = ScriptedTools::ended(10);
    run();
    EXPECT_EQ(tools.commands(), (QStringList{QStringLiteral("cat config"), QStringLiteral("init"),
                                             QStringLiteral("backup")}));
    for (const ScriptedTools::Call &call : tools.calls) {
        const bool isBackup = call.command() == QLatin1String("backup");
        EXPECT_EQ(call.handle, isBackup ? handle.get() : nullptr);
        EXPECT_EQ(call.isFollowed, isBackup);
        EXPECT_EQ(call.input, QStringLiteral("the key"));
    }
}

TEST_F(DestinationRun, aRepositoryThatIsThereIsUnlockedFirst)
{
    tools.unlock = ScriptedTools::ended(1, QStringLiteral("Fatal: unlocking failed"));
    EXPECT_EQ(run(), 0);
    EXPECT_EQ(tools.commands(), (QStringList{QStringLiteral("cat config"), QStringLiteral("unlock"),
                                             QStringLiteral("backup")}));
    EXPECT_EQ(onlyRecord().outcome, Outcome::ok);
}

TEST_F(DestinationRun, aMissingSourceIsDroppedWithoutAWord)
{
    const QString second = folder("second");
    config.sources = {QStringLiteral("/no such folder"), config.sources.first(), QString(), second};
    EXPECT_EQ(sourcesOfBackup(), (QStringList{config.sources[1], second}));
    EXPECT_EQ(onlyRecord().outcome, Outcome::ok);
    EXPECT_EQ(onlyRecord().message, QStringLiteral("Completato"));
}

TEST_F(DestinationRun, sourcesKeepTheirOrderAndMayBeFilesAndLinks)
{
    const QString file = folder("source") + QLatin1String("/file");
    ASSERT_TRUE(QFile(file).open(QIODevice::WriteOnly));
    const QString link = Paths::home() + QLatin1String("/link");
    const QString dangling = Paths::home() + QLatin1String("/dangling");
    ASSERT_TRUE(QFile::link(folder("z"), link));
    ASSERT_TRUE(QFile::link(QStringLiteral("/no such target"), dangling));
    config.sources = {folder("z"), dangling, link, folder("a"), file};
    EXPECT_EQ(sourcesOfBackup(), (QStringList{folder("z"), link, folder("a"), file}));
}

TEST_F(DestinationRun, theExclusionsAreWrittenForEveryDestination)
{
    config.excludes = {QStringLiteral("~/Library/Caches"), QStringLiteral("node_modules")};
    useAllDestinations();
    QStringList contents;
    tools.before = [&contents](const ScriptedTools::Call &call) {
        if (call.command() == QLatin1String("backup")) {
            contents.append(QString::fromUtf8(content("excludes.txt").value_or("none")));
            QFile::remove(supportFile("excludes.txt"));
        }
    };
    EXPECT_EQ(run(), 0);
    const QString expected = Paths::home() + QLatin1String("/Library/Caches\nnode_modules\n") +
                             config.localFolder + QLatin1String("/Vellomar.backup");
    EXPECT_EQ(contents, (QStringList{expected, expected, expected}));
}

TEST_F(DestinationRun, anEmptyListOfExclusionsIsStillAFile)
{
    useAllDestinations();
    config.localEnabled = false;
    config.serverEnabled = false;
    EXPECT_EQ(run(), 0);
    EXPECT_EQ(content("excludes.txt"), QByteArray());
    EXPECT_TRUE(tools.callsOf(QStringLiteral("backup"))
                    .first()
                    .arguments.contains(QStringLiteral("--exclude-file")));
}

TEST_F(DestinationRun, exclusionsThatCannotBeWrittenDoNotStopTheRun)
{
    ASSERT_TRUE(QDir().mkdir(supportFile("excludes.txt")));
    EXPECT_EQ(run(), 0);
    EXPECT_TRUE(tools.callsOf(QStringLiteral("backup"))
                    .first()
                    .arguments.contains(supportFile("excludes.txt")));
}

TEST_F(DestinationRun, theStatusBeginsWithNothingDone)
{
    std::optional<RunStatus> first;
    tools.before = [&first](const ScriptedTools::Call &) {
        if (!first) {
            first = StatusStore::loadStatus();
        }
    };
    run();
    RunStatus expected;
    expected.pid = ::getpid();
    expected.startedAt = clock.moment();
    expected.destination = DestinationID::local;
    expected.phase = QStringLiteral("Connessione");
    ASSERT_TRUE(first);
    EXPECT_EQ(*first, expected);
    EXPECT_FALSE(first->secondsRemaining);
    EXPECT_FALSE(first->currentFile);
}

TEST_F(DestinationRun, thePhasesFollowOneAnotherForwards)
{
    const WatchingClock watching;
    const ScopedClock inForce(watching);
    QStringList phases;
    tools.before = [&](const ScriptedTools::Call &call) {
        const auto status = StatusStore::loadStatus();
        phases.append(call.command() + QLatin1String(": ") +
                      (status ? status->phase : QStringLiteral("none")));
    };
    tools.progress = {
        QStringLiteral(R"({"message_type":"verbose_status"})"),
        QStringLiteral(R"({"message_type":"status","percent_done":0.25,"total_files":9,)"
                       R"("current_files":["/source/file"],"seconds_remaining":4})"),
        QStringLiteral(R"({"message_type":"summary"})")};
    EXPECT_EQ(run(), 0);
    EXPECT_EQ(phases, (QStringList{QStringLiteral("cat config: Connessione"),
                                   QStringLiteral("unlock: Connessione"),
                                   QStringLiteral("backup: Scansione dei file")}));
    // At the line of progress nothing of it is on disk yet; the last look is at the end of the run.
    ASSERT_EQ(watching.seen.size(), 2);
    EXPECT_EQ(watching.seen[0].phase, QStringLiteral("Scansione dei file"));
    const RunStatus last = watching.seen[1];
    EXPECT_EQ(last.phase, QStringLiteral("Pulizia delle versioni vecchie"));
    EXPECT_EQ(last.percent, 1.0);
    EXPECT_FALSE(last.currentFile);
    // What the last line told otherwise stays.
    EXPECT_EQ(last.totalFiles, 9);
    EXPECT_EQ(last.secondsRemaining, 4);
}

TEST_F(DestinationRun, theCleaningPhaseOnlyFollowsABackupThatEndedWell)
{
    for (const int status : {1, 2, 10, 11, 12, 130, -1}) {
        const WatchingClock watching;
        const ScopedClock inForce(watching);
        tools.backup = ScriptedTools::ended(status);
        EXPECT_EQ(run(), 1);
        ASSERT_EQ(watching.seen.size(), 1);
        EXPECT_EQ(watching.seen.first().phase, QStringLiteral("Scansione dei file")) << status;
    }
}

TEST_F(DestinationRun, aBackupWithUnreadableFilesEntersTheCleaningPhaseToo)
{
    const WatchingClock watching;
    const ScopedClock inForce(watching);
    tools.backup = ScriptedTools::ended(3);
    EXPECT_EQ(run(), 0);
    ASSERT_EQ(watching.seen.size(), 1);
    EXPECT_EQ(watching.seen.first().phase, QStringLiteral("Pulizia delle versioni vecchie"));
    EXPECT_EQ(watching.seen.first().percent, 1.0);
}

} // namespace
