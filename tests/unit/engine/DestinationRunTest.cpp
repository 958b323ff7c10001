#include "tests/support/EngineFixture.h"

#include "engine/ExcludeFile.h"
#include "state/StatusStore.h"

#include <QDir>
#include <QFile>

namespace {

class DestinationRun : public EngineFixture
{
protected:
    [[nodiscard]] QStringList sourcesOfBackup()
    {
        run();
        const QList<ScriptedTools::Call> backups = tools.callsOf(QStringLiteral("backup"));
        if (backups.size() != 1) {
            return {};
        }
        const QStringList arguments = backups.first().arguments;
        return arguments.sliced(arguments.indexOf(QLatin1String("--")) + 1);
    }
};

TEST_F(DestinationRun, everyStepCanBeStoppedAndTheBackupIsFollowed)
{
    tools.catConfig = ScriptedTools::ended(10);
    run();
    EXPECT_EQ(tools.commands(), (QStringList{QStringLiteral("cat config"), QStringLiteral("init"),
                                             QStringLiteral("backup"), QStringLiteral("forget")}));
    for (const ScriptedTools::Call &call : tools.calls) {
        const bool isBackup = call.command() == QLatin1String("backup");
        const bool isWork = isBackup || call.command() == QLatin1String("forget");
        EXPECT_EQ(call.handle, handle.get());
        EXPECT_EQ(call.stop, isWork ? StopManner::atOnce : StopManner::inTime);
        EXPECT_EQ(call.isFollowed, isBackup);
        EXPECT_EQ(call.input, QStringLiteral("the key"));
    }
}

TEST_F(DestinationRun, aRepositoryThatIsThereIsUnlockedFirst)
{
    tools.unlock = ScriptedTools::ended(1, QStringLiteral("Fatal: unlocking failed"));
    EXPECT_EQ(run(), 0);
    EXPECT_EQ(tools.commands(), (QStringList{QStringLiteral("cat config"), QStringLiteral("unlock"),
                                             QStringLiteral("backup"), QStringLiteral("forget")}));
    EXPECT_EQ(onlyRecord().outcome, Outcome::Ok);
}

TEST_F(DestinationRun, aMissingSourceIsDroppedWithoutAWord)
{
    const QString second = folder("second");
    config.sources = {QStringLiteral("/no such folder"), config.sources.first(), QString(), second};
    EXPECT_EQ(sourcesOfBackup(), (QStringList{config.sources[1], second}));
    EXPECT_EQ(onlyRecord().outcome, Outcome::Ok);
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

TEST_F(DestinationRun, aSourceIsAFullPathHoweverItIsWritten)
{
    folder("--dry-run");
    folder("-r");
    folder("plain/inside");
    config.sources = {QStringLiteral("--dry-run"), QStringLiteral("-r"),
                      QStringLiteral("plain/inside"), QStringLiteral("~/source"),
                      QStringLiteral("~")};
    const QString &home = Paths::home();
    EXPECT_EQ(sourcesOfBackup(),
              (QStringList{home + QLatin1String("/--dry-run"), home + QLatin1String("/-r"),
                           home + QLatin1String("/plain/inside"), home + QLatin1String("/source"),
                           home}));
}

TEST_F(DestinationRun, behindASourceThatIsALinkStandsWhatItLeadsTo)
{
    const QString target = folder("target");
    const QString near = Paths::home() + QLatin1String("/near");
    const QString far = folder("links") + QLatin1String("/far");
    ASSERT_TRUE(QFile::link(QStringLiteral("../target"), far));
    ASSERT_TRUE(QFile::link(QStringLiteral("links/far"), near));
    config.sources = {near, folder("a")};
    EXPECT_EQ(sourcesOfBackup(), (QStringList{near, far, target, folder("a")}));
}

TEST_F(DestinationRun, aPlaceThatTwoSourcesLeadToStandsThereOnce)
{
    const QString target = folder("target");
    const QString one = Paths::home() + QLatin1String("/one");
    const QString two = Paths::home() + QLatin1String("/two");
    ASSERT_TRUE(QFile::link(target, one));
    ASSERT_TRUE(QFile::link(target, two));
    config.sources = {one, target, two, one + QLatin1Char('/')};
    EXPECT_EQ(sourcesOfBackup(), (QStringList{one, target, two}));
}

TEST_F(DestinationRun, linksInACircleAreAsMissing)
{
    const QString one = Paths::home() + QLatin1String("/one");
    const QString two = Paths::home() + QLatin1String("/two");
    ASSERT_TRUE(QFile::link(one, two));
    ASSERT_TRUE(QFile::link(two, one));
    config.sources = {one, folder("a")};
    EXPECT_EQ(sourcesOfBackup(), QStringList{folder("a")});
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
    expected.destination = DestinationID::Local;
    expected.phase = QStringLiteral("Connessione");
    ASSERT_TRUE(first);
    EXPECT_EQ(*first, expected);
    EXPECT_FALSE(first->secondsRemaining);
    EXPECT_FALSE(first->currentFile);
}

TEST_F(DestinationRun, thePhasesFollowOneAnotherForwards)
{
    QStringList phases;
    RunStatus last;
    tools.before = [&](const ScriptedTools::Call &call) {
        const auto status = StatusStore::loadStatus();
        last = status.value_or(RunStatus());
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
                                   QStringLiteral("backup: Scansione dei file"),
                                   QStringLiteral("forget: Pulizia delle versioni vecchie")}));
    EXPECT_EQ(last.percent, 1.0);
    EXPECT_FALSE(last.currentFile);
    // What the last line told otherwise stays.
    EXPECT_EQ(last.totalFiles, 9);
    EXPECT_EQ(last.secondsRemaining, 4);
}

TEST_F(DestinationRun, theCleaningPhaseOnlyFollowsABackupThatEndedWell)
{
    for (const int status : {1, 2, 10, 11, 12, 130, -1}) {
        tools.calls.clear();
        tools.backup = ScriptedTools::ended(status);
        EXPECT_EQ(run(), 1);
        EXPECT_EQ(tools.commands().last(), QStringLiteral("backup")) << status;
    }
}

TEST_F(DestinationRun, aBackupWithUnreadableFilesEntersTheCleaningPhaseToo)
{
    std::optional<RunStatus> cleaning;
    tools.before = [&cleaning](const ScriptedTools::Call &call) {
        if (call.command() == QLatin1String("forget")) {
            cleaning = StatusStore::loadStatus();
        }
    };
    tools.backup = ScriptedTools::ended(3);
    EXPECT_EQ(run(), 0);
    ASSERT_TRUE(cleaning);
    EXPECT_EQ(cleaning->phase, QStringLiteral("Pulizia delle versioni vecchie"));
    EXPECT_EQ(cleaning->percent, 1.0);
}

} // namespace
